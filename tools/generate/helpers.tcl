# The record helpers and cells, one function per command.

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

# The helpers of an area: all its commands except the SDK calls.
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
    set header "// Prototypes of every record helper and cell function.\n"
    append header "// $note\n#pragma once\n\n#include \"qx_sdk.h\"\n"
    foreach area [catalogue::areas] {
        set commands [helper_commands $area]
        set text "// Helpers of the area: [dict get [catalogue::area $area] text].\n// $note\n"
        append text "#include \"helpers.h\"\n\n#include \"helpers/cells.h\"\n"
        append text "#include \"helpers/dump.h\"\n#include \"helpers/records.h\"\n"
        append text "#include \"record_numbers.h\"\n\nusing namespace qxsh;\n"
        append header "\n// [dict get [catalogue::area $area] text]\n\n"
        foreach command $commands {
            set shape [dict get $command shape]
            append header [helper_head $command ");"]\n
            append text "\n[helper_head $command ")"]\n\{\n"
            foreach line [body_$shape $command] { append text "    $line\n" }
            append text "\}\n"
        }
        write helpers/$area.cpp $text
    }
    write helpers.h $header
}

# The unsigned type of a scalar field's storage.
proc generate::storage {field} {
    return std::uint[expr {8 * [catalogue::type_size [dict get $field type]]}]_t
}
proc generate::owner_size {command} { catalogue::type_size [dict get $command owner] }
proc generate::field_size {field}   { catalogue::type_size [dict get $field type] }

proc generate::body_create {c} {
    list "return static_cast<[dict get $c owner] *>(create_record([owner_size $c]));"
}
proc generate::body_dump {c} { list "dump_record(cfg, record_[dict get $c owner]);" }
proc generate::body_array_create {c} {
    list "return static_cast<[dict get $c owner] *>(create_record_array(size, [owner_size $c]));"
}
proc generate::body_array_set {c} { list "set_record_slot(arr, item, idx, [owner_size $c]);" }
proc generate::body_array_get {c} {
    list "return static_cast<[dict get $c owner] *>(record_slot(arr, idx, [owner_size $c]));"
}

# Stores the values in field order, and only if no pointer is null.
proc generate::body_init {c} {
    set pointers {}
    foreach {name type} [dict get $c arguments] {
        if {[string match {*[*]} $type]} { lappend pointers "$name == nullptr" }
    }
    set lines {}
    if {[llength [dict get $c arguments]] == 2} { return [list "static_cast<void>(cfg);"] }
    lappend pointers "!can_write(cfg, [owner_size $c])"
    lappend lines "if ([join $pointers { || }])" "    return;"
    foreach field [dict get [catalogue::record [dict get $c owner]] fields] {
        set name [dict get $field name]
        set offset [dict get $field offset]
        switch -- [catalogue::field_kind $field] {
            scalar { lappend lines "put<[storage $field]>(cfg, $offset, $name);" }
            bits   { lappend lines "store_bits<[storage $field]>(cfg, $offset,\
                [dict get $field bit], [dict get $field width], $name);" }
            record { lappend lines "put_record<[field_size $field]>(cfg, $offset, $name);" }
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
