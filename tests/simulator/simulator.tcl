# What the simulator's script tests share: the harness of tests/script, the catalogue, and runs of the shell
# with the script package qx and a control file of the run's own.

set here [file dirname [file normalize [info script]]]
source [file join $here .. script shell.tcl]
source [file join [project] tools catalogue.tcl]
catalogue::load [file join [project] catalogue]

# Runs a script in the shell with the package loaded and the simulator attached; -> dict: out, status.
proc simulated {script} {
    set head "package require qx\nqx::sim::attach [list [scratch control]]\n"
    return [shell $head$script]
}

# What such a script prints; it has to end well.
proc printed {script} {
    set run [simulated $script]
    if {[dict get $run status] ne "0"} {
        return -code error "status [dict get $run status]: [dict get $run out]"
    }
    return [dict get $run out]
}

# The rows of the tables of docs/simulator.md whose first cell fits, each a list of cells.
proc page_rows {pattern} {
    set rows {}
    foreach line [split [file_text [file join [project] docs simulator.md]] \n] {
        if {![string match "| *" $line]} continue
        set cells {}
        foreach cell [lrange [split $line |] 1 end-1] { lappend cells [string trim $cell] }
        if {[regexp $pattern [lindex $cells 0]]} { lappend rows $cells }
    }
    return $rows
}
