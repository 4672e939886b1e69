# Package qx, qx::lint on records as data: finds what qx::set and qx::call would refuse in values
# that stand in the script, in the words of their errors. Relies on catalogue.tcl and
# script_parser.tcl.
#
# A value is what lint knows of a word (see lint.tcl): {constant text line at}, {list values} with
# a value for each element, or anything else, which is not checked. Left to qx::set are views that
# contradict each other, families that do not fit their addresses, and padding.

namespace eval qx::lint::records {
    variable mistakes {} ;# line, or empty if it is that of the command, and text of each
    variable secret 0    ;# whether the field is a key, which messages do not show
}

# The mistakes in a value for a record of a type, as a list of lines and texts. `place` names an
# argument of a call; without it places begin with a field.
proc qx::lint::records::in_record {type value {place {}}} {
    variable mistakes {}
    variable secret 0
    record $type $value $place
    return $mistakes
}

# The same for paths and values, alternating.
proc qx::lint::records::in_paths {type values} {
    variable mistakes {}
    set seen {}
    foreach {path value} $values {
        set name [lindex $path 1]
        if {[lindex $path 0] ne "constant"} continue
        if {$name in $seen} { wrong $path $name "named twice" }
        lappend seen $name
        variable secret 0
        if {[set target [follow $type $path]] eq {}} continue
        lassign $target owner field index
        if {$index eq {}} {
            field $owner $field $value $name
        } elseif {[qx::catalogue::is_record [dict get $field type]]} {
            record [dict get $field type] $value $name
        } else {
            set secret [expr {[dict get $field holds] eq "key"}]
            number $owner $field $value $name
        }
    }
    return $mistakes
}

# The mistakes in a path of a record.
proc qx::lint::records::in_path {type path} {
    variable mistakes {}
    if {[lindex $path 0] eq "constant"} { follow $type $path }
    return $mistakes
}

proc qx::lint::records::wrong {value place text} {
    variable mistakes
    set line {}
    if {[lindex $value 0] eq "constant"} { set line [lindex $value 2] }
    lappend mistakes $line [expr {$place eq {} ? $text : "$place: $text"}]
}

proc qx::lint::records::shown {value} {
    variable secret
    if {$secret} { return <key> }
    return [lindex $value 1]
}

# The elements of a value. Fails if it is not a list, or if nothing is known of it: the reason is
# then empty.
proc qx::lint::records::elements {value} {
    lassign $value kind what line at
    if {$kind eq "list"} { return $what }
    if {$kind ne "constant"} { return -code error {} }
    llength $what
    set result {}
    if {$line ne {} && [string first \n $what] >= 0} {
        foreach word [qx::script_parser::elements $what $line $at] {
            lappend result [list constant [dict get $word text] [dict get $word line] \
                [dict get $word at]]
        }
    } else {
        foreach each $what { lappend result [list constant $each $line -1] }
    }
    return $result
}

# ------------------------------------------------------------------------------------ records

# A record: a dict of its fields, or the address that it represents.
proc qx::lint::records::record {type value place} {
    if {[catch { elements $value } values]} {
        if {$values ne {}} { no_dict $type $value $place }
        return
    }
    set count [llength $values]
    set first [lindex $values 0]
    if {[is_address $type] && ($count == 1 || ($count == 4 && ![is_name $first]))} {
        return [address [address_view $type] $value $values $place]
    }
    if {$count == 1 && [has_family $type]} { return [prefix $first $place] }
    if {$count % 2} { return [no_dict $type $value $place] }
    set seen {}
    foreach {name inner} $values {
        if {[lindex $name 0] ne "constant"} continue
        set text [lindex $name 1]
        set there [expr {$place eq {} ? $text : "$place.$text"}]
        if {$text in $seen} { wrong $name $there "named twice" }
        lappend seen $text
        if {$text eq "padding"} continue
        if {[set found [field_of $type $name $there]] ne {}} {
            field $type $found $inner $there
        }
    }
}

proc qx::lint::records::no_dict {type value place} {
    variable secret
    set secret [holds_key $type]
    wrong $value $place "\"[shown $value]\" is not a dict of fields"
    set secret 0
}

