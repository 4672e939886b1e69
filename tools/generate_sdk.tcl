# Writes the C++ of the simulated SDK that follows from the catalogue and the list of statuses:
#   tclsh generate_sdk.tcl <catalogue folder> <qx_status.h> <output folder>
#
#   sdk_calls.h        prototypes of the behaviours, one per SDK function, and the tables
#   sdk_calls.cpp      the SDK functions, each one call of `perform`; what calls and records are;
#                      the statuses by number
#
# A behaviour has its function's name less the prefix, the device (if the function names one) and
# its arguments, records and cells by reference. Relies on catalogue.tcl and statuses.tcl; a file
# whose content would stay the same is not touched.

foreach part {catalogue.tcl statuses.tcl generate/text.tcl} {
    source [file join [file dirname [file normalize [info script]]] $part]
}

namespace eval generate_sdk {
    variable note "Generated from the catalogue by tools/generate_sdk.tcl; changes belong there."
    # Arrays of bytes with these names hold keys.
    variable secrets {ekey akey key}
}

# ---------------------------------------------------------------------------------- arguments

proc generate_sdk::is_pointer {type} { string match {*[*]} $type }
proc generate_sdk::target {type}     { string trimright $type * }
proc generate_sdk::behaviour {call}  { regsub {^qx_} $call {} }

# True for the functions that take a device first.
proc generate_sdk::names_device {call} {
    set first [lindex [dict get [catalogue::call $call] arguments] 0]
    return [expr {$first ne {} && [dict get $first name] in {device_id dev_id}}]
}

proc generate_sdk::count_of {arguments name} {
    set names {}
    foreach argument $arguments { lappend names [dict get $argument name] }
    return [catalogue::count_of $names $name]
}

# How a behaviour takes an argument.
proc generate_sdk::parameter {arguments argument} {
    set type [dict get $argument type]
    set name [dict get $argument name]
    if {![is_pointer $type]} { return "[catalogue::native $type] $name" }
    set native [catalogue::native [target $type]]
    if {[count_of $arguments $name] >= 0} { return "const record_array<$native> &$name" }
    if {[dict get $argument direction] eq "in"} { return "const $native &$name" }
    return "$native &$name"
}

# How a frame gives it.
proc generate_sdk::word {arguments argument number} {
    set type [dict get $argument type]
    if {![is_pointer $type]} { return "frame.value<[catalogue::native $type]>($number)" }
    set native [catalogue::native [target $type]]
    if {[count_of $arguments [dict get $argument name]] >= 0} { return "frame.array<$native>($number)" }
    return "frame.record<$native>($number)"
}

proc generate_sdk::declaration {call} {
    set arguments [dict get [catalogue::call $call] arguments]
    set parameters {}
    if {[names_device $call]} {
        lappend parameters "device &here"
        set taken [lrange $arguments 1 end]
    } else {
        set taken $arguments
    }
    foreach argument $taken { lappend parameters [parameter $arguments $argument] }
    return [generate::wrapped "qx_status [behaviour $call]\(" $parameters ");"]
}

# The function that the table points to: takes the arguments out of the frame.
proc generate_sdk::unpacking {call} {
    set arguments [dict get [catalogue::call $call] arguments]
    set words {}
    set number 0
    foreach argument $arguments {
        if {$number == 0 && [names_device $call]} {
            lappend words "*frame.here"
        } else {
            lappend words [word $arguments $argument $number]
        }
        incr number
    }
    set text "static qx_status behave_$call\(call_frame &frame)\n\{\n"
    append text "[generate::wrapped "    return [behaviour $call]\(" $words ");" 8]\n\}\n"
}

# The SDK function itself.
proc generate_sdk::entry {call} {
    set parameters {}
    set names {}
    foreach argument [dict get [catalogue::call $call] arguments] {
        set native [catalogue::native [dict get $argument type]]
        lappend parameters [string map {{* } *} "$native [dict get $argument name]"]
        lappend names [dict get $argument name]
    }
    set text "[generate::wrapped "unsigned int $call\(" $parameters ")"]\n\{\n"
    append text "[generate::wrapped "    const call_word words\[\] = \{" $names "\};" 8]\n"
    append text "    return perform(call_$call, words);\n\}\n"
}

# -------------------------------------------------------------------------- the descriptions

# The records that calls point to and those inside them, each after what it contains.
proc generate_sdk::used_records {} {
    set used {}
    set open {}
    foreach call [catalogue::calls] {
        foreach argument [dict get [catalogue::call $call] arguments] {
            lappend open [target [dict get $argument type]]
        }
    }
    while {$open ne {}} {
        set record [lindex $open 0]
        set open [lrange $open 1 end]
        if {![catalogue::is_record $record] || $record in $used} continue
        lappend used $record
        foreach field [dict get [catalogue::record $record] fields] {
            lappend open [dict get $field type]
        }
    }
    set result {}
    foreach record [catalogue::records] { if {$record in $used} { lappend result $record } }
    return $result
}

