# Writes the C++ of the simulated SDK that follows from the catalogue and the list of statuses:
#   tclsh generate_sdk.tcl <catalogue folder> <qx_status.h> <output folder>
#
#   sdk_calls.h        prototypes of the behaviours, one per SDK function
#   sdk_calls.cpp      the SDK functions, each a single call of `perform`; the behaviours by call
#                      number (record_numbers.h); the statuses
#
# A behaviour has its function's name without the prefix. It takes the device (if the function names
# one) and the function's arguments, with records and cells by reference. Relies on catalogue.tcl
# and statuses.tcl. A file whose content would not change is not written.

foreach part {catalogue.tcl statuses.tcl generate/text.tcl} {
    source [file join [file dirname [file normalize [info script]]] $part]
}

namespace eval generate_sdk {
    variable note "Generated from the catalogue by tools/generate_sdk.tcl; changes belong there."
}

# ---------------------------------------------------------------------------------- arguments

proc generate_sdk::is_pointer {type} { string match {*[*]} $type }
proc generate_sdk::target {type}     { string trimright $type * }
proc generate_sdk::behaviour {call}  { regsub {^qx_} $call {} }

# The parameter of a behaviour for an argument.
proc generate_sdk::parameter {call argument} {
    set type [dict get $argument type]
    set name [dict get $argument name]
    if {![is_pointer $type]} { return "[catalogue::native $type] $name" }
    set native [catalogue::native [target $type]]
    if {[catalogue::count_of $call $name] >= 0} { return "const record_array<$native> &$name" }
    if {[dict get $argument direction] eq "in"} { return "const $native &$name" }
    return "$native &$name"
}

# The expression that gets the argument from a frame.
proc generate_sdk::word {call argument number} {
    set type [dict get $argument type]
    if {![is_pointer $type]} { return "frame.value<[catalogue::native $type]>($number)" }
    set native [catalogue::native [target $type]]
    set array [expr {[catalogue::count_of $call [dict get $argument name]] >= 0}]
    return "frame.[expr {$array ? "array" : "record"}]<$native>($number)"
}

proc generate_sdk::declaration {call} {
    set arguments [dict get [catalogue::call $call] arguments]
    set parameters {}
    if {[catalogue::names_device $call]} {
        lappend parameters "device &here"
        set taken [lrange $arguments 1 end]
    } else {
        set taken $arguments
    }
    foreach argument $taken { lappend parameters [parameter $call $argument] }
    return [generate::wrapped "qx_status [behaviour $call]\(" $parameters ");"]
}

# The function in the table: gets the arguments from the frame and calls the behaviour.
proc generate_sdk::unpacking {call} {
    set arguments [dict get [catalogue::call $call] arguments]
    set words {}
    set number 0
    foreach argument $arguments {
        if {$number == 0 && [catalogue::names_device $call]} {
            lappend words "*frame.here"
        } else {
            lappend words [word $call $argument $number]
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
    append text "    return perform(qxsh::call_$call, words);\n\}\n"
}

# ---------------------------------------------------------------------------------- the files

proc generate_sdk::header {} {
    variable note
    set text "// Behaviours of the SDK functions, and the statuses.\n// $note\n#pragma once\n\n"
    append text "#include \"call.h\"\n#include \"qx_sdk.h\"\n\nnamespace qxsim {\n\n"
    append text "/// By number of the call: its behaviour, on the frame's copies.\n"
    append text "extern qx_status (*const behaviours\[\])(call_frame &);\n\n"
    append text "/// A status of qx_status.h.\nstruct status_description {\n    unsigned int number;\n"
    append text "    const char *name;\n    const char *meaning;\n};\n"
    append text "extern const std::span<const status_description> status_descriptions;\n\n"
    foreach call [catalogue::calls] { append text "[declaration $call]\n" }
    append text "\n} // namespace qxsim\n"
    generate::write sdk_calls.h $text
}

proc generate_sdk::definitions {statuses} {
    variable note
    set text "// The SDK functions, their behaviours by number, and the statuses.\n// $note\n"
    append text "#include \"sdk_calls.h\"\n\n#include \"record_numbers.h\"\n\nnamespace qxsim {\n"
    foreach call [catalogue::calls] { append text \n[unpacking $call] }
    append text "\nqx_status (*const behaviours\[\])(call_frame &) = \{\n"
    foreach call [catalogue::calls] { append text "    behave_$call,\n" }
    append text "\};\n\nstatic constexpr status_description statuses\[\] = \{\n"
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

generate::from_command_line [info script] {{catalogue folder} qx_status.h {output folder}} \
    generate_sdk::main
