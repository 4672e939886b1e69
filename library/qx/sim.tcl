# Package qx, qx::sim: the simulated device from a script. Faults, latency, call log, reset,
# snapshots, and the flow table's hash. On a board only the hash means anything.
#
# The simulator takes orders from a control file, which has to be named before the first SDK call of
# the process: by the environment variable QX_SIM_CONTROL, or by `qx::sim::attach` in the script.
# Orders are obeyed before the procedure returns. Relies on the SDK commands of the shell.

namespace eval qx::sim {
    variable control {}  ;# the control file; empty until attached
    variable settings {} ;# its lines that last
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

# Replaces the control file by the settings and some orders, and makes the simulator read it. The
# new file is written aside and renamed, so that no half of it is ever read.
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

# The `when`th call (3), that and all later ones (3+) or every call (*) of the functions that fit
# the pattern fails with the status, a number or a name, and does nothing else.
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

# The slot that a device keeps a flow in, found by its flow id from the hash's slot on; -1 if it is
# in none.
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
