# Writes what help alone needs, in a file that the package qx reads when it is first asked:
#   tclsh help_data.tcl <catalogue folder> <simulator.md> <output folder>
#
#   help_data.tcl   examples of the calls, the statuses that the simulator answers, special values
#
# A mistake in the data ends it with one line, and nothing is written.

source [file join [file dirname [file normalize [info script]]] generate.tcl]

namespace eval help_data {}

# The text of the file, from a catalogue that is loaded.
proc help_data::text {page} {
    set places {}
    foreach {kind parts} {record fields call arguments} {
        foreach owner [catalogue::${kind}s] {
            foreach part [dict get [catalogue::$kind $owner] $parts] {
                lappend places $owner.[dict get $part name]
            }
        }
    }
    set text "# What qx::help knows besides catalogue_data.tcl; answers.tcl answers from it.\n"
    append text "# $generate::note\nnamespace eval qx::catalogue \{\n"
    append text [generate::package_variable example [catalogue::examples]]
    append text [generate::package_variable answer \
        [statuses::read_answers $page * [catalogue::calls]]]
    append text [generate::package_variable special [statuses::read_special $page $places]]
    return "$text\}\n"
}

proc help_data::main {catalogue_folder page output_folder} {
    set generate::folder $output_folder
    catalogue::load $catalogue_folder
    generate::write help_data.tcl [text $page]
}

generate::from_command_line [info script] {{catalogue folder} simulator.md {output folder}} \
    help_data::main
