# Package qx, handles: which record a handle belongs to, and the record's bytes. Relies on the
# commands of the shell, which know whether a word is a handle, and on the package's library for the
# bytes.

namespace eval qx::handle {
    variable folder [file dirname [file normalize [info script]]]
    # End of a handle -> record, command that checks a handle of it; of the records seen so far.
    variable known {}
    variable sizes {} ;# record -> bytes
}

proc qx::handle::refuse {word text} {
    return -code error -errorcode [list QX HANDLE $word] $text
}

# The record that a handle belongs to, and the handle as the shell writes it.
proc qx::handle::of_record {word} {
    variable known
    set end [string range $word 9 end]
    if {[dict exists $known $end]} {
        foreach {type command} [dict get $known $end] break
        if {![catch { $command $word 0 } handle] && $handle ne "NULL"} {
            return [list $type $handle]
        }
    }
    return [learn $word]
}

# The same the long way, with a message for whatever is no handle of a record.
proc qx::handle::learn {word} {
    variable known
    variable sizes
    if {$word eq "NULL"} { refuse $word "NULL is no record" }
    set handle $word
    # The name of an object's command stands for the object.
    if {![string match _* $word] && [llength [info commands ::$word]]} {
        if {[catch { uplevel #0 [list $word cget -this] } handle]} { set handle $word }
    }
    if {![regexp {^_[0-9a-f]{8}_p_(\w+)$} $handle -> type]} {
        refuse $word "\"$word\" is no handle of a record"
    }
    if {![qx::catalogue::is_record $type]} {
        refuse $word "$word is a handle of type [string map {_ { }} $type], which is no record"
    }
    # The command refuses what the shell itself takes for no handle of the type.
    set command ::[qx::catalogue::stem $type]_array_get
    set handle [$command $handle 0]
    if {$handle eq "NULL"} { refuse $word "$word is a null pointer, no record" }
    dict set known _p_$type [list $type $command]
    dict set sizes $type [qx::catalogue::type_size $type]
    load_memory
    return [list $type $handle]
}

# The bytes of a record that `of_record` has given.
proc qx::handle::bytes {handle type} {
    variable sizes
    return [qx::memory::read $handle [dict get $sizes $type]]
}

proc qx::handle::write_bytes {handle bytes} {
    qx::memory::write $handle $bytes
}

# Loads the library when the first record is looked at: help and lint do without.
proc qx::handle::load_memory {} {
    variable folder
    if {[llength [info commands ::qx::memory::read]]} return
    load [file join $folder libqxmemory[info sharedlibextension]] Qxmemory
}
