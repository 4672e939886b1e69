# A sample rc file: copy it to ~/.myapprc, or let yours source it. It makes the prompt comfortable:
# the package qx::prompt edits lines, completes them and keeps a history. At the prompt nothing runs
# but commands that are typed in full, with the package and without. Scripts are not touched.

# The rc file is also read when commands come from a pipe; comforts are for people.
if {![info exists tcl_interactive] || !$tcl_interactive} return

# Settings of your own may come here or behind the last line.

# Tcl's search for a package reads the indexes of all; this one's alone are there much sooner.
foreach dir $auto_path {
    foreach index [glob -nocomplain -directory $dir qx_prompt\[0-9\]*/pkgIndex.tcl] {
        set dir [file dirname $index]
        source $index
    }
}
unset -nocomplain dir index

if {[catch { package require qx::prompt } reason]} {
    puts stderr "plain prompt: $reason"
    # Tcl's own handler of unknown commands would run abbreviations (qx_flow_ad) and Unix programs
    # (ls). This one loads what the script libraries have to offer, and refuses everything else.
    set auto_noexec 1
    proc unknown {name args} {
        if {[auto_load $name [uplevel 1 {namespace current}]]} {
            return [uplevel 1 [linsert $args 0 $name]]
        }
        return -code error -errorcode [list TCL LOOKUP COMMAND $name] \
            "invalid command name \"$name\""
    }
} else {
    qx::prompt::start
}
