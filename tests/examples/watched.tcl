# Runs an example and tells at its end what it left behind: blocks that it created and did not release, and
# what is different in the device. Words: the example, a control file for the simulator.
# Relies on the package qx, as the examples do.

package require qx
qx::sim::attach [lindex $argv 1]

# The example has the global variables to itself.
namespace eval watch {
    variable live; array set live {} ;# handle -> what made it
    variable before [qx::sim::snapshot]
}

proc watch::created {command code handle operation} {
    variable live
    if {$handle ne "NULL"} { set live($handle) [lindex $command 0] }
}

proc watch::released {command operation} {
    variable live
    set handle [lindex $command 1]
    if {![info exists live($handle)]} { puts "released, but not created here: $command" }
    unset -nocomplain live($handle)
}

proc watch::report {} {
    variable live
    variable before
    puts ----
    foreach handle [array names live] { puts "not released: what $live($handle) made" }
    set was [split $before \n]
    set is [split [qx::sim::snapshot] \n]
    foreach line $was { if {$line ni $is} { puts "the device had: $line" } }
    foreach line $is { if {$line ni $was} { puts "the device has: $line" } }
}

foreach command [info commands qx_*_create] {
    trace add execution $command leave watch::created
}
trace add execution qx_data_free enter watch::released
source [lindex $argv 0]
watch::report
qx::sim::detach
