# Package qx, columns for people: side by side below the names of their groups, in as many blocks as
# the terminal is too narrow for. Relies on layout.tcl.
#
# A column is a list: path (names of groups, then its own), and a text for each row.

namespace eval qx::columns {}

# Columns side by side, in as many blocks as fit the terminal one below the other. The first ones
# begin each block.
proc qx::columns::blocks {columns keys} {
    set room [qx::layout::width]
    set first [lrange $columns 0 $keys-1]
    set rest [lrange $columns $keys end]
    set texts {}
    set block $first
    foreach column $rest {
        if {[llength $block] > [llength $first] && [width [concat $block [list $column]]] > $room} {
            lappend texts [block $block]
            set block $first
        }
        lappend block $column
    }
    lappend texts [block $block]
    return [join $texts \n\n]
}

proc qx::columns::width {columns} {
    set width -2
    foreach each [widths $columns] { incr width [expr {$each + 2}] }
    return $width
}

# The width of each column, wide enough for the names above a group of them.
proc qx::columns::widths {columns} {
    set widths {}
    foreach column $columns {
        lassign $column path texts
        set width [string length [lindex $path end]]
        foreach text $texts { set width [expr {max($width, [string length $text])}] }
        lappend widths $width
    }
    foreach {level first last} [groups $columns] {
        set room [expr {2 * ($last - $first)}]
        foreach width [lrange $widths $first $last] { incr room $width }
        set lacking [expr {[string length [lindex $columns $first 0 $level]] - $room}]
        if {$lacking > 0} { lset widths $last [expr {[lindex $widths $last] + $lacking}] }
    }
    return $widths
}

# The groups of neighbours below the same name: level, first and last column.
proc qx::columns::groups {columns} {
    set result {}
    set deepest 0
    foreach column $columns { set deepest [expr {max($deepest, [llength [lindex $column 0]])}] }
    for {set level 0} {$level < $deepest - 1} {incr level} {
        set before {}
        set number -1
        foreach column $columns {
            incr number
            set path [lindex $column 0]
            if {[llength $path] <= $level + 1} {
                set before {}
                continue
            }
            set group [lrange $path 0 $level]
            if {$group eq $before} {
                lset result end $number
            } else {
                lappend result $level $number $number
            }
            set before $group
        }
    }
    return $result
}

# One block: names of groups, names of columns, rows. Numbers stand at the right.
proc qx::columns::block {columns} {
    set widths [widths $columns]
    set deepest 0
    foreach column $columns { set deepest [expr {max($deepest, [llength [lindex $column 0]])}] }
    set starts {}
    set start 0
    foreach width $widths {
        lappend starts $start
        incr start [expr {$width + 2}]
    }
    set lines [lrepeat $deepest {}]
    foreach {level first last} [groups $columns] {
        set line [lindex $lines $level]
        append line [string repeat { } [expr {[lindex $starts $first] - [string length $line]}]]
        lset lines $level $line[lindex $columns $first 0 $level]
    }
    set lines [lrange $lines 0 end-1]
    set formats {}
    set names {}
    foreach column $columns width $widths {
        lassign $column path texts
        set sign -
        if {[lsearch -not -regexp $texts {^\d*$}] < 0} { set sign {} }
        lappend formats "%$sign${width}s"
        lappend names [lindex $path end]
    }
    lappend lines [line $formats $names]
    for {set row 0} {$row < [llength [lindex $columns 0 1]]} {incr row} {
        set texts {}
        foreach column $columns { lappend texts [lindex $column 1 $row] }
        lappend lines [line $formats $texts]
    }
    return [join $lines \n]
}

proc qx::columns::line {formats texts} {
    return [string trimright [format [join $formats {  }] {*}$texts]]
}
