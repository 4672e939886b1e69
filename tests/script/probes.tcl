# Probes: many commands that one run of the shell carries out, each with the answer expected of it.
# Relies on shell.tcl and misuses.tcl. A probe belongs to a topic; a test asks for the differences of its topic.
# What a command prints, its result or error message and its error code are all compared.

source [file join [file dirname [info script]] misuses.tcl]

namespace eval probes {
    variable script {}                      ;# what the shell runs
    variable count 0
    # number -> topic command printed code error match result
    variable wanted; array set wanted {}
    variable answers; array set answers {}  ;# number -> printed code error result
    variable topics; array set topics {}    ;# topic -> numbers
    variable status {not run}
    variable rest {}                        ;# what was printed after the last probe
    namespace export setup returns returns_like creates fails prints run_probes differences ending
}

# In the shell: runs a command at the global level and says what came of it.
set probes::prelude {
    proc probe {number command} {
        set code [catch {uplevel #0 $command} result options]
        set error {}
        if {$code} { set error [dict get $options -errorcode] }
        puts "= $number [list $code $error $result]"
        return $result
    }
    proc probe_new {number command} { catch { qx_data_free [probe $number $command] } }
}

# Adds script text that only prepares; it must neither fail nor print.
proc probes::setup {text} { append probes::script $text \n }

proc probes::add {topic command printed code error match result {runner probe}} {
    variable count
    incr count
    set refused [misuses::of $topic $command]
    if {$refused ne {}} {
        lassign $refused category result
        set printed {}
        set code 1
        set error [list SWIG $category]
        set match like
    }
    append probes::script [list $runner $count $command] \n
    set probes::wanted($count) [list $topic $command $printed $code $error $match $result]
    lappend probes::topics($topic) $count
}

# The command succeeds with this very result, having printed this text (* for any).
proc probes::returns {topic command result {printed {}}} {
    add $topic $command $printed 0 {} exact $result
}

# The command succeeds with a result that matches a regular expression from end to end.
proc probes::returns_like {topic command pattern {printed {}}} {
    add $topic $command $printed 0 {} regexp ^(?:$pattern)\$
}

# The same for a new block, which is released.
proc probes::creates {topic command pattern} {
    add $topic $command {} 0 {} regexp ^(?:$pattern)\$ probe_new
}

# The command fails with this very message and error code, having printed nothing.
proc probes::fails {topic command error message} {
    add $topic $command {} 1 $error exact $message
}

# The command prints this text and has no result.
proc probes::prints {topic command text} { returns $topic $command {} $text }

# Runs all probes in one shell.
proc probes::run_probes {} {
    variable answers
    variable prelude
    variable script
    variable status
    set run [shell $prelude$script]
    set status [dict get $run status]
    set printed {}
    foreach line [split [dict get $run out] \n] {
        if {[regexp {^= (\d+) (.*)$} $line whole number answer]} {
            set answers($number) [linsert $answer 0 $printed]
            set printed {}
        } else {
            append printed $line \n
        }
    }
    set probes::rest [string trimright $printed \n]
}

# How the shell ended: its status, and what it printed after the last probe. Should be "0 {}".
proc probes::ending {} { list $probes::status $probes::rest }

# The answers of a topic that differ from the expected ones, at most five, one text line each.
proc probes::differences {topic} {
    variable wanted
    variable answers
    variable topics
    set found {}
    foreach number $topics($topic) {
        lassign $wanted($number) topic command printed code error match result
        if {![info exists answers($number)]} {
            lappend found "$command: no answer, the shell ended with status $probes::status"
        } else {
            lassign $answers($number) was_printed was_code was_error was_result
            if {$was_code != $code || $was_error ne $error || ![$match $result $was_result]} {
                lappend found "$command: got $was_code {$was_error} {$was_result},\
                    expected $code {$error} {$result}"
            }
            if {$printed ne "*" && $was_printed ne $printed} {
                lappend found "$command: printed {$was_printed}, expected {$printed}"
            }
        }
        if {[llength $found] >= 5} break
    }
    return [join $found \n]
}

proc probes::exact {wanted text} { string equal $wanted $text }
proc probes::like {pattern text} { string match $pattern $text }

# The lowest and highest number of an integer type, and the word just above what it takes.
array set probes::least {
    int -2147483648 {unsigned char} 0 {unsigned short} 0 {unsigned int} 0 {unsigned long long} 0
}
array set probes::most {
    int 2147483647 {unsigned char} 255 {unsigned short} 65535 {unsigned int} 4294967295
    {unsigned long long} 18446744073709551615
}

# A record's name as its helpers have it: qx_flow_t -> qx_flow.
proc probes::stem {record} {
    regsub {_t$} $record {} stem
    return $stem
}

# The name that handles of a pointer type carry: "unsigned int *" -> _p_unsigned_int.
proc probes::mangled {pointer} { return _p_[string map {{ *} {} { } _} $pointer] }
