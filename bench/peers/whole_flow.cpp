// A peer: a flow as a dict, read and written by hand, field by field: what package qx does by plans
// for every record. It makes and takes the same dict as qx::get, in list form, its names the same
// objects each time. Fields are written in their order only. Relies on Tcl's stub table and on the
// product's texts of addresses.
#include "records/address_text.h"

#include "qx_sdk.h"

#include <tcl.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace {

// ---------------------------------------------------------------------------------- names

enum name {
    flow_id,
    flow_type,
    ingress_pkt,
    egress_pkt,
    dec_ttl,
    voq_offset,
    life_time,
    swid_array,
    sw_action_id,
    flag,
    phy_port,
    da_mac,
    sa_mac,
    eth_type,
    tag,
    pppoe_session_id_valid,
    pppoe_session_id,
    da_ip,
    sa_ip,
    tos,
    protocol,
    l4_header,
    natt_4_bytes,
    tpid_encap_type,
    vlan_id,
    priority,
    afi,
    ip_addr,
    addr_len,
    tcp,
    udp,
    esp,
    sport,
    dport,
    spi_idx,
    name_count
};

constexpr const char *texts[name_count] = {"flow_id",
                                           "flow_type",
                                           "ingress_pkt",
                                           "egress_pkt",
                                           "dec_ttl",
                                           "voq_offset",
                                           "life_time",
                                           "swid_array",
                                           "sw_action_id",
                                           "flag",
                                           "phy_port",
                                           "da_mac",
                                           "sa_mac",
                                           "eth_type",
                                           "tag",
                                           "pppoe_session_id_valid",
                                           "pppoe_session_id",
                                           "da_ip",
                                           "sa_ip",
                                           "tos",
                                           "protocol",
                                           "l4_header",
                                           "natt_4_bytes",
                                           "tpid_encap_type",
                                           "vlan_id",
                                           "priority",
                                           "afi",
                                           "ip_addr",
                                           "addr_len",
                                           "tcp",
                                           "udp",
                                           "esp",
                                           "sport",
                                           "dport",
                                           "spi_idx"};

Tcl_Obj *names[name_count];

// ---------------------------------------------------------------------------------- reading

struct entry
{
    name key;
    Tcl_Obj *value;
};

Tcl_Obj *dict(std::initializer_list<entry> entries)
{
    Tcl_Obj *words[32];
    int count = 0;
    for (const entry &each : entries) {
        words[count++] = names[each.key];
        words[count++] = each.value;
    }
    return Tcl_NewListObj(count, words);
}

Tcl_Obj *number(unsigned int value)
{
    return Tcl_NewWideIntObj(value);
}

Tcl_Obj *mac(const unsigned char *bytes)
{
    char text[qxsh::most_address_text];
    return Tcl_NewStringObj(text, static_cast<int>(qxsh::put_mac(text, bytes) - text));
}

Tcl_Obj *address(const qx_ip_address_t &from)
{
    char text[qxsh::most_address_text];
    qxsh::address_words words;
    std::memcpy(words, &from.ip_addr, sizeof words);
    const char *const end =
        from.afi == 0 ? qxsh::put_ipv4(text, words[0]) : qxsh::put_ipv6(text, words);
    return dict({{afi, number(from.afi)},
                 {ip_addr, Tcl_NewStringObj(text, static_cast<int>(end - text))},
                 {addr_len, number(from.addr_len)}});
}

Tcl_Obj *vlan(const qx_vlan_t &from)
{
    return dict({{tpid_encap_type, number(from.tpid_encap_type)},
                 {vlan_id, number(from.vlan_id)},
                 {priority, number(from.priority)}});
}

Tcl_Obj *header(const qx_pkt_info_t &packet)
{
    const qx_l4_header_t &from = packet.l4_header;
    if (packet.protocol == 50)
        return dict({{esp, dict({{spi_idx, number(from.esp.spi_idx)}})}});
    if (packet.protocol == 17)
        return dict(
            {{udp, dict({{sport, number(from.udp.sport)}, {dport, number(from.udp.dport)}})}});
    return dict({{tcp, dict({{sport, number(from.tcp.sport)}, {dport, number(from.tcp.dport)}})}});
}

