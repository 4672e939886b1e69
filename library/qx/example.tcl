# Package qx, an example for every command: a few lines that run as they are on a fresh simulator.
# Relies on catalogue.tcl.

namespace eval qx::example {}

# The commands of an example.
proc qx::example::lines {command} {
    foreach key {name shape arguments} { set $key [dict get $command $key] }
    if {$shape eq "call"} { return [call $name] }
    if {$shape eq "free"} { return [list "set block \[qx_uint32_create 1\]" "$name \$block"] }
    set lines {}
    set words $name
    foreach {argument type} $arguments {
        if {[qx::catalogue::is_pointer $type]} {
            lappend lines "set $argument \[[creation [qx::catalogue::target $type]]\]"
            append words " \$$argument"
        } else {
            append words " [number $argument]"
        }
    }
    if {[string match *create $shape]} {
        return [list "set block \[$words\]" "qx_data_free \$block"]
    }
    return [lappend lines $words]
}

# The same for an SDK function: the calls it needs before, and its own.
proc qx::example::call {name} {
    set example [qx::catalogue::call_example $name]
    set lines {}
    foreach each [concat [dict get $example before] [list $name]] {
        foreach key {words result} { set $key [dict get [qx::catalogue::call_example $each] $key] }
        set line "qx::call $each"
        foreach word $words { append line " [quoted $word]" }
        if {$result ne {}} { set line "set $result \[$line\]" }
        lappend lines $line
    }
    return $lines
}

# A word as it is typed. A variable in a dict is replaced, too.
proc qx::example::quoted {word} {
    if {$word eq {} || ([regexp {\s} $word] && ![string match *\$* $word])} { return "{$word}" }
    return [expr {[regexp {\s} $word] ? "\"$word\"" : $word}]
}

# The command that creates an object of a type.
proc qx::example::creation {type} {
    if {[qx::catalogue::is_record $type]} { return [qx::catalogue::stem $type]_create }
    return "qx_[qx::catalogue::cell $type]_create 0"
}

proc qx::example::number {argument} { expr {$argument in {idx index data} ? 0 : 1} }

# The commands as they are shown, each within `room` columns.
proc qx::example::shown {command room} {
    set text {}
    foreach line [lines $command] { append text [folded $line $room]\n }
    return $text
}

# A long command on several lines, indented. They end between its words, with a backslash; inside a
# word only if it is too long for a line.
proc qx::example::folded {command room} {
    set room [expr {$room - [string length { \\}]}]
    set margin [string repeat { } 4]
    set text {}
    set line {}
    foreach word [words $command] {
        set parts [list $word]
        if {[string length $margin$word] > $room} { set parts [split $word { }] }
        set end " \\\n"
        foreach part $parts {
            if {$line ne {} && [string length "$line $part"] > $room} {
                append text $line $end
                set line $margin$part
            } else {
                append line [expr {$line eq {} ? {} : { }}] $part
            }
            set end \n
        }
    }
    return $text$line
}

# The words of a command as they are typed; a command in brackets is several words.
proc qx::example::words {command} {
    set words {}
    set word {}
    foreach part [split $command { }] {
        append word [expr {$word eq {} ? {} : { }}] $part
        if {[regexp -all {\{} $word] != [regexp -all {\}} $word]} continue
        if {[regexp -all {"} $word] % 2} continue
        lappend words $word
        set word {}
    }
    return $words
}
