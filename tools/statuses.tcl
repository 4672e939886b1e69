# Reads the tables in docs/: the environment switches, and which function of the simulated device
# returns which status. A mistake ends that with an error of one line,
# "<file>:<line>: error: <what>".

namespace eval statuses {}

# A file's name as shown in messages: its folder and its tail.
proc statuses::shown {file} { file join [file tail [file dirname $file]] [file tail $file] }

proc statuses::fail {file line message} {
    return -code error -errorcode CATALOGUE "[shown $file]:$line: error: $message"
}

proc statuses::lines_of {file} {
    if {[catch {open $file} channel]} { fail $file 0 "cannot be read" }
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    return [split $text \n]
}

# The rows of the Markdown table whose first heading is `heading`: a list of line number and cells,
# alternating. Backquotes are removed from the cells.
proc statuses::table {file heading} {
    set rows {}
    set inside 0
    set line_number 0
    foreach line [lines_of $file] {
        incr line_number
        if {![regexp {^\|(.*)\|\s*$} $line -> inner]} { set inside 0; continue }
        set cells {}
        foreach cell [split $inner |] { lappend cells [string trim [string map {` {}} $cell]] }
        if {[lindex $cells 0] eq $heading} { set inside 1; continue }
        if {$inside && ![regexp {^-*$} [lindex $cells 0]]} { lappend rows $line_number $cells }
    }
    if {$rows eq {}} { fail $file 1 "has no table with the heading \"$heading\"" }
    return $rows
}

# The statuses that each function returns besides the common ones: a dict, function -> a list of its
# statuses and the page's text on when. `known` are all statuses, or * for any; `functions` those
# that need a row.
proc statuses::read_answers {file known functions} {
    set answers {}
    foreach {line_number cells} [table $file function] {
        if {[llength $cells] != 3} { fail $file $line_number "expected: function, statuses, when" }
        lassign $cells function names when
        if {$function ni $functions} { fail $file $line_number "\"$function\" is not an SDK call" }
        if {[dict exists $answers $function]} {
            fail $file $line_number "$function already has a row"
        }
        foreach name $names {
            if {$known ne "*" && $name ni $known} {
                fail $file $line_number "\"$name\" is not a status"
            }
        }
        dict set answers $function [list $names $when]
    }
    foreach function $functions {
        if {![dict exists $answers $function]} { fail $file 1 "$function has no row of statuses" }
    }
    return $answers
}

# What certain values mean: a dict, RECORD.FIELD or FUNCTION.ARGUMENT -> value and meaning,
# alternating. `places` are all that there are.
proc statuses::read_special {file places} {
    set special {}
    foreach {line_number cells} [table $file place] {
        if {[llength $cells] != 3} { fail $file $line_number "expected: place, value, meaning" }
        lassign $cells place value meaning
        if {$place ni $places} {
            fail $file $line_number \
                "\"$place\" is neither a field of a record nor an argument of a call"
        }
        if {$value in [dict keys [expr {[dict exists $special $place] ?
                [dict get $special $place] : {}}]]} {
            fail $file $line_number "$place $value already has a row"
        }
        dict lappend special $place $value $meaning
    }
    return $special
}

# The environment switches described in the pages of a folder, each once: a list of name and
# meaning, page by page.
proc statuses::read_switches {folder} {
    set switches {}
    set places {}
    foreach file [lsort [glob -nocomplain -directory $folder *.md]] {
        if {"switch" ni [headings $file]} continue
        foreach {line_number cells} [table $file switch] {
            if {[llength $cells] != 2} { fail $file $line_number "expected: switch, what it does" }
            set name [lindex $cells 0]
            if {![regexp {^[A-Z][A-Z0-9_]*$} $name]} {
                fail $file $line_number "\"$name\" is not the name of a switch"
            }
            if {[dict exists $places $name]} {
                fail $file $line_number "$name is already described at [dict get $places $name]"
            }
            dict set places $name [shown $file]:$line_number
            lappend switches {*}$cells
        }
    }
    if {$switches eq {}} { fail $folder/*.md 1 "no page has a table with the heading \"switch\"" }
    return $switches
}

# The first headings of a page's tables.
proc statuses::headings {file} {
    set found {}
    set before {}
    foreach line [lines_of $file] {
        if {[regexp {^\|-} $line] && [regexp {^\|([^|]*)\|} $before -> first]} {
            lappend found [string trim $first]
        }
        set before $line
    }
    return $found
}
