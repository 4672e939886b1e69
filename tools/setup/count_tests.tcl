# Counts test cases: tclsh count_tests.tcl JUNIT RESULTS prints "PASSED FAILED SKIPPED". JUNIT is
# what `ctest --output-junit` wrote; RESULTS is the folder where each test that it names left
# NAME.xml, with the counts of its cases in GoogleTest's form. A test that failed though none of its
# cases did - it crashed, was stopped, or lost memory - is one failed case; so is one that passed
# and counted none, which standard error tells of.

# The attributes of each element NAME of an XML file, as a list of dicts; empty if there is no file.
proc elements {name file} {
    if {![file exists $file]} { return {} }
    set channel [open $file]
    set text [read $channel]
    close $channel
    set found {}
    foreach {- words} [regexp -all -inline "<$name\\s(\[^>\]*)>" $text] {
        set attributes {}
        foreach {- key value} [regexp -all -inline {([\w-]+)="([^"]*)"} $words] {
            dict set attributes $key $value
        }
        lappend found $attributes
    }
    return $found
}

# The sum of a key over dicts.
proc total {key dicts} {
    set sum 0
    foreach dict $dicts { incr sum [dict get $dict $key] }
    return $sum
}

lassign $argv junit results
array set sum {passed 0 failed 0 skipped 0}
foreach test [elements testcase $junit] {
    set name [dict get $test name]
    set suites [elements testsuite [file join $results $name.xml]]
    set failed [total failures $suites]
    set skipped [expr {[total skipped $suites] + [total disabled $suites]}]
    set passed [expr {[total tests $suites] - $failed - $skipped}]
    if {$failed == 0 && [dict get $test status] ne "run"} {
        set failed 1
    } elseif {$passed + $failed + $skipped == 0} {
        puts stderr "$name passed, but counted no case"
        set failed 1
    }
    foreach key {passed failed skipped} { incr sum($key) [set $key] }
}
puts "$sum(passed) $sum(failed) $sum(skipped)"
