# Package qx, comparing records and JSON: qx::diff, qx::json. Relies on catalogue.tcl, handles.tcl
# and the package's library, whose qx::reading::value is qx::get with error messages that name
# another command.

namespace eval qx::reading {}

# -------------------------------------------------------------------------------- differences

# Where two records of a type differ: a dict, field -> its value in the first and in the second.
proc qx::reading::diff {first second args} {
    set type [lindex [qx::handle::of_record $first] 0]
    set other [lindex [qx::handle::of_record $second] 0]
    if {$type ne $other} {
        return -code error -errorcode {QX TYPE} "a $type and a $other cannot be compared"
    }
    set values {}
    foreach handle [list $first $second] {
        lappend values [eval [linsert $args 0 value qx::diff {first second} $handle]]
    }
    set result {}
    compare $type [lindex $values 0] [lindex $values 1] {} result
    return $result
}

# Only the fields in the dict are compared: that of a union does not have all of them.
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

# Whether a value of the type is a dict: a record that is not shown as an address.
proc qx::reading::is_dict {type value} {
    if {![qx::catalogue::is_record $type] || [is_text $value]} { return 0 }
    return [expr {![string is wideinteger -strict [lindex $value 0]]}]
}

# Whether a value is an address in text form.
proc qx::reading::is_text {value} { regexp {^[0-9a-fA-F.:]*[.:][0-9a-fA-F.:]*$} $value }

# --------------------------------------------------------------------------------------- JSON

# The record behind a handle as JSON.
proc qx::reading::json {handle args} {
    set value [eval [linsert $args 0 value qx::json handle $handle]]
    return [json_record [lindex [qx::handle::of_record $handle] 0] $value {}]
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
    if {[is_text $value]} { return [json_word $value] }
    if {[qx::catalogue::is_record $type] && [dict get $field count]} {
        set rows {}
        foreach inner $value { lappend rows "$indent  [json_record $type $inner "$indent  "]" }
        return "\[\n[join $rows ",\n"]\n$indent\]"
    }
    if {[is_dict $type $value]} { return [json_record $type $value $indent] }
    if {![dict get $field count] && [llength $value] == 1} { return [json_word $value] }
    set rows {}
    foreach word $value { lappend rows [json_word $word] }
    return "\[[join $rows {, }]\]"
}

# A number, or an address or code word, whose characters JSON need not escape.
proc qx::reading::json_word {word} {
    if {[string is digit -strict $word]} { return $word }
    return "\"$word\""
}
