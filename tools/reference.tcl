# Writes the reference: tclsh reference.tcl <project folder> <version> <output folder>
#
#   html/      pages to read from disk: index, areas, commands, package qx, statuses, conventions,
#              search
#   man/       qxsh.1 and one page of section n for each area and for the package qx
#   editors/   data about the commands for checkers and editors
#
# It is generated from the catalogue, the default profile and the tables in docs/. The descriptions
# of commands come from the package qx (wording.tcl and commands.tcl in library/qx); all other text
# is hand-written in tools/reference and packaging/qxsh.1.in. A file whose content would not change
# is not written. On a mistake in the data, prints one line and writes nothing.

namespace eval reference {
    variable tools [file dirname [file normalize [info script]]]
    variable parts [file join $tools reference]
    variable note "Generated from the catalogue by tools/reference.tcl; changes belong there."
}
source [file join $reference::tools help_data.tcl]
# The descriptions of commands come from the package qx.
# The reference is about the default profile.
unset -nocomplain env(QX_PROFILE)
foreach part {catalogue profile answers commands wording layout example} {
    source [file join $reference::tools .. library qx $part.tcl]
}
foreach part {byte_map html drawing pages package manual editors} {
    source [file join $reference::parts $part.tcl]
}

proc reference::file_text {name} {
    set channel [open $name]
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    return $text
}

# All commands in table order, as facts.
proc reference::commands {} {
    variable commands
    if {![info exists commands]} {
        foreach name [qx::catalogue::commands] { lappend commands [qx::catalogue::facts $name] }
    }
    return $commands
}

# All files: name below the output folder and text, alternating.
proc reference::files {project version} {
    return [concat [pages::files] [manual::files $project $version] [editors::files]]
}

proc reference::main {project version output} {
    set generate::folder $output
    catalogue::load [file join $project catalogue]
    set simulator [file join $project docs simulator.md]
    set profile [profile::read [file join $project sdk simulator.profile]]
    set statuses [dict get $profile statuses]
    uplevel #0 [generate::package_data $profile]
    set names {}
    foreach {name number meaning} $statuses { lappend names $name }
    set pages::statuses $statuses
    statuses::read_answers $simulator $names [catalogue::calls]
    uplevel #0 [help_data::text $simulator]
    set pages::version $version
    set manual::switches [statuses::read_switches [file join $project docs]]
    foreach {name text} [files $project $version] { generate::write $name $text }
}

generate::from_command_line [info script] {{project folder} version {output folder}} \
    reference::main
