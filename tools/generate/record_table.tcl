# The records as the library of the package qx reads and writes them: library/qx/record_table.h.

proc generate::record_table {} {
    variable note
    set text "// The records, for the library of the package qx.\n// $note\n"
    append text "#include \"library/qx/record_table.h\"\n\nnamespace qxsh \{\n\n"
    append text "using enum holding;\n\nconst field_row field_rows\[\] = \{\n"
    set rows {}
    set bounds {}
    set first 0
    foreach name $catalogue::model(records) {
        set fields [dict get [catalogue::record $name] fields]
        append rows "    [record_row $name $first],\n"
        append bounds "static_assert([dict get [catalogue::record $name] size] <=\
            most_record_bytes && [llength $fields] <= most_fields);\n"
        append text "    // $name\n"
        foreach field $fields {
            append text "    [field_row $field],\n"
            if {[dict get $field count]} {
                append bounds "static_assert([dict get $field count] <= most_elements);\n"
            }
        }
        incr first [llength $fields]
    }
    append text "\};\n\nconst record_row record_rows\[\] = \{\n$rows\};\n\n"
    append text "const unsigned record_count = [llength $catalogue::model(records)];\n"
    append text "const unsigned field_count = $first;\n\n$bounds\n\} // namespace qxsh\n"
    write record_table.cpp $text
}

proc generate::field_row {field} {
    set type [dict get $field type]
    set number [lsearch -exact $catalogue::model(records) $type]
    if {$number < 0 && $type ni {u8 u16 u32}} {
        error "[dict get $field name]: whole records hold no numbers of type $type"
    }
    set holds [dict get $field holds]
    if {$holds eq {}} { set holds number }
    return "\{[join [list [quoted [dict get $field name]] [dict get $field offset] \
        [catalogue::type_size $type] [dict get $field bit] [dict get $field width] \
        [dict get $field count] $holds $number] {, }]\}"
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
        if {$size > $most} {
            set most $size
            set largest $index
        }
        if {[dict get $field holds] eq "family"} { set family $index }
        incr index
    }
    return "\{[join [list [quoted $name] [dict get $record size] $first $index \
        [expr {$union ? "true" : "false"}] [expr {$union ? $largest : 0}] $family] {, }]\}"
}
