// RTP and IP translations. They own flows in the flow table, which only they can remove: an RTP
// translation has exactly one, an IP translation any number.
#include "canonical.h"
#include "flow.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

// Each tick brings one packet of a stream, with 20 ms of speech: its size, and its timestamp units.
constexpr std::uint32_t rtp_packet_bytes = 172;
constexpr std::uint32_t rtp_packet_time = 160;

constexpr unsigned port_set_bits = 16;

static rtp_key key_of(const qx_rtp_cfg_t &cfg)
{
    return {cfg.seq_num_diff, cfg.timestamp_diff, cfg.input_ssrc, cfg.output_ssrc};
}

qx_status rtp_translate_add(device &here, const qx_rtp_cfg_t &p_rtp_cfg,
                            const qx_flow_t &p_flow_entry, unsigned int &p_rtp_id)
{
    qx_status status = check_flow(p_flow_entry);
    if (status != QX_OK)
        return status;
    const rtp_key key = key_of(p_rtp_cfg);
    if (here.rtp_ids.find(key) != nullptr)
        return QX_EXISTS;
    if (here.rtps.full())
        return QX_TABLE_FULL;
    const hashed_flow_key flow = key_of(p_flow_entry);
    status = install_flow(here, p_flow_entry, flow, flow_owner::rtp);
    if (status != QX_OK)
        return status;
    p_rtp_id = here.rtps.add({stored{p_rtp_cfg}, flow, here.ticks});
    here.rtp_ids.add(key, p_rtp_id);
    here.flows.find(flow)->owner_id = p_rtp_id;
    return QX_OK;
}

qx_status rtp_translate_delete_by_id(device &here, unsigned int rtp_id)
{
    const rtp_entry *const entry = here.rtps.find(rtp_id);
    if (entry == nullptr)
        return missing(here.rtps, rtp_id, QX_NO_RTP);
    remove_flow(here, entry->flow);
    here.rtp_ids.remove(key_of(*entry->cfg));
    here.rtps.remove(rtp_id);
    return QX_OK;
}

qx_status rtp_translate_delete(device &here, const qx_rtp_cfg_t &p_rtp_cfg)
{
    const rtp_key key = key_of(p_rtp_cfg);
    const std::uint32_t *const id = here.rtp_ids.find(key);
    return id == nullptr ? missing(here.rtp_ids, key, QX_NO_RTP)
                         : rtp_translate_delete_by_id(here, *id);
}

// The id determines the device, whose clock advances as in a call that names it.
qx_status rtp_statistics_get(unsigned int rtp_id, qx_rtp_stats_t &data)
{
    const unsigned number = rtp_id >> 16;
    if (number >= size_of(sized::devices))
        return QX_NO_RTP;
    device &here = device_numbered(number);
    ++here.ticks;
    if (here.power.network_engine_suspended != 0)
        return QX_SUSPENDED;
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

static qx_status check_translation(const qx_ip_translate_cfg_t &cfg)
{
    if (cfg.translate_type > translate_type_limit)
        return QX_BAD_TYPE;
    if (unsigned{cfg.port_set_id_offset} + cfg.port_set_id_length > port_set_bits)
        return QX_BAD_PORT_SET;
    const qx_status status = check_packet(cfg.v6_pkt);
    return status == QX_OK && family_of(cfg.v6_pkt.da_ip) != ipv6 ? QX_BAD_FAMILY : status;
}

qx_status ip_translate_add(device &here, const qx_ip_translate_cfg_t &p_ip_translate_cfg,
                           unsigned int &p_ip_translate_id)
{
    const qx_status status = check_translation(p_ip_translate_cfg);
    if (status != QX_OK)
        return status;
    const translation_key key = canonical(p_ip_translate_cfg);
    if (here.translation_ids.find(key) != nullptr)
        return QX_EXISTS;
    if (here.translations.full())
        return QX_TABLE_FULL;
    p_ip_translate_id = here.translations.add({stored{p_ip_translate_cfg}, 0});
    here.translation_ids.add(key, p_ip_translate_id);
    return QX_OK;
}

qx_status ip_translate_del(device &here, unsigned int ip_translate_id)
{
    const translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return missing(here.translations, ip_translate_id, QX_NO_TRANSLATION);
    if (entry->flows != 0)
        return QX_IN_USE;
    here.translation_ids.remove(canonical(*entry->cfg));
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
    const hashed_flow_key key = key_of(p_flow_entry);
    status = install_flow(here, p_flow_entry, key, flow_owner::translation);
    if (status != QX_OK)
        return status;
    here.flows.find(key)->owner_id = ip_translate_id;
    ++entry->flows;
    return QX_OK;
}

qx_status ip_translate_flow_del(device &here, unsigned int ip_translate_id,
                                const qx_flow_t &p_flow_entry)
{
    const qx_status status = check_flow(p_flow_entry);
    if (status != QX_OK)
        return status;
    const hashed_flow_key key = key_of(p_flow_entry);
    const auto bound = [&](const flow_entry *flow) {
        return flow != nullptr && flow->owner == flow_owner::translation &&
               flow->owner_id == ip_translate_id;
    };
    if (bound(here.flows.removed(key)))
        return QX_DELETED;
    translation_entry *const entry = here.translations.find(ip_translate_id);
    if (entry == nullptr)
        return QX_NO_TRANSLATION;
    if (!bound(here.flows.find(key)))
        return QX_NO_FLOW;
    remove_flow(here, key);
    --entry->flows;
    return QX_OK;
}

} // namespace qxsim
