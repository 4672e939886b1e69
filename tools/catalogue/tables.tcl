# The tables that a script can list through the SDK's calls: `table` declarations, read and checked
# against the calls and records they name. Relies on catalogue.tcl and reader.tcl.

# A table: area, text, parts, keys, giver, nodes, holds, instead, place. Each part is a call with
# its `walk`, `indexes`, statuses `empty`, `ends`, `bare` and out-argument `absent`.
proc catalogue::declare_table {place words} {
    variable model
    expect $place 3 $words "table name description { lines }"
    lassign $words name text body
    check_name $place $name table
    check_text $place $text
    enter table $place $name
    set table [dict create name $name area $model(area) text $text parts {} keys {} giver {} \
        node {} holds {} instead {} place $place]
    foreach {here line} [body_lines $place $body] {
        set word [lindex $line 0]
        if {$word ni {call walk leads index keys empty ends bare absent node holds by if within
                instead}} {
            fail $here "\"$word\" is not a line of a table"
        }
        if {$word in {walk leads index empty ends bare absent} && [dict get $table parts] eq {}} {
            fail $here "a table's $word belongs to a call, and there is none above it"
        }
        set table [table_$word $here $table [lrange $line 1 end]]
    }
    if {([dict get $table parts] eq {}) == ([dict get $table instead] eq {})} {
        fail $place "table $name has either calls, or an instead that says what can be asked"
    }
    lappend model(tables) $name
    set model(table,$name) $table
}

proc catalogue::table_call {place table words} {
    if {[llength $words] ni {1 2}} { fail $place "expected: call function ?part?" }
    lassign $words call part
    if {$part ne {}} { check_name $place $part part }
    foreach other [dict get $table parts] {
        if {$part eq {} || [dict get $other part] in [list {} $part]} {
            fail $place "several calls of a table need a part each, with a name of its own"
        }
    }
    dict lappend table parts [dict create call $call part $part walk {} leads {} indexes {} \
        empty {} ends {} bare {} absent {} place $place]
    return $table
}

# Changes one fact of the part that is being read.
proc catalogue::of_last_part {table fact value} {
    set parts [dict get $table parts]
    lset parts end [dict replace [lindex $parts end] $fact $value]
    return [dict replace $table parts $parts]
}

proc catalogue::table_walk {place table words} {
    if {$words ni {next getnext}} { fail $place "expected: walk next, or walk getnext" }
    return [of_last_part $table walk $words]
}

# What a walk is ordered by.
proc catalogue::table_leads {place table words} {
    expect $place 1 $words "leads path"
    return [of_last_part $table leads [lindex $words 0]]
}

# An index: its argument and its values, one of {range LEAST GREATEST}, {ids KIND}, codes,
# {capacity NAME}. The kind of ids is the place of their list in index.tcl, from 0.
proc catalogue::table_index {place table words} {
    expect $place 2 $words "index argument least..greatest|codes|ids|capacity"
    lassign $words argument values
    if {$values eq "ids"} {
        set kind [id_kind $argument]
        if {!$kind} { fail $place "$argument is in no list of ids" }
        set values [list ids [expr {$kind - 1}]]
    } elseif {[string match *..* $values]} {
        set values [concat range [read_range $place $values {}]]
    } elseif {$values ne "codes"} {
        check_name $place $values capacity
        set values [list capacity $values]
    }
    set indexes [dict get [lindex [dict get $table parts] end] indexes]
    if {[dict exists $indexes $argument]} { fail $place "index $argument is there already" }
    return [of_last_part $table indexes [dict replace $indexes $argument $values]]
}

# What a table is asked by, and whose rows have it.
proc catalogue::table_keys {place table words} {
    set keys [as_list [lindex $words 0] $place]
    if {[llength $words] ni {2 4} || $keys eq {}} {
        fail $place "expected: keys {argument ...} table ?path word?"
    }
    if {[dict get $table keys] ne {}} { fail $place "the keys are there already" }
    dict set table keys $keys
    dict set table giver [list [lindex $words 1] [lrange $words 2 end] $place]
    return $table
}

proc catalogue::table_empty {place table words} { table_statuses empty $place $table $words }
proc catalogue::table_ends  {place table words} { table_statuses ends $place $table $words }
proc catalogue::table_bare  {place table words} { table_statuses bare $place $table $words }

