# The HTML pages: index, commands, statuses, conventions, and one page per area with its records,
# their byte maps, and its commands. Relies on html.tcl, drawing.tcl, the wording of the package qx
# and the statuses.

namespace eval pages {
    variable statuses {} ;# name, number, meaning, alternating
    variable version {}
}

proc pages::area_page {area} { return area-$area.html }
# The link target of a command, a record or one of its fields.
proc pages::place {command} {
    return [area_page [dict get [qx::catalogue::facts $command] area]]#$command
}
proc pages::record_place {record} {
    return [area_page [dict get [catalogue::record $record] area]]#$record
}
proc pages::command_link {name} { html::code_link [place $name] $name }
proc pages::record_link {name} { html::code_link [record_place $name] $name }

# A native type, with its record as a link.
proc pages::type_link {native} {
    set name [string trimright $native { *}]
    if {![catalogue::is_record $name]} { return [html::code $native] }
    return "<a href=\"[record_place $name]\"><code>[html::escape $native]</code></a>"
}

# Records and commands of an area, in the catalogue's order.
proc pages::records_of {area} {
    set result {}
    foreach command [commands_of $area create] { lappend result [dict get $command owner] }
    return $result
}
proc pages::commands_of {area shapes} {
    set result {}
    foreach command [reference::commands] {
        if {[dict get $command area] ne $area} continue
        foreach shape $shapes {
            if {[string match $shape [dict get $command shape]]} { lappend result $command; break }
        }
    }
    return $result
}

# A line of a section: its key, then text in HTML.
proc pages::keyed {key text} { return "<p><span class=\"key\">$key</span> $text</p>\n" }

# ------------------------------------------------------------------------------------ commands

proc pages::command_section {command level} {
    set name [dict get $command name]
    set words [qx::wording::describe $command]
    set text "<section class=\"command\" id=\"$name\">\n<h$level class=\"usage\"><code><a\
        class=\"self\" href=\"#$name\">$name</a>"
    foreach argument [dict get $words arguments] { append text " <i>[dict get $argument name]</i>" }
    append text "</code></h$level>\n<p>[html::sentence [dict get $words purpose]]</p>\n"
    if {[dict get $words arguments] ne {}} { append text [argument_list $words] }
    append text [keyed Result "[html::escape [dict get $words result]]."]
    foreach note [dict get $words notes] { append text "<p>[html::escape $note]</p>\n" }
    append text [status_lines [dict get $words statuses]][example $command]
    if {[dict get $words related] ne {}} {
        set links {}
        foreach other [dict get $words related] { lappend links [command_link $other] }
        append text [keyed "See also" [join $links {, }]]
    }
    return "$text</section>\n"
}

proc pages::argument_list {words} {
    set text "<dl>\n"
    foreach argument [dict get $words arguments] {
        set direction [dict get $argument direction]
        append text "<dt><code>[dict get $argument name]</code></dt>\n<dd>"
        append text [type_link [dict get $argument type]]
        if {$direction ne {}} { append text " <span class=\"direction\">$direction</span>" }
        append text " [html::sentence [dict get $argument text]]"
        append text " <span class=\"range\">[html::escape [dict get $argument range]]</span>"
        append text "[value_list [dict get $argument values]]</dd>\n"
    }
    return "$text</dl>\n"
}

# The special values of a field or an argument.
proc pages::value_list {values} {
    if {$values eq {}} return
    set parts {}
    foreach {value meaning} $values {
        lappend parts "[html::code $value] [html::escape $meaning]"
    }
    return " <span class=\"values\">[join $parts {; }]</span>"
}

