# A peer: the plain record functions called from Python through cffi's ABI mode.
#   python3 with_cffi.py LIBRARY OUTPUT
# Into OUTPUT go lines: row, nanoseconds of a pass, without the empty loop's. Relies on
# librecords.so.
import sys

import cffi

import loops

ffi = cffi.FFI()
ffi.cdef("""
    void *flow_create(void);
    void record_free(void *record);
    void flow_fill(void *flow);
    unsigned int flow_get_flow_id(void *flow);
    void flow_set_flow_id(void *flow, unsigned int value);
    unsigned int flow_get_flow_type(void *flow);
    void flow_set_flow_type(void *flow, unsigned int value);
    void *flow_get_ingress_pkt(void *flow);
    void flow_init(void *flow, unsigned int flow_id, unsigned int flow_type, void *ingress,
                   void *egress, unsigned int dec_ttl, unsigned int voq_offset,
                   unsigned int life_time, unsigned int sw_action_id, unsigned int flag);
    void flow_dump(void *flow);
""")
c = ffi.dlopen(sys.argv[1])

loops.run(
    sys.argv[2], c.flow_create, c.record_free, c.flow_fill, c.flow_init, c.flow_get_ingress_pkt,
    get=c.flow_get_flow_id, set_=c.flow_set_flow_id, get_type=c.flow_get_flow_type,
    set_type=c.flow_set_flow_type, dump=c.flow_dump)
