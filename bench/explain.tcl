# tclsh explain.tcl TARGET ROW...: the instructions per pass of a row by function, for tuning: of
# the floor, of ours, and the difference. On armhf only our own functions have names; all libraries
# together are one line. Run ./bench/gate first, which builds. Relies on callgrind_annotate.

set here [file dirname [file normalize [info script]]]
foreach file {rows counter} { source [file join $here $file.tcl] }

namespace eval explain {
    variable scratch [file join $counter::scratch explain]
}

# Runs the loops of floor and ours, with three regions each, the longest last.
proc explain::run {row words} {
    variable scratch
    exec {*}$words [file join $counter::here count.tcl] $row [file join $scratch names] floor,ours \
        {*}[counter::libraries [expr {"valgrind" in $words ? "pc" : "armhf"}] {}] >/dev/null
}

# Dictionary function -> instructions of a region, from a callgrind dump.
proc explain::from_callgrind {dump} {
    set result {}
    set form {^\s*([\d,]+) \([ \d.]+%\)\s+\S*?:(.*?)(?: \[[^]]*\])?$}
    set table [exec callgrind_annotate --threshold=100 --auto=no --inclusive=no $dump]
    foreach line [split $table \n] {
        if {[regexp $form $line -> count name]} {
            dict incr result $name [string map {, {}} $count]
        }
    }
    return $result
}

# The same for a region in the plugin's file.
proc explain::from_plugin {region} {
    set result {}
    foreach {- count name} [regexp -all -inline -line {^function (\d+) (.*)$} $region] {
        dict set result [expr {$name eq {} ? "(libraries)" : $name}] $count
    }
    return $result
}

# Two dictionaries: the floor's functions and ours.
proc explain::functions {target row} {
    variable scratch
    file delete -force $scratch
    file mkdir $scratch
    set out [file join $scratch counts]
    if {$target eq "pc"} {
        run $row [concat [counter::launcher pc] valgrind -q --tool=callgrind --instr-atstart=no \
            --callgrind-out-file=$out [counter::shell pc]]
        return [list [from_callgrind $out.3] [from_callgrind $out.6]]
    }
    run $row [concat [counter::counting_launcher $target $out 0 idle ,functions=yes] \
        [counter::shell $target]]
    set channel [open $out]
    set regions [split [string map [list "begin " \x01] [read $channel]] \x01]
    close $channel
    list [from_plugin [lindex $regions 3]] [from_plugin [lindex $regions 6]]
}

proc explain::row {target row} {
    set passes [lindex [dict get [rows::get $row] passes] 1]
    lassign [functions $target $row] floor ours
    set lines {}
    foreach name [lsort -unique [concat [dict keys $floor] [dict keys $ours]]] {
        foreach variant {floor ours} {
            set count($variant) 0
            if {[dict exists [set $variant] $name]} {
                set count($variant) [expr {double([dict get [set $variant] $name]) / $passes}]
            }
        }
        set more [expr {$count(ours) - $count(floor)}]
        if {abs($more) >= 0.5} { lappend lines [list $count(floor) $count(ours) $more $name] }
    }
    puts "\n$row on $target: [counter::row $target $row] (net, a pass)"
    puts [format "%10s %10s %10s  %s" floor ours more function]
    foreach line [lsort -real -decreasing -index 2 $lines] {
        puts [format "%10.1f %10.1f %+10.1f  %s" {*}$line]
    }
}

foreach row [lrange $argv 1 end] { explain::row [lindex $argv 0] $row }