proc catalogue::table_statuses {fact place table words} {
    if {$words eq {}} { fail $place "expected: $fact status ..." }
    foreach word $words {
        if {![regexp {^[A-Z][A-Z0-9_]*$} $word]} { fail $place "\"$word\" is not a status's name" }
    }
    return [of_last_part $table $fact $words]
}

proc catalogue::table_absent {place table words} {
    expect $place 1 $words "absent argument"
    return [of_last_part $table absent [lindex $words 0]]
}

proc catalogue::table_instead {place table words} {
    expect $place 1 $words "instead description"
    check_text $place [lindex $words 0]
    return [dict replace $table instead [lindex $words 0]]
}

proc catalogue::table_node {place table words} {
    if {$words eq {}} { fail $place "expected: node noun ?path ...?" }
    check_text $place [lindex $words 0]
    return [dict replace $table node [list [lindex $words 0] [lrange $words 1 end] $place]]
}

# The paths of a row, and =word for a code word, that together name a row of another table.
proc catalogue::table_holds {place table words} {
    expect $place 2 $words "holds {path|=word ...} table"
    dict lappend table holds [dict create paths [as_list [lindex $words 0] $place] \
        table [lindex $words 1] by {} if {} within {} place $place]
    return $table
}

# What the last `holds` depends on: by the other table's path, if a path has a code word, within a
# range.
proc catalogue::table_by {place table words} {
    expect $place 1 $words "by path"
    return [of_last_holds $place $table by [lindex $words 0]]
}

proc catalogue::table_if {place table words} {
    expect $place 2 $words "if path word"
    return [of_last_holds $place $table if $words]
}

proc catalogue::table_within {place table words} {
    expect $place 1 $words "within least..greatest"
    return [of_last_holds $place $table within [read_range $place [lindex $words 0] {}]]
}

proc catalogue::of_last_holds {place table fact value} {
    set holds [dict get $table holds]
    if {$holds eq {}} { fail $place "there is no holds above this line" }
    lset holds end [dict replace [lindex $holds end] $fact $value]
    return [dict replace $table holds $holds]
}

# ---------------------------------------------------------------------------------- as a whole

proc catalogue::check_tables {} {
    variable model
    foreach name $model(tables) {
        set table $model(table,$name)
        foreach part [dict get $table parts] { check_part $table $part }
        foreach {names place} [table_names $table] {
            if {$names ni $model(tables)} { fail $place "there is no table $names" }
        }
        check_giver $table
        check_graph $table
    }
}

# The tables that a table names, each with the place.
proc catalogue::table_names {table} {
    set result {}
    lassign [dict get $table giver] giver condition place
    if {$giver ne {}} { lappend result $giver $place }
    foreach holds [dict get $table holds] {
        lappend result [dict get $holds table] [dict get $holds place]
    }
    return $result
}

# Each argument of a part's call must have its values from somewhere.
proc catalogue::check_part {table part} {
    variable model
    set place [dict get $part place]
    set call [dict get $part call]
    if {$call ni $model(calls)} { fail $place "there is no call $call" }
    set indexes [dict get $part indexes]
    set asked [concat [dict keys $indexes] [dict get $table keys]]
    foreach path $asked { check_asked $place $call $path }
    dict for {path values} $indexes {
        if {[lindex $values 0] ne "range"} continue
        set type [type_of_path $place $call $path]
        set most [expr {(1 << (8 * [type_size $type])) - 1}]
        if {[lindex $values 2] > $most} {
            fail $place "$path goes up to [lindex $values 2], and its type to $most"
        }
    }
    set walked {}
    foreach argument [lrange [dict get [call $call] arguments] [names_device $call] end] {
        lassign [list [dict get $argument name] [dict get $argument direction]] name direction
        if {$direction eq "inout" && [dict get $part walk] ne {}} { set walked $name; continue }
        if {$direction eq "out" || $name in $asked} continue
        if {[lsearch -glob $asked $name.*] >= 0} continue
        if {$name eq "next" && [dict get $part walk] eq "next"} continue
        fail $place "$name of $call is neither an index nor a key"
    }
    if {[dict get $part walk] ne {}} {
        if {$walked eq {}} { fail $place "a walk needs an inout record, and $call has none" }
        if {[dict get $part ends] eq {}} { fail $place "a walk needs the status that ends it" }
        if {[dict get $part leads] eq {}} { fail $place "a walk needs what leads to its rows" }
        type_of_path $place $call [dict get $part leads]
    }
    set absent [dict get $part absent]
    if {$absent ne {}} {
        if {[is_record [type_of_path $place $call $absent]] || [is_read $call $absent]} {
            fail $place "absent names a number that $call puts out, and $absent is none"
        }
    }
}

