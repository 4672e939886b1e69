# Data for checkers and editors: the commands and how many words each takes, for Nagelfar as a Tcl
# file, for tclint as JSON, for rlwrap as a list of words. Relies on the facts of the package qx.

namespace eval editors {
    # tclint counts words: where any number may follow, so many are taken.
    variable most 64
}

proc editors::files {} {
    return [list editors/nagelfar.syntax [nagelfar] editors/tclint.json [tclint] \
        editors/rlwrap.words [rlwrap]]
}

proc editors::argument_names {command} {
    set names {}
    foreach {name type} [dict get $command arguments] { lappend names $name }
    return $names
}

# The commands with the fewest and the most words that each takes; the most is empty if there is no
# limit. Those of the SDK take a fixed number.
proc editors::counts {} {
    set rows {}
    foreach command [reference::commands] {
        set count [llength [argument_names $command]]
        lappend rows [dict get $command name] $count $count
    }
    foreach name [dict keys [qx::commands::all]] {
        set rows [concat $rows $name [qx::commands::word_counts $name]]
    }
    return $rows
}

proc editors::nagelfar {} {
    set text "# Syntax database of the commands of the packages demo and qx for the Tcl checker\
        Nagelfar.\n"
    append text "# $reference::note\n\n"
    foreach {name least most} [counts] {
        set words [expr {$least eq $most ? $least : [string trim "r $least $most"]}]
        append text "set ::syntax($name) [list $words]\n"
    }
    return $text
}

proc editors::tclint {} {
    variable most
    foreach command [reference::commands] {
        dict set entries [dict get $command name] [tclint_words [argument_names $command]]
    }
    foreach name [dict keys [qx::commands::all]] {
        lassign [qx::commands::word_counts $name] needed limit
        if {$limit eq {}} { set limit $most }
        set names {}
        for {set number 1} {$number <= $limit} {incr number} { lappend names word$number }
        dict set entries $name [tclint_words $names $needed]
    }
    set lines {}
    dict for {name list} $entries {
        lappend lines "        \"$name\": {\n            \"positionals\":\
            $list,\n            \"switches\": {}\n        }"
    }
    return "{\n    \"name\": \"qxsh\",\n    \"commands\": {\n[join $lines ",\n"]\n    }\n}\n"
}

# The words of a command, of which the first `needed` have to be given: all unless it says how many.
proc editors::tclint_words {names {needed {}}} {
    if {$names eq {}} { return "\[\]" }
    set words {}
    foreach name $names {
        set required [expr {$needed eq {} || [llength $words] < $needed ? "true" : "false"}]
        lappend words "{\"name\": \"$name\", \"required\": $required, \"value\":\
            {\"type\": \"any\"}}"
    }
    return "\[\n                [join $words ",\n                "]\n            \]"
}

# Commands, records and fields, each once. rlwrap reads words, and completes them anywhere.
proc editors::rlwrap {} {
    set words {}
    foreach command [reference::commands] { lappend words [dict get $command name] }
    foreach name [catalogue::records] {
        lappend words $name
        foreach field [dict get [catalogue::record $name] fields] {
            lappend words [dict get $field name]
        }
    }
    return "[join [lsort -unique $words] \n]\n"
}
