# Package qx, the short way of qx::set: for each record a procedure that is made when it is first
# written. It knows every place and range beforehand and takes what qx::get gives, and dicts with
# some of its fields. Whatever else a dict holds makes it fail without a message: writing.tcl then
# goes the long way, which knows all forms and says what is wrong. Both make the same stores.

namespace eval qx::fast_writing {
    variable made {}    ;# record -> procedure
    variable number 0
    # Of the procedure being made: variable of a unit of bit-fields -> offset, width letter.
    variable units {}
    variable names 0    ;# its local variables so far
    variable letters {u8 c u16 s u32 i}
}

# The procedure that gives a record's bytes with the fields of a dict stored in them.
proc qx::fast_writing::writer {type} {
    variable made
    variable number
    variable units {}
    variable names 0
    if {[dict exists $made $type]} { return [dict get $made $type] }
    set body [record_script $type 0 values]
    set before {}
    set after {}
    dict for {name place} $units {
        foreach {offset letter} $place break
        append before "binary scan \$bytes @$offset${letter}u $name\nset old$name \$$name\n"
        # Untouched it stays out: another view of a union may have written there.
        append after "if {\$$name != \$old$name} {\nappend format @$offset$letter
            lappend numbers \$$name\n}\n"
    }
    append before "set format a[qx::catalogue::type_size $type]\nset numbers {}\n"
    append after "return \[eval \[linsert \$numbers 0 binary format \$format \$bytes\]\]\n"
    set name ::qx::fast_writing::writer_[incr number]
    proc $name {bytes values} $before$body$after
    dict set made $type $name
    return $name
}

proc qx::fast_writing::fresh {stem} {
    variable names
    return $stem[incr names]
}

# Script that stores the fields that the dict in a variable names.
proc qx::fast_writing::record_script {type base variable} {
    set record [qx::catalogue::record $type]
    set name [fresh name]
    set value [fresh value]
    set script "if {\[llength \$$variable\] & 1} error\n"
    if {[dict get $record kind] eq "union"} {
        # Several views have to be compared with each other.
        append script "if {\[llength \$$variable\] > 2} error\n"
    }
    set family {}
    foreach field [dict get $record fields] {
        if {[dict get $field holds] eq "family"} { set family [fresh family] }
    }
    if {$family ne {}} { append script "set $family {}\nset version$family {}\n" }
    append script "foreach {$name $value} \$$variable {\nswitch -exact -- \$$name {\n"
    foreach field [dict get $record fields] {
        append script "[dict get $field name] {\n[field_script $field $base $value $family]}\n"
    }
    append script "default error\n}\n}\n"
    if {$family ne {}} {
        append script "if {\$$family ne {} && \$version$family ne {}} {\n"
        append script "::qx::fast_writing::same_family \$$family \$version$family\n}\n"
    }
    return $script
}

proc qx::fast_writing::field_script {field base value family} {
    set type [dict get $field type]
    set count [dict get $field count]
    set at [expr {$base + [dict get $field offset]}]
    if {[qx::catalogue::is_record $type]} {
        if {$count} { return [records_script $type $at $count $value] }
        return [nested_script $type $at $value $family]
    }
    if {[dict get $field width]} { return [bits_script $field $at $value] }
    switch -- [dict get $field holds] {
        mac  { return [mac_script $at $value] }
        ip   { return [address_script $at $value {}] }
        ipv6 { return "error\n" }
        ipv4 {
            return "if {!\[string is integer -strict \$$value\]} {
                set $value \[::qx::address::ipv4_word \$$value\]\n}
                [scalar_script $type $at $value]"
        }
        family { return "set $family \$$value\n[scalar_script $type $at $value]" }
    }
    if {$count} { return [array_script $type $at $count $value] }
    return [scalar_script $type $at $value]
}

proc qx::fast_writing::range_script {type width value} {
    foreach {least greatest} [qx::catalogue::range $type $width] break
    return "if {\$$value < $least || \$$value > $greatest} error\n"
}

proc qx::fast_writing::scalar_script {type at value} {
    variable letters
    return "[range_script $type 0 $value]append format @$at[dict get $letters $type]
        lappend numbers \$$value\n"
}

proc qx::fast_writing::array_script {type at count value} {
    variable letters
    set each [fresh each]
    return "if {\[llength \$$value\] != $count} error
        foreach $each \$$value {\n[range_script $type 0 $each]}
        append format @$at[dict get $letters $type]$count\nlappend numbers \$$value\n"
}

proc qx::fast_writing::bits_script {field at value} {
    variable units
    variable letters
    set width [dict get $field width]
    set bit [dict get $field bit]
    set unit unit$at
    dict set units $unit [list $at [dict get $letters [dict get $field type]]]
    set mask [expr {((1 << $width) - 1) << $bit}]
    return "[range_script u32 $width $value]
        set $unit \[expr {\$$unit & ~$mask | (\$$value << $bit)}\]\n"
}

proc qx::fast_writing::mac_script {at value} {
    return "if {\[string match ??:??:??:??:??:?? \$$value\]} {
            append format @${at}H12\nlappend numbers \[string map {: {}} \$$value\]\n} else {
        [array_script u8 $at 6 $value]}\n"
}

proc qx::fast_writing::address_script {at value family} {
    set note [expr {$family eq {} ? {} : "set version$family \[lindex \$$value 0\]\n"}]
    set words [fresh words]
    return "set $words \$$value
        if {\[llength \$$value\] == 1} {
            set $value \[::qx::address::ip_words \$$value\]
            ${note}set $words \[lindex \$$value 1\]\n}
        [array_script u32 $at 4 $words]"
}

proc qx::fast_writing::nested_script {type at value family} {
    if {![qx::reading::is_address $type]} { return [record_script $type $at $value] }
    return "if {\[llength \$$value\] != 2} {\n[address_script $at $value $family]} else {
        [record_script $type $at $value]}\n"
}

proc qx::fast_writing::records_script {type at count value} {
    set script "if {\[llength \$$value\] != $count} error\n"
    set elements {}
    for {set index 0} {$index < $count} {incr index} { lappend elements [fresh element] }
    append script "foreach [list $elements] \$$value break\n"
    foreach element $elements {
        append script [record_script $type $at $element]
        incr at [qx::catalogue::type_size $type]
    }
    return $script
}

# An error if a family's number stands for another version of addresses.
proc qx::fast_writing::same_family {family version} {
    if {[dict exists $qx::address::families $family] &&
        [dict get $qx::address::families $family] != $version} { error version }
}
