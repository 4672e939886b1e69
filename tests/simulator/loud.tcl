# What the tests of loud failures share: runs with the words of desk.tcl, files that are none, and logs.
# Relies on simulator.tcl.

source [file join [file dirname [file normalize [info script]]] simulator.tcl]
file copy -force [file join $here desk.tcl] [scratch desk.tcl]

# The words that a test writes as lines.
proc lines {args} { return "[join $args \n]\n" }

# What a script prints that knows those words; with a control file of its own. It has to end well.
proc at_desk {script} { printed "source desk.tcl\n$script" }
# The same without a control file, under switches.
proc alone {environment script} { output_with $environment "source desk.tcl\n$script" }

# A fresh folder for files.
proc empty_folder {name} {
    file delete -force [scratch $name]
    file mkdir [scratch $name]
    return [scratch $name]
}

# A file that not even root can read: a link to itself.
proc looped {} {
    file delete [scratch looped]
    exec ln -s looped [scratch looped]
    return [scratch looped]
}

# Three calls under a switch that is wrong, one line on stderr with each of the words, and no call
# answered. Messages that name files of this run, or an error of the C library, are not recorded.
proc refusing {switch value words} {
    write_file [scratch calls.tcl] {
        foreach flag {1 0 1} {
            puts "answer [qx_pm_ne_suspend_set 0 $flag]"
            flush stdout
        }
    }
    set run [without_recording {
        run_command [concat timeout 30 [shell_command [list $switch=$value]] calls.tcl]
    }]
    set out [dict get $run out]
    if {[dict get $run status] eq "124"} { return "hanging: $out" }
    set lines [split [string trimright $out \n] \n]
    set said [lsearch -all -inline -not $lines "answer *"]
    if {[llength $said] != 1} { return "[llength $said] lines: $out" }
    foreach word $words {
        if {[string first $word $said] < 0} { return "no \"$word\": $out" }
    }
    if {"answer 0" in $lines} { return "answered: $out" }
    return refused
}
