// The invariants of a simulated device between calls.
#include "fuzz/call_scene.h"
#include "fuzz/expect.h"

#include "device.h"

#include <map>

namespace fuzz {

namespace {

template <class Table> void check_table(const Table &table, const char *name)
{
    expect(table.size() <= table.capacity(), name);
    expect(table.removed_count() <= table.capacity(), name);
    const typename Table::row *before = nullptr;
    for (const auto &row : table) {
        expect(before == nullptr || before->key < row.key, name);
        expect(table.removed(row.key) == nullptr, name);
        before = &row;
    }
}

void check_tables(const qxsim::device &device)
{
    const auto check_part = [](const auto &part) {
        if constexpr (requires { part.removed_count(); })
            check_table(part, "a table: within capacity, sorted, no key both there and removed");
    };
    qxsim::device::each_part(device, check_part);
}

// An index of ids or handles: as large as the table, and each entry leads to a row.
template <class Index, class Table>
void check_index(const Index &index, const Table &table, const char *name)
{
    expect_equal(index.size(), table.size(), name);
    for (const auto &row : index)
        expect(table.find(row.entry) != nullptr, name);
}

void check_flows(const qxsim::device &device)
{
    check_index(device.flow_ids, device.flows, "flows by id");
    check_index(device.flow_slots, device.flows, "flows by slot");
    check_index(device.rule_slots, device.rules, "rules by key");
    check_index(device.rtp_ids, device.rtps, "RTP translations by settings");
    check_index(device.translation_ids, device.translations, "IP translations by settings");
    std::map<std::uint32_t, std::uint32_t> flows_of_translation;
    for (const auto &[key, entry] : device.flows) {
        expect(entry.slot < qxsim::size_of(qxsim::sized::flow_slots),
               "a flow's slot is in the table");
        const auto *const by_id = device.flow_ids.find(entry.flow->flow_id);
        expect(by_id != nullptr && *by_id == key, "a flow is found by its id");
        const auto *const by_slot = device.flow_slots.find(static_cast<std::uint16_t>(entry.slot));
        expect(by_slot != nullptr && *by_slot == key, "a flow is found by its slot");
        if (entry.owner == qxsim::flow_owner::rtp) {
            const qxsim::rtp_entry *const owner = device.rtps.find(entry.owner_id);
            expect(owner != nullptr && owner->flow == key, "an RTP flow has its owner");
        } else if (entry.owner == qxsim::flow_owner::translation) {
            ++flows_of_translation[entry.owner_id];
        }
    }
    for (const auto &[id, entry] : device.rtps) {
        const qxsim::flow_entry *const flow = device.flows.find(entry.flow);
        expect(flow != nullptr && flow->owner == qxsim::flow_owner::rtp && flow->owner_id == id,
               "an RTP translation has its flow");
    }
    for (const auto &[id, entry] : device.translations)
        expect_equal(entry.flows, flows_of_translation[id], "flows of an IP translation");
}

// What an entry counts, by what names it.
using users = std::map<std::uint32_t, std::uint32_t>;

void check_layer3(const qxsim::device &device)
{
    std::map<qxsim::nexthop_key, std::uint32_t> routes;
    for (const auto &[prefix, route] : device.routes) {
        expect(device.nexthops.find(route.nexthop) != nullptr, "a route has its next hop");
        ++routes[route.nexthop];
    }
    users tunnels;
    for (const auto &[id, entry] : device.tunnels)
        ++tunnels[entry.cfg->nexthop_id];
    users bound;
    check_index(device.nexthop_indexes, device.nexthops, "next hops by index");
    for (const auto &[key, entry] : device.nexthops) {
        expect_equal(entry.routes, routes[key], "routes of a next hop");
        expect_equal(entry.tunnels, tunnels[entry.index], "tunnels of a next hop");
        expect(entry.added != 0 || entry.routes != 0 || entry.tunnels != 0,
               "a next hop is used or was added");
        const qxsim::nexthop_key *const found = device.nexthop_indexes.find(entry.index);
        expect(found != nullptr && *found == key, "a next hop is found by its index");
        if (key.type != 0)
            ++bound[entry.nexthop->id.tunnel_id];
    }
    for (const auto &[id, entry] : device.tunnels)
        expect_equal(entry.nexthops, bound[id], "next hops through a tunnel");
    for (const auto &[id, entry] : device.associations)
        expect_equal(entry.nexthops, bound[id], "next hops into an association");
    expect(device.l3_running != 0 || (device.routes.empty() && device.nexthops.empty()),
           "tables that are closed are empty");
}

void check_tunnels(const qxsim::device &device)
{
    constexpr std::uint32_t l2tp = 0;
    check_index(device.tunnel_ids, device.tunnels, "tunnels by identity");
    for (const auto &[id, entry] : device.tunnels) {
        const std::uint32_t nexthop = entry.cfg->nexthop_id;
        expect(nexthop == 0 || device.nexthop_indexes.find(nexthop) != nullptr,
               "a tunnel's next hop is there");
        expect(entry.mtu >= qxsim::mtu_least && entry.mtu <= qxsim::mtu_limit, "a tunnel's MTU");
        // No tunnel leads back into itself.
        std::size_t steps = 0;
        for (std::uint32_t next = nexthop; next != 0; ++steps) {
            expect(steps <= device.tunnels.size(), "a way through tunnels ends");
            const auto &hop = *device.nexthops.find(*device.nexthop_indexes.find(next));
            next = hop.nexthop->nhid.nhop_type == 1
                       ? device.tunnels.find(hop.nexthop->id.tunnel_id)->cfg->nexthop_id
                       : 0;
        }
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
    expect(device.ipsec_initialised != 0 || device.spds.empty(), "no SPDs before the start");
    check_index(device.policy_handles, device.policies, "policies by identity");
    std::size_t chained = 0;
    std::size_t members = 0;
    for (const auto &[handle, policy] : device.policies) {
        expect(device.spds.find(policy.spd) != nullptr, "a policy has its SPD");
        std::uint32_t previous = 0;
        for (std::uint32_t next = policy.first_sa; next != 0; ++chained) {
            const qxsim::sa_entry *const entry = device.associations.find(next);
            expect(entry != nullptr && entry->policy == handle, "a chain holds its policy's own");
            expect(entry->previous == previous, "a chain is linked both ways");
            expect(entry->count >= 1 && entry->count <= qxsim::sa_bundle_limit, "a bundle's size");
            expect(chained <= device.associations.size(), "a chain ends");
            members += entry->count;
            previous = next;
            next = entry->next;
        }
    }
    expect_equal(chained, device.associations.size(), "associations in chains");
    expect_equal(device.association_handles.size(), members, "associations by identity");
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
