# Procedures for scripts that run in the shell: the bytes behind a handle, and where handles point.
# Relies on the byte view of a block: its handle under the type name of unsigned char.

proc view {handle} { return _[string range $handle 1 8]_p_unsigned_char }

# Bytes from an offset on, as hexadecimal digits.
proc bytes {handle from count} {
    set view [view $handle]
    set bytes {}
    for {set i $from} {$i < $from + $count} {incr i} {
        lappend bytes [qx_uint8_array_get $view $i]
    }
    binary scan [binary format c* $bytes] H* text
    return $text
}

proc fill {handle text} {
    binary scan [binary format H* $text] c* bytes
    set view [view $handle]
    set i 0
    foreach byte $bytes {
        qx_uint8_array_set $view [expr {$byte & 255}] $i
        incr i
    }
}

proc address {handle} {
    binary scan [binary format H8 [string range $handle 1 8]] i address
    return [expr {$address & 0xffffffff}]
}

# A handle's type name and its distance from another handle; or NULL.
proc from {base handle} {
    if {$handle eq "NULL"} { return NULL }
    set distance [expr {([address $handle] - [address $base]) & 0xffffffff}]
    return [list [string range $handle 9 end] $distance]
}

# Puts a template into the middle one of three records and runs a command; -> the middle's bytes.
# Globals of the caller: stem and size of the record, block (all three), record (the middle one),
# template().
proc outcome {start command} {
    ${::stem}_array_set $::block $::template($start) 1
    uplevel #0 $command
    return [bytes $::record 0 $::size]
}

# The same; -> the bytes of all three.
proc outcome_all {start command} {
    outcome $start $command
    return [bytes $::block 0 [expr {3 * $::size}]]
}
