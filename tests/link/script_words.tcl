# Which commands Tcl scripts use: a reader of Tcl text that finds the first word of every command,
# in bodies, conditions and brackets too, and with an ensemble its second word. Relies on nothing.
#
#   script_words::read FILE   -> a list: word, line, word, line ...; "string length" for an ensemble

namespace eval script_words {
    variable text {}
    variable file_line 1
    variable found {}
    # Where the bodies are: positions of the words that are scripts or conditions; `all` from a
    # position on. A word of ours that is not here takes no script.
    variable bodies {
        proc {3} while {1 2} for {1 2 3 4} if {all 1} catch {1} eval {all 1} uplevel {all 1}
        time {1}
        foreach {end} expr {all 1} namespace {all 3} dict {end} after {all 2}
        test {all 2} case {3} prepare {1} output_of {1} shell {1} output_with {2} shell_with {2}
        without_recording {1} filled {4} ok {1} like {1} type_error {1} overflow {1} miscounted {1}
        setup {1} our_writes {1} constraint {2} testConstraint {2}
    }
    # Words that are data although they stand where a body would.
    variable data {-result -match -constraints -returnCodes -output -errorOutput}
    variable ensembles {
        after array binary chan clock dict encoding file history info interp namespace package
        string trace
    }
}

proc script_words::read {file} {
    variable found {}
    set channel [open $file]
    fconfigure $channel -encoding utf-8
    script [::read $channel] 1
    close $channel
    return $found
}

# Line of a place in a text that begins at `line`.
proc script_words::line_at {text place line} {
    return [expr {$line + [regexp -all \n [string range $text 0 [expr {$place - 1}]]]}]
}

# Reads a whole text as commands.
proc script_words::script {text line} { commands $text 0 {} $line }

# Reads commands from a place to the end, or to a closing bracket; -> the place behind them.
proc script_words::commands {text at until line} {
    set size [string length $text]
    while {$at < $size} {
        regexp -indices -start $at {\A(?:[ \t\n\r;]|\\\n)*} $text blank
        set at [expr {[lindex $blank 1] + 1}]
        if {$at >= $size} break
        set first [string index $text $at]
        if {$first eq $until} { return [expr {$at + 1}] }
        if {$first eq "#"} {
            regexp -indices -start $at {\A(?:\\.|\\\n|[^\n\\])*} $text comment
            set at [expr {[lindex $comment 1] + 1}]
            continue
        }
        set start $at
        set words {}
        # One word after the other until the command's end.
        while {$at < $size} {
            regexp -indices -start $at {\A(?:[ \t]|\\\n)*} $text blank
            set at [expr {[lindex $blank 1] + 1}]
            set next [string index $text $at]
            if {$next in [list {} \n \; $until]} break
            foreach {kind value at place} [word $text $at $until $line] break
            lappend words $kind $value [line_at $text $place $line]
        }
        if {$words ne {}} { command $words [line_at $text $start $line] }
    }
    return $at
}

# Reads one word; -> kind (plain: no substitution in it, braced, other), its text, the place behind
# it, the place its text begins at. What stands in brackets in it is read as commands.
proc script_words::word {text at until line} {
    if {[string range $text $at $at+2] eq "{*}" && ![string is space [string index $text $at+3]]} {
        incr at 3
    }
    switch -- [string index $text $at] {
        \{ {
            set end [closing_brace $text $at]
            set inner [string range $text $at+1 $end-1]
            return [list braced $inner [expr {$end + 1}] [expr {$at + 1}]]
        }
        \" { set ends {["]}; set begin [expr {$at + 1}] }
        default { set ends [expr {$until eq {} ? {[ \t\n;]} : {[ \t\n;\]]}}]; set begin $at }
    }
    set kind plain
    set place $begin
    while {$place < [string length $text]} {
        set char [string index $text $place]
        if {[regexp $ends $char]} break
        switch -- $char {
            \\ { incr place 2 }
            \[ { set kind other; set place [commands $text [expr {$place + 1}] \] $line] }
            $  {
                set kind other
                incr place
                if {[string index $text $place] eq "\{"} {
                    set place [expr {[string first \} $text $place] + 1}]
                }
            }
            default { incr place }
        }
    }
    set value [string range $text $begin $place-1]
    if {[string index $text $at] eq "\""} { incr place }
    return [list $kind $value $place $begin]
}

