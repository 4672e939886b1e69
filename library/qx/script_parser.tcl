# Package qx, parsing Tcl scripts into commands and words, and lists into words: nothing is run or
# substituted. Parses whole scripts, for qx::lint and the tests; qx::prompt parses commands that are
# still being typed, without this package. Relies on nothing.
#
# A command is a list of words. A word is a dict:
#   kind    braced, plain (quoted or bare, without substitutions) or other
#   text    its text; in a plain word backslash sequences are replaced
#   line    the line where the text begins
#   at      the place in the file where the text of a braced word begins; -1 if it is not known
#   expand  1 after {*}
#   nested  the scripts in its brackets, a list
#   whole   script if the word is one pair of brackets, variable if it is $name alone, else empty

namespace eval qx::script_parser {
    variable text {}
    variable place 0
    variable base -1     ;# the text's place in the file; -1 if it is not known
    variable closing     ;# place of an opening brace in the file -> that of its closing one
    variable line 1      ;# that of `counted`, a place that is not behind `place`
    variable counted 0
    variable depth 0     ;# of the brackets around the place
    variable deepest 300 ;# more are refused: each takes some of Tcl's stack
}

# The commands of a script whose first line has the given number. Errors have the code {QX SYNTAX
# line commands}, with the commands before the mistake. `at` is the script's place in its file: 0
# for the file's whole text, which has to be parsed before its parts; -1 for other texts. The braces
# of a file are matched once, however deep the bodies are nested in each other.
proc qx::script_parser::commands {script first {at -1}} {
    variable closing
    if {$at == 0} { array unset closing }
    set before {}
    if {[catch { within $script $first $at { read_commands {} before } } result options]} {
        set mistake [concat [dict get $options -errorcode] [list $before]]
        return -code error -errorcode $mistake $result
    }
    return $result
}

# Parses a text from its beginning; may be called while another text is being parsed.
proc qx::script_parser::within {script first at reading} {
    variable text
    variable place
    variable base
    variable line
    variable counted
    variable depth
    set saved [list $text $place $base $line $counted $depth]
    lassign [list $script 0 $at $first 0 0] text place base line counted depth
    set code [catch { uplevel 1 $reading } result options]
    lassign $saved text place base line counted depth
    return -options $options $result
}

proc qx::script_parser::fail {at message} {
    return -code error -errorcode [list QX SYNTAX $at] $message
}

# The line of the current position.
proc qx::script_parser::current_line {} {
    variable text
    variable place
    variable line
    variable counted
    incr line [regexp -all \n [string range $text $counted [expr {$place - 1}]]]
    set counted $place
    return $line
}

# Advances over a match at the current position; the pattern begins with \A.
proc qx::script_parser::skip {pattern} {
    variable text
    variable place
    if {[regexp -indices -start $place $pattern $text found]} {
        set place [expr {[lindex $found 1] + 1}]
    }
}

# Commands up to the closing bracket, behind the opening one.
proc qx::script_parser::read_bracket {} {
    variable place
    variable depth
    variable deepest
    if {[incr depth] > $deepest} {
        fail [current_line] "brackets are nested more than $deepest deep"
    }
    incr place
    set commands [read_commands \]]
    incr depth -1
    return $commands
}

# Commands up to the end, or to a closing bracket; the caller's variable has those parsed so far.
proc qx::script_parser::read_commands {until {so_far unused}} {
    upvar 1 $so_far result
    variable text
    variable place
    set size [string length $text]
    set start [current_line]
    set result {}
    while {1} {
        skip {\A(?:[ \t\r\n;]|\\\n)*}
        if {$place >= $size} break
        set next [string index $text $place]
        if {$next eq $until} {
            incr place
            return $result
        }
        if {$next eq "#"} {
            skip {\A(?:\\.|\\\n|[^\\\n])*}
            continue
        }
        set words {}
        while {1} {
            skip {\A(?:[ \t\r]|\\\n)*}
            if {[string index $text $place] in [list {} \n \; $until]} break
            lappend words [read_word $until]
        }
        if {[llength $words]} { lappend result $words }
    }
    if {$until ne {}} { fail $start "a bracket is not closed" }
    return $result
}

proc qx::script_parser::read_word {until} {
    variable text
    variable place
    set expand 0
    set next [string index $text $place+3]
    if {[string range $text $place $place+2] eq "{*}" && ![string is space -strict $next]} {
        set expand 1
        incr place 3
    }
    set start [current_line]
    switch -- [string index $text $place] {
        \{      { set word [read_braces $start] }
        \"      { set word [read_parts {["]} 1 $start] }
        default {
            set ends [expr {$until eq {} ? {[ \t\r\n;]} : {[ \t\r\n;\]]}}]
            set word [read_parts $ends 0 $start]
        }
    }
    return [concat [list expand $expand line $start] $word]
}

