// The IPsec databases: SPDs by direction, policies in an SPD, chains of associations in a policy.
#include "device.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

// ----------------------------------------------------------------------------------------- SPDs

qx_status ipsec_init(device &here)
{
    if (here.ipsec_initialised != 0)
        return QX_INITIALISED;
    here.ipsec_initialised = 1;
    return QX_OK;
}

qx_status ipsec_spd_add(device &here, unsigned int direction, unsigned int spd_id,
                        unsigned int &spd_handle)
{
    const std::uint32_t way = meaning<place::spd_direction>(direction);
    if (way == unknown)
        return QX_BAD_DIRECTION;
    if (here.ipsec_initialised == 0)
        return QX_NOT_INITIALISED;
    const auto same = [&](const spd_entry &entry) {
        return entry.direction == way && entry.id == spd_id;
    };
    if (find_row(here.spds, same) != nullptr)
        return QX_EXISTS;
    if (here.spds.full())
        return QX_TABLE_FULL;
    spd_handle = here.spds.add({way, spd_id});
    return QX_OK;
}

qx_status ipsec_spd_delete(device &here, unsigned int spd_handle)
{
    if (here.ipsec_initialised == 0)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return missing(here.spds, spd_handle, QX_NO_SPD);
    const auto *const last = here.policy_handles.at_or_before({spd_handle, UINT32_MAX});
    if (last != nullptr && last->key.spd == spd_handle)
        return QX_IN_USE;
    here.spds.remove(spd_handle);
    return QX_OK;
}

// ------------------------------------------------------------------------------------- policies

static qx_status check_policy(const qx_ipsec_policy_t &policy)
{
    if (meaning<place::policy_action>(policy.policy_action) == unknown)
        return QX_BAD_ACTION;
    if (policy.selector_count == 0 || policy.selector_count > selector_limit)
        return QX_BAD_COUNT;
    for (unsigned index = 0; index < policy.selector_count; ++index)
        if (!valid_address(policy.selector_array[index].src_ip) ||
            !valid_address(policy.selector_array[index].dst_ip))
            return QX_BAD_ADDRESS;
    for (unsigned index = 0; index < policy.selector_count; ++index)
        if (policy.selector_array[index].src_ip.afi != policy.selector_array[index].dst_ip.afi)
            return QX_BAD_FAMILY;
    return QX_OK;
}

// Finds a policy, which has to be in the SPD given; stores it in `policy`.
static qx_status find_policy(device &here, std::uint32_t spd_handle, std::uint32_t policy_handle,
                             policy_entry *&policy)
{
    if (here.ipsec_initialised == 0)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return QX_NO_SPD;
    policy = here.policies.find(policy_handle);
    return policy == nullptr || policy->spd != spd_handle ? QX_NO_POLICY : QX_OK;
}

qx_status ipsec_policy_add(device &here, unsigned int spd_handle, const qx_ipsec_policy_t &policy,
                           unsigned int &policy_handle)
{
    const qx_status status = check_policy(policy);
    if (status != QX_OK)
        return status;
    if (here.ipsec_initialised == 0)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return QX_NO_SPD;
    const policy_key key{spd_handle, policy.policy_id};
    if (here.policy_handles.find(key) != nullptr)
        return QX_EXISTS;
    if (here.policies.full())
        return QX_TABLE_FULL;
    policy_handle = here.policies.add({spd_handle, stored{policy}, 0, 0});
    here.policy_handles.add(key, policy_handle);
    return QX_OK;
}

qx_status ipsec_policy_delete(device &here, unsigned int spd_handle, unsigned int policy_handle)
{
    const policy_entry *const gone = here.policies.removed(policy_handle);
    if (gone != nullptr && gone->spd == spd_handle)
        return QX_DELETED;
    policy_entry *policy = nullptr;
    const qx_status status = find_policy(here, spd_handle, policy_handle, policy);
    if (status != QX_OK)
        return status;
    if (policy->first_sa != 0 || policy->tunnels != 0)
        return QX_IN_USE;
    here.policy_handles.remove({spd_handle, policy->policy->policy_id});
    here.policies.remove(policy_handle);
    return QX_OK;
}

// ----------------------------------------------------------------------------- the associations

