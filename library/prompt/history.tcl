# Package qx::prompt, the history file: every command is written before it is run, so that it
# survives the shell. Several shells share the file, which keeps the last lines. Relies on nothing.

namespace eval qx::prompt::history {
    variable most 1000   ;# lines that are kept; the file is cut when it has a quarter more
    variable last {}     ;# the command written last
    variable longest 200 ;# lines of a command that is read back as one
    variable tries 20    ;# so many lines may begin a command that does not end within these
}

# The file's path, in the home folder; empty without a home folder.
proc qx::prompt::history::file_name {} {
    if {![info exists ::env(HOME)] || $::env(HOME) eq {}} return
    return [file join $::env(HOME) .qxsh_history]
}

# Adds a command of one or more lines, unless it is empty or repeats the last one. If the file
# cannot be written, it is dropped, as it is where there is no home folder.
proc qx::prompt::history::add {line} {
    variable last
    if {$line eq $last || [string trim $line] eq {} || [file_name] eq {}} return
    set last $line
    catch { locked { append_line $line } }
}

# Lines may hold keys. A file that others can read is tightened or, where that fails, not written,
# which is told once. Devices are nobody's history. -> whether lines may be written.
proc qx::prompt::history::ours_alone {} {
    variable told
    set name [file_name]
    if {![file exists $name]} { return 1 }
    if {![file isfile $name]} { return 0 }
    set why "its permissions cannot be changed"
    if {[open_to_others $name] &&
        [catch { file attributes $name -permissions 0600 } reason]} { set why $reason }
    if {![open_to_others $name]} { return 1 }
    if {![info exists told]} { puts stderr "no history is kept, others can read $name: $why" }
    set told 1
    return 0
}

proc qx::prompt::history::open_to_others {name} {
    return [expr {[file attributes $name -permissions] & 0o77}]
}

# The commands in the file, each of one or more lines. A line that begins one without an end, as
# when the file has been cut, is a command of its own.
proc qx::prompt::history::commands {} {
    variable longest
    variable tries
    set commands {}
    if {[catch { read_lines } lines]} return
    set left $tries
    for {set at 0} {$at < [llength $lines]} {incr at} {
        set command [lindex $lines $at]
        set end $at
        while {$left && ![info complete $command\n]} {
            if {[incr end] == [llength $lines] || $end - $at == $longest} {
                set command [lindex $lines $at]
                set end $at
                incr left -1
                break
            }
            append command \n [lindex $lines $end]
        }
        if {[string trim $command] ne {}} { lappend commands $command }
        set at $end
    }
    return $commands
}

proc qx::prompt::history::read_lines {} {
    set channel [open [file_name]]
    fconfigure $channel -encoding utf-8 -translation lf
    set text [read $channel]
    close $channel
    return [split [string trimright $text \n] \n]
}

# The command is written in one piece.
proc qx::prompt::history::append_line {line} {
    if {![ours_alone]} return
    set channel [open [file_name] {WRONLY APPEND CREAT} 0600]
    fconfigure $channel -encoding utf-8 -translation lf -buffersize 100000
    puts $channel $line
    close $channel
}

# Truncates the file to the last lines. It is replaced in one piece, too.
proc qx::prompt::history::trim {} {
    if {[file_name] eq {}} return
    catch { locked { cut } }
}

proc qx::prompt::history::cut {} {
    variable most
    # Follow links, so that a link stays a link.
    set name [file dirname [file normalize [file join [file_name] x]]]
    if {[file_name] eq {} || ![file isfile $name]} return
    set lines [read_lines]
    if {[llength $lines] <= $most + $most / 4} return
    set new $name.[pid]
    set channel [open $new {WRONLY CREAT EXCL} 0600]
    fconfigure $channel -encoding utf-8 -translation lf
    puts $channel [join [lrange $lines end-[expr {$most - 1}] end] \n]
    close $channel
    file rename -force $new $name
}

# Runs a script while no other shell writes. A lock held for long belongs to a dead shell; rather
# than wait for it, the script runs without the lock.
proc qx::prompt::history::locked {script} {
    set lock [file_name].lock
    for {set tries 0} {$tries < 20} {incr tries} {
        if {![catch { close [open $lock {WRONLY CREAT EXCL} 0600] } why]} {
            set code [catch { uplevel 1 $script } result]
            file delete $lock
            return -code $code $result
        }
        if {![file exists $lock]} break
        if {![catch { file mtime $lock } time] && [clock seconds] - $time > 5} {
            file delete $lock
        }
        after 10
    }
    uplevel 1 $script
}
