# SHELL live_records.tcl OUTPUT COUNT FLOOR-LIBRARY [count]: creates COUNT flows that all stay
# alive, without keeping their handles. Into OUTPUT go lines: resident bytes a flow; nanoseconds of
# a creation among 1,000 live flows and among COUNT. With the word `count` the same two batches are
# counted regions instead.

lassign [concat $argv {{}}] output count library how
load $library
set batch 20000

proc create {n} {
    for {set i 0} {$i < $n} {incr i} { qx_flow_create }
}

proc resident {} {
    set channel [open /proc/self/statm]
    set pages [lindex [read $channel] 1]
    close $channel
    return [expr {4096 * $pages}]
}

proc batch {name channel} {
    global batch how
    if {$how eq "count"} {
        bench_begin
        create $batch
        bench_end region
    } else {
        set begin [bench_cpu]
        create $batch
        puts $channel "$name [expr {double([bench_cpu] - $begin) / $batch}]"
    }
}

bench_start
set channel [open $output w]
create 1000
set before [resident]
batch few $channel
create [expr {$count - $batch}]
set after [resident]
batch many $channel
puts $channel "bytes [expr {double($after - $before) / $count}]"
close $channel
