# Package qx, records as data: qx::get, qx::template, qx::diff, qx::json. Relies on catalogue.tcl,
# handles.tcl and addresses.tcl.
#
# A record is a dict of its fields, an array a list, a union a dict of the one view that was asked
# for. For each record and each choice of views a procedure is made when it is first wanted: one
# `binary scan` of the whole record and one `list` of all values, which is what makes one call
# cheaper than a command a field.

namespace eval qx::reading {
    variable made {} ;# type, views, raw -> procedure
    variable number 0
    # How `binary scan` reads a scalar.
    variable scan_words {u8 cu u16 su u32 iu}
    # The choice of views while a procedure is made.
    variable views {}
    variable used {}
    variable raw 0
    # Its parts: format, number of variables, place behind what the format reads.
    variable format {}
    variable count 0
    variable place 0
}

# The record behind a handle as a dict.
proc qx::reading::get {handle args} {
    foreach {views raw} [options qx::get {handle} $args] break
    foreach {type handle} [qx::handle::of_record $handle] break
    return [[reader $type $views $raw] [qx::handle::bytes $handle $type]]
}

# A record of a type as a dict, all zero.
proc qx::reading::template {type args} {
    foreach {views raw} [options qx::template {type} $args] break
    qx::catalogue::record $type
    return [[reader $type $views $raw] [binary format x[qx::catalogue::type_size $type]]]
}

# -view and -raw of a command.
proc qx::reading::options {command words given} {
    if {$given eq {}} { return {{} 0} }
    set views {}
    set raw 0
    while {$given ne {}} {
        switch -- [lindex $given 0] {
            -raw { set raw 1; set given [lrange $given 1 end] }
            -view {
                if {[llength $given] < 2} {
                    return -code error -errorcode {QX USAGE} "-view wants a list of views"
                }
                set views [lindex $given 1]
                set given [lrange $given 2 end]
            }
            default {
                return -code error -errorcode {QX USAGE} "bad option \"[lindex $given 0]\": should\
                    be -raw or -view; usage: $command $words ?-view views? ?-raw?"
            }
        }
    }
    return [list $views $raw]
}

# ---------------------------------------------------------------------------------- the views

# The views of a union to show: those whose place ends in one of the words, the longest words before
# the others, and all of them for *; if none is asked for, the first of the largest.
proc qx::reading::chosen {fields path} {
    variable views
    variable used
    set result {}
    set parts 0
    foreach field $fields {
        foreach word $views {
            if {![names_view $word $path $field]} continue
            dict set used $word 1
            set length [llength [split $word .]]
            if {$length > $parts} { set result {} }
            if {$length >= $parts && $field ni $result} { lappend result $field }
            set parts [expr {max($parts, $length)}]
        }
    }
    if {$result ne {}} { return $result }
    return [list [largest $fields]]
}

proc qx::reading::names_view {word path field} {
    set place .[join [concat $path [list [dict get $field name]]] .]
    set end [expr {[string length $place] - [string length $word] - 1}]
    return [expr {$word eq "*" || ($end >= 0 && [string range $place $end end] eq ".$word")}]
}

# The first of the largest fields.
proc qx::reading::largest {fields} {
    set most 0
    foreach field $fields {
        set size [qx::catalogue::type_size [dict get $field type]]
        set size [expr {$size * max(1, [dict get $field count])}]
        if {$size > $most} {
            set most $size
            set result $field
        }
    }
    return $result
}

# ----------------------------------------------------------------------------- the procedures

# The procedure that makes a dict of a record's bytes.
proc qx::reading::reader {type wanted plain} {
    variable made
    variable number
    set key [list $type $wanted $plain]
    if {[dict exists $made $key]} { return [dict get $made $key] }
    variable views $wanted
    variable raw $plain
    variable used {}
    variable format {}
    variable count 0
    variable place 0
    set value [record_words $type 0 {}]
    foreach word $views {
        if {![dict exists $used $word] && $word ne "*"} {
            return -code error -errorcode [list QX UNKNOWN view $word] \
                "no union in $type has the view \"$word\""
        }
    }
    set names {}
    for {set each 0} {$each < $count} {incr each} { lappend names $each }
    set name ::qx::reading::reader_[incr number]
    proc $name {bytes} "binary scan \$bytes [list $format] $names\nreturn $value"
    dict set made $key $name
    return $name
}

# Script words whose value is a record at an offset. As a side effect the format reads what they
# need.
proc qx::reading::record_words {type base path} {
    set record [qx::catalogue::record $type]
    set fields [dict get $record fields]
    if {[dict get $record kind] eq "union"} { set fields [chosen $fields $path] }
    set family [family_words $fields $base]
    set words "\[list"
    foreach field $fields {
        set name [dict get $field name]
        append words " $name [field_words $field $base [concat $path [list $name]] $family]"
    }
    return "$words\]"
}

# Where the record says of which family its address is.
proc qx::reading::family_words {fields base} {
    foreach field $fields {
        if {[dict get $field holds] eq "family"} {
            return " [scalar_words u32 [expr {$base + [dict get $field offset]}]]"
        }
    }
    return
}

proc qx::reading::field_words {field base path family} {
    variable raw
    set type [dict get $field type]
    set at [expr {$base + [dict get $field offset]}]
    set many [dict get $field count]
    set holds [dict get $field holds]
    if {![qx::catalogue::is_record $type]} {
        if {$raw || $holds in {{} family}} { return [number_words $field $at] }
        return [address_words $holds [array_words $type $at $many]]
    }
    if {!$many} {
        if {[stands_for_address $type $path]} {
            return [address_words ip [array_words u32 $at 4] $family]
        }
        return [record_words $type $at $path]
    }
    set words "\[list"
    for {set index 0} {$index < $many} {incr index} {
        append words " [record_words $type $at $path]"
        incr at [qx::catalogue::type_size $type]
    }
    return "$words\]"
}

