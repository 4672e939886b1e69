# Package qx, qx::sim: control of the simulated device. Faults, latency, call log, reset, snapshots,
# and the flow table's hash. On a board only the hash is meaningful.
#
# The simulator reads commands from a control file, which must be named before the first SDK call of
# the process: by the environment variable QX_SIM_CONTROL, or by `qx::sim::attach` in the script.
# Each procedure has taken effect when it returns. Relies on the shell's SDK commands.

namespace eval qx::sim {
    variable control {}  ;# the control file; empty until attached
    variable settings {} ;# its lines that last
}

# ---------------------------------------------------------------------------------- control

# Starts controlling the simulator. The default file is the one named by QX_SIM_CONTROL.
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

# Replaces the control file by the settings and the given commands, and makes the simulator read it.
# The new file is written under another name and renamed, so that it is never read half-written.
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

# A call on this device only makes the simulator check the control file.
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

# Makes calls of the functions that match the pattern fail with the status, a number or a name, and
# do nothing else: the `when`th call (3), that and all later ones (3+), or every call (*).
proc qx::sim::fault {pattern when status} { setting "fault $pattern $when $status" }

# Makes each call of the matching functions take at least this many microseconds.
proc qx::sim::latency {pattern microseconds} { setting "latency $pattern $microseconds" }

# Appends every call from now on to a file, one JSON line each.
proc qx::sim::log {file} { setting "log [file normalize $file]" }

# Switches writing keys in logs and snapshots: on or off.
proc qx::sim::keys {onoff} { setting "keys $onoff" }

# Ends all faults, latencies and the log.
proc qx::sim::clear {} {
    variable settings {}
    order {}
}

# Returns all devices to their initial state.
proc qx::sim::reset {} { order [list reset] }

# Writes the configuration of all devices as JSON to the file, or returns it without one.
proc qx::sim::snapshot {{file {}}} { listing snapshot $file }

# The same with clocks, counters, table usage and calls so far.
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

# The slot that holds a flow on a device, searched by flow id from the hash slot on; -1 if there is
# none.
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
