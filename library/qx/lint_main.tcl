# qx::lint for the command line and CI, installed as qx-lint SCRIPT ... Prints the mistakes it
# finds, one per line. The exit status is 0 if there are none, 1 if there are some, 2 if a script
# cannot be read. Needs no SDK library: a plain tclsh will do.

if {[llength $argv] == 0} {
    puts stderr "usage: qx-lint SCRIPT ..."
    exit 2
}
source [file join [file dirname [file normalize [info script]]] qx.tcl]
apply {{names} {
    set status 0
    foreach name $names {
        if {[catch { qx::lint $name } findings]} {
            puts stderr $findings
            exit 2
        }
        foreach finding $findings {
            puts $finding
            set status 1
        }
    }
    exit $status
}} $argv
