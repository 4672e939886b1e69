# Package qx, handles: the record type of a word. Relies on the shell's commands, which know whether
# a word is a handle. The package's library, which reads and writes records, calls this for words
# that do not look like plain handles.

namespace eval qx::handle {
    variable folder [file dirname [file normalize [info script]]]
}

proc qx::handle::refuse {word text} {
    return -code error -errorcode [list QX HANDLE $word] $text
}

# The record type of a handle, and the handle as the shell writes it.
proc qx::handle::of_record {word} {
    if {$word eq "NULL"} { refuse $word "NULL is not a record" }
    set handle $word
    # The name of an object command stands for its handle.
    if {![string match _* $word] && [llength [info commands ::$word]]} {
        if {[catch { uplevel #0 [list $word cget -this] } handle]} { set handle $word }
    }
    if {![regexp {^_[0-9a-f]{8}_p_(\w+)$} $handle -> type]} {
        refuse $word "\"$word\" is not a handle of a record"
    }
    if {![qx::catalogue::is_record $type]} {
        refuse $word "$word is a handle of type [string map {_ { }} $type], which is not a record"
    }
    # The command rejects every word that the shell does not accept as a handle of the type.
    set handle [::[qx::catalogue::stem $type]_array_get $handle 0]
    if {$handle eq "NULL"} { refuse $word "$word is a null pointer, not a record" }
    return [list $type $handle]
}

# Loads the library on the first access to a record; help and lint do not need it. It replaces the
# commands created by load_at_first_call.
proc qx::handle::load_library {} {
    variable folder
    load [file join $folder libqxmemory[info sharedlibextension]] Qxmemory
}

# Creates a stand-in for a command of the library until that is loaded. It is an alias, since a
# procedure that is replaced while it runs makes `info frame` crash.
proc qx::handle::load_at_first_call {command} {
    # Messages of the library name the command as it is given here.
    interp alias {} $command {} ::qx::handle::first_call [string trimleft $command :]
}

proc qx::handle::first_call {args} {
    load_library
    # The words of the call would be in the error's trace, and may be keys.
    catch { uplevel 1 $args } result options
    return -options [dict replace [dict remove $options -errorinfo -errorstack] -level 1] $result
}
