# Turns rows into procedures, inside the measured shell. A variant of a row is `empty` (the loop
# alone), `floor` (no_op with the same words), `ours`, or a peer, whose commands have the same names
# as the module's. Relies on rows.tcl and on the extension floor.cpp.

source [file join [file dirname [file normalize [info script]]] rows.tcl]

namespace eval loops {
    # Whose commands set up the loops `empty` and `floor`: `ours`, or a peer if there is no module.
    variable host ours
    variable body
    array set body {
        count {for {set i 0} {$i < $n} {incr i} {%s}}
        texts {foreach text $texts {%s}}
    }
}

# Sets every byte of a flow to a nonzero value, so that its dump contains only long numbers.
proc fill_flow {flow} {
    regsub {_p_qx_flow_t$} $flow _p_unsigned_char bytes
    for {set i 0} {$i < 212} {incr i} { qx_uint8_array_set $bytes [expr {($i + 1) % 256}] $i }
}

# A script with its commands replaced by those of a variant.
proc loops::as {variant script} {
    switch -- $variant {
        empty   { return {} }
        floor   { return [regsub -all {\mqx_\w+} $script no_op] }
        ours    { return $script }
    }
    string map [list qx_ ${variant}_ fill_flow ${variant}_fill_flow] $script
}

# define NAME ROW VARIANT BEFORE AFTER: defines a procedure of one argument, the number of passes,
# with the scripts BEFORE and AFTER around its loop.
proc loops::define {name row variant before after} {
    variable body
    variable host
    set row [rows::get $row]
    set command [as $variant [dict get $row command]]
    if {$variant eq "floor" && [dict exists $row floor]} { set command [dict get $row floor] }
    set loop [string map [list %s $command] $body([dict get $row loop])]
    set setup [as [expr {$variant in {empty floor} ? $host : $variant}] [dict get $row setup]]
    proc $name {n} "$setup\n$before\n$loop\n$after"
}

# Prepares a process for its variants: the module's, or the peers', which run without the module.
proc loops::serve {variants} {
    variable host
    foreach variant $variants {
        if {$variant ni {empty floor}} { set host $variant; break }
    }
}

# Loads extensions; Tcl derives the names of their start-up functions from the file names.
proc loops::load_libraries {files} {
    foreach file $files { load $file }
}
