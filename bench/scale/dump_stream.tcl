# SHELL dump_stream.tcl OUTPUT FLOOR-LIBRARY dump|write COUNT TEXT-FILE: dumps a filled flow COUNT
# times to standard output, or writes the same bytes, which are in TEXT-FILE, as often with a system
# call each. Into OUTPUT goes the processor time in nanoseconds.

lassign $argv output library how count file
source [file join [file dirname [file normalize [info script]]] .. loops.tcl]
load $library

proc dump {flow count} {
    for {set i 0} {$i < $count} {incr i} { qx_flow_dump $flow }
}

set flow [qx_flow_create]
fill_flow $flow
set channel [open $file]
fconfigure $channel -translation binary
set text [read $channel]
close $channel
set begin [bench_cpu]
if {$how eq "dump"} { dump $flow $count } else { bench_write $text $count }
flush stdout
set spent [expr {[bench_cpu] - $begin}]
set channel [open $output w]
puts $channel "nanoseconds $spent"
close $channel
