# A record as a list of bytes: what the tables of tests/expected say that getters, setters, _init
# and dumps do with it. Relies on shell.tcl, records.tsv, fields.tsv, init.tsv and dumps.tsv.

namespace eval model {
    variable kind; array set kind {}            ;# record -> record or union
    variable size; array set size {}            ;# record -> bytes
    variable alignment; array set alignment {}  ;# record -> bytes
    variable lines; array set lines {}          ;# record -> lines of its dump
    variable fields; array set fields {}        ;# record -> fields in declaration order, dicts
    variable init; array set init {}            ;# record -> names of arguments, if it has _init
    variable types; array set types {}          ;# record -> the types of these arguments
    variable dump; array set dump {}            ;# record -> items of its dump
    variable width; array set width {u8 1 u16 2 u32 4}
    variable all_ones 4294967295
}

proc model::load {} {
    foreach row [expected records.tsv] {
        lassign $row record what bytes boundary count
        set model::kind($record) $what
        set model::size($record) $bytes
        set model::alignment($record) $boundary
        set model::lines($record) $count
    }
    foreach row [expected fields.tsv] {
        lassign $row record name offset bit bits count element copied type in_init in_dump
        lappend model::fields($record) [dict create name $name offset $offset bit $bit bits $bits \
            count $count element $element copied $copied type $type init $in_init dump $in_dump]
    }
    foreach row [expected init.tsv] {
        lassign $row record arguments
        set model::init($record) {}
        set model::types($record) {}
        if {$arguments eq "-"} continue
        foreach argument [split $arguments ,] {
            lassign [split $argument :] name type
            lappend model::init($record) $name
            lappend model::types($record) $type
        }
    }
    foreach row [expected dumps.tsv] { set model::dump([lindex $row 0]) [lrange $row 1 end] }
}

proc model::field {record name} {
    foreach field $model::fields($record) {
        if {[dict get $field name] eq $name} { return $field }
    }
    error "$record has no field $name"
}

proc model::nested {field} { info exists model::size([dict get $field element]) }

# Bytes that follow a rule and differ from record to record and from place to place.
proc model::pattern {bytes seed} {
    set pattern {}
    for {set i 0} {$i < $bytes} {incr i} {
        lappend pattern [expr {(($i + 1) * (37 + 2 * $seed) + 101 * $seed) & 255}]
    }
    return $pattern
}

proc model::repeated {bytes byte} {
    set list {}
    for {set i 0} {$i < $bytes} {incr i} { lappend list $byte }
    return $list
}

proc model::hex {bytes} {
    binary scan [binary format c* $bytes] H* text
    return $text
}

# The little-endian number of so many bytes at an offset.
proc model::number {bytes offset width} {
    set number 0
    for {set i [expr {$width - 1}]} {$i >= 0} {incr i -1} {
        set number [expr {($number << 8) | [lindex $bytes [expr {$offset + $i}]]}]
    }
    return $number
}

proc model::store {bytes offset width number} {
    for {set i 0} {$i < $width} {incr i} {
        lset bytes [expr {$offset + $i}] [expr {($number >> (8 * $i)) & 255}]
    }
    return $bytes
}

# The offset of an element of a field (0 for a scalar) in its record.
proc model::place {field index} {
    set element [dict get $field element]
    set stride [expr {[nested $field] ? $model::size($element) : $model::width($element)}]
    return [expr {[dict get $field offset] + $index * $stride}]
}

# What the getter of a number gives for a record at an offset of the bytes.
proc model::get {bytes field {index 0} {base 0}} {
    set width $model::width([dict get $field element])
    set number [number $bytes [expr {$base + [place $field $index]}] $width]
    if {[dict get $field bit] eq "-"} { return $number }
    return [expr {($number >> [dict get $field bit]) & ((1 << [dict get $field bits]) - 1)}]
}

# The bytes after a number was set.
proc model::set_number {bytes field value {index 0}} {
    set width $model::width([dict get $field element])
    set place [place $field $index]
    if {[dict get $field bit] ne "-"} {
        set mask [expr {((1 << [dict get $field bits]) - 1) << [dict get $field bit]}]
        set value [expr {([number $bytes $place $width] & ~$mask)
            | (($value << [dict get $field bit]) & $mask)}]
    }
    return [store $bytes $place $width $value]
}

# The bytes after a number was set in every element of an array.
proc model::set_all {bytes field value} {
    for {set i 0} {$i < [dict get $field count]} {incr i} {
        set bytes [set_number $bytes $field $value $i]
    }
    return $bytes
}

# The bytes after a nested record was set from the bytes of another.
proc model::set_nested {bytes field source {index 0}} {
    set place [place $field $index]
    set last [expr {[dict get $field copied] - 1}]
    return [eval [list lreplace $bytes $place [expr {$place + $last}]] [lrange $source 0 $last]]
}

# The same at an index word: none for a single record, all ones for every element.
proc model::set_nested_at {bytes field source index} {
    if {$index eq {}} { return [set_nested $bytes $field $source] }
    if {$index != $model::all_ones} { return [set_nested $bytes $field $source $index] }
    for {set i 0} {$i < [dict get $field count]} {incr i} {
        set bytes [set_nested $bytes $field $source $i]
    }
    return $bytes
}

