# Package qx, qx::lint: parses a script and reports mistakes in its SDK and record commands: unknown
# names, wrong numbers of arguments, constants out of range, handles of the wrong type, released
# handles. Nothing is run. Relies on script_parser.tcl and catalogue.tcl.
#
# The value of a variable is followed through consecutive commands. A body (of if, while, proc ...)
# starts with the values known before it; values that it may change are unknown after it: better
# silent than wrong.

namespace eval qx::lint {
    variable findings {} ;# line and text of each
    variable known {}    ;# variable -> what it holds: {handle type}, {number} or {released line}
    variable changes {}  ;# of known, in the innermost body: variable -> {what it held} or empty
    variable own {}      ;# procedures of the script, as keys
    variable shared {}   ;# variables that procedures reach from outside, as keys
    variable unknown {}  ;# names that are not commands -> the nearest, as text
    variable depth 0     ;# of the bodies and brackets around the command
    # The bodies of a command, by the position of the word; `apart` for those with local variables.
    variable bodies {
        while {2 script} for {1 script 3 script 4 script} foreach {end script}
        catch {1 script} time {1 script}
        eval {1 script} after {2 apart} uplevel {end apart} namespace {3 apart} dict {end script}
    }
    variable conditions {while 1 for 2}
}

# The mistakes in a script file: a list of lines "<file>:<line>: <message>", empty if there are
# none.
proc qx::lint::file {name} {
    set channel [open $name]
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    set result {}
    foreach {line finding} [script_findings $text] { lappend result "$name:$line: $finding" }
    return $result
}

# Line and text of all findings in a script, by line.
proc qx::lint::script_findings {text} {
    foreach name {findings known changes own shared unknown} { variable $name {} }
    variable depth 0
    foreach {all name} [regexp -all -inline {\mproc\s+(?:::)?([\w:]+)} $text] {
        dict set own $name {}
    }
    foreach {all names} [regexp -all -inline {\m(?:global|variable|upvar)\s([^\n;]*)} $text] {
        foreach name [regexp -all -inline {\w+} $names] { dict set shared $name {} }
    }
    foreach {all name} [regexp -all -inline {::(\w+)} $text] { dict set shared $name {} }
    # Each level of the script takes up to ten of Tcl's.
    set limit [interp recursionlimit {}]
    interp recursionlimit {} [expr {$limit + 10 * $qx::script_parser::deepest}]
    set code [catch { script $text 1 } result options]
    interp recursionlimit {} $limit
    if {$code} { return -options $options $result }
    set rows {}
    foreach {line finding} $findings { lappend rows [list $line $finding] }
    set result {}
    foreach row [lsort -integer -index 0 [lsort -unique $rows]] {
        lappend result [lindex $row 0] [lindex $row 1]
    }
    return $result
}

proc qx::lint::found {line text} {
    variable findings
    lappend findings $line $text
}

# ----------------------------------------------------------------------------------- scripts

proc qx::lint::script {text line} {
    if {[catch { qx::script_parser::commands $text $line } commands options]} {
        lassign [lrange [dict get $options -errorcode] 2 3] line before
        found $line $commands
        set commands $before
    }
    run $commands
}

# Checks the commands of a script in order, each one's bracketed commands first, as Tcl runs them;
# returns what is known of the last one's result.
proc qx::lint::run {commands} {
    variable depth
    if {![llength $commands]} return
    if {$depth > $qx::script_parser::deepest} {
        set line [dict get [lindex $commands 0 0] line]
        found $line "nested more than $qx::script_parser::deepest deep, not checked"
        return
    }
    incr depth
    set value {}
    foreach words $commands {
        set values {}
        foreach word $words { lappend values [value $word] }
        set value [command $words $values]
    }
    incr depth -1
    return $value
}

# Checks a command whose words have been checked; `values` is what is known of each. Returns what is
# known of its result.
proc qx::lint::command {words values} {
    set first [lindex $words 0]
    if {[dict get $first kind] eq "other"} return
    set name [string trimleft [dict get $first text] :]
    switch -glob -- $name {
        set         { return [assign $words $values] }
        if          { return [if_command $words] }
        proc        { return [apart [lindex $words 3]] }
        switch      { return [switch_command $words] }
        expr        { return [expression $words] }
        qx::check   { return [check $words $values] }
        qx_*        { return [sdk_command $name $words $values] }
        qx::*       { package_command $name $first }
    }
    forget $words
    body_words $name $words
    return
}

