# Package qx, qx::catalogue::nearest: the names that are most similar to a word, for error messages.
# Relies on nothing but Tcl.

# The names in a list that are most similar to a word, the nearest first; none if the word is more
# than twice as long as every name. Distances are computed for those names alone that share the most
# pairs of letters with it, for their length.
proc qx::catalogue::nearest {word names {count 3}} {
    set length [string length $word]
    set rows {}
    set longest 0
    foreach name $names {
        set other [string length $name]
        lappend rows [expr {max($length, $other)}]
        set longest [expr {max($longest, $other)}]
    }
    if {$length > 2 * $longest} return
    set pairs {}
    for {set at 0} {$at < $length - 1} {incr at} { lappend pairs [string range $word $at $at+1] }
    foreach pair [lsort -unique $pairs] {
        set pattern *[string map {\\ \\\\ * \\* ? \\? [ \\[ ] \\]} $pair]*
        foreach at [lsearch -all -glob $names $pattern] {
            lset rows $at [expr {[lindex $rows $at] - 1}]
        }
    }
    set at -1
    set likely {}
    foreach row $rows { lappend likely [list $row [incr at]] }
    set rows {}
    foreach each [lrange [lsort -integer -index 0 $likely] 0 [expr {$count + 29}]] {
        set at [lindex $each 1]
        lappend rows [list [distance $word [lindex $names $at]] $at]
    }
    set result {}
    foreach row [lrange [lsort -integer -index 0 [lsort -integer -index 1 $rows]] 0 $count-1] {
        lappend result [lindex $names [lindex $row 1]]
    }
    return $result
}

# The same for an error message: "; nearest: ..." with names, or nothing.
proc qx::catalogue::like {word names} {
    set near [nearest $word $names]
    if {$near eq {}} return
    return "; nearest: [join $near {, }]"
}

# The edit distance of two words: letters added, dropped, changed or swapped with their neighbours.
# Each column of the usual table is kept as the differences between its rows, one bit a row
# (Hyyro 2003): `up` and `down` where the number below is greater and less by one.
proc qx::catalogue::distance {from to} {
    set bit 1
    foreach letter [split $from {}] {
        incr places($letter) $bit
        set bit [expr {$bit << 1}]
    }
    set bottom [expr {$bit >> 1}]
    # Without ~ and ^, which Tcl 8.5.9 gets wrong for long numbers.
    set all [expr {$bit - 1}]
    set distance [string length $from]
    if {!$distance} { return [string length $to] }
    set up $all
    foreach name {down same diagonal} { set $name 0 }
    foreach letter [split $to {}] {
        set before $same
        set same 0
        if {[info exists places($letter)]} { set same $places($letter) }
        set swapped [expr {((($all - $diagonal) & $same) << 1) & $before}]
        set sum [expr {($same & $up) + $up}]
        set changed [expr {($sum | $up) - ($sum & $up)}]
        set diagonal [expr {($changed | $same | $down | $swapped) & $all}]
        set right [expr {$down | ($all - ($diagonal | $up))}]
        set left [expr {$diagonal & $up}]
        if {$right & $bottom} { incr distance } elseif {$left & $bottom} { incr distance -1 }
        set right [expr {(($right << 1) | 1) & $all}]
        set up [expr {(($left << 1) & $all) | ($all - ($diagonal | $right))}]
        set down [expr {$diagonal & $right}]
    }
    return $distance
}
