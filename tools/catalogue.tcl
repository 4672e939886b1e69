# The catalogue of records, SDK calls and cells: reading, checking, and which commands exist.
#
# `catalogue::load <folder>` reads index.tcl and one file per area; the first mistake ends it with one line
# "<file>:<line>: error: <what>". After that the procedures below answer from the checked model.
# The files are data: they are read as Tcl lists and never evaluated. Relies on Tcl 8.5 only.

namespace eval catalogue {
    # type word -> size in bytes, native type
    variable scalar_types {
        u8  {1 {unsigned char}}
        u16 {2 {unsigned short}}
        u32 {4 {unsigned int}}
        i32 {4 int}
        u64 {8 {unsigned long long}}
    }
    variable cell_operations {create get array_create array_get array_set}
    # Names that a field or an argument cannot have: words of C and C++, macros that a user of the
    # header may meet, and what the generated functions call their own arguments and locals.
    variable reserved_names {
        alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t char16_t
        char32_t class co_await co_return co_yield compl concept const const_cast consteval
        constexpr constinit continue decltype default delete do double dynamic_cast else enum
        explicit export extern false float for friend goto if inline int long mutable namespace new
        noexcept not not_eq nullptr operator or or_eq private protected public register
        reinterpret_cast requires restrict return short signed sizeof static static_assert
        static_cast struct switch template this thread_local throw true try typedef typeid typename
        union unsigned using virtual void volatile wchar_t while xor xor_eq
        EOF NULL errno linux stderr stdin stdout unix
        arr cfg idx interp item objc objv output swig_types words
    }
}

# ---------------------------------------------------------------------------------- reading

# Ends reading with the one line that names the place and the mistake.
proc catalogue::fail {place message} {
    foreach {file line} $place break
    return -code error -errorcode CATALOGUE "$file:$line: error: $message"
}

# Reads all areas of a folder into the model and checks it as a whole.
proc catalogue::load {folder} {
    variable model
    array unset model
    array set model {areas {} records {} calls {} cells {} pointers {} arguments {} groups {}}
    set index [file join $folder index.tcl]
    read_file $index {areas argument}
    if {$model(areas) eq {}} { fail [list [shown $index] 1] "no areas are listed" }
    foreach area $model(areas) {
        set file [file join $folder $area.tcl]
        if {![file readable $file]} {
            fail [list [shown $index] $model(line,areas)] "area $area has no file [shown $file]"
        }
        set model(area) {}
        read_file $file {area record union call cell pointer free}
        if {$model(area) ne $area} {
            fail [list [shown $file] 1] "the file of area $area declares area \"$model(area)\""
        }
    }
    foreach file [lsort [glob -nocomplain -directory $folder *.tcl]] {
        set area [file rootname [file tail $file]]
        if {$area ne "index" && $area ni $model(areas)} {
            fail [list [shown $file] 1] "area $area is not in [shown $index]"
        }
    }
    check_pointer_types
    check_types
    foreach record $model(records) { check_layout $record }
    check_cells
    check_command_names
}

# A file's name as messages show it: its folder and its tail.
proc catalogue::shown {file} { file join [file tail [file dirname $file]] [file tail $file] }

# Splits a file into declarations, each a list with the line it starts on, and hands each to the
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
            fail $place "\"$word\" is no declaration; known here: [join $words {, }]"
        }
        declare_$word $place [lrange $declaration 1 end]
    }
    if {$pending ne {}} { fail [list [shown $file] $start] "the declaration has no end" }
}

proc catalogue::as_list {text place} {
    if {[catch {llength $text} reason]} { fail $place $reason }
    return [lrange $text 0 end]
}

# The lines of a body as pairs of place and list, comments and blank lines left out.
proc catalogue::body_lines {place body} {
    foreach {file line} $place break
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
        if {$area eq "index"} { fail $place "index is the name of this file, no name for an area" }
        if {$area in $model(areas)} { fail $place "area $area is listed twice" }
        lappend model(areas) $area
    }
    set model(line,areas) [lindex $place 1]
}

proc catalogue::declare_argument {place words} {
    variable model
    expect $place 2 $words "argument name description"
    foreach {name text} $words break
    check_name $place $name argument
    check_text $place $text
    if {[dict exists $model(arguments) $name]} { fail $place "argument $name is described twice" }
    dict set model(arguments) $name $text
}

