// The flow table, by key: the hash of a key chooses the flow's slot; slots and flow ids are
// indexes.
#include "flow.h"

#include "sdk_calls.h"

namespace qxsim {

/// A flow carries a packet when it is added, and then one every this many ticks.
constexpr std::uint32_t ticks_per_packet = 4;

qx_status check_packet(const qx_pkt_info_t &packet)
{
    if (packet.phy_port >= size_of(sized::ports))
        return QX_BAD_PORT;
    if (!valid_address(packet.da_ip) || !valid_address(packet.sa_ip))
        return QX_BAD_ADDRESS;
    if (packet.da_ip.afi != packet.sa_ip.afi)
        return QX_BAD_FAMILY;
    for (const qx_vlan_t &tag : packet.tag)
        if (tag.vlan_id > vlan_limit)
            return QX_BAD_VLAN;
    return QX_OK;
}

qx_status check_flow(const qx_flow_t &flow)
{
    const qx_status status = check_packet(flow.ingress_pkt);
    return status == QX_OK ? check_packet(flow.egress_pkt) : status;
}

hashed_flow_key key_of(const qx_flow_t &flow)
{
    const flow_key bytes = flow_key_of(flow.ingress_pkt, number_of<place::family>(ipv4));
    return {flow_hash(bytes), bytes};
}

// The first free slot for a key; false if there is none.
static bool free_slot(const device &here, const hashed_flow_key &key, std::uint16_t &slot)
{
    const std::uint32_t slots = size_of(sized::flow_slots);
    const unsigned home = flow_home(key.hash, slots);
    for (unsigned step = 0; step < flow_probe_count; ++step) {
        slot = probed(home, step, slots);
        if (here.flow_slots.find(slot) == nullptr)
            return true;
    }
    return false;
}

qx_status install_flow(device &here, const qx_flow_t &flow, const hashed_flow_key &key,
                       flow_owner owner)
{
    if (here.flow_ids.find(flow.flow_id) != nullptr || here.flows.find(key) != nullptr)
        return QX_EXISTS;
    if (here.flows.full())
        return QX_TABLE_FULL;
    std::uint16_t slot = 0;
    if (!free_slot(here, key, slot))
        return QX_NO_SLOT;
    here.flows.add(key, {stored{flow}, slot, here.ticks, owner, 0});
    here.flow_ids.add(flow.flow_id, key);
    here.flow_slots.add(slot, key);
    return QX_OK;
}

void remove_flow(device &here, const hashed_flow_key &key)
{
    const flow_entry &entry = *here.flows.find(key);
    here.flow_ids.remove(entry.flow->flow_id);
    here.flow_slots.remove(static_cast<std::uint16_t>(entry.slot));
    here.flows.remove(key);
}

qx_status flow_add(device &here, const qx_flow_t &p_flow)
{
    const qx_status status = check_flow(p_flow);
    if (status != QX_OK)
        return status;
    return install_flow(here, p_flow, key_of(p_flow), flow_owner::caller);
}

qx_status flow_delete(device &here, unsigned short flow_id)
{
    const hashed_flow_key *const key = here.flow_ids.find(flow_id);
    if (key == nullptr)
        return missing(here.flow_ids, flow_id, QX_NO_FLOW);
    if (here.flows.find(*key)->owner != flow_owner::caller)
        return QX_IN_USE;
    remove_flow(here, hashed_flow_key{*key});
    return QX_OK;
}

qx_status flow_get(device &here, unsigned short hash_index, qx_flow_t &p_flow)
{
    if (hash_index >= size_of(sized::flow_slots))
        return QX_BAD_INDEX;
    const hashed_flow_key *const key = here.flow_slots.find(hash_index);
    if (key == nullptr)
        return QX_NO_FLOW;
    here.flows.find(*key)->flow.copy_to(p_flow);
    return QX_OK;
}

qx_status flow_get_lastuse_tickcount(device &here, unsigned short flow_id,
                                     unsigned int &lastuse_tickcount)
{
    const hashed_flow_key *const key = here.flow_ids.find(flow_id);
    if (key == nullptr)
        return QX_NO_FLOW;
    const std::uint32_t added = here.flows.find(*key)->added;
    lastuse_tickcount = added + (here.ticks - added) / ticks_per_packet * ticks_per_packet;
    return QX_OK;
}

} // namespace qxsim
