# What the reference says about commands, in plain words without any markup: purpose, arguments with
# their ranges, result, notes, related commands. Pages and manuals only set it. Relies on
# tools/catalogue.tcl, whose catalogue has to be loaded.

namespace eval wording {
    # type word -> greatest value, or both ends
    variable ranges {
        u8  "0 to 255"
        u16 "0 to 65535"
        u32 "0 to 4294967295"
        i32 "-2147483648 to 2147483647"
        u64 "0 to 18446744073709551615"
    }
    variable all_commands {} ;# name -> the command
    variable takers          ;# record or cell type -> the calls that take a pointer to it
}

# Prepares the look-ups; to be called when the catalogue has been loaded.
proc wording::prepare {} {
    variable all_commands {}
    variable takers
    array unset takers
    foreach command [catalogue::commands] {
        dict set all_commands [dict get $command name] $command
    }
    foreach call [catalogue::calls] {
        foreach argument [dict get [catalogue::call $call] arguments] {
            set type [dict get $argument type]
            if {[is_pointer $type]} { lappend takers([target $type]) $call }
        }
    }
}

proc wording::is_pointer {type} { string match {*[*]} $type }
proc wording::target {type} { string trimright $type * }
proc wording::commands {} { variable all_commands; dict values $all_commands }
proc wording::command {name} { variable all_commands; dict get $all_commands $name }
proc wording::is_command {name} { variable all_commands; dict exists $all_commands $name }

# The calls that take a record or a cell of this type.
proc wording::calls_with {type} {
    variable takers
    if {![info exists takers($type)]} return
    return [lsort -unique $takers($type)]
}

# The records that hold one of this type: a list of record and field.
proc wording::holders_of {record} {
    set result {}
    foreach holder [catalogue::records] {
        foreach field [dict get [catalogue::record $holder] fields] {
            if {[dict get $field type] eq $record} { lappend result $holder [dict get $field name] }
        }
    }
    return $result
}

# A field's type as people write it: u8[6], u32:4, qx_vlan_t[2].
proc wording::field_type {field} {
    set type [dict get $field type]
    if {[dict get $field width]} { return "$type:[dict get $field width]" }
    if {[dict get $field count]} { return "$type\[[dict get $field count]\]" }
    return $type
}

proc wording::usage_words {command} {
    set words [dict get $command name]
    foreach {name type} [dict get $command arguments] { lappend words $name }
    return [join $words]
}

# The words in which a command is described, a dict: purpose, arguments (a list of dicts: name,
# type, range, text), result, notes (a list), related (a list of command names).
proc wording::describe {command} {
    set shape [dict get $command shape]
    set arguments {}
    foreach {name type} [dict get $command arguments] {
        lappend arguments [dict create name $name type [catalogue::native $type] \
            range [range $command $name $type] text [argument_text $command $name $type]]
    }
    return [dict create purpose [purpose $command] arguments $arguments \
        result [result $command] notes [notes $command] related [related $command]]
}

# ------------------------------------------------------------------------------------ purpose

proc wording::purpose {command} {
    set owner [dict get $command owner]
    set field [dict get $command field]
    if {$field ne {}} {
        set name [dict get $field name]
        set text [dict get $field text]
        set part [expr {[dict get $field count] ? "one element of $name" : $name}]
    }
    switch -glob -- [dict get $command shape] {
        create            { return "make one $owner, all its bytes 0" }
        init              { return "set the fields of a $owner in one go" }
        dump              { return "print a $owner on standard output, a line for each value" }
        set_*             { return "set $part of a $owner: $text" }
        get_*             { return "read $part of a $owner: $text" }
        array_create      { return "make an array of $owner records, all their bytes 0" }
        array_set         { return "copy a record into an array of $owner records" }
        array_get         { return "find one record in an array of $owner records" }
        call              { return [dict get [catalogue::call $owner] text] }
        free              { return "release a block that a command ending in _create has made" }
        cell_create       { return "make a cell that holds one [catalogue::native $owner]" }
        cell_get          { return "read a cell of one [catalogue::native $owner]" }
        cell_array_create { return "make an array of [catalogue::native $owner] cells, all alike" }
        cell_array_get    { return "read one element of an array of [catalogue::native $owner]" }
        cell_array_set    { return "set one element of an array of [catalogue::native $owner]" }
    }
    error "no words for the shape [dict get $command shape]"
}