# What is known of a word's value.
proc qx::lint::value {word} {
    variable known
    foreach script [dict get $word nested] { set inner [run $script] }
    if {[dict get $word kind] ne "other"} { return [list constant [dict get $word text]] }
    switch -- [dict get $word whole] {
        script   { return $inner }
        variable {
            set name [string trim [dict get $word text] \${}]
            if {[dict exists $known $name]} { return [dict get $known $name] }
        }
    }
    return
}

proc qx::lint::assign {words values} {
    variable known
    variable shared
    set name [dict get [lindex $words 1] text]
    if {[llength $words] == 2} {
        if {[dict exists $known $name]} { return [dict get $known $name] }
        return
    }
    set value [lindex $values 2]
    set held {}
    if {$value ne {} && ![dict exists $shared $name] && [regexp {^\w+$} $name]} {
        set held [list $value]
    }
    learn $name $held
    return $value
}

# Notes what a variable holds from now on, a list of one; empty if that is not known.
proc qx::lint::learn {name held} {
    variable known
    variable changes
    set before {}
    if {[dict exists $known $name]} { set before [list [dict get $known $name]] }
    if {![dict exists $changes $name]} { dict set changes $name $before }
    if {$held ne {}} { dict set known $name [lindex $held 0] } else { dict unset known $name }
}

# A command of Tcl or of the script may change the variables named by its words.
proc qx::lint::forget {words} {
    foreach word $words { forget_named [dict get $word text] }
}

proc qx::lint::forget_named {text} {
    variable known
    if {![dict size $known]} return
    # `$name` only reads it.
    foreach name [regexp -all -inline {\$?\w+} $text] {
        if {[dict exists $known $name]} { learn $name {} }
    }
}

# ------------------------------------------------------------------------------------ bodies

proc qx::lint::body_words {name words} {
    variable bodies
    variable conditions
    if {[dict exists $conditions $name]} {
        set word [lindex $words [dict get $conditions $name]]
        if {[llength $word]} { expression_word $word }
    }
    if {![dict exists $bodies $name]} return
    # Of these two only some forms take a script.
    set form [dict get [lindex [concat $words {{text {}}}] 1] text]
    if {$name eq "namespace" && $form ne "eval"} return
    if {$name eq "dict" && $form ni {for with update filter}} return
    foreach {place kind} [dict get $bodies $name] {
        set word [lindex $words $place]
        if {![llength $word] || [dict get $word kind] ne "braced"} continue
        if {$kind eq "apart"} { apart $word } else { body $word }
    }
}

# A body that may run any number of times, or not at all.
proc qx::lint::body {word} {
    variable changes
    if {[dict get $word kind] ne "braced"} return
    set text [dict get $word text]
    forget_named $text
    set outer $changes
    set changes {}
    script $text [dict get $word line]
    dict for {name held} $changes { learn $name $held }
    set changes $outer
}

