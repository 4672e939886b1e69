# Helpers of the script tests: run the shell under test as a child process, read the tables of
# expected values. Relies on the environment that tests/CMakeLists.txt sets: QXSH_SHELL, QXSH_BUILD,
# QXSH_LAUNCHER, QXSH_SANITIZED. Every run is written to a transcript, addresses replaced, so that
# builds can be compared byte for byte.

package require Tcl 8.5
package require tcltest 2.3
namespace import -force ::tcltest::*

# run.tcl has sourced this file already; a test file that does so again gets what is there.
if {[info exists ::harness::folder]} return

# A folder of this run's own, removed at its end.
namespace eval harness {
    variable folder [file join $env(QXSH_BUILD) script-tests [pid]]
    variable here [file normalize [info script]]
    variable transcript {}
    variable runs 0
    variable environment {} ;# NAME=VALUE words for every run
    # Strict memory is on for the whole suite: the leg `strict` sets this for the tests too.
    variable strict [expr {[info exists env(QXSH_STRICT_MEMORY)] && $env(QXSH_STRICT_MEMORY) eq "1"}]
    file mkdir $folder
    rename ::exit ::harness::real_exit
    proc ::exit {{status 0}} {
        file delete -force $::harness::folder
        ::harness::real_exit $status
    }
}

