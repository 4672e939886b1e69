-- A peer: the plain record functions called from LuaJIT through its FFI.
--   luajit with_luajit.lua LIBRARY OUTPUT
-- Into OUTPUT go lines: row, nanoseconds of a pass, without the empty loop's. Relies on
-- librecords.so.
local ffi = require("ffi")
ffi.cdef [[
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
]]
local c = ffi.load(arg[1])
local output = assert(io.open(arg[2], "w"))

local function timed(passes, body)
    body(passes)
    local begin = os.clock()
    body(passes)
    return (os.clock() - begin) * 1e9 / passes
end

local flow, inside, filled = c.flow_create(), nil, c.flow_create()
c.flow_set_flow_type(flow, 4294967295)
inside = c.flow_get_ingress_pkt(flow)
c.flow_fill(filled)

local sum = 0 -- what getters give is used, or the compiler would drop it

local function empty(n) for _ = 1, n do sum = sum + 1 end end
local function getter(n) for _ = 1, n do sum = sum + c.flow_get_flow_id(flow) end end
local function setter(n) for _ = 1, n do c.flow_set_flow_id(flow, 7) end end
local function great_result(n) for _ = 1, n do sum = sum + c.flow_get_flow_type(flow) end end
local function nested_getter(n) for _ = 1, n do inside = c.flow_get_ingress_pkt(flow) end end
local function create_free(n) for _ = 1, n do c.record_free(c.flow_create()) end end
local function flow_init(n)
    for _ = 1, n do c.flow_init(flow, 7, 2, inside, inside, 1, 300, 4000, 5, 6) end
end
local function dump(n) for _ = 1, n do c.flow_dump(filled) end end

local overhead = timed(1e7, empty)
local function report(row, passes, body)
    output:write(row, " ", timed(passes, body) - overhead, "\n")
end
report("getter", 5e6, getter)
report("setter", 5e6, setter)
report("nested_getter", 5e6, nested_getter)
report("flow_init", 2e6, flow_init)
report("create_free", 1e6, create_free)
report("great_result", 5e6, great_result)
report("dump", 2000, dump)
output:close()
