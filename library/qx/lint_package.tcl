# Package qx, qx::lint on the package's own commands: records as data, paths, statuses, the words of
# qx::call, options. Relies on lint.tcl, lint_records.tcl, lint_json.tcl and status.tcl.

namespace eval qx::lint {
    # The procedure that checks a command's words.
    variable own_checks {
        qx::check check qx::call call_words qx::set set_words qx::get get_words qx::new new_words
        qx::with with_words qx::template template_words qx::list table_word qx::show table_word
        qx::json json_words qx::diff diff_words
    }
}

proc qx::lint::package_command {name words values} {
    variable own
    variable own_checks
    set line [dict get [lindex $words 0] line]
    if {[dict exists $own $name]} {
        pass_on $name $words $values
        return [body_words $name $words]
    }
    if {![llength [info commands ::$name]]} {
        if {[regexp {^qx::\w+$} $name]} { unknown $name $line }
        return [forget $words]
    }
    # A word after {*} may become any number of words: only those before it are in their places.
    set count 0
    foreach word $words { if {[dict get $word expand]} break else { incr count } }
    set whole [expr {$count == [llength $words]}]
    if {$whole} { count_words $name $line [expr {$count - 1}] }
    if {![dict exists $own_checks $name]} { return [forget $words] }
    set words [lrange $words 0 $count-1]
    return [[dict get $own_checks $name] $line $whole $words [lrange $values 0 $count-1]]
}

proc qx::lint::count_words {name line given} {
    if {![dict exists [qx::commands::all] $name]} return
    lassign [qx::commands::word_counts $name] least most
    if {$given >= $least && ($most eq {} || $given <= $most)} return
    set wanted [qx::wording::counted [expr {$most eq {} ? $least : $most}] word]
    if {$most eq {}} {
        set wanted "at least $wanted"
    } elseif {$least != $most} {
        set wanted "[qx::wording::between [list $least $most]] words"
    }
    found $line "$name takes $wanted, not $given: [dict get [qx::commands::all] $name usage]"
}

# The mistakes that lint_records.tcl has found.
proc qx::lint::found_all {name line mistakes} {
    foreach {at text} $mistakes { found [expr {$at eq {} ? $line : $at}] "$name: $text" }
}

# Statuses behind -allow.
proc qx::lint::statuses {name line value} {
    if {[lindex $value 0] ne "constant"} return
    if {[catch { qx::status::numbers [lindex $value 1] } text]} { found $line "$name: $text" }
}

# The options behind a command's own words; `flags` have no value. Views are those of a record type,
# if it is known.
proc qx::lint::options {name line type flags values} {
    while {$values ne {}} {
        set values [lassign $values value]
        lassign $value kind option
        if {$kind ne "constant"} return
        if {[info exists taken($option)]} { found $line "$name: $option is given twice" }
        set taken($option) {}
        if {$option in $flags} continue
        set values [lassign $values given]
        if {$option eq "-view" && $type ne {}} { views $name $line $type $given }
    }
}

# The words behind -view.
proc qx::lint::views {name line type value} {
    if {[lindex $value 0] ne "constant" || [catch { llength [lindex $value 1] }]} return
    foreach word [lindex $value 1] {
        if {$word eq "*" || [has_view $type $word {}]} continue
        found $line "$name: no union in $type has the view \"$word\""
    }
}

# Whether a word is the end of the path of a view, in a record or below it.
proc qx::lint::has_view {type word path} {
    set record [qx::catalogue::record $type]
    foreach field [dict get $record fields] {
        set here "$path.[dict get $field name]"
        if {[dict get $record kind] eq "union" && [string match *.$word $here]} { return 1 }
        set inner [dict get $field type]
        if {[qx::catalogue::is_record $inner] && [has_view $inner $word $here]} { return 1 }
    }
    return 0
}

# --------------------------------------------------------------------------- qx::check, qx::with

proc qx::lint::check {line whole words values} {
    set first 1
    if {[lindex $values 1 1] eq "-allow"} {
        statuses qx::check $line [lindex $values 2]
        set first 3
    }
    set word [lindex $words $first]
    if {![llength $word]} return
    if {[llength $words] == $first + 1 && [dict get $word kind] eq "braced"} {
        script [dict get $word text] [dict get $word line] [dict get $word at]
        return
    }
    set words [lrange $words $first end]
    if {!$whole} { lappend words [dict replace $word expand 1] }
    return [command $words [lrange $values $first end]]
}

# qx::with name record ?dict? body
proc qx::lint::with_words {line whole words values} {
    set held {}
    if {[llength $words] in {4 5}} {
        set type [record_named qx::with $line [lindex $values 2]]
        if {$type ne {}} {
            if {[llength $words] == 5} {
                found_all qx::with $line [records::in_record $type [lindex $values 3]]
            }
            set held [list [dict get [lindex $words 1] text] [list handle $type]]
        }
        body [lindex $words end] $held
    }
    forget [lrange $words 1 1]
}

