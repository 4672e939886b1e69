/* The plain record functions; see records.h. */
#include "records.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

qx_flow_t *flow_create(void)
{
    return calloc(1, sizeof(qx_flow_t));
}
qx_flow_t *flow_array_create(unsigned int count)
{
    return calloc(count, sizeof(qx_flow_t));
}
void record_free(void *record)
{
    free(record);
}

void flow_fill(qx_flow_t *flow)
{
    unsigned char *const bytes = (unsigned char *)flow;
    for (size_t i = 0; i < sizeof *flow; ++i)
        bytes[i] = (unsigned char)(i + 1);
}

unsigned int flow_get_flow_id(const qx_flow_t *flow)
{
    return flow->flow_id;
}
void flow_set_flow_id(qx_flow_t *flow, unsigned int value)
{
    flow->flow_id = (unsigned short)value;
}
unsigned int flow_get_flow_type(const qx_flow_t *flow)
{
    return flow->flow_type;
}
void flow_set_flow_type(qx_flow_t *flow, unsigned int value)
{
    flow->flow_type = value;
}

unsigned int flow_get_swid_array(const qx_flow_t *flow, unsigned int index)
{
    return index < 3 ? flow->swid_array[index] : 0;
}

void flow_set_swid_array(qx_flow_t *flow, unsigned int value, unsigned int index)
{
    if (index < 3)
        flow->swid_array[index] = value;
}

qx_pkt_info_t *flow_get_ingress_pkt(qx_flow_t *flow)
{
    return &flow->ingress_pkt;
}

void flow_init(qx_flow_t *flow, unsigned int flow_id, unsigned int flow_type,
               const qx_pkt_info_t *ingress, const qx_pkt_info_t *egress, unsigned int dec_ttl,
               unsigned int voq_offset, unsigned int life_time, unsigned int sw_action_id,
               unsigned int flag)
{
    flow->flow_id = (unsigned short)flow_id;
    flow->flow_type = flow_type;
    flow->ingress_pkt = *ingress;
    flow->egress_pkt = *egress;
    flow->dec_ttl = (unsigned short)dec_ttl;
    flow->voq_offset = (unsigned short)voq_offset;
    flow->life_time = life_time;
    flow->sw_action_id = sw_action_id;
    flow->flag = flag;
}

qx_flow_t *flow_array_get(qx_flow_t *flows, unsigned int index)
{
    return flows + index;
}

static void scalar(const char *name, unsigned int value)
{
    printf("%s = %#x \n", name, value);
}
static void element(const char *name, int index, unsigned int value)
{
    printf("%s[%d] = %#x\n", name, index, value);
}

static void elements(const char *name, const unsigned char *values, int count)
{
    for (int i = 0; i < count; ++i)
        element(name, i, values[i]);
}

static void address_dump(const qx_ip_address_t *address)
{
    scalar("afi", address->afi);
    for (int i = 0; i < 4; ++i)
        element("addr", i, address->ip_addr.addr[i]);
    scalar("ipv4_addr", address->ip_addr.ipv4_addr);
    for (int i = 0; i < 4; ++i)
        element("ipv6_addr", i, address->ip_addr.ipv6_addr[i]);
    scalar("addr_len", address->addr_len);
}

static void packet_dump(const qx_pkt_info_t *packet)
{
    scalar("phy_port", packet->phy_port);
    elements("da_mac", packet->da_mac, 6);
    elements("sa_mac", packet->sa_mac, 6);
    scalar("eth_type", packet->eth_type);
    for (int i = 0; i < 2; ++i) {
        scalar("tpid_encap_type", packet->tag[i].tpid_encap_type);
        scalar("vlan_id", packet->tag[i].vlan_id);
        scalar("priority", packet->tag[i].priority);
    }
    scalar("pppoe_session_id_valid", packet->pppoe_session_id_valid);
    scalar("pppoe_session_id", packet->pppoe_session_id);
    address_dump(&packet->da_ip);
    address_dump(&packet->sa_ip);
    scalar("tos", packet->tos);
    scalar("protocol", packet->protocol);
    scalar("sport", packet->l4_header.tcp.sport);
    scalar("dport", packet->l4_header.tcp.dport);
    scalar("sport", packet->l4_header.udp.sport);
    scalar("dport", packet->l4_header.udp.dport);
    scalar("spi_idx", packet->l4_header.esp.spi_idx);
    scalar("natt_4_bytes", packet->natt_4_bytes);
}

void flow_dump(const qx_flow_t *flow)
{
    scalar("flow_id", flow->flow_id);
    scalar("flow_type", flow->flow_type);
    packet_dump(&flow->ingress_pkt);
    packet_dump(&flow->egress_pkt);
    scalar("dec_ttl", flow->dec_ttl);
    scalar("voq_offset", flow->voq_offset);
    scalar("life_time", flow->life_time);
    for (int i = 0; i < 3; ++i)
        element("swid_array", i, flow->swid_array[i]);
    scalar("sw_action_id", flow->sw_action_id);
    scalar("flag", flow->flag);
}

unsigned int *uint32_create(unsigned int value)
{
    unsigned int *const cell = malloc(sizeof *cell);
    if (cell != NULL)
        *cell = value;
    return cell;
}

unsigned int uint32_get(const unsigned int *cell)
{
    return *cell;
}