Tcl_Obj *packet(const qx_pkt_info_t &from)
{
    Tcl_Obj *const tags[] = {vlan(from.tag[0]), vlan(from.tag[1])};
    return dict({{phy_port, number(from.phy_port)},
                 {da_mac, mac(from.da_mac)},
                 {sa_mac, mac(from.sa_mac)},
                 {eth_type, number(from.eth_type)},
                 {tag, Tcl_NewListObj(2, tags)},
                 {pppoe_session_id_valid, number(from.pppoe_session_id_valid)},
                 {pppoe_session_id, number(from.pppoe_session_id)},
                 {da_ip, address(from.da_ip)},
                 {sa_ip, address(from.sa_ip)},
                 {tos, number(from.tos)},
                 {protocol, number(from.protocol)},
                 {l4_header, header(from)},
                 {natt_4_bytes, number(from.natt_4_bytes)}});
}

Tcl_Obj *flow(const qx_flow_t &from)
{
    Tcl_Obj *const ids[] = {number(from.swid_array[0]), number(from.swid_array[1]),
                            number(from.swid_array[2])};
    return dict({{flow_id, number(from.flow_id)},
                 {flow_type, number(from.flow_type)},
                 {ingress_pkt, packet(from.ingress_pkt)},
                 {egress_pkt, packet(from.egress_pkt)},
                 {dec_ttl, number(from.dec_ttl)},
                 {voq_offset, number(from.voq_offset)},
                 {life_time, number(from.life_time)},
                 {swid_array, Tcl_NewListObj(3, ids)},
                 {sw_action_id, number(from.sw_action_id)},
                 {flag, number(from.flag)}});
}

// ---------------------------------------------------------------------------------- writing

// Takes values of a dict in list form in the order of the fields.
class values
{
public:
    explicit values(Tcl_Obj *dict)
    {
        good_ = Tcl_ListObjGetElements(nullptr, dict, &left_, &next_) == TCL_OK;
    }

    Tcl_Obj *take(name key)
    {
        static Tcl_Obj *const nothing = Tcl_NewObj();
        if (!good_ || left_ < 2 ||
            (next_[0] != names[key] && std::strcmp(Tcl_GetString(next_[0]), texts[key]) != 0)) {
            good_ = false;
            return nothing;
        }
        left_ -= 2;
        next_ += 2;
        return next_[-1];
    }

    template <class Number> void number(name key, Number &to)
    {
        Tcl_WideInt value;
        if (Tcl_GetWideIntFromObj(nullptr, take(key), &value) != TCL_OK || value < 0 ||
            value > static_cast<Number>(-1))
            good_ = false;
        else
            to = static_cast<Number>(value);
    }

    void check(bool good) { good_ = good_ && good; }
    bool good() const { return good_ && left_ == 0; }
    name next() const
    {
        for (const name key : {tcp, udp, esp})
            if (left_ > 0 && std::strcmp(Tcl_GetString(next_[0]), texts[key]) == 0)
                return key;
        return name_count;
    }

private:
    Tcl_Obj **next_;
    int left_;
    bool good_;
};

bool write(qx_ip_address_t &to, Tcl_Obj *dict)
{
    values from{dict};
    qxsh::address_words words;
    unsigned int family = 0; // the record is packed: its fields have no addresses
    from.number(afi, family);
    to.afi = family;
    from.check(qxsh::parse_ip(Tcl_GetString(from.take(ip_addr)), words) != 0);
    std::memcpy(&to.ip_addr, words, sizeof words);
    from.number(addr_len, to.addr_len);
    return from.good();
}

bool write(qx_vlan_t &to, Tcl_Obj *dict)
{
    values from{dict};
    from.number(tpid_encap_type, to.tpid_encap_type);
    from.number(vlan_id, to.vlan_id);
    from.number(priority, to.priority);
    return from.good();
}

bool write(qx_l4_header_t &to, Tcl_Obj *dict)
{
    values view{dict};
    const name key = view.next();
    values from{view.take(key == name_count ? tcp : key)};
    if (key == esp) {
        from.number(spi_idx, to.esp.spi_idx);
    } else {
        from.number(sport, to.tcp.sport);
        from.number(dport, to.tcp.dport);
    }
    return view.good() && from.good();
}

