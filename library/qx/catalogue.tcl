# Package qx, what the SDK's catalogue says: areas, records with their fields, calls, the 1093
# commands, the statuses of the simulated device. The other parts of the package, and scripts, ask
# here. Relies on catalogue_data.tcl beside this file, which the build writes from the catalogue.
#
# Type words: u8 u16 u32 i32 u64, a record's name, either with * for a pointer, void*; as a result
# also none, status, and low32 (the low half of a 64-bit number). Unknown names are errors {QX
# UNKNOWN <kind> <name>}.

namespace eval qx::catalogue {
    # The variables of catalogue_data.tcl, each a dict:
    #   scalar_data  type word -> bytes, native spelling cell_data  type word -> word of commands
    #   area_data    area -> text, records, calls         record_data  record -> as `record` has it
    #   call_data    call -> as `call` gives it                 status_data  number -> name, meaning
    #   command_data command -> area, shape, owner, field, arguments, result
    # What a command of a record or a cell does, by its shape: %r record, %f field, %t the field's
    # meaning.
    variable shape_texts {
        create             {make a zeroed %r}
        init               {fill the fields of a %r in one go, arrays excepted}
        dump               {print the fields of a %r}
        array_create       {make an array of zeroed %r records}
        array_set          {copy a %r into an array}
        array_get          {a %r of an array, in place}
        set_scalar         {set %f: %t}
        get_scalar         {read %f: %t}
        set_bits           {set %f: %t}
        get_bits           {read %f: %t}
        set_array          {set an element of %f: %t}
        get_array          {read an element of %f: %t}
        set_record         {copy a record into %f: %t}
        get_record         {%f, in place: %t}
        set_records        {copy a record into an element of %f: %t}
        get_records        {an element of %f, in place: %t}
        cell_create        {make a cell of type %r with a value}
        cell_get           {read a cell of type %r}
        cell_array_create  {make an array of cells of type %r, all with one value}
        cell_array_get     {read a cell of an array of type %r}
        cell_array_set     {write a cell of an array of type %r}
        free               {release a block that a _create command made}
    }
    # What an argument of such a command carries; those of fields have the field's meaning.
    variable argument_texts {
        cfg   {the record}
        arr   {the first record of the array}
        item  {the record to copy}
        idx   {number of the element, from 0; 4294967295 sets every element}
        index {number of the cell, from 0}
        size  {number of elements}
        ptr   {the cell, or the first of an array}
        data  {the value}
    }
}

source [file join [file dirname [info script]] catalogue_data.tcl]

# The entry of a name in one of the dicts; an unknown name is an error.
proc qx::catalogue::entry {kind data name} {
    if {[dict exists $data $name]} { return [dict get $data $name] }
    return -code error -errorcode [list QX UNKNOWN $kind $name] "there is no $kind \"$name\""
}

# The names of all areas, in the order of the command table.
proc qx::catalogue::areas {} {
    variable area_data
    return [dict keys $area_data]
}

# An area: text, records, calls.
proc qx::catalogue::area {name} {
    variable area_data
    return [entry area $area_data $name]
}

# The names of all records, in the order of the command table.
proc qx::catalogue::records {} {
    variable record_data
    return [dict keys $record_data]
}

# A record: kind (record or union), size in bytes, packed, area, text, fields. Each field is a dict:
# name, offset in bytes, type, bit and width of a bit-field (width 0: it is none), count of an
# array's elements (0: it is no array), text, dumped, holds (mac, ipv4, ipv6, ip, family, key
# or nothing), set_as (the type of its setter, if another).
proc qx::catalogue::record {type} {
    variable record_data
    return [entry record $record_data $type]
}

proc qx::catalogue::is_record {type} {
    variable record_data
    return [dict exists $record_data $type]
}

# One field of a record.
proc qx::catalogue::field {type name} {
    foreach field [dict get [record $type] fields] {
        if {[dict get $field name] eq $name} { return $field }
    }
    return -code error -errorcode [list QX UNKNOWN field $name] "$type has no field \"$name\""
}

# The stem of a record's commands: its name less a final _t.
proc qx::catalogue::stem {type} { regsub {_t$} $type {} }

# The names of all SDK functions, in the order of the command table.
proc qx::catalogue::calls {} {
    variable call_data
    return [dict keys $call_data]
}

# An SDK function: text, area, arguments, each a dict: name, type, direction (in, out, inout), text.
proc qx::catalogue::call {name} {
    variable call_data
    return [entry call $call_data $name]
}

# All command names, in table order.
proc qx::catalogue::commands {} {
    variable command_data
    return [dict keys $command_data]
}

proc qx::catalogue::is_command {name} {
    variable command_data
    return [dict exists $command_data $name]
}

# The commands of a record, a call or a cell type, in table order.
proc qx::catalogue::commands_of {owner} {
    variable command_data
    variable owned
    # An index of all owners, made when the first is asked for.
    if {![info exists owned]} {
        foreach {name row} $command_data { dict lappend owned [lindex $row 2] $name }
    }
    return [entry owner $owned $owner]
}

# A command: name, area, shape (create, init, dump, set_scalar ... as in shape_texts, or call),
# owner (record, call, or type word of a cell), field, arguments (names and type words,
# alternating), result (a type word), usage (as its message shows it), text, argument_texts (in
# order).
proc qx::catalogue::command {name} {
    variable command_data
    foreach {area shape owner field arguments result} [entry command $command_data $name] break
    set texts {}
    set usage $name
    foreach {argument type} $arguments {
        append usage " $argument"
        lappend texts [argument_text $shape $owner $field $argument]
    }
    return [dict create name $name area $area shape $shape owner $owner field $field \
        arguments $arguments result $result usage $usage text [command_text $shape $owner $field] \
        argument_texts $texts]
}

