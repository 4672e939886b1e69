# Helpers of the script tests: run the shell under test as a child process, read the tables of expected values.
# Relies on the environment that tests/CMakeLists.txt sets: QXSH_SHELL, QXSH_BUILD, QXSH_LAUNCHER, QXSH_SANITIZED.
# Every run is written to a transcript, addresses replaced, so that builds can be compared byte for byte.

package require Tcl 8.5
package require tcltest 2.3
namespace import -force ::tcltest::*

testConstraint sanitized   [expr {$env(QXSH_SANITIZED) eq "ON"}]
testConstraint unsanitized [expr {$env(QXSH_SANITIZED) ne "ON"}]

# A folder of this run's own, removed at its end.
namespace eval harness {
    variable folder [file join $env(QXSH_BUILD) script-tests [pid]]
    variable transcript {}
    variable runs 0
    file mkdir $folder
    rename ::exit ::harness::real_exit
    proc ::exit {{status 0}} {
        file delete -force $::harness::folder
        ::harness::real_exit $status
    }
}

proc project {} { file dirname [file dirname [file dirname $::harness::here]] }
set harness::here [file normalize [info script]]

# The rows of a table in tests/expected, comments left out.
proc expected {name} {
    set channel [open [file join [project] tests expected $name]]
    fconfigure $channel -encoding utf-8
    set rows {}
    foreach line [split [string trimright [read $channel] \n] \n] {
        if {![string match #* $line]} { lappend rows [split $line \t] }
    }
    close $channel
    return $rows
}

# The words that start the shell, with NAME=VALUE words for its environment.
proc shell_command {{environment {}}} {
    set clean [list HOME=$::harness::folder]
    return [concat $::env(QXSH_LAUNCHER) $clean $environment [list $::env(QXSH_SHELL)]]
}

# Runs a script file's text in the shell; -> dict: out (stdout and stderr as they came), status.
proc shell {script args} { shell_with {} $script {*}$args }

proc shell_with {environment script args} {
    set file [file join $::harness::folder script.tcl]
    set channel [open $file w]
    fconfigure $channel -encoding utf-8 -translation lf
    puts -nonewline $channel $script
    close $channel
    return [run_command [concat [shell_command $environment] script.tcl $args]]
}

# Runs any command in the run's folder; a status is an exit code or a signal's name.
proc run_command {command} {
    set before [pwd]
    cd $::harness::folder
    set channel [open |[concat $command [list < /dev/null 2>@1]] r]
    cd $before
    fconfigure $channel -translation binary
    set out [read $channel]
    set status 0
    if {[catch {close $channel} message options]} {
        set code [dict get $options -errorcode]
        set status [expr {[lindex $code 0] eq "NONE" ? $message : [lindex $code 2]}]
    }
    write_transcript $out $status
    return [dict create out $out status $status]
}

# What the shell prints, for tests that expect success.
proc output_of {script args} {
    set run [shell $script {*}$args]
    if {[dict get $run status] ne "0"} {
        return -code error "status [dict get $run status]: [dict get $run out]"
    }
    return [dict get $run out]
}

proc begin_transcript {name} {
    set folder [file join $::env(QXSH_BUILD) transcripts]
    file mkdir $folder
    set ::harness::transcript [file join $folder $name.txt]
    close [open $::harness::transcript w]
}

# Addresses differ from build to build and from run to run; nothing else may.
proc write_transcript {out status} {
    if {$::harness::transcript eq {}} return
    set channel [open $::harness::transcript a]
    fconfigure $channel -translation binary
    regsub -all {_[0-9a-f]{8}_p_} $out {_########_p_} out
    puts $channel "---- run [incr ::harness::runs], status $status"
    puts -nonewline $channel $out
    close $channel
}
