# Draws the byte map of a record as SVG: four bytes per row, a cell per byte, fields over their
# cells. A torn row shortens long fields. Bit-fields are in the cells of their unit, bit 0 on the
# left, like byte 0. Colours are in the style sheet. Relies on byte_map.tcl and html.tcl.

namespace eval drawing {
    variable gutter 34  ;# for the offsets on the left
    variable cell 80    ;# width of a byte
    variable row 40     ;# height of a row
    variable bit_row 116 ;# height of a row with vertical names of bit-fields
    variable torn 26    ;# height of a row that represents several
    variable head 20    ;# height of the line with column numbers, and of a view's title
    variable longest 4  ;# number of whole rows shown for one field; more are torn
}

# The map of a record as one svg element.
proc drawing::map {name} {
    variable gutter
    variable cell
    variable head
    set body {}
    set bytes [expr {min(4, [dict get [catalogue::record $name] size])}]
    set y 0
    foreach view [byte_map::views $name] {
        if {[dict get $view name] ne {}} {
            set title "[dict get $view name]: [dict get $view type]"
            append body [text title 0 [expr {$y + 14}] start $title]
            incr y $head
        }
        append body [columns $bytes $y]
        incr y $head
        lassign [view_body [dict get $view items] $y] drawn height
        append body $drawn
        incr y [expr {$height + 12}]
    }
    incr y -8
    set width [expr {$gutter + 4 * $cell + 2}]
    set label "Byte map of $name; the table of fields says the same in words"
    return "<svg class=\"map\" viewBox=\"0 0 $width $y\" role=\"img\"\
        aria-label=\"[html::escape $label]\">\n$body</svg>\n"
}

proc drawing::columns {bytes y} {
    variable gutter
    variable cell
    set result {}
    for {set column 0} {$column < $bytes} {incr column} {
        append result [text count [expr {$gutter + $cell * $column + $cell / 2}] [expr {$y + 14}] \
            middle +$column]
    }
    return $result
}

# The rows of one view, starting at y; returns SVG and height.
proc drawing::view_body {items y} {
    variable gutter
    variable row
    variable bit_row
    variable torn
    set first $y
    set labels {}
    set fills {}
    set edges {}
    foreach line [lines $items] {
        lassign $line kind number count
        set height [set $kind]
        append labels [text count [expr {$gutter - 6}] [expr {$y + 15}] end [expr {4 * $number}]]
        if {$kind eq "torn"} {
            set item [item_at $items [expr {4 * $number}]]
            append fills [torn_row $item $y $count]
        } else {
            foreach segment [segments $items $number] {
                append fills [filled $segment $y $height]
                append edges [outline $segment $number $y $height]
                append labels [segment_label $segment $number $y $height]
            }
        }
        incr y $height
    }
    return [list $fills$edges$labels [expr {$y - $first}]]
}

proc drawing::item_at {items byte} {
    foreach item $items {
        set offset [dict get $item offset]
        if {$byte >= $offset && $byte < $offset + [dict get $item size]} { return $item }
    }
}

# The rows as drawn: a list of kind (row, bit_row, torn), number of the first row, count of rows.
proc drawing::lines {items} {
    variable longest
    set last [lindex $items end]
    set rows [expr {([dict get $last offset] + [dict get $last size] + 3) / 4}]
    set result {}
    for {set number 0} {$number < $rows} {incr number $count} {
        set count 1
        set run [whole_rows $items $number $rows]
        if {$run > $longest} {
            # The first and the last row are kept, so that both ends of the field are visible.
            lappend result [list row $number 1] [list torn [expr {$number + 1}] [expr {$run - 2}]] \
                [list row [expr {$number + $run - 1}] 1]
            set count $run
            continue
        }
        set kind row
        foreach segment [segments $items $number] {
            if {[dict get $segment kind] eq "unit" && [needs_height $segment]} { set kind bit_row }
        }
        lappend result [list $kind $number 1]
    }
    return $result
}