# --------------------------------------------------------------------------------------- records

# The record type that a word names; empty if it does not, which is a mistake, or is not known.
proc qx::lint::record_named {name line value} {
    if {[lindex $value 0] ne "constant"} return
    set type [lindex $value 1]
    if {[qx::catalogue::is_record $type]} { return $type }
    set near [qx::catalogue::like $type [qx::catalogue::records]]
    found $line "$name: there is no record \"$type\"$near"
    return
}

# The record type of a handle; empty if it is not one, which is a mistake, or is not known.
proc qx::lint::record_of {name line value} {
    lassign $value kind what
    set wrong {}
    switch -- $kind {
        released { set wrong "the handle was released on line $what" }
        number   { set wrong "got a number, expected a handle of a record" }
        list     { set wrong "got a list, expected a handle of a record" }
        handle   {
            if {[qx::catalogue::is_record $what]} { return $what }
            set wrong "got a handle of [qx::catalogue::native $what*], which is not a record"
        }
        constant {
            if {[regexp {^_[0-9a-f]{8}_p_(\w+)$} $what -> type] &&
                [qx::catalogue::is_record $type]} { return $type }
            # A name may be that of an object that the script creates.
            if {![regexp {^[A-Za-z]\S*$} $what] || $what eq "NULL"} {
                set wrong "\"$what\" is not a handle of a record"
            }
        }
    }
    if {$wrong ne {}} { found $line "$name: $wrong" }
    return
}

# qx::set handle dict, or path value ?path value ...?, or -json text
proc qx::lint::set_words {line whole words values} {
    set type [record_of qx::set $line [lindex $values 1]]
    set rest [lrange $values 2 end]
    if {$type eq {}} return
    if {[lindex $rest 0 1] eq "-json"} { return [json_text $line $type [lindex $rest 1]] }
    if {[llength $rest] == 1 && $whole} {
        found_all qx::set $line [records::in_record $type [lindex $rest 0]]
    } elseif {[llength $rest] > 1} {
        found_all qx::set $line [records::in_paths $type $rest]
        if {$whole && [llength $rest] % 2} { found $line "qx::set: a path without a value" }
    }
    return
}

# The text behind -json.
proc qx::lint::json_text {line type value} {
    lassign $value kind text first
    if {$kind ne "constant"} return
    if {[catch { json::read $text $first } read]} {
        found $line "qx::set: $read"
        return
    }
    found_all qx::set $line [records::in_record $type $read]
    return
}

# qx::get handle ?path? ?option ...?
proc qx::lint::get_words {line whole words values} {
    set type [record_of qx::get $line [lindex $values 1]]
    set path [lindex $values 2]
    set first 2
    if {[lindex $path 0] ne "constant"} return
    if {![string match -* [lindex $path 1]]} {
        set first 3
        if {$type ne {}} {
            found_all qx::get $line [records::in_path $type $path]
            # The views are those of the record that has the field.
            set type [lindex [records::follow $type $path] 0]
        }
    }
    options qx::get $line $type {-raw -words} [lrange $values $first end]
    return
}

# qx::json handle ?option ...?
proc qx::lint::json_words {line whole words values} {
    set type [record_of qx::json $line [lindex $values 1]]
    options qx::json $line $type {-raw -words} [lrange $values 2 end]
    return
}

# qx::diff handle handle ?option ...?
proc qx::lint::diff_words {line whole words values} {
    set type [record_of qx::diff $line [lindex $values 1]]
    record_of qx::diff $line [lindex $values 2]
    options qx::diff $line $type {-raw -words} [lrange $values 3 end]
    return
}

# qx::new record ?dict?
proc qx::lint::new_words {line whole words values} {
    set type [record_named qx::new $line [lindex $values 1]]
    if {$type eq {}} return
    if {[llength $values] == 3} {
        found_all qx::new $line [records::in_record $type [lindex $values 2]]
    }
    return [list handle $type]
}

# qx::template record ?option ...?
proc qx::lint::template_words {line whole words values} {
    set type [record_named qx::template $line [lindex $values 1]]
    options qx::template $line $type {-raw -words} [lrange $values 2 end]
    return
}

# qx::list table ?option ...?, qx::show with a table or a handle
proc qx::lint::table_word {line whole words values} {
    lassign [lindex $values 1] kind table
    set name [string trimleft [dict get [lindex $words 0] text] :]
    set type [expr {$kind eq "handle" && [qx::catalogue::is_record $table] ? $table : {}}]
    options $name $line $type {-words -raw -json -all} [lrange $values 2 end]
    if {$kind ne "constant" || [string match _* $table]} return
    set tables [qx::catalogue::tables]
    if {$table in $tables} return
    found $line "$name: there is no table \"$table\"[qx::catalogue::like $table $tables]"
    return
}

