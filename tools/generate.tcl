# Writes the C++ that follows from the catalogue: tclsh generate.tcl <catalogue folder> <output folder>
#
#   include/qx_sdk.h       the public header: records and prototypes of the SDK
#   layout_checks.cpp      what the compiler has to agree to; bit_field_places.cpp, what a test looks at
#   helpers.h, helpers/    the record helpers and cells, layouts of the dumps
#   types.h, types.cpp     the type table and the module record
#   commands/, test_wrap.cpp   the wrappers and the command table
#   libqx-sdk.map          the names a library of the SDK exports
#
# Bodies are dull: each calls one hand-written function of helpers/ or runtime/. Which commands exist is
# catalogue.tcl's business. A file whose content would stay the same is not touched.

source [file join [file dirname [file normalize [info script]]] catalogue.tcl]

namespace eval generate {
    variable note "Generated from the catalogue by tools/generate.tcl; changes belong there."
}

proc generate::write {name text} {
    variable folder
    set file [file join $folder $name]
    file mkdir [file dirname $file]
    if {[file exists $file]} {
        set channel [open $file]
        set old [read $channel]
        close $channel
        if {$old eq $text} return
    }
    set channel [open $file w]
    fconfigure $channel -encoding utf-8 -translation lf
    puts -nonewline $channel $text
    close $channel
}

# A C string literal of plain text.
proc generate::quoted {text} { return "\"[string map {\\ \\\\ \" \\\"} $text]\"" }

# "type name" in C, with the star at the name.
proc generate::declarator {type name} {
    set native [catalogue::native $type]
    if {[string match {*[*]} $native]} { return "$native$name" }
    return "$native $name"
}

# Joins pieces with ", ", breaking lines before column 100; later lines are indented.
proc generate::wrapped {start pieces end {indent 4}} {
    set line $start
    set text {}
    set last [expr {[llength $pieces] - 1}]
    set number 0
    foreach piece $pieces {
        append piece [expr {$number == $last ? $end : ","}]
        if {$number > 0 && [string length $line] + 1 + [string length $piece] > 100} {
            append text $line\n
            set line [string repeat { } $indent]$piece
        } else {
            append line [expr {$number > 0 ? " " : ""}]$piece
        }
        incr number
    }
    if {$pieces eq {}} { append line $end }
    return $text$line
}

# ---------------------------------------------------------------------------- public header

proc generate::public_header {} {
    variable note
    set text "/* Records and functions of the SDK, little-endian, sizes and offsets as on the board.\n"
    append text " * Every function returns a status, 0 for success.\n * $note */\n"
    append text "#ifndef QX_SDK_H\n#define QX_SDK_H\n\n"
    append text "#ifdef __cplusplus\nextern \"C\" {\n#endif\n"
    foreach record [catalogue::records] { append text \n[record_declaration $record] }
    foreach call [catalogue::calls] { append text \n[call_declaration $call] }
    append text "\n#ifdef __cplusplus\n}\n#endif\n\n#endif\n"
    write include/qx_sdk.h $text
}

proc generate::sentence {text} { return "[string toupper [string index $text 0]][string range $text 1 end]." }

proc generate::record_declaration {name} {
    set record [catalogue::record $name]
    set kind [expr {[dict get $record kind] eq "union" ? "union" : "struct"}]
    set text "/* [sentence [dict get $record text]] [dict get $record size] bytes. */\n"
    append text "typedef $kind $name \{\n"
    foreach field [dict get $record fields] {
        set member [declarator [dict get $field type] [dict get $field name]]
        if {[dict get $field count]} { append member \[[dict get $field count]\] }
        if {[dict get $field width]} { append member " : [dict get $field width]" }
        append text [format "    %-46s /* %s */\n" "$member;" [dict get $field text]]
    }
    set attribute [expr {[dict get $record packed] ? " __attribute__((packed))" : ""}]
    append text "\}$attribute $name;\n"
}

