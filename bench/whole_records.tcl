# What a whole record in one call costs beside a command a field: build/release/bin/qxsh
# bench/whole_records.tcl Both sides give or take the same nested dict of numbers, in one run and in
# turns; the least of the rounds counts. Prints a table: record, numbers in it, microseconds, ratio
# (above 1 the package is faster).
package require qx

# Script words whose value is a record as qx::get -raw gives it, made of the commands of its fields;
# `before` gets the lines that fetch the handles of nested records.
proc reading_words {type handle before_name} {
    upvar 1 $before_name before
    set stem [qx::catalogue::stem $type]
    set record [qx::catalogue::record $type]
    set fields [dict get $record fields]
    if {[dict get $record kind] eq "union"} { set fields [list [qx::reading::largest $fields]] }
    set words "\[list"
    foreach field $fields {
        set name [dict get $field name]
        set inner [dict get $field type]
        set many [dict get $field count]
        set elements {}
        for {set index 0} {$index < max(1, $many)} {incr index} {
            set get [concat ${stem}_get_$name \$$handle [expr {$many ? $index : {}}]]
            incr ::numbers
            if {[qx::catalogue::is_record $inner]} {
                incr ::numbers -1
                set variable h[incr ::handles]
                append before "set $variable \[$get\]\n"
                lappend elements [reading_words $inner $variable before]
            } else {
                lappend elements "\[$get\]"
            }
        }
        append words " $name " [expr {$many ? "\[list [join $elements]\]" : [lindex $elements 0]}]
    }
    return "$words\]"
}

# Script that writes a dict of all fields by the commands of its fields.
proc writing_lines {type handle value} {
    set stem [qx::catalogue::stem $type]
    set lines {}
    dict for {name inner} $value {
        set field [qx::catalogue::field $type $name]
        set many [dict get $field count]
        set nested [qx::catalogue::is_record [dict get $field type]]
        if {!$many} { set inner [list $inner] }
        set index 0
        foreach each $inner {
            set place [expr {$many ? $index : {}}]
            if {$nested} {
                set variable h[incr ::handles]
                append lines "set $variable \[${stem}_get_$name \$$handle $place\]\n"
                append lines [writing_lines [dict get $field type] $variable $each]
            } else {
                append lines "${stem}_set_$name \$$handle $each $place\n"
            }
            incr index
        }
    }
    return $lines
}

# The least microseconds of some rounds for each of two scripts, in turns.
proc least {first second} {
    set best {1e9 1e9}
    for {set round 0} {$round < 15} {incr round} {
        set new {}
        foreach script [list $first $second] old $best {
            lappend new [expr {min($old, [lindex [time $script 400] 0])}]
        }
        set best $new
    }
    return $best
}

set types {
    qx_vlan_t qx_pkt_info_t qx_ipsec_sa_t qx_flow_t qx_rule_hash_t qx_l3_route_t qx_mcast_member_t
}
puts [format "%-24s %7s  %-30s  %s" record numbers "reading: fields, whole, ratio" \
    "writing: fields, whole, ratio"]
foreach type $types {
    set numbers 0
    set record [[qx::catalogue::stem $type]_create]
    set before {}
    set words [reading_words $type record before]
    proc read_fields {record} "${before}return $words"
    set value [qx::get $record -raw]
    if {[read_fields $record] ne $value} { error "the two sides of $type differ" }
    proc write_fields {record} [writing_lines $type record $value]
    foreach {fields whole} [least [list read_fields $record] [list qx::get $record -raw]] break
    foreach {sets puts} [least [list write_fields $record] [list qx::set $record $value]] break
    puts [format "%-24s %7d  %8.2f %8.2f %8.2f      %8.2f %8.2f %8.2f" $type $numbers \
        $fields $whole [expr {$fields / $whole}] $sets $puts [expr {$sets / $puts}]]
}
