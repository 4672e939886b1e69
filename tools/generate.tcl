# Writes the C++ that follows from the catalogue: tclsh generate.tcl <catalogue folder> <output
# folder>
#
#   include/qx_sdk.h       the public header: records and prototypes of the SDK
#   record_table.cpp, record_numbers.h   records and calls, for C++ that iterates over them
#   layout_checks.cpp      compile-time checks of sizes and offsets
#   bit_field_places.cpp   places of bit-fields, checked by a test
#   helpers.h, helpers/    the record helpers and cells
#   types.h, types.cpp     the type table and the module record
#   commands/, test_wrap.cpp   the wrappers and the command table
#   libqx-sdk.map          the names a library of the SDK exports
#
# Generated bodies are simple: each calls one hand-written function of helpers/ or runtime/.
# catalogue.tcl defines which commands exist. A file whose content would not change is not written.

source [file join [file dirname [file normalize [info script]]] catalogue.tcl]

foreach part {text record_table public_header helpers wrappers} {
    source [file join [file dirname [file normalize [info script]]] generate $part.tcl]
}

namespace eval generate {
    variable note "Generated from the catalogue by tools/generate.tcl; changes belong there."
}

proc generate::main {catalogue_folder output_folder} {
    variable folder $output_folder
    catalogue::load $catalogue_folder
    record_table
    public_header
    layout_checks
    helpers
    types
    wrappers
    export_map
}

generate::from_command_line [info script] {{catalogue folder} {output folder}} generate::main