proc generate::call_declaration {name} {
    set call [catalogue::call $name]
    set text "/* [sentence [dict get $call text]]\n"
    set parameters {}
    foreach argument [dict get $call arguments] {
        set direction {}
        if {[string match {*[*]} [dict get $argument type]]} {
            set direction " ([dict get $argument direction])"
        }
        append text [format " *   %-22s %s\n" [dict get $argument name]$direction \
            [dict get $argument text]]
        lappend parameters [declarator [dict get $argument type] [dict get $argument name]]
    }
    append text " */\n"
    if {$parameters eq {}} { lappend parameters void }
    append text [wrapped "unsigned int $name\(" $parameters ");"]\n
}

# ---------------------------------------------------------------------------- layout checks

# Sizes and offsets are compared when this is compiled. Bits cannot be, so the places of the bit-fields
# become a table that a test walks: it sets each field through the C record and looks at the bytes.
proc generate::layout_checks {} {
    variable note
    set text "// Sizes, alignments and offsets of the records as this compiler sees them.\n// $note\n"
    append text "#include \"qx_sdk.h\"\n\n#include <cstddef>\n"
    set bits "// Places of the bit-fields, and how the compiler's own records reach them.\n// $note\n"
    append bits "#include \"qx_sdk.h\"\n\n#include \"tests/unit/bit_field_place.h\"\n\n"
    append bits "const bit_field_place bit_field_places\[\] = \{\n"
    foreach name [catalogue::records] {
        set record [catalogue::record $name]
        append text "\nstatic_assert(sizeof($name) == [dict get $record size]);\n"
        append text "static_assert(alignof($name) == [catalogue::type_alignment $name]);\n"
        foreach field [dict get $record fields] {
            set member [dict get $field name]
            set offset [dict get $field offset]
            if {[dict get $field width]} {
                append bits "    \{\"$name.$member\", $offset, [dict get $field bit],\
                    [dict get $field width],\n     \[\](void *record, unsigned int value)\
                    \{ static_cast<$name *>(record)->$member = value; \}\},\n"
            } else {
                append text "static_assert(offsetof($name, $member) == $offset);\n"
            }
        }
    }
    append bits "    \{nullptr, 0, 0, 0, nullptr\},\n\};\n"
    write layout_checks.cpp $text
    write bit_field_places.cpp $bits
}

# ------------------------------------------------------------------------------ the helpers

proc generate::result_type {command} {
    set result [dict get $command result]
    switch -- $result {
        none    { return "void " }
        low32   { return "unsigned long long " }
        default { return [declarator $result {}][expr {[string match {*[*]} $result] ? "" : " "}] }
    }
}

proc generate::parameters {command} {
    set result {}
    foreach {name type} [dict get $command arguments] { lappend result [declarator $type $name] }
    return $result
}

proc generate::helper_head {command end} {
    wrapped "[string map {{  } { }} [result_type $command]][dict get $command name](" \
        [parameters $command] $end
}

# The helpers of an area: all its commands but the SDK calls.
proc generate::helper_commands {area} {
    set result {}
    foreach command [catalogue::commands] {
        if {[dict get $command area] eq $area && [dict get $command shape] ne "call"} {
            lappend result $command
        }
    }
    return $result
}

proc generate::helpers {} {
    variable note
    set header "// Prototypes of every record helper and cell function, and the layouts of their dumps.\n"
    append header "// $note\n#pragma once\n\n#include \"qx_sdk.h\"\n\n#include \"helpers/dump.h\"\n"
    foreach area [catalogue::areas] {
        set commands [helper_commands $area]
        set text "// Helpers of the area: [dict get [catalogue::area $area] text].\n// $note\n"
        append text "#include \"helpers.h\"\n\n#include \"helpers/cells.h\"\n"
        append text "#include \"helpers/records.h\"\n\nusing namespace qxsh;\n"
        append header "\n// [dict get [catalogue::area $area] text]\n\n"
        foreach command $commands {
            set shape [dict get $command shape]
            if {$shape eq "create"} {
                append text \n[layout_table [dict get $command owner]]
                append header "extern const qxsh::record_layout [dict get $command owner]_layout;\n"
            }
            append header [helper_head $command ");"]\n
            append text "\n[helper_head $command ")"]\n\{\n"
            foreach line [body_$shape $command] { append text "    $line\n" }
            append text "\}\n"
        }
        write helpers/$area.cpp $text
    }
    write helpers.h $header
}

