# Package qx: qx::help, qx::apropos, qx::areas. Their results are texts for people, at most 100
# columns wide, made of what catalogue.tcl says, so that there is one for every command, record and
# area.

namespace eval qx::help {
    # The package's own commands: usage and what they do.
    variable own {
        qx::help     {?name?} {tell about a command, a record, an area, a status or one of these}
        qx::apropos  {word} {list what has the word in its name or description}
        qx::areas    {} {list the areas of the SDK}
        qx::get      {handle ?-view views? ?-raw?} {a record as a dict}
        qx::set      {handle dict} {write the fields of a record that the dict names}
        qx::diff     {handle handle ?-view views? ?-raw?} {where two records differ}
        qx::json     {handle ?-view views? ?-raw?} {a record as JSON}
        qx::check    {?-allow statuses? command ?word ...?} {make a status other than 0 an error}
        qx::why      {} {what was wrong with the last command that failed}
        qx::watch    {?on|off?} {keep the words of commands that fail, for qx::why}
        qx::lint     {script.tcl} {what is wrong in a script's commands, without running it}
        qx::template {record ?-view views? ?-raw?} {the dict of a record that is all zero}
    }
}

# What there is to say about a name.
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
            foreach {symbol meaning} $status break
            return "$symbol, status $number of the simulated device\n  $meaning"
        }
    }
    set names [concat [qx::catalogue::commands] [qx::catalogue::records] [qx::catalogue::areas]]
    if {[string match qx::* $name]} {
        set names {}
        foreach {command usage text} $own { lappend names $command }
    }
    return -code error -errorcode [list QX UNKNOWN name $name] \
        "nothing is called \"$name\"; nearest: [join [qx::catalogue::nearest $name $names] {, }]"
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

# The areas and what they have, a line each.
proc qx::help::areas {} {
    set rows {}
    foreach name [qx::catalogue::areas] {
        set area [qx::catalogue::area $name]
        lappend rows [list $name [dict get $area text] \
            "[counted [dict get $area records] record], [counted [dict get $area calls] call]"]
    }
    return [string trimright [table $rows] \n]
}

proc qx::help::counted {list noun} {
    set count [llength $list]
    return "[expr {$count ? $count : "no"}] $noun[expr {$count == 1 ? "" : "s"}]"
}

# What has a word in its name or description: areas, records, fields, calls, and commands beside
# them.
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
        # Those of a record are said by the record and its fields.
        foreach {shape owner text} [parts [qx::catalogue::command $name] shape owner text] break
        if {![qx::catalogue::is_record $owner]} { lappend rows [list $name $text] }
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

# Rows in columns, the last of which is as wide as it is.
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

# Words in lines of at most 100 columns.
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
    set command [qx::catalogue::command $name]
    set text "[dict get $command usage]\n  [dict get $command text]\n"
    set rows {}
    foreach {argument type} [dict get $command arguments] what [dict get $command argument_texts] {
        lappend rows [list $argument [qx::catalogue::native $type] \
            [range_text $command $argument $type] $what]
    }
    append text [section Arguments [table $rows]]
    append text "Result\n  [result_text $command]\n"
    append text [section Related [filled [related $command]]]
    append text "Example\n"
    foreach line [example $command] { append text "  $line\n" }
    return [string trimright $text \n]
}

# Which words an argument takes.
proc qx::help::range_text {command argument type} {
    if {$type eq "void*"} { return "any handle" }
    if {[string match {*[*]} $type]} {
        set text "handle or NULL"
        if {[dict get $command shape] eq "call"} {
            foreach each [dict get [qx::catalogue::call [dict get $command name]] arguments] {
                if {[dict get $each name] ne $argument} continue
                append text [dict get {in {, read} out {, written} inout {, read and written}} \
                    [dict get $each direction]]
            }
        }
        return $text
    }
    foreach {least greatest} [qx::catalogue::range $type] break
    # A bit-field keeps the low bits of what its setter takes.
    foreach {owner name} [parts $command owner field] break
    if {[dict get $command shape] eq "init" && $argument ne "cfg"} { set name $argument }
    if {$name eq $argument && $name ne {}} {
        set width [dict get [qx::catalogue::field $owner $name] width]
        if {$width} { append greatest ", low $width bits" }
    }
    return "$least to $greatest"
}