# The tables whose first index may be given as ids of a board: name and greatest number by turns.
proc catalogue::id_tables {} {
    variable model
    set result {}
    foreach name $model(tables) {
        set parts [dict get $model(table,$name) parts]
        set part [lindex $parts 0]
        if {[llength $parts] != 1 || [dict get $part walk] ne {}} continue
        lassign [dict get $part indexes] path values
        if {[lindex $values 0] ni {ids range}} continue
        set type [type_of_path [dict get $part place] [dict get $part call] $path]
        lappend result $name [expr {(1 << (8 * [type_size $type])) - 1}]
    }
    return $result
}

# The type of a number in a call's argument, or in a record that one points to.
proc catalogue::type_of_path {place call path} {
    set words [split $path .]
    foreach argument [dict get [call $call] arguments] {
        if {[dict get $argument name] ne [lindex $words 0]} continue
        set type [string trimright [dict get $argument type] *]
        foreach word [lrange $words 1 end] {
            if {![is_record $type]} { fail $place "$path: $type has no fields" }
            set found {}
            foreach field [dict get [record $type] fields] {
                if {[dict get $field name] eq $word} { set found [dict get $field type] }
            }
            if {$found eq {}} { fail $place "$path: $type has no field $word" }
            set type $found
        }
        return $type
    }
    fail $place "$call has no argument [lindex $words 0]"
}

# An index or a key is a number that the call reads.
proc catalogue::check_asked {place call path} {
    if {[is_record [type_of_path $place $call $path]]} { fail $place "$path is not a number" }
    if {![is_read $call $path]} { fail $place "$path is not read by $call" }
}

# Whether a call reads the argument that a path begins with.
proc catalogue::is_read {call path} {
    foreach argument [dict get [call $call] arguments] {
        if {[dict get $argument name] eq [lindex [split $path .] 0]} {
            return [expr {[dict get $argument direction] ne "out"}]
        }
    }
}

# The identity of a table's rows: keys and indexes.
proc catalogue::asked_by {table} {
    if {[dict get $table parts] eq {}} { return id }
    return [concat [dict get $table keys] \
        [dict keys [dict get [lindex [dict get $table parts] 0] indexes]]]
}

proc catalogue::last_names {paths} {
    set result {}
    foreach path $paths { lappend result [lindex [split $path .] end] }
    return $result
}

proc catalogue::check_giver {table} {
    variable model
    lassign [dict get $table giver] giver condition place
    if {$giver eq {}} return
    set has [last_names [asked_by $model(table,$giver)]]
    foreach name [last_names [dict get $table keys]] {
        if {$name ni $has} { fail $place "the rows of $giver have no $name" }
    }
    check_condition $place $model(table,$giver) $condition
}

proc catalogue::check_condition {place table condition} {
    if {$condition eq {}} return
    check_row_path $place $table [lindex $condition 0]
}

proc catalogue::check_row_path {place table path} {
    set part [lindex [dict get $table parts] 0]
    if {$part eq {}} { fail $place "$path: table [dict get $table name] has no rows" }
    type_of_path $place [dict get $part call] $path
}

proc catalogue::check_graph {table} {
    variable model
    lassign [dict get $table node] noun paths place
    foreach path $paths { check_row_path $place $table $path }
    foreach holds [dict get $table holds] {
        set place [dict get $holds place]
        if {[dict get $table node] eq {}} { fail $place "a table that holds needs its node" }
        set target $model(table,[dict get $holds table])
        if {[dict get $target node] eq {}} {
            fail $place "table [dict get $target name] has no node"
        }
        foreach path [dict get $holds paths] {
            if {![string match =* $path]} { check_row_path $place $table $path }
        }
        check_condition $place $table [dict get $holds if]
        set by [dict get $holds by]
        if {$by ne {}} {
            check_row_path $place $target $by
        } elseif {[llength [dict get $holds paths]] != [llength [asked_by $target]]} {
            fail $place "a row of [dict get $target name] is named by [asked_by $target]"
        }
    }
}