proc project {} { file dirname [file dirname [file dirname $::harness::here]] }
# The version in CMakeLists.txt; that of the script packages is its first two numbers.
proc project_version {} {
    regexp -line {^project\(qxsh VERSION ([0-9.]+)} \
        [file_text [file join [project] CMakeLists.txt]] -> version
    return $version
}
proc script_version {} { join [lrange [split [project_version] .] 0 1] . }
proc scratch {name} { file join $::harness::folder $name }

# ------------------------------------------------------------------------------ constraints

# constraint NAME CONDITION REASON: like testConstraint, and says why tests are left out.
proc constraint {name condition reason} {
    set holds [uplevel 1 [list expr $condition]]
    testConstraint $name $holds
    if {!$holds} { puts "constraint $name is off: $reason" }
}
proc have_program {name} { expr {[auto_execok $name] ne {}} }

# tools/on_board runs the shell on a machine that ssh reaches. Tests that need more of it than files
# and outputs keep those runs out of the transcript.
constraint same_machine {![info exists env(QXSH_ON_BOARD)]} \
    "the shell runs on another machine, behind ssh, with devices of its own"

testConstraint sanitized   [expr {$env(QXSH_SANITIZED) eq "ON"}]
testConstraint unsanitized [expr {$env(QXSH_SANITIZED) ne "ON"}]
# What runs under an emulator of another processor.
testConstraint emulated [regexp {\m(?:armhf|board)\M} $env(QXSH_LAUNCHER)]

testConstraint fast [expr {[testConstraint unsanitized] && ![testConstraint emulated]}]
testConstraint long [expr {[info exists env(QXSH_TEST_LONG)] && $env(QXSH_TEST_LONG) eq "1"}]

# How much a test tries: fewer rounds of the same where a build is slow.
proc rounds {all few} {
    return [expr {[testConstraint fast] || [testConstraint long] ? $all : $few}]
}

# Makes the constraint checked_free, for tests that release a block twice, or something else.
proc need_checked_free {} {
    constraint checked_free {!$::env(QXSH_UCLIBC)} "uClibc does not notice a wrong release"
}

# What a test expects with uClibc, and with another C library.
proc with_uclibc {uclibc otherwise} { expr {$::env(QXSH_UCLIBC) ? $uclibc : $otherwise} }

# ------------------------------------------------------------------------------------ files

# The rows of a table in tests/expected, comments left out.
proc expected {name} {
    set rows {}
    set text [file_text [file join [project] tests expected $name]]
    foreach line [split [string trimright $text \n] \n] {
        if {![string match #* $line]} { lappend rows [split $line \t] }
    }
    return $rows
}

# The one JSON value that a text is: objects as dicts, arrays as lists. By itself tcllib passes over
# what is not a token and over what follows the value.
proc json_value {text} {
    package require json
    if {![json::validate $text]} { error "not JSON: $text" }
    set values [json::many-json2dict $text]
    if {[llength $values] != 1} { error "not one value: $text" }
    return [lindex $values 0]
}

proc file_text {name} {
    set channel [open $name]
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    return $text
}

proc write_file {name text} {
    set channel [open $name w]
    fconfigure $channel -encoding utf-8 -translation lf
    puts -nonewline $channel $text
    close $channel
    return $name
}

# ----------------------------------------------------------------------------- running things

# The words that start the shell, with NAME=VALUE words for its environment.
proc shell_command {{environment {}}} {
    return [concat [launcher $environment] [list $::env(QXSH_SHELL)]]
}

# The words before any program of the build.
proc launcher {{environment {}}} {
    return [concat $::env(QXSH_LAUNCHER) [list HOME=$::harness::folder] \
        $::harness::environment $environment]
}

# The words NAME=VALUE that load a library of the build before all others. A sanitizer's own library
# is to be the first one, unless told otherwise; it is linked into the programs of some builds.
proc preloading {library} {
    set words [list LD_PRELOAD=$library]
    if {[testConstraint sanitized]} {
        set given [expr {[info exists ::env(ASAN_OPTIONS)] ? ":$::env(ASAN_OPTIONS)" : {}}]
        lappend words ASAN_OPTIONS=verify_asan_link_order=0$given
    }
    return $words
}

# Runs a script file's text in the shell; -> dict: out (stdout and stderr as they came), status.
proc shell {script args} { shell_with {} $script {*}$args }

proc shell_with {environment script args} {
    write_file [scratch script.tcl] $script
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
    if {$::harness::strict} { set out [without_leak_report $out] }
    write_transcript $out $status
    return [dict create out $out status $status]
}

# Most scripts of the tests end with blocks that they do not free; what they print is compared
# without what strict memory says about that.
proc without_leak_report {text} {
    regsub -all {strict memory: never freed: [^\n]*\n(?:  \d+ bytes? in [^\n]*\n)*} $text {} text
    return $text
}

# What a test expects in this run of the suite.
proc under_strict_memory {strict otherwise} {
    return [expr {$::harness::strict ? $strict : $otherwise}]
}

# Runs a script of sh in the run's folder, `$1` and so on being the words: pipes and files of its
# own.
proc run_sh {script args} { run_command [concat [list sh -c $script sh] $args] }

# What the shell prints, for tests that expect success.
proc output_of {script args} { output_with {} $script {*}$args }

proc output_with {environment script args} {
    set run [shell_with $environment $script {*}$args]
    if {[dict get $run status] ne "0"} {
        return -code error "status [dict get $run status]: [dict get $run out]"
    }
    return [dict get $run out]
}

# ------------------------------------------------------------------------------- transcripts

proc begin_transcript {name} {
    set folder [file join $::env(QXSH_BUILD) transcripts]
    # These are compared with those of other builds, which have no such runs.
    if {$::harness::strict} { append folder -strict }
    file mkdir $folder
    set ::harness::transcript [file join $folder $name.txt]
    close [open $::harness::transcript w]
}

# For files whose runs differ between builds with good reason: no transcript is kept.
proc without_transcript {} {
    if {$::harness::transcript ne {}} { file delete $::harness::transcript }
    set ::harness::transcript {}
}

# The same for the runs of one script.
proc without_recording {script} {
    set saved $::harness::transcript
    set ::harness::transcript {}
    set code [catch { uplevel 1 $script } result]
    set ::harness::transcript $saved
    return -code $code $result
}

# Addresses differ from build to build and from run to run; nothing else may.
proc write_transcript {out status} {
    if {$::harness::transcript eq {}} return
    set channel [open $::harness::transcript a]
    fconfigure $channel -translation binary
    regsub -all {_[0-9a-f]{8}_p_} $out {_########_p_} out
    # Tcl 8.5 has no error code for an unknown command.
    regsub -all {TCL LOOKUP COMMAND \S+} $out NONE out
    puts $channel "---- run [incr ::harness::runs], status $status"
    puts -nonewline $channel $out
    close $channel
}