proc catalogue::declare_area {place words} {
    variable model
    expect $place 2 $words "area name description"
    foreach {name text} $words break
    if {$model(area) ne {}} { fail $place "the file already declares area $model(area)" }
    check_text $place $text
    set model(area) $name
    set model(area,$name) [dict create name $name text $text file [lindex $place 0]]
}

# Enters a named thing; a second one of the same name is a mistake that shows where the first stands.
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
    foreach {name size text body} $words break
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
    foreach {where type name} $line break
    set options [lrange $line 3 end-1]
    check_name $place $name field
    check_text $place [lindex $line end]
    set field [dict create name $name place $place text [lindex $line end] bit 0 width 0 count 0 \
        set_as {} dumped 1]
    if {![regexp {^(\d+)(?:\.(\d+))?$} $where -> offset bit]} {
        fail $place "\"$where\" is no offset"
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
        if {$bit ne {}} { fail $place "$name is no bit-field and has no bit number" }
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
                if {$type ni {u8 u16 u32}} { fail $place "-set-as \"$type\" is no field type" }
                dict set field set_as $type
                set options [lrange $options 2 end]
            }
            default { fail $place "\"[lindex $options 0]\" is no field option" }
        }
    }
    return $field
}

proc catalogue::declare_call {place words} {
    variable model
    expect $place 3 $words "call name description { arguments }"
    foreach {name text body} $words break
    check_name $place $name call
    check_text $place $text
    enter call $place $name
    set arguments {}
    set names {}
    foreach {here line} [body_lines $place $body] {
        if {[llength $line] ni {3 4}} { fail $here "expected: direction type name ?description?" }
        foreach {direction type argument description} [concat $line {{}}] break
        if {$direction ni {in out inout}} { fail $here "\"$direction\" is no direction" }
        check_name $here $argument argument
        if {$argument eq $name} { fail $here "argument $argument is named like its call" }
        if {$argument in $names} { fail $here "argument $argument is already declared" }
        lappend names $argument
        if {![string match {*[*]} $type]} {
            if {$type ni {u8 u16 u32}} { fail $here "\"$type\" is no argument type" }
            if {$direction ne "in"} { fail $here "$argument is passed by value and can only be in" }
        }
        if {[llength $line] == 3} {
            if {![dict exists $model(arguments) $argument]} {
                fail $here "argument $argument has no description, here or in index.tcl"
            }
            set description [dict get $model(arguments) $argument]
        }
        check_text $here $description
        lappend arguments [dict create name $argument type $type direction $direction \
            text $description place $here]
    }
    lappend model(calls) $name
    set model(call,$name) [dict create name $name text $text arguments $arguments \
        area $model(area) place $place]
    lappend model(groups) [list call $name]
}