proc qx::script_parser::read_braces {line} {
    variable text
    variable place
    variable base
    variable closing
    set start $place
    if {$base < 0 || ![info exists closing([expr {$base + $start}])]} {
        set end [match_braces $line]
    } else {
        set end [expr {$closing([expr {$base + $start}]) - $base}]
    }
    set place [expr {$end + 1}]
    set at [expr {$base < 0 ? -1 : $base + $start + 1}]
    set inner [string range $text $start+1 $end-1]
    return [list kind braced text $inner at $at nested {} whole {}]
}

# The place of the brace that closes the one at the current position. Notes those inside, too.
proc qx::script_parser::match_braces {line} {
    variable text
    variable place
    variable base
    variable closing
    set open {}
    set at $place
    while {[regexp -indices -start $at {\\.|\\\n|[\{\}]} $text found]} {
        lassign $found first last
        set at [expr {$last + 1}]
        switch -- [string range $text $first $last] {
            \{ { lappend open $first }
            \} {
                set begun [lindex $open end]
                set open [lreplace $open end end]
                if {$base >= 0} { set closing([expr {$base + $begun}]) [expr {$base + $first}] }
                if {$open eq {}} { return $first }
            }
        }
    }
    fail $line "a brace is not closed"
}

# A bare or quoted word, up to a character that ends it.
proc qx::script_parser::read_parts {ends quoted line} {
    variable text
    variable place
    if {$quoted} { incr place }
    set start $place
    set nested {}
    set kind plain
    set bracket {} ;# the last one: where it begins, and the place behind it
    set size [string length $text]
    while {$place < $size && ![regexp $ends [string index $text $place]]} {
        switch -- [string index $text $place] {
            \\ { set place [expr {min($place + 2, $size)}] }
            \[ {
                set kind other
                set opened $place
                lappend nested [read_bracket]
                set bracket [list $opened $place]
            }
            \$ {
                set kind other
                if {[string index $text $place+1] eq "\{" &&
                    [string first \} $text $place] < 0} { fail $line "a brace is not closed" }
                skip {\A\$(?:\{[^\}]*\}|(?:\w|::)*)}
            }
            default { skip {\A(?:[^\\\[\$ \t\r\n;\]"]+|.)} }
        }
    }
    if {$quoted && $place >= $size} { fail $line "a quote is not closed" }
    set end $place
    set inner [string range $text $start [expr {$end - 1}]]
    if {$quoted} { incr place }
    set whole {}
    if {[regexp {^\$(?:\{[^\}]*\}|(?:\w|::)+)$} $inner]} {
        set whole variable
    } elseif {$bracket eq [list $start $end]} {
        set whole script
    }
    if {$kind eq "plain"} { set inner [subst -nocommands -novariables $inner] }
    return [list kind $kind text $inner at -1 nested $nested whole $whole]
}

# The elements of a list as words, braced or plain. What is not a list has those before the mistake.
proc qx::script_parser::elements {list first {at -1}} {
    return [within $list $first $at { read_elements }]
}

proc qx::script_parser::read_elements {} {
    variable text
    variable place
    set result {}
    while {1} {
        skip {\A\s+}
        set line [current_line]
        switch -- [string index $text $place] {
            {} { return $result }
            \{ { if {[catch { read_braces $line } word]} { return $result } }
            default {
                set pattern {\A(?:"(?:[^"\\]|\\.)*"|(?:[^\s\\]|\\.)+)}
                if {![regexp -start $place $pattern $text all]} { return $result }
                incr place [string length $all]
                set bare [regsub {^"(.*)"$} $all {\1}]
                set bare [subst -nocommands -novariables $bare]
                set word [list kind plain text $bare at -1 nested {} whole {}]
            }
        }
        lappend result [concat [list expand 0 line $line] $word]
    }
}

# The scripts in the brackets of an expression, a list. Braces in an expression contain data.
proc qx::script_parser::in_expression {expression first {at -1}} {
    return [within $expression $first $at { read_expression }]
}

proc qx::script_parser::read_expression {} {
    variable text
    variable place
    set scripts {}
    while {[regexp -indices -start $place {[\\\[\{]} $text found]} {
        set place [lindex $found 0]
        switch -- [string index $text $place] {
            \\ { set place [expr {min($place + 2, [string length $text])}] }
            \[ {
                lappend scripts [read_bracket]
            }
            \{ { read_braces [current_line] }
        }
    }
    return $scripts
}
