# The public header of the SDK, and the checks of its records' layout.

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

# Sizes and offsets are checked at compile time. Bits cannot be, so the places of bit-fields become
# a table for a test, which sets each field through the C record and checks the bytes.
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

# A linker map with the symbols that the SDK library exports, and a library that has only these.
proc generate::export_map {} {
    variable note
    set map "# Exactly the SDK functions are visible.\n{\nglobal:\n"
    set library "/* Names for the linker. $note */\n"
    foreach call [catalogue::calls] {
        append map "    $call;\n"
        append library "void ${call}(void) { __builtin_trap(); }\n"
    }
    write libqx-sdk.map "${map}local:\n    *;\n};\n"
    write link_library.c $library
}