proc catalogue::declare_cell {place words} {
    variable model
    variable cell_operations
    expect $place 3 $words "cell word type { operations }"
    foreach {word type operations} $words break
    check_name $place $word cell
    if {$type ni {u8 u16 u32 i32 u64}} { fail $place "\"$type\" is no cell type" }
    if {$model(area) eq {}} { fail $place "the file has to begin with its area" }
    if {$word ni $model(cells)} {
        lappend model(cells) $word
        set model(cell,$word) [dict create word $word type $type operations {} place $place]
    } elseif {[dict get $model(cell,$word) type] ne $type} {
        fail $place "cell $word is of type $type here, but of\
            [dict get $model(cell,$word) type] at [join [dict get $model(cell,$word) place] :]"
    }
    foreach operation [as_list $operations $place] {
        if {$operation ni $cell_operations} { fail $place "\"$operation\" is no cell operation" }
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
    foreach {name text} $words break
    if {![regexp {^[A-Za-z][A-Za-z0-9_]*( [A-Za-z][A-Za-z0-9_]*)*$} $name]} {
        fail $place "\"$name\" is no name for a type"
    }
    check_text $place $text
    enter pointer $place $name
    lappend model(pointers) $name
}

proc catalogue::declare_free {place words} {
    variable model
    expect $place 3 $words "free name argument description"
    foreach {name argument text} $words break
    check_name $place $name command
    check_name $place $argument argument
    check_text $place $text
    enter free $place $name
    lappend model(groups) [concat free $words [list $model(area)]]
}

# --------------------------------------------------------------------------------- checking

proc catalogue::check_name {place name what} {
    variable reserved_names
    if {![regexp {^[A-Za-z_][A-Za-z0-9_]*$} $name]} {
        fail $place "\"$name\" is no name for [with_article $what]"
    }
    if {$name in $reserved_names} {
        fail $place "$name is a reserved word, no name for [with_article $what]"
    }
}

proc catalogue::with_article {noun} {
    return [expr {[string match {[aeiou]*} $noun] ? "an" : "a"}]\ $noun
}

# Descriptions become comments of C, and in them sentences.
proc catalogue::check_text {place text} {
    if {$text eq {}} { fail $place "the description is empty" }
    if {![regexp {^[ -~]+$} $text] || [regexp {[*]/|/[*]} $text]} {
        fail $place "a description is one line of plain ASCII without comment marks"
    }
    if {[string match *. $text]} { fail $place "a description ends without a full stop" }
}

proc catalogue::check_number {place what number {least 1}} {
    # Nine digits keep every sum and product of the checks inside 64 bits, and octal zeros out.
    if {![regexp {^(0|[1-9]\d{0,8})$} $number] || ($what ne "offset" && $number < $least)} {
        fail $place "\"$number\" is no $what"
    }
}

# Every type that a field or an argument names has to exist, and records must not contain themselves.
proc catalogue::check_types {} {
    variable model
    foreach record $model(records) {
        foreach field [dict get $model(record,$record) fields] {
            set place [dict get $field place]
            set type [dict get $field type]
            if {$type ni {u8 u16 u32} && $type ni $model(records)} {
                fail $place "type $type of [dict get $field name] is not declared"
            }
            if {[dict get $field set_as] ne {} && [field_kind $field] ne "array"} {
                fail $place "-set-as is for arrays of scalars; [dict get $field name] is none"
            }
            if {[dict get $field width] && $type ni {u8 u16 u32}} {
                fail $place "[dict get $field name] is a bit-field in a unit that is no scalar"
            }
        }
    }
    foreach call $model(calls) {
        foreach argument [dict get $model(call,$call) arguments] {
            set type [dict get $argument type]
            if {[string match {*[*]} $type] && [string range $type 0 end-1] ni [pointer_targets]} {
                fail [dict get $argument place] \
                    "type $type of [dict get $argument name] is not declared"
            }
        }
    }
    set model(layout_order) {}
    foreach record $model(records) { place_record $record {} }
}

# Puts the records a record contains before it.
proc catalogue::place_record {record outer} {
    variable model
    if {$record in $model(layout_order)} return
    if {$record in $outer} {
        fail [dict get $model(record,$record) place] "record $record contains itself"
    }
    foreach field [dict get $model(record,$record) fields] {
        if {[dict get $field type] in $model(records)} {
            place_record [dict get $field type] [concat $outer $record]
        }
    }
    lappend model(layout_order) $record
}

# Compares the declared offsets, bits and size of a record with the C layout of its fields.
proc catalogue::check_layout {name} {
    variable model
    set record $model(record,$name)
    set packed [dict get $record packed]
    set union [expr {[dict get $record kind] eq "union"}]
    set next 0 ;# in bits
    set end 0
    foreach field [dict get $record fields] {
        if {$union} { set next 0 }
        set bits [expr {8 * [type_size [dict get $field type]]}]
        set unit [expr {$packed ? 8 : 8 * [type_alignment [dict get $field type]]}]
        if {[dict get $field width]} {
            check_bit_field $field $packed $bits $next
            # A bit-field goes to the next free bit, or to the next unit if it would cross its end.
            if {$next % $bits + [dict get $field width] > $bits} {
                set next [expr {($next + $bits - 1) / $bits * $bits}]
            }
            set offset [expr {$next / $bits * $bits / 8}]
            set bit [expr {$next % $bits}]
            set length [dict get $field width]
        } else {
            set next [expr {($next + $unit - 1) / $unit * $unit}]
            set offset [expr {$next / 8}]
            set bit 0
            set length [expr {$bits * max(1, [dict get $field count])}]
        }
        if {$offset != [dict get $field offset]} {
            fail [dict get $field place] "[dict get $field name] is at\
                [dict get $field offset], but the C layout puts it at $offset"
        }
        if {$bit != [dict get $field bit]} {
            fail [dict get $field place] "[dict get $field name] is at bit\
                [dict get $field bit], but the C layout puts it at bit $bit"
        }
        incr next $length
        set end [expr {max($end, $next)}]
    }
    set unit [expr {8 * [type_alignment $name]}]
    set size [expr {($end + $unit - 1) / $unit * $unit / 8}]
    if {$size != [dict get $record size]} {
        fail [dict get $record place] "$name has size [dict get $record size], but the C layout\
            of its fields gives $size"
    }
}

proc catalogue::check_bit_field {field packed bits next} {
    set name [dict get $field name]
    if {[dict get $field width] > $bits} {
        fail [dict get $field place] "$name is [dict get $field width] bits wide, but its unit has\
            $bits"
    }
    if {$packed && $bits != 8} {
        fail [dict get $field place] "$name has a $bits-bit unit; packed records take u8 units only"
    }
    # There a compiler would begin such a field in one unit and end it in the next.
    if {$packed && $next % $bits + [dict get $field width] > $bits} {
        fail [dict get $field place] "$name does not fit into the rest of its unit; in a packed\
            record name the bits left over"
    }
}

# Each type of the type table comes from one declaration.
proc catalogue::check_pointer_types {} {
    variable model
    set seen {}
    foreach {kind names} [list record $model(records) pointer $model(pointers) cell $model(cells)] {
        foreach name $names {
            if {$kind eq "cell"} {
                set place [dict get $model(cell,$name) place]
                set type [mangled [dict get $model(cell,$name) type]]
            } else {
                set place $model(place,$kind,$name)
                set type [mangled $name]
            }
            if {[dict exists $seen $type]} {
                fail $place "$kind $name has the pointer type $type, like the declaration at\
                    [join [dict get $seen $type] :]"
            }
            dict set seen $type $place
        }
    }
}

proc catalogue::check_cells {} {
    variable model
    variable cell_operations
    foreach word $model(cells) {
        foreach operation $cell_operations {
            if {$operation ni [dict get $model(cell,$word) operations]} {
                fail [dict get $model(cell,$word) place] "cell $word has no $operation"
            }
        }
    }
}

proc catalogue::check_command_names {} {
    set seen {}
    foreach command [commands] {
        set name [dict get $command name]
        if {![string match qx_* $name]} {
            fail [dict get $command place] "command $name does not begin with qx_"
        }
        if {[is_record $name]} {
            fail [dict get $command place] "command $name is named like the record at\
                [join [dict get [record $name] place] :]"
        }
        if {[dict exists $seen $name]} {
            fail [dict get $command place] "command $name is already made at\
                [join [dict get $seen $name] :]"
        }
        dict set seen $name [dict get $command place]
    }
}

# -------------------------------------------------------------------------------- answering

proc catalogue::areas {}        { variable model; return $model(areas) }
proc catalogue::area {name}     { variable model; return $model(area,$name) }
# The records in an order in which each stands after those it contains.
proc catalogue::records {}      { variable model; return $model(layout_order) }
proc catalogue::record {name}   { variable model; return $model(record,$name) }
proc catalogue::is_record {name} { variable model; return [info exists model(record,$name)] }
proc catalogue::calls {}        { variable model; return $model(calls) }
proc catalogue::call {name}     { variable model; return $model(call,$name) }

# The stem of a record's commands: its name less a final _t.
proc catalogue::stem {record} { regsub {_t$} $record {} }

proc catalogue::type_size {type} {
    variable model
    variable scalar_types
    if {[dict exists $scalar_types $type]} { return [lindex [dict get $scalar_types $type] 0] }
    return [dict get $model(record,$type) size]
}

proc catalogue::type_alignment {type} {
    variable model
    if {![info exists model(record,$type)]} { return [type_size $type] }
    if {[dict get $model(record,$type) packed]} { return 1 }
    set alignment 1
    foreach field [dict get $model(record,$type) fields] {
        set alignment [expr {max($alignment, [type_alignment [dict get $field type]])}]
    }
    return $alignment
}

# The native spelling of a type word: u16 -> unsigned short, qx_flow_t* -> qx_flow_t *.
proc catalogue::native {type} {
    variable scalar_types
    if {[string match {*[*]} $type]} { return "[native [string trimright $type *]] *" }
    if {[dict exists $scalar_types $type]} { return [lindex [dict get $scalar_types $type] 1] }
    return $type
}

# What a pointer can point to: the words of the type table, in no particular order.
proc catalogue::pointer_targets {} {
    variable model
    set targets [concat $model(records) $model(pointers)]
    foreach word $model(cells) { lappend targets [dict get $model(cell,$word) type] }
    return $targets
}

proc catalogue::mangled {type} { return _p_[string map {{ } _} [native [string trimright $type *]]] }

# The type table: target words sorted by mangled name, byte by byte.
proc catalogue::types {} {
    set rows {}
    foreach target [pointer_targets] { lappend rows [list [mangled $target] $target] }
    set result {}
    foreach row [lsort -index 0 $rows] { lappend result [lindex $row 1] }
    return $result
}

# All commands in table order, each a dict:
#   name, area, place, shape (which body it has), owner (record, call or cell), field (dict or {}),
#   arguments (name and type word, alternating), result (none, status, low32, or a type word).
proc catalogue::commands {} {
    variable model
    set result {}
    foreach group $model(groups) {
        set result [concat $result [commands_of_[lindex $group 0] {*}[lrange $group 1 end]]]
    }
    return $result
}

proc catalogue::command {name area place shape owner field arguments result} {
    dict create name $name area $area place $place shape $shape owner $owner field $field \
        arguments $arguments result $result
}

proc catalogue::commands_of_record {record} {
    set description [record $record]
    set head [list [dict get $description area] [dict get $description place]]
    set stem [stem $record]
    set cfg [list cfg $record*]
    set arr [list arr $record*]
    set rows {}
    lappend rows [list create {} {} $record*]
    if {[dict get $description kind] ne "union"} {
        lappend rows [list init {} [concat $cfg [init_arguments $description]] none]
    }
    lappend rows [list dump {} $cfg none]
    foreach field [dict get $description fields] {
        set value [list [dict get $field name] [set_type $field]]
        set idx [expr {[dict get $field count] ? {idx u32} : {}}]
        lappend rows [list set $field [concat $cfg $value $idx] none]
        lappend rows [list get $field [concat $cfg $idx] [get_type $field]]
    }
    lappend rows [list array_create {} {size u32} $record*]
    lappend rows [list array_set {} [concat $arr [list item $record*] {idx u32}] none]
    lappend rows [list array_get {} [concat $arr {idx u32}] $record*]

    set result {}
    foreach row $rows {
        foreach {shape field arguments value} $row break
        set name ${stem}_$shape
        if {$field ne {}} {
            append name _[dict get $field name]
            append shape _[field_kind $field]
        }
        lappend result [command $name {*}$head $shape $record $field $arguments $value]
    }
    return $result
}

# scalar, bits, array, record or records.
proc catalogue::field_kind {field} {
    set nested [is_record [dict get $field type]]
    if {[dict get $field width]} { return bits }
    if {[dict get $field count]} { return [expr {$nested ? "records" : "array"}] }
    return [expr {$nested ? "record" : "scalar"}]
}

# What a field's setter takes and its getter returns: nested records go by pointer.
proc catalogue::get_type {field} {
    set type [dict get $field type]
    return [expr {[is_record $type] ? "$type*" : $type}]
}
proc catalogue::set_type {field} {
    set type [dict get $field set_as]
    return [expr {$type eq {} ? [get_type $field] : $type}]
}

# Arrays are no arguments of the initialiser and keep their values.
proc catalogue::init_arguments {record} {
    set arguments {}
    foreach field [dict get $record fields] {
        if {![dict get $field count]} {
            lappend arguments [dict get $field name] [set_type $field]
        }
    }
    return $arguments
}

proc catalogue::commands_of_call {call} {
    set description [call $call]
    set arguments {}
    foreach argument [dict get $description arguments] {
        lappend arguments [dict get $argument name] [dict get $argument type]
    }
    return [list [command $call [dict get $description area] [dict get $description place] \
        call $call {} $arguments status]]
}

proc catalogue::commands_of_cell {word operation area} {
    variable model
    set cell $model(cell,$word)
    set type [dict get $cell type]
    # A 64-bit read gives the script the low half only; the whole value is printed.
    set read [expr {$type eq "u64" ? "low32" : $type}]
    switch -- $operation {
        create       { set arguments [list data $type];                         set result $type* }
        get          { set arguments [list ptr $type*];                         set result $read }
        array_create { set arguments [list data $type size u32];                set result $type* }
        array_get    { set arguments [list ptr $type* index u32];               set result $read }
        array_set    { set arguments [list ptr $type* data $type index u32];    set result none }
    }
    return [list [command qx_${word}_$operation $area [dict get $cell place] cell_$operation \
        $type {} $arguments $result]]
}

proc catalogue::commands_of_free {name argument text area} {
    variable model
    return [list [command $name $area $model(place,free,$name) free {} {} \
        [list $argument void*] none]]
}

# The usage format of a command: one o per argument, its name and argument names, each with a blank.
proc catalogue::usage {command} {
    set names {}
    foreach {name type} [dict get $command arguments] { append names "$name " }
    set letters [string repeat o [expr {[llength [dict get $command arguments]] / 2}]]
    return "$letters:[dict get $command name] $names"
}
