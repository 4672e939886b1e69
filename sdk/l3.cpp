// Layer 3: routes with longest-prefix match, next hops that count the routes using them, walks in
// key order. NAT subnets and port MTUs are in l3_ports.cpp.
#include "l3.h"

#include "canonical.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

// A nexthop_type, or `unknown`.
static std::uint32_t type_of(const qx_l3_nexthop_t &nexthop)
{
    return meaning<place::nexthop_type>(nexthop.nhid.nhop_type);
}

static nexthop_key key_of(const qx_l3_nexthop_t &nexthop)
{
    return {type_of(nexthop), address_of(nexthop.nhid.addr), nexthop.nhid.intf_id};
}

// Checks the ranges of a next hop's fields.
static qx_status check_nexthop(const qx_l3_nexthop_t &nexthop)
{
    if (type_of(nexthop) == unknown)
        return QX_BAD_TYPE;
    if (!valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (type_of(nexthop) != nexthop_by_port)
        return QX_OK;
    if (nexthop.id.port_id >= size_of(sized::ports))
        return QX_BAD_PORT;
    const std::uint32_t encap = meaning<place::port_encap>(nexthop.encap.port_encap.type);
    return encap == unknown ? QX_BAD_ENCAP : QX_OK;
}

// Checks that what a next hop is bound to exists and sends.
static qx_status check_binding(const device &here, const qx_l3_nexthop_t &nexthop)
{
    if (type_of(nexthop) == nexthop_by_tunnel) {
        const tunnel_entry *const tunnel = here.tunnels.find(nexthop.id.tunnel_id);
        if (tunnel == nullptr)
            return QX_NO_TUNNEL;
        return meaning<place::tunnel_direction>(tunnel->cfg->dir) == inbound ? QX_BAD_DIRECTION
                                                                             : QX_OK;
    }
    if (type_of(nexthop) == nexthop_by_sa) {
        const sa_entry *const bundle = here.associations.find(nexthop.id.ipsec_said);
        if (bundle == nullptr)
            return QX_NO_SA;
        const std::uint32_t way = meaning<place::sa_direction>(bundle->associations[0]->sa_dir);
        return way == inbound ? QX_BAD_DIRECTION : QX_OK;
    }
    return QX_OK;
}

// Counts a next hop at what it is bound to: 1 when it comes, -1 when it goes.
static void count_binding(device &here, const qx_l3_nexthop_t &nexthop, int step)
{
    std::uint32_t *users = nullptr;
    if (type_of(nexthop) == nexthop_by_tunnel)
        users = &here.tunnels.find(nexthop.id.tunnel_id)->nexthops;
    else if (type_of(nexthop) == nexthop_by_sa)
        users = &here.associations.find(nexthop.id.ipsec_said)->nexthops;
    if (users != nullptr)
        *users += static_cast<std::uint32_t>(step);
}

// Whether a next hop through this tunnel would lead back to the next hop with this index. There is
// no circle yet, so the way from the tunnel ends.
static bool leads_back(const device &here, std::uint32_t tunnel, std::uint32_t index)
{
    for (;;) {
        const std::uint32_t next = here.tunnels.find(tunnel)->cfg->nexthop_id;
        if (next == index)
            return true;
        const nexthop_key *const key = here.nexthop_indexes.find(next);
        if (key == nullptr || key->type != nexthop_by_tunnel)
            return false;
        tunnel = here.nexthops.find(*key)->nexthop->id.tunnel_id;
    }
}

static bool same_contents(const nexthop_entry &entry, const qx_l3_nexthop_t &nexthop)
{
    return entry.nexthop == stored{nexthop} || canonical(*entry.nexthop) == canonical(nexthop);
}

static nexthop_entry &put_nexthop(device &here, const nexthop_key &key,
                                  const qx_l3_nexthop_t &nexthop)
{
    const std::uint32_t index = here.nexthop_indexes.add(key);
    count_binding(here, nexthop, 1);
    return here.nexthops.add(key, {stored{nexthop}, index, 0, 0, 0});
}

static void drop_if_unused(device &here, const nexthop_key &key)
{
    const nexthop_entry &entry = *here.nexthops.find(key);
    if (entry.routes != 0 || entry.added != 0 || entry.tunnels != 0)
        return;
    count_binding(here, *entry.nexthop, -1);
    here.nexthop_indexes.remove(entry.index);
    here.nexthops.remove(key);
}

void count_tunnel(device &here, std::uint32_t index, int step)
{
    const nexthop_key *const key = here.nexthop_indexes.find(index);
    if (key == nullptr)
        return;
    here.nexthops.find(*key)->tunnels += static_cast<std::uint32_t>(step);
    drop_if_unused(here, nexthop_key{*key});
}

static void remove_route(device &here, const prefix_key &prefix)
{
    const nexthop_key key = here.routes.find(prefix)->nexthop;
    here.routes.remove(prefix);
    --here.nexthops.find(key)->routes;
    drop_if_unused(here, key);
}

// Stores a route for the caller: its prefix as added, its next hop in its current state.
static void show_route(const device &here, const route_entry &entry, qx_l3_route_t &route)
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
    if (type_of(route.nexthop) == nexthop_by_port &&
        route.nexthop.nhid.addr.afi != route.prefix.afi)
        return QX_BAD_FAMILY;
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const prefix_key prefix = prefix_of(route.prefix);
    if (here.routes.find(prefix) != nullptr)
        return QX_EXISTS;
    status = check_binding(here, route.nexthop);
    if (status != QX_OK)
        return status;
    const nexthop_key key = key_of(route.nexthop);
    nexthop_entry *nexthop = here.nexthops.find(key);
    if (nexthop != nullptr && !same_contents(*nexthop, route.nexthop))
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
    if (here.l3_running == 0)
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
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    // A covering prefix sorts before what it covers. If the row before does not cover the wanted
    // prefix, what does covers their common bits as well.
    prefix_key wanted = prefix_of(route.prefix);
    for (;;) {
        const auto *const row = here.routes.at_or_before(wanted);
        if (row == nullptr || row->key.address.family != wanted.address.family)
            return QX_NO_ROUTE;
        const std::uint32_t common = common_bits(row->key, wanted);
        if (common == row->key.length) {
            show_route(here, row->entry, route);
            return QX_OK;
        }
        wanted = shortened(wanted, common);
    }
}