# The table a dump walks: one row a field.
proc generate::layout_table {name} {
    set record [catalogue::record $name]
    set text "static constexpr field_layout ${name}_fields\[\] = \{\n"
    foreach field [dict get $record fields] {
        set type [dict get $field type]
        set nested [expr {[catalogue::is_record $type] ? "&${type}_layout" : "nullptr"}]
        append text [format "    \{%-26s %3d, %d, %2d, %2d, %d, %s, %s\},\n" \
            "[quoted [dict get $field name]]," [dict get $field offset] \
            [expr {[catalogue::is_record $type] ? 0 : [catalogue::type_size $type]}] \
            [dict get $field bit] [dict get $field width] [dict get $field count] $nested \
            [expr {[dict get $field dumped] ? "true" : "false"}]]
    }
    append text "\};\n"
    append text "constinit const record_layout ${name}_layout =\
        \{[dict get $record size], ${name}_fields\};\n"
}

# Unsigned type of a scalar field's storage.
proc generate::storage {field} {
    return std::uint[expr {8 * [catalogue::type_size [dict get $field type]]}]_t
}
proc generate::owner_size {command} { catalogue::type_size [dict get $command owner] }
proc generate::field_size {field}   { catalogue::type_size [dict get $field type] }

proc generate::body_create {c} {
    list "return static_cast<[dict get $c owner] *>(create_record([owner_size $c]));"
}
proc generate::body_dump {c} { list "dump_record(cfg, [dict get $c owner]_layout);" }
proc generate::body_array_create {c} {
    list "return static_cast<[dict get $c owner] *>(create_record_array(size, [owner_size $c]));"
}
proc generate::body_array_set {c} { list "set_record_slot(arr, item, idx, [owner_size $c]);" }
proc generate::body_array_get {c} {
    list "return static_cast<[dict get $c owner] *>(record_slot(arr, idx, [owner_size $c]));"
}

# Stores one after the other in field order, and only if no pointer is null.
proc generate::body_init {c} {
    set pointers {}
    foreach {name type} [dict get $c arguments] {
        if {[string match {*[*]} $type]} { lappend pointers "$name == nullptr" }
    }
    set lines {}
    if {[llength [dict get $c arguments]] == 2} { return [list "static_cast<void>(cfg);"] }
    lappend lines "if ([join $pointers { || }])" "    return;"
    foreach field [dict get [catalogue::record [dict get $c owner]] fields] {
        set name [dict get $field name]
        set offset [dict get $field offset]
        switch -- [catalogue::field_kind $field] {
            scalar { lappend lines "store<[storage $field]>(cfg, $offset, $name);" }
            bits   { lappend lines "store_bits<[storage $field]>(cfg, $offset,\
                [dict get $field bit], [dict get $field width], $name);" }
            record { lappend lines "copy_record(cfg, $offset, $name, [field_size $field]);" }
        }
    }
    return $lines
}

