# Package qx, the facts in the SDK's catalogue: areas, records with their fields, calls, the 1093
# commands, what the profile in use says, for the rest of the package and for scripts. Relies on
# catalogue_data.tcl, which the build generates from the catalogue, on profile.tcl, and on
# wording.tcl for the descriptions of commands. An ensemble, whose subcommands are documented in
# commands.tcl.
#
# Type words: u8 u16 u32 i32 u64, a record's name, any of these with * for a pointer, void*; as a
# result also none, status, and low32 (the low half of a 64-bit number). An unknown name is an error
# with the code {QX UNKNOWN <kind> <name>}.

namespace eval qx::catalogue {
    # The variables of catalogue_data.tcl, each a dict:
    #   scalar_data  type word -> bytes, native spelling
    #   cell_data    type word -> word of commands
    #   area_data    area -> text, records, calls
    #   record_data  record -> as `record` gives it
    #   call_data    call -> as `call` gives it
    #   table_data   table -> as `table` gives it
    #   command_data command -> area, shape, owner, field, arguments, result
    # and those of the default profile, for profile.tcl: status_data, code_data, capacity_data,
    # family_data.

    namespace ensemble create
}

# The entry of a name in one of the dicts; an error if the name is unknown.
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
# name, offset in bytes, type, bit and width of a bit-field (width 0: not a bit-field), count of an
# array's elements (0: not an array), text, dumped, holds (mac, ipv4, ipv6, ip, family, key or
# empty), set_as (the type of its setter, if different), range (least and greatest meaningful value,
# if different from the type's), and view_by if a number of the record chooses its view (the path of
# the number, then numbers or code words, and views).
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

# An SDK function: text, area, arguments, each a dict: name, type, direction (in, out, inout), text,
# range (as for a field), counted_by (of an array: the argument with its size, else empty).
proc qx::catalogue::call {name} {
    variable call_data
    return [entry call $call_data $name]
}

# One argument of an SDK function.
proc qx::catalogue::call_argument {call name} {
    foreach argument [dict get [call $call] arguments] {
        if {[dict get $argument name] eq $name} { return $argument }
    }
    return -code error -errorcode [list QX UNKNOWN argument $name] "$call has no argument \"$name\""
}

# The names of the tables that qx::list knows, by area.
proc qx::catalogue::tables {} {
    variable table_data
    return [dict keys $table_data]
}

# A table: area; text; parts, each a dict: call, part (its name where there are several), walk
# (next, getnext or empty), indexes (argument -> {range LEAST GREATEST}, {ids KIND}, {capacity NAME}
# or codes), and the statuses that mean an empty place (empty), the end (ends) and a row without
# values (bare), absent (the flag that is 0 for an empty place); keys (arguments that have to be
# given); giver (the table whose rows have them, and a condition); instead (what can be asked if
# there is no call); for the graph node (noun, paths) and holds. catalogue/README.md describes the
# lines.
proc qx::catalogue::table {name} {
    variable table_data
    return [entry table $table_data $name]
}

# The SDK functions that take a pointer to a record or to a cell's type, in alphabetical order.
proc qx::catalogue::calls_with {type} {
    variable takers
    # An index of all types, built on the first call.
    if {![info exists takers]} {
        set takers {}
        foreach call [calls] {
            foreach argument [dict get [call $call] arguments] {
                set pointed [dict get $argument type]
                if {[is_pointer $pointed]} { dict lappend takers [target $pointed] $call }
            }
        }
    }
    if {![dict exists $takers $type]} return
    return [lsort -unique [dict get $takers $type]]
}

# The fields of this type in all records: record and field, alternating.
proc qx::catalogue::holders {type} {
    set result {}
    foreach holder [records] {
        foreach field [dict get [record $holder] fields] {
            if {[dict get $field type] eq $type} { lappend result $holder [dict get $field name] }
        }
    }
    return $result
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
    # An index of all owners, built on the first call.
    if {![info exists owned]} {
        foreach {name row} $command_data { dict lappend owned [lindex $row 2] $name }
    }
    return [entry owner $owned $owner]
}

# A command: its facts, plus the descriptions text (its purpose) and argument_texts (in order).
proc qx::catalogue::command {name} {
    set facts [facts $name]
    set texts {}
    foreach {argument type} [dict get $facts arguments] {
        lappend texts [qx::wording::argument_text $facts $argument]
    }
    return [dict replace $facts text [qx::wording::purpose $facts] argument_texts $texts]
}

# The facts of a command: name, area, shape (create, init, dump, set_scalar, set_bits, set_array,
# set_record, set_records, the same with get, array_create, array_set, array_get, cell_create,
# cell_get, cell_array_create, cell_array_get, cell_array_set, free, or call), owner (record, call,
# or type word of a cell), field, arguments (names and type words, alternating), result (a type
# word), usage (as shown in its error message).
proc qx::catalogue::facts {name} {
    variable command_data
    lassign [entry command $command_data $name] area shape owner field arguments result
    set usage $name
    foreach {argument type} $arguments { append usage " $argument" }
    return [dict create name $name area $area shape $shape owner $owner field $field \
        arguments $arguments result $result usage $usage]
}

# The field that an argument of a record's command sets; empty if there is none.
proc qx::catalogue::field_of {command argument} {
    foreach key {shape owner field} { set $key [dict get $command $key] }
    if {$field ne {} && $field eq $argument} { return [field $owner $field] }
    if {$shape eq "init" && $argument ne "cfg"} { return [field $owner $argument] }
    return
}

