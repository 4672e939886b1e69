# Package qx, qx::set: writes the fields that a dict names. The whole dict is checked before
# anything is written. Relies on catalogue.tcl, handles.tcl, addresses.tcl and on reading.tcl's
# choice of views.
#
# Walking the dict collects stores: an offset with numbers of one width. They are put into the
# record's bytes by one `binary format`, which takes the bytes as they are and goes to each offset
# in turn.

namespace eval qx::writing {
    variable format {}  ;# of `binary format`: places and widths
    variable numbers {} ;# its words
    variable bits {}    ;# stores of bit-fields: offset, type, mask, value
    variable shared {}  ;# unions of which more than one view was named
    variable format_words {u8 c u16 s u32 i}
    variable layouts {} ;# record -> field -> its dict
}

# Writes the named fields of the record behind a handle; the result is empty.
proc qx::writing::put {handle values} {
    variable format
    variable numbers
    variable bits
    variable shared
    foreach {type handle} [qx::handle::of_record $handle] break
    set bytes [qx::handle::bytes $handle $type]
    if {[catch { [qx::fast_writing::writer $type] $bytes $values } result]} {
        foreach {format numbers bits shared} {{} {} {} {}} break
        record $type 0 $values {}
        set result [stored $bytes $type]
    }
    qx::handle::write_bytes $handle $result
    return
}

