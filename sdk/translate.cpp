// RTP and IP translations. They own flows in the flow table, which only they can remove: an RTP
// translation has exactly one, an IP translation any number.
#include "codes.h"
#include "flow.h"
#include "sdk_calls.h"

namespace qxsim {

// Each tick brings one packet of a stream, with 20 ms of speech: its size, and its timestamp units.
constexpr std::uint32_t rtp_packet_bytes = 172;
constexpr std::uint32_t rtp_packet_time = 160;

constexpr unsigned port_set_bits = 16;

static bool same_rewriting(const qx_rtp_cfg_t &left, const qx_rtp_cfg_t &right) noexcept
{
    return left.seq_num_diff == right.seq_num_diff && left.timestamp_diff == right.timestamp_diff &&
           left.input_ssrc == right.input_ssrc && left.output_ssrc == right.output_ssrc;
}

// Finds an RTP translation in the table, or among the rows removed from it.
template <class Rows> static auto find_rtp(Rows &rows, const qx_rtp_cfg_t &cfg) noexcept
{
    return find_row(rows, [&](const rtp_entry &entry) { return same_rewriting(*entry.cfg, cfg); });
}

qx_status rtp_translate_add(device &here, const qx_rtp_cfg_t &p_rtp_cfg,
                            const qx_flow_t &p_flow_entry, unsigned int &p_rtp_id)
{
    qx_status status = check_flow(p_flow_entry);
    if (status != QX_OK)
        return status;
    if (find_rtp(here.rtps, p_rtp_cfg) != nullptr)
        return QX_EXISTS;
    if (here.rtps.full())
        return QX_TABLE_FULL;
    std::uint16_t slot = 0;
    status = install_flow(here, p_flow_entry, flow_owner::rtp, slot);
    if (status != QX_OK)
        return status;
    p_rtp_id = here.rtps.add({stored{p_rtp_cfg}, slot, here.ticks});
    here.flows.find(slot)->owner_id = p_rtp_id;
    return QX_OK;
}

qx_status rtp_translate_delete_by_id(device &here, unsigned int rtp_id)
{
    const rtp_entry *const entry = here.rtps.find(rtp_id);
    if (entry == nullptr)
        return missing(here.rtps, rtp_id, QX_NO_RTP);
    remove_flow(here, entry->flow_slot);
    here.rtps.remove(rtp_id);
    return QX_OK;
}

qx_status rtp_translate_delete(device &here, const qx_rtp_cfg_t &p_rtp_cfg)
{
    const auto *const row = find_rtp(here.rtps, p_rtp_cfg);
    if (row == nullptr)
        return find_rtp(here.rtps.removed(), p_rtp_cfg) != nullptr ? QX_DELETED : QX_NO_RTP;
    return rtp_translate_delete_by_id(here, row->key);
}

// The id determines the device, whose clock advances as in a call that names it.
qx_status rtp_statistics_get(unsigned int rtp_id, qx_rtp_stats_t &data)
{
    const unsigned number = rtp_id >> 16;
    if (number >= device_count)
        return QX_NO_RTP;
    device &here = device_numbered(number);
    ++here.ticks;
    const rtp_entry *const entry = here.rtps.find(rtp_id);
    if (entry == nullptr)
        return QX_NO_RTP;
    const std::uint32_t packets = here.ticks - entry->added;
    data.available = 1;
    data.seq_num = static_cast<std::uint16_t>(entry->cfg->seq_num_diff + packets);
    data.timestamp = entry->cfg->timestamp_diff + packets * rtp_packet_time;
    data.pkt_cnt = packets;
    data.byte_cnt = packets * rtp_packet_bytes;
    return QX_OK;
}

static qx_status check_translation(const qx_ip_translate_cfg_t &cfg) noexcept
{
    if (cfg.translate_type > translate_type_limit)
        return QX_BAD_TYPE;
    if (unsigned{cfg.port_set_id_offset} + cfg.port_set_id_length > port_set_bits)
        return QX_BAD_PORT_SET;
    return check_packet(cfg.v6_pkt);
}

qx_status ip_translate_add(device &here, const qx_ip_translate_cfg_t &p_ip_translate_cfg,
                           unsigned int &p_ip_translate_id)
{
    const qx_status status = check_translation(p_ip_translate_cfg);
    if (status != QX_OK)
        return status;
    const stored<qx_ip_translate_cfg_t> cfg{p_ip_translate_cfg};
    const auto same = [&](const translation_entry &entry) { return entry.cfg.same_bytes(cfg); };
    if (find_row(here.translations, same) != nullptr)
        return QX_EXISTS;
    if (here.translations.full())
        return QX_TABLE_FULL;
    p_ip_translate_id = here.translations.add({cfg, 0});
    return QX_OK;
}

qx_status ip_translate_del(device &here, unsigned int ip_translate_id)
{
    const translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return missing(here.translations, ip_translate_id, QX_NO_TRANSLATION);
    if (entry->flows != 0)
        return QX_IN_USE;
    here.translations.remove(ip_translate_id);
    return QX_OK;
}

qx_status ip_translate_get(device &here, unsigned int ip_translate_id,
                           qx_ip_translate_cfg_t &p_ip_translate_cfg)
{
    const translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return QX_NO_TRANSLATION;
    entry->cfg.copy_to(p_ip_translate_cfg);
    return QX_OK;
}

qx_status ip_translate_flow_add(device &here, unsigned int ip_translate_id,
                                const qx_flow_t &p_flow_entry)
{
    qx_status status = check_flow(p_flow_entry);
    if (status != QX_OK)
        return status;
    translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return QX_NO_TRANSLATION;
    std::uint16_t slot = 0;
    status = install_flow(here, p_flow_entry, flow_owner::translation, slot);
    if (status != QX_OK)
        return status;
    here.flows.find(slot)->owner_id = ip_translate_id;
    ++entry->flows;
    return QX_OK;
}

qx_status ip_translate_flow_del(device &here, unsigned int ip_translate_id,
                                const qx_flow_t &p_flow_entry)
{
    const qx_status status = check_flow(p_flow_entry);
    if (status != QX_OK)
        return status;
    translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return QX_NO_TRANSLATION;
    const flow_key key = flow_key_of(p_flow_entry.ingress_pkt);
    const auto bound = [&](const flow_entry &flow) {
        return flow.key == key && flow.owner == flow_owner::translation &&
               flow.owner_id == ip_translate_id;
    };
    std::uint16_t slot = 0;
    const flow_entry *const flow = find_flow(here, key, slot);
    if (flow == nullptr)
        return find_row(here.flows.removed(), bound) != nullptr ? QX_DELETED : QX_NO_FLOW;
    if (!bound(*flow))
        return QX_NO_FLOW;
    remove_flow(here, slot);
    --entry->flows;
    return QX_OK;
}

} // namespace qxsim
