# Package qx, qx::lint: parses a script and reports mistakes in its SDK and record commands: unknown
# names, wrong numbers of arguments, constants out of range, handles of the wrong type, released
# handles, wrong fields in dicts. Nothing is run. Relies on script_parser.tcl and catalogue.tcl;
# bodies are in lint_bodies.tcl, the commands of the SDK in lint_calls.tcl, those of this package in
# lint_package.tcl, and records as data in lint_records.tcl.
#
# The value of a variable is followed through consecutive commands. A body (of if, while, proc ...)
# starts with the values known before it; values that it may change are unknown after it: better
# silent than wrong. What is known of a value is one of
#   constant text ?line at?   a word without substitutions; of a braced one, where its text begins
#   list values               a list of which some elements are known
#   handle type    number     released line     and empty if nothing is known

namespace eval qx::lint {
    variable findings {} ;# line and text of each
    variable known {}    ;# variable -> what is known of its value
    variable changes {}  ;# of known, in the innermost body: variable -> {what it held} or empty
    variable own {}      ;# procedures of the script, as keys
    variable passing {}  ;# those that run their last words as a command -> how, see passed_by
    variable shared {}   ;# variables that procedures reach from outside, as keys
    variable unknown {}  ;# names that are not commands -> the nearest, as text
    variable depth 0     ;# of the bodies and brackets around the command
}

# The mistakes in a script file: a list of lines "<file>:<line>: <message>", empty if there are
# none.
proc qx::lint::file {name} {
    # As an absolute name, lest it be a command for a pipe.
    set channel [open [::file join [pwd] $name]]
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    set result {}
    qx::progress::begin "checking $name" "[regexp -all \n $text] lines"
    set code [catch { script_findings $text } findings options]
    qx::progress::end
    if {$code} { return -options [dict replace $options -level 1] $findings }
    foreach {line finding} $findings { lappend result "$name:$line: $finding" }
    return $result
}

# Line and text of all findings in a script, by line.
proc qx::lint::script_findings {text} {
    foreach name {findings known changes own passing shared unknown} { variable $name {} }
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
    set code [catch { script $text 1 0 } result options]
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

proc qx::lint::script {text line at} {
    if {[catch { qx::script_parser::commands $text $line $at } commands options]} {
        lassign [lrange [dict get $options -errorcode] 2 3] line before
        found $line $commands
        set commands $before
    }
    # Procedures may be used in front of where they stand.
    foreach words $commands {
        if {[dict get [lindex $words 0] text] eq "proc"} { note_passing $words }
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
        qx::progress::at [dict get [lindex $words 0] line]
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
        set      { return [assign $words $values] }
        list     { return [made [lrange $words 1 end] [lrange $values 1 end]] }
        dict     {
            if {[lindex $values 1 1] eq "create"} {
                return [made [lrange $words 2 end] [lrange $values 2 end]]
            }
        }
        if       { return [if_command $words] }
        proc     { return [procedure $words] }
        switch   { return [switch_command $words] }
        expr     { return [expression $words] }
        qx_*     { return [sdk_command $name $words $values] }
        qx::*    { return [package_command $name $words $values] }
    }
    pass_on $name $words $values
    body_words $name $words
    return
}

# What is known of a word's value.
proc qx::lint::value {word} {
    variable known
    foreach script [dict get $word nested] { set inner [run $script] }
    if {[dict get $word kind] eq "braced"} {
        return [list constant [dict get $word text] [dict get $word line] [dict get $word at]]
    }
    if {[dict get $word kind] eq "plain"} { return [list constant [dict get $word text]] }
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

# What the body around has forgotten is not in its text: so variables that nothing has changed since
# are not in that of a body inside it.
proc qx::lint::forget_named {text} {
    variable known
    variable changes
    if {![dict size $known] || ![dict size $changes]} return
    if {8 * [dict size $changes] < [string length $text]} {
        set mentioned 0
        foreach name [dict keys $changes] {
            if {[dict exists $known $name] && [string first $name $text] >= 0} {
                set mentioned 1
                break
            }
        }
        if {!$mentioned} return
    }
    # `$name` only reads it.
    foreach name [regexp -all -inline {\$?\w+} $text] {
        if {[dict exists $known $name]} { learn $name {} }
    }
}

# A list or a dict made of words.
proc qx::lint::made {words values} {
    set texts {}
    set constant 1
    foreach word $words value $values {
        # It may become any number of words.
        if {[dict get $word expand]} return
        if {[lindex $value 0] ne "constant"} { set constant 0 }
        lappend texts [lindex $value 1]
    }
    if {$constant} { return [list constant $texts] }
    return [list list $values]
}
