// The rule hash: a rule is stored in the slot given by its hash_index.
#include "device.h"
#include "records/values.h"
#include "sdk_calls.h"

namespace qxsim {

// The lookup key with its padding cleared, so that keys with equal fields have equal bytes.
static rule_key key_of(const qx_rule_hash_t &rule) noexcept
{
    rule_key key{rule.key};
    qxsh::clear_padding(&*key, qxsh::record_rows[qxsh::record_qx_rule_hash_key_t]);
    return key;
}

qx_status rule_hash_add(device &here, const qx_rule_hash_t &p_rule_hash)
{
    if (p_rule_hash.hash_index >= rule_slot_count)
        return QX_BAD_INDEX;
    if (p_rule_hash.key.vid_1 > vlan_limit || p_rule_hash.key.vid_2 > vlan_limit)
        return QX_BAD_VLAN;
    const rule_key key = key_of(p_rule_hash);
    const auto same = [&](const rule_entry &entry) { return entry.key.same_bytes(key); };
    if (here.rules.find(p_rule_hash.hash_index) != nullptr || find_row(here.rules, same) != nullptr)
        return QX_EXISTS;
    if (here.rules.full())
        return QX_TABLE_FULL;
    here.rules.add(p_rule_hash.hash_index, {stored{p_rule_hash}, key});
    return QX_OK;
}

qx_status rule_hash_delete_by_hash_index(device &here, unsigned short hash_index)
{
    if (hash_index >= rule_slot_count)
        return QX_BAD_INDEX;
    if (here.rules.find(hash_index) == nullptr)
        return missing(here.rules, hash_index, QX_NO_RULE);
    here.rules.remove(hash_index);
    return QX_OK;
}

qx_status rule_hash_get_by_hash_index(device &here, unsigned short hash_index,
                                      qx_rule_hash_t &p_rule_hash)
{
    if (hash_index >= rule_slot_count)
        return QX_BAD_INDEX;
    const rule_entry *const entry = here.rules.find(hash_index);
    if (entry == nullptr)
        return QX_NO_RULE;
    entry->rule.copy_to(p_rule_hash);
    return QX_OK;
}

} // namespace qxsim
