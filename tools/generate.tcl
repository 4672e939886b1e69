# Writes the C++ that follows from the catalogue: tclsh generate.tcl <catalogue folder> <output
# folder>
#
#   include/qx_sdk.h       the public header: records and prototypes of the SDK
#   record_table.cpp, record_numbers.h   records and calls for all C++ that walks them
#   layout_checks.cpp      what the compiler has to agree to
#   bit_field_places.cpp   what a test looks at
#   helpers.h, helpers/    the record helpers and cells
#   types.h, types.cpp     the type table and the module record
#   commands/, test_wrap.cpp   the wrappers and the command table
#   libqx-sdk.map          the names a library of the SDK exports
#
# Bodies are dull: each calls one hand-written function of helpers/ or runtime/. Which commands
# exist is catalogue.tcl's business. A file whose content would stay the same is not touched.

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
