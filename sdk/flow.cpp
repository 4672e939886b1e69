// The flow table: slots chosen by a hash of the ingress packet, and a second index by flow id.
#include "flow.h"

#include "sdk_calls.h"

namespace qxsim {

/// A flow carries a packet when it is added, and then one every this many ticks.
constexpr std::uint32_t ticks_per_packet = 4;

qx_status check_packet(const qx_pkt_info_t &packet) noexcept
{
    if (packet.phy_port >= port_count)
        return QX_BAD_PORT;
    if (!valid_address(packet.da_ip) || !valid_address(packet.sa_ip))
        return QX_BAD_ADDRESS;
    for (const qx_vlan_t &tag : packet.tag)
        if (tag.vlan_id > vlan_limit)
            return QX_BAD_VLAN;
    return QX_OK;
}

qx_status check_flow(const qx_flow_t &flow) noexcept
{
    const qx_status status = check_packet(flow.ingress_pkt);
    return status == QX_OK ? check_packet(flow.egress_pkt) : status;
}

flow_entry *find_flow(device &here, const flow_key &key, std::uint16_t &slot) noexcept
{
    const unsigned home = flow_home(key);
    for (unsigned step = 0; step < flow_probe_count; ++step) {
        slot = probed(home, step);
        flow_entry *const entry = here.flows.find(slot);
        if (entry != nullptr && entry->key == key)
            return entry;
    }
    return nullptr;
}

// The first free slot for a key; false if there is none.
static bool free_slot(const device &here, const flow_key &key, std::uint16_t &slot) noexcept
{
    const unsigned home = flow_home(key);
    for (unsigned step = 0; step < flow_probe_count; ++step) {
        slot = probed(home, step);
        if (here.flows.find(slot) == nullptr)
            return true;
    }
    return false;
}

qx_status install_flow(device &here, const qx_flow_t &flow, flow_owner owner,
                       std::uint16_t &slot) noexcept
{
    const flow_key key = flow_key_of(flow.ingress_pkt);
    if (here.flow_slots.find(flow.flow_id) != nullptr || find_flow(here, key, slot) != nullptr)
        return QX_EXISTS;
    if (here.flows.full())
        return QX_TABLE_FULL;
    if (!free_slot(here, key, slot))
        return QX_NO_SLOT;
    here.flows.add(slot, {stored{flow}, key, here.ticks, owner, 0});
    here.flow_slots.add(flow.flow_id, slot);
    return QX_OK;
}

void remove_flow(device &here, std::uint16_t slot) noexcept
{
    here.flow_slots.remove(here.flows.find(slot)->flow->flow_id);
    here.flows.remove(slot);
}

qx_status flow_add(device &here, const qx_flow_t &p_flow)
{
    std::uint16_t slot = 0;
    const qx_status status = check_flow(p_flow);
    return status == QX_OK ? install_flow(here, p_flow, flow_owner::caller, slot) : status;
}

qx_status flow_delete(device &here, unsigned short flow_id)
{
    const std::uint16_t *const slot = here.flow_slots.find(flow_id);
    if (slot == nullptr)
        return missing(here.flow_slots, flow_id, QX_NO_FLOW);
    if (here.flows.find(*slot)->owner != flow_owner::caller)
        return QX_IN_USE;
    remove_flow(here, *slot);
    return QX_OK;
}

qx_status flow_get(device &here, unsigned short hash_index, qx_flow_t &p_flow)
{
    if (hash_index >= flow_slot_count)
        return QX_BAD_INDEX;
    const flow_entry *const entry = here.flows.find(hash_index);
    if (entry == nullptr)
        return QX_NO_FLOW;
    entry->flow.copy_to(p_flow);
    return QX_OK;
}

qx_status flow_get_lastuse_tickcount(device &here, unsigned short flow_id,
                                     unsigned int &lastuse_tickcount)
{
    const std::uint16_t *const slot = here.flow_slots.find(flow_id);
    if (slot == nullptr)
        return QX_NO_FLOW;
    const std::uint32_t added = here.flows.find(*slot)->added;
    lastuse_tickcount = added + (here.ticks - added) / ticks_per_packet * ticks_per_packet;
    return QX_OK;
}

} // namespace qxsim
