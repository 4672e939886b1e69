# Package qx, qx::lint in bodies: which words of Tcl's commands are scripts or expressions, and what
# stays known of variables before, in and behind them. Procedures that run their words as a command
# pass them on. Relies on lint.tcl.

namespace eval qx::lint {
    # The bodies of a command, by the position of the word; of some commands only with that first
    # word. `apart` are those with local variables or at another time; `prefix` the same, and words
    # are added to the last command.
    variable bodies {
        while {2 script} for {1 script 3 script 4 script} foreach {end script} lmap {end script}
        catch {1 script} time {1 script} timerate {1 script} eval {1 script} uplevel {end apart}
        {namespace eval} {3 apart} {dict for} {4 script} {dict map} {4 script}
        {dict with} {end script} {dict update} {end script} {dict filter} {end script}
        after {2 apart} {after cancel} {} {after info} {} fileevent {3 apart} {chan event} {4 apart}
        {trace add} {5 prefix} {trace variable} {4 prefix}
    }
    variable conditions {while 1 for 2}
    # Commands that run their other words as a command, by the position of its name.
    variable onward {tailcall 1 coroutine 2 eval 1 after 2 uplevel 1}
}

# Checks the bodies among a command's words; variables named by its words may have changed.
proc qx::lint::body_words {name words} {
    variable bodies
    variable conditions
    set form "$name [dict get [lindex [concat $words {{text {}}}] 1] text]"
    set places {}
    foreach each [list $name $form] {
        if {[dict exists $bodies $each]} { set places [dict get $bodies $each] }
    }
    if {$name eq "try"} { set places [try_bodies $words] }
    set kinds {}
    foreach {place kind} $places {
        set at [expr {$place eq "end" ? [llength $words] - 1 : $place}]
        if {[dict get [lindex [concat $words {{kind {}}}] $at] kind] eq "braced"} {
            dict set kinds $at $kind
        }
    }
    set at -1
    foreach word $words {
        # What a script changes is found in it.
        if {[dict exists $kinds [incr at]] && [dict get $kinds $at] eq "script"} continue
        forget_named [dict get $word text]
    }
    if {[dict exists $conditions $name]} {
        set word [lindex $words [dict get $conditions $name]]
        if {[llength $word]} { expression_word $word }
    }
    if {$name eq "apply"} { lambda [lindex $words 1] }
    dict for {at kind} $kinds {
        if {$kind eq "script"} { body [lindex $words $at] } else { apart [lindex $words $at] $kind }
    }
}

# try body ?on code variables body? ?trap pattern variables body? ?finally body?
proc qx::lint::try_bodies {words} {
    set places {1 script}
    for {set at 2} {$at < [llength $words]} {incr at} {
        incr at [expr {[dict get [lindex $words $at] text] eq "finally" ? 1 : 3}]
        lappend places $at script
    }
    return $places
}

# A body that may run any number of times, or not at all. `held` are variables and what is known of
# them in it.
proc qx::lint::body {word {held {}}} {
    variable changes
    if {[dict get $word kind] ne "braced"} return
    set text [dict get $word text]
    forget_named $text
    set outer $changes
    set changes {}
    dict for {name value} $held { learn $name [list $value] }
    script $text [dict get $word line] [dict get $word at]
    dict for {name held} $changes { learn $name $held }
    set changes $outer
}

# A body with local variables, or to whose last command words are added.
proc qx::lint::apart {word {kind apart}} {
    variable known
    variable changes
    if {![llength $word] || [dict get $word kind] ne "braced"} return
    set before [list $known $changes]
    lassign {} known changes
    lassign [list [dict get $word text] [dict get $word line] [dict get $word at]] text line at
    if {$kind eq "prefix"} {
        append text " {*}\$words"
        set at -1
    }
    script $text $line $at
    lassign $before known changes
    return
}

# The function of `apply`: arguments, a body, and perhaps a namespace.
proc qx::lint::lambda {word} {
    if {![llength $word] || [dict get $word kind] ne "braced"} return
    lassign [list [dict get $word text] [dict get $word line] [dict get $word at]] text line at
    apart [lindex [qx::script_parser::elements $text $line $at] 1]
}

proc qx::lint::if_command {words} {
    set condition 1
    foreach word [lrange $words 1 end] {
        if {[dict get $word text] in {then else elseif} && [dict get $word kind] eq "plain"} {
            set condition [expr {[dict get $word text] eq "elseif"}]
        } elseif {$condition} {
            expression_word $word
            set condition 0
        } else {
            body $word
        }
    }
    return
}

# switch ?option ...? string {pattern body ...}, or with patterns and bodies as words.
proc qx::lint::switch_command {words} {
    set first 1
    while {[llength $words] - $first > 2} {
        set word [lindex $words $first]
        if {[dict get $word kind] ne "plain" || ![string match -* [dict get $word text]]} break
        incr first [expr {[dict get $word text] in {-matchvar -indexvar} ? 2 : 1}]
        if {[dict get $word text] eq "--"} break
    }
    set pairs [lrange $words $first+1 end]
    if {[llength $pairs] == 1} {
        set list [lindex $pairs 0]
        if {[dict get $list kind] ne "braced"} return
        lassign [list [dict get $list text] [dict get $list line] [dict get $list at]] text line at
        set pairs [qx::script_parser::elements $text $line $at]
    }
    foreach {pattern body} $pairs { if {[llength $body]} { body $body } }
    return
}

proc qx::lint::expression {words} {
    foreach word [lrange $words 1 end] { expression_word $word }
    return
}

# Brackets in a braced expression; those of other words have been checked already.
proc qx::lint::expression_word {word} {
    if {[dict get $word kind] ne "braced"} return
    lassign [list [dict get $word text] [dict get $word line] [dict get $word at]] text line at
    if {[catch { qx::script_parser::in_expression $text $line $at } scripts]} return
    foreach script $scripts { run $script }
}

