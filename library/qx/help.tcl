# Package qx: qx::help, qx::apropos, qx::areas. Their results are texts for people, generated from
# catalogue.tcl and wording.tcl, so that every command, record and area has one.

namespace eval qx::help {
    # The package's own commands: name, usage, purpose.
    variable own {
        qx::help     {?name?} {describe a command, a record, an area, a status or one of these}
        qx::apropos  {word} {list everything with the word in its name or description}
        qx::areas    {} {list the areas of the SDK}
        qx::call     {?-allow statuses? ?-status name? ?-dict? function ?word ...?}
            {call an SDK function with records as dicts, and return what it puts out}
        qx::new      {record ?dict?} {create a record and return its handle}
        qx::with     {name record ?dict? body} {run the body with a new record, and release it}
        qx::get      {handle ?path? ?-view views? ?-raw?} {return a record as a dict, or one value}
        qx::set      {handle dict|path value ?path value ...?} {write the named fields of a record}
        qx::diff     {handle handle ?-view views? ?-raw?} {list where two records differ}
        qx::json     {handle ?-view views? ?-raw?} {return a record as JSON}
        qx::check    {?-allow statuses? command ?word ...?} {make a status other than 0 an error}
        qx::why      {} {explain the last command that failed}
        qx::watch    {?on|off?} {record the words of failing commands, for qx::why}
        qx::lint     {script.tcl} {find mistakes in a script's commands, without running it}
        qx::template {record ?-view views? ?-raw?} {return the dict of a record that is all zero}
        qx::sim::attach    {?file?} {control the simulator through a control file}
        qx::sim::detach    {} {end all settings and remove the control file}
        qx::sim::fault     {pattern when status} {make calls of some functions fail}
        qx::sim::latency   {pattern microseconds} {make calls of some functions slow}
        qx::sim::log       {file} {log every call as a line of JSON}
        qx::sim::keys      {onoff} {write keys out in logs and snapshots, or not}
        qx::sim::fired     {} {list the faults in force and how many calls each has answered}
        qx::sim::expect_fired {} {check that every fault in force has answered a call}
        qx::sim::clear     {} {end all faults, latencies and the log}
        qx::sim::reset     {} {return all devices to their initial state}
        qx::sim::snapshot  {?file?} {write or return the configuration of all devices as JSON}
        qx::sim::state     {?file?} {the same with clocks, counters and table usage}
        qx::sim::save      {file} {write all devices with their keys to a file, for restore}
        qx::sim::restore   {file} {replace all devices by those that save has written}
        qx::sim::flow_key  {flow} {return the bytes that the flow table hashes}
        qx::sim::flow_slot {flow} {return the flow's hash slot in the flow table}
        qx::sim::flow_slots {flow} {return the slots in which the flow may be, in order}
        qx::sim::find_flow {device flow} {return the slot that holds a flow on a device, or -1}
    }
}

# The help text of a name.
proc qx::help::about {{name {}}} {
    variable own
    if {$name eq {}} { return [beginning] }
    set name [string trimleft $name :]
    if {[qx::catalogue::is_command $name]} { return [command_text $name] }
    if {[qx::catalogue::is_record $name]} { return [record_text $name] }
    if {$name in [qx::catalogue::areas]} { return [area_text $name] }
    foreach {command usage text} $own {
        if {$command eq $name} { return "[string trimright "$command $usage"]\n  $text" }
    }
    dict for {number status} [qx::catalogue::statuses] {
        if {$name eq $number || $name eq [lindex $status 0]} {
            lassign $status symbol meaning
            return "$symbol, status $number of the simulated device\n  $meaning"
        }
    }
    set names [concat [qx::catalogue::commands] [qx::catalogue::records] [qx::catalogue::areas]]
    if {[string match qx::* $name]} {
        set names {}
        foreach {command usage text} $own { lappend names $command }
    }
    return -code error -errorcode [list QX UNKNOWN name $name] \
        "nothing is called \"$name\"[qx::catalogue::like $name $names]"
}

proc qx::help::beginning {} {
    variable own
    set text "A handle is what a _create command gives; qx_data_free releases it. SDK functions\n"
    append text "return a status, 0 for success. Areas, records and commands have a text each:\n"
    append text "  qx::help flow    qx::help qx_flow_t    qx::help qx_flow_add\n\n"
    append text "Commands of this package\n"
    set rows {}
    foreach {name usage what} $own { lappend rows [list [string trimright "$name $usage"] $what] }
    append text [table $rows]
    append text "\nAreas\n[areas]"
    return $text
}

# The areas and their contents, one per line.
proc qx::help::areas {} {
    set rows {}
    foreach name [qx::catalogue::areas] {
        set area [qx::catalogue::area $name]
        lappend rows [list $name [dict get $area text] \
            "[counted [dict get $area records] record], [counted [dict get $area calls] call]"]
    }
    return [string trimright [table $rows] \n]
}

proc qx::help::counted {list noun} { qx::wording::counted [llength $list] $noun }

# Everything with a word in its name or description: areas, records, fields, calls, and other
# commands.
proc qx::help::apropos {word} {
    set rows {}
    foreach name [qx::catalogue::areas] {
        lappend rows [list $name "area: [dict get [qx::catalogue::area $name] text]"]
    }
    foreach type [qx::catalogue::records] {
        set record [qx::catalogue::record $type]
        lappend rows [list $type "record: [dict get $record text]"]
        foreach field [dict get $record fields] {
            lappend rows [list $type.[dict get $field name] [dict get $field text]]
        }
    }
    foreach name [qx::catalogue::commands] {
        # A record's commands are covered by the record and its fields.
        set facts [qx::catalogue::facts $name]
        if {![qx::catalogue::is_record [dict get $facts owner]]} {
            lappend rows [list $name [qx::wording::purpose $facts]]
        }
    }
    set found {}
    foreach row $rows {
        if {[string first [string tolower $word] [string tolower $row]] >= 0} { lappend found $row }
    }
    if {$found eq {}} { return "nothing has \"$word\" in its name or description" }
    return [string trimright [table $found] \n]
}

# ------------------------------------------------------------------------------------ layout

# The values of some keys of a dict.
proc qx::help::parts {dict args} {
    set values {}
    foreach key $args { lappend values [dict get $dict $key] }
    return $values
}

# Rows in aligned columns; the last column is not padded.
proc qx::help::table {rows} {
    if {$rows eq {}} return
    set last [expr {[llength [lindex $rows 0]] - 1}]
    for {set column 0} {$column < $last} {incr column} {
        set widths($column) 0
        foreach row $rows {
            set width [string length [lindex $row $column]]
            set widths($column) [expr {max($widths($column), $width)}]
        }
    }
    set text {}
    foreach row $rows {
        set line {}
        for {set column 0} {$column < $last} {incr column} {
            append line [format "  %-*s" $widths($column) [lindex $row $column]]
        }
        append text "$line  [lindex $row $last]\n"
    }
    return $text
}

# Words wrapped into lines of at most 100 columns.
proc qx::help::filled {words} {
    if {$words eq {}} return
    set text {}
    set line {}
    foreach word $words {
        if {[string length "$line  $word"] > 100} {
            append text $line\n
            set line {}
        }
        append line "  $word"
    }
    return "$text$line\n"
}

proc qx::help::section {title text} {
    if {$text eq {}} return
    return "$title\n$text"
}

# ---------------------------------------------------------------------------------- commands

proc qx::help::command_text {name} {
    set command [qx::catalogue::facts $name]
    set words [qx::wording::describe $command]
    set text "[dict get $command usage]\n  [dict get $words purpose]\n"
    set rows {}
    foreach argument [dict get $words arguments] {
        set row [parts $argument name type range text]
        set direction [dict get $argument direction]
        if {$direction ne {}} { lset row 2 "[lindex $row 2], $direction" }
        lappend rows $row
    }
    append text [section Arguments [table $rows]]
    append text "Result\n  [dict get $words result]\n"
    set notes {}
    foreach note [dict get $words notes] { append notes "  $note\n" }
    append text [section Notes $notes]
    append text [section Related [filled [lrange [dict get $words related] 0 11]]]
    append text "Example\n"
    foreach line [example $command] { append text "  $line\n" }
    return [string trimright $text \n]
}

# The command that creates the target of a pointer of the type.
proc qx::help::creator {type} {
    if {[qx::catalogue::is_record $type]} { return [qx::catalogue::stem $type]_create }
    return qx_[qx::catalogue::cell $type]_create
}

# An example of two lines that can be run unchanged.
proc qx::help::example {command} {
    lassign [parts $command name shape arguments result] name shape arguments result
    if {$shape eq "free"} { return [list "set block \[qx_uint32_create 1\]" "$name \$block"] }
    set before {}
    set words $name
    foreach {argument type} $arguments {
        if {[qx::catalogue::is_pointer $type]} {
            lappend before "set $argument \[[creation [qx::catalogue::target $type]]\]"
            append words " \$$argument"
        } else {
            append words " [example_number $argument]"
        }
    }
    if {[string match *create $shape]} {
        return [list "set block \[$words\]" "qx_data_free \$block"]
    }
    if {$before eq {}} { return [list "set status \[$words\]" "puts \"status \$status\""] }
    return [list [join $before {; }] $words]
}

# The command that creates an object of a type.
proc qx::help::creation {type} {
    if {[qx::catalogue::is_record $type]} { return [creator $type] }
    return "[creator $type] 0"
}

proc qx::help::example_number {argument} {
    if {$argument in {device_id dev_id idx index data}} { return 0 }
    return 1
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
    append shown [table $rows]
    append shown [section Commands [filled [record_commands $type]]]
    append shown [section {Calls that take it} [filled [takers $type]]]
    append shown [section {Records that hold it} [filled [holders $type]]]
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

# ------------------------------------------------------------------------------------- areas

proc qx::help::area_text {name} {
    set area [qx::catalogue::area $name]
    set text "$name: [dict get $area text]\n"
    foreach {title kind} {Records record Calls call} {
        set rows {}
        foreach each [dict get $area ${kind}s] {
            lappend rows [list $each [dict get [qx::catalogue::$kind $each] text]]
        }
        append text [section $title [table $rows]]
    }
    set rows {}
    foreach each [qx::catalogue::commands] {
        set command [qx::catalogue::facts $each]
        lassign [parts $command area shape owner] area shape owner
        if {$area eq $name && $shape ne "call" && ![qx::catalogue::is_record $owner]} {
            lappend rows [list $each [qx::wording::purpose $command]]
        }
    }
    append text [section Commands [table $rows]]
    return [string trimright $text \n]
}
