# Writes the catalogue data of the script package qx, as one Tcl file:
#   tclsh generate_package.tcl <catalogue folder> <qx_status.h> <output folder>
#
# The file only sets variables to lists, one entry per line; library/qx/catalogue.tcl uses them and
# documents each. Anything that can be derived is left out, because every `package require qx` reads
# the file. Relies on catalogue.tcl, statuses.tcl and generate/text.tcl.

foreach part {catalogue.tcl statuses.tcl generate/text.tcl} {
    source [file join [file dirname [file normalize [info script]]] $part]
}

namespace eval generate_package {
    variable note \
        "Generated from the catalogue by tools/generate_package.tcl; changes belong there."
}

# The text of a variable with a list, one element or pair of elements per line.
proc generate_package::variable_text {name rows} {
    set text "    variable $name \{\n"
    foreach row $rows { append text "$row\n" }
    return "$text    \}\n"
}

proc generate_package::area_rows {} {
    set rows {}
    foreach name [catalogue::areas] {
        set records {}
        foreach record $catalogue::model(records) {
            if {[dict get [catalogue::record $record] area] eq $name} { lappend records $record }
        }
        set calls {}
        foreach call [catalogue::calls] {
            if {[dict get [catalogue::call $call] area] eq $name} { lappend calls $call }
        }
        set area [dict create text [dict get [catalogue::area $name] text] \
            records $records calls $calls]
        lappend rows [list $name $area]
    }
    return $rows
}

# Records as they are declared; values that most fields share are left out.
proc generate_package::record_rows {} {
    set rows {}
    foreach name $catalogue::model(records) {
        set record [catalogue::record $name]
        set fields {}
        foreach field [dict get $record fields] {
            set shown {}
            foreach key {name offset type width bit count text dumped holds set_as range} {
                lappend shown $key [dict get $field $key]
            }
            lappend fields $shown
        }
        dict set record fields $fields
        lappend rows [list $name [dict remove $record name place]]
    }
    return $rows
}

proc generate_package::call_rows {} {
    set rows {}
    foreach name [catalogue::calls] {
        set call [catalogue::call $name]
        set arguments {}
        foreach argument [dict get $call arguments] {
            lappend arguments [dict remove $argument place]
        }
        dict set call arguments $arguments
        lappend rows [list $name [dict remove $call name place]]
    }
    return $rows
}

# Name, then area, shape, owner, field, arguments, result.
proc generate_package::command_rows {} {
    set rows {}
    foreach command [catalogue::commands] {
        set field [dict get $command field]
        if {$field ne {}} { set field [dict get $field name] }
        lappend rows [list [dict get $command name] [list [dict get $command area] \
            [dict get $command shape] [dict get $command owner] $field \
            [dict get $command arguments] [dict get $command result]]]
    }
    return $rows
}

# Type word -> bytes, native spelling.
proc generate_package::scalar_rows {} {
    set rows {}
    foreach {word facts} $catalogue::scalar_types { lappend rows [list $word $facts] }
    return $rows
}

proc generate_package::status_rows {statuses} {
    set rows {}
    foreach {name number meaning} $statuses { lappend rows [list $number [list $name $meaning]] }
    return $rows
}

proc generate_package::cell_rows {} {
    set rows {}
    foreach word $catalogue::model(cells) {
        lappend rows [list [dict get $catalogue::model(cell,$word) type] $word]
    }
    return $rows
}

# The whole file, for the catalogue that has been loaded.
proc generate_package::data {statuses} {
    variable note
    set text "# What the package qx knows of the SDK; catalogue.tcl answers from it.\n# $note\n"
    append text "namespace eval qx::catalogue {\n"
    append text [variable_text scalar_data [scalar_rows]]
    append text [variable_text cell_data [cell_rows]]
    append text [variable_text area_data [area_rows]]
    append text [variable_text record_data [record_rows]]
    append text [variable_text call_data [call_rows]]
    append text [variable_text command_data [command_rows]]
    append text [variable_text status_data [status_rows $statuses]]
    return "$text}\n"
}

proc generate_package::main {catalogue_folder status_file output_folder} {
    set ::generate::folder $output_folder
    catalogue::load $catalogue_folder
    generate::write catalogue_data.tcl [data [statuses::read_header $status_file]]
}

generate::from_command_line [info script] {{catalogue folder} qx_status.h {output folder}} \
    generate_package::main
