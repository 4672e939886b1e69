# What the files edges_*.test share: named cases of one run of the shell, dump texts, and
# procedures of that run. Relies on shell.tcl, cases.tcl, memory.tcl.

set edges_memory [file join [file dirname [file normalize [info script]]] memory.tcl]
source [file join [file dirname [file normalize [info script]]] cases.tcl]

# The text of a dump as it was written down by hand, one line each: indentation goes, and lines that
# show no array element end with a blank. COUNT, the number of lines, is written down for itself.
proc dumped {count text} {
    set printed {}
    foreach line [split [string trim $text] \n] {
        set line [string trim $line]
        if {$line eq {}} continue
        if {![string match {*\] = *} $line]} { append line { } }
        append printed $line \n
    }
    set lines [regexp -all \n $printed]
    if {$lines != $count} { error "the expected text has $lines lines, not $count" }
    return $printed
}

# What zeroed addresses dump: the words of one, and one with its family and length.
set fresh_ip {
    addr[0] = 0
    addr[1] = 0
    addr[2] = 0
    addr[3] = 0
    ipv4_addr = 0
    ipv6_addr[0] = 0
    ipv6_addr[1] = 0
    ipv6_addr[2] = 0
    ipv6_addr[3] = 0
}
set fresh_address "
    afi = 0
    $fresh_ip
    addr_len = 0
"

# The same bytes, so many of them.
proc times {count byte} { return [string repeat $byte $count] }

# The message of an array field's setter for an index past the array.
proc bad_index {setter} { return "$setter bad Index \n" }

# Reads the last byte of a block that a command makes, and the one behind it. -> the first byte, the
# shell's status, whether the sanitizer stopped it: only a sanitized shell can tell.
proc read_past {size command} {
    without_recording {
        set run [shell "
            source [list $::edges_memory]
            set view \[view \[$command\]\]
            puts \[qx_uint8_array_get \$view [expr {$size - 1}]\]
            flush stdout
            puts \[qx_uint8_array_get \$view $size\]
        "]
    }
    set out [dict get $run out]
    set stopped [string match *AddressSanitizer* $out]
    return [list [lindex [split $out \n] 0] [dict get $run status] $stopped]
}

prepare "source [list $edges_memory]"
prepare {
    # A block of so many bytes from a command, made where such a block was full of ones before, if
    # the memory is used again.
    proc made_again {size command} {
        set first [uplevel #0 $command]
        fill $first [string repeat ff $size]
        qx_data_free $first
        return [uplevel #0 $command]
    }

    # A record full of one byte.
    proc filled {stem size byte} {
        set record [${stem}_create]
        fill $record [string repeat $byte $size]
        return $record
    }

    # A record with bytes that count up from a first one.
    proc counted {stem size first} {
        set record [${stem}_create]
        for {set i 0} {$i < $size} {incr i} {
            qx_uint8_array_set [view $record] [expr {($first + $i) & 255}] $i
        }
        return $record
    }
}
