# The byte map of a record as a list of items: its fields, the padding between them, and unused
# bits. Relies on tools/catalogue.tcl.
#
# An item is a dict: kind (scalar, array, record, unit, padding, other), offset, size, group (a
# field's name: the elements of an array share it), label (the words to show, longest first), and of
# a unit bits: a list of dicts name, bit, width, where an empty name stands for unused bits.

namespace eval byte_map {}

# The views of a record: one, or for a union one per member. A list of dicts: name and type (both
# empty for a record), items.
proc byte_map::views {name} {
    set record [catalogue::record $name]
    set size [dict get $record size]
    if {[dict get $record kind] ne "union"} {
        return [list [dict create name {} type {} \
            items [with_gaps [items_of [dict get $record fields]] $size padding]]]
    }
    set views {}
    foreach field [dict get $record fields] {
        lappend views [dict create name [dict get $field name] \
            type [qx::wording::field_type $field] items [view_items $field $size]]
    }
    return $views
}

# One member of a union: a nested record is expanded, one level deep, and bytes that the member does
# not use are shown too.
proc byte_map::view_items {field size} {
    set type [dict get $field type]
    if {![catalogue::is_record $type] || [dict get $field count]
            || [dict get [catalogue::record $type] kind] eq "union"} {
        return [with_gaps [items_of [list $field]] $size other]
    }
    set record [catalogue::record $type]
    set inner [with_gaps [items_of [dict get $record fields]] [dict get $record size] padding]
    return [with_gaps $inner $size other]
}

proc byte_map::items_of {fields} {
    set items {}
    foreach field $fields {
        set offset [dict get $field offset]
        set size [catalogue::type_size [dict get $field type]]
        if {[dict get $field width]} {
            set last [lindex $items end]
            set bits [dict create name [dict get $field name] bit [dict get $field bit] \
                width [dict get $field width]]
            if {$last ne {} && [dict get $last kind] eq "unit"
                    && [dict get $last offset] == $offset} {
                dict lappend last bits $bits
                lset items end $last
            } else {
                lappend items [dict create kind unit offset $offset size $size \
                    group [dict get $field name] label {} bits [list $bits]]
            }
        } else {
            lappend items {*}[field_items $field $offset $size]
        }
    }
    set result {}
    foreach item $items {
        if {[dict get $item kind] eq "unit"} {
            set total [expr {8 * [dict get $item size]}]
            dict set item bits [with_unused [dict get $item bits] $total]
        }
        lappend result $item
    }
    return $result
}

# A field that is not a bit-field: one item, or one for each element.
proc byte_map::field_items {field offset size} {
    set name [dict get $field name]
    set type [dict get $field type]
    set kind [expr {[catalogue::is_record $type] ? "record" : "scalar"}]
    set item [dict create kind $kind offset $offset size $size group $name label $name bits {}]
    if {![dict get $field count]} { return [list $item] }
    set items {}
    if {$kind eq "scalar"} { dict set item kind array }
    for {set index 0} {$index < [dict get $field count]} {incr index} {
        dict set item offset [expr {$offset + $index * $size}]
        dict set item label [list "$name\[$index\]" "\[$index\]"]
        lappend items $item
    }
    return $items
}

proc byte_map::with_unused {bits total} {
    set result {}
    set next 0
    foreach bit [concat $bits [list [dict create name {} bit $total width 0]]] {
        set gap [expr {[dict get $bit bit] - $next}]
        if {$gap > 0} { lappend result [dict create name {} bit $next width $gap] }
        if {[dict get $bit width]} { lappend result $bit }
        set next [expr {[dict get $bit bit] + [dict get $bit width]}]
    }
    return $result
}

# Fills the gaps between the items, and after them up to the size, with items of this kind.
proc byte_map::with_gaps {items size kind} {
    set result {}
    set next 0
    foreach item [concat $items [list [dict create offset $size size 0]]] {
        set gap [expr {[dict get $item offset] - $next}]
        if {$gap > 0} {
            set label [expr {$kind eq "padding" ? {padding pad} : {{not in this view} {not used}}}]
            lappend result [dict create kind $kind offset $next size $gap group {} label $label \
                bits {}]
        }
        if {[dict get $item size]} { lappend result $item }
        set next [expr {[dict get $item offset] + [dict get $item size]}]
    }
    return $result
}
