# tclsh results.tcl [RESULT]: prints a result file, bench/result.json unless named, as a page of
# Markdown. board_times.tcl uses its tables.

package require json

namespace eval results {
    variable names {pc PC armhf armhf}
    variable peers {
        hand {by hand} critcl critcl ctypes ctypes cffi cffi luajit LuaJIT
    }
}

proc results::line {{words {}}} { puts $words }

# A Markdown table; `columns` are the titles. All columns but the first are right-aligned.
proc results::table {columns rows} {
    line "| [join $columns { | }] |"
    line "|---[string repeat {|--:} [expr {[llength $columns] - 1}]]|"
    foreach row $rows { line "| [join $row { | }] |" }
    line
}

# A number with its digits in groups of three.
proc results::grouped {number} {
    set number [format %.0f $number]
    while {[regsub {^(-?\d+)(\d{3})} $number {\1,\2} number]} {}
    return $number
}

proc results::get {dictionary name} {
    expr {[dict exists $dictionary $name] ? [dict get $dictionary $name] : "-"}
}

# A member as a multiple of the floor, or - if there is none, or no floor beyond the empty loop.
proc results::multiple {dictionary name floor} {
    if {![dict exists $dictionary $name] || $floor <= 0} { return - }
    format %.2f [expr {[dict get $dictionary $name] / $floor}]
}

# A value in the unit of its row.
proc results::shown {judged value} {
    if {$value eq "-"} { return - }
    switch -- [dict get $judged unit] {
        instructions - bytes - kilobytes { return [grouped $value] }
        default { return [format %.3f $value] }
    }
}

proc results::machine {result} {
    set machine [dict get $result machine]
    line "Measured [dict get $machine date] on [dict get $machine cores] cores of\
        [dict get $machine processor], [dict get $machine memory], [dict get $machine system];\
        load average at the start [dict get $machine load_at_start],\
        at the end [dict get $result load_at_end]; [dict get $result rounds] rounds."
    if {[lindex [dict get $machine load_at_start] 0] > 1} {
        line "The machine was busy with other work, which instructions do not notice and times do."
    }
    line
    set versions {}
    foreach {name version} [dict get $result versions] {
        if {$version ne "-"} { lappend versions "$name: $version" }
    }
    line "Versions: [join $versions {; }]."
    line
    foreach each [dict get $result left_out] {
        line "Not measured: **[dict get $each what]** ([dict get $each why])."
        line
    }
}

proc results::judged {result target} {
    variable names
    line "## [dict get $names $target]: instructions against their goals"
    line
    set rows {}
    foreach each [dict get $result judged] {
        if {[dict get $each target] ne $target} continue
        set counts {}
        foreach name {floor ours} {
            set count [get $each $name]
            lappend counts [expr {$count eq "-" ? "-" : [grouped $count]}]
        }
        set unit [dict get $each unit]
        lappend rows [list [dict get $each title] {*}$counts [shown $each [dict get $each value]] \
            "[expr {$unit eq "at least" ? "≥" : "≤"}] [shown $each [get $each goal]]" \
            [shown $each [get $each bound]] [dict get $each verdict]]
    }
    table {operation floor ours value goal bound verdict} [string map {{≤ -} -} $rows]
}

proc results::tcl_peers {result} {
    line "## Other ways to write the commands, in instructions"
    line
    line "Multiples of the floor on the PC, both peers in a stock \`tclsh\`."
    line
    set rows {}
    foreach each [dict get $result judged] {
        set peers [dict get $each peers]
        if {[dict get $each target] ne "pc" || $peers eq {}} continue
        set row [list [dict get $each title] \
            [format %.2f [expr {double([dict get $each ours]) / [dict get $each floor]}]]]
        foreach peer {hand critcl} { lappend row [multiple $peers $peer 1.0] }
        lappend rows $row
    }
    table {operation ours {by hand} critcl} $rows
}

