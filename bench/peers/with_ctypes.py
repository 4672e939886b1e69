# A peer: the plain record functions called from Python through ctypes.
#   python3 with_ctypes.py LIBRARY OUTPUT
# Into OUTPUT go lines: row, nanoseconds of a pass, without the empty loop's. Relies on
# librecords.so.
import ctypes
import sys

import loops

library = ctypes.CDLL(sys.argv[1])
uint, pointer = ctypes.c_uint, ctypes.c_void_p


def function(name, result, *arguments):
    found = getattr(library, name)
    found.restype = result
    found.argtypes = arguments
    return found


create = function("flow_create", pointer)
release = function("record_free", None, pointer)
fill = function("flow_fill", None, pointer)
init = function("flow_init", None, pointer, uint, uint, pointer, pointer, *[uint] * 5)
nested = function("flow_get_ingress_pkt", pointer, pointer)

loops.run(
    sys.argv[2], create, release, fill, init, nested,
    get=function("flow_get_flow_id", uint, pointer),
    set_=function("flow_set_flow_id", None, pointer, uint),
    get_type=function("flow_get_flow_type", uint, pointer),
    set_type=function("flow_set_flow_type", None, pointer, uint),
    dump=function("flow_dump", None, pointer))
