# Package qx::prompt, completion of a command's arguments: handles of the right type, hints for
# numbers, names, paths into records. Relies on offers.tcl, calls.tcl, subcommands.tcl and, for
# facts about the SDK, on the package qx; without it only variables after a dollar sign and the
# words of Tcl's commands are offered. Braces are completed by data.tcl.

namespace eval qx::prompt::arguments {
    # The kinds of words that other commands than the SDK's take, by their position.
    variable kinds {
        set {1 variable} unset {1 variable} incr {1 variable} append {1 variable}
        lappend {1 variable} global {1 variable} array {2 variable}
        source {1 file} cd {1 file} open {1 file} qx::lint {1 file}
        qx::help {1 subject} qx::apropos {1 subject} help {1 subject} qx::watch {1 switch}
        qx::profile {1 file} qx::apply {1 file} qx::graph {1 file}
        qx::template {1 record} qx::new {1 record} qx::with {2 record}
        qx::get {1 handle 2 path} qx::json {1 handle} qx::set {1 handle}
        qx::diff {1 handle 2 handle} qx::check {1 call}
        qx::list {1 table} qx::show {1 shown} qx::record {1 file} qx::trace {1 tracing 2 call}
    }
    # The kinds of words behind options of the package's commands.
    variable behind {-allow status -status variable -view view -device none}
}

