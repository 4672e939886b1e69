# tclsh set_bounds.tcl RESULT ROW...: after tuning, sets the bounds of these rows in bounds.tsv from
# a result file: the goal if it is met, otherwise the measured value plus 0.2 per cent, which is
# more than counts vary, or for resident memory 10 per cent. Add the reason to the last column by
# hand: the file needs it to load.

set here [file dirname [file normalize [info script]]]
source [file join $here bounds.tcl]
package require json

# The bound for a value: its goal, or the value rounded so that measuring again does not exceed it.
proc new_bound {row goal value} {
    if {$goal ne "-" && [bounds::keeps $row $value $goal]} { return $goal }
    switch -- [bounds::get $row unit] {
        kilobytes { return [expr {int(ceil($value * 1.1))}] }
        bytes - instructions { return [expr {int(ceil($value * 1.002))}] }
        "at least" { return [expr {floor($value * 998) / 1000}] }
    }
    expr {ceil($value * 1002) / 1000}
}

set channel [open [lindex $argv 0]]
foreach each [dict get [json::json2dict [read $channel]] judged] {
    set value([dict get $each row],[dict get $each target]) [dict get $each value]
}
close $channel
set channel [open $bounds::file]
set lines [split [string trimright [read $channel] \n] \n]
close $channel
set channel [open $bounds::file w]
foreach line $lines {
    set cells [split $line \t]
    set row [lindex $cells 0]
    if {$row in [lrange $argv 1 end]} {
        foreach {target column} {pc 4 armhf 6} {
            if {![info exists value($row,$target)]} continue
            lset cells $column [new_bound $row [lindex $cells $column-1] $value($row,$target)]
        }
    }
    puts $channel [join $cells \t]
}
close $channel