static association_key key_of(const qx_ipsec_sa_t &association)
{
    association_key key{association.spi, association.proto, association.sa_dir, {}};
    for (unsigned index = 0; index < 4; ++index)
        key.destination[index] = association.tunnel_daddr.addr[index];
    return key;
}

static qx_status check_associations(const sa_entry &added)
{
    for (unsigned index = 0; index < added.count; ++index)
        if (added.associations[index]->spi < spi_least)
            return QX_BAD_SPI;
    return QX_OK;
}

// New associations must have the SPD's direction, and must not exist yet or be given twice.
static qx_status check_new(const device &here, const sa_entry &added, std::uint32_t way)
{
    for (unsigned index = 0; index < added.count; ++index) {
        const qx_ipsec_sa_t &association = *added.associations[index];
        if (meaning<place::sa_direction>(association.sa_dir) != way)
            return QX_BAD_DIRECTION;
        const association_key key = key_of(association);
        if (here.association_handles.find(key) != nullptr)
            return QX_EXISTS;
        for (unsigned before = 0; before < index; ++before)
            if (key_of(*added.associations[before]) == key)
                return QX_EXISTS;
    }
    return QX_OK;
}

// The link to the entry that follows `previous` in a policy's chain; 0 is the chain's head.
static std::uint32_t &link_after(device &here, policy_entry &policy, std::uint32_t previous)
{
    return previous == 0 ? policy.first_sa : here.associations.find(previous)->next;
}

qx_status ipsec_sa_add(device &here, unsigned int spd_handle, unsigned int policy_handle,
                       unsigned char sa_count, const record_array<qx_ipsec_sa_t> &sa_array,
                       unsigned int previous_sa_handle, unsigned int &sa_handle)
{
    if (sa_count == 0 || sa_count > sa_bundle_limit)
        return QX_BAD_COUNT;
    sa_entry added{policy_handle, previous_sa_handle, 0, 0, sa_count, {}};
    for (unsigned index = 0; index < sa_count; ++index)
        added.associations[index] = sa_array[index];
    qx_status status = check_associations(added);
    if (status != QX_OK)
        return status;
    policy_entry *policy = nullptr;
    status = find_policy(here, spd_handle, policy_handle, policy);
    if (status != QX_OK)
        return status;
    if (meaning<place::policy_action>(policy->policy->policy_action) != action_protect)
        return QX_BAD_ACTION;
    const sa_entry *const previous = here.associations.find(previous_sa_handle);
    if (previous_sa_handle != 0 && (previous == nullptr || previous->policy != policy_handle))
        return QX_NO_SA;
    status = check_new(here, added, here.spds.find(spd_handle)->direction);
    if (status != QX_OK)
        return status;
    if (here.associations.full())
        return QX_TABLE_FULL;
    added.next = previous == nullptr ? policy->first_sa : previous->next;
    sa_handle = here.associations.add(added);
    for (unsigned index = 0; index < sa_count; ++index)
        here.association_handles.add(key_of(*added.associations[index]), sa_handle);
    link_after(here, *policy, previous_sa_handle) = sa_handle;
    if (added.next != 0)
        here.associations.find(added.next)->previous = sa_handle;
    return QX_OK;
}

qx_status ipsec_sa_delete(device &here, unsigned int spd_handle, unsigned int policy_handle,
                          unsigned int sa_handle)
{
    const sa_entry *const gone = here.associations.removed(sa_handle);
    const policy_entry *const gone_policy = here.policies.removed(policy_handle);
    policy_entry *policy = nullptr;
    const qx_status status = find_policy(here, spd_handle, policy_handle, policy);
    if (gone != nullptr && gone->policy == policy_handle &&
        (status == QX_OK || (gone_policy != nullptr && gone_policy->spd == spd_handle)))
        return QX_DELETED;
    if (status != QX_OK)
        return status;
    const sa_entry *const entry = here.associations.find(sa_handle);
    if (entry == nullptr || entry->policy != policy_handle)
        return QX_NO_SA;
    if (entry->nexthops != 0)
        return QX_IN_USE;
    link_after(here, *policy, entry->previous) = entry->next;
    if (entry->next != 0)
        here.associations.find(entry->next)->previous = entry->previous;
    for (unsigned index = 0; index < entry->count; ++index)
        here.association_handles.remove(key_of(*entry->associations[index]));
    here.associations.remove(sa_handle);
    return QX_OK;
}

} // namespace qxsim