# ---------------------------------------------------------------------------------- arguments

proc wording::range {command name type} {
    variable ranges
    if {$type eq "void*"} { return "any handle or NULL" }
    if {[is_pointer $type]} { return "handle or NULL" }
    set field [dict get $command field]
    if {$field ne {} && $name eq "idx"} {
        set last [expr {[dict get $field count] - 1}]
        if {[string match set_* [dict get $command shape]]} {
            return "0 to $last, or 4294967295 for every element"
        }
        return "0 to $last"
    }
    set range [dict get $ranges $type]
    set stored [field_of $command $name]
    if {$stored ne {} && [dict get $stored width]} {
        set width [dict get $stored width]
        return "$range; the lowest [plural $width bit] [expr {$width == 1 ? "is" : "are"}] kept"
    }
    return $range
}

# The field that an argument of a record command gives, or nothing.
proc wording::field_of {command name} {
    set field [dict get $command field]
    if {$field ne {}} { return [expr {$name eq [dict get $field name] ? $field : {}}] }
    if {[dict get $command shape] ne "init"} return
    foreach field [dict get [catalogue::record [dict get $command owner]] fields] {
        if {[dict get $field name] eq $name} { return $field }
    }
}

proc wording::argument_text {command name type} {
    set shape [dict get $command shape]
    if {$shape eq "call"} {
        foreach argument [dict get [catalogue::call [dict get $command owner]] arguments] {
            if {[dict get $argument name] eq $name} { return [dict get $argument text] }
        }
    }
    set field [field_of $command $name]
    if {$field ne {} && ![string match get_* $shape]} {
        set copied [expr {[is_pointer $type] ? "; copied" : {}}]
        return [dict get $field text]$copied
    }
    switch -- $name {
        cfg   { return "the record" }
        arr   { return "the first record of the array" }
        item  { return "the record to copy" }
        ptr   { return [expr {$shape eq "cell_get" ? "the cell" : "the first cell of the array"}] }
        size  { return "how many" }
        idx   {
            return [expr {$field eq {} && [dict get $command field] eq {}
                ? "which record, from 0; not checked" : "which element"}]
        }
        index { return "which element, from 0; not checked" }
        data  { return [expr {$shape eq "free" ? "the block" : "the value"}] }
    }
    error "no words for the argument $name of [dict get $command name]"
}

proc wording::direction {command name} {
    if {[dict get $command shape] ne "call"} return
    foreach argument [dict get [catalogue::call [dict get $command owner]] arguments] {
        if {[dict get $argument name] eq $name && [is_pointer [dict get $argument type]]} {
            return [dict get $argument direction]
        }
    }
}

proc wording::plural {count noun} { return "$count $noun[expr {$count == 1 ? {} : {s}}]" }

# ------------------------------------------------------------------------------------- result

proc wording::result {command} {
    variable ranges
    set type [dict get $command result]
    set shape [dict get $command shape]
    switch -- $type {
        none   { return "none" }
        status { return "the SDK's status, 0 to 65535; 0 is success" }
        low32  {
            return "the low 32 bits, widened with their sign to 64; the whole value is printed"
        }
    }
    if {![is_pointer $type]} {
        set field [dict get $command field]
        set range [dict get $ranges $type]
        if {$field ne {} && [dict get $field width]} {
            set range "0 to [expr {(1 << [dict get $field width]) - 1}]"
        }
        return "[catalogue::native $type], $range"
    }
    set handle "a handle of type [catalogue::native $type]"
    switch -glob -- $shape {
        get_*      { return "$handle; it points into the record and is not to be freed" }
        array_get  { return "$handle; it points into the array and is not to be freed" }
        *create    { return "$handle, to be released with qx_data_free; NULL without memory" }
    }
    return $handle
}

