# Package qx::prompt, the words that Tcl's own commands take first: `string le`, `info ex`. The
# running Tcl is asked, so that its version and a script's ensembles count: an ensemble for its map,
# other commands for the message in which they list their words. Relies on nothing.

namespace eval qx::prompt::subcommands {
    # Commands of Tcl that list their words when they are given a wrong one, and do nothing.
    variable asked {
        after array binary chan clock dict encoding file history info interp memory namespace
        package string trace update {string is} {trace add} {trace remove} {trace info}
        {info class} {info object} {namespace ensemble}
    }
    variable answers {} ;# what they have said, by their words
}

# The words that may follow those of a command, a list.
proc qx::prompt::subcommands::after {words} {
    variable asked
    set name [string trimleft [lindex $words 0] :]
    if {![regexp {^\w+(?:::\w+)*$} $name]} return
    set names [in_ensemble ::$name [lrange $words 1 end]]
    if {$names ne {}} { return $names }
    set words [lreplace $words 0 0 $name]
    if {$words ni $asked || [info procs ::$name] ne {}} return
    return [listed $words]
}

# The subcommands of an ensemble, or of one that a subcommand is.
proc qx::prompt::subcommands::in_ensemble {command words} {
    while {1} {
        if {![llength [info commands $command]] || ![namespace ensemble exists $command]} return
        set options [namespace ensemble configure $command]
        set map [dict get $options -map]
        set names [dict get $options -subcommands]
        if {$names eq {}} { set names [dict keys $map] }
        if {$names eq {}} {
            set space [dict get $options -namespace]
            foreach pattern [namespace eval $space { namespace export }] {
                foreach each [info commands ${space}::$pattern] {
                    lappend names [namespace tail $each]
                }
            }
        }
        if {$words eq {}} { return [lsort -unique $names] }
        set word [lindex $words 0]
        if {![dict exists $map $word] || [llength [dict get $map $word]] != 1} return
        set command [dict get $map $word]
        set words [lrange $words 1 end]
    }
}

# The words that a command of Tcl lists when it is given a wrong one. An interpreter of its own is
# asked, in which a script has redefined nothing.
proc qx::prompt::subcommands::listed {words} {
    variable answers
    if {[dict exists $answers $words]} { return [dict get $answers $words] }
    set names {}
    set fresh [interp create]
    foreach more {{} x {x x} {x x x}} {
        set call [concat $words [list \x01] $more]
        if {![catch { interp eval $fresh $call } said]} continue
        if {[regexp {": (?:must|should) be (.+)$} $said -> list]} {
            set list [string map {{, or } , { or } ,} $list]
            foreach name [split $list ,] {
                # `an integer` is a description.
                if {[regexp {^[\w-]+$} [string trim $name]]} { lappend names [string trim $name] }
            }
            break
        }
    }
    interp delete $fresh
    dict set answers $words $names
    return $names
}
