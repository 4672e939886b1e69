# Writes everything that follows from the catalogue and the default profile:
#   tclsh generate.tcl <catalogue folder> <profile> <output folder>
#
#   include/qx_sdk.h       the public header: records and prototypes of the SDK
#   include/qx_status.h    the statuses of the profile
#   record_table.cpp, record_numbers.h   records and calls, for C++ that iterates over them
#   layout_checks.cpp      compile-time checks of sizes and offsets
#   bit_field_places.cpp   places of bit-fields, checked by a test
#   helpers.h, helpers/    the record helpers and cells
#   types.h, types.cpp     the type table and the module record
#   commands/, test_wrap.cpp   the wrappers and the command table
#   libqx-sdk.map          the names a library of the SDK exports
#   link_library.c         a library of these names to link with, but not to run
#   entry_points.cpp, call_through.cpp   the functions of such a library, and calls of them
#   sdk_calls.h, sdk_calls.cpp   what a call of the simulated SDK leads to
#   default_profile.h      the profile, for C++
#   catalogue_data.tcl     the facts that the script package qx answers from
#
# Generated bodies are simple: each calls one hand-written function of helpers/ or runtime/.
# catalogue.tcl defines which commands exist. A file whose content would not change is not written.

foreach part {
    catalogue statuses profile generate/text generate/record_table generate/public_header generate/helpers
    generate/wrappers generate/entry_points generate/simulator generate/status_header generate/default_profile
    generate/package
} {
    source [file join [file dirname [file normalize [info script]]] $part.tcl]
}

namespace eval generate {
    variable note "Generated from the catalogue by tools/generate.tcl; changes belong there."
}

proc generate::main {catalogue_folder profile_file output_folder} {
    variable folder $output_folder
    catalogue::load $catalogue_folder
    set profile [profile::read $profile_file]
    catalogue::check_view_words [dict get $profile codes]
    record_table
    public_header
    status_header [dict get $profile statuses]
    layout_checks
    helpers
    types
    wrappers
    export_map
    entry_points
    simulator
    default_profile $profile
    package $profile
}

generate::from_command_line [info script] {{catalogue folder} profile {output folder}} \
    generate::main
