# A sample rc file: copy it to ~/.myapprc, or source it from yours. It starts the package
# qx::prompt, which edits and completes lines and keeps a history. With the package and without,
# only a command's full name runs it at the prompt. Scripts are not affected.

# The rc file is also read when commands come from a pipe, which needs none of this.
if {![info exists tcl_interactive] || !$tcl_interactive} return

# Short names, for people: `help NAME` describes what there is, `? WORD ...` searches, both a
# screenful at a time (see PAGER). Scripts should not use them.
proc help {{name {}}} {
    package require qx
    return [qx::page [qx::help $name]]
}
proc ? {args} {
    package require qx
    if {![llength $args]} { return [help] }
    return [qx::page [eval [linsert $args 0 qx::apropos]]]
}

# Put your own settings here or after the last line.

# Tcl's search for a package reads all indexes; reading only this package's is much faster.
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
    # (ls). This one autoloads from the script libraries, and rejects everything else.
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
