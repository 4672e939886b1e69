# What the generator's tests share. Relies on tests/script/shell.tcl.

# Other builds do not run these tests, so there is nothing to compare.
without_transcript

set here [file dirname [file normalize [info script]]]
set generator [file join [project] tools generate.tcl]

# The command that runs the generator.
proc generator_command {catalogue output} {
    return [list [info nameofexecutable] $::generator $catalogue \
        [file join $::here sample simulator.profile] $output]
}

# Runs the generator; -> dict: out, status.
proc generate {catalogue output} { run_command [generator_command $catalogue $output] }

# All files under a folder, as sorted relative names.
proc files_under {folder} {
    set found {}
    foreach file [glob -nocomplain -directory $folder -types f *] {
        lappend found [file tail $file]
    }
    foreach inner [glob -nocomplain -directory $folder -types d *] {
        foreach file [files_under $inner] { lappend found [file join [file tail $inner] $file] }
    }
    return [lsort $found]
}
