# SHELL flat_script.tcl OUTPUT FLOOR-LIBRARY SCRIPT: sources a long flat script. Into OUTPUT go
# lines: nanoseconds of processor time for the whole, and by how much the greatest resident size
# grew.

lassign $argv output library script
load $library

proc peak {} {
    set channel [open /proc/self/status]
    regexp {VmHWM:\s+(\d+) kB} [read $channel] -> kilobytes
    close $channel
    return [expr {1024 * $kilobytes}]
}

set flow [qx_flow_create]
set before [peak]
set begin [bench_cpu]
source $script
set spent [expr {[bench_cpu] - $begin}]
set channel [open $output w]
puts $channel "nanoseconds $spent"
puts $channel "bytes [expr {[peak] - $before}]"
close $channel