# -------------------------------------------------------------------------------------- qx::call

# qx::call ?option ...? function ?word ...?
proc qx::lint::call_words {line whole words values} {
    set at 1
    while {[string match -* [set option [lindex $values $at 1]]]} {
        set value [lindex $values $at+1]
        if {[info exists taken($option)]} { found $line "qx::call: $option is given twice" }
        set taken($option) {}
        switch -- $option {
            -allow  { statuses qx::call $line $value; incr at }
            -status { forget [lrange $words $at+1 $at+1]; incr at }
        }
        incr at
    }
    set name [lindex $values $at 1]
    if {[lindex $values $at 0] ne "constant"} return
    set name [string trimleft $name :]
    if {![qx::status::is_call $name]} {
        catch { qx::status::refuse_call $name } text
        found $line "qx::call: $text"
        return
    }
    arguments_of_call $name $whole [lrange $words $at end] [lrange $values $at+1 end]
    return
}

# The words for the arguments that a function reads, from its name on.
proc qx::lint::arguments_of_call {name whole words values} {
    set line [dict get [lindex $words 0] line]
    set given {}
    set usage "qx::call $name"
    set sized {} ;# argument with the size of an array -> the array
    foreach argument [dict get [qx::catalogue::call $name] arguments] {
        if {[dict get $argument counted_by] ne {}} {
            dict set sized [dict get $argument counted_by] [dict get $argument name]
        }
        if {[dict get $argument direction] ne "out"} { lappend given $argument }
    }
    set least {}
    foreach argument $given {
        set optional [dict exists $sized [dict get $argument name]]
        set shown [dict get $argument name]
        append usage " [expr {$optional ? "?$shown?" : $shown}]"
        if {!$optional} { lappend least $argument }
    }
    if {$whole && [llength $values] == [llength $least]} {
        set given $least
    } elseif {[llength $values] > [llength $given] ||
              ($whole && [llength $values] < [llength $given])} {
        set count [qx::wording::counted [llength $values] word]
        found $line "$name does not take $count: $usage"
        return
    } elseif {!$whole && [dict size $sized]} return
    set facts [qx::catalogue::facts $name]
    foreach argument $given value $values word [lrange $words 1 end] {
        if {![llength $argument] || ![llength $word]} break
        dict set by_name [dict get $argument name] $value
        argument_of_call $facts $argument [dict get $word line] $value
    }
    dict for {size array} $sized {
        if {![info exists by_name] || ![dict exists $by_name $size]} continue
        lassign [dict get $by_name $size] kind count
        if {$kind ne "constant" || ![is_number $count] ||
            [catch { records::elements [dict get $by_name $array] } list]} continue
        if {$count != [llength $list] && ![is_handle [dict get $by_name $array]]} {
            found $line "qx::call $name: $size is $count, but $array has [llength $list] elements"
        }
    }
}

proc qx::lint::argument_of_call {facts argument line value} {
    foreach part {name type counted_by} { set $part [dict get $argument $part] }
    set call [dict get $facts name]
    if {![qx::catalogue::is_pointer $type]} {
        set wrong {}
        if {[lindex $value 0] eq "constant"} {
            set words [code_words $call $name]
            set wrong [wrong_number $facts $name $type [lindex $value 1] $words]
        } elseif {[lindex $value 0] eq "handle"} {
            set wrong [mistake $facts $name $type $value]
        }
        if {$wrong ne {}} { found $line "qx::call $call: $name: $wrong" }
        return
    }
    set target [qx::catalogue::target $type]
    if {$counted_by eq {} || [is_handle $value]} {
        record_of_call $facts $argument $line $value $name
        return
    }
    if {[catch { records::elements $value } list]} {
        if {$list ne {}} { found $line "qx::call $call: $name is not a list" }
        return
    }
    set index -1
    foreach each $list { record_of_call $facts $argument $line $each "$name\([incr index])" }
}

# Whether a value is known to be a handle, or what was one.
proc qx::lint::is_handle {value} {
    lassign $value kind what
    return [expr {$kind in {handle number released} ||
        ($kind eq "constant" && [regexp {^(?:_\S*|NULL)$} $what])}]
}

# A record as a dict or a handle.
proc qx::lint::record_of_call {facts argument line value place} {
    set call [dict get $facts name]
    set type [dict get $argument type]
    set target [qx::catalogue::target $type]
    if {[is_handle $value] || ![qx::catalogue::is_record $target]} {
        set wrong [mistake $facts [dict get $argument name] $type $value]
        if {$wrong ne {}} { found $line "qx::call $call: $place: $wrong" }
        return
    }
    # A name may be that of an object that the script creates.
    if {[lindex $value 0] eq "constant" && [regexp {^[A-Za-z_]\w*$} [lindex $value 1]]} return
    found_all "qx::call $call" $line [records::in_record $target $value $place]
}
