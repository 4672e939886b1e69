# Reads the default profile, sdk/simulator.profile, for what is generated from it. The profiles of
# boards are read by records/profile.cpp, which a test lets read this one, too. A mistake ends that
# with an error of one line, "<file>:<line>: error: <what>". Relies on statuses.tcl.

namespace eval profile {}

# A dict: `statuses`, a list of name, number and meaning; `codes`, a dict from OWNER.NAME to a dict
# from word to number; `capacities` and `families`, dicts from name to number; `loose`, a list of
# OWNER.NAME. Ports and devices are capacities. All is in the file's order.
proc profile::read {file} {
    set found [dict create statuses {} codes {} capacities {} families {} loose {}]
    set line_number 0
    foreach line [statuses::lines_of $file] {
        incr line_number
        if {[regexp {^\s*(#.*)?$} $line]} continue
        if {[catch { add_line $line } mistake]} { statuses::fail $file $line_number $mistake }
    }
    if {[dict get $found statuses] eq {}} { statuses::fail $file 1 "holds no status" }
    return $found
}

# Adds a line to what the caller has found.
proc profile::add_line {line} {
    upvar 1 found found
    set number {(\d+|0[xX][[:xdigit:]]+)}
    set name {([A-Za-z_]\w*)}
    if {[regexp "^status\\s+$number\\s+$name\\s+(\\S.*?)\\s*$" $line -> value word meaning]} {
        add_status [dict get $found statuses] $word $value
        dict lappend found statuses $word [expr {$value}] $meaning
    } elseif {[regexp "^code\\s+(\\w+\\.\\w+)\\s+$number\\s+(\[A-Za-z_\]\[\\w-\]*)\\s*$" $line \
            -> place value word]} {
        add [list codes $place] $word $value
    } elseif {[regexp "^capacity\\s+$name\\s+$number\\s*$" $line -> word value]} {
        add capacities $word $value
    } elseif {[regexp "^(ports|devices)\\s+$number\\s*$" $line -> word value]} {
        add capacities $word $value
    } elseif {[regexp "^family\\s+(ipv4|ipv6)\\s+$number\\s*$" $line -> word value]} {
        add families $word $value
    } elseif {[regexp {^loose\s+(\w+\.\w+)\s*$} $line -> place]} {
        dict lappend found loose $place
    } else {
        error "expected: status, code, capacity, ports, devices, family or loose"
    }
}

# Checks that neither name nor number of a status is taken.
proc profile::add_status {statuses name number} {
    foreach {other_name other_number meaning} $statuses {
        if {$other_name eq $name} { error "$name is already declared" }
        if {$other_number == $number} { error "status number $number is already taken" }
    }
}

proc profile::add {path word number} {
    upvar 2 found found
    if {[dict exists $found {*}$path $word]} { error "$word is already declared" }
    dict set found {*}$path $word [expr {$number}]
}