proc generate::body_set_scalar {c} {
    set f [dict get $c field]
    list "set_scalar<[storage $f]>(cfg, [dict get $f offset], [dict get $f name]);"
}
proc generate::body_get_scalar {c} {
    set f [dict get $c field]
    list "return get_scalar<[storage $f]>(cfg, [dict get $f offset]);"
}
proc generate::body_set_bits {c} {
    set f [dict get $c field]
    list "set_bits<[storage $f]>(cfg, [dict get $f offset], [dict get $f bit],\
        [dict get $f width], [dict get $f name]);"
}
proc generate::body_get_bits {c} {
    set f [dict get $c field]
    list "return get_bits<[storage $f]>(cfg, [dict get $f offset], [dict get $f bit],\
        [dict get $f width]);"
}
proc generate::body_set_array {c} {
    set f [dict get $c field]
    list "set_element<[storage $f]>(cfg, [dict get $f offset], [dict get $f count],\
        [dict get $f name], idx, __func__);"
}
proc generate::body_get_array {c} {
    set f [dict get $c field]
    list "return get_element<[storage $f]>(cfg, [dict get $f offset], [dict get $f count], idx);"
}
proc generate::body_set_record {c} {
    set f [dict get $c field]
    list "set_record(cfg, [dict get $f offset], [dict get $f name], [field_size $f]);"
}
proc generate::body_get_record {c} {
    set f [dict get $c field]
    list "return static_cast<[dict get $f type] *>(record_at(cfg, [dict get $f offset]));"
}
proc generate::body_set_records {c} {
    set f [dict get $c field]
    list "set_record_element(cfg, [dict get $f offset], [dict get $f count], [dict get $f name],\
        [field_size $f], idx, __func__);"
}
proc generate::body_get_records {c} {
    set f [dict get $c field]
    list "return static_cast<[dict get $f type] *>(" \
        "    record_element(cfg, [dict get $f offset], [dict get $f count], [field_size $f], idx));"
}

proc generate::body_free {c} { list "free_block([lindex [dict get $c arguments] 0]);" }
proc generate::body_cell_create {c}       { list "return create_cell(data);" }
proc generate::body_cell_get {c}          { list "return [cell_read $c](ptr, 0);" }
proc generate::body_cell_array_create {c} { list "return create_cell_array(data, size);" }
proc generate::body_cell_array_get {c}    { list "return [cell_read $c](ptr, index);" }
proc generate::body_cell_array_set {c}    { list "write_cell(ptr, data, index);" }
proc generate::cell_read {c} {
    return [expr {[dict get $c result] eq "low32" ? "read_printed_cell" : "read_cell"}]
}

# --------------------------------------------------------------------------- the type table

proc generate::type_index {type} {
    return type_[string map {{ } _} [catalogue::native [string trimright $type *]]]
}

proc generate::types {} {
    variable note
    set header "// The pointer types of this module: their numbers in the type table, in its order.\n"
    append header "// $note\n#pragma once\n\n#include \"runtime/type_registry.h\"\n\n"
    append header "enum type_index {\n"
    set text "// The type table and the module record.\n// $note\n#include \"types.h\"\n\n"
    set records {}
    set casts {}
    foreach type [catalogue::types] {
        set index [type_index $type]
        set mangled [catalogue::mangled $type]
        append header "    $index,\n"
        append text "static swig_type_record record$mangled = \{\"$mangled\",\
            \"[catalogue::native $type] *\",\n    nullptr, nullptr, nullptr, 0\};\n"
        append text "static swig_cast_record casts$mangled\[\] = \{\n    \{&record$mangled,\
            nullptr, nullptr, nullptr\}, \{nullptr, nullptr, nullptr, nullptr\}\};\n"
        append records "    &record$mangled,\n"
        append casts "    casts$mangled,\n"
    }
    append header "    type_count\n};\n\n"
    append header "/// The types as resolved when the module was first linked; ends with a null.\n"
    append header "extern swig_type_record *swig_types\[type_count + 1\];\n"
    append header "extern swig_module_record swig_module;\n"
    append text "\nswig_type_record *swig_types\[type_count + 1\];\n"
    append text "static swig_type_record *const type_initial\[\] = \{\n$records\};\n"
    append text "static swig_cast_record *const cast_initial\[\] = \{\n$casts\};\n"
    append text "swig_module_record swig_module = \{swig_types, type_count, nullptr, type_initial,\n"
    append text "    cast_initial, nullptr\};\n"
    write types.h $header
    write types.cpp $text
}

# ------------------------------------------------------------------- wrappers and the table