# A union whose largest view is an address is that address, as long as no other view is asked for.
proc qx::reading::stands_for_address {type path} {
    variable views
    variable raw
    if {$raw || ![is_address $type]} { return 0 }
    foreach field [dict get [qx::catalogue::record $type] fields] {
        foreach word $views {
            if {[names_view $word $path $field]} { return 0 }
        }
    }
    return 1
}

proc qx::reading::is_address {type} {
    set record [qx::catalogue::record $type]
    if {[dict get $record kind] ne "union"} { return 0 }
    return [expr {[dict get [largest [dict get $record fields]] holds] eq "ip"}]
}

proc qx::reading::address_words {holds words {family {}}} {
    switch -- $holds {
        mac  { return "\[::qx::address::mac_text $words\]" }
        ipv4 { return "\[::qx::address::ipv4_text $words\]" }
        ipv6 { return "\[::qx::address::ipv6_text $words\]" }
        ip   { return "\[::qx::address::ip_text $words$family\]" }
    }
}

proc qx::reading::number_words {field at} {
    set type [dict get $field type]
    set width [dict get $field width]
    if {!$width} { return [array_words $type $at [dict get $field count]] }
    set mask [expr {(1 << $width) - 1}]
    return "\[expr {[scalar_words $type $at] >> [dict get $field bit] & $mask}\]"
}

proc qx::reading::scalar_words {type at} { array_words $type $at 0 }

# Reads one scalar, or a list of them, into the next variable.
proc qx::reading::array_words {type at many} {
    variable scan_words
    variable format
    variable count
    variable place
    if {$at != $place} { append format @$at }
    append format [dict get $scan_words $type]
    if {$many} { append format $many }
    set place [expr {$at + [qx::catalogue::type_size $type] * max(1, $many)}]
    set name $count
    incr count
    return \$$name
}

# -------------------------------------------------------------------------------- differences

# Where two records of a type differ: a dict, field -> its value in the first and in the second.
proc qx::reading::diff {first second args} {
    foreach {views raw} [options qx::diff {first second} $args] break
    foreach {type first} [qx::handle::of_record $first] break
    foreach {other second} [qx::handle::of_record $second] break
    if {$type ne $other} {
        return -code error -errorcode {QX TYPE} "a $type and a $other cannot be compared"
    }
    set reader [reader $type $views $raw]
    set result {}
    compare $type [$reader [qx::handle::bytes $first $type]] \
        [$reader [qx::handle::bytes $second $type]] {} result
    return $result
}

# The fields of a record are those that its dict names: of a union not all are there.
proc qx::reading::compare {type first second path result_name} {
    upvar 1 $result_name result
    dict for {name before} $first {
        set after [dict get $second $name]
        if {$before eq $after} continue
        set here $path$name
        set field [qx::catalogue::field $type $name]
        set inner [dict get $field type]
        if {![is_dict $inner $before] || ![is_dict $inner $after]} {
            set many [dict get $field count]
            if {$many && [llength $before] == [llength $after] && ![is_text $before]} {
                compare_lists $inner $before $after $here result
            } else {
                dict set result $here [list $before $after]
            }
        } elseif {[dict get $field count]} {
            compare_lists $inner $before $after $here result
        } else {
            compare $inner $before $after $here. result
        }
    }
}

proc qx::reading::compare_lists {type first second here result_name} {
    upvar 1 $result_name result
    set index -1
    foreach before $first after $second {
        incr index
        if {$before eq $after} continue
        if {[qx::catalogue::is_record $type]} {
            compare $type $before $after $here\($index). result
        } else {
            dict set result $here\($index) [list $before $after]
        }
    }
}

# Whether a value of the type is a dict: a record, and no address in its place.
proc qx::reading::is_dict {type value} {
    if {![qx::catalogue::is_record $type] || [is_text $value]} { return 0 }
    return [expr {![string is wideinteger -strict [lindex $value 0]]}]
}

# Whether a value is an address as people write it.
proc qx::reading::is_text {value} { regexp {^[0-9a-fA-F.:]*[.:][0-9a-fA-F.:]*$} $value }

# --------------------------------------------------------------------------------------- JSON

# The record behind a handle as JSON.
proc qx::reading::json {handle args} {
    foreach {views raw} [options qx::json {handle} $args] break
    foreach {type handle} [qx::handle::of_record $handle] break
    set value [[reader $type $views $raw] [qx::handle::bytes $handle $type]]
    return [json_record $type $value {}]
}

proc qx::reading::json_record {type value indent} {
    set rows {}
    dict for {name inner} $value {
        set field [qx::catalogue::field $type $name]
        lappend rows "$indent  \"$name\": [json_value $field $inner "$indent  "]"
    }
    return "\{\n[join $rows ",\n"]\n$indent\}"
}

proc qx::reading::json_value {field value indent} {
    set type [dict get $field type]
    # Addresses hold no character that JSON wants written in another way.
    if {[is_text $value]} { return "\"$value\"" }
    if {[qx::catalogue::is_record $type] && [dict get $field count]} {
        set rows {}
        foreach inner $value { lappend rows "$indent  [json_record $type $inner "$indent  "]" }
        return "\[\n[join $rows ",\n"]\n$indent\]"
    }
    if {[is_dict $type $value]} { return [json_record $type $value $indent] }
    if {[dict get $field count] || [llength $value] > 1} { return "\[[join $value {, }]\]" }
    return $value
}