proc qx::catalogue::command_text {shape owner field} {
    variable shape_texts
    if {$shape eq "call"} { return [dict get [call $owner] text] }
    set meaning {}
    if {$field ne {}} { set meaning [dict get [field $owner $field] text] }
    if {[is_record $owner]} { set shown $owner } else { set shown [native $owner] }
    return [string map [list %r $shown %f $field %t $meaning] [dict get $shape_texts $shape]]
}

proc qx::catalogue::argument_text {shape owner field argument} {
    variable argument_texts
    if {$shape eq "call"} {
        foreach each [dict get [call $owner] arguments] {
            if {[dict get $each name] eq $argument} { return [dict get $each text] }
        }
    }
    # A field may be named like one of the others.
    if {$field eq $argument} { return [dict get [field $owner $field] text] }
    if {$shape eq "init" && $argument ne "cfg"} { return [dict get [field $owner $argument] text] }
    if {$shape eq "free"} { return "the block's handle, of any type" }
    if {$argument eq "idx"} {
        switch -glob -- $shape {
            array_*   { return "number of the element, from 0" }
            get_*     { return "number of the element, from 0" }
        }
    }
    return [dict get $argument_texts $argument]
}

# The native spelling of a type word: u16 -> unsigned short, qx_flow_t* -> qx_flow_t *.
proc qx::catalogue::native {type} {
    variable scalar_data
    if {[string match {*[*]} $type]} { return "[native [string range $type 0 end-1]] *" }
    if {[dict exists $scalar_data $type]} { return [lindex [dict get $scalar_data $type] 1] }
    return $type
}

# Bytes of a scalar or a record.
proc qx::catalogue::type_size {type} {
    variable scalar_data
    if {[dict exists $scalar_data $type]} { return [lindex [dict get $scalar_data $type] 0] }
    return [dict get [record $type] size]
}

# The least and the greatest number that a command takes for a scalar type, or for so many bits of
# it.
proc qx::catalogue::range {type {width 0}} {
    if {!$width} { set width [expr {8 * [type_size $type]}] }
    if {[string match i* $type]} {
        return [list [expr {-(1 << ($width - 1))}] [expr {(1 << ($width - 1)) - 1}]]
    }
    return [list 0 [expr {(1 << $width) - 1}]]
}

# The word of a scalar type's cell commands: u8 -> uint8, as in qx_uint8_create.
proc qx::catalogue::cell {type} {
    variable cell_data
    return [entry cell $cell_data $type]
}

# All statuses of the simulated device, a dict: number -> name and meaning. Those of a board's SDK
# may differ.
proc qx::catalogue::statuses {} {
    variable status_data
    return $status_data
}

# The name of a status; empty for a number without one.
proc qx::catalogue::status_name {number} {
    variable status_data
    if {![dict exists $status_data $number]} return
    return [lindex [dict get $status_data $number] 0]
}

# What a status means; empty for a number without a name.
proc qx::catalogue::status_meaning {number} {
    variable status_data
    if {![dict exists $status_data $number]} return
    return [lindex [dict get $status_data $number] 1]
}

# ------------------------------------------------------------------------------- nearest names

# The names of a list that are most like a word, the nearest first.
proc qx::catalogue::nearest {word names {count 3}} {
    set rows {}
    set limit 1000
    foreach name $names {
        # Words of other lengths differ by that at least.
        if {abs([string length $name] - [string length $word]) > $limit} continue
        set away [distance $word $name]
        if {$away > $limit} continue
        lappend rows [list $away $name]
        set rows [lrange [lsort -integer -index 0 $rows] 0 $count-1]
        if {[llength $rows] == $count} { set limit [expr {[lindex $rows end 0] - 1}] }
    }
    set result {}
    foreach row $rows { lappend result [lindex $row 1] }
    return $result
}

# How many letters have to be added, dropped, changed or swapped with their neighbours. What both
# words begin and end with costs nothing and is not looked at.
proc qx::catalogue::distance {from to} {
    set first 0
    while {$first < [string length $from] && $first < [string length $to] &&
           [string index $from $first] eq [string index $to $first]} { incr first }
    set from [string range $from $first end]
    set to [string range $to $first end]
    while {$from ne {} && $to ne {} && [string index $from end] eq [string index $to end]} {
        set from [string range $from 0 end-1]
        set to [string range $to 0 end-1]
    }
    set row {}
    for {set column 0} {$column <= [string length $to]} {incr column} { lappend row $column }
    set before {}
    set last_letter {}
    set letters [split $to {}]
    set number 0
    foreach letter [split $from {}] {
        set next [list [incr number]]
        set column 0
        set left {}
        foreach other $letters {
            set changed [expr {[lindex $row $column] + ($letter ne $other)}]
            set cost [expr {min($changed, [lindex $next $column] + 1,
                [lindex $row [expr {$column + 1}]] + 1)}]
            if {$column && $before ne {} && $letter eq $left && $other eq $last_letter} {
                set cost [expr {min($cost, [lindex $before [expr {$column - 1}]] + 1)}]
            }
            lappend next $cost
            set left $other
            incr column
        }
        set before $row
        set row $next
        set last_letter $letter
    }
    return [lindex $row end]
}
