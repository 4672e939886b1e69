# Package qx::prompt, line editing: starts tclreadline and, when Tcl's loop prompts, reads a whole
# command of one or more lines. Relies on history.tcl, offers.tcl and the library of this package,
# which does what scripts cannot do with Readline and Tcl.

namespace eval qx::prompt::editing {
    variable earlier {} ;# the lines before, of a command that goes on
}

# Loads tclreadline and its setup; -> whether it is available. Without its library tclreadline would
# end the process.
proc qx::prompt::editing::load_library {} {
    rename ::exit ::qx::prompt::editing::real_exit
    proc ::exit {args} { error "tclreadline has no library" }
    set missing [catch { package require tclreadline }]
    rename ::exit {}
    rename ::qx::prompt::editing::real_exit ::exit
    if {$missing} { return 0 }
    set file [file join $::qx::prompt::folder libqxreadline[info sharedlibextension]]
    if {[catch { load $file Qxreadline } why]} {
        puts stderr "lines are not edited: $why"
        return 0
    }
    return 1
}

proc qx::prompt::editing::begin {} {
    variable ::qx::prompt::history::most
    set file [qx::prompt::history::file_name]
    qx::prompt::history::trim
    # A file that cannot be read counts as missing. tclreadline does not get it: it would overwrite
    # the lines of other shells, and knows no commands of several lines.
    set readable [expr {$file ne {} && ![catch { close [open $file {RDWR CREAT} 0600] }]}]
    set ::tclreadline::historyLength $most
    catch { ::tclreadline::readline initialize /dev/null }
    if {$readable} {
        foreach command [qx::prompt::history::commands] {
            qx::prompt::readline::remember [qx::prompt::readline::entries] $command
        }
    }
    ::tclreadline::readline builtincompleter 0
    ::tclreadline::readline customcompleter ::qx::prompt::editing::complete
    set plain [expr {![info exists ::env(TERM)] || $::env(TERM) in {{} dumb unknown}}]
    qx::prompt::readline::settle $plain
}

# --------------------------------------------------------------------------------- completion

# Called by tclreadline with the word as Readline sees it, its position in the line and the line; ->
# a list: the replacement of the word, then the possible words; empty if there are none.
proc qx::prompt::editing::complete {part start end line} {
    if {[catch { answer $part $end $line } result]} return
    return $result
}

proc qx::prompt::editing::answer {part end line} {
    variable earlier
    # Readline counts bytes.
    set bytes [string range [encoding convertto $line] 0 [expr {$end - 1}]]
    set text $earlier[encoding convertfrom $bytes]
    set answer [qx::prompt::offers::at $text [qx::prompt::commands $text] [variables]]
    qx::prompt::readline::files [dict get $answer files]
    foreach each {word offers hint} { set $each [dict get $answer $each] }
    # A hint is shown as the only possibility, and the word stays unchanged.
    if {$offers eq {}} { return [expr {$hint eq {} ? {} : [list $part $hint]}] }
    # Readline's word may begin at another position: at a bracket, before a brace.
    set shift [expr {[string length $word] - [string length $part]}]
    set matches {}
    foreach offer $offers {
        if {$shift > 0} {
            lappend matches [string range $offer $shift end]
        } else {
            lappend matches [string range $part 0 [expr {-$shift - 1}]]$offer
        }
    }
    if {[llength $matches] == 1} { return $matches }
    return [linsert $matches 0 [common_start [lsort $matches]]]
}

# In a sorted list the first and the last element have the shortest common prefix.
proc qx::prompt::editing::common_start {sorted} {
    set first [lindex $sorted 0]
    set last [lindex $sorted end]
    set length 0
    while {$length < [string length $first] &&
           [string index $first $length] eq [string index $last $length]} { incr length }
    return [string range $first 0 [expr {$length - 1}]]
}

# The variables at the prompt and their values, elements of arrays as name(element). What would run
# a script when it is read has no value here.
proc qx::prompt::editing::variables {} {
    set result {}
    foreach name [info globals] {
        if {[runs_when_read ::$name]} {
            dict set result $name {}
        } elseif {[array exists ::$name]} {
            foreach element [array names ::$name] {
                set each ${name}($element)
                dict set result $each [expr {[runs_when_read ::$each] ? {} : [set ::$each]}]
            }
        } elseif {[info exists ::$name]} {
            dict set result $name [set ::$name]
        }
    }
    return $result
}

proc qx::prompt::editing::runs_when_read {name} {
    foreach trace [trace info variable $name] {
        if {"read" in [lindex $trace 0] || "array" in [lindex $trace 0]} { return 1 }
    }
    return 0
}

# ------------------------------------------------------------------------------- the commands

# Reads a whole command, which is then one entry of the history. The prompts are those of a shell
# without editing; discarding a line discards those before it, too.
proc qx::prompt::editing::read_command {} {
    variable earlier
    set earlier {}
    set prompt "% "
    set first [qx::prompt::readline::entries]
    while {1} {
        qx::prompt::readline::expect
        set line [::tclreadline::readline read $prompt]
        if {[qx::prompt::readline::dropped]} {
            set earlier {}
            set prompt "% "
            set first [qx::prompt::readline::entries]
            continue
        }
        set command $earlier$line
        if {[info complete $command\n]} {
            if {$earlier ne {}} { qx::prompt::readline::remember $first $command }
            # A blank before a command keeps it out of the file.
            if {![string match {[ \t]*} $command]} { qx::prompt::history::add $command }
            return $command
        }
        set earlier $command\n
        set prompt "> "
    }
}

# The script in tcl_prompt1: reads a command and puts it into stdin for Tcl's own loop, which runs
# it like one typed without editing. A line that cannot be read is discarded; if that happens
# repeatedly, the terminal is gone.
proc qx::prompt::editing::prompt {} {
    foreach name {errorInfo errorCode} {
        if {[info exists ::$name]} { set before($name) [set ::$name] }
    }
    set failures 0
    set bytes {}
    while {[catch { set bytes [for_stdin [read_command]] } reason]} {
        if {[lrange $::errorCode 0 1] eq {QXSH INTERRUPTED}} continue
        puts stderr $reason
        if {[lindex $::errorCode 0] eq "QX"} continue
        if {[incr failures] >= 3} {
            puts stderr "line editing ends here"
            unset ::tcl_prompt1
            break
        }
    }
    # These belong to the last command.
    foreach name [array names before] { set ::$name $before($name) }
    if {$bytes ne {}} { qx::prompt::readline::give $bytes }
}

# The bytes from which stdin makes a command and the end of its last line.
proc qx::prompt::editing::for_stdin {command} {
    set encoding [fconfigure stdin -encoding]
    set ends [dict create auto \n lf \n cr \r crlf \r\n]
    set end [dict get $ends [lindex [fconfigure stdin -translation] 0]]
    set text [string map [list \n $end] $command\n]
    if {$encoding eq "binary"} { set encoding iso8859-1 }
    set bytes [encoding convertto $encoding $text]
    if {[encoding convertfrom $encoding $bytes] ne $text} {
        return -code error -errorcode {QX ENCODING} "stdin's encoding $encoding lacks a letter"
    }
    return $bytes
}
