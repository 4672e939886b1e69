# Package qx, qx::sim: control of the simulated device. Faults, latency, call log, reset, snapshots,
# and the flow table's hash. On a board only the hash is meaningful.
#
# The simulator reads commands from a control file, which must be named before the first SDK call of
# the process: by the environment variable QX_SIM_CONTROL, or by `qx::sim::attach` in the script.
# Each procedure has taken effect when it returns. What the simulator refuses is an error, and the
# settings before it stay in force: docs/simulator.md. Relies on the shell's SDK commands and on the
# package's library.

namespace eval qx::sim {
    variable control {}  ;# the control file; empty until attached
    variable attached {} ;# the one attached last
    variable settings {} ;# its lines that last
}

# ---------------------------------------------------------------------------------- control

# Whether the SDK library in this process is the simulator.
proc qx::sim::is_loaded {} {
    variable loaded
    if {![info exists loaded]} { set loaded [is_simulator [library]] }
    return $loaded
}

# The file of the SDK library in this process; empty if that cannot be found out.
proc qx::sim::library {} {
    if {[catch { open /proc/self/maps } channel]} return
    set maps [read $channel]
    close $channel
    regexp -line {(/.*/libqx-sdk\.so[^/]*?)(?: \(deleted\))?$} $maps -> file
    return [expr {[info exists file] ? $file : {}}]
}

# The simulator is known by the switch that it reads. A call would tell, too, but who knows what an
# SDK makes of a device that is not there. The file is read in pieces: a library may have megabytes
# of debug information behind that name.
proc qx::sim::is_simulator {library} {
    if {[catch { open $library rb } channel]} { return 0 }
    set name QX_SIM_CONTROL
    set found 0
    set text {}
    while {!$found && ![eof $channel]} {
        # The name may begin in one piece and end in the next.
        set text [string range $text end-[string length $name] end][read $channel 65536]
        set found [expr {[string first $name $text] >= 0}]
    }
    close $channel
    return $found
}

# Starts controlling the simulator through this file, or the one named by QX_SIM_CONTROL, or the one
# attached last. Takes the variable out of the environment, so that child processes have no faults.
# After an error the file and the variable are as before, and so is what was attached.
proc qx::sim::attach {{file {}}} {
    variable control
    variable attached
    variable settings
    set before [list $control $settings]
    set named [expr {[info exists ::env(QX_SIM_CONTROL)] ? $::env(QX_SIM_CONTROL) : {}}]
    if {$file eq {}} { set file [expr {$named ne {} ? $named : $attached}] }
    if {$file eq {}} { refuse "name a control file, here or in QX_SIM_CONTROL" }
    set control [file normalize $file]
    set ::env(QX_SIM_CONTROL) $control
    set failed [catch {replace_file} message options]
    if {$failed} { lassign $before control settings } else { set attached $control }
    unset ::env(QX_SIM_CONTROL)
    if {$failed && $named ne {}} { set ::env(QX_SIM_CONTROL) $named }
    return -options $options $message
}

# Makes the file in `control` the control file, with no settings; -> its name.
proc qx::sim::replace_file {} {
    variable control
    variable settings {}
    if {[file isdirectory $control]} { refuse "$control is a folder" }
    set folder [make_folder $control.]
    # A link is moved as it is.
    set there [expr {![catch { file rename -- $control $folder/before }]}]
    set failed [catch { obey $folder {} {} } message options]
    if {$failed} {
        file delete -- $control
        if {$there} { file rename -- $folder/before $control }
    }
    remove_folder $folder
    if {$failed} { return -options $options $message }
    return $control
}

# Ends all settings and removes the control file.
proc qx::sim::detach {} {
    variable control
    order {} {}
    file delete -- $control
    nudge
    set control {}
    return
}

# Replaces the control file by the lines of settings and orders, and makes the simulator read it. On
# an error the settings before are in force again. -> what `obey` returns.
proc qx::sim::order {lasting orders} {
    variable control
    variable settings
    if {$control eq {}} { refuse "not attached: call qx::sim::attach first" }
    set folder [make_folder $control.]
    set failed [catch { obey $folder $lasting $orders } result options]
    if {$failed} { catch { obey $folder $settings {} } } else { set settings $lasting }
    remove_folder $folder
    return -options $options $result
}

# Does that with files in a new folder of their own, so that nobody can have put links in their
# place. The file is renamed, so that it is never read half-written. Settings are for all processes
# that are told of the file, the rest for this one. -> a list of the faults in force, each a list
# of its words and of how many calls it has answered.
proc qx::sim::obey {folder lasting orders} {
    variable control
    set lines [concat $lasting [list "process [pid]" "answer $folder/answer"] $orders]
    foreach line $lines {
        if {[string first \n $line] >= 0} { refuse "an order is one line: $line" }
    }
    file delete -- $folder/answer
    set channel [open $folder/new {WRONLY CREAT EXCL} 0600]
    puts $channel [join $lines \n]
    close $channel
    file rename -force -- $folder/new $control
    set status [nudge]
    if {[file exists $folder/answer]} { return [read_answer $folder/answer] }
    if {[qx::catalogue::status_name $status] eq "QX_BAD_SWITCH"} {
        refuse "the simulator answers no call until its switches are right, see stderr"
    }
    refuse "the simulator does not look at $control: name the control file before the first SDK\
        call of the process"
}

