# What generators share: the command line, files, literals, declarators, broken lines. Relies on
# catalogue.tcl.

namespace eval generate {
    variable folder . ;# where files go
}

# Writes a file; one whose content would stay the same is not touched.
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

# "type name" in C, with the star at the name.
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

# Runs `main` with the words of the command line, which have these names, if that called the script.
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