bool write(qx_pkt_info_t &to, Tcl_Obj *dict)
{
    values from{dict};
    int count;
    Tcl_Obj **tags;
    from.number(phy_port, to.phy_port);
    from.check(qxsh::parse_mac(Tcl_GetString(from.take(da_mac)), to.da_mac));
    from.check(qxsh::parse_mac(Tcl_GetString(from.take(sa_mac)), to.sa_mac));
    from.number(eth_type, to.eth_type);
    from.check(Tcl_ListObjGetElements(nullptr, from.take(tag), &count, &tags) == TCL_OK &&
               count == 2 && write(to.tag[0], tags[0]) && write(to.tag[1], tags[1]));
    from.number(pppoe_session_id_valid, to.pppoe_session_id_valid);
    from.number(pppoe_session_id, to.pppoe_session_id);
    from.check(write(to.da_ip, from.take(da_ip)));
    from.check(write(to.sa_ip, from.take(sa_ip)));
    from.number(tos, to.tos);
    from.number(protocol, to.protocol);
    from.check(write(to.l4_header, from.take(l4_header)));
    from.number(natt_4_bytes, to.natt_4_bytes);
    return from.good();
}

bool write(qx_flow_t &to, Tcl_Obj *dict)
{
    values from{dict};
    int count;
    Tcl_Obj **ids;
    from.number(flow_id, to.flow_id);
    from.number(flow_type, to.flow_type);
    from.check(write(to.ingress_pkt, from.take(ingress_pkt)));
    from.check(write(to.egress_pkt, from.take(egress_pkt)));
    from.number(dec_ttl, to.dec_ttl);
    from.number(voq_offset, to.voq_offset);
    from.number(life_time, to.life_time);
    from.check(Tcl_ListObjGetElements(nullptr, from.take(swid_array), &count, &ids) == TCL_OK &&
               count == 3);
    for (int i = 0; i < 3; ++i) {
        Tcl_WideInt value;
        if (count != 3 || Tcl_GetWideIntFromObj(nullptr, ids[i], &value) != TCL_OK || value < 0 ||
            value > UINT32_MAX)
            return false;
        to.swid_array[i] = static_cast<unsigned int>(value);
    }
    from.number(sw_action_id, to.sw_action_id);
    from.number(flag, to.flag);
    return from.good();
}

// ---------------------------------------------------------------------------------- commands

qx_flow_t *flow_at(Tcl_Interp *interp, Tcl_Obj *handle)
{
    const char *const text = Tcl_GetString(handle);
    char *rest = nullptr;
    const unsigned long digits = text[0] == '_' ? std::strtoul(text + 1, &rest, 16) : 0;
    if (digits == 0 || std::strcmp(rest, "_p_qx_flow_t") != 0) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("not a handle of a flow", -1));
        return nullptr;
    }
    // The digits are the address's bytes, the lowest first.
    return reinterpret_cast<qx_flow_t *>(static_cast<std::uintptr_t>(__builtin_bswap32(digits)));
}

int get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const qx_flow_t *const from = objc == 2 ? flow_at(interp, objv[1]) : nullptr;
    if (from == nullptr)
        return TCL_ERROR;
    Tcl_SetObjResult(interp, flow(*from));
    return TCL_OK;
}

int set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_flow_t *const to = objc == 3 ? flow_at(interp, objv[1]) : nullptr;
    if (to == nullptr)
        return TCL_ERROR;
    qx_flow_t copy = *to;
    if (!write(copy, objv[2])) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("not a dict of a flow", -1));
        return TCL_ERROR;
    }
    *to = copy;
    return TCL_OK;
}

} // namespace

extern "C" int Whole_flow_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    for (int i = 0; i < name_count; ++i) {
        names[i] = Tcl_NewStringObj(texts[i], -1);
        Tcl_IncrRefCount(names[i]);
    }
    Tcl_CreateObjCommand(interp, "whole_flow_get", get, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "whole_flow_set", set, nullptr, nullptr);
    return TCL_OK;
}