# Removes such a folder with the files that may be in it. Tcl's -force would look what is there,
# which fails where a 32-bit program is emulated on some 64-bit file systems.
proc qx::sim::remove_folder {folder} {
    foreach name {answer before new text} { file delete -- $folder/$name }
    file delete -- $folder
}

proc qx::sim::read_answer {file} {
    set mistakes {}
    set faults {}
    foreach line [split [string trimright [text_of $file] \n] \n] {
        if {[regexp {^error (?:\d+: )?(.*)$} $line -> mistake]} {
            lappend mistakes $mistake
        } elseif {[regexp {^fired (\d+) (.*)$} $line -> count words]} {
            lappend faults [list $words $count]
        }
    }
    if {[llength $mistakes]} { refuse [join $mistakes \n] }
    return $faults
}

proc qx::sim::refuse {message} {
    return -level 2 -code error -errorcode [list QX SIM $message] $message
}

proc qx::sim::text_of {file} {
    set channel [open $file]
    set text [read $channel]
    close $channel
    return $text
}

# A call on this device only makes the simulator check the control file; -> its status. In a block
# of qx::check that is an error.
proc qx::sim::nudge {} {
    if {[catch { qx_flow_delete 65535 0 } status options]} {
        set status [lindex [dict get $options -errorcode] 1]
    }
    return $status
}

proc qx::sim::setting {line} {
    variable settings
    order [concat $settings [list $line]] {}
    return
}

# A file's name for an order, in which blanks at the end would be lost.
proc qx::sim::name {file} {
    set name [file normalize $file]
    if {[string trimright $name " \t\r"] ne $name} { refuse "\"$name\" ends with a blank" }
    return $name
}

# Makes calls of the functions that match the pattern fail with the status, a number or a name, and
# do nothing else: the `when`th call (3), that and all later ones (3+), or every call (*).
proc qx::sim::fault {pattern when status} { setting "fault $pattern $when $status" }

# Makes each call of the matching functions take at least this many microseconds.
proc qx::sim::latency {pattern microseconds} { setting "latency $pattern $microseconds" }

# Appends every call from now on to a file, one JSON line each.
proc qx::sim::log {file} { setting "log [name $file]" }

# Switches writing keys in logs and snapshots: on or off.
proc qx::sim::keys {onoff} { setting "keys $onoff" }

# The faults in force, the environment's first, each a list of its words and of how many calls it
# has answered.
proc qx::sim::fired {} {
    variable settings
    return [order $settings {}]
}

# An error if a fault in force has answered no call, or if there is none.
proc qx::sim::expect_fired {} {
    set faults [fired]
    if {![llength $faults]} { refuse "no fault is in force" }
    set silent {}
    foreach fault $faults {
        lassign $fault words count
        if {$count == 0} { lappend silent $words }
    }
    if {[llength $silent]} { refuse "never fired: [join $silent {; }]" }
    return
}

# Ends all faults, latencies and the log.
proc qx::sim::clear {} {
    order {} {}
    return
}

# Returns all devices to their initial state.
proc qx::sim::reset {} { order_once reset }

# Writes the configuration of all devices as JSON to the file, or returns it without one.
proc qx::sim::snapshot {{file {}}} { listing snapshot $file }

# The same with clocks, counters, table usage and calls so far.
proc qx::sim::state {{file {}}} { listing state $file }

# Writes all devices as they are, with their keys, to a file that `restore` reads.
proc qx::sim::save {file} { order_once "save [name $file]" }

# Replaces all devices by those that `save` has written.
proc qx::sim::restore {file} { order_once "restore [name $file]" }

proc qx::sim::order_once {line} {
    variable settings
    order $settings [list $line]
    return
}

proc qx::sim::listing {what file} {
    variable control
    if {$file ne {}} { return [order_once "$what [name $file]"] }
    if {$control eq {}} { refuse "not attached: call qx::sim::attach first" }
    set folder [make_folder $control.]
    set failed [catch { order_once "$what $folder/text"; text_of $folder/text } result options]
    remove_folder $folder
    return -options $options $result
}

# ---------------------------------------------------------------------------- the flow table

# A flow's hash slot in the flow table.
proc qx::sim::flow_slot {flow} { lindex [flow_slots $flow] 0 }

# The slot that holds a flow on a device, searched by flow id from the hash slot on; -1 if there is
# none.
proc qx::sim::find_flow {device flow} {
    set found [qx_flow_create]
    set result -1
    foreach slot [flow_slots $flow] {
        if {[qx_flow_get $device $slot $found] == 0 &&
            [qx_flow_get_flow_id $found] == [qx_flow_get_flow_id $flow]} {
            set result $slot
            break
        }
    }
    qx_data_free $found
    return $result
}
