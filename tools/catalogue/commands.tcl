# Which commands exist: those of records, calls and cells, in table order, with arguments and
# results. Relies on catalogue.tcl. The generator writes the bodies.

# All commands in table order, each a dict:
#   name, area, place, shape (kind of body), owner (record, call or cell), field (dict or {}),
#   arguments (name and type word, alternating), result (none, status, low32, or a type word).
proc catalogue::commands {} {
    variable model
    set result {}
    foreach group $model(groups) {
        set result [concat $result [commands_of_[lindex $group 0] {*}[lrange $group 1 end]]]
    }
    return $result
}

proc catalogue::command {name area place shape owner field arguments result} {
    dict create name $name area $area place $place shape $shape owner $owner field $field \
        arguments $arguments result $result
}

proc catalogue::commands_of_record {record} {
    set description [record $record]
    set head [list [dict get $description area] [dict get $description place]]
    set stem [stem $record]
    set cfg [list cfg $record*]
    set arr [list arr $record*]
    set rows {}
    lappend rows [list create {} {} $record*]
    if {[dict get $description kind] ne "union"} {
        lappend rows [list init {} [concat $cfg [init_arguments $description]] none]
    }
    lappend rows [list dump {} $cfg none]
    foreach field [dict get $description fields] {
        set value [list [dict get $field name] [set_type $field]]
        set idx [expr {[dict get $field count] ? {idx u32} : {}}]
        lappend rows [list set $field [concat $cfg $value $idx] none]
        lappend rows [list get $field [concat $cfg $idx] [get_type $field]]
    }
    lappend rows [list array_create {} {size u32} $record*]
    lappend rows [list array_set {} [concat $arr [list item $record*] {idx u32}] none]
    lappend rows [list array_get {} [concat $arr {idx u32}] $record*]

    set result {}
    foreach row $rows {
        lassign $row shape field arguments value
        set name ${stem}_$shape
        if {$field ne {}} {
            append name _[dict get $field name]
            append shape _[field_kind $field]
        }
        lappend result [command $name {*}$head $shape $record $field $arguments $value]
    }
    return $result
}

# scalar, bits, array, record or records.
proc catalogue::field_kind {field} {
    set nested [is_record [dict get $field type]]
    if {[dict get $field width]} { return bits }
    if {[dict get $field count]} { return [expr {$nested ? "records" : "array"}] }
    return [expr {$nested ? "record" : "scalar"}]
}

# The type that a field's setter takes and its getter returns; nested records are passed by pointer.
proc catalogue::get_type {field} {
    set type [dict get $field type]
    return [expr {[is_record $type] ? "$type*" : $type}]
}
proc catalogue::set_type {field} {
    set type [dict get $field set_as]
    return [expr {$type eq {} ? [get_type $field] : $type}]
}

# The initialiser takes no arrays, which keep their values.
proc catalogue::init_arguments {record} {
    set arguments {}
    foreach field [dict get $record fields] {
        if {![dict get $field count]} {
            lappend arguments [dict get $field name] [set_type $field]
        }
    }
    return $arguments
}

proc catalogue::commands_of_call {call} {
    set description [call $call]
    set arguments {}
    foreach argument [dict get $description arguments] {
        lappend arguments [dict get $argument name] [dict get $argument type]
    }
    return [list [command $call [dict get $description area] [dict get $description place] \
        call $call {} $arguments status]]
}

proc catalogue::commands_of_cell {word operation area} {
    variable model
    set cell $model(cell,$word)
    set type [dict get $cell type]
    # A 64-bit read returns only the low half to the script, but prints the whole value.
    set read [expr {$type eq "u64" ? "low32" : $type}]
    switch -- $operation {
        create       { set arguments [list data $type];                         set result $type* }
        get          { set arguments [list ptr $type*];                         set result $read }
        array_create { set arguments [list data $type size u32];                set result $type* }
        array_get    { set arguments [list ptr $type* index u32];               set result $read }
        array_set    { set arguments [list ptr $type* data $type index u32];    set result none }
    }
    return [list [command qx_${word}_$operation $area [dict get $cell place] cell_$operation \
        $type {} $arguments $result]]
}

proc catalogue::commands_of_free {name argument text area} {
    variable model
    return [list [command $name $area $model(place,free,$name) free {} {} \
        [list $argument void*] none]]
}

# The usage format of a command: an o per argument, then its name and its arguments' names, each
# followed by a blank.
proc catalogue::usage {command} {
    set names {}
    foreach {name type} [dict get $command arguments] { append names "$name " }
    set letters [string repeat o [expr {[llength [dict get $command arguments]] / 2}]]
    return "$letters:[dict get $command name] $names"
}