proc qx::writing::refuse {path text} {
    set shown [string map {.( (} [join $path .]]
    if {$shown ne {}} { set text "$shown: $text" }
    return -code error -errorcode [list QX VALUE $shown] $text
}

# --------------------------------------------------------------------------------- the bytes

# The record's bytes with all stores made.
proc qx::writing::stored {bytes type} {
    variable format
    variable numbers
    variable bits
    variable shared
    set size [qx::catalogue::type_size $type]
    set result [with_bits [eval [linsert $numbers 0 binary format a$size$format $bytes]]]
    # Views of one union may be named together as long as they say the same: then their order is all
    # one.
    if {$shared ne {}} {
        set backwards [join [lreverse [regexp -all -inline {@\d+[a-z]} $format]] {}]
        set other [eval [linsert [lreverse $numbers] 0 binary format a$size$backwards \
            [with_bits $bytes]]]
        if {$other ne $result} {
            refuse {} "[join $shared {, }]: the views of the union contradict each other; name one"
        }
    }
    return $result
}

proc qx::writing::with_bits {bytes} {
    variable bits
    variable format_words
    foreach {offset type mask value} $bits {
        set word [dict get $format_words $type]
        binary scan $bytes @$offset$word unit
        set unit [expr {$unit & ~$mask | $value}]
        set bytes [binary format a*@$offset$word $bytes $unit]
    }
    return $bytes
}

# ------------------------------------------------------------------------------- the dict

# The fields of a record by name.
proc qx::writing::layout {type} {
    variable layouts
    if {![dict exists $layouts $type]} {
        set fields {}
        foreach field [dict get [qx::catalogue::record $type] fields] {
            dict set fields [dict get $field name] $field
        }
        dict set layouts $type $fields
    }
    return [dict get $layouts $type]
}

# Stores the fields of a record at an offset.
proc qx::writing::record {type base values path} {
    variable shared
    if {[catch { dict size $values }]} { refuse $path "\"$values\" is no dict of fields" }
    set fields [layout $type]
    dict for {name value} $values {
        if {![dict exists $fields $name]} {
            set near [join [qx::catalogue::nearest $name [dict keys $fields]] {, }]
            refuse [concat $path [list $name]] "$type has no such field; nearest: $near"
        }
        field [dict get $fields $name] $base $value [concat $path [list $name]]
    }
    if {[dict get [qx::catalogue::record $type] kind] eq "union" && [dict size $values] > 1} {
        lappend shared [expr {$path eq {} ? $type : [join $path .]}]
    }
    check_family $fields $values $path
}

proc qx::writing::field {field base value path} {
    set type [dict get $field type]
    set at [expr {$base + [dict get $field offset]}]
    if {[qx::catalogue::is_record $type]} {
        if {![dict get $field count]} { return [nested $type $at $value $path] }
        check_count $value [dict get $field count] $path
        set index 0
        foreach inner $value {
            nested $type $at $inner [concat $path ($index)]
            incr at [qx::catalogue::type_size $type]
            incr index
        }
    } elseif {[dict get $field count]} {
        array $field $at $value $path
    } elseif {[dict get $field width]} {
        bit_field $field $at $value $path
    } else {
        if {[dict get $field holds] eq "ipv4"} {
            set word [qx::address::ipv4_word $value]
            if {$word ne {}} { set value $word }
        }
        store $type $at [checked $type 0 $value $path]
    }
}

# A record inside another: a dict of its fields, or the address that it stands for.
proc qx::writing::nested {type at value path} {
    if {[catch { llength $value } count]} { refuse $path "\"$value\" is no dict of fields" }
    # A dict of a union names views, which no number is.
    if {$count == 1 || ($count == 4 && [string is wideinteger -strict [lindex $value 0]])} {
        if {[qx::reading::is_address $type]} { return [address $at $value $path] }
        if {$count == 1 && [family_field $type] ne {}} { return [prefix $type $at $value $path] }
    }
    record $type $at $value $path
}

proc qx::writing::check_count {value wanted path} {
    if {[catch { llength $value } count]} { refuse $path "\"$value\" is no list" }
    if {$count != $wanted} { refuse $path "wants a list of $wanted elements, not of $count" }
}

proc qx::writing::array {field at value path} {
    set type [dict get $field type]
    switch -- [dict get $field holds] {
        ip - ipv6 { return [address $at $value $path [dict get $field holds]] }
        mac {
            set bytes [qx::address::mac_bytes $value]
            if {$bytes ne {}} {
                set value $bytes
            } elseif {[catch { llength $value } count] || $count == 1} {
                refuse $path \
                    "\"$value\" is no MAC address like 02:00:00:00:00:01, nor a list of 6 bytes"
            }
        }
    }
    check_count $value [dict get $field count] $path
    set index 0
    foreach number $value {
        store $type $at [checked $type 0 $number [concat $path ($index)]]
        incr at [qx::catalogue::type_size $type]
        incr index
    }
}

proc qx::writing::bit_field {field at value path} {
    variable bits
    set width [dict get $field width]
    set bit [dict get $field bit]
    set number [checked [dict get $field type] $width $value $path]
    set mask [expr {((1 << $width) - 1) << $bit}]
    lappend bits $at [dict get $field type] $mask [expr {$number << $bit}]
}

# A number in the range of its type, or of so many bits.
proc qx::writing::checked {type width value path} {
    foreach {least greatest} [qx::catalogue::range $type $width] break
    # An octal or hexadecimal number is one too.
    if {![string is wideinteger -strict $value]} { refuse $path "\"$value\" is no number" }
    if {$value < $least || $value > $greatest} {
        refuse $path "$value is outside $least to $greatest"
    }
    return [expr {$value + 0}]
}

proc qx::writing::store {type at number} {
    variable format
    variable numbers
    variable format_words
    append format @$at[dict get $format_words $type]
    lappend numbers $number
}

# ------------------------------------------------------------------------------- addresses

# Four words at an offset: an address, or the words.
proc qx::writing::address {at value path {holds ip}} {
    if {[llength $value] == 4} {
        set words $value
    } else {
        foreach {version words} [qx::address::ip_words $value] break
        if {![info exists words] || ($holds eq "ipv6" && $version == 4)} {
            set kind [dict get {ip IP ipv6 IPv6} $holds]
            refuse $path "\"$value\" is no $kind address, nor a list of 4 words"
        }
    }
    set index 0
    foreach word $words {
        store u32 $at [checked u32 0 $word [concat $path ($index)]]
        incr at 4
        incr index
    }
}

# The field of a record that holds the family of its address; empty if it has none.
proc qx::writing::family_field {type} {
    dict for {name field} [layout $type] {
        if {[dict get $field holds] eq "family"} { return $name }
    }
    return
}

# A whole address record from a text like 10.0.0.0/8: family, address, and the length, all bits if
# it is not there.
proc qx::writing::prefix {type at value path} {
    foreach {text length} [split $value /] break
    foreach {version words} [qx::address::ip_words $text] break
    if {![info exists words]} {
        refuse $path "\"$value\" is no IP address or prefix like 10.0.0.0/8"
    }
    set bits [expr {$version == 4 ? 32 : 128}]
    if {[string first / $value] < 0} { set length $bits }
    if {![regexp {^(0|[1-9]\d{0,2})$} $length] || $length > $bits} {
        refuse $path "\"$value\" has no length from 0 to $bits behind the slash"
    }
    set fields {}
    dict for {name field} [layout $type] {
        if {[dict get $field holds] eq "family"} {
            lappend fields $name [qx::address::family $version]
        } elseif {[qx::catalogue::is_record [dict get $field type]]} {
            lappend fields $name $words
        } else {
            lappend fields $name $length
        }
    }
    record $type $at $fields $path
}

# An address that is named together with its family has to be of it.
proc qx::writing::check_family {fields values path} {
    dict for {name field} $fields {
        if {[dict get $field holds] ne "family" || ![dict exists $values $name]} continue
        set family [dict get $values $name]
        dict for {other value} $values {
            set found [qx::address::ip_words $value]
            if {$found eq {} || ![dict exists $qx::address::families $family]} continue
            set version [dict get $qx::address::families $family]
            if {[lindex $found 0] != $version} {
                refuse [concat $path [list $other]] \
                    "$value is an IPv[lindex $found 0] address, but $name says IPv$version"
            }
        }
    }
}
