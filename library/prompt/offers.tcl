# Package qx::prompt, completion: the possible words at the cursor, as a function of the text before
# it, the commands and the variables. Relies on cursor.tcl, locals.tcl, arguments.tcl and data.tcl.

namespace eval qx::prompt::offers {
    # If there are more names than this, their stems are offered first: qx_flow_ for all names that
    # begin with it.
    variable most 20
}

# The completions of a text, a dict:
#   word    the part of the word before the cursor
#   offers  the possible words, which all begin with `word`
#   hint    what is expected if nothing can be offered: <dscp: 0..255>
#   files   1 if a file name is expected
# commands: names; variables: a dict, name -> value, elements of arrays as name(element).
proc qx::prompt::offers::at {text commands variables} {
    set frames [qx::prompt::cursor::frames $text]
    set top [lindex $frames end]
    foreach part {kind words word state} { set $part [dict get $top $part] }
    set answer [dict create word $word offers {} hint {} files 0]
    if {$state eq "comment"} { return $answer }
    set variables [qx::prompt::locals::reached $text $frames $variables]
    if {$kind eq "data"} {
        set found [qx::prompt::data::at $frames $variables]
        set body [qx::prompt::data::maybe_body $frames]
        if {$found eq {} && $body ne {}} {
            return [at [string range $text $body end] $commands $variables]
        }
        return [dict merge $answer $found]
    }
    if {$kind eq "script" && $words ne {} && [string last \$ $word] < 1} {
        return [dict merge $answer [qx::prompt::arguments::next $words $word $variables]]
    }
    # A variable may be in the middle of a word, a quote or an expression.
    if {[regexp {\$\{?[\w:]*(?:\([^()\s]*)?$} $word name]} {
        dict set answer word $name
        dict set answer offers [variables $name [dict keys $variables]]
    } elseif {$kind eq "script" && $words eq {}} {
        dict set answer offers [commands $word $commands]
    }
    return $answer
}

# The names that begin with the word, sorted.
proc qx::prompt::offers::beginning {word names} {
    set size [string length $word]
    set found {}
    foreach name $names {
        if {[string equal -length $size $word $name]} { lappend found $name }
    }
    return [lsort -unique $found]
}

# Variables after a dollar sign. Names that Tcl would not parse to their end get braces.
proc qx::prompt::offers::variables {word names} {
    set braces [string match "\$\{*" $word]
    set shown {}
    foreach name $names {
        # Only an array's name is offered until a parenthesis asks for its elements.
        set array [expr {![string match *(* $word] && [regsub {\(.*\)$} $name {} name]}]
        if {!$braces && [regexp {^(?:\w|::)+(?:\([\w:.,-]*\))?$} $name]} {
            lappend shown \$$name[expr {$array ? "(" : ""}]
        } elseif {![string match {*[\{\}]*} $name]} {
            lappend shown \$\{$name[expr {$array ? "(" : "\}"}]
        }
    }
    return [beginning $word $shown]
}

# Names of commands or of other things with stems.
proc qx::prompt::offers::commands {word names} {
    regexp {^(:*)(.*)$} $word -> colons bare
    set result {}
    foreach name [stems $bare [beginning $bare $names]] { lappend result $colons$name }
    return $result
}

# The stems of many names: up to the next underscore or colons that several of them share.
proc qx::prompt::offers::stems {word names} {
    variable most
    if {[llength $names] <= $most} { return $names }
    set members {}
    foreach name $names {
        set stem $name
        if {[regexp -indices -start [string length $word] {_|::} $name found]} {
            set stem [string range $name 0 [lindex $found 1]]
        }
        dict lappend members $stem $name
    }
    # A stem that all names share is useless; try the next ones.
    if {[dict size $members] == 1} { return [stems [lindex $members 0] $names] }
    set result {}
    dict for {stem each} $members {
        lappend result [expr {[llength $each] == 1 ? [lindex $each 0] : $stem}]
    }
    return $result
}
