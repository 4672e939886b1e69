# What calls on the simulator's tables cost in a full table, against one with a single entry, in
# instructions. Relies on counter.tcl and scale/full_tables.tcl.

namespace eval tables {
    variable counted {} ;# target -> table -> operation -> `one` or `full` -> instructions
}

# The dictionary of a target, measured once.
proc tables::measure {target} {
    variable counted
    if {[dict exists $counted $target]} { return [dict get $counted $target] }
    file mkdir $counter::scratch
    set counts [file join $counter::scratch tables.$target.counts]
    set names [file join $counter::scratch tables.$target.names]
    exec {*}[counter::counting_launcher $target $counts 0 own] [counter::shell $target] \
        [file join $counter::here scale full_tables.tcl] $names [scale::floor $target] >/dev/null
    set channel [open $names]
    set lines [split [string trim [read $channel]] \n]
    close $channel
    set values [counter::regions $target $counts]
    if {[llength $values] != [llength $lines]} {
        error "tables on $target: [llength $values] regions were counted, [llength $lines] were run"
    }
    set found {}
    foreach line $lines value $values {
        lassign $line table operation fill variant passes
        lappend all($table,$operation,$fill,$variant) $passes $value
        dict set found $table $operation {}
    }
    dict for {table operations} $found {
        foreach operation [dict keys $operations] {
            foreach fill {one full} {
                dict set found $table $operation $fill [expr {
                    [per_pass $all($table,$operation,$fill,ours)]
                    - [per_pass $all($table,$operation,$fill,floor)]}]
            }
        }
    }
    dict set counted $target $found
    return $found
}

# Instructions per pass, of a list of passes and values: warming up, shorter and longer loop.
proc tables::per_pass {all} {
    lassign $all - - few less many more
    expr {double($more - $less) / ($many - $few)}
}

# The worst ratio of a table's operations: their cost in the full table over that beside one entry.
proc tables::ratio {target table} {
    set worst 0
    dict for {operation found} [dict get [measure $target] $table] {
        set worst [expr {max($worst, double([dict get $found full]) / [dict get $found one])}]
    }
    return $worst
}
