# Package qx, the place of an error: the file and the line of the command that failed, from Tcl's
# trace, where lines count from the start of each body. Costs nothing until an error happens. Loaded
# by qx-run.

namespace eval qx::place {
    variable texts {} ;# file -> its lines
}

# Tells the lines of what is not a file, or may not be read twice.
proc qx::place::known {name lines} {
    variable texts
    dict set texts $name $lines
}

# The places of an error, the innermost first and then its procedures' callers, each FILE:LINE.
# `source` is what was run, `line` the line of its command if the trace does not tell. Where the
# text of a body is not found, its place is that of the command around it.
proc qx::place::of_error {trace source line} {
    set at [list $source $line]
    set callers {}
    foreach frame [lreverse [frames $trace]] {
        lassign $frame kind number command
        set found {}
        if {[regexp {^file "(.*)"$} $kind -> file]} {
            lines_of $file ;# for procedures
            set found [list $file $number]
        } elseif {[regexp {^procedure "(.*)"$} $kind -> name]} {
            set found [in_procedure $name $number $command]
            if {$found ne {} && [lindex $at 1] ne {}} { set callers [linsert $callers 0 $at] }
        } elseif {[lindex $at 1] ne {}} {
            set found [in_body $at $number $command]
        }
        if {$found ne {}} { set at $found }
    }
    set result {}
    foreach place [linsert $callers 0 $at] {
        lassign $place file line
        lappend result [expr {$line eq {} ? $file : "$file:$line"}]
    }
    return $result
}

# The bodies in a trace, the innermost first: what each is, the line in it, and the first line of
# the command that ran there.
proc qx::place::frames {trace} {
    set result {}
    set command {}
    set quoted 0
    foreach line [split $trace \n] {
        if {$quoted} {
            regsub {^"} $line {} command
            regsub {(?:\.\.\.)?"$} $command {} command
            set quoted 0
        } elseif {$line in {{    while executing} {    invoked from within}}} {
            set quoted 1
        } elseif {[regexp {^    \((.*) line (\d+)\)$} $line -> kind number]} {
            lappend result [list $kind $number [string trim $command]]
            set command {}
        }
    }
    return $result
}

# The line of a command in a procedure that one of the files defines.
proc qx::place::in_procedure {name number command} {
    variable texts
    if {[string match qx::* [string trimleft $name :]]} return
    set tail [namespace tail $name]
    set pattern "^\\s*proc\\s+(?:\[\\w:\]*::)?[escaped $tail]\\s"
    foreach file [dict keys $texts] {
        set line 0
        foreach text [dict get $texts $file] {
            incr line
            if {![regexp -- $pattern $text]} continue
            set found [in_body [list $file $line] $number $command 20]
            if {$found ne {}} { return $found }
        }
    }
    return
}

proc qx::place::escaped {text} { regsub -all {\W} $text {\\&} text; return $text }

# The line of a command in a body that begins at a place or not far behind it.
proc qx::place::in_body {at number command {reach 1000}} {
    lassign $at file first
    set lines [lines_of $file]
    set end [expr {min([llength $lines], $first + $reach)}]
    for {set start $first} {$start <= $end} {incr start} {
        set opening [lindex $lines [expr {$start - 1}]]
        if {$start > $first && ![regexp {\x7b|"} $opening]} continue
        set line [line_in $lines $start $number]
        if {[string first $command [whole_line $lines $line]] >= 0} {
            return [list $file $line]
        }
    }
    return
}

# Whether a line goes on in the next one. Tcl joins them when it takes the body out of its braces,
# so that they are one line of it.
proc qx::place::goes_on {text} { regexp {(?:^|[^\\])(?:\\\\)*\\$} $text }

# The file's line of the nth line of a body that begins on a line.
proc qx::place::line_in {lines start number} {
    set line $start
    while {[incr number -1] > 0} {
        while {[goes_on [lindex $lines [expr {$line - 1}]]]} { incr line }
        incr line
    }
    return $line
}

# A line with those it goes on in, as Tcl joins them.
proc qx::place::whole_line {lines number} {
    set text [lindex $lines [expr {$number - 1}]]
    while {[goes_on $text]} {
        set text "[string range $text 0 end-1] [string trimleft [lindex $lines $number]]"
        incr number
    }
    return $text
}

proc qx::place::lines_of {file} {
    variable texts
    if {![dict exists $texts $file]} {
        set lines {}
        if {![catch { open [file join [pwd] $file] } channel]} {
            set lines [split [read $channel] \n]
            close $channel
        }
        dict set texts $file $lines
    }
    return [dict get $texts $file]
}
