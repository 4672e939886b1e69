# Resident memory of a shell beyond tclsh's, in KB, when its script begins: `private`, which each
# process has for itself (heap, tables that the loader has filled in), and `shared`, pages of files,
# which all processes have together. A page of a file brings its neighbours, by addresses that
# differ from run to run, so the result is the median of many. On the PC only: an emulator's memory
# says nothing. Relies on counter.tcl, scale.tcl and Linux's /proc.

namespace eval memory {
    variable runs 31
    variable script {
        set channel [open /proc/self/smaps_rollup]
        set text [read $channel]
        regexp -line {^Rss:\s+(\d+) kB$} $text -> resident
        regexp -line {^Anonymous:\s+(\d+) kB$} $text -> own
        puts "private $own shared [expr {$resident - $own}]"
    }
    variable measured {}
}

# Dictionary: private, shared. Measured once.
proc memory::beyond_tclsh {} {
    variable runs
    variable script
    variable measured
    if {$measured ne {}} { return $measured }
    file mkdir $counter::scratch
    set file [file join $counter::scratch memory.tcl]
    set channel [open $file w]
    puts $channel $script
    close $channel
    for {set i 0} {$i < $runs} {incr i} {
        foreach variant {floor ours} program [list [counter::tclsh pc] [counter::shell pc]] {
            foreach {kind size} [exec {*}[counter::launcher pc] $program $file] {
                lappend found($kind,$variant) $size
            }
        }
    }
    foreach kind {private shared} {
        dict set measured $kind [expr {round([scale::median $found($kind,ours)]
            - [scale::median $found($kind,floor)])}]
    }
    return $measured
}
