# What the tests of the recorder share. Relies on tests/script/shell.tcl and on the environment that
# CMakeLists.txt sets beside.

set here [file dirname [file normalize [info script]]]
source [file join $here .. .. script shell.tcl]

# Paths, times and what an emulator says.
without_transcript

# The words of an environment with the recorder: FILE, and further NAME=VALUE words.
proc recorder {file args} {
    return [concat [preloading $::env(QXSH_RECORDER)] [list QX_RECORD=$file] $args]
}
# The same for a program that is not of this build: it has no sanitizer, whose library comes first.
proc recorder_elsewhere {file args} {
    set first [regsub {^LD_PRELOAD=(.+)} $::env(QXSH_TCLSH_PRELOAD) {\1:}]
    return [concat [list LD_PRELOAD=$first$::env(QXSH_RECORDER) QX_RECORD=$file] $args]
}

# A name for a recording that is not there.
proc fresh {{name r.json}} {
    file delete -force [scratch $name]
    return [scratch $name]
}

# The lines of a file in the run's folder; {} if there is none.
proc lines_of {file} {
    if {![file exists $file]} { return {} }
    return [split [string trimright [file_text $file] \n] \n]
}

# Of a recording: the header as a dict, and each call as one.
proc header_of {file} { json_value [lindex [lines_of $file] 0] }
proc calls_of {file} {
    set calls {}
    foreach line [lrange [lines_of $file] 1 end] { lappend calls [json_value $line] }
    return $calls
}

# The calls, each as function and its plain arguments and what `paths` ask of it.
proc told {file args} {
    set list {}
    foreach call [calls_of $file] {
        set words [dict get $call function]
        foreach path $args { lappend words [dict get $call {*}$path] }
        lappend list $words
    }
    return $list
}

# Runs a command with stderr apart -> list: status, stdout, stderr without what an emulator says.
proc run_apart {command} {
    set run [run_sh {exec "$@" > out.txt 2> err.txt} {*}$command]
    regsub -all {qemu: [^\n]*\n} [file_text [scratch err.txt]] {} err
    return [list [dict get $run status] [file_text [scratch out.txt]] $err]
}

proc lines {args} { return [join $args \n]\n }
