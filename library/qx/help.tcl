# Package qx: qx::help, qx::areas. Their results are texts for people, generated from catalogue.tcl,
# wording.tcl and commands.tcl, so that every command, record and area has one.

namespace eval qx::help {}

# The help text of a name.
proc qx::help::about {{name {}}} {
    if {$name eq {}} { return [beginning] }
    lassign [qx::topic::find $name] kind subject
    if {$kind ne {}} { return [${kind}_text $subject] }
    set near [qx::topic::near $name]
    set name [string trimleft $name :]
    return -code error -errorcode [list QX UNKNOWN name $name] \
        "nothing is called \"$name\"[qx::catalogue::like $name $near]"
}

proc qx::help::beginning {} {
    set text [qx::layout::wrapped "A handle is what a _create command gives; qx_data_free releases\
        it. SDK functions return a status, 0 for success. Everything has a text:" {} 0]
    append text [qx::layout::names {{qx::help flow} {qx::help qx_flow_t} {qx::help qx::call}}]
    foreach topic [qx::commands::topics] {
        append text "\n[dict get [qx::commands::group $topic] title]\n"
        if {[string match qx::* $topic]} {
            set names [dict get [qx::commands::group $topic] commands]
            set rows [list [list $topic "[counted $names command]: qx::help $topic lists them"]]
            append text [qx::layout::table $rows]
        } else {
            append text [group_table $topic]
        }
    }
    set rows {}
    dict for {name facts} [qx::commands::others] {
        lappend rows [list $name [dict get $facts purpose]]
    }
    append text "\nBeside the package\n[qx::layout::table $rows]"
    append text "\nAreas\n[areas]"
    return $text
}

# The commands of a group and their purposes.
proc qx::help::group_table {topic} {
    set rows {}
    foreach name [dict get [qx::commands::group $topic] commands] {
        lappend rows [list $name [dict get [qx::commands::all] $name purpose]]
    }
    return [qx::layout::table $rows]
}

# The areas and their contents, one per line.
proc qx::help::areas {} {
    set rows {}
    foreach name [qx::catalogue::areas] {
        set area [qx::catalogue::area $name]
        lappend rows [list $name [dict get $area text] \
            "[counted [dict get $area records] record], [counted [dict get $area calls] call]"]
    }
    return [string trimright [qx::layout::table $rows] \n]
}

proc qx::help::counted {list noun} { qx::wording::counted [llength $list] $noun }

# ------------------------------------------------------------------------------------ layout

# The values of some keys of a dict.
proc qx::help::parts {dict args} {
    set values {}
    foreach key $args { lappend values [dict get $dict $key] }
    return $values
}

# ---------------------------------------------------------------------------------- commands

proc qx::help::command_text {name} {
    set command [qx::catalogue::facts $name]
    set words [qx::wording::describe $command]
    set text [qx::layout::wrapped [dict get $command usage] {} 4]
    append text [qx::layout::wrapped [dict get $words purpose] {  } 2]
    set rows {}
    set values {}
    foreach argument [dict get $words arguments] {
        foreach row [value_rows [dict get $argument name] [dict get $argument values]] {
            lappend values $row
        }
        set row [parts $argument name type range text]
        set direction [dict get $argument direction]
        if {$direction ne {}} { lset row 2 "[lindex $row 2], $direction" }
        lappend rows $row
    }
    append text [qx::layout::section Arguments [qx::layout::table $rows]]
    append text [qx::layout::section Values [qx::layout::table $values]]
    append text Result\n[qx::layout::wrapped [dict get $words result] {  } 2]
    set notes {}
    foreach note [dict get $words notes] { append notes [qx::layout::wrapped $note {  } 2] }
    append text [qx::layout::section Notes $notes]
    append text [statuses_text [dict get $words statuses]]
    set related [lrange [dict get $words related] 0 11]
    append text [qx::layout::section Related [qx::layout::names $related]]
    set example [qx::example::shown $command [expr {[qx::layout::width] - 2}]]
    append text "Example\n[regsub -all -line {^(?=.)} $example {  }]"
    return [string trimright $text \n]
}

# The special values of a field or an argument: name, value, meaning.
proc qx::help::value_rows {name values} {
    set rows {}
    foreach {value meaning} $values { lappend rows [list $name $value $meaning] }
    return $rows
}

