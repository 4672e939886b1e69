# qx-run: runs commands and files for CI, each SDK call judged as in a block of qx::check, and stops
# at the first error. The exit status is 0, 1 after an error, 2 for bad usage or an unreadable file.
# Runs in the shell; the script packaging/qx-run.in starts it. Relies on the package qx beside it
# and on error_place.tcl.

apply {{dir} {
    source [file join $dir pkgIndex.tcl]
    uplevel #0 { package require qx }
    uplevel #0 [list source [file join $dir error_place.tcl]]
}} [file dirname [file normalize [info script]]]

namespace eval qx::run {
    variable echo 0      ;# -e
    variable source {}   ;# what is being run: a file's name, -c or -
    variable paths {}    ;# file -> its absolute name, as it was at the start
}

proc qx::run::refuse {message} {
    puts stderr "qx-run: $message"
    exit 2
}

# What the command line asks for: a list of kinds (commands, file, stdin) and their texts or names.
proc qx::run::jobs {words} {
    variable echo
    set jobs {}
    while {[llength $words]} {
        set words [lassign $words word]
        switch -- $word {
            -e { set echo 1 }
            -c {
                if {![llength $words]} { refuse "-c needs commands" }
                set words [lassign $words commands]
                lappend jobs commands $commands
            }
            -- break
            default {
                if {[string match -?* $word]} {
                    refuse "there is no option $word; see qx-run --help"
                }
                set words [linsert $words 0 $word]
                break
            }
        }
    }
    foreach word $words {
        # To Tcl a tilde in front would be somebody's home.
        if {[string match ~* $word]} { set word ./$word }
        lappend jobs [expr {$word eq "-" ? "stdin" : "file"}] $word
    }
    if {![llength $jobs]} { refuse "name a file, or give commands behind -c; see qx-run --help" }
    return $jobs
}

# Before anything runs, so that a wrong name does not end a task half-way.
proc qx::run::need_readable {file} {
    if {[file isdirectory $file]} { refuse "cannot read $file: it is a folder" }
    # As an absolute name, lest it be a command for a pipe.
    variable paths
    dict set paths $file [file join [pwd] $file]
    if {[catch { close [open [dict get $paths $file]] } message options]} {
        refuse "cannot read $file: [lindex [dict get $options -errorcode] end]"
    }
}

# The file's name as given, unless an earlier script has changed the folder.
proc qx::run::name_here {file} {
    variable paths
    set path [dict get $paths $file]
    return [expr {[file join [pwd] $file] eq $path ? $file : $path}]
}

# ------------------------------------------------------------------------------------ running

proc qx::run::job {kind what} {
    variable echo
    variable source
    if {$kind eq "file"} { set what [name_here $what] }
    switch -- $kind {
        commands {
            set source -c
            text $what
        }
        stdin {
            set source -
            text [read stdin]
        }
        file {
            set source $what
            set ::argv0 $what
            if {$echo} {
                set channel [open [file join [pwd] $what]]
                set script [read $channel]
                close $channel
                info script $what
                text $script
            } else {
                # With `source` Tcl knows the file and the line of each command.
                judged [list ::source $what] {}
            }
        }
    }
}

# Runs a text command by command, as a prompt does.
proc qx::run::text {script} {
    variable echo
    variable source
    set lines [split $script \n]
    qx::place::known $source $lines
    set number 0
    set command {}
    foreach line $lines {
        incr number
        if {$command eq {}} {
            if {[string trim $line] eq {}} continue
            set first $number
        }
        append command $line
        if {![info complete $command\n]} {
            append command \n
            continue
        }
        if {$echo} { show "% $command" }
        if {[judged $command $first]} return
        set command {}
    }
    # Tcl says what is missing.
    if {$command ne {}} { judged $command $first }
}

# Runs a script at global level; -> whether it returned and ends its file. `line` is that of its
# first command, if the script is part of a text. An error ends the process.
proc qx::run::judged {script line} {
    variable echo
    set code [catch { uplevel #0 [list ::qx::check $script] } result options]
    set returned [expr {$code == 2}]
    # As `source` does: `return -code error` is an error.
    if {$returned} { set code [dict get $options -code] }
    switch -- $code {
        0 { if {$echo && !$returned && $result ne {}} { show $result } }
        1 {
            set trace {}
            if {[dict exists $options -errorinfo]} { set trace [dict get $options -errorinfo] }
            fail $result $trace $line
        }
        2 { return 1 }
        3 { fail "invoked \"break\" outside of a loop" {} $line }
        4 { fail "invoked \"continue\" outside of a loop" {} $line }
        default { fail "command returned the bad code $code" {} $line }
    }
    return $returned
}

# Prints a line of the transcript.
proc qx::run::show {line} { written [list puts $line] }

# Runs a command that writes to stdout; ends the process where that fails.
proc qx::run::written {command} {
    if {[catch $command message]} {
        puts stderr "qx-run: $message"
        exit 1
    }
}

# Says where and what, in the form of a compiler's message, and ends the process.
proc qx::run::fail {message trace line} {
    variable source
    set places [qx::place::of_error $trace $source $line]
    catch { flush stdout }
    puts stderr "[lindex $places 0]: $message"
    foreach place [lrange $places 1 end] { puts stderr "  called at $place" }
    exit 1
}

# An error in an event is an error of the script that waits for it.
proc qx::run::background {message options} {
    fail $message [dict get $options -errorinfo] {}
}

interp bgerror {} ::qx::run::background
foreach {qx::run::kind qx::run::what} [set qx::run::jobs [qx::run::jobs $argv]] {
    if {$qx::run::kind eq "file"} { qx::run::need_readable $qx::run::what }
}
set argv {}
set argc 0
foreach {qx::run::kind qx::run::what} $qx::run::jobs {
    qx::run::job $qx::run::kind $qx::run::what
    qx::status::report_events
}
# A script may have closed it.
if {"stdout" in [chan names]} { qx::run::written {flush stdout} }
exit 0
