# What the random scripts are written in: numbered commands, handles shown as places in blocks.
# Sourced before each of them.
source [file join [file dirname [info script]] .. script memory.tcl]

# Carries out one command and prints its number and its result, or the error and its code.
proc go {number script} {
    if {[catch {uplevel #0 $script} result]} {
        puts "$number! $result ($::errorCode)"
    } else {
        puts "$number: $result"
    }
}

# Keeps a new block's handle in a variable; -> the type part, or NULL.
proc made {name handle} {
    set ::$name $handle
    return [expr {$handle eq "NULL" ? $handle : [string range $handle 9 end]}]
}

# A handle of a type for a place in a block.
proc at {handle offset type} {
    binary scan [binary format i [expr {([address $handle] + $offset) & 0xffffffff}]] H8 digits
    return _${digits}_p_$type
}

# The same handle in a text that nobody has looked at.
proc fresh {handle} { return [string range " $handle" 1 end] }
