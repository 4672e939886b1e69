// Snapshots and state listings of the devices.
#include "listing.h"

#include "canonical.h"
#include "numbering.h"
#include "records/json.h"
#include "records/sha256.h"

namespace qxsim {

using namespace qxsh;

namespace {

using layout = json_text::layout;

// Writes a member that is an array, with one row of a table per line.
template <class Table, class Write>
void rows(json_text &json, const char *name, const Table &table, Write write)
{
    json.name(name).array(layout::lines);
    for (const auto &row : table) {
        json.object();
        write(row.key, row.entry);
        json.end();
    }
    json.end();
}

// Leaves out ports that still have their initial maps.
void write_qos(json_text &json, const device &here)
{
    static const qos_port initial = initial_port();
    json.name("qos").array(layout::lines);
    for (unsigned port = 0; port < size_of(sized::ports); ++port) {
        const qos_port &maps = here.ports[port];
        if (maps == initial)
            continue;
        json.object()
            .member("port", port)
            .member("mode", number_of<place::map_mode_get>(maps.mode));
        json.name("dscp").numbers(maps.dscp).name("dot1p").numbers(maps.dot1p).end();
    }
    json.end();
}

// Power states, as the numbers that the SDK shows.
template <place At, class States>
void write_states(json_text &json, const char *name, States states)
{
    for (std::uint32_t &state : states)
        state = number_of<At>(state);
    json.name(name).numbers(states);
}

void write_power(json_text &json, const power_states &power)
{
    json.name("power").object().member("frequency", power.frequency);
    write_states<place::cpu_run>(json, "cpu", power.cpu);
    write_states<place::pcie_get>(json, "pcie", power.pcie);
    write_states<place::sata_get>(json, "sata", power.sata);
    write_states<place::usb_get>(json, "usb", power.usb);
    json.member("network_engine_suspended", power.network_engine_suspended);
    json.name("packet_engine_suspended").numbers(power.packet_engine_suspended).end();
}

const char *owner_name(flow_owner owner)
{
    switch (owner) {
    case flow_owner::rtp:
        return "rtp";
    case flow_owner::translation:
        return "ip_translation";
    default:
        return "caller";
    }
}

// Writes a member that is an array, with one entry per line: those of a table by their ids.
template <class Table, class Write>
void entries(json_text &json, const char *name, const std::vector<std::uint32_t> &ids,
             const Table &table, Write write)
{
    json.name(name).array(layout::lines);
    for (const std::uint32_t id : ids) {
        json.object();
        write(id, *table.find(id));
        json.end();
    }
    json.end();
}

void write_flows(json_text &json, const device &here, const numbering &numbers)
{
    rows(json, "flows", here.flows, [&](const hashed_flow_key &, const flow_entry &entry) {
        if (!numbers.renumbers())
            json.member("slot", entry.slot);
        json.name("owner").string(owner_name(entry.owner));
        json.member("owner_id", numbers.shown(entry.owner_id));
        json.name("flow").record(&*canonical(*entry.flow), record_qx_flow_t);
    });
    rows(json, "rules", here.rules, [&](unsigned, const stored<qx_rule_hash_t> &rule) {
        json.name("rule").record(&*canonical(*rule), record_qx_rule_hash_t);
    });
    entries(json, "rtp_translations", numbers.rtps, here.rtps,
            [&](std::uint32_t id, const rtp_entry &entry) {
                json.member("id", numbers.shown(id));
                json.member("flow_id", here.flows.find(entry.flow)->flow->flow_id);
                json.name("cfg").record(&*canonical(*entry.cfg), record_qx_rtp_cfg_t);
            });
    entries(json, "ip_translations", numbers.translations, here.translations,
            [&](std::uint32_t id, const translation_entry &entry) {
                json.member("id", numbers.shown(id)).member("flows", entry.flows);
                json.name("cfg").record(&*canonical(*entry.cfg), record_qx_ip_translate_cfg_t);
            });
}

void write_prefix(json_text &json, const char *name, const stored<qx_ip_address_t> &prefix)
{
    json.name(name).record(&*canonical_prefix(*prefix), record_qx_ip_address_t);
}

void write_l3(json_text &json, const device &here, const numbering &numbers)
{
    json.name("l3_running").flag(here.l3_running != 0);
    rows(json, "routes", here.routes, [&](const prefix_key &, const route_entry &entry) {
        const nexthop_entry &nexthop = *here.nexthops.find(entry.nexthop);
        json.member("nexthop_index", numbers.shown(nexthop.index));
        write_prefix(json, "prefix", stored{entry.route->prefix});
    });
    rows(json, "nexthops", here.nexthops, [&](const nexthop_key &, const nexthop_entry &entry) {
        json.member("index", numbers.shown(entry.index)).member("routes", entry.routes);
        json.name("added").flag(entry.added != 0);
        stored<qx_l3_nexthop_t> nexthop = canonical(*entry.nexthop);
        numbers.replace_ids(*nexthop);
        json.name("nexthop").record(&*nexthop, record_qx_l3_nexthop_t);
    });
    rows(json, "nat_subnets", here.subnets,
         [&](const subnet_key &key, const stored<qx_ip_address_t> &subnet) {
             json.member("interface", key.interface);
             write_prefix(json, "subnet", subnet);
         });
    rows(json, "port_mtus", here.port_mtus, [&](const port_encap_key &key, std::uint32_t mtu) {
        json.member("port", key.port)
            .member("encap", number_of<place::mtu_get_encap>(key.encap))
            .member("mtu", mtu);
    });
}

// Sessions and prefixes are in the order of their tunnels.
void write_sessions(json_text &json, const device &here, const numbering &numbers)
{
    json.name("l2tp_sessions").array(layout::lines);
    for (const std::uint32_t tunnel : numbers.tunnels)
        for (auto *row = here.sessions.next({tunnel, 0});
             row != nullptr && row->key.tunnel == tunnel; row = here.sessions.next(row->key))
            json.object()
                .member("tunnel", numbers.shown(tunnel))
                .member("session", row->key.session)
                .end();
    json.end().name("l2tp_prefixes").array(layout::lines);
    for (const std::uint32_t tunnel : numbers.tunnels)
        for (auto *row = here.prefixes.next({{tunnel, 0}, {}});
             row != nullptr && row->key.session.tunnel == tunnel;
             row = here.prefixes.next(row->key)) {
            json.object().member("tunnel", numbers.shown(tunnel));
            json.member("session", row->key.session.session);
            write_prefix(json, "prefix", row->entry);
            json.end();
        }
    json.end();
}

void write_tunnels(json_text &json, const device &here, const numbering &numbers)
{
    entries(json, "tunnels", numbers.tunnels, here.tunnels,
            [&](std::uint32_t id, const tunnel_entry &entry) {
                json.member("id", numbers.shown(id)).member("mtu", entry.mtu);
                stored<qx_tunnel_cfg_t> cfg = canonical(*entry.cfg);
                numbers.replace_ids(*cfg);
                json.name("cfg").record(&*cfg, record_qx_tunnel_cfg_t);
            });
    write_sessions(json, here, numbers);
    rows(json, "pptp_sessions", here.pptp, [&](const pptp_key &, const pptp_entry &entry) {
        json.name("session").record(&*canonical(*entry.session), record_qx_pptp_sa_t);
    });
    rows(json, "pppoe_ports", here.pppoe, [&](unsigned id, const pppoe_entry &entry) {
        json.member("pppoe_port", id).member("port", entry.port).name("encap");
        if (entry.configured != 0)
            json.record(&*canonical(*entry.cfg), record_qx_pppoe_port_cfg_t);
        else
            json.null();
    });
}

void write_ipsec(json_text &json, const device &here, const numbering &numbers)
{
    entries(json, "spds", numbers.spds, here.spds,
            [&](std::uint32_t handle, const spd_entry &entry) {
                json.member("handle", numbers.shown(handle));
                json.member("direction", number_of<place::spd_direction>(entry.direction))
                    .member("id", entry.id);
            });
    entries(json, "policies", numbers.policies, here.policies,
            [&](std::uint32_t handle, const policy_entry &entry) {
                json.member("handle", numbers.shown(handle));
                json.member("spd", numbers.shown(entry.spd));
                json.member("first_sa", numbers.shown(entry.first_sa));
                json.name("policy").record(&*canonical(*entry.policy), record_qx_ipsec_policy_t);
            });
    entries(json, "associations", numbers.associations, here.associations,
            [&](std::uint32_t handle, const sa_entry &entry) {
                json.member("handle", numbers.shown(handle));
                json.member("policy", numbers.shown(entry.policy));
                json.member("next", numbers.shown(entry.next)).name("associations").array();
                for (unsigned index = 0; index < entry.count; ++index)
                    json.record(&*canonical(*entry.associations[index]), record_qx_ipsec_sa_t);
                json.end();
            });
}

void write_device(json_text &json, const device &here, bool renumber)
{
    const numbering numbers{here, renumber};
    json.object(layout::lines).member("device", here.number);
    write_qos(json, here);
    write_power(json, here.power);
    write_flows(json, here, numbers);
    write_l3(json, here, numbers);
    write_tunnels(json, here, numbers);
    write_ipsec(json, here, numbers);
    json.end();
}

void write_devices(json_text &json, bool renumber)
{
    json.name("devices").array(layout::lines);
    for (unsigned number = 0; number < size_of(sized::devices); ++number)
        write_device(json, device_numbered(number), renumber);
    json.end();
}

// Equal keys have equal texts in all listings.
std::string unsalted(const unsigned char *bytes, std::size_t size, const void *)
{
    return qxsh::fingerprint({}, bytes, size);
}

constexpr qxsh::hidden_text fingerprints{unsalted, nullptr};

// --------------------------------------------------------------------- state that changes with use

template <class Table> void write_use(json_text &json, const char *name, const Table &table)
{
    json.name(name)
        .object()
        .member("used", table.size())
        .member("capacity", table.capacity())
        .end();
}

void write_activity(json_text &json, const device &here)
{
    json.object(layout::lines).member("device", here.number).member("ticks", here.ticks);
    json.member("suspends", here.power.suspends);
    json.name("ipsec_initialised").flag(here.ipsec_initialised != 0);
    json.name("tables").object(layout::lines);
    write_use(json, "flows", here.flows);
    write_use(json, "rules", here.rules);
    write_use(json, "rtp_translations", here.rtps);
    write_use(json, "ip_translations", here.translations);
    write_use(json, "routes", here.routes);
    write_use(json, "nexthops", here.nexthops);
    write_use(json, "nat_subnets", here.subnets);
    write_use(json, "port_mtus", here.port_mtus);
    write_use(json, "tunnels", here.tunnels);
    write_use(json, "l2tp_sessions", here.sessions);
    write_use(json, "l2tp_prefixes", here.prefixes);
    write_use(json, "spds", here.spds);
    write_use(json, "policies", here.policies);
    write_use(json, "associations", here.associations);
    write_use(json, "pptp_sessions", here.pptp);
    write_use(json, "pppoe_ports", here.pppoe);
    json.end().end();
}

void write_rules(json_text &json, const std::vector<fault_rule> &rules)
{
    for (const fault_rule &rule : rules) {
        json.object().name("function").string(rule.pattern.c_str()).member("first", rule.first);
        json.name("once").flag(rule.once).member("status", rule.status);
        json.member("seen", rule.seen).member("fired", rule.fired);
        json.end();
    }
}

} // namespace

std::string snapshot_text(bool keys)
{
    json_text json{keys, fingerprints};
    json.object(layout::lines);
    write_devices(json, true);
    json.end();
    return json.text() + "\n";
}

std::string state_text(bool keys, const call_counts &counts,
                       const std::vector<fault_rule> &environment,
                       const std::vector<fault_rule> &file)
{
    json_text json{keys, fingerprints};
    json.object(layout::lines).member("calls", counts.all());
    json.name("calls_by_function").object(layout::lines);
    for (std::size_t function = 0; function < call_count; ++function)
        if (counts.of(function) != 0)
            json.member(call_rows[function].name.text(), counts.of(function));
    json.end().name("faults").array(layout::lines);
    write_rules(json, environment);
    write_rules(json, file);
    json.end().name("activity").array(layout::lines);
    for (unsigned number = 0; number < size_of(sized::devices); ++number)
        write_activity(json, device_numbered(number));
    json.end();
    write_devices(json, false);
    json.end();
    return json.text() + "\n";
}

} // namespace qxsim
