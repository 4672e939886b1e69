# Draws the ratios of a result file as SVG: for each operation bars for ours, for the peer written
# by hand and for critcl, over the floor, and a mark at our goal. Bars that do not fit are cut and
# say their value.

namespace eval plot {
    variable left 250     ;# room for the operations' names
    variable width 560    ;# of the bars' area
    variable greatest 3.0 ;# multiple of the floor at its right end
    variable bar 9
    variable colours {ours #1a6faf hand #b5651d critcl #7a8b3c}
    variable legend {ours qxsh hand "written by hand" critcl critcl}
}

proc plot::x {ratio} {
    variable left; variable width; variable greatest
    format %.1f [expr {$left + $width * min($ratio, $greatest) / $greatest}]
}

proc plot::text {x y anchor words {size 12}} {
    return "<text x=\"$x\" y=\"$y\" font-size=\"$size\" text-anchor=\"$anchor\">$words</text>\n"
}

proc plot::rows {result} {
    set rows {}
    foreach each [dict get $result judged] {
        if {[dict get $each target] eq "pc" && [dict get $each unit] eq "ratio"} {
            lappend rows $each
        }
    }
    return $rows
}

# The bars of one operation, from `y` down.
proc plot::operation {each y} {
    variable left; variable bar; variable colours; variable greatest
    set values [list ours [dict get $each value]]
    foreach peer {hand critcl} {
        if {[dict exists $each peers $peer]} { lappend values $peer [dict get $each peers $peer] }
    }
    set svg [text [expr {$left - 8}] [expr {$y + 12}] end [dict get $each title]]
    set top $y
    foreach {variant value} $values {
        set end [x $value]
        append svg "<rect x=\"$left\" y=\"$top\" width=\"[format %.1f [expr {$end - $left}]]\"\
            height=\"$bar\" fill=\"[dict get $colours $variant]\"/>\n"
        if {$value > $greatest} {
            append svg [text [expr {$end + 4}] [expr {$top + 9}] start [format %.2f $value] 10]
        }
        incr top $bar
    }
    set goal [x [dict get $each goal]]
    append svg "<path d=\"M$goal [expr {$y - 2}]V[expr {$y + $bar + 2}]\" stroke=\"#c00\"\
        stroke-width=\"2\"/>\n"
    return $svg
}

proc plot::draw {result} {
    variable left; variable width; variable greatest; variable bar
    variable colours; variable legend
    set rows [rows $result]
    set step [expr {3 * $bar + 10}]
    set top 64
    set bottom [expr {$top + $step * [llength $rows]}]
    set svg "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"[expr {$left + $width + 60}]\"\
        height=\"[expr {$bottom + 20}]\" font-family=\"sans-serif\" role=\"img\">\n"
    append svg "<title>Instructions as multiples of a command that does nothing</title>\n"
    append svg "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
    append svg [text 10 20 start "Instructions as multiples of a command that does nothing (PC)" 14]
    set at $left
    foreach {variant name} $legend {
        append svg "<rect x=\"$at\" y=\"32\" width=\"12\" height=\"9\"\
            fill=\"[dict get $colours $variant]\"/>\n" [text [expr {$at + 16}] 41 start $name]
        incr at 140
    }
    append svg "<path d=\"M$at 30V43\" stroke=\"#c00\" stroke-width=\"2\"/>\n" \
        [text [expr {$at + 8}] 41 start goal]
    for {set tick 0.0} {$tick <= $greatest} {set tick [expr {$tick + 0.5}]} {
        append svg "<path d=\"M[x $tick] [expr {$top - 6}]V$bottom\"\
            stroke=\"[expr {$tick == 1 ? "#000" : "#ccc"}]\"/>\n" \
            [text [x $tick] [expr {$bottom + 14}] middle $tick 11]
    }
    set y $top
    foreach each $rows {
        append svg [operation $each $y]
        incr y $step
    }
    return "$svg</svg>\n"
}
