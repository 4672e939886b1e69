# Reads bounds.tsv and judges measured values against it.

namespace eval bounds {
    variable file [file join [file dirname [file normalize [info script]]] bounds.tsv]
    variable names {}
    variable all {}
}

# A bound that is worse than its goal must have a reason.
proc bounds::load {} {
    variable file; variable names; variable all
    set channel [open $file]
    set lines [split [string trim [read $channel]] \n]
    close $channel
    set header {}
    foreach line $lines {
        if {[string match "#*" $line]} continue
        set cells [split $line \t]
        if {$header eq {}} { set header $cells; continue }
        if {[llength $cells] != [llength $header]} {
            error "$file: [llength $cells] columns in: $line"
        }
        set row {}
        foreach key $header cell $cells { dict set row $key $cell }
        lappend names [dict get $row row]
        dict set all [dict get $row row] $row
    }
    foreach row $names {
        foreach target {pc armhf} {
            set limit [bound $row $target]
            if {$limit eq "-" || [get $row reason] ne "-"} continue
            if {![keeps $row $limit [goal $row $target]]} {
                error "$file: $row: a bound above its goal needs a reason"
            }
        }
    }
}

proc bounds::get {row key} { variable all; dict get $all $row $key }

# The goal or the bound of a row for a target: a number, or - if there is none.
proc bounds::goal {row target}  { get $row goal.$target }
proc bounds::bound {row target} { get $row bound.$target }

# True if `value` is within `limit`.
proc bounds::keeps {row value limit} {
    if {$limit eq "-"} { return 1 }
    if {[get $row unit] eq "at least"} { return [expr {$value >= $limit}] }
    expr {$value <= $limit}
}

# `met`, `above goal` (but within its bound), or `over bound`.
proc bounds::verdict {row target value} {
    if {![keeps $row $value [bound $row $target]]} { return "over bound" }
    if {![keeps $row $value [goal $row $target]]} { return "above goal" }
    if {[goal $row $target] eq "-"} { return "-" }
    return "met"
}

# A value as text, in the row's unit.
proc bounds::show {row value} {
    if {$value eq "-"} { return - }
    switch -- [get $row unit] {
        ratio   { return [format %.4f $value] }
        objects { return [format %.4f $value] }
        "at least" { return [format %.4f $value] }
        default { return [format %.0f $value] }
    }
}

bounds::load
