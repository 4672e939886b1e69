# SHELL registration.tcl NAME OUTPUT VARIANT,... FLOOR-LIBRARY PACKAGE-LIBRARY: counts the
# registration of the package's commands in fresh interpreters against a bare loop over the same
# names, in the same order. Called like count.tcl; a pass is an interpreter. The last word of a line
# is the CPU time in nanoseconds, for runs without a counting tool.

source [file join [file dirname [file normalize [info script]]] .. tools catalogue.tcl]

proc run {variant passes demo} {
    # Created beforehand and kept, so that only the registration is counted.
    set interpreters {}
    for {set i 0} {$i < $passes} {incr i} { lappend interpreters [interp create] }
    set begin [bench_cpu]
    bench_begin
    if {$variant eq "floor"} {
        foreach each $interpreters { bench_register $each }
    } else {
        foreach each $interpreters { bench_initialise $demo $each }
    }
    bench_end region
    set spent [expr {[bench_cpu] - $begin}]
    foreach each $interpreters { interp delete $each }
    return $spent
}

proc count_registration {output variants floor demo} {
    load $floor
    catalogue::load [file join [file dirname [file normalize [info script]]] .. catalogue]
    set names {}
    foreach command [catalogue::commands] { lappend names [dict get $command name] }
    bench_names {*}$names
    set channel [open $output w]
    bench_start
    foreach variant $variants {
        foreach n {1 1 3} kind {warm short long} {
            puts $channel "$kind $variant $n [run $variant $n $demo]"
        }
    }
    close $channel
}

count_registration [lindex $argv 1] [split [lindex $argv 2] ,] {*}[lrange $argv 3 end]