proc generate::wrappers {} {
    variable note
    set declarations {}
    set rows {}
    foreach command [catalogue::commands] {
        set area [dict get $command area]
        set name [dict get $command name]
        dict append texts $area \n[wrapper $command]
        append declarations "Tcl_ObjCmdProc wrap_$name;\n"
        append rows "    \{\"$name\", wrap_$name, nullptr\},\n"
    }
    foreach area [catalogue::areas] {
        set text "// Commands of the area: [dict get [catalogue::area $area] text].\n// $note\n"
        append text "#include \"test_wrap.h\"\n\n#include \"commands/sdk_output.h\"\n"
        append text "#include \"helpers.h\"\n#include \"runtime/command_words.h\"\n#include \"types.h\"\n"
        append text "\nusing namespace qxsh;\n"
        if {[dict exists $texts $area]} { append text [dict get $texts $area] }
        write commands/$area.cpp $text
    }
    set text "// The wrappers, in the order of the command table.\n// $note\n#pragma once\n\n"
    append text "#include \"commands/command_table.h\"\n\n$declarations"
    write test_wrap.h $text
    set text "// The command table, in the order of registration.\n// $note\n"
    append text "#include \"test_wrap.h\"\n\nconst swig_command_info swig_commands\[\] = \{\n"
    append text "$rows    \{nullptr, nullptr, nullptr\},\n\};\n"
    write test_wrap.cpp $text
}

# One object command: words counted, words converted in order, one call, its result.
proc generate::wrapper {command} {
    set name [dict get $command name]
    set checks [list "words.count([expr {[llength [dict get $command arguments]] / 2}])"]
    set declarations {}
    set names {}
    set number 0
    foreach {argument type} [dict get $command arguments] {
        incr number
        append declarations "    [declarator $type $argument];\n"
        lappend names $argument
        if {$type eq "void*" || ![string match {*[*]} $type]} {
            lappend checks "words.get($number, $argument)"
        } else {
            lappend checks "words.get($number, $argument, swig_types\[[type_index $type]\])"
        }
    }
    set text "int wrap_$name\(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv\[\])\n\{\n"
    append text "    const command_words words{interp, objc, objv,\n"
    append text "        [quoted [catalogue::usage $command]]};\n$declarations"
    append text [conditions $checks]
    set call [wrapped "$name\(" $names ")" 8]
    set result [dict get $command result]
    switch -glob -- $result {
        none    { append text "    $call;\n    return words.none();\n" }
        low32   { append text "    return words.low32_result($call);\n" }
        status  { append text "    const sdk_output output;\n    return words.status_result($call);\n" }
        i32     { append text "    return words.int_result($call);\n" }
        *[*]    { append text "    return words.pointer_result($call,\n\
            \       swig_types\[[type_index $result]\]);\n" }
        default { append text "    return words.unsigned_result($call);\n" }
    }
    append text "\}\n"
}

proc generate::conditions {checks} {
    set parts {}
    foreach check $checks { lappend parts !$check }
    set line "    if ([join $parts { || }])"
    if {[string length $line] > 100} { set line "    if ([join $parts " ||\n        "])" }
    return "$line\n        return TCL_ERROR;\n"
}

# A linker map: what the SDK library shows to the world.
proc generate::export_map {} {
    set text "# Exactly the SDK functions are visible.\n{\nglobal:\n"
    foreach call [catalogue::calls] { append text "    $call;\n" }
    append text "local:\n    *;\n};\n"
    write libqx-sdk.map $text
}

proc generate::main {catalogue_folder output_folder} {
    variable folder $output_folder
    catalogue::load $catalogue_folder
    public_header
    layout_checks
    helpers
    types
    wrappers
    export_map
}

if {[info exists argv0] && [file normalize $argv0] eq [file normalize [info script]]} {
    if {[llength $argv] != 2} {
        puts stderr "usage: tclsh generate.tcl <catalogue folder> <output folder>"
        exit 2
    }
    if {[catch {generate::main {*}$argv} message]} {
        puts stderr [expr {$errorCode eq "CATALOGUE" ? $message : $errorInfo}]
        exit 1
    }
}
