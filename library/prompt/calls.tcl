# Package qx::prompt, completion of the words of qx::call: options, the function, and a word for
# each argument that the function reads. Relies on arguments.tcl, data.tcl and the package qx.

namespace eval qx::prompt::calls {}

proc qx::prompt::calls::next {words word variables} {
    set rest [call_words $words]
    if {$rest eq {}} {
        set names [qx::catalogue::calls]
        return [list offers [qx::prompt::offers::commands $word $names]]
    }
    set argument [argument $rest $variables]
    if {$argument eq {}} return
    set call [string trimleft [lindex $rest 0] :]
    foreach part {name type counted_by} { set $part [dict get $argument $part] }
    set facts [qx::catalogue::facts $call]
    if {![qx::catalogue::is_pointer $type]} {
        if {[string match {$*} $word]} {
            set names [qx::prompt::arguments::no_handles $variables]
            return [list offers [qx::prompt::offers::variables $word $names]]
        }
        set codes [dict keys [qx::catalogue::code_words $call $name]]
        set offers [qx::prompt::offers::beginning $word $codes]
        if {$offers ne {}} { return [list offers $offers] }
        return [list hint "<$name: [qx::wording::hint $facts $name $type]>"]
    }
    set target [qx::catalogue::target $type]
    set shown "{$target} or a handle"
    if {$counted_by ne {}} { set shown "list of {$target}, or a handle" }
    return [qx::prompt::arguments::handle_word $name $shown $target $word $variables]
}

# The words from the function's name on; empty if it is not there yet.
proc qx::prompt::calls::call_words {words} {
    set at 1
    while {[string match -* [set option [lindex $words $at]]]} {
        incr at [expr {$option in {-allow -status} ? 2 : 1}]
    }
    return [lrange $words $at end]
}

# The argument that the next word is for; empty if there is none. The size of an array may have been
# left out: then no number stands in its place.
proc qx::prompt::calls::argument {words variables} {
    set call [string trimleft [lindex $words 0] :]
    if {![qx::catalogue::is_command $call]
            || [dict get [qx::catalogue::facts $call] shape] ne "call"} return
    set sizes {}
    set arguments {}
    foreach argument [dict get [qx::catalogue::call $call] arguments] {
        lappend sizes [dict get $argument counted_by]
        if {[dict get $argument direction] ne "out"} { lappend arguments $argument }
    }
    set given [lrange $words 1 end]
    while {$given ne {}} {
        set argument [lindex $arguments 0]
        set arguments [lrange $arguments 1 end]
        if {$argument eq {}} return
        set size [expr {[dict get $argument name] in $sizes}]
        if {$size && ![is_number [lindex $given 0] $variables]} continue
        set given [lrange $given 1 end]
    }
    return [lindex $arguments 0]
}

proc qx::prompt::calls::is_number {word variables} {
    if {[regexp {^\$\{?([^\{\}]+)\}?$} $word -> name] && [dict exists $variables $name]} {
        set word [dict get $variables $name]
    }
    return [string is integer -strict $word]
}
