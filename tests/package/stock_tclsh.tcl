# Helpers of tests that load the package: scripts in a stock tclsh of the build's processor, whole
# interpreters compared. Relies on tests/script/shell.tcl and on QXSH_TARGET_TCLSH,
# QXSH_TCLSH_PRELOAD and QXSH_PACKAGE.

# The words that start tclsh, which finds the package of the build (or of the folder given).
proc tclsh_command {{environment {}} {folder {}}} {
    if {$folder eq {}} { set folder [file dirname [file dirname $::env(QXSH_PACKAGE)]] }
    set words [concat [list TCLLIBPATH=[list $folder]] $environment $::env(QXSH_TCLSH_PRELOAD)]
    return [concat [launcher $words] [list $::env(QXSH_TARGET_TCLSH)]]
}

# Like `shell` and `output_of`, in the stock tclsh.
proc tclsh {script args} {
    write_file [scratch script.tcl] $script
    return [run_command [concat [tclsh_command] script.tcl $args]]
}

proc tclsh_output {script args} {
    set run [tclsh $script {*}$args]
    if {[dict get $run status] ne "0"} {
        return -code error "status [dict get $run status]: [dict get $run out]"
    }
    return [dict get $run out]
}

# One line per row: what a test expects of a script that prints lists.
proc lines {args} { return [join $args \n]\n }