# A body with local variables.
proc qx::lint::apart {word} {
    variable known
    variable changes
    if {![llength $word] || [dict get $word kind] ne "braced"} return
    set before [list $known $changes]
    lassign {} known changes
    script [dict get $word text] [dict get $word line]
    lassign $before known changes
    return
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

proc qx::lint::switch_command {words} {
    set last [lindex $words end]
    if {[dict get $last kind] ne "braced"} return
    lassign [list [dict get $last text] [dict get $last line]] text line
    if {[catch { qx::script_parser::commands $text $line } commands]} return
    # Patterns and bodies alternate, on one line or several.
    set flat {}
    foreach command $commands { foreach word $command { lappend flat $word } }
    foreach {pattern body} $flat { if {[llength $body]} { body $body } }
    return
}

proc qx::lint::expression {words} {
    foreach word [lrange $words 1 end] { expression_word $word }
    return
}

# Brackets in a braced expression; those of other words have been checked already.
proc qx::lint::expression_word {word} {
    if {[dict get $word kind] ne "braced"} return
    lassign [list [dict get $word text] [dict get $word line]] text line
    if {[catch { qx::script_parser::in_expression $text $line } scripts]} return
    foreach script $scripts { run $script }
}

proc qx::lint::check {words values} {
    set first 1
    if {[llength $words] > 3 && [dict get [lindex $words 1] text] eq "-allow"} { set first 3 }
    set word [lindex $words $first]
    if {[llength $words] == $first + 1 && [dict get $word kind] eq "braced"} {
        script [dict get $word text] [dict get $word line]
        return
    }
    return [command [lrange $words $first end] [lrange $values $first end]]
}

# --------------------------------------------------------------------------- the commands

proc qx::lint::package_command {name word} {
    variable own
    if {[llength [info commands ::$name]] || [dict exists $own $name]} return
    if {[regexp {^qx::\w+$} $name]} { unknown $name [dict get $word line] }
}

proc qx::lint::unknown {name line} {
    variable unknown
    if {![dict exists $unknown $name]} {
        set near {}
        # A script with more of them than this is for something else.
        if {[dict size $unknown] < 100} {
            set near [qx::catalogue::like $name [commands_like $name]]
        }
        dict set unknown $name $near
    }
    found $line "$name is not a command[dict get $unknown $name]"
}

proc qx::lint::commands_like {name} {
    if {![string match qx::* $name]} { return [qx::catalogue::commands] }
    set names {}
    foreach each [lsort [info commands ::qx::*]] { lappend names [string range $each 2 end] }
    return $names
}

proc qx::lint::sdk_command {name words values} {
    variable own
    set line [dict get [lindex $words 0] line]
    if {![qx::catalogue::is_command $name]} {
        if {![dict exists $own $name]} { unknown $name $line }
        forget $words
        return
    }
    set facts [qx::catalogue::facts $name]
    set arguments [dict get $facts arguments]
    # A word after {*} may become any number of words.
    foreach word $words { if {[dict get $word expand]} { return [result $facts] } }
    set wanted [expr {[llength $arguments] / 2}]
    set given [expr {[llength $words] - 1}]
    if {$given != $wanted} {
        set words_wanted [qx::wording::counted $wanted argument]
        found $line "$name takes $words_wanted, not $given: [dict get $facts usage]"
        return [result $facts]
    }
    set number 0
    foreach {argument type} $arguments word [lrange $words 1 end] value [lrange $values 1 end] {
        incr number
        set wrong [mistake $facts $argument $type $value]
        if {$wrong ne {}} {
            found [dict get $word line] "$name, argument $number ($argument): $wrong"
        }
    }
    if {[dict get $facts shape] eq "free"} { release [lindex $words 1] $line }
    return [result $facts]
}

# What is known of a command's result.
proc qx::lint::result {facts} {
    set type [dict get $facts result]
    if {$type eq "none"} { return [list constant {}] }
    if {[qx::catalogue::is_pointer $type]} { return [list handle [qx::catalogue::target $type]] }
    return number
}

proc qx::lint::release {word line} {
    variable shared
    if {[dict get $word whole] ne "variable"} return
    set name [string trim [dict get $word text] \${}]
    if {![dict exists $shared $name]} { learn $name [list [list released $line]] }
}

# The mistake in the value of a command's argument; empty if there is none, or if nothing is known.
proc qx::lint::mistake {facts argument type value} {
    lassign $value kind what
    if {![info exists kind]} return
    set pointer [qx::catalogue::is_pointer $type]
    switch -- $kind {
        released { if {$pointer} { return "the handle was released on line $what" } }
        number   {
            if {$pointer && $type ne "void*"} {
                return "got a number, expected a handle of [qx::catalogue::native $type]"
            }
        }
        handle   {
            if {!$pointer} {
                return "got a handle of [qx::catalogue::native $what*], expected a number"
            }
            if {$type ne "void*" && $what ne [qx::catalogue::target $type]} {
                return "got a handle of [qx::catalogue::native $what*], expected one of\
                    [qx::catalogue::native $type]"
            }
        }
        constant {
            if {$pointer} { return [wrong_handle $type $what] }
            return [wrong_number $facts $argument $type $what]
        }
    }
    return
}

proc qx::lint::wrong_number {facts argument type word} {
    if {![string is wideinteger -strict $word] && ![regexp {^\s*\d+\s*$} $word]} {
        return "\"$word\" is not a number"
    }
    set bounds [qx::catalogue::bounds $facts $argument $type]
    set taken [dict get $bounds taken]
    # A number beyond its type's range may still be converted; an index must be that of an element.
    if {$taken eq [qx::catalogue::range $type]} { set taken [qx::catalogue::converted $type] }
    lassign $taken least greatest
    if {($word >= $least && $word <= $greatest) || $word == [dict get $bounds every]} return
    set range [qx::wording::between $taken]
    if {$argument eq "idx"} { set range [qx::wording::range $facts $argument $type] }
    return "$word is outside $range"
}

proc qx::lint::wrong_handle {type word} {
    variable own
    if {$word eq "NULL"} return
    if {[regexp {^_[0-9a-f]{8}_p_(\w+)$} $word -> name]} {
        set wanted [string map {{ } _} [string range [qx::catalogue::native $type] 0 end-2]]
        if {$type eq "void*" || $name eq $wanted} return
        return "$word is not a handle of [qx::catalogue::native $type]"
    }
    # A name may be that of an object that the script creates.
    if {[regexp {^[A-Za-z]} $word] && ![string is wideinteger -strict $word]} return
    return "\"$word\" is not a handle"
}
