# The checks of the catalogue: names, texts and numbers one by one, then records against the C
# layout of their fields, and cells and command names as a whole. Relies on catalogue.tcl.

proc catalogue::check_name {place name what} {
    variable reserved_names
    if {![regexp {^[A-Za-z_][A-Za-z0-9_]*$} $name]} {
        fail $place "\"$name\" is not a name for [with_article $what]"
    }
    if {$name in $reserved_names} {
        fail $place "$name is a reserved word, no name for [with_article $what]"
    }
}

proc catalogue::with_article {noun} {
    return [expr {[string match {[aeiou]*} $noun] ? "an" : "a"}]\ $noun
}

# Descriptions become sentences in C comments.
proc catalogue::check_text {place text} {
    if {$text eq {}} { fail $place "the description is empty" }
    if {![regexp {^[ -~]+$} $text] || [regexp {[*]/|/[*]} $text]} {
        fail $place "a description is one line of plain ASCII without comment marks"
    }
    if {[string match *. $text]} { fail $place "a description ends without a full stop" }
}

proc catalogue::check_number {place what number {least 1}} {
    # At most nine digits, so that sums and products fit in 64 bits; no leading zeros, as in octal.
    if {![regexp {^(0|[1-9]\d{0,8})$} $number] || ($what ne "offset" && $number < $least)} {
        fail $place "\"$number\" is not [with_article $what]"
    }
}

# A field with a special notation needs the matching type.
proc catalogue::check_holds {place field what} {
    variable held_types
    if {![dict exists $held_types $what]} {
        fail $place "-holds \"$what\" is not one of [join [dict keys $held_types] {, }]"
    }
    set wanted [dict get $held_types $what]
    set count [dict get $field count]
    set type [dict get $field type]
    if {$count} { append type \[[expr {$wanted eq {u8[]} ? {} : $count}]\] }
    if {$type ne $wanted || [dict get $field width]} {
        fail $place "-holds $what is for $wanted; [dict get $field name] is not one"
    }
}

# A range must be narrower than the type.
proc catalogue::check_range {place name type width range} {
    variable scalar_types
    if {![dict exists $scalar_types $type] || $width} {
        fail $place "-range is for plain numbers; $name is not one"
    }
    set most [expr {(1 << (8 * [lindex [dict get $scalar_types $type] 0])) - 1}]
    if {[lindex $range 1] >= $most} {
        fail $place "-range [join $range ..] of $name is not narrower than its type, 0..$most"
    }
}

# The number that chooses a union's view, and pairs of its values, as numbers or code words, and
# views.
proc catalogue::check_view_by {place words} {
    if {[catch { llength $words } length] || $length < 3 || $length % 2 == 0} {
        fail $place "-view-by wants a field, numbers and views, as in {type 0 eth pppoe pppoe}"
    }
    set seen {}
    foreach {number view} [lrange $words 1 end] {
        if {![regexp {^[A-Za-z_][A-Za-z0-9_-]*$} $number]} { check_number $place number $number 0 }
        if {$number in $seen} { fail $place "-view-by has $number twice" }
        lappend seen $number
    }
}

# The field that the path of a -view-by names in a record, with its owner and its offset in the
# record.
proc catalogue::chooser {record path} {
    variable model
    set offset 0
    set field {}
    foreach name [split $path .] {
        set found {}
        if {[info exists model(record,$record)]} {
            foreach each [dict get $model(record,$record) fields] {
                if {[dict get $each name] eq $name} { set found $each }
            }
        }
        if {$found eq {}} { return {} }
        incr offset [dict get $found offset]
        dict set found owner $record
        set record [dict get $found type]
        set field $found
    }
    return [dict replace $field offset $offset]
}

# A -view-by belongs to a union, its number to the same record, and its views to the union.
proc catalogue::check_views {record field} {
    variable model
    variable scalar_types
    if {![dict exists $field view_by]} return
    set place [dict get $field place]
    set type [dict get $field type]
    if {$type ni $model(records) || [dict get $model(record,$type) kind] ne "union"
            || [dict get $field count]} {
        fail $place "-view-by is for unions; [dict get $field name] is not one"
    }
    set pairs [lassign [dict get $field view_by] path]
    set number [chooser $record $path]
    if {$number eq {} || ![dict exists $scalar_types [dict get $number type]]
            || [dict get $number count] || [dict get $number width]} {
        fail $place "-view-by \"$path\" is not a plain number of $record"
    }
    set most [expr {(1 << (8 * [type_size [dict get $number type]])) - 1}]
    foreach {value view} $pairs {
        if {[string is digit $value] && $value > $most} {
            fail $place "-view-by $value exceeds $path, 0..$most"
        }
        if {[chooser $type $view] eq {} || [string match *.* $view]} {
            fail $place "-view-by \"$view\" is not a view of $type"
        }
    }
}

