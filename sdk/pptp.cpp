// PPTP sessions, one per identifier and direction, and key changes.
#include "codes.h"
#include "device.h"
#include "sdk_calls.h"

namespace qxsim {

static qx_status check_session(const qx_pptp_sa_t &session) noexcept
{
    if (session.sa_id == 0)
        return QX_BAD_SESSION_ID;
    if (session.dir > outbound)
        return QX_BAD_DIRECTION;
    if (!valid_address(session.local_addr) || !valid_address(session.remote_addr))
        return QX_BAD_ADDRESS;
    return session.keylen > pptp_key_limit ? QX_BAD_KEY : QX_OK;
}

// A GRE tunnel refers to a session of its direction by the low half of an overlay word.
static bool used_by_tunnel(const device &here, const pptp_key &key) noexcept
{
    return find_row(here.tunnels, [&](const tunnel_entry &entry) {
               if (entry.cfg->type != tunnel_gre)
                   return false;
               const qx_gre_tunnel_cfg_t &gre = entry.cfg->tunnel.gre;
               const std::uint32_t named = key.direction == inbound
                                               ? gre.overlay_tunnel_ingress.enc_policy
                                               : gre.overlay_tunnel_egress.enc_policy;
               return named == key.id;
           }) != nullptr;
}

qx_status pptp_session_add(device &here, const qx_pptp_sa_t &session)
{
    const qx_status status = check_session(session);
    if (status != QX_OK)
        return status;
    const pptp_key key{session.sa_id, session.dir};
    if (here.pptp.find(key) != nullptr)
        return QX_EXISTS;
    if (here.pptp.full())
        return QX_TABLE_FULL;
    here.pptp.add(key, stored{session});
    return QX_OK;
}

qx_status pptp_session_delete(device &here, unsigned short sa_id, unsigned char direction)
{
    if (direction > outbound)
        return QX_BAD_DIRECTION;
    const pptp_key key{sa_id, direction};
    if (here.pptp.find(key) == nullptr)
        return missing(here.pptp, key, QX_NO_SESSION);
    if (used_by_tunnel(here, key))
        return QX_IN_USE;
    here.pptp.remove(key);
    return QX_OK;
}

qx_status pptp_session_get(device &here, qx_pptp_sa_t &session)
{
    if (session.dir > outbound)
        return QX_BAD_DIRECTION;
    const stored<qx_pptp_sa_t> *const found = here.pptp.find({session.sa_id, session.dir});
    if (found == nullptr)
        return QX_NO_SESSION;
    found->copy_to(session);
    return QX_OK;
}

qx_status pptp_session_clear_all(device &here)
{
    for (const auto &row : here.pptp)
        if (used_by_tunnel(here, row.key))
            return QX_IN_USE;
    here.pptp.clear();
    return QX_OK;
}

// Changes the key: each byte is incremented. Sequence numbers start again.
static void change_key(qx_pptp_sa_t &session) noexcept
{
    for (unsigned index = 0; index < session.keylen; ++index)
        ++session.key[index];
    session.seq_num = 0;
}

static bool has_key(const qx_pptp_sa_t &session) noexcept
{
    return session.crypto_type != crypto_none && session.keylen != 0;
}

qx_status pptp_key_change(device &here, unsigned short sa_id)
{
    stored<qx_pptp_sa_t> *const sessions[] = {here.pptp.find({sa_id, inbound}),
                                              here.pptp.find({sa_id, outbound})};
    bool found = false;
    for (const stored<qx_pptp_sa_t> *session : sessions) {
        if (session != nullptr && !has_key(**session))
            return QX_BAD_KEY;
        found = found || session != nullptr;
    }
    if (!found)
        return QX_NO_SESSION;
    for (stored<qx_pptp_sa_t> *session : sessions)
        if (session != nullptr)
            change_key(**session);
    return QX_OK;
}

} // namespace qxsim
