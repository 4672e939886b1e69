# qx::lint for the command line and CI, installed as qx-lint SCRIPT ... Prints what is wrong, a line
# each. Exit status 0 if nothing is, 1 if something is, 2 if a script cannot be read. Needs no SDK
# library: a plain tclsh will do.

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
