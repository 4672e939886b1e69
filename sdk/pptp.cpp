// PPTP sessions, one per identifier and direction, and key changes.
#include "device.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

static qx_status check_session(const qx_pptp_sa_t &session)
{
    if (session.sa_id == 0)
        return QX_BAD_SESSION_ID;
    if (meaning<place::pptp_direction>(session.dir) == unknown)
        return QX_BAD_DIRECTION;
    if (!valid_address(session.local_addr) || !valid_address(session.remote_addr))
        return QX_BAD_ADDRESS;
    if (session.local_addr.afi != session.remote_addr.afi)
        return QX_BAD_FAMILY;
    return session.keylen > pptp_key_limit ? QX_BAD_KEY : QX_OK;
}

qx_status pptp_session_add(device &here, const qx_pptp_sa_t &session)
{
    const qx_status status = check_session(session);
    if (status != QX_OK)
        return status;
    const pptp_key key{session.sa_id, meaning<place::pptp_direction>(session.dir)};
    if (here.pptp.find(key) != nullptr)
        return QX_EXISTS;
    if (here.pptp.full())
        return QX_TABLE_FULL;
    here.pptp.add(key, {stored{session}, 0});
    return QX_OK;
}

qx_status pptp_session_delete(device &here, unsigned short sa_id, unsigned char direction)
{
    const pptp_key key{sa_id, meaning<place::pptp_delete_direction>(direction)};
    if (key.direction == unknown)
        return QX_BAD_DIRECTION;
    const pptp_entry *const entry = here.pptp.find(key);
    if (entry == nullptr)
        return missing(here.pptp, key, QX_NO_SESSION);
    if (entry->tunnels != 0)
        return QX_IN_USE;
    here.pptp.remove(key);
    return QX_OK;
}

qx_status pptp_session_get(device &here, qx_pptp_sa_t &session)
{
    const pptp_key key{session.sa_id, meaning<place::pptp_direction>(session.dir)};
    if (key.direction == unknown)
        return QX_BAD_DIRECTION;
    const pptp_entry *const found = here.pptp.find(key);
    if (found == nullptr)
        return QX_NO_SESSION;
    found->session.copy_to(session);
    return QX_OK;
}

qx_status pptp_session_clear_all(device &here)
{
    if (find_row(here.pptp, [](const pptp_entry &entry) { return entry.tunnels != 0; }) != nullptr)
        return QX_IN_USE;
    here.pptp.clear();
    return QX_OK;
}

// Changes the key: each byte is incremented. Sequence numbers start again.
static void change_key(qx_pptp_sa_t &session)
{
    for (unsigned index = 0; index < session.keylen; ++index)
        ++session.key[index];
    session.seq_num = 0;
}

static bool has_key(const qx_pptp_sa_t &session)
{
    return meaning<place::crypto_type>(session.crypto_type) != crypto_none && session.keylen != 0;
}

qx_status pptp_key_change(device &here, unsigned short sa_id)
{
    pptp_entry *const entries[] = {here.pptp.find({sa_id, inbound}),
                                   here.pptp.find({sa_id, outbound})};
    if (entries[0] == nullptr && entries[1] == nullptr)
        return QX_NO_SESSION;
    for (const pptp_entry *entry : entries)
        if (entry != nullptr && !has_key(*entry->session))
            return QX_BAD_KEY;
    for (pptp_entry *entry : entries)
        if (entry != nullptr)
            change_key(*entry->session);
    return QX_OK;
}

} // namespace qxsim
