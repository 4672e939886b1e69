# SHELL record_sizes.tcl OUTPUT: for each record type, resident bytes a live record beyond the
# record's size. Into OUTPUT go lines: type, its size, bytes beyond it. Relies on
# tools/catalogue.tcl.

source [file join [file dirname [file normalize [info script]]] .. .. tools catalogue.tcl]

proc resident {} {
    set channel [open /proc/self/statm]
    set pages [lindex [read $channel] 1]
    close $channel
    return [expr {4096 * $pages}]
}

proc create {command n} {
    for {set i 0} {$i < $n} {incr i} { $command }
}

catalogue::load [file join [file dirname [file normalize [info script]]] .. .. catalogue]
set channel [open [lindex $argv 0] w]
foreach record [catalogue::records] {
    set command [catalogue::stem $record]_create
    set size [dict get [catalogue::record $record] size]
    # As many as make about 4 MiB, so that pages and growth steps weigh little.
    set n [expr {4194304 / ($size + 8)}]
    create $command [expr {$n / 4}]
    set before [resident]
    create $command $n
    puts $channel "$record $size [expr {double([resident] - $before) / $n - $size}]"
}
close $channel
