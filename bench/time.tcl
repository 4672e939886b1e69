# SHELL time.tcl ROUND OUTPUT PEER,... LIBRARY...: times the loops of all rows once, each variant in
# turn, in an order that changes from round to round. Writes lines to OUTPUT: row, variant,
# nanoseconds of CPU time per pass. Each round is a separate process, because the placement of code
# and data varies between processes.

source [file join [file dirname [file normalize [info script]]] loops.tcl]

proc time_variant {row variant} {
    loops::define ::loop $row $variant {set begin [bench_cpu]} \
        {expr {[bench_cpu] - $begin}}
    set passes [dict get [rows::get $row] timed]
    loop [expr {$passes / 10}]
    return [expr {double([loop $passes]) / $passes}]
}

proc time_rows {round output peers} {
    set channel [open $output w]
    foreach row $rows::names {
        # Peers run in a stock tclsh, without the module.
        set variants [expr {[llength $peers] ? "empty floor" : "empty floor ours"}]
        foreach peer $peers {
            if {$peer in [dict get [rows::get $row] peers]} { lappend variants $peer }
        }
        if {[llength $peers] && [llength $variants] == 2} continue
        loops::serve $variants
        set first [expr {$round % [llength $variants]}]
        foreach variant [concat [lrange $variants $first end] [lrange $variants 0 $first-1]] {
            puts $channel "$row $variant [time_variant $row $variant]"
        }
    }
    close $channel
}

loops::load_libraries [lrange $argv 3 end]
time_rows [lindex $argv 0] [lindex $argv 1] [split [lindex $argv 2] ,]