# The text that the dump prints for a record at an offset of the bytes.
proc model::dump_text {record bytes {base 0}} {
    set text {}
    set shown {}
    foreach field $model::fields($record) {
        if {[dict get $field dump] eq "yes"} { lappend shown $field }
    }
    foreach item $model::dump($record) field $shown {
        if {[item $field] ne $item} { error "$record: $item in the dump, $field in the record" }
        append text [item_text $field $bytes $base]
    }
    return $text
}

# A field as dumps.tsv writes it.
proc model::item {field} {
    set element [dict get $field element]
    set count [dict get $field count]
    if {[nested $field]} { return [expr {$count eq "-" ? "@$element" : "@$element*$count"}] }
    set name [dict get $field name]
    return [expr {$count eq "-" ? $name : "$name\[$count\]"}]
}

proc model::item_text {field bytes base} {
    set count [dict get $field count]
    set text {}
    for {set i 0} {$i < ($count eq "-" ? 1 : $count)} {incr i} {
        if {[nested $field]} {
            append text [dump_text [dict get $field element] $bytes \
                [expr {$base + [place $field $i]}]]
        } elseif {$count eq "-"} {
            append text "[dict get $field name] = [alternate [get $bytes $field 0 $base]] \n"
        } else {
            append text "[dict get $field name]\[$i\] = [alternate [get $bytes $field $i $base]]\n"
        }
    }
    return $text
}

# C's %#x: zero has no 0x.
proc model::alternate {number} {
    if {$number == 0} { return 0 }
    return [format 0x%x $number]
}

# The lines of a fresh record's dump, from dumps.tsv alone.
proc model::fresh_text {record} {
    set text {}
    foreach item $model::dump($record) {
        if {[regexp {^@(\w+?)(?:\*(\d+))?$} $item whole nested count]} {
            append text [string repeat [fresh_text $nested] [expr {$count eq {} ? 1 : $count}]]
        } elseif {[regexp {^(\w+)\[(\d+)\]$} $item whole name count]} {
            for {set i 0} {$i < $count} {incr i} { append text "$name\[$i\] = 0\n" }
        } else {
            append text "$item = 0 \n"
        }
    }
    return $text
}

# The greatest alignment that a field of the record wants, and what its fields end at.
proc model::extent {record} {
    set boundary 1
    set end 0
    foreach field $model::fields($record) {
        set element [dict get $field element]
        set count [dict get $field count]
        set wanted [expr {[nested $field] ? $model::alignment($element) : $model::width($element)}]
        set boundary [expr {max($boundary, $wanted)}]
        set end [expr {max($end, [place $field [expr {$count eq "-" ? 1 : $count}]])}]
    }
    return [list $boundary $end]
}

# The names and the types of the arguments of _init, none for a union.
proc model::arguments {record} {
    if {![info exists model::init($record)]} { return {{} {}} }
    return [list $model::init($record) $model::types($record)]
}

# Where the tables disagree about a record, one text each.
proc model::disagreements {record} {
    set found {}
    lassign [extent $record] boundary end
    set aligned $model::alignment($record)
    # A record that is not packed is aligned as its fields are, and padded to a multiple of that.
    if {$aligned != 1 && $aligned != $boundary} { lappend found "alignment $aligned" }
    if {$model::size($record) != ($end + $aligned - 1) / $aligned * $aligned} {
        lappend found "size $model::size($record), the last field ends at $end"
    }
    set names {}
    set types {}
    foreach field $model::fields($record) {
        set offset [dict get $field offset]
        set element [dict get $field element]
        if {[nested $field]} {
            set fits [expr {$offset % min($aligned, $model::alignment($element)) == 0}]
            set copied [expr {[dict get $field copied] == $model::size($element)
                && [dict get $field type] eq "$element *"}]
        } else {
            set fits [expr {$offset % min($aligned, $model::width($element)) == 0}]
            set copied [expr {[dict get $field copied] == $model::width($element)}]
        }
        set whole [expr {([dict get $field bit] eq "-") == ([dict get $field bits] eq "-")}]
        if {!$fits || !$copied || !$whole} { lappend found "[dict get $field name] at $offset" }
        if {$model::kind($record) eq "union" && $offset != 0} { lappend found "$offset in a union" }
        if {[dict get $field init] eq "yes"} {
            lappend names [dict get $field name]
            lappend types [dict get $field type]
        }
    }
    if {[info exists model::init($record)] != ($model::kind($record) eq "record")} {
        lappend found "a $model::kind($record) with or without _init"
    }
    lassign [arguments $record] wanted_names wanted_types
    if {$names ne $wanted_names || $types ne $wanted_types} {
        lappend found "_init takes $wanted_names, the fields say $names"
    }
    set lines [regexp -all \n [fresh_text $record]]
    if {$lines != $model::lines($record)} { lappend found "$lines lines in the dump" }
    return $found
}
