// Layer 3: routes with longest-prefix match, next hops that count the routes using them, walks in
// key order. NAT subnets and port MTUs are in l3_ports.cpp.
#include "l3.h"

#include "codes.h"
#include "sdk_calls.h"

namespace qxsim {

static nexthop_key key_of(const qx_l3_nexthop_t &nexthop) noexcept
{
    return {nexthop.nhid.nhop_type, address_of(nexthop.nhid.addr), nexthop.nhid.intf_id};
}

static bool used_by_tunnel(const device &here, std::uint32_t index) noexcept
{
    const auto uses = [&](const tunnel_entry &entry) { return entry.cfg->nexthop_id == index; };
    return find_row(here.tunnels, uses) != nullptr;
}

// Checks the ranges of a next hop's fields.
static qx_status check_nexthop(const qx_l3_nexthop_t &nexthop) noexcept
{
    if (nexthop.nhid.nhop_type > nexthop_by_sa)
        return QX_BAD_TYPE;
    if (!valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (nexthop.nhid.nhop_type != nexthop_by_port)
        return QX_OK;
    if (nexthop.id.port_id >= port_count)
        return QX_BAD_PORT;
    return nexthop.encap.port_encap.type > encap_limit ? QX_BAD_ENCAP : QX_OK;
}

// Checks that what a next hop is bound to exists.
static qx_status check_binding(const device &here, const qx_l3_nexthop_t &nexthop) noexcept
{
    switch (nexthop.nhid.nhop_type) {
    case nexthop_by_tunnel:
        return here.tunnels.find(nexthop.id.tunnel_id) != nullptr ? QX_OK : QX_NO_TUNNEL;
    case nexthop_by_sa:
        return here.associations.find(nexthop.id.ipsec_said) != nullptr ? QX_OK : QX_NO_SA;
    default:
        return QX_OK;
    }
}

static nexthop_entry &put_nexthop(device &here, const nexthop_key &key,
                                  const qx_l3_nexthop_t &nexthop) noexcept
{
    const std::uint32_t index = here.nexthop_indexes.add(key);
    return here.nexthops.add(key, {stored{nexthop}, index, 0, false});
}

static void drop_if_unused(device &here, const nexthop_key &key) noexcept
{
    const nexthop_entry &entry = *here.nexthops.find(key);
    if (entry.routes != 0 || entry.added || used_by_tunnel(here, entry.index))
        return;
    here.nexthop_indexes.remove(entry.index);
    here.nexthops.remove(key);
}

void release_nexthop(device &here, std::uint32_t index) noexcept
{
    const nexthop_key *const key = here.nexthop_indexes.find(index);
    if (key != nullptr)
        drop_if_unused(here, nexthop_key{*key});
}

static void remove_route(device &here, const prefix_key &prefix) noexcept
{
    const nexthop_key key = here.routes.find(prefix)->nexthop;
    here.routes.remove(prefix);
    --here.nexthops.find(key)->routes;
    drop_if_unused(here, key);
}

// Stores a route for the caller: its prefix as added, its next hop in its current state.
static void show_route(const device &here, const route_entry &entry, qx_l3_route_t &route) noexcept
{
    entry.route.copy_to(route);
    here.nexthops.find(entry.nexthop)->nexthop.copy_to(route.nexthop);
}

// --------------------------------------------------------------------------------------- routes

qx_status l3_route_add(device &here, const qx_l3_route_t &route)
{
    if (!valid_address(route.prefix))
        return QX_BAD_ADDRESS;
    qx_status status = check_nexthop(route.nexthop);
    if (status != QX_OK)
        return status;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const prefix_key prefix = prefix_of(route.prefix);
    if (here.routes.find(prefix) != nullptr)
        return QX_EXISTS;
    status = check_binding(here, route.nexthop);
    if (status != QX_OK)
        return status;
    const nexthop_key key = key_of(route.nexthop);
    nexthop_entry *nexthop = here.nexthops.find(key);
    if (nexthop != nullptr && !nexthop->nexthop.same_bytes(stored{route.nexthop}))
        return QX_CONFLICT;
    if (here.routes.full() || (nexthop == nullptr && here.nexthops.full()))
        return QX_TABLE_FULL;
    if (nexthop == nullptr)
        nexthop = &put_nexthop(here, key, route.nexthop);
    ++nexthop->routes;
    here.routes.add(prefix, {stored{route}, key});
    return QX_OK;
}

qx_status l3_route_delete(device &here, const qx_l3_route_t &route)
{
    if (!valid_address(route.prefix))
        return QX_BAD_ADDRESS;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const prefix_key prefix = prefix_of(route.prefix);
    if (here.routes.find(prefix) == nullptr)
        return missing(here.routes, prefix, QX_NO_ROUTE);
    remove_route(here, prefix);
    return QX_OK;
}

qx_status l3_route_get(device &here, qx_l3_route_t &route)
{
    if (!valid_address(route.prefix))
        return QX_BAD_ADDRESS;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const prefix_key wanted = prefix_of(route.prefix);
    for (std::uint32_t cut = 0; cut <= wanted.length; ++cut) {
        const route_entry *const entry = here.routes.find(shortened(wanted, wanted.length - cut));
        if (entry != nullptr) {
            show_route(here, *entry, route);
            return QX_OK;
        }
    }
    return QX_NO_ROUTE;
}

qx_status l3_route_show(device &here, qx_l3_route_t &route, unsigned char next)
{
    if (next > 1)
        return QX_BAD_FLAG;
    if (next == 1 && !valid_address(route.prefix))
        return QX_BAD_ADDRESS;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const auto *const row =
        next == 0 ? here.routes.first() : here.routes.next(prefix_of(route.prefix));
    if (row == nullptr)
        return QX_NO_MORE;
    show_route(here, row->entry, route);
    return QX_OK;
}

qx_status l3_nhintf_all_route_delete(device &here, unsigned int intf_id)
{
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const auto leads_there = [&](const route_entry &entry) {
        return entry.nexthop.interface == intf_id;
    };
    for (auto *row = find_row(here.routes, leads_there); row != nullptr;
         row = find_row(here.routes, leads_there))
        remove_route(here, prefix_key{row->key});
    return QX_OK;
}

// ------------------------------------------------------------------------------------ next hops

qx_status l3_nexthop_add(device &here, const qx_l3_nexthop_t &nexthop, unsigned int &index)
{
    qx_status status = check_nexthop(nexthop);
    if (status != QX_OK)
        return status;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    status = check_binding(here, nexthop);
    if (status != QX_OK)
        return status;
    const nexthop_key key = key_of(nexthop);
    nexthop_entry *entry = here.nexthops.find(key);
    if (entry != nullptr && entry->added)
        return QX_EXISTS;
    if (entry != nullptr && !entry->nexthop.same_bytes(stored{nexthop}))
        return QX_CONFLICT;
    if (entry == nullptr && here.nexthops.full())
        return QX_TABLE_FULL;
    if (entry == nullptr)
        entry = &put_nexthop(here, key, nexthop);
    entry->added = true;
    index = entry->index;
    return QX_OK;
}

qx_status l3_nexthop_delete(device &here, const qx_l3_nexthop_t &nexthop)
{
    if (nexthop.nhid.nhop_type > nexthop_by_sa)
        return QX_BAD_TYPE;
    if (!valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const nexthop_key key = key_of(nexthop);
    nexthop_entry *const entry = here.nexthops.find(key);
    if (entry == nullptr)
        return missing(here.nexthops, key, QX_NO_NEXTHOP);
    if (entry->routes != 0 || used_by_tunnel(here, entry->index))
        return QX_IN_USE;
    entry->added = false;
    drop_if_unused(here, key);
    return QX_OK;
}

qx_status l3_nexthop_get(device &here, unsigned int index, qx_l3_nexthop_t &nexthop)
{
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const nexthop_key *const key = here.nexthop_indexes.find(index);
    if (key == nullptr)
        return QX_NO_NEXTHOP;
    here.nexthops.find(*key)->nexthop.copy_to(nexthop);
    return QX_OK;
}

qx_status l3_nexthop_show(device &here, qx_l3_nexthop_t &nexthop, unsigned char next)
{
    if (next > 1)
        return QX_BAD_FLAG;
    if (next == 1 && !valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const auto *const row = next == 0 ? here.nexthops.first() : here.nexthops.next(key_of(nexthop));
    if (row == nullptr)
        return QX_NO_MORE;
    row->entry.nexthop.copy_to(nexthop);
    return QX_OK;
}

qx_status l3_nexthop_update(device &here, const qx_l3_nexthop_t &nexthop)
{
    const qx_status status = check_nexthop(nexthop);
    if (status != QX_OK)
        return status;
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    nexthop_entry *const entry = here.nexthops.find(key_of(nexthop));
    if (entry == nullptr)
        return QX_NO_NEXTHOP;
    const qx_status binding = check_binding(here, nexthop);
    if (binding == QX_OK)
        entry->nexthop = stored{nexthop};
    return binding;
}

// ---------------------------------------------------------------------------- shutdown and start

qx_status l3_route_shut(device &here)
{
    if (!here.l3_running)
        return QX_NOT_INITIALISED;
    const auto uses_nexthop = [](const tunnel_entry &entry) { return entry.cfg->nexthop_id != 0; };
    if (find_row(here.tunnels, uses_nexthop) != nullptr)
        return QX_IN_USE;
    here.routes.clear();
    here.nexthops.clear();
    here.nexthop_indexes.clear();
    here.l3_running = false;
    return QX_OK;
}

qx_status l3_route_init_0(device &here)
{
    if (here.l3_running && !(here.routes.empty() && here.nexthops.empty()))
        return QX_INITIALISED;
    here.l3_running = true;
    return QX_OK;
}

} // namespace qxsim