# What the simulated device answers: a status a line, the reasons, and the usual ones.
proc qx::help::statuses_text {answers} {
    if {$answers eq {}} return
    foreach {key value} $answers { set $key $value }
    set rows {}
    foreach name $statuses { lappend rows [qx::wording::status $name] }
    set text [qx::layout::table $rows]
    if {$when ne {}} { append text [qx::layout::wrapped "when: $when" {  } 4] }
    append text [qx::layout::wrapped "and as from most calls: [join $usual]" {  } 4]
    return [qx::layout::section "Statuses of the simulated device, besides 0" $text]
}

# ----------------------------------------------------------------------------------- records

proc qx::help::record_text {type} {
    set record [qx::catalogue::record $type]
    lassign [parts $record kind size packed] kind size packed
    lassign [parts $record text fields area] text fields area
    set shown "$type, $kind of $size bytes[expr {$packed ? ", packed" : ""}], area $area\n  $text\n"
    append shown [expr {$kind eq "union" ? "Views, all at the same place" : "Fields"}]\n
    set rows [list {offset bits type name meaning}]
    foreach field $fields { lappend rows [field_row $field] }
    append shown [qx::layout::table $rows]
    set values {}
    foreach field $fields {
        set name [dict get $field name]
        foreach row [value_rows $name [qx::wording::values $type $name]] { lappend values $row }
    }
    append shown [qx::layout::section Values [qx::layout::table $values]]
    append shown [qx::layout::section Commands [qx::layout::names [record_commands $type]]]
    append shown [qx::layout::section {Calls that take it} [qx::layout::names [takers $type]]]
    append shown [qx::layout::section {Records that hold it} [qx::layout::names [holders $type]]]
    return [string trimright $shown \n]
}

proc qx::help::field_row {field} {
    lassign [parts $field name offset type width bit count] name offset type width bit count
    set bits [expr {8 * [qx::catalogue::type_size $type] * max(1, $count)}]
    if {$width} {
        set offset $offset.$bit
        set bits $width
    }
    if {$count} { append type \[$count\] }
    set text [dict get $field text]
    if {![dict get $field dumped]} { append text " (not in the dump)" }
    return [list $offset $bits $type $name $text]
}

# The commands of the whole record, and the names of those of its fields.
proc qx::help::record_commands {type} {
    set stem [qx::catalogue::stem $type]
    set names {}
    foreach name [qx::catalogue::commands_of $type] {
        if {[dict get [qx::catalogue::facts $name] field] eq {}} { lappend names $name }
    }
    return [concat $names [list ${stem}_get_<field> ${stem}_set_<field>]]
}

# The calls that take a record, directly or inside another.
proc qx::help::takers {type} {
    set types [list $type]
    for {set at 0} {$at < [llength $types]} {incr at} {
        foreach holder [holders [lindex $types $at]] {
            if {$holder ni $types} { lappend types $holder }
        }
    }
    set names {}
    foreach each $types { set names [concat $names [qx::catalogue::calls_with $each]] }
    return [lsort -unique $names]
}

# The records that hold a record as a field.
proc qx::help::holders {type} {
    set names {}
    foreach {holder field} [qx::catalogue::holders $type] {
        if {$holder ni $names} { lappend names $holder }
    }
    return $names
}

# ----------------------------------------------------------------- parts of records and calls

proc qx::help::field_text {subject} {
    lassign $subject type name
    set field [qx::catalogue::field $type $name]
    set held [dict get $field type]
    set text "$type.$name, [qx::wording::field_type $field] at offset [dict get $field offset]"
    if {[dict get $field width]} { append text ", lowest bit [dict get $field bit]" }
    append text \n [qx::layout::wrapped [dict get $field text] {  } 2]
    append text [qx::layout::section Values \
        [qx::layout::table [value_rows $name [qx::wording::values $type $name]]]]
    if {[qx::catalogue::is_record $held]} { append text "Record\n  $held\n" }
    set names {}
    foreach command [qx::catalogue::commands_of $type] {
        if {[dict get [qx::catalogue::facts $command] field] eq $name} { lappend names $command }
    }
    append text [qx::layout::section Commands [qx::layout::names $names]]
    return [string trimright $text \n]
}

proc qx::help::argument_text {subject} {
    lassign $subject call name
    set words [qx::wording::describe [qx::catalogue::facts $call]]
    foreach argument [dict get $words arguments] {
        if {[dict get $argument name] ne $name} continue
        lassign [parts $argument type range text direction] type range text direction
        set first "$call.$name, $type, $range"
        if {$direction ne {}} { append first ", $direction" }
        set text [qx::layout::wrapped $first {} 4][qx::layout::wrapped $text {  } 2]
        append text [qx::layout::section Values \
            [qx::layout::table [value_rows $name [dict get $argument values]]]]
        set target [string trimright $type { *}]
        if {[qx::catalogue::is_record $target]} { append text "Record\n  $target\n" }
        return [string trimright $text \n]
    }
}

