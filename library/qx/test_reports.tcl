# Package qx::test, the reports: what tcltest writes, or TAP on standard output instead, and a JUnit
# file; and the verdict on the whole run. In TAP, what a script prints is a comment. Relies on
# tcltest.

namespace eval qx::test::report {
    variable tap 0
    variable puts ::puts ;# Tcl's, wherever it is
    variable begun 0     ;# whether a script has printed a line without its end, in TAP
    variable junit {}  ;# the channel of the JUnit file, and the file's name
    variable text {}   ;# the channel that tcltest writes to
    variable cases {}  ;# dicts: file name outcome (passed, failed, skipped, error) message text ms
    variable running {} ;# the tests that run, the innermost last: name, counts and time at start
}

proc qx::test::report::use_tap {} { variable tap 1 }

# Opened at once: a run that dies leaves an empty file and not one of an earlier run.
proc qx::test::report::use_junit {file} {
    # As an absolute name, lest it be a command for a pipe.
    variable junit [list [open [file join [pwd] $file] w] $file]
    fconfigure [lindex $junit 0] -encoding utf-8
}

proc qx::test::report::open_text {folder} {
    variable text [open $folder/text w+]
    fconfigure $text -encoding utf-8
    file delete -- $folder/text
    ::tcltest::outputChannel
    set ::tcltest::outputChannel $text
    variable tap
    if {$tap} { comment_puts }
}
proc qx::test::report::close_text {} { variable text; close $text }

# What tcltest has written since the last time.
proc qx::test::report::written {} {
    variable text
    flush $text
    seek $text 0
    set written [read $text]
    seek $text 0
    chan truncate $text
    return [without_kit $written]
}

