# What ./bench/run prints while it measures.

namespace eval report {
    variable names {pc "PC, by callgrind" armhf "armhf, by the emulator's plugin"}
    variable format "%-40s %12s %12s %9s %9s %9s  %s"
}

proc report::head {target} {
    variable names; variable format
    puts "\n[dict get $names $target]: instructions, net of the empty loop"
    puts [format $format operation floor ours value goal bound verdict]
}

proc report::count {value} { expr {$value eq "-" ? "-" : [format %.1f $value]} }

proc report::judged {target row floor ours value verdict} {
    variable format
    puts [format $format [bounds::get $row title] [count $floor] [count $ours] \
        [bounds::show $row $value] [bounds::show $row [bounds::goal $row $target]] \
        [bounds::show $row [bounds::bound $row $target]] $verdict]
    flush stdout
}

proc report::large {live flat stream} {
    puts "\nlarge numbers, processor time (medians)"
    puts [format "  create among 1,000 live flows %.0f ns, among 1,000,000 %.0f ns" \
        [dict get $live time_few] [dict get $live time_many]]
    set text "  flat script of 100,000 lines: %.0f ns a line, no_op %.0f (ratio %.2f), %.1f MiB"
    puts [format $text \
        [dict get $flat ours] [dict get $flat floor] [dict get $flat ratio] \
        [expr {[dict get $flat bytes] / 1048576.0}]]
    foreach where {file pipe null} {
        set found [dict get $stream $where]
        set text "  100,000 dumps to %s: %.0f ns each, write(2) of the %d bytes %.0f (ratio %.2f)"
        puts [format $text $where [dict get $found dump] [dict get $stream bytes] \
            [dict get $found write] [dict get $found ratio]]
    }
    puts ""
}

proc report::sizes {target found} {
    puts "\nsizes, stripped, in bytes ($target)"
    foreach what {shell package} {
        set part [dict get $found $what]
        puts "  $what: file [dict get $part file], code [dict get $part code],\
            constants [dict get $part constants], loaded [dict get $part loaded]"
    }
    set functions [dict get $found functions]
    puts "  code of the [dict get $functions commands] commands:\
        wrappers [dict get $functions wrappers], helpers [dict get $functions helpers];\
        everything else [dict get $functions others]"
    puts "  shared libraries: [join [dict get $found needed] {, }]"
}

# Times of ours and the peers, as multiples of the floor.
proc report::times {times peers} {
    set columns [concat ours $peers]
    puts "\nprocessor time as a multiple of the floor (medians of rounds)"
    puts -nonewline [format "%-40s %11s" operation "floor, ns"]
    foreach column $columns { puts -nonewline [format " %9s" $column] }
    puts ""
    foreach row [concat $rows::names registration start_up] {
        set found [dict get $times $row]
        set floor [dict get $found floor]
        puts -nonewline [format "%-40s %11.1f" [bounds::get $row title] $floor]
        foreach column $columns {
            set shown -
            if {[dict exists $found $column]} {
                set shown [format %.2f [expr {[dict get $found $column] / $floor}]]
            }
            puts -nonewline [format " %9s" $shown]
        }
        puts ""
    }
    puts "\npieces, nanoseconds (medians)"
}

proc report::piece {name time} { puts [format "  %-30s %10.1f" $name $time] }

proc report::left_out {left_out} {
    foreach {what why} $left_out { puts "\nnot measured: $what: $why" }
}