# The number of rows from this one on that belong entirely to one field or gap.
proc drawing::whole_rows {items number rows} {
    set group {}
    for {set run 0} {$number + $run < $rows} {incr run} {
        foreach byte {0 1 2 3} {
            set item [item_at $items [expr {4 * ($number + $run) + $byte}]]
            if {$item eq {}} { return $run }
            set here [list [dict get $item kind] [dict get $item group]]
            if {[dict get $item kind] eq "unit"} { return $run }
            if {$group eq {}} { set group $here }
            if {$here ne $group} { return $run }
        }
    }
    return $run
}

# The parts of items that are in a row: the items with `from` and `to`, byte columns.
proc drawing::segments {items number} {
    set start [expr {4 * $number}]
    set result {}
    foreach item $items {
        set from [expr {max(0, [dict get $item offset] - $start)}]
        set to [expr {min(4, [dict get $item offset] + [dict get $item size] - $start)}]
        if {$from < $to} { lappend result [dict replace $item from $from to $to] }
    }
    return $result
}

# ------------------------------------------------------------------------------------- shapes

proc drawing::x {column} {
    variable gutter
    variable cell
    return [expr {$gutter + $cell * $column}]
}

proc drawing::filled {segment y height} {
    variable cell
    set kind [dict get $segment kind]
    set x [x [dict get $segment from]]
    set width [expr {$cell * ([dict get $segment to] - [dict get $segment from])}]
    set rect "<rect class=\"$kind\" x=\"$x\" y=\"$y\" width=\"$width\" height=\"$height\" />\n"
    if {$kind in {padding other}} {
        append rect "<rect fill=\"url(#hatch)\" x=\"$x\" y=\"$y\" width=\"$width\"\
            height=\"$height\" />\n"
    }
    if {$kind eq "unit"} { append rect [bits $segment $y $height] }
    return $rect
}

# The lines around an item, as far as they are in this row.
proc drawing::outline {segment number y height} {
    set offset [dict get $segment offset]
    set end [expr {$offset + [dict get $segment size]}]
    set bottom [expr {$y + $height}]
    set lines {}
    for {set column [dict get $segment from]} {$column < [dict get $segment to]} {incr column} {
        set byte [expr {4 * $number + $column}]
        set left [x $column]
        set right [x [expr {$column + 1}]]
        if {$byte - 4 < $offset} { append lines "M$left ${y}H$right" }
        if {$byte + 4 >= $end} { append lines "M$left ${bottom}H$right" }
        if {$byte == $offset || $column == 0} { append lines "M$left ${y}V$bottom" }
        if {$byte == $end - 1 || $column == 3} { append lines "M$right ${y}V$bottom" }
    }
    return "<path class=\"edge\" d=\"$lines\" />\n"
}

proc drawing::torn_row {item y count} {
    variable torn
    set kind [dict get $item kind]
    set left [x 0]
    set right [x 4]
    set width [expr {$right - $left}]
    set bottom [expr {$y + $torn}]
    set result "<rect class=\"$kind\" x=\"$left\" y=\"$y\" width=\"$width\" height=\"$torn\" />\n"
    if {$kind in {padding other}} {
        append result "<rect fill=\"url(#hatch)\" x=\"$left\" y=\"$y\" width=\"$width\"\
            height=\"$torn\" />\n"
    }
    append result "<path class=\"tear\" d=\"M$left ${y}V${bottom}M$right ${y}V$bottom\" />\n"
    set bytes [expr {4 * $count}]
    append result [text small [expr {($left + $right) / 2}] [expr {$y + $torn / 2 + 4}] middle \
        "... $bytes more bytes ..."]
}

# ------------------------------------------------------------------------------- bits of units

proc drawing::needs_height {unit} {
    variable cell
    foreach bit [dict get $unit bits] {
        if {[fit [list [dict get $bit name]] [expr {$cell * [dict get $bit width] / 8}]] eq {}} {
            return 1
        }
    }
    return 0
}