# A report without the end of each trace, which is the kit's and tcltest's own commands.
proc qx::test::report::without_kit {written} {
    set kept {}
    set ours {} ;# where the kit's part of this trace begins
    foreach line [split $written \n] {
        if {[regexp {^(?:----|====) } $line] && $ours ne {}} {
            set kept [lrange $kept 0 [expr {$ours - 1}]]
            set ours {}
        }
        lappend kept $line
        if {[regexp {^"::qx::(?:status::block|test::begin|test::finish) ?} $line]} {
            set ours [expr {[llength $kept] - 2}]
            if {[string match {"uplevel 1 $script*} [lindex $kept [expr {$ours - 1}]]]} {
                incr ours -2
            }
        }
    }
    return [join $kept \n]
}

# tcltest's comparison for a test whose result does not count.
proc qx::test::report::any {wanted is} { return 1 }

# ------------------------------------------------------------------------------- around a test

proc qx::test::report::counts {} {
    set counts {}
    foreach key {Passed Failed Skipped} { lappend counts $::tcltest::numTests($key) }
    return $counts
}

proc qx::test::report::begin {name description} {
    variable running
    lappend running [list "$name: [string trim $description]" [counts] [clock milliseconds]]
}

# How many tests run, one in the other.
proc qx::test::report::depth {} { variable running; return [llength $running] }

# Forgets a test that is none.
proc qx::test::report::drop {} { variable running [lrange $running 0 end-1] }

proc qx::test::report::end {unmet} {
    variable running
    variable cases
    variable tap
    lassign [lindex $running end] name before start
    drop
    # What a test in another one counts is not the other one's.
    if {[depth]} { lset running end 1 [counts] }
    foreach was $before is [counts] each {passed failed skipped} {
        if {$is > $was} { set outcome $each }
    }
    set written [written]
    set message {}
    if {$outcome eq "failed"} { set message [reason $written] }
    if {$outcome eq "skipped"} {
        set message [expr {[llength $unmet] ? "not here: [join $unmet]" : "not selected"}]
    }
    lappend cases [dict create file [file tail [info script]] name $name outcome $outcome \
        message $message text [string trim $written \n] ms [expr {[clock milliseconds] - $start}]]
    if {$tap} { tap_line [lindex $cases end] } else { print $written }
}

# The one line of tcltest's report that says most.
proc qx::test::report::reason {written} {
    if {[regexp -line {^---- Test (?:setup|cleanup) failed:\n(.*)$} $written -> line]
            || [regexp -line {^---- errorInfo(?:\(\w+\))?: (.*)$} $written -> line]} {
        return $line
    }
    return "the result is not the expected one"
}

proc qx::test::report::print {written} {
    variable puts
    variable begun
    $puts -nonewline [expr {$begun ? "\n" : {}}]$written
    set begun 0
    flush stdout
}

proc qx::test::report::summary {} {
    variable tap
    set written [written]
    if {!$tap} { print $written }
}

# ---------------------------------------------------------------------------------- the verdict

# Ends the reports; -> whether the run failed. `status` is what the script ends with.
proc qx::test::report::verdict {status ended} {
    variable cases
    variable tap
    set problem {}
    if {$status ne "0"} {
        set problem "ended with exit status $status"
    } elseif {!$ended} {
        set problem "ended without cleanupTests"
    } elseif {![llength $cases]} {
        set problem "no test has run"
    }
    if {$problem ne {}} {
        set case [dict create file [file tail $::argv0] name "the file: $problem" outcome error \
            message $problem text $problem ms 0]
        lappend cases $case
        if {$tap} { tap_line $case }
        puts stderr "[file tail $::argv0]: $problem"
    }
    if {$tap} { print "1..[llength $cases]\n" }
    return [expr {![write_junit] || [count $cases failed] + [count $cases error] > 0}]
}

# -> whether the file, if one is wanted, is whole.
proc qx::test::report::write_junit {} {
    variable cases
    variable junit
    if {$junit eq {}} { return 1 }
    lassign $junit channel file
    if {![catch { puts -nonewline $channel [xml $cases]; close $channel } message options]} {
        return 1
    }
    if {[lindex [dict get $options -errorcode] 0] eq "POSIX"} {
        set message [lindex [dict get $options -errorcode] end]
    }
    puts stderr "[file tail $::argv0]: cannot write $file: $message"
    return 0
}

proc qx::test::report::count {cases outcome} {
    set count 0
    foreach case $cases { incr count [expr {[dict get $case outcome] eq $outcome}] }
    return $count
}

# ------------------------------------------------------------------------------- TAP and JUnit

# From now on `puts` writes comments to standard output: a reader must not take a line of a script
# for one of TAP. An alias can be renamed, as tcltest does to collect the output of a test.
proc qx::test::report::comment_puts {} {
    variable puts ::qx::test::real_puts
    rename ::puts $puts
    interp alias {} ::puts {} ::qx::test::report::comment
    set map [namespace ensemble configure ::chan -map]
    namespace ensemble configure ::chan -map [dict replace $map puts ::puts]
}

proc qx::test::report::comment {args} {
    variable puts
    variable begun
    set text [lindex $args end]
    switch -glob -- [llength $args],$args {
        1,* - {2,stdout *}                      { append text \n }
        {2,-nonewline *} - {3,-nonewline stdout *} {}
        default {
            if {![catch { $puts {*}$args } message options]} return
            return -code error -errorcode [dict get $options -errorcode] \
                [string map [list $puts puts] $message]
        }
    }
    if {$text eq {}} return
    set lines [split $text \n]
    set text [join $lines "\n# "]
    if {!$begun} { set text "# $text" }
    set begun [expr {[lindex $lines end] ne {}}]
    if {!$begun} { set text [string range $text 0 end-2] }
    $puts -nonewline $text
    return
}

proc qx::test::report::tap_line {case} {
    variable cases
    set outcome [dict get $case outcome]
    set line "[expr {$outcome in {failed error} ? "not ok" : "ok"}] [llength $cases] -\
        [string map {\\ \\\\ # \\# \n { }} [dict get $case name]]"
    if {$outcome eq "skipped"} { append line " # SKIP [dict get $case message]" }
    append line \n
    if {$outcome in {failed error}} {
        foreach each [split [dict get $case text] \n] {
            append line [string trimright "# $each"] \n
        }
    }
    print $line
}

proc qx::test::report::xml {cases} {
    set files {}
    foreach case $cases { dict lappend files [dict get $case file] $case }
    set text "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n"
    dict for {file cases} $files {
        set ms 0
        foreach case $cases { incr ms [dict get $case ms] }
        append text "  <testsuite name=\"[escaped $file]\" tests=\"[llength $cases]\"\
            failures=\"[count $cases failed]\" errors=\"[count $cases error]\"\
            skipped=\"[count $cases skipped]\" time=\"[seconds $ms]\">\n"
        foreach case $cases { append text [xml_case $case] }
        append text "  </testsuite>\n"
    }
    return "$text</testsuites>\n"
}

proc qx::test::report::xml_case {case} {
    set line "    <testcase classname=\"[escaped [dict get $case file]]\"\
        name=\"[escaped [dict get $case name]]\" time=\"[seconds [dict get $case ms]]\""
    set message "message=\"[escaped [dict get $case message]]\""
    switch -- [dict get $case outcome] {
        passed  { return "$line/>\n" }
        skipped { return "$line><skipped $message/></testcase>\n" }
        failed  { set element failure }
        error   { set element error }
    }
    return "$line>\n      <$element $message>[escaped [dict get $case text]]</$element>\n\
        \   </testcase>\n"
}

proc qx::test::report::seconds {ms} { format %.3f [expr {$ms / 1000.0}] }

# XML 1.0 has no way to write most control characters.
proc qx::test::report::escaped {text} {
    regsub -all {[\u0000-\u0008\u000b\u000c\u000e-\u001f\ud800-\udfff\ufffe\uffff]} $text ? text
    return [string map {& &amp; < &lt; > &gt; \" &quot;} $text]
}
