# tclsh bench/prompt_start.tcl SHELL ?RUNS?: the time to the first prompt with the sample rc file,
# as a ratio to the time without an rc file. The sessions alternate, so that other load on the
# machine affects both. Relies on the package Expect.
package require Expect
log_user 0

# Microseconds to the prompt; the session's status tells whether the rc file has run.
proc session {shell home editing} {
    global spawn_id
    set begun [clock microseconds]
    spawn -noecho env HOME=$home TERM=vt100 $shell
    expect {% $}
    set time [expr {[clock microseconds] - $begun}]
    send "exit \[info exists qx::prompt::editing]\r"
    expect eof
    if {[lindex [wait] 3] != $editing} { error "this is not the prompt that was meant" }
    return $time
}

set shell [lindex $argv 0]
set runs [expr {[llength $argv] > 1 ? [lindex $argv 1] : 21}]
set sample [file join [file dirname [file dirname [file normalize [info script]]]] \
    library myapprc.tcl]
foreach name {bare sample} {
    set homes($name) [exec mktemp -d]
    set times($name) {}
}
file copy $sample [file join $homes(sample) .myapprc]
for {set run 0} {$run < $runs} {incr run} {
    foreach {name editing} {bare 0 sample 1} {
        lappend times($name) [session $shell $homes($name) $editing]
    }
}
foreach name {bare sample} {
    set median($name) [lindex [lsort -integer $times($name)] [expr {$runs / 2}]]
    puts [format "%-7s %6.1f ms" $name [expr {$median($name) / 1000.0}]]
    file delete -force $homes($name)
}
puts [format "ratio   %6.1f" [expr {double($median(sample)) / $median(bare)}]]
