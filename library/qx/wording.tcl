# Package qx, the descriptions of commands: purpose, arguments with their ranges, result, notes,
# related commands. Help, Tab, the pages and the manuals use these texts and have none of their own;
# lint checks the same bounds. Relies on catalogue.tcl.
#
# A command is a dict as returned by qx::catalogue::facts. All texts are plain, without markup.

namespace eval qx::wording {}

# A count with its noun: no records, 1 record, 2 records.
proc qx::wording::counted {count noun} {
    return "[expr {$count ? $count : "no"}] $noun[expr {$count == 1 ? "" : "s"}]"
}

# A field's type in short form: u8[6], u32:4, qx_vlan_t[2].
proc qx::wording::field_type {field} {
    set type [dict get $field type]
    if {[dict get $field width]} { return "$type:[dict get $field width]" }
    if {[dict get $field count]} { return "$type\[[dict get $field count]\]" }
    return $type
}

# The description of a command, a dict: purpose, arguments (a list of dicts: name, type, range,
# text, direction, values), result, notes (a list), statuses (empty, or as by `statuses`), related
# (a list of command names).
proc qx::wording::describe {command} {
    set arguments {}
    foreach {name type} [dict get $command arguments] {
        lappend arguments [dict create name $name type [qx::catalogue::native $type] \
            range [range $command $name $type] text [argument_text $command $name] \
            direction [direction $command $name] values [argument_values $command $name]]
    }
    return [dict create purpose [purpose $command] arguments $arguments \
        result [result $command] notes [notes $command] statuses [statuses $command] \
        related [related $command]]
}

# ------------------------------------------------------------------------------------ purpose

proc qx::wording::purpose {command} {
    set owner [dict get $command owner]
    set name [dict get $command field]
    set cell {}
    if {$name ne {}} {
        set field [qx::catalogue::field $owner $name]
        set text [dict get $field text]
        set part [expr {[dict get $field count] ? "one element of $name" : $name}]
    }
    if {[string match cell_* [dict get $command shape]]} { set cell [qx::catalogue::native $owner] }
    switch -glob -- [dict get $command shape] {
        create            { return "make one $owner, all its bytes 0" }
        init              { return "set the fields of a $owner in one go" }
        dump              { return "print a $owner on standard output, a line for each value" }
        set_*             { return "set $part of a $owner: $text" }
        get_*             { return "read $part of a $owner: $text" }
        array_create      { return "make an array of $owner records, all their bytes 0" }
        array_set         { return "copy a record into an array of $owner records" }
        array_get         { return "find one record in an array of $owner records" }
        call              { return [dict get [qx::catalogue::call $owner] text] }
        free              { return "release a block that a command ending in _create has made" }
        cell_create       { return "make a cell that holds one $cell" }
        cell_get          { return "read a cell of one $cell" }
        cell_array_create { return "make an array of $cell cells, all alike" }
        cell_array_get    { return "read one element of an array of $cell" }
        cell_array_set    { return "set one element of an array of $cell" }
    }
    error "no words for the shape [dict get $command shape]"
}

# ---------------------------------------------------------------------------------- arguments

# The words that an argument accepts.
proc qx::wording::range {command name type} {
    if {$type eq "void*"} { return "any handle or NULL" }
    if {[qx::catalogue::is_pointer $type]} { return "handle or NULL" }
    set bounds [qx::catalogue::bounds $command $name $type]
    set text [between [dict get $bounds taken]]
    if {[dict get $bounds every] ne {}} {
        append text ", or [dict get $bounds every] for every element"
    }
    set kept [dict get $bounds kept]
    if {$kept} {
        append text "; the lowest [counted $kept bit] [expr {$kept == 1 ? "is" : "are"}] kept"
    }
    return $text
}

proc qx::wording::between {pair} { return "[lindex $pair 0] to [lindex $pair 1]" }

# A short hint for a number: its meaningful values. The command may accept more.
proc qx::wording::hint {command name type} {
    set meant [dict get [qx::catalogue::bounds $command $name $type] meant]
    if {$meant ne {}} { return [short [between $meant]] }
    return [short [range $command $name $type]]
}
# The same for a field in a dict.
proc qx::wording::field_hint {field} { short [between [qx::catalogue::field_range $field]] }
proc qx::wording::short {range} { string map {{ to } ..} $range }

