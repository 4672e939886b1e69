# Package qx::test, the device: simulator or board, and whether it is clean, that is, configured as
# when the kit was loaded. Only the simulator can tell: on a board every device counts as clean.
# Relies on qx::sim.

namespace eval qx::test::device {
    variable kind {}   ;# sim or board
    variable folder {} ;# of the kit's own
    variable clean {}  ;# what a clean device has: its snapshot, and qx::sim's settings
}

proc qx::test::device::kind {} { variable kind; return $kind }

proc qx::test::device::start {own_folder} {
    variable kind [expr {[qx::sim::is_loaded] ? "sim" : "board"}]
    variable folder $own_folder
    if {$kind ne "sim"} return
    if {[info exists ::env(QX_SIM_CONTROL)]} {
        qx::sim::attach
    } elseif {$qx::sim::control eq {}} {
        if {[catch { qx::sim::attach $folder/control } message]} {
            error "$message\nload qx::test before the first SDK call"
        }
    }
    accept
}

proc qx::test::device::accept {} {
    variable kind
    variable folder
    variable clean
    if {$kind ne "sim"} return
    set clean [list [snapshot] $qx::sim::settings]
    qx::sim::save $folder/clean
}

# A script may have detached.
proc qx::test::device::snapshot {} {
    if {$qx::sim::control eq {}} { qx::sim::attach }
    return [qx::sim::snapshot]
}

# An error if the device is not clean. It is clean then, so that the next test is not to blame.
proc qx::test::device::must_be_clean {what} {
    variable kind
    variable folder
    variable clean
    if {$kind ne "sim"} return
    lassign $clean configuration settings
    set now [snapshot]
    set found {}
    if {$qx::sim::settings ne $settings} {
        lappend found "in force: [join $qx::sim::settings {; }]"
        qx::sim::order $settings {}
    }
    if {$now ne $configuration} {
        set found [concat $found [changes $configuration $now]]
        qx::sim::restore $folder/clean
    }
    if {![llength $found]} return
    set more [expr {[llength $found] - 10}]
    set found [lrange $found 0 9]
    if {$more > 0} { lappend found "and $more more" }
    return -level 2 -code error -errorcode {QX TEST DEVICE} "$what:\n  [join $found "\n  "]"
}

# What differs between two snapshots, in lines.
proc qx::test::device::changes {before after} {
    set before [entries $before]
    set after [entries $after]
    set result {}
    foreach key [dict keys [dict merge $before $after]] {
        if {![dict exists $before $key]} {
            lappend result "[lindex $key 0]: new [short [lindex $key 1]]"
        } elseif {![dict exists $after $key]} {
            lappend result "[lindex $key 0]: gone [short [lindex $key 1]]"
        }
    }
    if {![llength $result]} { lappend result "the order of its entries" }
    return $result
}

# The entries of a snapshot, which has a line for each: a dict whose keys are the table and the
# entry.
proc qx::test::device::entries {snapshot} {
    set result {}
    set device ?
    set table {}
    foreach line [split $snapshot \n] {
        set line [string trimright $line ,]
        if {[regexp {^ *"device": (\d+)$} $line -> device]} continue
        if {[regexp {^ {6}"(\w+)": (.*)$} $line -> table value]} {
            if {$value ni {[ []}} { dict set result [list "device $device, $table" $value] 1 }
        } elseif {[regexp {^ {8} *(\S.*)$} $line -> value]} {
            dict set result [list "device $device, $table" $value] 1
        }
    }
    return $result
}

proc qx::test::device::short {text} {
    if {[string length $text] <= 100} { return $text }
    return [string range $text 0 96]...
}

# Removes the kit's files.
proc qx::test::device::leave {} {
    variable folder
    if {$qx::sim::control eq [file normalize $folder/control]} { catch { qx::sim::detach } }
    file delete -- $folder/clean $folder/control
}
