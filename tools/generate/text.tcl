# What generators share: the command line, files, literals, declarators, line breaking. Relies on
# catalogue.tcl.

namespace eval generate {
    variable folder . ;# where files go
}

# Writes a file, unless its content would not change.
proc generate::write {name text} {
    variable folder
    set file [file join $folder $name]
    file mkdir [file dirname $file]
    if {[file exists $file]} {
        set channel [open $file]
        set old [read $channel]
        close $channel
        if {$old eq $text} return
    }
    set channel [open $file w]
    fconfigure $channel -encoding utf-8 -translation lf
    puts -nonewline $channel $text
    close $channel
}

# A C string literal of plain text.
proc generate::quoted {text} { return "\"[string map {\\ \\\\ \" \\\"} $text]\"" }

# "type name" in C, with the star next to the name.
proc generate::declarator {type name} {
    set native [catalogue::native $type]
    if {[string match {*[*]} $native]} { return "$native$name" }
    return "$native $name"
}

# Joins pieces with ", ", breaking lines before column 100; later lines are indented.
proc generate::wrapped {start pieces end {indent 4}} {
    set line $start
    set text {}
    set last [expr {[llength $pieces] - 1}]
    set number 0
    foreach piece $pieces {
        append piece [expr {$number == $last ? $end : ","}]
        if {$number > 0 && [string length $line] + 1 + [string length $piece] > 100} {
            append text $line\n
            set line [string repeat { } $indent]$piece
        } else {
            append line [expr {$number > 0 ? " " : ""}]$piece
        }
        incr number
    }
    if {$pieces eq {}} { append line $end }
    return $text$line
}

# If the script was run by itself, calls `main` with its arguments, which have these names.
proc generate::from_command_line {script names main} {
    global argv argv0
    if {![info exists argv0] || [file normalize $argv0] ne [file normalize $script]} return
    if {[llength $argv] != [llength $names]} {
        puts stderr "usage: tclsh [file tail $script] <[join $names {> <}]>"
        exit 2
    }
    if {[catch { $main {*}$argv } message]} {
        puts stderr [expr {$::errorCode eq "CATALOGUE" ? $message : $::errorInfo}]
        exit 1
    }
}
