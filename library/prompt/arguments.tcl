# Package qx::prompt, completion of a command's arguments: handles of the right type, hints for
# numbers, names, fields of records. Relies on offers.tcl and, for facts about the SDK, on the
# package qx; without it only variables after a dollar sign are offered.

namespace eval qx::prompt::arguments {
    # The kinds of words that other commands than the SDK's take, by their position.
    variable kinds {
        set {1 variable} unset {1 variable} incr {1 variable} append {1 variable}
        lappend {1 variable} global {1 variable} array {2 variable}
        source {1 file} cd {1 file} open {1 file} qx::lint {1 file}
        qx::help {1 subject} qx::apropos {1 subject} help {1 subject} qx::watch {1 switch}
        qx::template {1 record 2 option 3 option 4 option}
        qx::get {1 handle 2 option 3 option 4 option}
        qx::json {1 handle 2 option 3 option 4 option} qx::set {1 handle 2 dict}
        qx::diff {1 handle 2 handle 3 option 4 option 5 option}
        qx::check {1 call}
    }
}

# Completions of the next word, as part of the result of qx::prompt::offers::at.
proc qx::prompt::arguments::next {words word variables} {
    variable kinds
    set name [string trimleft [lindex $words 0] :]
    if {[qx::prompt::have_catalogue]} {
        if {$name eq "qx::check"} {
            # The words after qx::check are those of the command it runs.
            if {[lindex $words 1] eq "-allow"} { set words [lreplace $words 1 2] }
            if {[llength $words] > 1} {
                set words [lrange $words 1 end]
                set name [string trimleft [lindex $words 0] :]
            }
        }
        if {[qx::catalogue::is_command $name]} {
            set facts [qx::catalogue::facts $name]
            return [sdk_word $facts [llength $words] $word $variables]
        }
        if {$name eq "dict" && [lindex $words 1] eq "get" && [llength $words] > 2} {
            set path [lrange $words 3 end]
            return [list offers [keys_of [lindex $words 2] $path $word $variables]]
        }
    }
    set kind {}
    if {[dict exists $kinds $name [llength $words]]} {
        set kind [dict get $kinds $name [llength $words]]
    }
    if {[string match {$*} $word] && $kind ne "handle"} {
        return [list offers [qx::prompt::offers::variables $word [dict keys $variables]]]
    }
    switch -- $kind {
        {}       { return }
        file     { return [list files 1] }
        switch   { return [beginning $word {on off}] }
        variable { return [beginning $word [names_of_variables $word $variables]] }
    }
    if {![qx::prompt::have_catalogue]} return
    switch -- $kind {
        subject { return [list offers [qx::prompt::offers::commands $word [subjects]]] }
        call    { return [list offers [qx::prompt::offers::commands $word [qx::catalogue::calls]]] }
        record  { return [beginning $word [qx::catalogue::records]] }
        handle  { return [record_word $words $word $variables] }
        dict    {
            set type [record_of [lindex $words 1] $variables]
            if {$type ne {}} { return [list hint "<dict: fields of $type>"] }
        }
        option  { return [option $words $word $variables] }
    }
}

proc qx::prompt::arguments::beginning {word names} {
    return [list offers [qx::prompt::offers::beginning $word $names]]
}

