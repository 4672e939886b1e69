# Package qx_sim: the simulated device from a script. Names of statuses, faults, latency, call log, reset,
# snapshots, and the flow table's hash. On a board only the names and the hash mean anything.
#
# The simulator takes orders from a control file, which has to be named before the first SDK call of the
# process: by the environment variable QX_SIM_CONTROL, or by `qx::sim::attach` in the script. Orders are
# obeyed before the procedure returns. Relies on the SDK commands of the shell and, for the names, on
# qx_status.h, beside this file or in sdk/.

namespace eval qx::sim {
    variable control {}  ;# the control file; empty until attached
    variable settings {} ;# its lines that last
    variable names {}    ;# status number -> name and meaning
    variable folder [file dirname [file normalize [info script]]]
}

# ---------------------------------------------------------------------------------- statuses

proc qx::sim::read_statuses {} {
    variable names
    variable folder
    foreach file [list [file join $folder qx_status.h] [file join $folder .. sdk qx_status.h]] {
        if {![file readable $file]} continue
        set channel [open $file]
        set text [read $channel]
        close $channel
        foreach line [split $text \n] {
            if {[regexp {^\s+(QX_\w+) = (\d+),?\s+/\* (.+) \*/$} $line -> name number meaning]} {
                dict set names $number [list $name $meaning]
            }
        }
        return
    }
    return -code error "qx_status.h is neither in $folder nor in its sister folder sdk"
}

# All statuses, a list of number and name.
proc qx::sim::statuses {} {
    variable names
    if {$names eq {}} { read_statuses }
    set result {}
    foreach number [lsort -integer [dict keys $names]] {
        lappend result $number [lindex [dict get $names $number] 0]
    }
    return $result
}

# The name of a status: 10 -> QX_EXISTS; a number without a name comes back as it is.
proc qx::sim::status_name {number} {
    variable names
    statuses
    if {![dict exists $names $number]} { return $number }
    return [lindex [dict get $names $number] 0]
}

# What a status means; empty for a number without a name.
proc qx::sim::status_meaning {number} {
    variable names
    statuses
    if {![dict exists $names $number]} return
    return [lindex [dict get $names $number] 1]
}

# The number behind a name: QX_EXISTS -> 10.
proc qx::sim::status_number {name} {
    foreach {number known} [statuses] {
        if {$known eq $name} { return $number }
    }
    return -code error "\"$name\" is no status"
}

# Calls an SDK function; a status other than 0 becomes an error that names it, with the error code
# QX_STATUS, the number and the name.
proc qx::sim::must {function args} {
    set status [uplevel 1 [concat [list $function] $args]]
    if {$status == 0} return
    set name [status_name $status]
    set text "$function: $name"
    if {$name ne $status} { append text " ($status), [status_meaning $status]" }
    return -code error -errorcode [list QX_STATUS $status $name] $text
}

# ---------------------------------------------------------------------------------- control

# Takes the simulator under control. Without a file: the one QX_SIM_CONTROL names.
proc qx::sim::attach {{file {}}} {
    variable control
    variable settings
    if {$file eq {}} {
        if {![info exists ::env(QX_SIM_CONTROL)] || $::env(QX_SIM_CONTROL) eq {}} {
            return -code error "name a control file, here or in QX_SIM_CONTROL"
        }
        set file $::env(QX_SIM_CONTROL)
    }
    set ::env(QX_SIM_CONTROL) $file
    set control [file normalize $file]
    set settings {}
    set answer $control.answer
    order [list "snapshot $answer"]
    if {![file exists $answer]} {
        file delete $control
        set control {}
        return -code error "the simulator does not look at $file: name the control file before the\
            first SDK call of the process"
    }
    file delete $answer
    order {}
    return $control
}

# Ends all settings and removes the control file.
proc qx::sim::detach {} {
    variable control
    variable settings {}
    order {}
    file delete $control
    nudge
    set control {}
    return
}

# Replaces the control file by the settings and some orders, and makes the simulator read it. The new
# file is written aside and renamed, so that no half of it is ever read.
proc qx::sim::order {lines} {
    variable control
    variable settings
    if {$control eq {}} { return -code error "not attached: call qx::sim::attach first" }
    set channel [open $control.new {WRONLY CREAT TRUNC} 0600]
    foreach line [concat $settings $lines] {
        if {[string first \n $line] >= 0} {
            close $channel
            return -code error "an order is one line: $line"
        }
        puts $channel $line
    }
    close $channel
    file rename -force $control.new $control
    nudge
    return
}

# A call on this device is none: it only makes the simulator look at the control file.
proc qx::sim::nudge {} { qx_flow_delete 65535 0 }

proc qx::sim::setting {line} {
    variable settings
    set before $settings
    lappend settings $line
    if {[catch {order {}} message]} {
        set settings $before
        return -code error $message
    }
    return
}

# The `when`th call (3), that and all later ones (3+) or every call (*) of the functions that fit the
# pattern fails with the status, a number or a name, and does nothing else.
proc qx::sim::fault {pattern when status} { setting "fault $pattern $when $status" }

# Each call of the functions that fit takes at least so many microseconds.
proc qx::sim::latency {pattern microseconds} { setting "latency $pattern $microseconds" }

# Logs every call from now on, one JSON line each, at the end of a file.
proc qx::sim::log {file} { setting "log [file normalize $file]" }

# Whether keys are written out in logs and snapshots: on or off.
proc qx::sim::keys {onoff} { setting "keys $onoff" }

# Ends all faults, latencies and the log.
proc qx::sim::clear {} {
    variable settings {}
    order {}
}

# All devices as they were at the start.
proc qx::sim::reset {} { order [list reset] }

# The configuration of all devices as JSON: written to the file, or without one the result.
proc qx::sim::snapshot {{file {}}} { listing snapshot $file }

# The same with clocks, counters, use of the tables and calls so far.
proc qx::sim::state {{file {}}} { listing state $file }

proc qx::sim::listing {what file} {
    variable control
    if {$file ne {}} { return [order [list "$what [file normalize $file]"]] }
    set answer $control.answer
    order [list "$what $answer"]
    set channel [open $answer]
    set text [read $channel]
    close $channel
    file delete $answer
    return $text
}

# ---------------------------------------------------------------------------- the flow table

# The slot that a device keeps a flow in, found by its flow id from the hash's slot on; -1 if it is in none.
proc qx::sim::find_flow {device flow} {
    set home [flow_slot $flow]
    set found [qx_flow_create]
    set result -1
    for {set step 0} {$step < 16 && $result < 0} {incr step} {
        set slot [expr {($home + $step) % 4096}]
        if {[qx_flow_get $device $slot $found] == 0 &&
            [qx_flow_get_flow_id $found] == [qx_flow_get_flow_id $flow]} {
            set result $slot
        }
    }
    qx_data_free $found
    return $result
}

# flow_key and flow_slot are commands of package qx, made of the device's own hash.
if {[info commands ::qx_flow_create] ne {}} { package require qx }
package provide qx_sim 0.1