proc qx::help::result_text {command} {
    set type [dict get $command result]
    switch -glob -- $type {
        none   { return "nothing" }
        status { return "status, 0 for success" }
        low32  { return "the number's low 32 bits with their sign; all of it is printed" }
        *[*]   {
            set text "handle of type [qx::catalogue::native $type]"
            switch -glob -- [dict get $command shape] {
                *create   { append text ", to be released with qx_data_free" }
                get_*     { append text ", into the record itself; NULL for NULL" }
                array_get { append text ", into the array itself; NULL for NULL" }
            }
            return $text
        }
    }
    set width 0
    foreach {owner field} [parts $command owner field] break
    if {$field ne {}} { set width [dict get [qx::catalogue::field $owner $field] width] }
    foreach {least greatest} [qx::catalogue::range $type $width] break
    return "number, $least to $greatest"
}

# Commands that go together with one.
proc qx::help::related {command} {
    foreach {name shape owner field area} [parts $command name shape owner field area] break
    set names {}
    if {$shape eq "call"} {
        # The calls whose names begin alike, and what makes the records and cells that it takes.
        set start [join [lrange [split $name _] 0 1] _]
        foreach call [dict get [qx::catalogue::area $area] calls] {
            if {[string match ${start}_* $call]} { lappend names $call }
        }
        foreach {argument type} [dict get $command arguments] {
            if {[string match {*[*]} $type]} {
                lappend names [creator [string range $type 0 end-1]]
            }
        }
    } else {
        foreach other [qx::catalogue::commands_of $owner] {
            set facts [qx::catalogue::command $other]
            if {[dict get $facts field] eq $field || [dict get $facts shape] in {create dump}} {
                lappend names $other
            }
        }
        if {$shape eq "free"} { lappend names qx_uint32_create qx_flow_create }
        if {[string match *create $shape]} { lappend names qx_data_free }
    }
    set result {}
    foreach each $names { if {$each ne $name && $each ni $result} { lappend result $each } }
    return [lrange $result 0 11]
}

# The command that makes what a pointer of the type points to.
proc qx::help::creator {type} {
    if {[qx::catalogue::is_record $type]} { return [qx::catalogue::stem $type]_create }
    return qx_[qx::catalogue::cell $type]_create
}

# Two lines that run as they are.
proc qx::help::example {command} {
    foreach {name shape arguments result} [parts $command name shape arguments result] break
    if {$shape eq "free"} { return [list "set block \[qx_uint32_create 1\]" "$name \$block"] }
    set before {}
    set words $name
    foreach {argument type} $arguments {
        if {[string match {*[*]} $type]} {
            lappend before "set $argument \[[creation [string range $type 0 end-1]]\]"
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

# The words that make one of a type.
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
    foreach {kind size packed} [parts $record kind size packed] break
    foreach {text fields area} [parts $record text fields area] break
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
    foreach {name offset type width bit count} [parts $field name offset type width bit count] break
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

# The commands of the record as a whole, and how those of its fields are called.
proc qx::help::record_commands {type} {
    set stem [qx::catalogue::stem $type]
    set names {}
    foreach name [qx::catalogue::commands_of $type] {
        if {[dict get [qx::catalogue::command $name] field] eq {}} { lappend names $name }
    }
    return [concat $names [list ${stem}_get_<field> ${stem}_set_<field>]]
}

# The calls that take a record, by itself or inside of another.
proc qx::help::takers {type} {
    set types [list $type]
    for {set at 0} {$at < [llength $types]} {incr at} {
        foreach holder [holders [lindex $types $at]] {
            if {$holder ni $types} { lappend types $holder }
        }
    }
    set names {}
    foreach call [qx::catalogue::calls] {
        foreach argument [dict get [qx::catalogue::call $call] arguments] {
            if {[string range [dict get $argument type] 0 end-1] in $types && $call ni $names} {
                lappend names $call
            }
        }
    }
    return $names
}

# The records that hold a record as a field.
proc qx::help::holders {type} {
    set names {}
    foreach other [qx::catalogue::records] {
        foreach field [dict get [qx::catalogue::record $other] fields] {
            if {[dict get $field type] eq $type && $other ni $names} { lappend names $other }
        }
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
        set command [qx::catalogue::command $each]
        foreach {area shape owner} [parts $command area shape owner] break
        if {$area eq $name && $shape ne "call" && ![qx::catalogue::is_record $owner]} {
            lappend rows [list $each [dict get $command text]]
        }
    }
    append text [section Commands [table $rows]]
    return [string trimright $text \n]
}