# A unit is always in one row: units are aligned, or single bytes.
proc drawing::bits {unit y height} {
    variable cell
    set result {}
    foreach bit [dict get $unit bits] {
        set x [expr {[x [dict get $unit from]] + $cell * [dict get $bit bit] / 8}]
        set width [expr {$cell * [dict get $bit width] / 8}]
        if {[dict get $bit name] eq {}} {
            append result "<rect class=\"padding\" x=\"$x\" y=\"$y\" width=\"$width\"\
                height=\"$height\" /><rect fill=\"url(#hatch)\" x=\"$x\" y=\"$y\" width=\"$width\"\
                height=\"$height\" />\n"
            append result [bit_label unused $x $y $width $height]
        } else {
            append result [bit_label [dict get $bit name] $x $y $width $height]
        }
        append result "<path class=\"edge\" d=\"M$x ${y}V[expr {$y + $height}]\" />\n"
    }
    return $result
}

proc drawing::bit_label {name x y width height} {
    set middle [expr {$x + $width / 2}]
    if {[fit [list $name] $width] ne {}} { return [block [list $name] $x $y $width $height] }
    set at [expr {$y + $height / 2}]
    set across [expr {$middle + 3}]
    return "<text class=\"tiny\" x=\"$across\" y=\"$at\" text-anchor=\"middle\"\
        transform=\"rotate(-90 $across $at)\">[html::escape $name]</text>\n"
}

# -------------------------------------------------------------------------------------- texts

proc drawing::text {class x y anchor words} {
    return "<text class=\"$class\" x=\"$x\" y=\"$y\"\
        text-anchor=\"$anchor\">[html::escape $words]</text>\n"
}

# Puts the label of an item in the row with the most room for it, the first if there are several.
proc drawing::segment_label {segment number y height} {
    variable cell
    if {[dict get $segment kind] eq "unit" || $number != [label_row $segment]} return
    set from [dict get $segment from]
    set width [expr {$cell * ([dict get $segment to] - $from)}]
    return [block [dict get $segment label] [x $from] $y $width $height]
}

proc drawing::label_row {item} {
    set first [expr {[dict get $item offset] / 4}]
    set before [expr {[dict get $item offset] % 4}]
    set size [dict get $item size]
    set width [expr {min($size, 4 - $before)}]
    return [expr {min(4, $size - $width) > $width ? $first + 1 : $first}]
}

# The first label that fits, centred in a box; nothing if none does.
proc drawing::block {labels x y width height} {
    set fitted [fit $labels $width]
    if {$fitted eq {}} return
    lassign $fitted class lines
    set step [expr {$class eq "name" ? 14 : 11}]
    set at [expr {$y + ($height - $step * [llength $lines]) / 2 + $step - 3}]
    set result {}
    foreach line $lines {
        append result [text $class [expr {$x + $width / 2}] $at middle $line]
        incr at $step
    }
    return $result
}

# How to set a label within a width: class and lines, or nothing. The font is monospaced.
proc drawing::fit {labels width} {
    set large [expr {int(($width - 4) / 7.3)}]
    set small [expr {int(($width - 2) / 6.1)}]
    foreach label $labels {
        if {[string length $label] <= $large} { return [list name [list $label]] }
        set lines [broken $label $small]
        if {$lines ne {} && [llength $lines] <= 3} { return [list small $lines] }
    }
}

# Breaks a name after underscores and blanks into lines of at most `letters` characters; nothing if
# a part is longer.
proc drawing::broken {label letters} {
    set lines {}
    set line {}
    foreach part [regexp -all -inline {[^_ ]*(?:[_ ]|$)} $label] {
        if {[string length $part] > $letters} return
        if {[string length $line$part] > $letters} {
            lappend lines $line
            set line {}
        }
        append line $part
    }
    return [lappend lines $line]
}
