# Data for checkers and editors: the commands and how many words each takes, for Nagelfar as a Tcl
# file, for tclint as JSON, for rlwrap as a list of words. Relies on the facts of the package qx.

namespace eval editors {}

proc editors::files {} {
    return [list editors/nagelfar.syntax [nagelfar] editors/tclint.json [tclint] \
        editors/rlwrap.words [rlwrap]]
}

proc editors::argument_names {command} {
    set names {}
    foreach {name type} [dict get $command arguments] { lappend names $name }
    return $names
}

# Every command takes a fixed number of words.
proc editors::nagelfar {} {
    set text "# Syntax database of the commands of package demo for the Tcl checker Nagelfar.\n"
    append text "# $reference::note\n\n"
    foreach command [reference::commands] {
        append text "set ::syntax([dict get $command name])\
            [llength [argument_names $command]]\n"
    }
    return $text
}

proc editors::tclint {} {
    set entries {}
    foreach command [reference::commands] {
        set positionals {}
        foreach name [argument_names $command] {
            lappend positionals "{\"name\": \"$name\", \"required\": true, \"value\":\
                {\"type\": \"any\"}}"
        }
        set list "\[\]"
        if {$positionals ne {}} {
            set list "\[\n                [join $positionals ",\n                "]\n            \]"
        }
        lappend entries "        \"[dict get $command name]\": {\n            \"positionals\":\
            $list,\n            \"switches\": {}\n        }"
    }
    return "{\n    \"name\": \"qxsh\",\n    \"commands\": {\n[join $entries ",\n"]\n    }\n}\n"
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
