# A peer: the same record functions as critcl's cprocs. Handles are plain addresses, which is what a
# cproc offers, so that no type is checked. Commands are named like the module's, with critcl_ for
# qx_. Built by build.bash with `critcl -pkg`; relies on records.c.

package require critcl
package provide cprocs 0

critcl::cheaders records.h
critcl::csources records.c
critcl::clibraries -lqx-sdk
critcl::ccode {
    #include "records.h"
    #include <stdint.h>
    #include <stdlib.h>
    #define FLOW(word) ((qx_flow_t *)(uintptr_t)(word))
    #define PACKET(word) ((qx_pkt_info_t *)(uintptr_t)(word))
    #define ADDRESS(pointer) ((Tcl_WideInt)(uintptr_t)(pointer))
}

critcl::cproc critcl_flow_create {} wideint { return ADDRESS(flow_create()); }
critcl::cproc critcl_flow_array_create {int size} wideint {
    return ADDRESS(flow_array_create((unsigned int)size));
}
critcl::cproc critcl_pkt_info_create {} wideint {
    return ADDRESS(calloc(1, sizeof(qx_pkt_info_t)));
}
critcl::cproc critcl_data_free {wideint data} void { record_free(FLOW(data)); }
critcl::cproc critcl_fill_flow {wideint cfg} void { flow_fill(FLOW(cfg)); }
critcl::cproc critcl_flow_get_flow_id {wideint cfg} int { return (int)flow_get_flow_id(FLOW(cfg)); }
critcl::cproc critcl_flow_set_flow_id {wideint cfg int flow_id} void {
    flow_set_flow_id(FLOW(cfg), (unsigned int)flow_id);
}
critcl::cproc critcl_flow_get_flow_type {wideint cfg} wideint {
    return flow_get_flow_type(FLOW(cfg));
}
critcl::cproc critcl_flow_set_flow_type {wideint cfg int flow_type} void {
    flow_set_flow_type(FLOW(cfg), (unsigned int)flow_type);
}
critcl::cproc critcl_flow_get_swid_array {wideint cfg int idx} wideint {
    return flow_get_swid_array(FLOW(cfg), (unsigned int)idx);
}
critcl::cproc critcl_flow_set_swid_array {wideint cfg int swid_array int idx} void {
    flow_set_swid_array(FLOW(cfg), (unsigned int)swid_array, (unsigned int)idx);
}
critcl::cproc critcl_flow_get_ingress_pkt {wideint cfg} wideint {
    return ADDRESS(flow_get_ingress_pkt(FLOW(cfg)));
}
critcl::cproc critcl_flow_array_get {wideint arr int idx} wideint {
    return ADDRESS(flow_array_get(FLOW(arr), (unsigned int)idx));
}
critcl::cproc critcl_flow_init {
    wideint cfg int flow_id int flow_type wideint ingress_pkt wideint egress_pkt int dec_ttl
    int voq_offset int life_time int sw_action_id int flag
} void {
    flow_init(FLOW(cfg), (unsigned int)flow_id, (unsigned int)flow_type, PACKET(ingress_pkt),
              PACKET(egress_pkt), (unsigned int)dec_ttl, (unsigned int)voq_offset,
              (unsigned int)life_time, (unsigned int)sw_action_id, (unsigned int)flag);
}
critcl::cproc critcl_flow_add {int device_id wideint p_flow} int {
    return (int)(qx_flow_add((unsigned short)device_id, FLOW(p_flow)) & 0xffff);
}
critcl::cproc critcl_flow_dump {wideint cfg} void { flow_dump(FLOW(cfg)); }
critcl::cproc critcl_uint32_create {wideint data} wideint {
    return ADDRESS(uint32_create((unsigned int)data));
}
critcl::cproc critcl_uint32_get {wideint ptr} wideint {
    return uint32_get((const unsigned int *)(uintptr_t)ptr);
}
