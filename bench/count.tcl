# SHELL count.tcl ROW OUTPUT VARIANT,... LIBRARY...: runs one row's loops, each variant with two
# numbers of passes, under a tool that counts instructions. Writes a line for each counted region,
# in order, to OUTPUT: variant and passes.

source [file join [file dirname [file normalize [info script]]] loops.tcl]

proc count_row {name output variants} {
    set channel [open $output w]
    set passes [dict get [rows::get $name] passes]
    loops::serve $variants
    bench_start
    foreach variant $variants {
        loops::define ::loop $name $variant {bench_begin} {bench_end region}
        # The first passes compile the loop, bind names and fill caches.
        foreach n [concat [lindex $passes 0] $passes] kind {warm short long} {
            loop $n
            puts $channel "$kind $variant $n"
        }
    }
    close $channel
}

loops::load_libraries [lrange $argv 3 end]
count_row [lindex $argv 0] [lindex $argv 1] [split [lindex $argv 2] ,]