proc results::times {result} {
    variable peers
    line "## Processor time, as multiples of the floor"
    line
    set columns {operation {floor, ns} ours}
    foreach {peer name} $peers { lappend columns $name }
    set rows {}
    foreach each [dict get $result times] {
        set times [dict get $each nanoseconds]
        set floor [dict get $times floor]
        set row [list [dict get $each title] [grouped $floor]]
        foreach variant [concat ours [dict keys $peers]] {
            lappend row [multiple $times $variant $floor]
        }
        lappend rows $row
    }
    table $columns $rows
}

proc results::large {result} {
    line "## Large numbers"
    line
    foreach {target found} [dict get $result large] {
        set live [dict get $found live]
        set types [dict get $found types]
        set worst [lindex $types 0]
        set rate "[format %.2f [dict get $live instruction_rate]] of the rate among 1,000"
        append rate ", by instructions"
        if {$target eq "pc"} { append rate " (by time [format %.2f [dict get $live rate]])" }
        line "- [string map {pc PC} $target], 1,000,000 live flows:\
            [format %.1f [dict get $live beyond]] bytes a record beyond its size; creation\
            among them at $rate. Of all record types \`[dict get $worst type]\` takes most beyond\
            its size, [format %.1f [dict get $worst beyond]] bytes."
        if {![dict exists $found flat_script]} continue
        set flat [dict get $found flat_script]
        line "- A flat script of 100,000 lines takes [format %.2f [dict get $flat ratio]] times\
            what it takes when its commands do nothing; the shell grows by\
            [mebibytes [dict get $flat bytes]] ([mebibytes [dict get $flat floor_bytes]] with\
            the others)."
        set stream [dict get $found dump_stream]
        foreach {where name} {file "a file" pipe "a pipe" null "the null device"} {
            set each [dict get $stream $where]
            line "- 100,000 dumps into $name: [format %.2f [dict get $each ratio]] times\
                \`write(2)\` of the same [grouped [dict get $stream bytes]] bytes\
                ([format %.0f [dict get $each dump]] ns each)."
        }
    }
    line
}

proc results::sizes {result} {
    line "## Sizes"
    line
    set rows {}
    foreach {target found} [dict get $result sizes] {
        foreach what {shell package} {
            set part [dict get $found $what]
            lappend rows [list "$what, $target" \
                {*}[grouped_values $part {file code constants loaded}]]
        }
    }
    table {"stripped, bytes" file code constants "all sections"} $rows
    foreach {target found} [dict get $result sizes] {
        set functions [dict get $found functions]
        set wrapper [expr {[dict get $functions wrappers] / double([dict get $functions commands])}]
        line "- $target: [format %.0f [dict get $functions per_command]] bytes of code a command\
            (wrapper [format %.0f $wrapper]); shared libraries:\
            [join [dict get $found needed] {, }]."
    }
    line
}

proc results::mebibytes {bytes} { format "%.1f MiB" [expr {$bytes / 1048576.0}] }

proc results::grouped_values {dictionary names} {
    set result {}
    foreach name $names { lappend result [grouped [dict get $dictionary $name]] }
    return $result
}

proc results::pieces {result} {
    if {[dict get $result pieces] eq {}} return
    line "## Pieces of C++, processor time"
    line
    set rows {}
    foreach each [dict get $result pieces] {
        lappend rows [list [string map {_ { }} [dict get $each piece]] \
            [format %.1f [dict get $each nanoseconds]]]
    }
    table {piece ns} $rows
}

proc results::read_file {file} {
    set channel [open $file]
    fconfigure $channel -encoding utf-8
    set text [read $channel]
    close $channel
    return $text
}

proc results::print {file} {
    set result [json::json2dict [read_file $file]]
    fconfigure stdout -encoding utf-8
    machine $result
    foreach target {pc armhf} {
        if {[dict exists $result sizes $target]} { judged $result $target }
    }
    tcl_peers $result
    times $result
    large $result
    sizes $result
    pieces $result
}

if {[file normalize $::argv0] eq [file normalize [info script]]} {
    results::print [expr {[llength $argv] ? [lindex $argv 0]
        : [file join [file dirname [file normalize [info script]]] result.json]}]
}
