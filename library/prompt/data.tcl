# Package qx::prompt, completion in braces that hold data: the fields of records in all commands of
# the package qx that take them as dicts, what their fields take, statuses. Relies on arguments.tcl,
# calls.tcl and the package qx.

namespace eval qx::prompt::data {}

# The completions at the end of the frames, part of the result of qx::prompt::offers::at.
proc qx::prompt::data::at {frames variables} {
    if {![qx::prompt::have_catalogue]} return
    lassign [braces $frames] command inside
    set words [dict get $command words]
    if {[lindex $words end] eq "-allow"} {
        set word [dict get [lindex $inside end] word]
        return [qx::prompt::arguments::beginning $word [qx::prompt::arguments::statuses]]
    }
    lassign [meaning $words $variables] type field
    if {$type eq {}} return
    # The braces around the cursor: a record, or the value of a field, which may be a list.
    set owner {}
    set in_record [expr {$field eq {} || ![dict get $field count]}]
    foreach frame $inside {
        set words [dict get $frame words]
        if {$frame eq [lindex $inside end]} break
        if {$in_record} {
            set owner $type
            if {[catch { qx::catalogue::field $type [lindex $words end] } field]} return
            set type [dict get $field type]
            set in_record [expr {[qx::catalogue::is_record $type] && ![dict get $field count]}]
        } elseif {[qx::catalogue::is_record $type]} {
            set in_record 1
        }
    }
    set word [dict get [lindex $inside end] word]
    if {!$in_record} { return [value $owner $field $word 1] }
    if {[llength $words] % 2} {
        if {[catch { qx::catalogue::field $type [lindex $words end] } field]} return
        return [value $type $field $word 0]
    }
    set names {}
    foreach name [qx::prompt::arguments::field_names $type] {
        if {$name ni $words} { lappend names $name }
    }
    set offers [qx::prompt::offers::beginning $word $names]
    if {$offers eq {}} return
    return [list offers $offers]
}

# The frame of the command around data, and the frames of its braces, the outermost first.
proc qx::prompt::data::braces {frames} {
    set inside {}
    while {[dict get [lindex $frames end] kind] eq "data"} {
        set inside [linsert $inside 0 [lindex $frames end]]
        set frames [lrange $frames 0 end-1]
    }
    return [list [lindex $frames end] $inside]
}

# What the outermost braces of a command hold: a record's type, and the field or the argument whose
# value they are, if it may be a list; empty if it is not known.
proc qx::prompt::data::meaning {words variables} {
    switch -- [string trimleft [lindex $words 0] :] {
        qx::new   { return [known [lindex $words 1]] }
        qx::with  { return [known [lindex $words 2]] }
        qx::set   {
            set type [qx::prompt::arguments::record_of [lindex $words 1] $variables]
            if {$type eq {} || [llength $words] == 2} { return [known $type] }
            lassign [qx::prompt::arguments::target $type [lindex $words end]] owner field element
            if {$owner eq {} || $element} { return [known [dict get $field type]] }
            return [list [dict get $field type] $field]
        }
        qx::call  {
            set rest [qx::prompt::calls::call_words $words]
            if {[set argument [qx::prompt::calls::argument $rest $variables]] eq {}} return
            # Braces in the place of a size are already the array.
            set call [qx::catalogue::call [string trimleft [lindex $rest 0] :]]
            foreach each [dict get $call arguments] {
                if {[dict get $each counted_by] eq [dict get $argument name]} { set argument $each }
            }
            if {![qx::catalogue::is_pointer [dict get $argument type]]} return
            set counted [expr {[dict get $argument counted_by] ne {}}]
            set type [qx::catalogue::target [dict get $argument type]]
            return [list $type [dict replace $argument count $counted type $type holds {}]]
        }
    }
}

proc qx::prompt::data::known {type} {
    if {$type eq {} || ![qx::catalogue::is_record $type]} return
    return [list $type {}]
}

# The place behind the brace that may begin the body of qx::with, where its dict may stand; empty if
# there is none.
proc qx::prompt::data::maybe_body {frames} {
    lassign [braces $frames] command inside
    set words [dict get $command words]
    if {[string trimleft [lindex $words 0] :] ne "qx::with" || [llength $words] != 3} return
    return [expr {[dict get [lindex $inside 0] start] + 1}]
}

# What a field takes: the words for its codes, or a hint; `element` says that it is one of a list.
proc qx::prompt::data::value {owner field word element} {
    set codes {}
    if {$owner ne {}} { set codes [qx::catalogue::code_words $owner [dict get $field name]] }
    set offers [qx::prompt::offers::beginning $word [dict keys $codes]]
    if {$offers ne {}} { return [list offers $offers] }
    return [list hint [value_hint $field $element]]
}

# The values that a field takes; inside a list, those of one element.
proc qx::prompt::data::value_hint {field in_list} {
    foreach part {name type holds count} { set $part [dict get $field $part] }
    set samples {mac 02:00:00:00:00:01 ipv4 192.0.2.1 ipv6 2001:db8::1 ip 192.0.2.1}
    if {!$in_list && [dict exists $samples $holds]} {
        set wanted [dict get $samples $holds]
    } elseif {[qx::catalogue::is_record $type]} {
        set wanted "{$type}"
    } else {
        set wanted [qx::wording::field_hint $field]
    }
    if {$count && !$in_list && $wanted ni [dict values $samples]} {
        set wanted "{$count of $wanted}"
    }
    return "<$name: $wanted>"
}
