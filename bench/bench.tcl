# tclsh bench.tcl OUTPUT ROUNDS TARGETS PEERS LEFT-OUT: measures everything and writes the result
# file. TARGETS and PEERS are comma-separated lists, LEFT-OUT is a Tcl list of what cannot be
# measured here, as pairs of name and reason. Called by ./bench/run, which builds what is measured.

set here [file dirname [file normalize [info script]]]
foreach file {
    rows bounds counter memory recorded scale sizes tables times machine
    ../library/qx/progress
} {
    source [file join $here $file.tcl]
}
package require json
package require json::write

namespace eval bench {
    variable results {} ;# pairs of name and JSON value, in the order of the file
    variable over 0     ;# values beyond their bounds
}

proc bench::keep {name value} { variable results; lappend results $name $value }

# A judged value as JSON; also prints a line of progress. `floor` and `ours` are - if there is none.
proc bench::judge {target row floor ours value {peers {}}} {
    variable over
    set verdict [bounds::verdict $row $target $value]
    if {$verdict eq "over bound"} { incr over }
    qx::progress::hide
    puts [format "%-6s %-40s %9s  %s" $target [bounds::get $row title] \
        [bounds::show $row $value] $verdict]
    flush stdout
    set pairs [list row [json::write string $row] \
        title [json::write string [bounds::get $row title]] \
        target [json::write string $target] unit [json::write string [bounds::get $row unit]]]
    foreach name {floor ours} {
        if {[set $name] ne "-"} { lappend pairs $name [number [set $name]] }
    }
    lappend pairs value [number $value]
    foreach name {goal bound} {
        set limit [bounds::$name $row $target]
        if {$limit ne "-"} { lappend pairs $name [number $limit] }
    }
    lappend pairs verdict [json::write string $verdict] peers [numbers $peers]
    return [json::write object {*}$pairs]
}

proc bench::number {value} {
    if {![string is double -strict $value]} { error "$value is not a number" }
    if {[string is wideinteger -strict $value]} { return $value }
    return [format %.9g $value]
}

# A JSON array with one value per line.
proc bench::lines_of {values} { return "\[\n[join $values ,\n]\n\]" }

# A dictionary of numbers as a JSON object.
proc bench::numbers {dictionary} {
    set pairs {}
    foreach {name value} $dictionary { lappend pairs $name [number $value] }
    return [json::write object {*}$pairs]
}

# The loops, in instructions, including those of peers that are Tcl extensions.
proc bench::loops {target peers} {
    set values {}
    qx::progress::begin "qxsh: counting on $target" "[llength $rows::names] rows"
    foreach row $rows::names {
        qx::progress::at [llength $values]
        set net [counter::row $target $row]
        set floor [dict get $net floor]
        set ours [dict get $net ours]
        set value [expr {[bounds::get $row unit] eq "ratio" ? $ours / $floor : $ours}]
        set able {}
        foreach peer $peers {
            if {$peer in [dict get [rows::get $row] peers]} { lappend able $peer }
        }
        set others {}
        if {[llength $able]} {
            set counted [counter::peers $target $row $able]
            foreach peer $able {
                dict set others $peer [expr {[dict get $counted $peer] / [dict get $counted floor]}]
            }
        }
        lappend values [judge $target $row $floor $ours $value $others]
    }
    qx::progress::end
    return $values
}

# The other judged rows.
proc bench::others {target} {
    set values {}
    foreach {row counted} [list registration [counter::registration $target] \
                               start_up [counter::start_up $target]] {
        set floor [dict get $counted floor]
        set ours [dict get $counted ours]
        lappend values [judge $target $row $floor $ours [expr {double($ours) / $floor}]]
    }
    set memory [scale::handle_memory $target]
    set object [dict get $memory object]
    set bytes [dict get $memory bytes]
    lappend values [judge $target handle_memory $object $bytes [expr {double($bytes) / $object}]]
    if {$target eq "pc"} {
        foreach {kind size} [memory::beyond_tclsh] {
            lappend values [judge pc ${kind}_memory - - $size]
        }
    }
    return $values
}

# Calls that are recorded or replayed, and on the simulator's full tables.
proc bench::calls {target} {
    set values {}
    foreach row $bounds::names {
        if {[bounds::bound $row $target] eq "-"} continue
        if {[regexp {^full_(.*)$} $row -> table]} {
            lappend values [judge $target $row - - [tables::ratio $target $table]]
        } elseif {[regexp {^(recorded|replayed)_call$} $row -> how]} {
            lappend values [judge $target $row - - [recorded::cost $target $how]]
        }
    }
    return $values
}

