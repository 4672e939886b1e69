# Package qx::prompt, the context of the cursor: parses a command that is still being typed. Nothing
# is run or substituted; the result depends only on the text. Relies on nothing.
#
# The constructs open at the cursor are a list of frames, the outermost first. A frame is a dict:
#   kind   script (the whole text, brackets, braces of a command that takes scripts), expression,
#          data (other braces) or quoted
#   words  the finished words of the command, or of the data, before the cursor
#   word   the part of the word before the cursor, as typed
#   state  comment in a comment, else open
# and, for the parser itself: open (the character that opened it), start (its position), begun (1
# once the word has begun).

namespace eval qx::prompt::cursor {
    # The contents of braces, by command and position of the word; other braces may be a script.
    variable held {
        expr {1 expression} if {1 expression} while {1 expression} for {2 expression}
        qx::new {2 data} qx::with {3 data}
    }
    # Commands whose braces are all data.
    variable all_data {qx::set qx::call}
}

# The frames that are open at the end of a text.
proc qx::prompt::cursor::frames {text} {
    set stack [list [frame script]]
    set at 0
    set size [string length $text]
    while {$at < $size} {
        set top [lindex $stack end]
        # Most characters have no special meaning.
        if {[regexp -indices -start $at {\A(?:[\w:.,$*+/<>=!?&|()%^~'`@-]+|\\[^\n])} $text found]} {
            set end [lindex $found 1]
            set stack [lreplace $stack end end [with_text $top [string range $text $at $end]]]
            set at [expr {$end + 1}]
            continue
        }
        set letter [string index $text $at]
        if {$letter eq "\\"} {
            # A continued line.
            set letter " "
            incr at
        }
        set stack [concat [lrange $stack 0 end-1] [in_[dict get $top kind] $top $letter]]
        set top [lindex $stack end]
        if {[dict get $top start] eq "here"} {
            set stack [lreplace $stack end end [dict replace $top start $at]]
        } elseif {[dict get $top state] eq "closed"} {
            # The frame's text is part of the word around it.
            set held [string range $text [dict get $top start] $at]
            set outer [with_text [lindex $stack end-1] $held]
            set stack [lreplace $stack end-1 end $outer]
        } elseif {[dict get $top state] eq "comment"} {
            set end [string first \n $text $at]
            if {$end < 0} { return $stack }
            set stack [lreplace $stack end end [dict replace $top state open]]
            set at $end
        }
        incr at
    }
    return $stack
}

proc qx::prompt::cursor::frame {kind {open {}} {start here}} {
    if {$open eq {}} { set start 0 }
    return [dict create kind $kind open $open start $start words {} word {} begun 0 state open]
}

proc qx::prompt::cursor::with_text {top text} {
    dict append top word $text
    dict set top begun 1
    return $top
}

proc qx::prompt::cursor::end_word {top} {
    if {[dict get $top begun]} { dict lappend top words [dict get $top word] }
    return [dict replace $top word {} begun 0]
}

# In a script a character begins or ends a word, a command, a bracket, a quote, a brace or a
# comment.
proc qx::prompt::cursor::in_script {top letter} {
    set open [dict get $top open]
    set begun [dict get $top begun]
    switch -- $letter {
        \  - \t { return [list [end_word $top]] }
        \n - \; { return [list [frame script $open [dict get $top start]]] }
        \[ { return [list $top [frame script \[]] }
        \] { if {$open eq "\["} { return [list [dict replace $top state closed]] } }
        \} { if {$open eq "\{"} { return [list [dict replace $top state closed]] } }
        \" { if {!$begun} { return [list $top [frame quoted \"]] } }
        \{ {
            if {!$begun} { return [list $top [frame [braces $top] \{]] }
            # Inside braces they count everywhere.
            if {$open eq "\{"} { return [list $top [frame data \{]] }
        }
        \# {
            if {!$begun && [dict get $top words] eq {}} {
                return [list [dict replace $top state comment]]
            }
        }
    }
    return [list [with_text $top $letter]]
}

proc qx::prompt::cursor::in_quoted {top letter} {
    switch -- $letter {
        \[ { return [list $top [frame script \[]] }
        \" { return [list [dict replace $top state closed]] }
    }
    return [list [with_text $top $letter]]
}

proc qx::prompt::cursor::in_expression {top letter} {
    switch -- $letter {
        \[ { return [list $top [frame script \[]] }
        \{ { return [list $top [frame data \{]] }
        \} { return [list [dict replace $top state closed]] }
        \" { return [list $top [frame quoted \"]] }
    }
    return [list [with_text $top $letter]]
}

# Words of a list: only quotes and braces have a meaning.
proc qx::prompt::cursor::in_data {top letter} {
    switch -- $letter {
        \  - \t - \n { return [list [end_word $top]] }
        \{ { return [list $top [frame data \{]] }
        \} { return [list [dict replace $top state closed]] }
        \" { if {![dict get $top begun]} { return [list $top [frame quoted \"]] } }
    }
    return [list [with_text $top $letter]]
}

# The contents of braces that begin the next word of a command.
proc qx::prompt::cursor::braces {top} {
    variable held
    variable all_data
    set words [dict get $top words]
    if {[lindex $words end] eq "elseif"} { return expression }
    if {[lindex $words end] eq "-allow"} { return data }
    set name [string trimleft [lindex $words 0] :]
    set number [llength $words]
    if {$name in $all_data} { return data }
    if {[dict exists $held $name $number]} { return [dict get $held $name $number] }
    return script
}