# The statuses that the simulated device answers, as by qx::wording::statuses.
proc pages::status_lines {answers} {
    if {$answers eq {}} return
    foreach key {statuses when usual} { set $key [dict get $answers $key] }
    set text {}
    if {$statuses ne {}} {
        set own [status_links $statuses]
        if {$when ne {}} { append own " ([html::escape $when])" }
        append text [keyed Simulator $own]
    }
    return "$text[keyed [expr {$text eq {} ? "Simulator" : "As most calls"}] [status_links $usual]]"
}
# How an SDK function is called; other commands need no example here.
proc pages::example {command} {
    if {[dict get $command shape] ne "call"} return
    return "<pre>[html::escape [qx::example::shown $command 80]]</pre>\n"
}
proc pages::status_links {names} {
    set links {}
    foreach name $names { lappend links [html::code_link statuses.html#$name $name] }
    return [join $links {, }]
}

# ------------------------------------------------------------------------------------- records

proc pages::record_section {name} {
    set record [catalogue::record $name]
    set kind [expr {[dict get $record kind] eq "union" ? "Union" : "Record"}]
    set facts "$kind of [qx::wording::counted [dict get $record size] byte]"
    if {[dict get $record packed]} { append facts ", packed" }
    set text "<section class=\"record\" id=\"$name\">\n<h2><a class=\"self\"\
        href=\"#$name\"><code>$name</code></a></h2>\n"
    append text "<p>[html::sentence [dict get $record text]]\
        <span class=\"facts\">$facts.</span></p>\n"
    append text "<div class=\"layout\">\n<figure>\n[drawing::map $name]"
    append text "<figcaption>Byte map of $name.[legend $name]</figcaption>\n</figure>\n"
    append text "[field_table $name]</div>\n[used_by $name]"
    append text "<h3 id=\"$name.commands\">Commands of $name</h3>\n"
    foreach command [commands_of [dict get $record area] *] {
        if {[dict get $command owner] eq $name} { append text [command_section $command 4] }
    }
    return "$text</section>\n"
}

# The meaning of the shades that occur in a map.
proc pages::legend {name} {
    set kinds {}
    foreach view [byte_map::views $name] {
        foreach item [dict get $view items] {
            lappend kinds [dict get $item kind]
            foreach bit [dict get $item bits] {
                if {[dict get $bit name] eq {}} { lappend kinds unused }
            }
        }
    }
    set text {}
    foreach {kind words} {
        array "each element of an array has a box" record "darker boxes are records of their own"
        unit "bit 0 of a unit is on the left" padding "hatched bytes are padding"
        unused "hatched bits belong to no field" other "hatched bytes lie outside the view"
    } {
        if {$kind in $kinds} { lappend text $words }
    }
    if {$text eq {}} return
    set text [join $text {; }]
    return " [html::sentence $text]"
}

proc pages::field_table {name} {
    set rows {}
    foreach field [dict get [catalogue::record $name] fields] {
        set type [qx::wording::field_type $field]
        set where [dict get $field offset]
        if {[dict get $field width]} {
            set low [dict get $field bit]
            set high [expr {$low + [dict get $field width] - 1}]
            append where [expr {$low == $high ? " bit $low" : " bits $low-$high"}]
        }
        set bytes [expr {[catalogue::type_size [dict get $field type]] *
            max(1, [dict get $field count])}]
        set shown [html::code $type]
        if {[catalogue::is_record [dict get $field type]]} {
            set shown "<a href=\"[record_place [dict get $field type]]\">$shown</a>"
        }
        lappend rows $name.[dict get $field name] [list [html::code [dict get $field name]] \
            $where $bytes $shown "[html::escape [dict get $field text]][value_list \
                [qx::wording::values $name [dict get $field name]]]"]
    }
    return [html::table "Fields of $name" {Field Offset Bytes Type Meaning} $rows]
}

proc pages::used_by {name} {
    set text {}
    set links {}
    foreach call [qx::catalogue::calls_with $name] { lappend links [command_link $call] }
    if {$links ne {}} { append text [keyed Calls [join $links {, }]] }
    set links {}
    foreach {holder field} [qx::catalogue::holders $name] {
        lappend links [html::code_link [record_place $holder].$field $holder.$field]
    }
    if {$links ne {}} { append text [keyed "Part of" [join $links {, }]] }
    return $text
}

# --------------------------------------------------------------------------------------- pages

proc pages::area_text {area} {
    variable version
    set facts [catalogue::area $area]
    set records [records_of $area]
    set calls [commands_of $area call]
    set others [commands_of $area {cell_* free}]
    set text "<nav class=\"contents\" aria-label=\"On this page\">\n"
    set links {}
    foreach record $records { lappend links [html::code_link #$record $record] }
    if {$links ne {}} { append text [keyed Records [join $links {, }]] }
    foreach {label commands} [list Calls $calls Commands $others] {
        set links {}
        foreach command $commands {
            set name [dict get $command name]
            lappend links [html::code_link #$name $name]
        }
        if {$links ne {}} { append text [keyed $label [join $links {, }]] }
    }
    append text "</nav>\n"
    foreach record $records { append text [record_section $record] }
    if {$calls ne {}} { append text "<h2 id=\"calls\">SDK calls</h2>\n" }
    foreach command $calls { append text [command_section $command 3] }
    if {$others ne {}} { append text "<h2 id=\"cells\">Commands</h2>\n" }
    foreach command $others { append text [command_section $command 3] }
    return [html::page [area_page $area] [dict get $facts text] $version $text]
}

proc pages::index_text {} {
    variable version
    set total [llength [reference::commands]]
    set text "<p>The $total commands of the shell, the [llength [catalogue::records]] records and\
        unions they build, and the [llength [catalogue::calls]] functions of the SDK they call.\
        New here? Read the <a href=\"conventions.html\">conventions</a> first.</p>\n"
    append text "<noscript><p>Searching needs JavaScript. Without it, the\
        <a href=\"commands.html\">list of all commands</a> and the browser's own search\
        do.</p></noscript>\n"
    set rows {}
    foreach area [catalogue::areas] {
        set links {}
        foreach record [records_of $area] { lappend links [record_link $record] }
        set title [dict get [catalogue::area $area] text]
        lappend rows {} [list [html::link [area_page $area] $title] \
            [llength [commands_of $area *]] [llength [commands_of $area call]] [join $links {, }]]
    }
    append text [html::table "The areas" {Area Commands Calls Records} $rows]
    return [html::page index.html "Commands and records" $version $text]
}

proc pages::commands_text {} {
    variable version
    set text "<p>In the order of the command table, with the words each takes.</p>\n"
    foreach area [catalogue::areas] {
        set rows {}
        foreach command [commands_of $area *] {
            set words {}
            foreach {name type} [dict get $command arguments] { lappend words $name }
            lappend rows {} [list [command_link [dict get $command name]] "<i>[join $words]</i>" \
                [html::sentence [qx::wording::purpose $command]]]
        }
        append text "<h2 id=\"$area\">[html::escape [dict get [catalogue::area $area] text]]</h2>\n"
        append text [html::table "Commands: [dict get [catalogue::area $area] text]" \
            {Command Arguments Purpose} $rows]
    }
    return [html::page commands.html "All commands" $version $text]
}

proc pages::statuses_text {} {
    variable version
    variable statuses
    set text "<p>What the functions of the simulated device answer. The numbers are its own: a\
        board's library may answer others, and only 0 is sure to be success. A status stays a plain\
        result of the command; not a Tcl error.</p>\n"
    set rows {}
    foreach {name number meaning} $statuses {
        set links {}
        foreach call [catalogue::calls] {
            if {$name ni [dict get [qx::catalogue::answers $call] statuses]} continue
            lappend links [command_link $call]
        }
        if {$links eq {}} { set links [list "any function"] }
        lappend rows $name \
            [list [html::code $name] $number [html::sentence $meaning] [join $links {, }]]
    }
    append text [html::table Statuses {Status Number Meaning {Answered by}} $rows]
    return [html::page statuses.html Statuses $version $text]
}

# ------------------------------------------------------------------------------ search entries

# One entry per line: name, place, kind, words to search and to show.
proc pages::entries_text {} {
    variable statuses
    set rows {}
    foreach area [catalogue::areas] {
        lappend rows [entry $area [area_page $area] area [dict get [catalogue::area $area] text]]
    }
    foreach name [catalogue::records] {
        set record [catalogue::record $name]
        lappend rows [entry $name [record_place $name] [dict get $record kind] \
            [dict get $record text]]
        foreach field [dict get $record fields] {
            set full $name.[dict get $field name]
            lappend rows [entry $full [record_place $name].[dict get $field name] field \
                [dict get $field text]]
        }
    }
    foreach command [reference::commands] {
        set name [dict get $command name]
        lappend rows [entry $name [place $name] command [qx::wording::purpose $command]]
    }
    foreach {name number meaning} $statuses {
        lappend rows [entry "$name $number" statuses.html#$name status $meaning]
    }
    dict for {name facts} [qx::commands::all] {
        lappend rows [entry $name package.html#$name command [dict get $facts purpose]]
    }
    return "// The entries that search.js searches: name, place, kind, words.\nvar entries =\
        \[\n[join $rows ,\n]\n\];\n"
}

# A row of strings; characters that could end a string are escaped.
proc pages::entry {args} {
    set parts {}
    foreach word $args { lappend parts "\"[string map {\\ \\\\ \" \\\" < \\u003c} $word]\"" }
    return "\[[join $parts ,]\]"
}

# -------------------------------------------------------------------------------- all of them

proc pages::files {} {
    variable version
    set hand_written [reference::file_text [file join $reference::parts conventions.html]]
    set files [list index.html [index_text] commands.html [commands_text] \
        package.html [package::page] statuses.html [statuses_text] \
        conventions.html [html::page conventions.html Conventions $version $hand_written] \
        entries.js [entries_text]]
    foreach area [catalogue::areas] { lappend files [area_page $area] [area_text $area] }
    foreach name {style.css search.js} {
        lappend files $name [reference::file_text [file join $reference::parts $name]]
    }
    set result {}
    foreach {name text} $files { lappend result html/$name $text }
    return $result
}
