# Package qx, parsing Tcl scripts into commands and words: nothing is run or substituted. Parses
# whole scripts, for qx::lint and the tests; qx::prompt parses commands that are still being typed,
# without this package. Relies on nothing.
#
# A command is a list of words. A word is a dict:
#   kind    braced, plain (quoted or bare, without substitutions) or other
#   text    its text; in a plain word backslash sequences are replaced
#   line    the line where the text begins
#   expand  1 after {*}
#   nested  the scripts in its brackets, a list
#   whole   script if the word is one pair of brackets, variable if it is $name alone, else empty

namespace eval qx::script_parser {
    variable text {}
    variable place 0
    variable line 1
}

# The commands of a script whose first line has the given number. Errors have the code {QX SYNTAX
# line commands}, with the commands before the mistake.
proc qx::script_parser::commands {script first} {
    set before {}
    if {[catch { within $script $first { read_commands {} before } } result options]} {
        set mistake [concat [dict get $options -errorcode] [list $before]]
        return -code error -errorcode $mistake $result
    }
    return $result
}

# Parses a text from its beginning; may be called while another text is being parsed.
proc qx::script_parser::within {script first reading} {
    variable text
    variable place
    variable line
    set saved [list $text $place $line]
    lassign [list $script 0 $first] text place line
    set code [catch { uplevel 1 $reading } result options]
    lassign $saved text place line
    return -options $options $result
}

proc qx::script_parser::fail {at message} {
    return -code error -errorcode [list QX SYNTAX $at] $message
}

# Advances to a position, counting lines.
proc qx::script_parser::go_to {next} {
    variable text
    variable place
    variable line
    incr line [regexp -all \n [string range $text $place [expr {$next - 1}]]]
    set place $next
}

# The position after a match at the current position.
proc qx::script_parser::behind {pattern} {
    variable text
    variable place
    if {![regexp -indices -start $place "\\A$pattern" $text found]} { return $place }
    return [expr {[lindex $found 1] + 1}]
}

# Commands up to the end, or to a closing bracket; the caller's variable has those parsed so far.
proc qx::script_parser::read_commands {until {so_far unused}} {
    upvar 1 $so_far result
    variable text
    variable place
    variable line
    set size [string length $text]
    set start $line
    set result {}
    while {1} {
        go_to [behind {(?:[ \t\r\n;]|\\\n)*}]
        if {$place >= $size} break
        set next [string index $text $place]
        if {$next eq $until} {
            go_to [expr {$place + 1}]
            return $result
        }
        if {$next eq "#"} {
            go_to [behind {(?:\\.|\\\n|[^\\\n])*}]
            continue
        }
        set words {}
        while {1} {
            go_to [behind {(?:[ \t\r]|\\\n)*}]
            if {[string index $text $place] in [list {} \n \; $until]} break
            lappend words [read_word $until]
        }
        if {$words ne {}} { lappend result $words }
    }
    if {$until ne {}} { fail $start "a bracket is not closed" }
    return $result
}

proc qx::script_parser::read_word {until} {
    variable text
    variable place
    variable line
    set expand 0
    set next [string index $text $place+3]
    if {[string range $text $place $place+2] eq "{*}" && ![string is space -strict $next]} {
        set expand 1
        go_to [expr {$place + 3}]
    }
    set start $line
    switch -- [string index $text $place] {
        \{      { set word [read_braces] }
        \"      { set word [read_parts {["]} 1 $until] }
        default {
            set ends [expr {$until eq {} ? {[ \t\r\n;]} : {[ \t\r\n;\]]}}]
            set word [read_parts $ends 0 $until]
        }
    }
    return [concat [list expand $expand line $start] $word]
}

proc qx::script_parser::read_braces {} {
    variable text
    variable place
    variable line
    set start $place
    set begun $line
    set depth 0
    set at $place
    while {[regexp -indices -start $at {\\.|\\\n|[\{\}]} $text found]} {
        lassign $found first last
        set at [expr {$last + 1}]
        switch -- [string range $text $first $last] {
            \{ { incr depth }
            \} { incr depth -1 }
        }
        if {$depth == 0} {
            go_to $at
            return [list kind braced text [string range $text $start+1 $first-1] nested {} whole {}]
        }
    }
    fail $begun "a brace is not closed"
}

# A bare or quoted word, up to a character that ends it.
proc qx::script_parser::read_parts {ends quoted until} {
    variable text
    variable place
    variable line
    set begun $line
    if {$quoted} { go_to [expr {$place + 1}] }
    set start $place
    set nested {}
    set kind plain
    set size [string length $text]
    while {$place < $size && ![regexp $ends [string index $text $place]]} {
        switch -- [string index $text $place] {
            \\ { go_to [expr {min($place + 2, $size)}] }
            \[ {
                set kind other
                go_to [expr {$place + 1}]
                lappend nested [read_commands \] inner]
            }
            \$ {
                set kind other
                go_to [behind {\$(?:\{[^\}]*\}|(?:\w|::)*)}]
            }
            default { go_to [behind {[^\\\[\$ \t\r\n;\]"]+|.}] }
        }
    }
    if {$quoted && $place >= $size} { fail $begun "a quote is not closed" }
    set inner [string range $text $start [expr {$place - 1}]]
    if {$quoted} { go_to [expr {$place + 1}] }
    set whole {}
    if {[regexp {^\$(?:\{[^\}]*\}|(?:\w|::)+)$} $inner]} {
        set whole variable
    } elseif {[llength $nested] == 1 && [is_one_script $inner]} {
        set whole script
    }
    if {$kind eq "plain"} { set inner [subst -nocommands -novariables $inner] }
    return [list kind $kind text $inner nested $nested whole $whole]
}

# Whether a word is one pair of brackets and nothing else.
proc qx::script_parser::is_one_script {word} {
    if {![regexp {^\[.*\]$} $word]} { return 0 }
    # Cut off anywhere before its end, the bracket is open.
    for {set at [string first \] $word]} {$at >= 0 && $at < [string length $word] - 1} {} {
        if {[info complete [string range $word 0 $at]]} { return 0 }
        set at [string first \] $word [expr {$at + 1}]]
    }
    return 1
}

# The scripts in the brackets of an expression, a list. Braces in an expression contain data.
proc qx::script_parser::in_expression {expression first} {
    return [within $expression $first { read_expression }]
}

proc qx::script_parser::read_expression {} {
    variable text
    variable place
    set scripts {}
    while {[regexp -indices -start $place {[\\\[\{]} $text found]} {
        go_to [lindex $found 0]
        switch -- [string index $text $place] {
            \\ { go_to [expr {min($place + 2, [string length $text])}] }
            \[ {
                go_to [expr {$place + 1}]
                lappend scripts [read_commands \]]
            }
            \{ { read_braces }
        }
    }
    return $scripts
}
