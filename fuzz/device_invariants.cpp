// The invariants of a simulated device between calls.
#include "fuzz/call_scene.h"
#include "fuzz/expect.h"

#include "device.h"

#include <map>
#include <set>

namespace fuzz {

namespace {

template <class Table> void check_table(const Table &table, const char *name)
{
    expect(table.size() <= table.capacity(), name);
    expect(table.removed().size() <= table.capacity(), name);
    for (auto row = table.begin(); row != table.end(); ++row) {
        expect(row == table.begin() || std::prev(row)->key < row->key, name);
        expect(!qxsim::was_removed(table, row->key), name);
    }
}

void check_tables(const qxsim::device &device)
{
    check_table(device.flows, "flows: within capacity, sorted, no key both there and removed");
    check_table(device.flow_slots, "flow slots");
    check_table(device.rules, "rules");
    check_table(device.rtps, "RTP translations");
    check_table(device.translations, "IP translations");
    check_table(device.routes, "routes");
    check_table(device.nexthops, "next hops");
    check_table(device.nexthop_indexes, "next hop indexes");
    check_table(device.subnets, "subnets");
    check_table(device.port_mtus, "port MTUs");
    check_table(device.tunnels, "tunnels");
    check_table(device.sessions, "L2TP sessions");
    check_table(device.prefixes, "prefixes");
    check_table(device.spds, "SPDs");
    check_table(device.policies, "policies");
    check_table(device.associations, "associations");
    check_table(device.pptp, "PPTP sessions");
    check_table(device.pppoe, "PPPoE ports");
}

void check_flows(const qxsim::device &device)
{
    expect_equal(device.flow_slots.size(), device.flows.size(), "flows by id");
    std::map<std::uint32_t, std::uint32_t> flows_of_translation;
    std::set<qxsim::flow_key> keys;
    for (const auto &[slot, entry] : device.flows) {
        expect(slot < qxsim::flow_slot_count, "a flow's slot is in the table");
        expect(keys.insert(entry.key).second, "flow keys differ");
        const std::uint16_t *const found = device.flow_slots.find(entry.flow->flow_id);
        expect(found != nullptr && *found == slot, "a flow is found by its id");
        if (entry.owner == qxsim::flow_owner::rtp) {
            const qxsim::rtp_entry *const owner = device.rtps.find(entry.owner_id);
            expect(owner != nullptr && owner->flow_slot == slot, "an RTP flow has its owner");
        } else if (entry.owner == qxsim::flow_owner::translation) {
            ++flows_of_translation[entry.owner_id];
        }
    }
    for (const auto &[id, entry] : device.rtps) {
        const qxsim::flow_entry *const flow = device.flows.find(entry.flow_slot);
        expect(flow != nullptr && flow->owner == qxsim::flow_owner::rtp && flow->owner_id == id,
               "an RTP translation has its flow");
    }
    for (const auto &[id, entry] : device.translations)
        expect_equal(entry.flows, flows_of_translation[id], "flows of an IP translation");
}

void check_layer3(const qxsim::device &device)
{
    std::map<qxsim::nexthop_key, std::uint32_t> routes;
    for (const auto &[prefix, route] : device.routes) {
        expect(device.nexthops.find(route.nexthop) != nullptr, "a route has its next hop");
        ++routes[route.nexthop];
    }
    expect_equal(device.nexthop_indexes.size(), device.nexthops.size(), "next hops by index");
    for (const auto &[key, entry] : device.nexthops) {
        expect_equal(entry.routes, routes[key], "routes of a next hop");
        expect(entry.added || entry.routes != 0, "a next hop is used or was added");
        const qxsim::nexthop_key *const found = device.nexthop_indexes.find(entry.index);
        expect(found != nullptr && *found == key, "a next hop is found by its index");
    }
    expect(device.l3_running || (device.routes.empty() && device.nexthops.empty()),
           "tables that are closed are empty");
}

void check_tunnels(const qxsim::device &device)
{
    constexpr std::uint32_t l2tp = 0;
    for (const auto &[id, entry] : device.tunnels) {
        const std::uint32_t nexthop = entry.cfg->nexthop_id;
        expect(nexthop == 0 || device.nexthop_indexes.find(nexthop) != nullptr,
               "a tunnel's next hop is there");
        expect(entry.mtu >= qxsim::mtu_least && entry.mtu <= qxsim::mtu_limit, "a tunnel's MTU");
    }
    for (const auto &row : device.sessions) {
        const qxsim::tunnel_entry *const tunnel = device.tunnels.find(row.key.tunnel);
        expect(tunnel != nullptr && tunnel->cfg->type == l2tp, "a session has its tunnel");
    }
    for (const auto &row : device.prefixes)
        expect(device.sessions.find(row.key.session) != nullptr, "a prefix has its session");
}

void check_ipsec(const qxsim::device &device)
{
    expect(device.ipsec_initialised || device.spds.empty(), "no SPDs before the start");
    std::size_t chained = 0;
    for (const auto &[handle, policy] : device.policies) {
        expect(device.spds.find(policy.spd) != nullptr, "a policy has its SPD");
        std::set<std::uint32_t> seen;
        for (std::uint32_t next = policy.first_sa; next != 0;) {
            const qxsim::sa_entry *const entry = device.associations.find(next);
            expect(entry != nullptr && entry->policy == handle, "a chain holds its policy's own");
            expect(seen.insert(next).second, "a chain ends");
            expect(entry->count >= 1 && entry->count <= qxsim::sa_bundle_limit, "a bundle's size");
            next = entry->next;
        }
        chained += seen.size();
    }
    expect_equal(chained, device.associations.size(), "associations in chains");
}

void check_maps(const qxsim::device &device)
{
    for (const qxsim::qos_port &port : device.ports) {
        expect(port.mode <= 2, "a map mode");
        for (const std::uint8_t priority : port.dscp)
            expect(priority <= qxsim::priority_limit, "a priority");
        for (const std::uint8_t priority : port.dot1p)
            expect(priority <= qxsim::priority_limit, "a priority");
    }
    expect(device.power.cpu[0] == 1, "CPU 0 is on");
    expect(device.power.frequency >= qxsim::frequency_least &&
               device.power.frequency <= qxsim::frequency_limit,
           "the clock's frequency");
}

} // namespace

void check_device(qxsim::device &device)
{
    check_tables(device);
    check_flows(device);
    check_layer3(device);
    check_tunnels(device);
    check_ipsec(device);
    check_maps(device);
}

} // namespace fuzz