# -------------------------------------------------------------------------------------- notes

proc wording::notes {command} {
    set notes {}
    set field [dict get $command field]
    switch -glob -- [dict get $command shape] {
        init {
            set arrays {}
            foreach each [dict get [catalogue::record [dict get $command owner]] fields] {
                if {[dict get $each count]} { lappend arrays [dict get $each name] }
            }
            if {$arrays ne {}} { lappend notes "Keeps its value: [join $arrays {, }]." }
            lappend notes "If a handle is NULL, nothing is written."
        }
        dump {
            foreach each [dict get [catalogue::record [dict get $command owner]] fields] {
                if {[dict get $each dumped]} continue
                lappend notes "Does not print [dict get $each name]."
            }
        }
        set_array - set_records {
            lappend notes \
                "Another index prints \"[dict get $command name] bad Index\" and sets nothing."
        }
        get_array   { lappend notes "Another index gives 0." }
        get_records { lappend notes "Another index gives NULL." }
    }
    if {[string match set_* [dict get $command shape]] && [dict get $field set_as] ne {}} {
        set bits [expr {8 * [catalogue::type_size [dict get $field type]]}]
        set given [expr {8 * [catalogue::type_size [dict get $field set_as]]}]
        lappend notes "The element has $bits bits; it is set from $given."
    }
    return $notes
}

# ------------------------------------------------------------------------------------ related

# Commands that one is likely to want next, existing ones only, without the command itself.
proc wording::related {command} {
    set names {}
    foreach name [candidates $command] {
        if {[is_command $name] && $name ne [dict get $command name] && $name ni $names} {
            lappend names $name
        }
    }
    return $names
}

proc wording::candidates {command} {
    set owner [dict get $command owner]
    set shape [dict get $command shape]
    switch -glob -- $shape {
        call   { return [around_call $command] }
        free   { return {} }
        cell_* { return [around_cell $owner] }
    }
    set stem [catalogue::stem $owner]
    set field [dict get $command field]
    if {$field ne {}} {
        set name [dict get $field name]
        set result [list ${stem}_set_$name ${stem}_get_$name]
        if {[catalogue::is_record [dict get $field type]]} {
            lappend result [catalogue::stem [dict get $field type]]_create
        }
        return [concat $result ${stem}_create ${stem}_dump]
    }
    if {[string match array_* $shape]} {
        return [concat [prefixed ${stem}_array_ create set get] ${stem}_create qx_data_free]
    }
    return [concat [prefixed ${stem}_ create init dump array_create] qx_data_free \
        [calls_with $owner]]
}

proc wording::prefixed {prefix args} {
    set result {}
    foreach word $args { lappend result $prefix$word }
    return $result
}

proc wording::around_cell {type} {
    set result {}
    foreach command [commands] {
        if {[string match cell_* [dict get $command shape]] && [dict get $command owner] eq $type} {
            lappend result [dict get $command name]
        }
    }
    return [concat $result qx_data_free]
}

# What makes and reads its records and cells, the calls with the same records, and those named
# alike: qx_qos_dscp_map_get for qx_qos_dscp_map_set.
proc wording::around_call {command} {
    set result {}
    foreach {name type} [dict get $command arguments] {
        if {![is_pointer $type]} continue
        if {[catalogue::is_record [target $type]]} {
            lappend result {*}[prefixed [catalogue::stem [target $type]]_ create init dump] \
                {*}[calls_with [target $type]]
        } else {
            lappend result {*}[lrange [around_cell [target $type]] 0 1]
        }
    }
    return [concat $result [named_alike [dict get $command name]]]
}

# The calls that share most words at the beginning of their names with this one.
proc wording::named_alike {call} {
    set start $call
    while {[regexp {^(qx_.+)_[^_]+$} $start -> start]} {
        set result {}
        foreach other [catalogue::calls] {
            if {$other ne $call && ($other eq $start || [string match ${start}_* $other])} {
                lappend result $other
            }
        }
        if {$result ne {}} { return $result }
    }
}