# Large numbers of live records, script lines and dumps: judged values first, then the rest as JSON.
proc bench::large {target rounds} {
    set live [scale::live_records $target 1000000 $rounds]
    # Times under an emulator are meaningless: use instructions there.
    set rate [dict get $live [expr {$target eq "pc" ? "rate" : "instruction_rate"}]]
    set judged [list [judge $target record_beyond - - [dict get $live beyond]] \
        [judge $target create_rate - - $rate]]
    set types {}
    foreach found [scale::record_sizes $target] {
        lassign $found type size beyond
        lappend types [json::write object type [json::write string $type] size $size \
            beyond [number $beyond]]
    }
    set pairs [list live [numbers $live] types [json::write array {*}$types]]
    if {$target eq "pc"} {
        set flat [scale::flat_script $target 100000 $rounds]
        set stream [scale::dump_stream $target 100000 $rounds]
        lappend pairs flat_script [numbers $flat]
        set parts [list bytes [dict get $stream bytes]]
        foreach where {file pipe null} { lappend parts $where [numbers [dict get $stream $where]] }
        lappend pairs dump_stream [json::write object {*}$parts]
    }
    list $judged [json::write object {*}$pairs]
}

proc bench::sizes {target} {
    set found [sizes::measure $target]
    set judged [list [judge $target code_per_command - - [dict get $found functions per_command]] \
        [judge $target shell_file - - [dict get $found shell file]] \
        [judge $target package_file - - [dict get $found package file]]]
    list $judged [json::write object shell [numbers [dict get $found shell]] \
        package [numbers [dict get $found package]] \
        functions [numbers [dict get $found functions]] \
        needed [json::write array-strings {*}[dict get $found needed]]]
}

proc bench::times {rounds peers} {
    puts "processor times of [join [concat ours $peers] {, }]"
    flush stdout
    set times [times::measure $rounds $peers]
    set values {}
    foreach row [concat $rows::names registration start_up] {
        lappend values [json::write object row [json::write string $row] \
            title [json::write string [bounds::get $row title]] \
            nanoseconds [numbers [dict get $times $row]]]
    }
    return $values
}

# Google Benchmark's medians, in nanoseconds of CPU time.
proc bench::pieces {rounds} {
    set program [file join [counter::tools pc] benchmarks]
    if {![file executable $program]} { return {} }
    set found [json::json2dict [exec $program --benchmark_format=json --benchmark_min_time=0.05 \
        --benchmark_repetitions=[expr {max($rounds, 3)}] \
        --benchmark_report_aggregates_only=true 2>/dev/null]]
    set values {}
    foreach each [dict get $found benchmarks] {
        if {[dict get $each aggregate_name] ne "median"} continue
        set name [dict get $each run_name]
        lappend values [json::write object piece [json::write string $name] \
            nanoseconds [number [dict get $each cpu_time]]]
    }
    return $values
}

proc bench::main {output rounds targets peers left_out} {
    variable results
    variable over
    keep format 1
    json::write indented 0
    keep machine [json::write object-strings {*}[machine::describe]]
    keep versions [json::write object-strings {*}[machine::versions]]
    set reasons {}
    foreach {what why} $left_out {
        lappend reasons [json::write object-strings what $what why $why]
    }
    keep left_out [json::write array {*}$reasons]
    keep rounds $rounds
    set judged {}
    set large {}
    set size {}
    set tcl_peers {}
    foreach peer $peers { if {$peer in {hand critcl}} { lappend tcl_peers $peer } }
    foreach target $targets {
        lappend judged {*}[loops $target [expr {$target eq "pc" ? $tcl_peers : "hand"}]]
        lappend judged {*}[others $target]
        lappend judged {*}[calls $target]
        lassign [large $target $rounds] more value
        lappend judged {*}$more
        lappend large $target $value
        lassign [sizes $target] more value
        lappend judged {*}$more
        lappend size $target $value
    }
    keep judged [lines_of $judged]
    keep large [json::write object {*}$large]
    keep sizes [json::write object {*}$size]
    keep times [lines_of [times $rounds $peers]]
    keep pieces [lines_of [pieces $rounds]]
    keep load_at_end [json::write string [machine::load]]
    set channel [open $output w]
    json::write indented 1
    puts $channel [json::write object {*}$results]
    close $channel
    puts "\nresult file: $output"
    return $over
}

set over [bench::main [lindex $argv 0] [lindex $argv 1] [split [lindex $argv 2] ,] \
    [split [lindex $argv 3] ,] [lindex $argv 4]]
if {$over > 0} { puts "$over values are over their bounds"; exit 1 }