proc script_words::closing_brace {text at} {
    set depth 0
    while {[regexp -indices -start $at {\\.|\\\n|[\{\}]} $text place]} {
        switch -- [string range $text [lindex $place 0] [lindex $place 1]] {
            \{ { incr depth }
            \} { if {[incr depth -1] == 0} { return [lindex $place 0] } }
        }
        set at [expr {[lindex $place 1] + 1}]
    }
    error "a brace is not closed"
}

# Enters a command and reads its bodies.
proc script_words::command {words line} {
    variable found
    variable bodies
    variable data
    variable ensembles
    foreach {kind name name_line} $words break
    if {$kind ne "plain"} return
    set name [string trimleft $name :]
    set count [expr {[llength $words] / 3}]
    set second [lindex $words 4]
    # An interpreter of the script's own is told to do something; what it knows is its business.
    if {$second eq "eval" && $name ni {namespace interp}} return
    if {$name in $ensembles && $count > 1 && [lindex $words 3] eq "plain"} {
        lappend found "$name $second" $line
    } else {
        lappend found $name $line
    }
    if {$name eq "switch"} { return [switch_bodies $words] }
    if {![dict exists $bodies $name]} return
    if {$name eq "namespace" && $second ne "eval"} return
    if {$name eq "dict" && $second ni {for with update filter}} return
    set places [dict get $bodies $name]
    if {[lindex $places 0] eq "all"} {
        set from [lindex $places 1]
        set places {}
        for {set each $from} {$each < $count} {incr each} { lappend places $each }
    }
    foreach each [string map [list end [expr {$count - 1}]] $places] {
        set first [expr {3 * $each}]
        foreach {kind value value_line} [lrange $words $first $first+2] break
        set before [lindex $words [expr {3 * $each - 2}]]
        if {$each >= $count || $kind ne "braced" || $before in $data} continue
        if {$name eq "test" && ![string match -* $before]} continue
        if {$name in {expr constraint testConstraint} || ($name eq "for" && $each == 2)
                || ($name in {while if} && [is_condition $words $each])} {
            condition $value $value_line
        } else {
            script $value $value_line
        }
    }
}

proc script_words::is_condition {words each} {
    return [expr {$each == 1 || [lindex $words [expr {3 * $each - 2}]] eq "elseif"}]
}

# In a condition only what stands in brackets are commands; braced operands are data.
proc script_words::condition {text line} {
    set at 0
    while {[regexp -indices -start $at {\\.|[\[\{]} $text place]} {
        set at [expr {[lindex $place 1] + 1}]
        switch -- [string range $text [lindex $place 0] [lindex $place 1]] {
            \[ { set at [commands $text $at \] $line] }
            \{ { set at [expr {[closing_brace $text [lindex $place 0]] + 1}] }
        }
    }
}

# Patterns and bodies, in one list or as words of their own.
proc script_words::switch_bodies {words} {
    set count [expr {[llength $words] / 3}]
    set value 1
    while {[string match -* [lindex $words [expr {3 * $value + 1}]]]} { incr value }
    if {$count - $value > 2} {
        for {set each [expr {$value + 2}]} {$each < $count} {incr each 2} {
            script [lindex $words [expr {3 * $each + 1}]] [lindex $words [expr {3 * $each + 2}]]
        }
    } elseif {[lindex $words end-2] eq "braced"} {
        foreach {pattern body} [lindex $words end-1] {
            if {$body ne "-"} { script $body [lindex $words end] }
        }
    }
}
