# Runs one tcltest file: tclsh run.tcl <file>. Unlike the file alone it exits with 1 when a test failed,
# when the file stopped before its end, or when it held no test. Relies on shell.tcl.

set file [file normalize [lindex $argv 0]]
set argv {}
set outcome {}

source [file join [file dirname [file normalize [info script]]] shell.tcl]

proc tcltest::cleanupTestsHook {} {
    variable numTests
    set ::outcome [list $numTests(Total) $numTests(Failed)]
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
foreach {total failed} $outcome break
exit [expr {$total == 0 || $failed > 0}]
