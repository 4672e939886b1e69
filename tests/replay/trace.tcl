# What the tests of qx-trace share: recordings made on the simulator, and the tool's runs. Relies on
# tests/script/shell.tcl.

# Paths and times.
without_transcript

# Words NAME=VALUE that put the recorder in front of the simulator.
proc recording_to {file args} {
    file delete $file
    return [concat [preloading [file join $::env(QXSH_BUILD) lib libqx-record.so]] \
        [list QX_RECORD=$file] $args]
}

# The name of a recording of what a script does that has package qx.
proc recorded {name script args} {
    set file [scratch $name]
    set run [shell_with [recording_to $file {*}$args] "package require qx\n$script"]
    if {[dict get $run status] ne "0"} { error "the script failed: $run" }
    return $file
}

# Runs qx-trace -> list: status, stdout and stderr, with the folder of the run as FOLDER.
proc tool {args} { tool_with {} {*}$args }
proc tool_with {environment args} {
    # Under a sanitizer the tool's own place for libraries is not looked at.
    if {[testConstraint sanitized]} {
        set environment [concat LD_LIBRARY_PATH=[file join $::env(QXSH_BUILD) lib] $environment]
    }
    set tool [file join [file dirname $::env(QXSH_SHELL)] qx-trace]
    set run [run_sh {exec "$@" > out.txt 2> err.txt < /dev/null} {*}[launcher $environment] $tool \
        {*}$args]
    set result [list [dict get $run status]]
    foreach name {out.txt err.txt} {
        regsub -all {qemu: [^\n]*\n} [file_text [scratch $name]] {} text
        lappend result [string map [list $::harness::folder FOLDER] $text]
    }
    return $result
}
# Its output, of a run that ends with this status and says nothing on stderr.
proc tool_prints {status args} {
    lassign [tool {*}$args] got out err
    if {$got ne $status || $err ne {}} { error "status $got, $err$out" }
    return $out
}
# The line in which it refuses to go on.
proc tool_refuses {args} {
    lassign [tool {*}$args] status out err
    if {$status ne "2" || $out ne {}} { error "status $status, $err$out" }
    return $err
}
proc lines {args} { return "[join $args \n]\n" }
