# What the tests of the player share: recordings made of the simulator's call log, and runs on them.
# Relies on tests/script/shell.tcl.

# Runs leave messages with paths of the build.
without_transcript

# A script with one or more calls of each function, each with success and with failures.
set every_call {}
foreach name {both_ways every_call} {
    append every_call [list source [file join [project] tests qx $name.tcl]] \n
}
append every_call by_data\nevery_call

# The first line of a recording; NAME VALUE pairs replace members, a value being JSON.
proc header {args} {
    set members {recording 1 library {"/lib/libqx-sdk.so"} size 1 build_id {""}
        date {"2026-11-22T13:48:36Z"} processor {"armv7l"} keys {"clear"} salt {""}}
    set words {}
    foreach {name value} [dict merge $members $args] { lappend words "\"$name\": $value" }
    return "{[join $words {, }]}"
}

# The lines of the calls that a script makes, with keys, and what it printed.
proc calls_of {script} {
    set log [scratch calls.log]
    file delete $log
    set ::printed [output_with [list QX_SIM_LOG=$log QX_SIM_KEYS=on] "package require qx\n$script"]
    return [split [string trimright [file_text $log] \n] \n]
}

# A file with these lines, behind a header.
proc recording {lines} { write_file [scratch calls.rec] "[header]\n[join $lines \n]\n" }

# A run on a file.
proc replay {file script {environment {}}} {
    shell_with [concat [list QX_REPLAY=$file \
        LD_LIBRARY_PATH=[file join $::env(QXSH_BUILD) lib replay]] $environment] \
        "package require qx\n$script"
}

# Its status and what it printed.
proc replayed {file script args} {
    set run [replay $file $script {*}$args]
    return [list [dict get $run status] [dict get $run out]]
}
