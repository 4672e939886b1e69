# Runs one tcltest file: tclsh run.tcl <file>. Unlike the file alone it exits with 1 when a test failed,
# when the file stopped before its end, or when it held no test. With GTEST_OUTPUT=xml:FILE in the
# environment it writes how many tests passed, as a GoogleTest program does. Relies on shell.tcl.

set file [file normalize [lindex $argv 0]]
set argv {}
set outcome {}
set counts_file {}
if {[info exists env(GTEST_OUTPUT)]} {
    regexp {^xml:(.+)} $env(GTEST_OUTPUT) - counts_file
    unset env(GTEST_OUTPUT) ;# it is not for the programs that tests run
}

source [file join [file dirname [file normalize [info script]]] shell.tcl]

proc tcltest::cleanupTestsHook {} {
    variable numTests
    set ::outcome [list $numTests(Total) $numTests(Failed) $numTests(Skipped)]
}

# With its folder: there are files of one name in two folders.
begin_transcript [file tail [file dirname $file]].[file rootname [file tail $file]]
if {[catch {source $file} message]} {
    puts stderr "[file tail $file]: $errorInfo"
    exit 1
}
if {$outcome eq {}} {
    puts stderr "[file tail $file]: ended without cleanupTests"
    exit 1
}
lassign $outcome total failed skipped
if {$counts_file ne {}} {
    file mkdir [file dirname $counts_file]
    set channel [open $counts_file w]
    puts $channel [format {<testsuite tests="%d" failures="%d" disabled="0" skipped="%d"/>} \
        $total $failed $skipped]
    close $channel
}
exit [expr {$total == 0 || $failed > 0}]
