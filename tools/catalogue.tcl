# The catalogue of records, SDK calls and cells. `catalogue::load <folder>` reads and checks it; the
# first mistake ends that with one line "<file>:<line>: error: <what>". After that the procedures
# below, and catalogue::commands, answer from the model. Relies on the files in catalogue/ and Tcl
# 8.5 only.

namespace eval catalogue {
    # type word -> size in bytes, native type
    variable scalar_types {
        u8  {1 {unsigned char}}
        u16 {2 {unsigned short}}
        u32 {4 {unsigned int}}
        i32 {4 int}
        u64 {8 {unsigned long long}}
    }
    variable most_bytes 4096 ;# of a record: a page, so that a record touches at most two
    # The contents of fields that have a notation other than plain numbers -> the field's type; u8[]
    # is any number of bytes.
    variable held_types {mac u8[6] ipv4 u32 ipv6 u32[4] ip u32[4] family u32 key u8[]}
    variable cell_operations {create get array_create array_get array_set}
    # Names that a field or an argument cannot have: keywords of C and C++, macros that a user of
    # the header may have, and the names of arguments and locals in the generated functions; what
    # dicts of records show beside their fields.
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
        arr cfg idx interp item kinds objc objv result swig_expected_types swig_types
        padding
    }
}

foreach part {reader checks commands tables} {
    source [file join [file dirname [file normalize [info script]]] catalogue $part.tcl]
}

# Stops reading with an error of one line that names the place and the mistake. A word quoted in it
# may contain line ends.
proc catalogue::fail {place message} {
    lassign $place file line
    set message [string map {\n {\n} \r {\r} \v {\v} \f {\f}} $message]
    return -code error -errorcode CATALOGUE "$file:$line: error: $message"
}

# Reads all areas of a folder into the model and checks it as a whole.
proc catalogue::load {folder} {
    variable model
    array unset model
    array set model {areas {} records {} calls {} cells {} pointers {} arguments {} groups {} \
        examples {} tables {} hexadecimal {} ids {}}
    set index [file join $folder index.tcl]
    read_file $index {areas argument hexadecimal ids}
    if {$model(areas) eq {}} { fail [list [shown $index] 1] "no areas are listed" }
    foreach area $model(areas) {
        set file [file join $folder $area.tcl]
        if {![file readable $file]} {
            fail [list [shown $index] $model(line,areas)] "area $area has no file [shown $file]"
        }
        set model(area) {}
        read_file $file {area record union call cell pointer free table}
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
    check_examples
    mark_hexadecimal
    check_ids
    check_tables
}

# A file's name as shown in messages: its folder and its tail.
proc catalogue::shown {file} { file join [file tail [file dirname $file]] [file tail $file] }

# ---------------------------------------------------------------------------------- queries

proc catalogue::areas {}        { variable model; return $model(areas) }
proc catalogue::area {name}     { variable model; return $model(area,$name) }
# The records, each after those it contains.
proc catalogue::records {}      { variable model; return $model(layout_order) }
proc catalogue::record {name}   { variable model; return $model(record,$name) }
proc catalogue::is_record {name} { variable model; return [info exists model(record,$name)] }
proc catalogue::calls {}        { variable model; return $model(calls) }
proc catalogue::call {name}     { variable model; return $model(call,$name) }
proc catalogue::tables {}       { variable model; return $model(tables) }
proc catalogue::table {name}    { variable model; return $model(table,$name) }

# The stem of a record's commands: its name without a final _t.
proc catalogue::stem {record} { regsub {_t$} $record {} }

# The number (from 0) of the argument that counts the array of that name in a call: `x_count`
# belongs to `x_array`; -1 if it is not counted.
proc catalogue::count_of {call name} {
    if {![regsub {_array$} $name _count wanted]} { return -1 }
    set names {}
    foreach argument [dict get [call $call] arguments] { lappend names [dict get $argument name] }
    return [lsearch -exact $names $wanted]
}

# The calls with an example -> its words, the variable for its result, the calls before it.
proc catalogue::examples {} {
    variable model
    set examples {}
    dict for {call example} $model(examples) {
        dict set examples $call \
            [list [dict get $example example] [dict get $example result] [before $call {}]]
    }
    return $examples
}

# The kinds of ids that a device assigns, in their order.
proc catalogue::id_kinds {} { variable model; return [dict keys $model(ids)] }

# The number (from 1) of the kind of id that an argument, or a field as record.name, is; 0: none.
proc catalogue::id_kind {name} {
    variable model
    set number 0
    foreach {kind list} $model(ids) {
        incr number
        if {$name in [lindex $list 0]} { return $number }
    }
    return 0
}

# True if the call's first argument is a device.
proc catalogue::names_device {call} {
    set first [lindex [dict get [call $call] arguments] 0]
    return [expr {$first ne {} && [dict get $first name] in {device_id dev_id}}]
}

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

# The types that pointers can point to: the words of the type table, in no particular order.
proc catalogue::pointer_targets {} {
    variable model
    set targets [concat $model(records) $model(pointers)]
    foreach word $model(cells) { lappend targets [dict get $model(cell,$word) type] }
    return $targets
}

proc catalogue::mangled {type} {
    return _p_[string map {{ } _} [native [string trimright $type *]]]
}

# The type table: target words sorted by mangled name, byte by byte.
proc catalogue::types {} {
    set rows {}
    foreach target [pointer_targets] { lappend rows [list [mangled $target] $target] }
    set result {}
    foreach row [lsort -index 0 $rows] { lappend result [lindex $row 1] }
    return $result
}