# The meaning of an argument.
proc qx::wording::argument_text {command name} {
    set shape [dict get $command shape]
    if {$shape eq "call"} {
        return [dict get [qx::catalogue::call_argument [dict get $command owner] $name] text]
    }
    set field [qx::catalogue::field_of $command $name]
    if {$field ne {}} {
        set copied [expr {[qx::catalogue::is_record [dict get $field type]] ? "; copied" : ""}]
        return [dict get $field text]$copied
    }
    switch -- $name {
        cfg   { return "the record" }
        arr   { return "the first record of the array" }
        item  { return "the record to copy" }
        ptr   { return [expr {$shape eq "cell_get" ? "the cell" : "the first cell of the array"}] }
        size  { return "how many" }
        idx   {
            if {[dict get $command field] ne {}} { return "which element" }
            return "which record, from 0; not checked"
        }
        index { return "which element, from 0; not checked" }
        data  { return [expr {$shape eq "free" ? "the block" : "the value"}] }
    }
    error "no words for the argument $name of [dict get $command name]"
}

# Whether a call reads or writes a pointer's target: in, out or inout; empty for other arguments.
proc qx::wording::direction {command name} {
    if {[dict get $command shape] ne "call"} return
    set argument [qx::catalogue::call_argument [dict get $command owner] $name]
    if {![qx::catalogue::is_pointer [dict get $argument type]]} return
    return [dict get $argument direction]
}

# What certain values of a field or an argument mean: value and meaning, alternating. A number with
# a code word begins with it.
proc qx::wording::values {owner name} {
    set values {}
    foreach {word number} [qx::catalogue::code_words $owner $name] { dict set values $number $word }
    foreach {value meaning} [qx::catalogue::special $owner $name] {
        if {[dict exists $values $value]} { set meaning "[dict get $values $value]: $meaning" }
        dict set values $value $meaning
    }
    return $values
}

proc qx::wording::argument_values {command name} {
    set owner [dict get $command owner]
    if {[dict get $command shape] eq "call"} { return [values $owner $name] }
    set field [qx::catalogue::field_of $command $name]
    if {$field eq {}} return
    return [values $owner [dict get $field name]]
}

# The codes of a field, or of an argument of an SDK function, in the profile in use: 0 in, 1 out;
# empty if it has none.
proc qx::wording::codes {owner name} {
    set codes {}
    dict for {word number} [qx::catalogue::code_words $owner $name] {
        lappend codes "$number $word"
    }
    return [join $codes {, }]
}

# The same for an argument of a command.
proc qx::wording::argument_codes {command name} {
    set owner [dict get $command owner]
    if {[dict get $command shape] eq "call"} { return [codes $owner $name] }
    set field [qx::catalogue::field_of $command $name]
    if {$field ne {}} { return [codes $owner [dict get $field name]] }
}

# ------------------------------------------------------------------------------------- result

proc qx::wording::result {command} {
    set type [dict get $command result]
    switch -- $type {
        none   { return "none" }
        status {
            set numbers [between [qx::catalogue::range u16]]
            return "the SDK's status, $numbers; 0 is success"
        }
        low32  {
            return "the low 32 bits, sign-extended to 64; the whole value is printed"
        }
    }
    if {![qx::catalogue::is_pointer $type]} {
        set width 0
        foreach key {owner field} { set $key [dict get $command $key] }
        if {$field ne {}} { set width [dict get [qx::catalogue::field $owner $field] width] }
        set numbers [between [qx::catalogue::range $type $width]]
        return "[qx::catalogue::native $type], $numbers"
    }
    set handle "a handle of type [qx::catalogue::native $type]"
    switch -glob -- [dict get $command shape] {
        get_*      { return "$handle; it points into the record and must not be freed" }
        array_get  { return "$handle; it points into the array and must not be freed" }
        *create    { return "$handle, to be released with qx_data_free; NULL if out of memory" }
    }
    return $handle
}

# -------------------------------------------------------------------------------------- notes

