# The table of records and calls for all C++ that iterates over them: records/table.h.

proc generate::record_table {} {
    variable note
    variable names {}
    variable name_bytes 0
    set rows [concat [record_rows] [call_rows]]
    set text "// The records and calls of the SDK: records/table.h.\n// $note\n"
    append text "#include \"records/table.h\"\n\nnamespace qxsh \{\n\nusing enum holding;\n"
    append text "using enum direction;\n\nconst char table_names\[\] =\n"
    dict for {name at} $names { append text "    [quoted $name] \"\\0\"\n" }
    append text ";\n"
    foreach {declaration lines} $rows {
        append text "\nconst $declaration\[\] = \{\n"
        foreach line $lines { append text "    $line\n" }
        append text "\};\n"
    }
    append text "\n\} // namespace qxsh\n"
    write record_table.cpp $text
    record_numbers
}

# The numbers of the rows, and their maximum sizes.
proc generate::record_numbers {} {
    variable note
    variable most
    set text "// Numbers of the records and calls in records/table.h, and bounds of all of them.\n"
    append text "// $note\n#pragma once\n\nnamespace qxsh \{\n"
    foreach {kind names} [list record [record_names] call [catalogue::calls]] {
        append text "\nenum ${kind}_number \{\n"
        foreach name $names { append text "    ${kind}_$name,\n" }
        append text "    ${kind}_count\n\};\n"
    }
    append text "\nenum id_number \{\n    id_none,\n"
    foreach kind [catalogue::id_kinds] { append text "    id_$kind,\n" }
    append text "    id_count\n\};\n"
    append text "\nconstexpr unsigned field_count = $most(all);\n"
    append text "constexpr unsigned view_count = $most(views);\n"
    append text "constexpr unsigned most_record_bytes = $most(bytes);\n"
    append text "constexpr unsigned most_fields = $most(fields);\n"
    append text "constexpr unsigned most_elements = $most(elements); ///< of an array\n"
    append text "constexpr unsigned most_call_arguments = $most(arguments);\n"
    append text "constexpr unsigned most_frame_bytes = $most(frame); ///< argument_row::place\n"
    append text "\n\} // namespace qxsh\n"
    write record_numbers.h $text
}

proc generate::record_names {} { return $catalogue::model(records) }

# The number of the record that a type word names, directly or as a pointer; -1 if it is not one.
proc generate::record_number {type} {
    return [lsearch -exact [record_names] [string trimright $type *]]
}

# The position of a name; each name is stored once.
proc generate::name_at {name} {
    variable names
    variable name_bytes
    if {![dict exists $names $name]} {
        dict set names $name $name_bytes
        incr name_bytes [expr {[string length $name] + 1}]
    }
    return "\{[dict get $names $name]\}"
}

# A line of a table, in which the name is given by its position.
proc generate::row {name values} {
    return "\{[join [concat [list [name_at $name]] $values] {, }]\}, // $name"
}

proc generate::truth {value} { expr {$value ? "true" : "false"} }

proc generate::record_rows {} {
    variable most
    array set most {views 0 all 0 bytes 0 fields 0 elements 1 arguments 0 frame 0}
    set records {}
    set fields {}
    set views {}
    foreach name [record_names] {
        set record [catalogue::record $name]
        lappend records [record_row $name $most(all)]
        foreach field [dict get $record fields] {
            lappend views {*}[view_rows $name $field [llength $fields]]
            lappend fields [field_row $field [catalogue::id_kind $name.[dict get $field name]]]
            set most(elements) [expr {max($most(elements), [dict get $field count])}]
        }
        set count [llength [dict get $record fields]]
        incr most(all) $count
        set most(fields) [expr {max($most(fields), $count)}]
        set most(bytes) [expr {max($most(bytes), [dict get $record size])}]
    }
    set most(views) [llength $views]
    # An array has to have an element.
    lappend views "\{\{0\}, 0, 0, 0, 0, 0, 0\},"
    return [list "record_row record_rows" $records "field_row field_rows" $fields \
        "view_row view_rows" $views]
}

# The views of a union that a number of its record chooses.
proc generate::view_rows {record field index} {
    if {![dict exists $field view_by]} return
    set pairs [lassign [dict get $field view_by] path]
    set chooser [catalogue::chooser $record $path]
    set names {}
    foreach view [dict get [catalogue::record [dict get $field type]] fields] {
        lappend names [dict get $view name]
    }
    set rows {}
    foreach {code view} $pairs {
        # A word's number is the profile's.
        set is_word [expr {![string is digit $code]}]
        lappend rows "\{[join [list [name_at [expr {$is_word ? $code : {}}]] $index \
            [field_index [dict get $chooser owner] [dict get $chooser name]] \
            [dict get $chooser offset] [catalogue::type_size [dict get $chooser type]] \
            [lsearch -exact $names $view] [expr {$is_word ? 0 : $code}]] {, }]\},\
            // $record.[dict get $field name]: $path $code is $view"
    }
    return $rows
}

# The number of a field's row.
proc generate::field_index {record name} {
    set index 0
    foreach each [record_names] {
        foreach field [dict get [catalogue::record $each] fields] {
            if {$each eq $record && [dict get $field name] eq $name} { return $index }
            incr index
        }
    }
}

proc generate::field_row {field id} {
    set type [dict get $field type]
    set holds [dict get $field holds]
    return [row [dict get $field name] [list [dict get $field offset] [catalogue::type_size $type] \
        [dict get $field count] [dict get $field bit] [dict get $field width] \
        [expr {$holds eq {} ? "number" : $holds}] [truth [dict get $field dumped]] \
        [record_number $type] $id [truth [dict exists $field hex]]]]
}

proc generate::record_row {name first} {
    set record [catalogue::record $name]
    set union [expr {[dict get $record kind] eq "union"}]
    set largest 0
    set most 0
    set family -1
    set index 0
    foreach field [dict get $record fields] {
        set size [catalogue::type_size [dict get $field type]]
        set size [expr {$size * max(1, [dict get $field count])}]
        if {$union && $size > $most} {
            set most $size
            set largest $index
        }
        if {[dict get $field holds] eq "family"} { set family $index }
        incr index
    }
    return [row $name [list [dict get $record size] $first $index [truth $union] $largest $family]]
}

proc generate::call_rows {} {
    set calls {}
    set arguments {}
    foreach name [catalogue::calls] {
        set lines [argument_rows $name]
        lappend calls [row $name [list [llength $arguments] [llength $lines] \
            [truth [catalogue::names_device $name]]]]
        lappend arguments {*}$lines
    }
    return [list "call_row call_rows" $calls "argument_row argument_rows" $arguments]
}

proc generate::argument_rows {call} {
    variable most
    set rows {}
    set place 0
    foreach argument [dict get [catalogue::call $call] arguments] {
        set type [dict get $argument type]
        set pointer [string match {*[*]} $type]
        set size [catalogue::type_size [string trimright $type *]]
        set count [catalogue::count_of $call [dict get $argument name]]
        lappend rows [row [dict get $argument name] [list [dict get $argument direction] \
            [truth $pointer] $size $place $count [record_number $type] \
            [catalogue::id_kind [dict get $argument name]]]]
        if {$pointer && $count < 0} { incr place [expr {($size + 3) / 4 * 4}] }
    }
    set most(arguments) [expr {max($most(arguments), [llength $rows])}]
    set most(frame) [expr {max($most(frame), $place)}]
    return $rows
}