qx_status l3_route_show(device &here, qx_l3_route_t &route, unsigned char next)
{
    const std::uint32_t step = meaning<place::route_next>(next);
    if (step == unknown)
        return QX_BAD_FLAG;
    if (step == walk_continue && !valid_address(route.prefix))
        return QX_BAD_ADDRESS;
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const auto *const row =
        step == walk_start ? here.routes.first() : here.routes.next(prefix_of(route.prefix));
    if (row == nullptr)
        return QX_NO_MORE;
    show_route(here, row->entry, route);
    return QX_OK;
}

qx_status l3_nhintf_all_route_delete(device &here, unsigned int intf_id)
{
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    for (const auto *row = here.routes.first(); row != nullptr;) {
        const prefix_key prefix = row->key;
        if (row->entry.nexthop.interface == intf_id)
            remove_route(here, prefix);
        row = here.routes.next(prefix);
    }
    return QX_OK;
}

// ------------------------------------------------------------------------------------ next hops

qx_status l3_nexthop_add(device &here, const qx_l3_nexthop_t &nexthop, unsigned int &index)
{
    qx_status status = check_nexthop(nexthop);
    if (status != QX_OK)
        return status;
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    status = check_binding(here, nexthop);
    if (status != QX_OK)
        return status;
    const nexthop_key key = key_of(nexthop);
    nexthop_entry *entry = here.nexthops.find(key);
    if (entry != nullptr && entry->added != 0)
        return QX_EXISTS;
    if (entry != nullptr && !same_contents(*entry, nexthop))
        return QX_CONFLICT;
    if (entry == nullptr && here.nexthops.full())
        return QX_TABLE_FULL;
    if (entry == nullptr)
        entry = &put_nexthop(here, key, nexthop);
    entry->added = 1;
    index = entry->index;
    return QX_OK;
}

qx_status l3_nexthop_delete(device &here, const qx_l3_nexthop_t &nexthop)
{
    if (type_of(nexthop) == unknown)
        return QX_BAD_TYPE;
    if (!valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const nexthop_key key = key_of(nexthop);
    nexthop_entry *const entry = here.nexthops.find(key);
    if (entry == nullptr)
        return missing(here.nexthops, key, QX_NO_NEXTHOP);
    if (entry->routes != 0 || entry->tunnels != 0)
        return QX_IN_USE;
    entry->added = 0;
    drop_if_unused(here, key);
    return QX_OK;
}

qx_status l3_nexthop_get(device &here, unsigned int index, qx_l3_nexthop_t &nexthop)
{
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const nexthop_key *const key = here.nexthop_indexes.find(index);
    if (key == nullptr)
        return QX_NO_NEXTHOP;
    here.nexthops.find(*key)->nexthop.copy_to(nexthop);
    return QX_OK;
}

qx_status l3_nexthop_show(device &here, qx_l3_nexthop_t &nexthop, unsigned char next)
{
    const std::uint32_t step = meaning<place::nexthop_next>(next);
    if (step == unknown)
        return QX_BAD_FLAG;
    if (step == walk_continue && !valid_address(nexthop.nhid.addr))
        return QX_BAD_ADDRESS;
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const auto *const row =
        step == walk_start ? here.nexthops.first() : here.nexthops.next(key_of(nexthop));
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
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    nexthop_entry *const entry = here.nexthops.find(key_of(nexthop));
    if (entry == nullptr)
        return QX_NO_NEXTHOP;
    const qx_status binding = check_binding(here, nexthop);
    if (binding != QX_OK)
        return binding;
    if (type_of(nexthop) == nexthop_by_tunnel &&
        leads_back(here, nexthop.id.tunnel_id, entry->index))
        return QX_CIRCLE;
    count_binding(here, *entry->nexthop, -1);
    count_binding(here, nexthop, 1);
    entry->nexthop = stored{nexthop};
    return QX_OK;
}

// ---------------------------------------------------------------------------- shutdown and start

qx_status l3_route_shut(device &here)
{
    if (here.l3_running == 0)
        return QX_NOT_INITIALISED;
    const auto used = [](const nexthop_entry &entry) { return entry.tunnels != 0; };
    if (find_row(here.nexthops, used) != nullptr)
        return QX_IN_USE;
    for (const auto &row : here.nexthops)
        count_binding(here, *row.entry.nexthop, -1);
    here.routes.clear();
    here.nexthops.clear();
    here.nexthop_indexes.clear();
    here.l3_running = 0;
    return QX_OK;
}

qx_status l3_route_init_0(device &here)
{
    if (here.l3_running != 0 && !(here.routes.empty() && here.nexthops.empty()))
        return QX_INITIALISED;
    here.l3_running = 1;
    return QX_OK;
}

} // namespace qxsim
