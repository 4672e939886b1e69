# tclsh bare_registration.tcl TCLSH...: what Tcl itself takes to create the package's commands, in
# instructions, with each of these programs of the PC: tclsh of any version, or the shell. Run
# ./bench/gate first, which builds. Relies on registration.tcl.

set here [file dirname [file normalize [info script]]]
foreach file {rows counter ../tools/catalogue} { source [file join $here $file.tcl] }

if {![llength $argv]} {
    puts stderr "usage: tclsh bench/bare_registration.tcl TCLSH..."
    exit 2
}
catalogue::load [file join $here .. catalogue]
set commands [llength [catalogue::commands]]
foreach program $argv {
    set found [auto_execok $program]
    if {$found eq {}} {
        puts stderr "bare_registration: there is no program $program"
        exit 1
    }
    set version [exec {*}[counter::launcher pc] {*}$found << {puts [info patchlevel]}]
    set counted [counter::per_pass pc [lindex $found 0] registration.tcl registration floor \
        [list [file join [counter::tools pc] floor.so] none]]
    set count [dict get $counted floor]
    puts [format "%s, Tcl %s: %.0f for %d commands, %.0f each" $program $version $count $commands \
        [expr {$count / $commands}]]
}
