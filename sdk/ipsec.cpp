// The IPsec databases: SPDs by direction, policies in an SPD, chains of associations in a policy.
#include "codes.h"
#include "device.h"
#include "sdk_calls.h"

namespace qxsim {

// ----------------------------------------------------------------------------------------- SPDs

qx_status ipsec_init(device &here)
{
    if (here.ipsec_initialised)
        return QX_INITIALISED;
    here.ipsec_initialised = true;
    return QX_OK;
}

qx_status ipsec_spd_add(device &here, unsigned int direction, unsigned int spd_id,
                        unsigned int &spd_handle)
{
    if (direction > outbound)
        return QX_BAD_DIRECTION;
    if (!here.ipsec_initialised)
        return QX_NOT_INITIALISED;
    const auto same = [&](const spd_entry &entry) {
        return entry.direction == direction && entry.id == spd_id;
    };
    if (find_row(here.spds, same) != nullptr)
        return QX_EXISTS;
    if (here.spds.full())
        return QX_TABLE_FULL;
    spd_handle = here.spds.add({direction, spd_id});
    return QX_OK;
}

qx_status ipsec_spd_delete(device &here, unsigned int spd_handle)
{
    if (!here.ipsec_initialised)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return missing(here.spds, spd_handle, QX_NO_SPD);
    const auto inside = [&](const policy_entry &entry) { return entry.spd == spd_handle; };
    if (find_row(here.policies, inside) != nullptr)
        return QX_IN_USE;
    here.spds.remove(spd_handle);
    return QX_OK;
}

// ------------------------------------------------------------------------------------- policies

static qx_status check_policy(const qx_ipsec_policy_t &policy) noexcept
{
    if (policy.policy_action > action_protect)
        return QX_BAD_ACTION;
    if (policy.selector_count == 0 || policy.selector_count > selector_limit)
        return QX_BAD_COUNT;
    for (unsigned index = 0; index < policy.selector_count; ++index)
        if (!valid_address(policy.selector_array[index].src_ip) ||
            !valid_address(policy.selector_array[index].dst_ip))
            return QX_BAD_ADDRESS;
    return QX_OK;
}

// Finds a policy, which has to be in the SPD given; stores it in `policy`.
static qx_status find_policy(device &here, std::uint32_t spd_handle, std::uint32_t policy_handle,
                             policy_entry *&policy) noexcept
{
    if (!here.ipsec_initialised)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return QX_NO_SPD;
    policy = here.policies.find(policy_handle);
    return policy == nullptr || policy->spd != spd_handle ? QX_NO_POLICY : QX_OK;
}

static bool protects_tunnel(const device &here, std::uint32_t policy) noexcept
{
    return find_row(here.tunnels, [&](const tunnel_entry &entry) {
               const qx_tunnel_cfg_union_t &tunnel = entry.cfg->tunnel;
               switch (entry.cfg->type) {
               case tunnel_l2tp:
                   return tunnel.l2tp.ipsec_policy == policy;
               case tunnel_gre:
                   return tunnel.gre.overlay_tunnel_ingress.enc_policy == policy ||
                          tunnel.gre.overlay_tunnel_egress.enc_policy == policy;
               case tunnel_ipsec:
                   return tunnel.ipsec.ipsec_policy == policy;
               default:
                   return tunnel.etherip.ipsec_policy == policy;
               }
           }) != nullptr;
}

qx_status ipsec_policy_add(device &here, unsigned int spd_handle, const qx_ipsec_policy_t &policy,
                           unsigned int &policy_handle)
{
    const qx_status status = check_policy(policy);
    if (status != QX_OK)
        return status;
    if (!here.ipsec_initialised)
        return QX_NOT_INITIALISED;
    if (here.spds.find(spd_handle) == nullptr)
        return QX_NO_SPD;
    const auto same = [&](const policy_entry &entry) {
        return entry.spd == spd_handle && entry.policy->policy_id == policy.policy_id;
    };
    if (find_row(here.policies, same) != nullptr)
        return QX_EXISTS;
    if (here.policies.full())
        return QX_TABLE_FULL;
    policy_handle = here.policies.add({spd_handle, stored{policy}, 0});
    return QX_OK;
}

qx_status ipsec_policy_delete(device &here, unsigned int spd_handle, unsigned int policy_handle)
{
    policy_entry *policy = nullptr;
    const qx_status status = find_policy(here, spd_handle, policy_handle, policy);
    if (status == QX_NO_POLICY)
        return missing(here.policies, policy_handle, QX_NO_POLICY);
    if (status != QX_OK)
        return status;
    if (policy->first_sa != 0 || protects_tunnel(here, policy_handle))
        return QX_IN_USE;
    here.policies.remove(policy_handle);
    return QX_OK;
}

// ----------------------------------------------------------------------------- the associations

// Associations are the same if their SPI, protocol, destination and direction are.
static bool same_association(const qx_ipsec_sa_t &left, const qx_ipsec_sa_t &right) noexcept
{
    for (unsigned index = 0; index < 4; ++index)
        if (left.tunnel_daddr.addr[index] != right.tunnel_daddr.addr[index])
            return false;
    return left.spi == right.spi && left.proto == right.proto && left.sa_dir == right.sa_dir;
}

static bool has_association(const sa_entry &entry, const qx_ipsec_sa_t &wanted) noexcept
{
    for (unsigned index = 0; index < entry.count; ++index)
        if (same_association(*entry.associations[index], wanted))
            return true;
    return false;
}

static qx_status check_associations(const sa_entry &added) noexcept
{
    for (unsigned index = 0; index < added.count; ++index)
        if (added.associations[index]->spi < spi_least)
            return QX_BAD_SPI;
    return QX_OK;
}

// New associations must have the SPD's direction, and must not exist yet or be given twice.
static qx_status check_new(const device &here, const sa_entry &added, std::uint32_t way) noexcept
{
    for (unsigned index = 0; index < added.count; ++index) {
        const qx_ipsec_sa_t &association = *added.associations[index];
        if (association.sa_dir != way)
            return QX_BAD_DIRECTION;
        sa_entry before = added;
        before.count = index;
        const auto same = [&](const sa_entry &entry) {
            return has_association(entry, association);
        };
        if (same(before) || find_row(here.associations, same) != nullptr)
            return QX_EXISTS;
    }
    return QX_OK;
}

qx_status ipsec_sa_add(device &here, unsigned int spd_handle, unsigned int policy_handle,
                       unsigned char sa_count, const record_array<qx_ipsec_sa_t> &sa_array,
                       unsigned int previous_sa_handle, unsigned int &sa_handle)
{
    if (sa_count == 0 || sa_count > sa_bundle_limit)
        return QX_BAD_COUNT;
    sa_entry added{policy_handle, 0, sa_count, {}};
    for (unsigned index = 0; index < sa_count; ++index)
        added.associations[index] = sa_array[index];
    qx_status status = check_associations(added);
    if (status != QX_OK)
        return status;
    policy_entry *policy = nullptr;
    status = find_policy(here, spd_handle, policy_handle, policy);
    if (status != QX_OK)
        return status;
    if (policy->policy->policy_action != action_protect)
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
    if (previous_sa_handle == 0)
        policy->first_sa = sa_handle;
    else
        here.associations.find(previous_sa_handle)->next = sa_handle;
    return QX_OK;
}

qx_status ipsec_sa_delete(device &here, unsigned int spd_handle, unsigned int policy_handle,
                          unsigned int sa_handle)
{
    policy_entry *policy = nullptr;
    const qx_status status = find_policy(here, spd_handle, policy_handle, policy);
    if (status != QX_OK)
        return status;
    const sa_entry *const entry = here.associations.find(sa_handle);
    if (entry == nullptr || entry->policy != policy_handle)
        return missing(here.associations, sa_handle, QX_NO_SA);
    const auto bound = [&](const nexthop_entry &nexthop) {
        return nexthop.nexthop->nhid.nhop_type == nexthop_by_sa &&
               nexthop.nexthop->id.ipsec_said == sa_handle;
    };
    if (find_row(here.nexthops, bound) != nullptr)
        return QX_IN_USE;
    std::uint32_t *link = &policy->first_sa;
    while (*link != sa_handle)
        link = &here.associations.find(*link)->next;
    *link = entry->next;
    here.associations.remove(sa_handle);
    return QX_OK;
}

} // namespace qxsim
