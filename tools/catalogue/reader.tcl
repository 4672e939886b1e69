# Reads the catalogue's files into the model, declaration by declaration. The files are data: they
# are read as Tcl lists and never evaluated. Relies on catalogue.tcl and checks.tcl.

# Splits a file into declarations, each a list with the line it starts on, and passes each to the
# procedure `declare_<word>`.
proc catalogue::read_file {file words} {
    if {[catch {open $file} channel]} { fail [list [shown $file] 0] "cannot be read" }
    set text [read $channel]
    close $channel
    set number 0
    set start 0
    set pending {}
    foreach line [split $text \n] {
        incr number
        if {$pending eq {}} {
            if {[regexp {^\s*(#|$)} $line]} continue
            set start $number
        }
        append pending $line\n
        if {![info complete $pending]} continue
        set place [list [shown $file] $start]
        set declaration [as_list $pending $place]
        set pending {}
        set word [lindex $declaration 0]
        if {$word ni $words} {
            fail $place "\"$word\" is not a declaration; known here: [join $words {, }]"
        }
        declare_$word $place [lrange $declaration 1 end]
    }
    if {$pending ne {}} { fail [list [shown $file] $start] "the declaration has no end" }
}

proc catalogue::as_list {text place} {
    if {[catch {llength $text} reason]} { fail $place $reason }
    return [lrange $text 0 end]
}

# The lines of a body as pairs of place and list, without comments and blank lines.
proc catalogue::body_lines {place body} {
    lassign $place file line
    set result {}
    foreach text [split $body \n] {
        if {![regexp {^\s*(#|$)} $text]} {
            set here [list $file $line]
            lappend result $here [as_list $text $here]
        }
        incr line
    }
    return $result
}

proc catalogue::expect {place count words usage} {
    if {$count ne [llength $words]} { fail $place "expected: $usage" }
}

proc catalogue::declare_areas {place words} {
    variable model
    if {$model(areas) ne {}} { fail $place "the areas are already listed" }
    if {$words eq {}} { fail $place "expected: areas name ..." }
    foreach area $words {
        check_name $place $area area
        if {$area eq "index"} { fail $place "index is the name of this file, not of an area" }
        if {$area in $model(areas)} { fail $place "area $area is listed twice" }
        lappend model(areas) $area
    }
    set model(line,areas) [lindex $place 1]
}

proc catalogue::declare_argument {place words} {
    variable model
    set range {}
    if {[lindex $words 1] eq "-range"} {
        set range [read_range $place [lindex $words 2]]
        set words [lreplace $words 1 2]
    }
    expect $place 2 $words "argument name ?-range least..greatest? description"
    lassign $words name text
    check_name $place $name argument
    check_text $place $text
    if {[dict exists $model(arguments) $name]} { fail $place "argument $name is described twice" }
    dict set model(arguments) $name [list [with_range $text $range] $range]
}

# The valid range of a number: 0..63 -> {0 63}.
proc catalogue::read_range {place word {option {-range }}} {
    if {![regexp {^(0|[1-9]\d{0,9})\.\.([1-9]\d{0,9})$} $word -> least greatest]
            || $least >= $greatest} { fail $place "$option\"$word\" is not like 0..63" }
    return [list $least $greatest]
}

# A description with the range added.
proc catalogue::with_range {text range} {
    if {$range eq {}} { return $text }
    return "$text, [join $range { to }]"
}

# Fields that are shown as hexadecimal numbers: names, or record.name for one of several.
proc catalogue::declare_hexadecimal {place words} {
    variable model
    expect $place 1 $words "hexadecimal { fields }"
    if {$model(hexadecimal) ne {}} { fail $place "the hexadecimal fields are already listed" }
    set model(hexadecimal) [list [as_list [lindex $words 0] $place] $place]
}

# The ids of one kind that a device assigns: arguments by name, fields as record.name.
proc catalogue::declare_ids {place words} {
    variable model
    expect $place 2 $words "ids kind { arguments and fields }"
    lassign $words kind places
    check_name $place $kind "kind of id"
    if {[dict exists $model(ids) $kind]} { fail $place "the ids of kind $kind are already listed" }
    dict set model(ids) $kind [list [as_list $places $place] $place]
}

proc catalogue::declare_area {place words} {
    variable model
    expect $place 2 $words "area name description"
    lassign $words name text
    if {$model(area) ne {}} { fail $place "the file already declares area $model(area)" }
    check_text $place $text
    set model(area) $name
    set model(area,$name) [dict create name $name text $text file [lindex $place 0]]
}

# Adds a named item to the model. A second one with the same name is a mistake, reported with the
# place of the first.
proc catalogue::enter {kind place name} {
    variable model
    if {$model(area) eq {}} { fail $place "the file has to begin with its area" }
    if {[info exists model(place,$kind,$name)]} {
        fail $place "$kind $name is already declared at [join $model(place,$kind,$name) :]"
    }
    set model(place,$kind,$name) $place
}

proc catalogue::declare_record {place words} { declare_layout record $place $words }
proc catalogue::declare_union  {place words} { declare_layout union $place $words }

proc catalogue::declare_layout {kind place words} {
    variable model
    set packed [expr {[lindex $words 2] eq "packed"}]
    if {$packed} { set words [lreplace $words 2 2] }
    expect $place 4 $words "$kind name size ?packed? description { fields }"
    lassign $words name size text body
    check_name $place $name $kind
    check_text $place $text
    enter record $place $name
    check_number $place size $size
    set fields {}
    foreach {here line} [body_lines $place $body] {
        set field [read_field $here $line]
        foreach known $fields {
            if {[dict get $known name] eq [dict get $field name]} {
                fail $here "field [dict get $field name] is already declared at\
                    [join [dict get $known place] :]"
            }
        }
        lappend fields $field
    }
    if {$fields eq {}} { fail $place "$kind $name has no fields" }
    lappend model(records) $name
    set model(record,$name) [dict create name $name kind $kind size $size packed $packed \
        text $text fields $fields area $model(area) place $place]
    lappend model(groups) [list record $name]
}

# One field line: offset[.bit] type[count] or type:width, name, options, description.
proc catalogue::read_field {place line} {
    variable scalar_types
    if {[llength $line] < 4} { fail $place "expected: offset type name ?option ...? description" }
    lassign $line where type name
    set options [lrange $line 3 end-1]
    check_name $place $name field
    check_text $place [lindex $line end]
    set field [dict create name $name place $place text [lindex $line end] bit 0 width 0 count 0 \
        set_as {} holds {} dumped 1 range {}]
    if {![regexp {^(\d+)(?:\.(\d+))?$} $where -> offset bit]} {
        fail $place "\"$where\" is not an offset"
    }
    check_number $place offset $offset
    dict set field offset $offset
    if {[regexp {^(\w+)\[(\d+)\]$} $type -> element count]} {
        if {$bit ne {}} { fail $place "$name is an array and has no bit number" }
        check_number $place "element count" $count
        dict set field count $count
    } elseif {[regexp {^(\w+):(\d+)$} $type -> element width]} {
        if {$bit eq {}} { fail $place "$name is a bit-field and needs its lowest bit, as in 76.4" }
        check_number $place width $width
        check_number $place bit $bit 0
        dict set field bit $bit
        dict set field width $width
    } else {
        if {$bit ne {}} { fail $place "$name is not a bit-field and has no bit number" }
        set element $type
    }
    dict set field type $element
    while {$options ne {}} {
        switch -- [lindex $options 0] {
            -no-dump {
                dict set field dumped 0
                set options [lrange $options 1 end]
            }
            -set-as {
                set type [lindex $options 1]
                if {$type ni {u8 u16 u32}} { fail $place "-set-as \"$type\" is not a field type" }
                dict set field set_as $type
                set options [lrange $options 2 end]
            }
            -holds {
                check_holds $place $field [lindex $options 1]
                dict set field holds [lindex $options 1]
                set options [lrange $options 2 end]
            }
            -view-by {
                check_view_by $place [lindex $options 1]
                dict set field view_by [lindex $options 1]
                set options [lrange $options 2 end]
            }
            -range {
                set range [read_range $place [lindex $options 1]]
                check_range $place $name $element [dict get $field width] $range
                dict set field range $range
                dict set field text [with_range [dict get $field text] $range]
                set options [lrange $options 2 end]
            }
            default { fail $place "\"[lindex $options 0]\" is not a field option" }
        }
    }
    return $field
}

proc catalogue::declare_call {place words} {
    variable model
    expect $place 3 $words "call name description { arguments }"
    lassign $words name text body
    check_name $place $name call
    check_text $place $text
    enter call $place $name
    set arguments {}
    set names {}
    set example {}
    foreach {here line} [body_lines $place $body] {
        if {[lindex $line 0] in {after example}} {
            set example [read_example $here $example $line]
            continue
        }
        if {[llength $line] ni {3 4}} { fail $here "expected: direction type name ?description?" }
        lassign [concat $line {{}}] direction type argument description
        if {$direction ni {in out inout}} { fail $here "\"$direction\" is not a direction" }
        check_name $here $argument argument
        if {$argument eq $name} { fail $here "argument $argument is named like its call" }
        if {$argument in $names} { fail $here "argument $argument is already declared" }
        lappend names $argument
        if {![string match {*[*]} $type]} {
            if {$type ni {u8 u16 u32}} { fail $here "\"$type\" is not an argument type" }
            if {$direction ne "in"} { fail $here "$argument is passed by value and can only be in" }
        }
        set range {}
        if {[llength $line] == 3} {
            if {![dict exists $model(arguments) $argument]} {
                fail $here "argument $argument has no description, here or in index.tcl"
            }
            lassign [dict get $model(arguments) $argument] description range
            # A pointer's range applies to nothing that a user types.
            if {[string match {*[*]} $type]} { set range {} }
            if {$range ne {}} { check_range $here $argument $type 0 $range }
        }
        check_text $here $description
        lappend arguments [dict create name $argument type $type direction $direction \
            text $description range $range place $here]
    }
    lappend model(calls) $name
    set model(call,$name) [dict create name $name text $text arguments $arguments \
        area $model(area) place $place]
    if {$example ne {}} { dict set model(examples) $name $example }
    lappend model(groups) [list call $name]
}

# One line about a call's example: `after CALL ...`, the calls that it needs before, or `example
# ?name =? word ...`, the words for qx::call and the variable for its result.
proc catalogue::read_example {place example line} {
    set words [lassign $line kind]
    if {[dict exists $example $kind]} { fail $place "the call already has its line \"$kind\"" }
    dict set example place $place
    if {$kind eq "after"} {
        if {$words eq {}} { fail $place "expected: after call ..." }
        return [dict replace $example after $words]
    }
    set result {}
    if {[lindex $words 1] eq "="} {
        set result [lindex $words 0]
        check_name $place $result result
        set words [lrange $words 2 end]
    }
    return [dict replace $example example $words result $result]
}

proc catalogue::declare_cell {place words} {
    variable model
    variable cell_operations
    expect $place 3 $words "cell word type { operations }"
    lassign $words word type operations
    check_name $place $word cell
    if {$type ni {u8 u16 u32 i32 u64}} { fail $place "\"$type\" is not a cell type" }
    if {$model(area) eq {}} { fail $place "the file has to begin with its area" }
    if {$word ni $model(cells)} {
        lappend model(cells) $word
        set model(cell,$word) [dict create word $word type $type operations {} place $place]
    } elseif {[dict get $model(cell,$word) type] ne $type} {
        fail $place "cell $word is of type $type here, but of\
            [dict get $model(cell,$word) type] at [join [dict get $model(cell,$word) place] :]"
    }
    foreach operation [as_list $operations $place] {
        if {$operation ni $cell_operations} { fail $place "\"$operation\" is not a cell operation" }
        if {$operation in [dict get $model(cell,$word) operations]} {
            fail $place "cell $word already has its $operation"
        }
        dict lappend model(cell,$word) operations $operation
        lappend model(groups) [list cell $word $operation $model(area)]
    }
}

proc catalogue::declare_pointer {place words} {
    variable model
    expect $place 2 $words "pointer type description"
    lassign $words name text
    if {![regexp {^[A-Za-z][A-Za-z0-9_]*( [A-Za-z][A-Za-z0-9_]*)*$} $name]} {
        fail $place "\"$name\" is not a name for a type"
    }
    check_text $place $text
    enter pointer $place $name
    lappend model(pointers) $name
}

proc catalogue::declare_free {place words} {
    variable model
    expect $place 3 $words "free name argument description"
    lassign $words name argument text
    check_name $place $name command
    check_name $place $argument argument
    check_text $place $text
    enter free $place $name
    lappend model(groups) [concat free $words [list $model(area)]]
}
