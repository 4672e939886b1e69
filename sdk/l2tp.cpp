// L2TP sessions in a tunnel, and the IPv6 prefixes of a session.
#include "device.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

static qx_status check_tunnel(const device &here, std::uint32_t tunnel)
{
    const tunnel_entry *const entry = here.tunnels.find(tunnel);
    if (entry == nullptr)
        return QX_NO_TUNNEL;
    return meaning<place::tunnel_type>(entry->cfg->type) == tunnel_l2tp ? QX_OK : QX_BAD_TYPE;
}

static qx_status check_session(const device &here, const session_key &key)
{
    const qx_status status = check_tunnel(here, key.tunnel);
    if (status != QX_OK)
        return status;
    return here.sessions.find(key) != nullptr ? QX_OK : QX_NO_SESSION;
}

static bool valid_ipv6(const qx_ip_address_t &prefix)
{
    return family_of(prefix) == ipv6 && valid_address(prefix);
}

qx_status l2tp_session_add(device &here, unsigned int tunnel_id, unsigned short session_id)
{
    if (session_id == 0)
        return QX_BAD_SESSION_ID;
    const qx_status status = check_tunnel(here, tunnel_id);
    if (status != QX_OK)
        return status;
    const session_key key{tunnel_id, session_id};
    if (here.sessions.find(key) != nullptr)
        return QX_EXISTS;
    if (here.sessions.full())
        return QX_TABLE_FULL;
    here.sessions.add(key, 0);
    return QX_OK;
}

qx_status l2tp_session_delete(device &here, unsigned int tunnel_id, unsigned short session_id)
{
    const session_key key{tunnel_id, session_id};
    if (here.sessions.removed(key) != nullptr)
        return QX_DELETED;
    const qx_status status = check_session(here, key);
    if (status != QX_OK)
        return status;
    const auto *const row = here.prefixes.next({key, {}}); // an IPv4 prefix comes before all
    if (row != nullptr && row->key.session == key)
        return QX_IN_USE;
    here.sessions.remove(key);
    return QX_OK;
}

qx_status l2tp_session_get(device &here, unsigned int tunnel_id, unsigned short session_id,
                           unsigned char &is_present)
{
    const qx_status status = check_tunnel(here, tunnel_id);
    if (status == QX_OK)
        is_present = here.sessions.find({tunnel_id, session_id}) != nullptr ? 1 : 0;
    return status;
}

qx_status ipv6_over_l2tp_add(device &here, unsigned int tunnel_id, unsigned short session_id,
                             const qx_ip_address_t &ipv6_prefix)
{
    if (!valid_ipv6(ipv6_prefix))
        return QX_BAD_ADDRESS;
    const session_prefix_key key{{tunnel_id, session_id}, prefix_of(ipv6_prefix)};
    const qx_status status = check_session(here, key.session);
    if (status != QX_OK)
        return status;
    if (here.prefixes.find(key) != nullptr)
        return QX_EXISTS;
    if (here.prefixes.full())
        return QX_TABLE_FULL;
    here.prefixes.add(key, stored{ipv6_prefix});
    return QX_OK;
}

qx_status ipv6_over_l2tp_delete(device &here, unsigned int tunnel_id, unsigned short session_id,
                                const qx_ip_address_t &ipv6_prefix)
{
    if (!valid_ipv6(ipv6_prefix))
        return QX_BAD_ADDRESS;
    const session_prefix_key key{{tunnel_id, session_id}, prefix_of(ipv6_prefix)};
    if (here.prefixes.removed(key) != nullptr)
        return QX_DELETED;
    const qx_status status = check_session(here, key.session);
    if (status != QX_OK)
        return status;
    return here.prefixes.remove(key) ? QX_OK : QX_NO_PREFIX;
}

// A new record of zeros starts the walk whatever family 0 is: an IPv4 record sorts before all
// prefixes, and so does the key of no family.
static prefix_key walked(const qx_ip_address_t &prefix)
{
    return family_of(prefix) == unknown ? prefix_key{} : prefix_of(prefix);
}

qx_status ipv6_over_l2tp_getnext(device &here, unsigned int tunnel_id, unsigned short session_id,
                                 qx_ip_address_t &ipv6_prefix)
{
    if (!valid_address(ipv6_prefix) && !(stored{ipv6_prefix} == stored<qx_ip_address_t>{}))
        return QX_BAD_ADDRESS;
    const session_prefix_key key{{tunnel_id, session_id}, walked(ipv6_prefix)};
    const qx_status status = check_session(here, key.session);
    if (status != QX_OK)
        return status;
    const auto *const row = here.prefixes.next(key);
    if (row == nullptr || row->key.session != key.session)
        return QX_NO_MORE;
    row->entry.copy_to(ipv6_prefix);
    return QX_OK;
}

} // namespace qxsim
