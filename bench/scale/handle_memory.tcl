# SHELL handle_memory.tcl OUTPUT FLOOR-LIBRARY: heap bytes of a live handle whose text nobody asked
# for, and the size of a Tcl_Obj. The list that holds the handles is there beforehand.

lassign $argv output library
load $library

proc fill {n} {
    global handles
    set flows [qx_flow_array_create 8]
    for {set i 0} {$i < $n} {incr i} { lset handles $i [qx_flow_array_get $flows 5] }
}

set n 200000
set handles [lrepeat $n {}]
fill 10
set before [bench_heap]
fill $n
set bytes [expr {double([bench_heap] - $before) / $n}]
set channel [open $output w]
puts $channel "bytes $bytes"
puts $channel "object [bench_object_size]"
close $channel
