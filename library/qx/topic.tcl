# Package qx, the topics of qx::help: what a name, in full or as people write it, stands for. Relies
# on catalogue.tcl and commands.tcl.

namespace eval qx::topic {}

# The topic of a name, a list: kind and subject; empty if there is none. The subject of a field or
# an argument is its owner and its name, of a status its number, of a cell its type word.
proc qx::topic::find {name} {
    foreach how {exact handle part loose} {
        set topic [$how [string trim $name]]
        if {$topic ne {}} { return $topic }
    }
}

# All names, by kind; without fields and arguments.
proc qx::topic::names {} {
    set statuses {}
    dict for {number status} [qx::catalogue::statuses] { lappend statuses [lindex $status 0] }
    return [list area [qx::catalogue::areas] record [qx::catalogue::records] \
        command [qx::catalogue::commands] own [dict keys [qx::commands::all]] \
        other [dict keys [qx::commands::others]] \
        group [qx::commands::topics] table [qx::catalogue::tables] status $statuses]
}

proc qx::topic::made {kind name} {
    if {$kind eq "status"} { set name [qx::catalogue::status_number $name] }
    return [list $kind $name]
}

proc qx::topic::exact {name} {
    if {[dict exists [qx::catalogue::statuses] $name]} { return [list status $name] }
    set name [string trimleft $name :]
    foreach {kind names} [names] {
        if {$name in $names} { return [made $kind $name] }
    }
}

# A handle's record or cell. The command of an object is not asked for its handle, because that
# would run whatever command has the name.
proc qx::topic::handle {word} {
    if {![regexp {^_[0-9a-f]{8}_p_(\w+)$} $word -> type]} return
    if {[qx::catalogue::is_record $type]} { return [list record $type] }
    return [cell [string map {_ { }} $type]]
}

# A cell's type as C or the catalogue writes it, or as in its commands.
proc qx::topic::cell {name} {
    dict for {type word} $qx::catalogue::cell_data {
        if {$name in [list $type $word [qx::catalogue::native $type]]} { return [list cell $type] }
    }
}

# RECORD.FIELD or FUNCTION.ARGUMENT, also with fields of the record there, as errors print them.
proc qx::topic::part {name} {
    set at [string first . $name]
    if {$at < 1} return
    set owner [find [string range $name 0 $at-1]]
    if {[lindex $owner 0] ni {record command}} return
    set type [lindex $owner 1]
    foreach word [split [string range $name $at+1 end] .] {
        regsub {\(\d+\)$} $word {} word
        set owner $type
        set kind [expr {[qx::catalogue::is_record $owner] ? "field" : "argument"}]
        set query [expr {$kind eq "field" ? "field" : "call_argument"}]
        if {[catch { qx::catalogue::$query $owner $word } found]} return
        set type [string trimright [dict get $found type] *]
        set topic [list $kind [list $owner $word]]
    }
    return $topic
}

# A name without regard to case, the `qx` in front and the _t at the end.
proc qx::topic::loose {name} {
    foreach {kind names} [names] {
        foreach form [list $name ${name}_t qx_$name qx_${name}_t qx::$name] {
            set at [lsearch -exact -nocase $names $form]
            if {$at >= 0} { return [made $kind [lindex $names $at]] }
        }
    }
    return [cell [string tolower $name]]
}

# The names among which an unknown one may be meant.
proc qx::topic::near {name} {
    foreach {kind each} [names] { set $kind $each }
    if {[string match *::* $name]} { return [concat $own $other] }
    lassign [find [lindex [split $name .] 0]] kind owner
    if {[string match *.* $name] && $kind in {record command}} {
        set parts {}
        if {$kind eq "record"} { set parts [dict get [qx::catalogue::record $owner] fields] }
        if {$owner in [qx::catalogue::calls]} {
            set parts [dict get [qx::catalogue::call $owner] arguments]
        }
        foreach part $parts { lappend known $owner.[dict get $part name] }
        if {[info exists known]} { return $known }
    }
    return [concat $command $record $area]
}
