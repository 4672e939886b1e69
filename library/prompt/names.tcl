# Package qx::prompt, unknown commands. Tcl's own handler would run abbreviations (qx_flow_ad) and
# Unix programs (ls); this one loads what the script libraries offer, and of everything else it says
# what is like it. Relies on the package qx for that; without it, the message is Tcl's alone.

namespace eval qx::prompt::names {
    variable count 3    ;# so many names are said
    variable longest 60 ;# letters of a word that may be a misspelt name
}

# Puts the handler in place of Tcl's.
proc qx::prompt::names::guard {} {
    # For scripts that look: Unix programs are not run by name.
    set ::auto_noexec 1
    proc ::unknown {name args} {
        uplevel 1 [concat [list ::qx::prompt::names::unknown $name] $args]
    }
}

proc qx::prompt::names::unknown {name args} {
    if {![info exists ::auto_noload] && [auto_load $name [uplevel 1 {namespace current}]]} {
        return [uplevel 1 [linsert $args 0 $name]]
    }
    set text "invalid command name \"$name\""
    set near [nearest $name]
    if {$near ne {}} { append text "\nnearest: [join $near {, }]" }
    return -code error -errorcode [list TCL LOOKUP COMMAND $name] $text
}

# The commands most like a word. One that begins with it comes first: so do abbreviations. Nothing
# is like a word that is much longer than every command, which was pasted.
proc qx::prompt::names::nearest {name} {
    variable count
    variable longest
    if {$name eq {} || [string length $name] > $longest || ![qx::prompt::have_catalogue]} return
    set name [string trimleft $name :]
    set all [qx::prompt::commands]
    set longer {}
    foreach each $all {
        if {[string equal -length [string length $name] $name $each]} { lappend longer $each }
    }
    set near [qx::catalogue::nearest $name $longer $count]
    if {[llength $longer] >= $count} { return $near }
    foreach each [qx::catalogue::nearest $name $all $count] {
        if {$each ni $near} { lappend near $each }
    }
    return [lrange $near 0 $count-1]
}