proc generate_sdk::record_table {name} {
    variable secrets
    set text "static constexpr field_description fields_of_$name\[\] = \{\n"
    foreach field [dict get [catalogue::record $name] fields] {
        set type [dict get $field type]
        set nested [catalogue::is_record $type]
        set secret [expr {$type eq "u8" && [dict get $field count] && [dict get $field name] in $secrets}]
        append text "    \{\"[dict get $field name]\", [dict get $field offset],\
            [expr {$nested ? 0 : [catalogue::type_size $type]}], [dict get $field bit],\
            [dict get $field width], [dict get $field count], [expr {$secret ? "true" : "false"}],\
            [expr {$nested ? "&record_$type" : "nullptr"}]\},\n"
    }
    append text "\};\nconstinit const record_description record_$name =\
        \{\"$name\", [catalogue::type_size $name], fields_of_$name\};\n"
}

proc generate_sdk::call_table {call} {
    variable largest
    set arguments [dict get [catalogue::call $call] arguments]
    set text "static constexpr argument_description arguments_of_$call\[\] = \{\n"
    set place 0
    foreach argument $arguments {
        set type [dict get $argument type]
        set pointer [is_pointer $type]
        set record [target $type]
        set count [count_of $arguments [dict get $argument name]]
        append text "    \{\"[dict get $argument name]\", direction::[dict get $argument direction],\
            [expr {$pointer ? "true" : "false"}], [catalogue::type_size $record], $place, $count,\
            [expr {[catalogue::is_record $record] ? "&record_$record" : "nullptr"}]\},\n"
        if {$pointer && $count < 0} {
            incr place [expr {([catalogue::type_size $record] + 3) / 4 * 4}]
        }
    }
    set largest [expr {max($largest, $place)}]
    append text "\};\n"
}

# ---------------------------------------------------------------------------------- the files

proc generate_sdk::header {} {
    variable note
    set text "// Behaviours of the SDK functions, and their descriptions.\n// $note\n#pragma once\n\n"
    append text "#include \"call.h\"\n#include \"qx_sdk.h\"\n\nnamespace qxsim {\n\nenum call_number {\n"
    foreach call [catalogue::calls] { append text "    call_$call,\n" }
    append text "    call_count\n};\n\n"
    append text "extern const call_description call_descriptions\[call_count\];\n\n"
    append text "/// A status of qx_status.h.\nstruct status_description {\n    unsigned int number;\n"
    append text "    const char *name;\n    const char *meaning;\n};\n"
    append text "extern const std::span<const status_description> status_descriptions;\n\n"
    foreach record [used_records] { append text "extern const record_description record_$record;\n" }
    append text "\n"
    foreach call [catalogue::calls] { append text "[declaration $call]\n" }
    append text "\n} // namespace qxsim\n"
    generate::write sdk_calls.h $text
}

proc generate_sdk::definitions {statuses} {
    variable note
    variable largest 0
    set text "// The SDK functions, and the descriptions of calls, records and statuses.\n// $note\n"
    append text "#include \"sdk_calls.h\"\n\nnamespace qxsim {\n"
    foreach record [used_records] { append text \n[record_table $record] }
    foreach call [catalogue::calls] { append text \n[call_table $call][unpacking $call] }
    append text "\nconst call_description call_descriptions\[call_count\] = \{\n"
    foreach call [catalogue::calls] {
        append text "    \{\"$call\", arguments_of_$call, [expr {[names_device $call] ? "true" : "false"}],\n"
        append text "     behave_$call\},\n"
    }
    append text "\};\nstatic_assert($largest <= frame_limit);\n"
    append text "\nstatic constexpr status_description statuses\[\] = \{\n"
    foreach {name number meaning} $statuses { append text "    \{$number, \"$name\", \"$meaning\"\},\n" }
    append text "\};\nconst std::span<const status_description> status_descriptions = statuses;\n"
    append text "\n} // namespace qxsim\n\nusing namespace qxsim;\n"
    foreach call [catalogue::calls] { append text \n[entry $call] }
    generate::write sdk_calls.cpp $text
}

proc generate_sdk::main {catalogue_folder status_file output_folder} {
    set generate::folder $output_folder
    catalogue::load $catalogue_folder
    set statuses [statuses::read_header $status_file]
    header
    definitions $statuses
}

if {[info exists argv0] && [file normalize $argv0] eq [file normalize [info script]]} {
    if {[llength $argv] != 3} {
        puts stderr "usage: tclsh generate_sdk.tcl <catalogue folder> <qx_status.h> <output folder>"
        exit 2
    }
    if {[catch {generate_sdk::main {*}$argv} message]} {
        puts stderr [expr {$errorCode eq "CATALOGUE" ? $message : $errorInfo}]
        exit 1
    }
}
