# Which words each argument of each command takes, by the tables that were written by hand: what
# pages, manuals, help, Tab and lint say is held against it. Relies on shell.tcl.

namespace eval ranges {
    variable of_type {
        {unsigned char}      {0 255}
        {unsigned short}     {0 65535}
        {unsigned int}       {0 4294967295}
        {unsigned long long} {0 18446744073709551615}
        int                  {-2147483648 2147483647}
    }
}

# All arguments, a list of lists:
#   command, number of the argument from 1, its name, its native type,
#   least and greatest number (of a pointer empty),
#   every: the index that stands for all elements, or empty
#   kept:  the number of bits that a bit-field keeps, or empty
proc ranges::arguments {} {
    variable of_type
    foreach row [expected fields.tsv] {
        lassign $row record field offset bit width elements
        set stem [regsub {_t$} $record {}]
        foreach verb {set get} {
            set place(${stem}_${verb}_$field) $field
            set count(${stem}_${verb}_$field) $elements
        }
        if {$width ne "-"} {
            set bits(${stem}_set_$field,$field) $width
            set bits(${stem}_init,$field) $width
        }
    }
    set result {}
    foreach row [expected commands.tsv] {
        lassign $row name usage types
        set words [lrange [string trimright [lindex [split $usage :] 1] {| }] 1 end]
        set number 0
        foreach argument $words type [expr {$types eq "-" ? {} : [split $types ,]}] {
            incr number
            set range {}
            if {[dict exists $of_type $type]} { set range [dict get $of_type $type] }
            set every {}
            set kept {}
            # An array in a record has bounds; one that a script made has none that are known.
            if {$argument eq "idx" && [info exists place($name)]} {
                set range [list 0 [expr {$count($name) - 1}]]
                if {[regexp {_set_} $name]} { set every 4294967295 }
            }
            if {[info exists bits($name,$argument)]} { set kept $bits($name,$argument) }
            lappend result [list $name $number $argument $type $range $every $kept]
        }
    }
    return $result
}

# The words for an argument's range.
proc ranges::text {row} {
    lassign $row name number argument type range every kept
    if {$type eq "void *"} { return "any handle or NULL" }
    if {$range eq {}} { return "handle or NULL" }
    set text [join $range { to }]
    if {$every ne {}} { append text ", or $every for every element" }
    if {$kept eq "1"} { append text "; the lowest 1 bit is kept" }
    if {$kept ne {} && $kept != 1} { append text "; the lowest $kept bits are kept" }
    return $text
}

# How many arguments there are of each sort: all, indexes with bounds, bit-fields.
proc ranges::counts {} {
    set counts {0 0 0}
    foreach row [arguments] {
        lassign $row name number argument type range every kept
        set indexed [expr {$argument eq "idx" && $range ne {0 4294967295}}]
        set counts [list [expr {[lindex $counts 0] + 1}] \
            [expr {[lindex $counts 1] + $indexed}] \
            [expr {[lindex $counts 2] + ($kept ne {})}]]
    }
    return $counts
}
