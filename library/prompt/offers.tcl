# Package qx::prompt, completion: what may stand at the cursor, as a function of the text before it,
# the commands and the variables there are. Relies on cursor.tcl and arguments.tcl.

namespace eval qx::prompt::offers {
    # More names than this are offered by their stems first: qx_flow_ for all that begin so.
    variable most 20
}

# What completes the text: a dict
#   word    what stands of the word at the cursor
#   offers  the words that may stand there instead; each begins as `word` does
#   hint    what is wanted where nothing can be offered: <dscp: 0..255>
#   files   1 where a file name stands
# commands: names; variables: a dict, name -> value, elements of arrays as name(element).
proc qx::prompt::offers::at {text commands variables} {
    set frames [qx::prompt::cursor::frames $text]
    set top [lindex $frames end]
    foreach part {kind words word state} { set $part [dict get $top $part] }
    set answer [dict create word $word offers {} hint {} files 0]
    if {$state eq "comment"} { return $answer }
    if {$kind eq "data"} {
        return [dict merge $answer [qx::prompt::arguments::field $frames $variables]]
    }
    if {$kind eq "script" && $words ne {} && [string last \$ $word] < 1} {
        return [dict merge $answer [qx::prompt::arguments::next $words $word $variables]]
    }
    # A variable may stand in the midst of a word, a quote or an expression.
    if {[regexp {\$\{?[\w:]*(?:\([^()\s]*)?$} $word name]} {
        dict set answer word $name
        dict set answer offers [variables $name [dict keys $variables]]
    } elseif {$kind eq "script" && $words eq {}} {
        dict set answer offers [commands $word $commands]
    }
    return $answer
}

# The names that begin as the word does, in order.
proc qx::prompt::offers::beginning {word names} {
    set size [string length $word]
    set found {}
    foreach name $names {
        if {[string equal -length $size $word $name]} { lappend found $name }
    }
    return [lsort -unique $found]
}

# Variables behind a dollar sign. Names that Tcl would not read to their end have braces.
proc qx::prompt::offers::variables {word names} {
    set braces [string match "\$\{*" $word]
    set shown {}
    foreach name $names {
        # An array has its name offered as long as nobody asks for its elements.
        set array [expr {![string match *(* $word] && [regsub {\(.*\)$} $name {} name]}]
        if {!$braces && [regexp {^(?:\w|::)+(?:\([\w:.,-]*\))?$} $name]} {
            lappend shown \$$name[expr {$array ? "(" : ""}]
        } elseif {![string match {*[\{\}]*} $name]} {
            lappend shown \$\{$name[expr {$array ? "(" : "\}"}]
        }
    }
    return [beginning $word $shown]
}

# Names of commands or of other things that have stems.
proc qx::prompt::offers::commands {word names} {
    regexp {^(:*)(.*)$} $word -> colons bare
    set result {}
    foreach name [stems $bare [beginning $bare $names]] { lappend result $colons$name }
    return $result
}

# Many names by their stems: as far as the next underscore or colons that some of them share.
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
    # One stem for all says nothing; the next ones do.
    if {[dict size $members] == 1} { return [stems [lindex $members 0] $names] }
    set result {}
    dict for {stem each} $members {
        lappend result [expr {[llength $each] == 1 ? [lindex $each 0] : $stem}]
    }
    return $result
}