proc qx::help::cell_text {type} {
    set text "[qx::catalogue::native $type], cell of\
        [qx::wording::counted [qx::catalogue::type_size $type] byte]\n"
    set rows {}
    foreach name [qx::catalogue::commands_of $type] {
        lappend rows [list $name [qx::wording::purpose [qx::catalogue::facts $name]]]
    }
    return [string trimright $text[qx::layout::section Commands [qx::layout::table $rows]] \n]
}

proc qx::help::status_text {number} {
    set text "[qx::catalogue::status_name $number], status $number"
    return "$text\n  [qx::catalogue::status_meaning $number][status_users $number]"
}

# The calls for which the simulated device has a reason of their own to answer a status.
proc qx::help::status_users {number} {
    set name [qx::catalogue::status_name $number]
    set calls {}
    foreach call [qx::catalogue::calls] {
        if {$name in [dict get [qx::catalogue::answers $call] statuses]} { lappend calls $call }
    }
    if {$calls eq {}} return
    return "\nCalls that the simulated device answers with it\n[string trimright \
        [qx::layout::names $calls] \n]"
}

# A table of a device: how it is listed, or what can be asked instead.
proc qx::help::table_text {name} {
    set table [qx::catalogue::table $name]
    set text "$name, table of area [dict get $table area]\n"
    append text [qx::layout::wrapped [dict get $table text] {  } 2]
    set calls {}
    foreach part [dict get $table parts] { lappend calls [dict get $part call] }
    if {$calls eq {}} {
        append text "Not listed\n[qx::layout::wrapped [dict get $table instead] {  } 2]"
    } else {
        set words $name
        foreach key [dict get $table keys] { append words " -[qx::tables::short $key] n" }
        append text "Listed by\n  qx::list $words\n  qx::show $words\n"
        append text [qx::layout::section Calls [qx::layout::names $calls]]
        set tried [qx::tables::tried $name 0]
        if {$tried ne {}} {
            append text "Ids that are tried on device 0\n  [join $tried { }]\n"
        }
    }
    set capacity [qx::catalogue::capacity $name]
    if {$capacity ne {}} { append text "Capacity\n  $capacity\n" }
    return [string trimright $text \n]
}

# ------------------------------------------------------------------------------------- areas

proc qx::help::area_text {name} {
    set area [qx::catalogue::area $name]
    set text "$name: [dict get $area text]\n"
    foreach {title kind} {Records record Calls call} {
        set rows {}
        foreach each [dict get $area ${kind}s] {
            lappend rows [list $each [dict get [qx::catalogue::$kind $each] text]]
        }
        append text [qx::layout::section $title [qx::layout::table $rows]]
    }
    set rows {}
    foreach each [qx::catalogue::commands] {
        set command [qx::catalogue::facts $each]
        lassign [parts $command area shape owner] area shape owner
        if {$area eq $name && $shape ne "call" && ![qx::catalogue::is_record $owner]} {
            lappend rows [list $each [qx::wording::purpose $command]]
        }
    }
    append text [qx::layout::section Commands [qx::layout::table $rows]]
    set rows {}
    foreach each [qx::catalogue::tables] {
        set table [qx::catalogue::table $each]
        if {[dict get $table area] eq $name} { lappend rows [list $each [dict get $table text]] }
    }
    append text [qx::layout::section Tables [qx::layout::table $rows]]
    return [string trimright $text \n]
}

# ------------------------------------------------------------------------- the package's own

proc qx::help::own_text {name} {
    set text [described [dict get [qx::commands::all] $name]]
    if {$name in [qx::commands::topics]} { append text "\nCommands\n[group_table $name]" }
    return [string trimright $text \n]
}

proc qx::help::other_text {name} {
    return [string trimright [described [dict get [qx::commands::others] $name]] \n]
}

proc qx::help::described {facts} {
    set text [qx::layout::wrapped [dict get $facts usage] {} 4]
    append text [qx::layout::wrapped [dict get $facts purpose] {  } 2]
    foreach {kind content} [dict get $facts text] {
        append text \n
        if {$kind eq "text"} {
            append text [qx::layout::wrapped $content {  } 2]
        } else {
            foreach line [split $content \n] { append text "  $line\n" }
        }
    }
    return $text
}

proc qx::help::group_text {topic} {
    set text "$topic: [dict get [qx::commands::group $topic] title]\n[group_table $topic]"
    return [string trimright $text \n]
}
