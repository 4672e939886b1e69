// The rule hash: a rule is stored in the slot given by its hash_index.
#include "canonical.h"
#include "device.h"
#include "sdk_calls.h"

namespace qxsim {

qx_status rule_hash_add(device &here, const qx_rule_hash_t &p_rule_hash)
{
    if (p_rule_hash.hash_index >= size_of(sized::rule_slots))
        return QX_BAD_INDEX;
    if (p_rule_hash.key.vid_1 > vlan_limit || p_rule_hash.key.vid_2 > vlan_limit)
        return QX_BAD_VLAN;
    const rule_key key = canonical(p_rule_hash.key);
    if (here.rules.find(p_rule_hash.hash_index) != nullptr || here.rule_slots.find(key) != nullptr)
        return QX_EXISTS;
    if (here.rules.full())
        return QX_TABLE_FULL;
    here.rules.add(p_rule_hash.hash_index, stored{p_rule_hash});
    here.rule_slots.add(key, p_rule_hash.hash_index);
    return QX_OK;
}

qx_status rule_hash_delete_by_hash_index(device &here, unsigned short hash_index)
{
    if (hash_index >= size_of(sized::rule_slots))
        return QX_BAD_INDEX;
    const stored<qx_rule_hash_t> *const rule = here.rules.find(hash_index);
    if (rule == nullptr)
        return missing(here.rules, hash_index, QX_NO_RULE);
    here.rule_slots.remove(canonical((*rule)->key));
    here.rules.remove(hash_index);
    return QX_OK;
}

qx_status rule_hash_get_by_hash_index(device &here, unsigned short hash_index,
                                      qx_rule_hash_t &p_rule_hash)
{
    if (hash_index >= size_of(sized::rule_slots))
        return QX_BAD_INDEX;
    const stored<qx_rule_hash_t> *const rule = here.rules.find(hash_index);
    if (rule == nullptr)
        return QX_NO_RULE;
    rule->copy_to(p_rule_hash);
    return QX_OK;
}

} // namespace qxsim
