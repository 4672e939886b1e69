# The cost of a whole record in one call, compared with one command per field:
#   build/release/bin/qxsh bench/whole_records.tcl ?record ...?
#
# Both sides read or write the same nested dict of numbers, alternating in one run; the minimum of
# the rounds is reported. Commands write a dict in two ways: with its numbers in the script, and
# with `foreach` taking them out of the dict at the start of each record. Prints a table of the
# records with three or more numbers: numbers, microseconds, ratio (above 1: one call is faster).
package require qx

# Script words whose value is a record as qx::get -raw returns it, built with the commands of its
# fields; the lines that fetch the handles of nested records are appended to `before`.
proc reading_words {type handle value before_name} {
    upvar 1 $before_name before
    set stem [qx::catalogue::stem $type]
    set words "\[list"
    dict for {name inner} $value {
        set field [qx::catalogue::field $type $name]
        set many [dict get $field count]
        if {!$many} { set inner [list $inner] }
        set elements {}
        set index 0
        foreach each $inner {
            set get [concat ${stem}_get_$name \$$handle [expr {$many ? $index : {}}]]
            if {[qx::catalogue::is_record [dict get $field type]]} {
                set variable h[incr ::handles]
                append before "set $variable \[$get\]\n"
                lappend elements [reading_words [dict get $field type] $variable $each before]
            } else {
                incr ::numbers
                lappend elements "\[$get\]"
            }
            incr index
        }
        append words " $name " [expr {$many ? "\[list [join $elements]\]" : [lindex $elements 0]}]
    }
    return "$words\]"
}

# A script that writes a dict of all fields with the commands of its fields. If a variable is named,
# the numbers are taken from the dict in it.
proc writing_lines {type handle value {source {}}} {
    set stem [qx::catalogue::stem $type]
    set before {}
    set lines {}
    if {$source ne {}} { set before "foreach {[spread $source $value]} \$$source break\n" }
    dict for {name inner} $value {
        set field [qx::catalogue::field $type $name]
        set many [dict get $field count]
        set nested [qx::catalogue::is_record [dict get $field type]]
        set from [expr {$source eq {} ? {} : "${source}_$name"}]
        if {!$many} {
            set inner [list $inner]
        } elseif {$from ne {}} {
            append lines "foreach {[spread_list $from $inner]} \$$from break\n"
        }
        set index 0
        foreach each $inner {
            set place [expr {$many ? $index : {}}]
            set each_from [expr {$from eq {} ? {} : "$from$place"}]
            if {$nested} {
                set variable h[incr ::handles]
                append lines "set $variable \[${stem}_get_$name \$$handle $place\]\n"
                append lines [writing_lines [dict get $field type] $variable $each $each_from]
            } else {
                set number [expr {$from eq {} ? $each : "\$$each_from"}]
                append lines "${stem}_set_$name \$$handle $number $place\n"
            }
            incr index
        }
    }
    return $before$lines
}

# Variable names for the keys and values of a dict, and for the elements of a list.
proc spread {source value} {
    set names {}
    foreach name [dict keys $value] { lappend names - ${source}_$name }
    return $names
}
proc spread_list {source elements} {
    set names {}
    for {set index 0} {$index < [llength $elements]} {incr index} { lappend names $source$index }
    return $names
}

# The minimum of several rounds, in microseconds, for each script; the scripts take turns.
proc least {scripts} {
    set best {}
    foreach script $scripts { lappend best 1e9 }
    for {set round 0} {$round < 15} {incr round} {
        set new {}
        foreach script $scripts old $best {
            lappend new [expr {min($old, [lindex [time $script 200] 0])}]
        }
        set best $new
    }
    return $best
}

proc measure {type} {
    set ::numbers 0
    set record [[qx::catalogue::stem $type]_create]
    set value [qx::get $record -raw]
    set before {}
    set words [reading_words $type record $value before]
    if {$::numbers < 3} return
    proc read_fields {record} "${before}return $words"
    proc write_constants {record} [writing_lines $type record $value]
    proc write_fields {record value} [writing_lines $type record $value value]
    check_sides $type $record
    lassign [least [list [list read_fields $record] [list qx::get $record -raw] \
        [list write_constants $record] [list write_fields $record $value] \
        [list qx::set $record $value]]] fields whole constants taken put
    puts [format "%-28s %7d  %7.2f %7.2f %6.2f   %7.2f %7.2f %7.2f %6.2f %6.2f" $type $::numbers \
        $fields $whole [expr {$fields / $whole}] $constants $taken $put \
        [expr {$constants / $put}] [expr {$taken / $put}]]
}

# Checks that both sides do the same, as their times are meaningless otherwise.
proc check_sides {type record} {
    set value [qx::get $record -raw]
    if {[read_fields $record] ne $value} { error "reading $type differs" }
    set filled [string map {" 0" " 1"} $value]
    write_fields $record $filled
    qx::with zero $type { set written [qx::diff $record $zero] }
    # The numbers may choose another view, so that bytes are compared.
    qx::with whole $type $filled { set different [qx::diff $record $whole] }
    if {$written eq {} || $different ne {}} { error "writing $type differs" }
    qx::set $record $value
}

puts [format "%-28s %7s  %-23s  %s" record numbers "reading: fields, whole" \
    "writing: constants, fields, whole, ratios"]
foreach type [expr {[llength $argv] ? $argv : [qx::catalogue::records]}] { measure $type }