# The words of each -view-by are code words of a profile: a dict, OWNER.NAME -> word and number.
proc catalogue::check_view_words {codes} {
    variable model
    foreach record $model(records) {
        foreach field [dict get $model(record,$record) fields] {
            if {![dict exists $field view_by]} continue
            set pairs [lassign [dict get $field view_by] path]
            set number [chooser $record $path]
            set place [dict get $number owner].[dict get $number name]
            foreach {value view} $pairs {
                if {![string is digit $value] && ![dict exists $codes $place $value]} {
                    fail [dict get $field place] \
                        "-view-by \"$value\" is not a code word of $place in the profile"
                }
            }
        }
    }
}

# Every type that a field or an argument names must exist, and records must not contain themselves.
proc catalogue::check_types {} {
    variable model
    foreach record $model(records) {
        foreach field [dict get $model(record,$record) fields] {
            set place [dict get $field place]
            set type [dict get $field type]
            if {$type ni {u8 u16 u32} && $type ni $model(records)} {
                fail $place "type $type of [dict get $field name] is not declared"
            }
            if {[dict get $field set_as] ne {} && [field_kind $field] ne "array"} {
                fail $place "-set-as is for arrays of scalars; [dict get $field name] is not one"
            }
            if {[dict get $field width] && $type ni {u8 u16 u32}} {
                fail $place "[dict get $field name] is a bit-field in a unit that is not a scalar"
            }
            check_views $record $field
        }
    }
    foreach call $model(calls) {
        foreach argument [dict get $model(call,$call) arguments] {
            set type [dict get $argument type]
            if {[string match {*[*]} $type] && [string range $type 0 end-1] ni [pointer_targets]} {
                fail [dict get $argument place] \
                    "type $type of [dict get $argument name] is not declared"
            }
        }
    }
    set model(layout_order) {}
    foreach record $model(records) { place_record $record {} }
}

# Gives the fields that are shown as hexadecimal numbers the fact `hex`; most have none.
proc catalogue::mark_hexadecimal {} {
    variable model
    lassign $model(hexadecimal) wanted place
    set found {}
    foreach record $model(records) {
        set fields {}
        foreach field [dict get $model(record,$record) fields] {
            foreach name [list [dict get $field name] $record.[dict get $field name]] {
                if {$name ni $wanted} continue
                if {[is_record [dict get $field type]] || [dict get $field holds] ne {}} {
                    fail $place "$record.[dict get $field name] is not a plain number"
                }
                dict set field hex 1
                lappend found $name
            }
            lappend fields $field
        }
        dict set model(record,$record) fields $fields
    }
    foreach name $wanted {
        if {$name ni $found} { fail $place "no field is called $name" }
    }
}

# What the lists of ids name has to exist, to have 32 bits, and to be in one list only.
proc catalogue::check_ids {} {
    variable model
    set known {}
    foreach record $model(records) {
        foreach field [dict get $model(record,$record) fields] {
            set plain [expr {[dict get $field width] == 0 && [dict get $field count] == 0}]
            dict set known $record.[dict get $field name] [list [dict get $field type] $plain]
        }
    }
    foreach call $model(calls) {
        foreach argument [dict get $model(call,$call) arguments] {
            dict set known [dict get $argument name] \
                [list [string trimright [dict get $argument type] *] 1]
        }
    }
    set seen {}
    foreach {kind list} $model(ids) {
        lassign $list names place
        foreach name $names {
            if {![dict exists $known $name]} { fail $place "there is no field or argument $name" }
            if {[dict get $known $name] ne {u32 1}} { fail $place "$name is not a u32" }
            if {$name in $seen} { fail $place "$name is listed twice" }
            lappend seen $name
        }
    }
}

# Places a record in the layout order, after the records it contains.
proc catalogue::place_record {record outer} {
    variable model
    if {$record in $model(layout_order)} return
    if {$record in $outer} {
        fail [dict get $model(record,$record) place] "record $record contains itself"
    }
    foreach field [dict get $model(record,$record) fields] {
        if {[dict get $field type] in $model(records)} {
            place_record [dict get $field type] [concat $outer $record]
        }
    }
    lappend model(layout_order) $record
}

