# Package qx: qx::why explains the last command that failed. The commands' messages name an
# argument's number and type; this adds its name, its range and the given word. Relies on status.tcl
# for words that qx::check or qx::watch have recorded, and on Tcl's errorInfo otherwise.

namespace eval qx::why {
    variable in_procedure 0 ;# whether the words come from errorInfo, and from within a procedure
}

# The explanation of the last failed command.
proc qx::why::explain {} {
    lassign [last_failure] words code result
    if {$words eq {}} { return "no command of the SDK or its records has failed" }
    if {$code == 0} { return [status_text $words $result] }
    set pattern {^(\w+) in method '(\w+)', argument (\d+) of type '([^']*)'}
    if {[regexp $pattern $result -> category name number]} {
        return [argument_text $words $name $number]
    }
    if {[regexp {^Wrong (number of arguments |# args\.):(\w+) } $result -> kind name]} {
        return [count_text $words $name]
    }
    if {[regexp {^(\w+)[\w.()]*: } $result -> name] && [is_argument [lindex $words 0] $name]} {
        return [value_text $words $name $result]
    }
    return "[lindex $words 0]: $result"
}

proc qx::why::is_argument {call name} {
    return [expr {![catch { qx::catalogue::call_argument $call $name }]}]
}

# Words, code and result of the last failure. Words from errorInfo are those of the script, before
# substitution.
proc qx::why::last_failure {} {
    variable in_procedure 0
    lassign $qx::status::last words code result before
    set info {}
    if {[info exists ::errorInfo]} { set info $::errorInfo }
    if {[info exists words]} {
        # It is still the last one if errorInfo begins with its message, or if no error came after
        # its status.
        if {$code == 0 && $info eq $before} { return [list $words $code $result] }
        set message $result
        if {$code == 0} { set message [qx::status::failure $words $result] }
        if {[string first $message $info] == 0} { return [list $words $code $result] }
    }
    set in_procedure [regexp {\n    \(procedure "} $info]
    set message [lindex [split $info \n] 0]
    set pattern {^(?:\w+ in method '|Wrong [^:]*:)(qx_\w+)}
    if {![regexp $pattern $message -> name]} { return {{} 0 {}} }
    set words [list $name]
    # The command is in quotes after the message.
    set start [string first "executing\n\"$name" $info]
    if {$start >= 0} {
        incr start [string length "executing\n\""]
        set text [string range $info $start [string first "\"\n" "$info\n" $start]-1]
        if {![catch { llength $text }]} { set words [lrange $text 0 end] }
    }
    return [list $words 1 $message]
}

proc qx::why::status_text {words status} {
    set name [string trimleft [lindex $words 0] :]
    set text "$name: [dict get [qx::catalogue::command $name] text]\n"
    set rows {}
    set facts [qx::catalogue::command $name]
    foreach {argument type} [dict get $facts arguments] what [dict get $facts argument_texts] \
            word [lrange $words 1 end] {
        lappend rows [list $argument $word $what]
    }
    append text [qx::layout::table $rows]
    append text "  status $status"
    if {[qx::catalogue::status_name $status] ne {}} {
        append text " [qx::catalogue::status_name $status]: [qx::catalogue::status_meaning $status]"
    } else {
        append text ", which [qx::profile::owner] does not have"
    }
    return $text
}

# A rejected argument: its meaning, the expected values, the given word.
proc qx::why::argument_text {words name number} {
    set facts [qx::catalogue::command $name]
    set type [lindex [dict get $facts arguments] [expr {2 * $number - 1}]]
    set argument [lindex [dict get $facts arguments] [expr {2 * $number - 2}]]
    set what [lindex [dict get $facts argument_texts] [expr {$number - 1}]]
    set text "[dict get $facts usage]\n  argument $number is $argument: $what\n"
    append text "  wanted: [wanted $facts $argument $type]\n"
    if {[llength $words] > $number} {
        append text "  given:  [given [lindex $words $number] $type]"
    } else {
        append text "  given:  unknown; \"qx::watch on\" records it"
    }
    return $text
}

proc qx::why::wanted {facts argument type} {
    if {$type eq "void*"} { return "a handle of any type, or NULL" }
    if {[qx::catalogue::is_pointer $type]} {
        return "a handle of type [qx::catalogue::native $type], or NULL"
    }
    return [number_wanted $type [qx::wording::range $facts $argument $type] \
        [qx::wording::argument_codes $facts $argument]]
}

proc qx::why::number_wanted {type range codes} {
    set text "[qx::catalogue::native $type], $range"
    if {$codes ne {}} { append text "; codes: $codes" }
    return $text
}

# A value that qx::call has refused: the argument, and the field that the message names.
proc qx::why::value_text {words name message} {
    set facts [qx::catalogue::command [lindex $words 0]]
    set at [lsearch [dict get $facts arguments] $name]
    set what [lindex [dict get $facts argument_texts] [expr {$at / 2}]]
    set type [lindex [dict get $facts arguments] $at+1]
    set text "[dict get $facts usage]\n  argument [expr {$at / 2 + 1}] is $name: $what\n"
    set wanted {}
    if {![qx::catalogue::is_pointer $type]} { set wanted [wanted $facts $name $type] }
    regexp {^[\w.()]+} $message place
    set owner [string trimright $type *]
    foreach part [lrange [split $place .] 1 end] {
        set part [lindex [split $part (] 0]
        if {[catch { qx::catalogue::field $owner $part } field]} break
        append text "  $part: [dict get $field text]\n"
        set wanted {}
        set type [dict get $field type]
        if {![qx::catalogue::is_record $type]} {
            set range [qx::wording::between [qx::catalogue::field_range $field]]
            set wanted [number_wanted $type $range [qx::wording::codes $owner $part]]
        }
        set owner $type
    }
    if {$wanted ne {}} { append text "  wanted: $wanted\n" }
    return "$text  given:  $message"
}

# Describes a word given for a type.
proc qx::why::given {word type} {
    variable in_procedure
    # A variable in the script: if it is global, it may still have the value.
    if {[regexp {^\$(::)?(\w+)$} $word -> global name]} {
        if {![info exists ::$name] || ($in_procedure && $global eq {})} {
            return "$word, whose value is no longer known; \"qx::watch on\" records it"
        }
        return "$word, now [given [::set ::$name] $type]"
    }
    if {[regexp {[][$]} $word]} {
        return "$word, whose value is unknown; \"qx::watch on\" records it"
    }
    if {[regexp {^_[0-9a-f]{8}(_p_\w+)$} $word -> mangled]} {
        return "$word, a handle of type [handle_type $mangled]"
    }
    if {$word eq "NULL"} { return "NULL, the null pointer" }
    if {[string is wideinteger -strict $word] || [regexp {^[-+]?\d+$} $word]} {
        if {[qx::catalogue::is_pointer $type]} { return "$word, a number" }
        lassign [qx::catalogue::range $type] least greatest
        set number [expr {$word + 0}]
        if {$number > $greatest} { return "$word, which is above the range" }
        if {$number < $least} { return "$word, which is below the range" }
        return "$word, a number"
    }
    if {[string match _* $word]} { return "\"$word\", which does not have the form of a handle" }
    if {[qx::catalogue::is_pointer $type]} { return "\"$word\", which is not a handle" }
    return "\"$word\", which is not a number"
}

# The native spelling of a mangled type; a type that is not the SDK's is returned unchanged.
proc qx::why::handle_type {mangled} {
    set name [string range $mangled 3 end]
    if {[qx::catalogue::is_record $name]} { return "$name *" }
    return "[string map {_ { }} $name] *"
}

proc qx::why::count_text {words name} {
    set facts [qx::catalogue::command $name]
    set wanted [expr {[llength [dict get $facts arguments]] / 2}]
    set text "[dict get $facts usage]\n  wanted: [qx::wording::counted $wanted argument]\n"
    if {[llength $words] == 1 && $wanted == 0} { return "${text}  given:  more" }
    set count [expr {[llength $words] - 1}]
    append text "  given:  [qx::wording::counted $count argument]"
    if {$count < $wanted} {
        set missing {}
        foreach {argument type} [lrange [dict get $facts arguments] [expr {2 * $count}] end] {
            lappend missing $argument
        }
        append text "; missing: [join $missing {, }]"
    }
    return $text
}