proc qx::wording::notes {command} {
    set notes {}
    foreach key {name shape owner field} { set $key [dict get $command $key] }
    switch -glob -- $shape {
        init {
            set arrays {}
            foreach each [dict get [qx::catalogue::record $owner] fields] {
                if {[dict get $each count]} { lappend arrays [dict get $each name] }
            }
            if {$arrays ne {}} { lappend notes "Keeps its value: [join $arrays {, }]." }
            lappend notes "If a handle is NULL, nothing is written."
        }
        dump {
            foreach each [dict get [qx::catalogue::record $owner] fields] {
                if {[dict get $each dumped]} continue
                lappend notes "Does not print [dict get $each name]."
            }
        }
        set_array - set_records {
            lappend notes "Another index prints \"$name bad Index\" and sets nothing."
        }
        get_array   { lappend notes "Another index gives 0." }
        get_records { lappend notes "Another index gives NULL." }
    }
    if {![string match set_* $shape]} { return $notes }
    set facts [qx::catalogue::field $owner $field]
    if {[dict get $facts set_as] ne {}} {
        set bits [expr {8 * [qx::catalogue::type_size [dict get $facts type]]}]
        set given [expr {8 * [qx::catalogue::type_size [dict get $facts set_as]]}]
        lappend notes "The element has $bits bits; it is set from $given."
    }
    return $notes
}

# What the simulated device answers to a call, as qx::catalogue::answers has it; empty for other
# commands.
proc qx::wording::statuses {command} {
    if {[dict get $command shape] ne "call"} return
    return [qx::catalogue::answers [dict get $command owner]]
}

# A status with its number and meaning, if the profile in use has it.
proc qx::wording::status {name} {
    if {[catch { qx::catalogue::status_number $name } number]} {
        return [list $name {} "not a status of this profile"]
    }
    return [list $name $number [qx::catalogue::status_meaning $number]]
}

# ------------------------------------------------------------------------------------ related

# Commands that the user is likely to need next; only existing ones, and not the command itself.
proc qx::wording::related {command} {
    set names {}
    foreach name [candidates $command] {
        if {[qx::catalogue::is_command $name] && $name ne [dict get $command name]
                && $name ni $names} { lappend names $name }
    }
    return $names
}

proc qx::wording::candidates {command} {
    foreach key {owner shape field} { set $key [dict get $command $key] }
    switch -glob -- $shape {
        call   { return [around_call $command] }
        free   { return {qx_uint32_create qx_flow_create} }
        cell_* { return [concat [qx::catalogue::commands_of $owner] qx_data_free] }
    }
    set stem [qx::catalogue::stem $owner]
    if {$field ne {}} {
        set result [list ${stem}_set_$field ${stem}_get_$field]
        set type [dict get [qx::catalogue::field $owner $field] type]
        if {[qx::catalogue::is_record $type]} {
            lappend result [qx::catalogue::stem $type]_create
        }
        return [concat $result ${stem}_create ${stem}_dump]
    }
    if {[string match array_* $shape]} {
        return [concat [prefixed ${stem}_array_ create set get] ${stem}_create qx_data_free]
    }
    return [concat [prefixed ${stem}_ create init dump array_create] qx_data_free \
        [qx::catalogue::calls_with $owner]]
}

proc qx::wording::prefixed {prefix args} {
    set result {}
    foreach word $args { lappend result $prefix$word }
    return $result
}

# The commands that create and read its records and cells, the calls with the same records, and
# calls with similar names: qx_qos_dscp_map_get for qx_qos_dscp_map_set.
proc qx::wording::around_call {command} {
    set result {}
    foreach {name type} [dict get $command arguments] {
        if {![qx::catalogue::is_pointer $type]} continue
        set target [qx::catalogue::target $type]
        if {[qx::catalogue::is_record $target]} {
            set stem [qx::catalogue::stem $target]
            set result [concat $result [prefixed ${stem}_ create init dump] \
                [qx::catalogue::calls_with $target]]
        } else {
            set result [concat $result [lrange [qx::catalogue::commands_of $target] 0 1]]
        }
    }
    return [concat $result [named_alike [dict get $command name]]]
}

# The calls whose names share the longest beginning with this one's.
proc qx::wording::named_alike {call} {
    set start $call
    while {[regexp {^(qx_.+)_[^_]+$} $start -> start]} {
        set result {}
        foreach other [qx::catalogue::calls] {
            if {$other ne $call && ($other eq $start || [string match ${start}_* $other])} {
                lappend result $other
            }
        }
        if {$result ne {}} { return $result }
    }
}
