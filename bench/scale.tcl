# Drives the scripts in scale/: a million live records, a long flat script, a stream of dumps. Each
# procedure returns a dictionary. Relies on counter.tcl for folders.

namespace eval scale {
    variable scripts [file join [file dirname [file normalize [info script]]] scale]
}

# Runs one of the scripts in the shell and returns the pairs that it wrote. `out` is a redirection.
proc scale::run {target script out args} {
    variable scripts
    file mkdir $counter::scratch
    set output [file join $counter::scratch scale.$target]
    exec {*}[counter::launcher $target] [counter::shell $target] [file join $scripts $script] \
        $output {*}$args {*}$out
    return [lines $output]
}

proc scale::lines {file} {
    set channel [open $file]
    set words [read $channel]
    close $channel
    return $words
}

proc scale::floor {target} { file join [counter::tools $target] floor.so }

proc scale::median {numbers} {
    set sorted [lsort -real $numbers]
    set middle [expr {[llength $sorted] / 2}]
    if {[llength $sorted] % 2} { return [lindex $sorted $middle] }
    expr {([lindex $sorted $middle-1] + [lindex $sorted $middle]) / 2.0}
}

# A million live flows: resident bytes beyond a flow's size, and the cost of creation with many live
# flows relative to few, in CPU time (medians of rounds) and in instructions.
proc scale::live_records {target count rounds} {
    foreach name {few many bytes} { set all($name) {} }
    for {set i 0} {$i < $rounds} {incr i} {
        foreach {name value} [run $target live_records.tcl >/dev/null $count [floor $target]] {
            lappend all($name) $value
        }
    }
    variable scripts
    set counts [file join $counter::scratch live.$target.counts]
    exec {*}[counter::counting_launcher $target $counts 0] [counter::shell $target] \
        [file join $scripts live_records.tcl] /dev/null $count [floor $target] count
    lassign [counter::regions $target $counts] few many
    list beyond [expr {[median $all(bytes)] - 212}] \
        time_few [median $all(few)] time_many [median $all(many)] \
        rate [expr {[median $all(few)] / [median $all(many)]}] \
        instruction_rate [expr {double($few) / $many}]
}

# Bytes beyond the record's size, as lists of type, size and bytes, the largest first.
proc scale::record_sizes {target} {
    set result {}
    foreach {type size beyond} [run $target record_sizes.tcl >/dev/null] {
        lappend result [list $type $size $beyond]
    }
    return [lsort -real -decreasing -index 2 $result]
}

# Bytes of heap that a handle takes, in Tcl objects.
proc scale::handle_memory {target} {
    set found [run $target handle_memory.tcl >/dev/null [floor $target]]
    list bytes [dict get $found bytes] object [dict get $found object]
}

# A flat script of `count` lines, compared with the same lines calling a no-op.
proc scale::flat_script {target count rounds} {
    foreach {variant command} {ours qx_flow_set_flow_id floor no_op} {
        set file [file join $counter::scratch flat_$variant.tcl]
        set channel [open $file w]
        for {set i 0} {$i < $count} {incr i} { puts $channel "$command \$flow [expr {$i % 65536}]" }
        close $channel
        set files($variant) $file
        set times($variant) {}
    }
    for {set i 0} {$i < $rounds} {incr i} {
        foreach variant {ours floor} {
            set found [run $target flat_script.tcl >/dev/null [floor $target] $files($variant)]
            lappend times($variant) [dict get $found nanoseconds]
            set bytes($variant) [dict get $found bytes]
        }
    }
    foreach variant {ours floor} {
        file delete $files($variant)
        set line($variant) [expr {[median $times($variant)] / double($count)}]
    }
    list ours $line(ours) floor $line(floor) ratio [expr {$line(ours) / $line(floor)}] \
        bytes $bytes(ours) floor_bytes $bytes(floor)
}

# `count` dumps into a file, a pipe and the null device, compared with write(2) of the same bytes.
proc scale::dump_stream {target count rounds} {
    variable scripts
    set text [file join $counter::scratch dump.txt]
    set file [file join $counter::scratch stream]
    close [open $text w]
    run $target dump_stream.tcl [list >$file] [floor $target] dump 1 $text
    file rename -force $file $text
    set result [list bytes [file size $text]]
    foreach {where out} [list file [list >$file] pipe {| cat >/dev/null} null {>/dev/null}] {
        foreach how {dump write} { set times($how) {} }
        for {set i 0} {$i < $rounds} {incr i} {
            foreach how {dump write} {
                set found [run $target dump_stream.tcl $out [floor $target] $how $count $text]
                lappend times($how) [expr {[dict get $found nanoseconds] / double($count)}]
                if {$where eq "file" && [file size $file] != $count * [file size $text]} {
                    error "$how wrote [file size $file] bytes, not $count * [file size $text]"
                }
            }
        }
        lappend result $where [list dump [median $times(dump)] write [median $times(write)] \
            ratio [expr {[median $times(dump)] / [median $times(write)]}]]
    }
    file delete $file
    return $result
}
