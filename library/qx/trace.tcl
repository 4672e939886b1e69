# Package qx, SDK calls while they happen: qx::record writes them to a file, qx::trace prints a line
# for each. The package's library sees the calls. Relies on catalogue.tcl.

namespace eval qx::record {}
namespace eval qx::trace {}

# ---------------------------------------------------------------------------------- recording

# qx::record ?file|off? ?-force? ?-keys? : begins or ends a recording, or returns its file's name.
proc qx::record::choose {args} {
    if {$args eq {}} { return [now] }
    if {$args eq "off"} { return [end] }
    set file [lindex $args 0]
    set options [dict create -force 0 -keys 0]
    foreach word [lrange $args 1 end] {
        if {![dict exists $options $word]} { usage }
        if {[dict get $options $word]} {
            return -code error -errorcode {QX USAGE} "qx::record: $word is given twice"
        }
        dict set options $word 1
    }
    if {$file in {off {}} || [string match -* $file]} { usage }
    if {[now] ne {}} {
        return -code error -errorcode [list QX RECORD $file] \
            "[now] is being recorded; qx::record off ends that"
    }
    begin [file normalize $file] [dict get $options -force] [dict get $options -keys]
}

proc qx::record::usage {} {
    return -level 2 -code error -errorcode {QX USAGE} \
        "usage: qx::record ?file|off? ?-force? ?-keys?"
}

# ------------------------------------------------------------------------------------ tracing

# qx::trace ?on|off|stat? ?pattern? : prints calls of functions that match, ends that, or returns
# what they have taken; without a word says whether it is on.
proc qx::trace::choose {args} {
    set pattern [expr {[llength $args] == 2 ? [lindex $args 1] : "*"}]
    switch -- [lindex $args 0],[llength $args] {
        ,0 { return [state] }
        on,1 - on,2 { return [begin $pattern [matching $pattern]] }
        off,1 { return [end] }
        stat,1 { return [statistics] }
    }
    return -code error -errorcode {QX USAGE} "usage: qx::trace ?on|off|stat? ?pattern?"
}

proc qx::trace::matching {pattern} {
    set functions [qx::catalogue::calls]
    set found [lsearch -all -inline -glob $functions $pattern]
    if {[llength $found]} { return $found }
    return -level 2 -code error -errorcode [list QX UNKNOWN call $pattern] \
        "no SDK function matches \"$pattern\"[qx::catalogue::like $pattern $functions]"
}

proc qx::trace::state {} {
    switch -- [pattern] {
        {} { return off }
        * { return on }
    }
    return [list on [pattern]]
}

# What the functions have taken since the trace was switched on, in the columns of qx-trace stat.
proc qx::trace::statistics {} {
    set rows [lsort -integer -decreasing -index 1 [counts]]
    if {![llength $rows]} return
    set sums {0 0 0 0}
    foreach row $rows {
        lassign $row function calls failed time longest
        lassign $sums all_calls all_failed all_time all_longest
        set sums [list [expr {$all_calls + $calls}] [expr {$all_failed + $failed}] \
            [expr {$all_time + $time}] [expr {max($all_longest, $longest)}]]
    }
    set lines [list "    calls   failed microseconds     mean  longest  function"]
    foreach row [concat $rows [list [list "in all" {*}$sums]]] {
        lassign $row function calls failed time longest
        set mean [expr {$time / 1000.0 / $calls}]
        lappend lines [format "%9d %8d %12d %8.1f %8d  %s" $calls $failed \
            [expr {$time / 1000}] $mean [expr {$longest / 1000}] $function]
    }
    return [join $lines \n]
}
