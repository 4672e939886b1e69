/* The flow record and a 32-bit cell as plain C functions, without checks: what every peer calls.
 * Relies on the SDK's header for the layout. */
#ifndef QXSH_BENCH_RECORDS_H
#define QXSH_BENCH_RECORDS_H

#include <qx_sdk.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A zeroed flow, to be given back with record_free. */
qx_flow_t *flow_create(void);
qx_flow_t *flow_array_create(unsigned int count);
void record_free(void *record);

/* Every byte of the flow becomes one that is not zero, so that a dump has only long numbers. */
void flow_fill(qx_flow_t *flow);

unsigned int flow_get_flow_id(const qx_flow_t *flow);
void flow_set_flow_id(qx_flow_t *flow, unsigned int value);
unsigned int flow_get_flow_type(const qx_flow_t *flow);
void flow_set_flow_type(qx_flow_t *flow, unsigned int value);
unsigned int flow_get_swid_array(const qx_flow_t *flow, unsigned int index);
void flow_set_swid_array(qx_flow_t *flow, unsigned int value, unsigned int index);
qx_pkt_info_t *flow_get_ingress_pkt(qx_flow_t *flow);
void flow_init(qx_flow_t *flow, unsigned int flow_id, unsigned int flow_type,
               const qx_pkt_info_t *ingress, const qx_pkt_info_t *egress, unsigned int dec_ttl,
               unsigned int voq_offset, unsigned int life_time, unsigned int sw_action_id,
               unsigned int flag);
qx_flow_t *flow_array_get(qx_flow_t *flows, unsigned int index);

/* Prints the flow's 114 lines on C's stdout, a printf for each. */
void flow_dump(const qx_flow_t *flow);

unsigned int *uint32_create(unsigned int value);
unsigned int uint32_get(const unsigned int *cell);

#ifdef __cplusplus
}
#endif

#endif
