# Times, in rounds of processes that take turns, so that changes in the machine's load affect all
# alike; the result is each one's median. CPU time, and on the PC only: times under an emulator are
# meaningless. Relies on counter.tcl for folders and on scale.tcl for the median.

namespace eval times {
    variable peers_folder [file join [file dirname [file normalize [info script]]] peers]
    # The command lines of the peers outside Tcl.
    variable programs {
        ctypes {/usr/bin/python3 -B with_ctypes.py}
        cffi   {/usr/bin/python3 -B with_cffi.py}
        luajit {luajit with_luajit.lua}
    }
}

# Lines "row variant nanoseconds" of one process of the shell or of tclsh.
proc times::tcl_round {program round peers} {
    set output [file join $counter::scratch times]
    exec {*}[counter::launcher pc] $program [file join $counter::here time.tcl] \
        $round $output [join $peers ,] {*}[counter::libraries pc $peers] >/dev/null
    return [scale::lines $output]
}

# Pairs of row and nanoseconds.
proc times::peer_round {peer} {
    variable peers_folder; variable programs
    set words [dict get $programs $peer]
    set output [file join $counter::scratch times]
    exec {*}[counter::launcher pc] {*}[lrange $words 0 end-1] \
        [file join $peers_folder [lindex $words end]] \
        [file join [counter::tools pc] librecords.so] $output >/dev/null
    return [scale::lines $output]
}

# Pairs of variant and nanoseconds of one registration in a fresh interpreter.
proc times::registration_round {round} {
    set output [file join $counter::scratch times]
    exec {*}[counter::launcher pc] [counter::shell pc] [file join $counter::here registration.tcl] \
        registration $output [lindex {floor,ours ours,floor} [expr {$round % 2}]] \
        [file join [counter::tools pc] floor.so] \
        [counter::package_library pc] >/dev/null
    set result {}
    foreach {kind variant passes spent} [scale::lines $output] {
        if {$kind eq "long"} { lappend result $variant [expr {double($spent) / $passes}] }
    }
    return $result
}

# Nanoseconds of a run of a program with an empty script, averaged over many runs: the shell's clock
# for its children has a resolution of a millisecond.
proc times::start_up {program} {
    set script [file join $counter::scratch empty.tcl]
    close [open $script w]
    set spent [exec {*}[counter::launcher pc] bash -c {
        TIMEFORMAT='%U %S'
        time for ((i = 0; i < 50; ++i)); do "$@"; done
    } start_up $program $script 2>@1]
    lassign $spent user system
    expr {($user + $system) * 1e9 / 50}
}

# Dictionary row -> dictionary variant -> nanoseconds per pass, less the empty loop's.
proc times::measure {rounds peers} {
    variable programs
    set tcl_peers {}
    set others {}
    foreach peer $peers {
        if {[dict exists $programs $peer]} { lappend others $peer } else { lappend tcl_peers $peer }
    }
    qx::progress::begin "qxsh: measuring times" "$rounds rounds"
    for {set round 0} {$round < $rounds} {incr round} {
        qx::progress::at $round
        foreach {row variant time} [tcl_round [counter::shell pc] $round {}] {
            lappend found($row,$variant) $time
        }
        if {[llength $tcl_peers]} {
            foreach {row variant time} [tcl_round [counter::tclsh pc] $round $tcl_peers] {
                if {$variant eq "floor"} continue
                lappend found($row,tclsh.$variant) $time
            }
        }
        foreach {variant time} [registration_round $round] {
            lappend found(registration,$variant) $time
        }
        lappend found(start_up,floor) [start_up [counter::tclsh pc]]
        lappend found(start_up,ours) [start_up [counter::shell pc]]
        foreach peer $others {
            foreach {row time} [peer_round $peer] { lappend found($row,$peer) $time }
        }
    }
    qx::progress::end
    return [medians [array get found]]
}

# Dictionary row -> dictionary variant -> nanoseconds per pass, less the empty loop's, of a
# dictionary "row,variant" -> the times of all rounds. Variants of a tclsh are `tclsh.variant`.
proc times::medians {all} {
    array set found $all
    set result {}
    foreach key [array names found] {
        lassign [split $key ,] row variant
        if {[string match *empty $variant]} continue
        set time [scale::median $found($key)]
        if {[regexp {^tclsh\.(.*)$} $variant -> variant]} {
            set time [expr {$time - [scale::median $found($row,tclsh.empty)]}]
        } elseif {$variant in {floor ours} && [info exists found($row,empty)]} {
            set time [expr {$time - [scale::median $found($row,empty)]}]
        }
        dict set result $row $variant $time
    }
    return $result
}
