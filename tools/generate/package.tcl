# The catalogue's facts and the default profile for the script package qx: catalogue_data.tcl, which
# only sets variables to dicts, one entry per line; library/qx/catalogue.tcl uses them and documents
# each. Anything that can be derived is left out, because every `package require qx` reads the file.

proc generate::package {profile} {
    write catalogue_data.tcl [package_data $profile]
}

# The text of the file.
proc generate::package_data {profile} {
    variable note
    set text "# What the package qx knows of the SDK; catalogue.tcl answers from it.\n# $note\n"
    append text "namespace eval qx::catalogue \{\n"
    foreach kind {scalar cell area record call command table} {
        append text [package_variable $kind [package_${kind}s]]
    }
    set rows {}
    foreach {name number meaning} [dict get $profile statuses] {
        lappend rows $number [list $name $meaning]
    }
    append text [package_variable status $rows]
    append text [package_variable code [dict get $profile codes]]
    append text [package_variable capacity [dict get $profile capacities]]
    append text [package_variable family [dict get $profile families]]
    return "$text\}\n"
}

proc generate::package_variable {kind rows} {
    set text "    variable ${kind}_data \{\n"
    foreach {name facts} $rows { append text "[list $name $facts]\n" }
    return "$text    \}\n"
}

proc generate::package_scalars {} { return $catalogue::scalar_types }

proc generate::package_cells {} {
    set rows {}
    foreach word $catalogue::model(cells) {
        lappend rows [dict get $catalogue::model(cell,$word) type] $word
    }
    return $rows
}

proc generate::package_areas {} {
    set rows {}
    foreach area [catalogue::areas] {
        set facts [dict create text [dict get [catalogue::area $area] text]]
        foreach kind {record call} {
            set members {}
            foreach name $catalogue::model(${kind}s) {
                if {[dict get [catalogue::$kind $name] area] eq $area} { lappend members $name }
            }
            dict set facts ${kind}s $members
        }
        lappend rows $area $facts
    }
    return $rows
}

proc generate::package_records {} { declared record fields }

# A call's arrays name the argument with their size.
proc generate::package_calls {} {
    set rows {}
    foreach {name facts} [declared call arguments] {
        set arguments {}
        foreach argument [dict get $facts arguments] {
            set size [catalogue::count_of $name [dict get $argument name]]
            set counted_by {}
            if {$size >= 0} {
                set counted_by [dict get [lindex [dict get $facts arguments] $size] name]
            }
            lappend arguments [dict replace $argument counted_by $counted_by]
        }
        lappend rows $name [dict replace $facts arguments $arguments]
    }
    return $rows
}

# Records or calls as they are declared, without their places in the catalogue.
proc generate::declared {kind parts} {
    set rows {}
    foreach name $catalogue::model(${kind}s) {
        set facts [dict remove [catalogue::$kind $name] name place]
        set kept {}
        foreach part [dict get $facts $parts] { lappend kept [dict remove $part place] }
        lappend rows $name [dict replace $facts $parts $kept]
    }
    return $rows
}

proc generate::package_commands {} {
    set rows {}
    foreach command [catalogue::commands] {
        dict update command field field { if {$field ne {}} { set field [dict get $field name] } }
        set facts {}
        foreach key {area shape owner field arguments result} {
            lappend facts [dict get $command $key]
        }
        lappend rows [dict get $command name] $facts
    }
    return $rows
}

# Tables without their places in the catalogue.
proc generate::package_tables {} {
    set rows {}
    foreach name [catalogue::tables] {
        set table [dict remove [catalogue::table $name] name place]
        foreach key {giver node} { dict set table $key [lrange [dict get $table $key] 0 1] }
        foreach key {parts holds} {
            set kept {}
            foreach each [dict get $table $key] { lappend kept [dict remove $each place] }
            dict set table $key $kept
        }
        lappend rows $name $table
    }
    return $rows
}