# Compares the declared offsets, bits and size of a record with the C layout of its fields.
proc catalogue::check_layout {name} {
    variable model
    set record $model(record,$name)
    set packed [dict get $record packed]
    set union [expr {[dict get $record kind] eq "union"}]
    set next 0 ;# in bits
    set end 0
    foreach field [dict get $record fields] {
        if {$union} { set next 0 }
        set bits [expr {8 * [type_size [dict get $field type]]}]
        set unit [expr {$packed ? 8 : 8 * [type_alignment [dict get $field type]]}]
        if {[dict get $field width]} {
            check_bit_field $field $packed $bits $next
            # A bit-field starts at the next free bit, or in the next unit if it would not fit.
            if {$next % $bits + [dict get $field width] > $bits} {
                set next [expr {($next + $bits - 1) / $bits * $bits}]
            }
            set offset [expr {$next / $bits * $bits / 8}]
            set bit [expr {$next % $bits}]
            set length [dict get $field width]
        } else {
            set next [expr {($next + $unit - 1) / $unit * $unit}]
            set offset [expr {$next / 8}]
            set bit 0
            set length [expr {$bits * max(1, [dict get $field count])}]
        }
        if {$offset != [dict get $field offset]} {
            fail [dict get $field place] "[dict get $field name] is at\
                [dict get $field offset], but the C layout puts it at $offset"
        }
        if {$bit != [dict get $field bit]} {
            fail [dict get $field place] "[dict get $field name] is at bit\
                [dict get $field bit], but the C layout puts it at bit $bit"
        }
        incr next $length
        set end [expr {max($end, $next)}]
    }
    set unit [expr {8 * [type_alignment $name]}]
    set size [expr {($end + $unit - 1) / $unit * $unit / 8}]
    if {$size != [dict get $record size]} {
        fail [dict get $record place] "$name has size [dict get $record size], but the C layout\
            of its fields gives $size"
    }
    # Helpers check only the first and the last byte for whether a record's memory is accessible.
    variable most_bytes
    if {$size > $most_bytes} {
        fail [dict get $record place] "$name has size $size, and $most_bytes is the most"
    }
}

proc catalogue::check_bit_field {field packed bits next} {
    set name [dict get $field name]
    if {[dict get $field width] > $bits} {
        fail [dict get $field place] "$name is [dict get $field width] bits wide, but its unit has\
            $bits"
    }
    if {$packed && $bits != 8} {
        fail [dict get $field place] "$name has a $bits-bit unit; packed records take u8 units only"
    }
    # In a packed record, a compiler would let such a field cross two units.
    if {$packed && $next % $bits + [dict get $field width] > $bits} {
        fail [dict get $field place] "$name does not fit into the rest of its unit; in a packed\
            record name the bits left over"
    }
}

# Each type in the type table must come from exactly one declaration.
proc catalogue::check_pointer_types {} {
    variable model
    set seen {}
    foreach {kind names} [list record $model(records) pointer $model(pointers) cell $model(cells)] {
        foreach name $names {
            if {$kind eq "cell"} {
                set place [dict get $model(cell,$name) place]
                set type [mangled [dict get $model(cell,$name) type]]
            } else {
                set place $model(place,$kind,$name)
                set type [mangled $name]
            }
            if {[dict exists $seen $type]} {
                fail $place "$kind $name has the pointer type $type, like the declaration at\
                    [join [dict get $seen $type] :]"
            }
            dict set seen $type $place
        }
    }
}

proc catalogue::check_cells {} {
    variable model
    variable cell_operations
    foreach word $model(cells) {
        foreach operation $cell_operations {
            if {$operation ni [dict get $model(cell,$word) operations]} {
                fail [dict get $model(cell,$word) place] "cell $word has no $operation"
            }
        }
    }
}

proc catalogue::check_command_names {} {
    set seen {}
    foreach command [commands] {
        set name [dict get $command name]
        if {![string match qx_* $name]} {
            fail [dict get $command place] "command $name does not begin with qx_"
        }
        if {[is_record $name]} {
            fail [dict get $command place] "command $name is named like the record at\
                [join [dict get [record $name] place] :]"
        }
        if {[dict exists $seen $name]} {
            fail [dict get $command place] "command $name is already made at\
                [join [dict get $seen $name] :]"
        }
        dict set seen $name [dict get $command place]
    }
}

# The calls that an example needs before it have examples, and set the variables it uses.
proc catalogue::check_examples {} {
    variable model
    dict for {call example} $model(examples) {
        set place [dict get $example place]
        if {![dict exists $example example]} { fail $place "$call has no line \"example\"" }
        set results {}
        foreach other [before $call {}] {
            if {![dict exists $model(examples) $other example]} {
                fail $place "the example of $call needs $other, which has none"
            }
            lappend results [dict get $model(examples) $other result]
        }
        foreach {variable name} [regexp -all -inline {\$(\w+)} [dict get $example example]] {
            if {$name ni $results} { fail $place "nothing before $call sets $variable" }
        }
    }
}

# The calls before a call in its example, each once and after those it needs itself.
proc catalogue::before {call outer} {
    variable model
    if {$call in $outer} {
        fail [dict get $model(examples) $call place] "the example of $call needs itself"
    }
    set result {}
    if {![dict exists $model(examples) $call after]} return
    foreach needed [dict get $model(examples) $call after] {
        foreach each [concat [before $needed [concat $outer [list $call]]] [list $needed]] {
            if {$each ni $result} { lappend result $each }
        }
    }
    return $result
}
