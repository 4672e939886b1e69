# Package qx, qx::lint on procedures that run their last words as a command, like
#   proc must {args} { ... uplevel 1 $args ... }
# and on commands of Tcl that do: the command is checked where the words stand. Relies on lint.tcl.

proc qx::lint::procedure {words} {
    note_passing $words
    return [apart [lindex $words 3]]
}

# Notes whether a procedure runs its last words, unchanged, as a command.
proc qx::lint::note_passing {words} {
    variable passing
    if {[llength $words] != 4} return
    foreach {at part} {1 name 2 parameters 3 body} {
        if {[dict get [lindex $words $at] kind] eq "other"} return
        set $part [dict get [lindex $words $at] text]
    }
    set name [string trimleft $name :]
    dict unset passing $name
    if {[catch { lindex $parameters end } last] || $last ne "args"} return
    if {[set way [passed_by $parameters $body]] ne {}} { dict set passing $name $way }
}

# How the words reach the command: the number of words in front that are not part of it, and the
# command of this package that takes them; empty if they do not.
proc qx::lint::passed_by {parameters body} {
    # They may be other words by then.
    if {[regexp {(?:^|[^$\w])args\M} $body]} return
    set own [expr {[llength $parameters] - 1}]
    set head {((?:::)?qx::(?:check|call)(?:\s+-\w+(?:\s+[^-\s\{$]\S*)?)*\s+)?}
    set runs {(?:eval|uplevel(?:\s+#?\d+)?)\s+}
    foreach words [list "$head\\{\\*\\}\\\$args" "$runs$head\\\$args"] {
        set pattern "(?:^|\[;\\\[\\{\\n\])\\s*$words\\s*(?:\[;\\\]\\}\\n\]|\$)"
        if {[regexp $pattern $body -> command]} {
            return [list $own [string trimleft [lindex [split $command] 0] :]]
        }
    }
    set function [lindex $parameters end-1]
    if {$own && [regexp {^\w+$} $function] &&
        [regexp "\\$$function\\s+\\{\\*\\}\\\$args" $body]} {
        return [list [expr {$own - 1}] {}]
    }
    return
}

# Checks the command that a command makes of its last words.
proc qx::lint::pass_on {name words values} {
    variable passing
    variable onward
    if {[dict exists $passing $name]} {
        lassign [dict get $passing $name] own head
        run_words $head [lrange $words $own+1 end] [lrange $values $own+1 end]
        return
    }
    if {![dict exists $onward $name]} return
    set first [dict get $onward $name]
    if {$name eq "uplevel" && [regexp {^#?\d+$} [lindex $values 1 1]]} { set first 2 }
    set words [lrange $words $first end]
    set values [lrange $values $first end]
    if {$name in {eval after uplevel}} {
        # A single word is a script.
        if {[llength $words] < 2} return
        # Words of which nothing is known may be several.
        set each_word $words
        set words {}
        foreach word $each_word value $values {
            lappend words [expr {$value eq {} ? [dict replace $word expand 1] : $word}]
        }
    }
    run_words {} $words $values
}

proc qx::lint::run_words {head words values} {
    if {![llength $words]} return
    if {$head ne {}} {
        set first [dict replace [lindex $words 0] kind plain text $head expand 0]
        set words [linsert $words 0 $first]
        set values [linsert $values 0 [list constant $head]]
    }
    if {![dict get [lindex $words 0] expand]} { command $words $values }
    return
}