# Variables, for commands that take the name of one.
proc qx::prompt::arguments::names_of_variables {word variables} {
    set names {}
    foreach name [dict keys $variables] {
        if {![string match *(* $word]} { regsub {\(.*\)$} $name {} name }
        lappend names $name
    }
    return $names
}

# All topics of qx::help.
proc qx::prompt::arguments::subjects {} {
    set names {}
    foreach {kind each} [qx::topic::names] { set names [concat $names $each] }
    return $names
}

# ------------------------------------------------------------------------ handles and numbers

# An argument of an SDK command or a record's command.
proc qx::prompt::arguments::sdk_word {facts number word variables} {
    set arguments [dict get $facts arguments]
    if {2 * $number > [llength $arguments]} return
    lassign [lrange $arguments [expr {2 * $number - 2}] end] argument type
    if {[string match {*[*]} $type]} {
        set native [qx::catalogue::native $type]
        set wanted [string map {{ } _} [string range $native 0 end-2]]
        if {$type eq "void*"} {
            set wanted *
            set native "any handle"
        }
        return [handle_word $argument $native $wanted $word $variables]
    }
    if {[string match {$*} $word]} {
        return [list offers [qx::prompt::offers::variables $word [no_handles $variables]]]
    }
    return [list hint "<$argument: [qx::wording::hint $facts $argument $type]>"]
}

# Variables that hold a handle whose type matches a pattern; the hint if there are none.
proc qx::prompt::arguments::handle_word {argument shown wanted word variables} {
    set fitting {}
    dict for {name value} $variables {
        if {[is_handle $value $wanted]} { lappend fitting $name }
    }
    set offers [in_full $word $fitting]
    if {$offers eq {} && $word ne {} && [string match $word* NULL]} { set offers NULL }
    if {$offers ne {}} { return [list offers $offers] }
    return [list hint "<$argument: $shown>"]
}

# Elements of arrays are offered immediately if only some of them match.
proc qx::prompt::arguments::in_full {word names} {
    set shown {}
    foreach name $names {
        # The parenthesis in the word asks for elements.
        set all [qx::prompt::offers::variables "\$[lindex [split $name (] 0](" [list $name]]
        if {![string match *(* $name]} {
            set all [qx::prompt::offers::variables \$ [list $name]]
        }
        set shown [concat $shown $all]
    }
    return [qx::prompt::offers::beginning $word $shown]
}

proc qx::prompt::arguments::is_handle {value wanted} {
    return [expr {[string length $value] < 80 &&
        [regexp {^_[0-9a-f]{8}_p_(\w+)$} $value -> type] && [string match $wanted $type]}]
}

proc qx::prompt::arguments::no_handles {variables} {
    set names {}
    dict for {name value} $variables {
        if {![is_handle $value *]} { lappend names $name }
    }
    return $names
}

# ----------------------------------------------------------------------------------- records

# A handle of any record; the second handle of qx::diff has the type of the first.
proc qx::prompt::arguments::record_word {words word variables} {
    set wanted {}
    if {[llength $words] == 2} { set wanted [record_of [lindex $words 1] $variables] }
    set some {}
    dict for {name value} $variables {
        set type [record_of $value {}]
        if {$type ne {} && ($wanted eq {} || $type eq $wanted)} { lappend some $name }
    }
    set offers [in_full $word $some]
    if {$offers ne {}} { return [list offers $offers] }
    if {$wanted eq {}} { return [list hint "<handle: any record>"] }
    return [list hint "<handle: $wanted *>"]
}

# The record type of the handle in a word; empty if it is not a record's handle or cannot be known.
proc qx::prompt::arguments::record_of {word variables} {
    if {[regexp {^\$\{?([^\{\}]+)\}?$} $word -> name] && [dict exists $variables $name]} {
        set word [dict get $variables $name]
    }
    set type {}
    if {[regexp {^\[\s*(?:::)?(qx_\w+)} $word -> command]} {
        if {[qx::catalogue::is_command $command]} {
            set type [string trimright [dict get [qx::catalogue::facts $command] result] *]
        }
    } elseif {![regexp {^_[0-9a-f]{8}_p_(\w+)$} $word -> type]} {
        return
    }
    return [expr {[qx::catalogue::is_record $type] ? $type : ""}]
}

proc qx::prompt::arguments::field_names {type} {
    set names {}
    foreach field [dict get [qx::catalogue::record $type] fields] {
        lappend names [dict get $field name]
    }
    return $names
}

# -view and -raw, and after -view the views of all unions in the record.
proc qx::prompt::arguments::option {words word variables} {
    if {[lindex $words end] ne "-view"} { return [beginning $word {-raw -view}] }
    set type [lindex $words 1]
    if {![qx::catalogue::is_record $type]} { set type [record_of $type $variables] }
    if {$type eq {}} return
    return [beginning $word [linsert [views $type] 0 *]]
}

proc qx::prompt::arguments::views {type} {
    set record [qx::catalogue::record $type]
    set names {}
    foreach field [dict get $record fields] {
        if {[dict get $record kind] eq "union"} { lappend names [dict get $field name] }
        set inner [dict get $field type]
        if {[qx::catalogue::is_record $inner]} { set names [concat $names [views $inner]] }
    }
    return $names
}

# The keys in the result of [qx::get $handle], after `dict get` and some keys.
proc qx::prompt::arguments::keys_of {source path word variables} {
    if {![regexp {^\[\s*(?:::)?qx::get\s+(\S+?)[\s\]]} $source -> handle]} return
    set type [record_of $handle $variables]
    foreach key $path {
        if {$type eq {} || [catch { qx::catalogue::field $type $key } field]} return
        set type {}
        if {![dict get $field count] && [qx::catalogue::is_record [dict get $field type]]} {
            set type [dict get $field type]
        }
    }
    if {$type eq {}} return
    return [qx::prompt::offers::beginning $word [field_names $type]]
}

# The contents of qx::set's dict: fields of its record, of nested records, and hints for their
# values.
proc qx::prompt::arguments::field {frames variables} {
    if {![qx::prompt::have_catalogue]} return
    # The braces around the cursor, out to the command.
    set inside {}
    while {[dict get [lindex $frames end] kind] eq "data"} {
        set inside [linsert $inside 0 [lindex $frames end]]
        set frames [lrange $frames 0 end-1]
    }
    set type [record_of [lindex [dict get [lindex $frames end] words] 1] $variables]
    if {$type eq {}} return
    # The meaning of the braces: a record, or the value of a field, which may be a list of records.
    set field {}
    set in_record 1
    foreach frame $inside {
        set words [dict get $frame words]
        if {$frame eq [lindex $inside end]} break
        if {$in_record} {
            if {[catch { qx::catalogue::field $type [lindex $words end] } field]} return
            set type [dict get $field type]
            set in_record [expr {[qx::catalogue::is_record $type] && ![dict get $field count]}]
        } elseif {[qx::catalogue::is_record $type]} {
            set in_record 1
        }
    }
    if {!$in_record} { return [list hint [value_hint $field 1]] }
    set word [dict get [lindex $inside end] word]
    if {[llength $words] % 2} {
        if {[catch { qx::catalogue::field $type [lindex $words end] } field]} return
        return [list hint [value_hint $field 0]]
    }
    set names {}
    foreach name [field_names $type] { if {$name ni $words} { lappend names $name } }
    return [beginning $word $names]
}

# The values that a field takes; inside a list, those of one element.
proc qx::prompt::arguments::value_hint {field in_list} {
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