# The field of that name; empty, and a mistake, if there is none.
proc qx::lint::records::field_of {type name place} {
    if {![catch { qx::catalogue::field $type [lindex $name 1] } field]} { return $field }
    set names {}
    foreach each [dict get [qx::catalogue::record $type] fields] {
        lappend names [dict get $each name]
    }
    set near [qx::catalogue::like [lindex $name 1] $names]
    wrong $name $place "$type has no such field$near"
    return
}

# The target of a path: record, field, and the element's index if it names one; empty, and a
# mistake, if it leads nowhere.
proc qx::lint::records::follow {type path} {
    set rest [split [lindex $path 1] .]
    while {1} {
        set index {}
        set name [lindex $rest 0]
        set indexed [regexp {^([^(]*)\((.*)\)$} $name -> name index]
        if {$indexed && $name eq "padding" && [llength $rest] == 1} return
        if {[set field [field_of $type [lreplace $path 1 1 $name] [lindex $path 1]]] eq {}} return
        set count [dict get $field count]
        if {$indexed && (![string is digit -strict $index] || [scan $index %d] >= $count)} {
            set bounds [list 0 [expr {$count - 1}]]
            set why "the elements of $name are [qx::wording::between $bounds]"
            if {!$count} { set why "$name is not an array" }
            wrong $path [lindex $path 1] $why
            return
        }
        if {[llength $rest] == 1} { return [list $type $field $index] }
        set type [dict get $field type]
        set why {}
        if {![qx::catalogue::is_record $type]} {
            set why "$name has no fields"
        } elseif {$count && !$indexed} {
            set why "name an element, as in $name\(0)"
        }
        if {$why ne {}} {
            wrong $path [lindex $path 1] $why
            return
        }
        set rest [lrange $rest 1 end]
    }
}

proc qx::lint::records::holds_key {type} {
    foreach field [dict get [qx::catalogue::record $type] fields] {
        if {[dict get $field holds] eq "key"} { return 1 }
        set inner [dict get $field type]
        if {[qx::catalogue::is_record $inner] && [holds_key $inner]} { return 1 }
    }
    return 0
}

# ------------------------------------------------------------------------------------- fields

proc qx::lint::records::field {owner field value place} {
    variable secret
    foreach part {type count holds} { set $part [dict get $field $part] }
    set secret [expr {$holds eq "key"}]
    set is_record [qx::catalogue::is_record $type]
    if {$is_record && !$count} { return [record $type $value $place] }
    if {!$count} { return [number $owner $field $value $place] }
    if {[catch { elements $value } values]} {
        if {$values eq {}} return
        if {$holds ni {ip ipv6 mac}} {
            wrong $value $place "\"[shown $value]\" is not a list"
            return
        }
        set values [list $value]
    }
    switch -- $holds {
        ip - ipv6 { return [address $field $value $values $place] }
        mac       { if {[is_mac $value $values $place]} return }
    }
    if {[llength $values] > $count} {
        wrong $value $place \
            "wants a list of at most $count elements, not of [llength $values]"
        return
    }
    if {$type eq "u8" && [llength $values] == 1 && [bytes $field [lindex $values 0] $place]} return
    set index -1
    foreach each $values {
        set there "$place\([incr index])"
        if {$is_record} { record $type $each $there } else { number $owner $field $each $there }
    }
}

# Whether a value is a MAC address, or is a wrong one.
proc qx::lint::records::is_mac {value values place} {
    set text [lindex $value 1]
    if {[lindex $value 0] ne "constant"} { return 0 }
    if {[regexp {^[[:xdigit:]]{1,2}(?:[:-][[:xdigit:]]{1,2}){5}$} $text]} { return 1 }
    if {![catch { llength $text }] && ([llength $text] != 1 || [string first : $text] < 0)} {
        return 0
    }
    wrong $value $place \
        "\"$text\" is neither a MAC address like 02:00:00:00:00:01 nor a list of 6 bytes"
    return 1
}

# Whether an array of bytes is given as one word, 0x0011aaff.
proc qx::lint::records::bytes {field value place} {
    if {[lindex $value 0] ne "constant" || ![regexp {^0x(.+)$} [lindex $value 1] -> digits]} {
        return 0
    }
    set count [expr {[string length $digits] / 2}]
    if {[string length $digits] % 2} {
        wrong $value $place "0x is followed by half a byte"
    } elseif {$count > [dict get $field count]} {
        wrong $value $place "$count bytes are more than the [dict get $field count] there are"
    } elseif {![string is xdigit $digits]} {
        wrong $value $place "0x is followed by other than hexadecimal digits"
    }
    return 1
}

# One number of a field.
proc qx::lint::records::number {owner field value place} {
    if {[lindex $value 0] ne "constant"} return
    set text [lindex $value 1]
    if {[dict get $field holds] eq "ipv4" && [is_ipv4 $text]} return
    set words [qx::lint::code_words $owner [dict get $field name]]
    if {[dict exists $words $text]} return
    if {![qx::lint::is_number $text]} {
        wrong $value $place [qx::lint::no_number [shown $value] $words]
        return
    }
    set taken [qx::catalogue::range [dict get $field type] [dict get $field width]]
    if {$text < [lindex $taken 0] || $text > [lindex $taken 1]} {
        wrong $value $place "[shown $value] is outside [qx::wording::between $taken]"
    }
}

# ---------------------------------------------------------------------------------- addresses

# Whether a record is a union that represents an IP address: its first view is one.
proc qx::lint::records::is_address {type} { expr {[address_view $type] ne {}} }

proc qx::lint::records::address_view {type} {
    set record [qx::catalogue::record $type]
    set view [lindex [dict get $record fields] 0]
    if {[dict get $record kind] eq "union" && [dict get $view holds] eq "ip"} { return $view }
    return
}

proc qx::lint::records::has_family {type} {
    foreach field [dict get [qx::catalogue::record $type] fields] {
        if {[dict get $field holds] eq "family"} { return 1 }
    }
    return 0
}

# Whether a value may be the name of a view.
proc qx::lint::records::is_name {value} {
    return [expr {[lindex $value 0] ne "constant" || ![qx::lint::is_number [lindex $value 1]]}]
}

# An address as text or as four numbers.
proc qx::lint::records::address {field value values place} {
    if {[llength $values] == 4} {
        set index -1
        foreach each $values { number {} $field $each "$place\([incr index])" }
        return
    }
    set text [lindex $value 1]
    set six [expr {[dict get $field holds] eq "ipv6"}]
    if {[lindex $value 0] ne "constant" || [is_ipv6 $text] || (!$six && [is_ipv4 $text])} return
    set version [expr {$six ? "IPv6" : "IP"}]
    wrong $value $place "\"$text\" is neither an $version address nor a list of 4 words"
}

# An address record as one word, 10.0.0.0/8.
proc qx::lint::records::prefix {value place} {
    if {[lindex $value 0] ne "constant"} return
    set text [lindex $value 1]
    regexp {^([^/]*)(?:/(.*))?$} $text -> address length
    if {[is_ipv4 $address]} {
        set bits 32
    } elseif {[is_ipv6 $address]} {
        set bits 128
    } else {
        wrong $value $place "\"$text\" is not an IP address or prefix like 10.0.0.0/8"
        return
    }
    if {[string first / $text] < 0} return
    if {![regexp {^(?:0|[1-9]\d{0,2})$} $length] || $length > $bits} {
        set lengths [qx::wording::between [list 0 $bits]]
        wrong $value $place "\"$text\" has no length from $lengths behind the slash"
    }
}

proc qx::lint::records::is_ipv4 {text} {
    if {![regexp {^(?:(?:0|[1-9]\d{0,2})(?:\.(?!$)|$)){4}$} $text]} { return 0 }
    foreach byte [split $text .] { if {$byte > 255} { return 0 } }
    return 1
}

# Groups of up to four digits, the last two of which may be an IPv4 address; :: stands for at least
# one group of zeros.
proc qx::lint::records::is_ipv6 {text} {
    set tail [lindex [split $text :] end]
    if {[string first . $tail] >= 0} {
        if {![is_ipv4 $tail]} { return 0 }
        set text [string range $text 0 end-[string length $tail]]0:0
    }
    set gaps [regexp -all {::} $text]
    if {$gaps > 1 || [string first ::: $text] >= 0} { return 0 }
    set groups {}
    foreach part [split [string map {:: |} $text] |] {
        if {$part eq {}} continue
        if {![regexp {^[[:xdigit:]]{1,4}(?::[[:xdigit:]]{1,4})*$} $part]} { return 0 }
        set groups [concat $groups [split $part :]]
    }
    return [expr {$gaps ? [llength $groups] < 8 : [llength $groups] == 8}]
}