# Completions of the next word, as part of the result of qx::prompt::offers::at.
proc qx::prompt::arguments::next {words word variables} {
    set name [string trimleft [lindex $words 0] :]
    set own [string match qx::* $name]
    if {[qx::prompt::have_catalogue]} {
        set last [lindex $words end]
        if {$own && [dict exists $::qx::prompt::arguments::behind $last]} {
            set kind [dict get $::qx::prompt::arguments::behind $last]
            return [of_kind $kind $words $word $variables]
        }
        if {$own && [string match -* $word]} { return [beginning $word [options $words]] }
        if {$name eq "qx::check"} {
            # The words after qx::check are those of the command it runs.
            if {[lindex $words 1] eq "-allow"} { set words [lreplace $words 1 2] }
            if {[llength $words] > 1} {
                set words [lrange $words 1 end]
                set name [string trimleft [lindex $words 0] :]
            }
        }
        if {$name eq "qx::call"} { return [qx::prompt::calls::next $words $word $variables] }
        if {$name eq "qx::set" && [llength $words] > 1} {
            return [set_word $words $word $variables]
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
    return [plain_word $name $words $word $variables]
}

# A word of another command.
proc qx::prompt::arguments::plain_word {name words word variables} {
    variable kinds
    set kind {}
    if {[dict exists $kinds $name [llength $words]]} {
        set kind [dict get $kinds $name [llength $words]]
    }
    if {[string match {$*} $word] && $kind ni {handle shown}} {
        return [list offers [qx::prompt::offers::variables $word [dict keys $variables]]]
    }
    if {$kind eq {}} {
        set offers [qx::prompt::offers::beginning $word [qx::prompt::subcommands::after $words]]
        if {$offers ne {}} { return [list offers $offers] }
        if {[string match qx::* $name] && [qx::prompt::have_catalogue]} {
            return [beginning $word [options $words]]
        }
    }
    return [of_kind $kind $words $word $variables]
}

proc qx::prompt::arguments::of_kind {kind words word variables} {
    switch -- $kind {
        {} - none { return }
        file      { return [list files 1] }
        switch    { return [beginning $word {on off}] }
        tracing   { return [beginning $word {on off stat}] }
        variable  { return [beginning $word [names_of_variables $word $variables]] }
    }
    if {![qx::prompt::have_catalogue]} return
    switch -- $kind {
        subject { return [list offers [qx::prompt::offers::commands $word [subjects]]] }
        call    { return [list offers [qx::prompt::offers::commands $word [qx::catalogue::calls]]] }
        record  { return [beginning $word [qx::catalogue::records]] }
        handle  { return [record_word $words $word $variables] }
        path    { return [path_word [lindex $words 1] $word $variables] }
        status  { return [beginning $word [statuses]] }
        view    { return [view_word $words $word $variables] }
        table   { return [beginning $word [qx::catalogue::tables]] }
        shown   {
            if {[string match {$*} $word]} { return [record_word $words $word $variables] }
            return [beginning $word [qx::catalogue::tables]]
        }
    }
}

# The options of one of the package's commands, from its usage; for a table also what can be asked
# of it.
proc qx::prompt::arguments::options {words} {
    set name [string trimleft [lindex $words 0] :]
    if {![dict exists [qx::commands::all] $name]} return
    set usage [dict get [qx::commands::all] $name words]
    set options [regexp -all -inline -- {-[a-z]+} $usage]
    if {$name ni {qx::list qx::show}} { return $options }
    set options [lsearch -all -inline -not -exact $options -key]
    if {[catch { qx::catalogue::table [lindex $words 1] } table]} { return $options }
    foreach path [qx::tables::asked $table] { lappend options -[qx::tables::short $path] }
    return $options
}

proc qx::prompt::arguments::statuses {} {
    set names {}
    dict for {number status} [qx::catalogue::statuses] { lappend names [lindex $status 0] }
    return $names
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
    set unknown {}
    dict for {name value} $variables {
        if {[is_handle $value $wanted]} { lappend fitting $name }
        if {$value eq "?"} { lappend unknown $name }
    }
    # In a procedure's body, of an argument nothing is known.
    if {$fitting eq {}} { set fitting $unknown }
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

# After -view the views of all unions in the record.
proc qx::prompt::arguments::view_word {words word variables} {
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

# ------------------------------------------------------------------------------------- paths

# The word behind a handle of qx::get: a path, ingress_pkt.tag(0).vlan_id.
proc qx::prompt::arguments::path_word {handle word variables} {
    if {[set type [record_of $handle $variables]] eq {}} return
    return [beginning $word [paths $type $word]]
}

# The words behind the handle of qx::set: a dict, or paths and values.
proc qx::prompt::arguments::set_word {words word variables} {
    if {[set type [record_of [lindex $words 1] $variables]] eq {}} return
    if {[llength $words] % 2 == 0} { return [beginning $word [paths $type $word]] }
    set target [target $type [lindex $words end]]
    if {$target eq {}} return
    return [qx::prompt::data::value [lindex $target 0] [lindex $target 1] $word [lindex $target 2]]
}

# The record, the field, and whether an element is meant, where a path leads; empty if nowhere.
proc qx::prompt::arguments::target {type path} {
    set field {}
    foreach part [split $path .] {
        if {$field ne {}} { set type [dict get $field type] }
        if {![qx::catalogue::is_record $type]} return
        regexp {^([^(]*)(\(\d+\))?$} $part -> name element
        if {[catch { qx::catalogue::field $type $name } field]} return
    }
    if {$field eq {}} return
    return [list $type $field [expr {$element ne {}}]]
}

# The paths that go on from a word: fields, elements where a bracket is open, and a dot or a bracket
# where more may follow.
proc qx::prompt::arguments::paths {type word} {
    set prefix {}
    set dot [string last . $word]
    if {$dot >= 0} {
        set prefix [string range $word 0 $dot]
        set target [target $type [string range $word 0 $dot-1]]
        if {$target eq {}} return
        set type [dict get [lindex $target 1] type]
        if {![qx::catalogue::is_record $type]} return
    }
    set open [string match *(* [string range $word $dot+1 end]]
    set paths {}
    foreach field [dict get [qx::catalogue::record $type] fields] {
        set path $prefix[dict get $field name]
        set dot [expr {[qx::catalogue::is_record [dict get $field type]] ? "." : ""}]
        lappend paths $path
        set count [dict get $field count]
        if {!$count} { lappend paths $path$dot; continue }
        lappend paths $path\(
        for {set index 0} {$open && $index < $count} {incr index} {
            lappend paths $path\($index) $path\($index)$dot
        }
    }
    return $paths
}
