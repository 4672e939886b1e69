# Package qx, qx::lint on JSON texts for qx::set: reads one as a value that lint_records.tcl can
# check. Pure Tcl, because a script is checked without the package's library. docs/qx.md says what
# a text may have in it; a mistake is an error with the message of qx::set, or "not JSON" at its
# place.

namespace eval qx::lint::json {
    variable deepest 32
    variable text {} ;# that is read
    variable at 0    ;# the next character
    variable start 0 ;# what has been taken last; or `at`, if that has failed
    variable first 1 ;# the line of the text's start; empty if that is not known
}

# The value of a text: lists of values for objects and arrays, constants for the others.
proc qx::lint::json::read {given line} {
    variable text $given
    variable at 0
    variable first $line
    set value [element 0]
    blanks
    if {![take {\Z}]} { fail "not JSON" }
    return $value
}

proc qx::lint::json::fail {what} {
    variable text
    variable start
    set before [string range $text 0 $start-1]
    set column [expr {$start - [string last \n $before]}]
    return -level 2 -code error "[expr {1 + [regexp -all \n $before]}]:$column: $what"
}

# Takes what a pattern matches here; whether it does. `name` is a variable for the first group.
proc qx::lint::json::take {pattern {name ignored}} {
    upvar 1 $name group
    variable text
    variable at
    variable start $at
    if {![regexp -start $at "\\A(?:$pattern)" $text all group]} { return 0 }
    incr at [string length $all]
    return 1
}

proc qx::lint::json::blanks {} { take {[ \t\r\n]*} }

proc qx::lint::json::constant {value} {
    variable text
    variable at
    variable first
    set line {}
    # In a value of several lines, lint would look for each of them in the script.
    if {$first ne {} && [string first \n $value] < 0} {
        set line [expr {$first + [regexp -all \n [string range $text 0 $at-1]]}]
    }
    return [list constant $value $line {}]
}

proc qx::lint::json::element {depth} {
    variable deepest
    blanks
    if {$depth > $deepest} { fail "nested more than $deepest deep" }
    if {[take {\{}]} { return [list list [members $depth]] }
    if {[take {\[}]} { return [list list [elements $depth]] }
    if {[take_text value]} { return [constant $value] }
    if {[take {true|false}]} { fail "true and false are written 1 and 0" }
    if {[take null]} { fail "null is neither a number, a text, a list nor an object" }
    if {[take {-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][-+]?\d+)}] ||
        [take {-?(?:0|[1-9]\d*)\.\d+}]} { fail "the number is not an integer, or too large" }
    if {![take {(-?(?:0|[1-9]\d*))} value]} { fail "not JSON" }
    return [constant $value]
}

proc qx::lint::json::take_text {name} {
    upvar 1 $name value
    if {![take {"((?:[^"\\\x00-\x1f]|\\["\\/bfnrt]|\\u[[:xdigit:]]{4})*)"} inside]} { return 0 }
    set value [subst -nocommands -novariables $inside]
    return 1
}

# Behind an opening brace: names and values by turns.
proc qx::lint::json::members {depth} {
    set result {}
    set names {}
    blanks
    if {[take {\}}]} return
    while 1 {
        blanks
        if {![take_text name]} { fail "not JSON" }
        if {$name in $names} { fail "\"$name\" is given twice" }
        lappend names $name
        lappend result [constant $name]
        blanks
        if {![take :]} { fail "not JSON" }
        lappend result [element [expr {$depth + 1}]]
        blanks
        if {[take {\}}]} { return $result }
        if {![take ,]} { fail "not JSON" }
    }
}

# Behind an opening bracket.
proc qx::lint::json::elements {depth} {
    set result {}
    blanks
    if {[take {\]}]} return
    while 1 {
        lappend result [element [expr {$depth + 1}]]
        blanks
        if {[take {\]}]} { return $result }
        if {![take ,]} { fail "not JSON" }
    }
}