# The numbers that an argument accepts, a dict:
#   taken  least and greatest number; for an index of a field, those of its elements
#   every  the index that means all elements; empty if there is none
#   kept   the number of low bits that a bit-field keeps; 0 if it keeps all
#   meant  least and greatest meaningful number, if different from taken; else empty
proc qx::catalogue::bounds {command argument type} {
    foreach key {shape owner field} { set $key [dict get $command $key] }
    set bounds [dict create taken [range $type] every {} kept 0 meant {}]
    if {$field ne {} && $argument eq "idx"} {
        dict set bounds taken [list 0 [expr {[dict get [field $owner $field] count] - 1}]]
        if {[string match set_* $shape]} { dict set bounds every [lindex [range $type] 1] }
    } elseif {$shape eq "call"} {
        dict set bounds meant [dict get [call_argument $owner $argument] range]
    } elseif {[set filled [field_of $command $argument]] ne {}} {
        dict set bounds kept [dict get $filled width]
        if {[dict get $filled width] || [dict get $filled range] ne {}} {
            dict set bounds meant [field_range $filled]
        }
    }
    return $bounds
}

# The least and the greatest meaningful number of a field.
proc qx::catalogue::field_range {field} {
    if {[dict get $field range] ne {}} { return [dict get $field range] }
    return [range [dict get $field type] [dict get $field width]]
}

proc qx::catalogue::is_pointer {type} { string match {*[*]} $type }

# The target of a pointer type: a record, a cell's type word, or void.
proc qx::catalogue::target {type} { string range $type 0 end-1 }

# The native spelling of a type word: u16 -> unsigned short, qx_flow_t* -> qx_flow_t *.
proc qx::catalogue::native {type} {
    variable scalar_data
    if {[is_pointer $type]} { return "[native [target $type]] *" }
    if {[dict exists $scalar_data $type]} { return [lindex [dict get $scalar_data $type] 1] }
    return $type
}

# The size of a scalar or a record in bytes.
proc qx::catalogue::type_size {type} {
    variable scalar_data
    if {[dict exists $scalar_data $type]} { return [lindex [dict get $scalar_data $type] 0] }
    return [dict get [record $type] size]
}

# The least and the greatest number that a command accepts for a scalar type, or for `width` bits of
# it.
proc qx::catalogue::range {type {width 0}} {
    if {!$width} { set width [expr {8 * [type_size $type]}] }
    if {[string match i* $type]} {
        return [list [expr {-(1 << ($width - 1))}] [expr {(1 << ($width - 1)) - 1}]]
    }
    return [list 0 [expr {(1 << $width) - 1}]]
}

# The least and the greatest number that is converted without an error: more than the range for the
# two types that wrap.
proc qx::catalogue::converted {type} {
    lassign [range $type] least greatest
    set wrapped [lindex [range u32] 1]
    switch -- $type {
        i32 { set least -$wrapped; set greatest $wrapped }
        u64 { set least -$wrapped }
    }
    return [list $least $greatest]
}

# The word of a scalar type's cell commands: u8 -> uint8, as in qx_uint8_create.
proc qx::catalogue::cell {type} {
    variable cell_data
    return [entry cell $cell_data $type]
}

# ------------------------------------------------------------------- what the profile in use says

# All statuses, a dict: number -> name and meaning.
proc qx::catalogue::statuses {} { qx::profile::part statuses }

# The name of a status; empty for a number without one.
proc qx::catalogue::status_name {number} {
    set all [statuses]
    if {[dict exists $all $number]} { return [lindex [dict get $all $number] 0] }
}

# The meaning of a status; empty for a number without a name.
proc qx::catalogue::status_meaning {number} {
    set all [statuses]
    if {[dict exists $all $number]} { return [lindex [dict get $all $number] 1] }
}

# The number of a status given by name: QX_EXISTS -> 10.
proc qx::catalogue::status_number {name} {
    dict for {number status} [statuses] {
        if {[lindex $status 0] eq $name} { return $number }
    }
    return -code error -errorcode [list QX UNKNOWN status $name] "\"$name\" is not a status"
}

# The code words of a field or an argument, a dict: word -> number, as the profile lists them; empty
# if there are none. The owner is a record or an SDK function.
proc qx::catalogue::code_words {owner name} {
    set all [qx::profile::part codes]
    if {[dict exists $all $owner.$name]} { return [dict get $all $owner.$name] }
    if {![is_record $owner]} {
        call_argument $owner $name
    } elseif {[dict get [field $owner $name] holds] eq "family"} {
        # Without the line ends of catalogue_data.tcl.
        return [lrange [qx::profile::part families] 0 end]
    }
    return
}

# The word for a number; empty if it has none.
proc qx::catalogue::code_word {owner name number} {
    dict for {word each} [code_words $owner $name] {
        if {$each == $number} { return $word }
    }
}

# The number of a word; empty if it is not one of the code words.
proc qx::catalogue::code_number {owner name word} {
    set words [code_words $owner $name]
    if {[dict exists $words $word]} { return [dict get $words $word] }
}

# The entries that a table holds at most, or how many ports or devices there are; empty if the
# profile does not say.
proc qx::catalogue::capacity {name} {
    set all [qx::profile::part capacities]
    if {[dict exists $all $name]} { return [dict get $all $name] }
}
