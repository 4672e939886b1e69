# Package qx, qx::lint on the commands of the SDK and its records: names, numbers of arguments, and
# what is given for each. Relies on lint.tcl and catalogue.tcl.

proc qx::lint::unknown {name line} {
    variable unknown
    if {![dict exists $unknown $name]} {
        set near {}
        # A script with more of them than this is for something else.
        if {[dict size $unknown] < 100} {
            set near [qx::catalogue::like $name [commands_like $name]]
        }
        dict set unknown $name $near
    }
    found $line "$name is not a command[dict get $unknown $name]"
}

proc qx::lint::commands_like {name} {
    if {![string match qx::* $name]} { return [qx::catalogue::commands] }
    set names {}
    foreach each [lsort [info commands ::qx::*]] { lappend names [string range $each 2 end] }
    return $names
}

proc qx::lint::sdk_command {name words values} {
    variable own
    set line [dict get [lindex $words 0] line]
    if {![qx::catalogue::is_command $name]} {
        if {![dict exists $own $name]} { unknown $name $line }
        pass_on $name $words $values
        forget $words
        return
    }
    set facts [qx::catalogue::facts $name]
    set arguments [dict get $facts arguments]
    # A word after {*} may become any number of words.
    foreach word $words { if {[dict get $word expand]} { return [result $facts] } }
    set wanted [expr {[llength $arguments] / 2}]
    set given [expr {[llength $words] - 1}]
    if {$given != $wanted} {
        set words_wanted [qx::wording::counted $wanted argument]
        found $line "$name takes $words_wanted, not $given: [dict get $facts usage]"
        return [result $facts]
    }
    set number 0
    foreach {argument type} $arguments word [lrange $words 1 end] value [lrange $values 1 end] {
        incr number
        set wrong [mistake $facts $argument $type $value]
        if {$wrong ne {}} {
            found [dict get $word line] "$name, argument $number ($argument): $wrong"
        }
    }
    if {[dict get $facts shape] eq "free"} { release [lindex $words 1] $line }
    return [result $facts]
}

# What is known of a command's result.
proc qx::lint::result {facts} {
    set type [dict get $facts result]
    if {$type eq "none"} { return [list constant {}] }
    if {[qx::catalogue::is_pointer $type]} { return [list handle [qx::catalogue::target $type]] }
    return number
}

proc qx::lint::release {word line} {
    variable shared
    if {[dict get $word whole] ne "variable"} return
    set name [string trim [dict get $word text] \${}]
    if {![dict exists $shared $name]} { learn $name [list [list released $line]] }
}

# The mistake in the value of a command's argument; empty if there is none, or if nothing is known.
proc qx::lint::mistake {facts argument type value} {
    lassign $value kind what
    if {![info exists kind]} return
    set pointer [qx::catalogue::is_pointer $type]
    switch -- $kind {
        released { if {$pointer} { return "the handle was released on line $what" } }
        number   {
            if {$pointer && $type ne "void*"} {
                return "got a number, expected a handle of [qx::catalogue::native $type]"
            }
        }
        handle   {
            if {!$pointer} {
                return "got a handle of [qx::catalogue::native $what*], expected a number"
            }
            if {$type ne "void*" && $what ne [qx::catalogue::target $type]} {
                return "got a handle of [qx::catalogue::native $what*], expected one of\
                    [qx::catalogue::native $type]"
            }
        }
        constant {
            if {$pointer} { return [wrong_handle $type $what] }
            return [wrong_number $facts $argument $type $what]
        }
    }
    return
}

proc qx::lint::wrong_number {facts argument type word {words {}}} {
    if {[dict exists $words $word]} return
    if {![is_number $word]} { return [no_number $word $words] }
    set bounds [qx::catalogue::bounds $facts $argument $type]
    set taken [dict get $bounds taken]
    # A number beyond its type's range may still be converted; an index must be that of an element.
    if {$taken eq [qx::catalogue::range $type]} { set taken [qx::catalogue::converted $type] }
    lassign $taken least greatest
    if {($word >= $least && $word <= $greatest) || $word == [dict get $bounds every]} return
    set range [qx::wording::between $taken]
    if {$argument eq "idx"} { set range [qx::wording::range $facts $argument $type] }
    return "$word is outside $range"
}

proc qx::lint::is_number {word} {
    expr {[string is wideinteger -strict $word] || [regexp {^\s*\d+\s*$} $word]}
}

# What is said of a word that is not a number; `words` are those that stand for numbers there.
proc qx::lint::no_number {word words} {
    if {$words eq {}} { return "\"$word\" is not a number" }
    return "\"$word\" is neither a number nor one of [join [dict keys $words] {, }]"
}

# The code words of a record's field or a call's argument, with their numbers.
proc qx::lint::code_words {owner name} {
    if {$owner eq {}} return
    return [qx::catalogue::code_words $owner $name]
}

proc qx::lint::wrong_handle {type word} {
    variable own
    if {$word eq "NULL"} return
    if {[regexp {^_[0-9a-f]{8}_p_(\w+)$} $word -> name]} {
        set wanted [string map {{ } _} [string range [qx::catalogue::native $type] 0 end-2]]
        if {$type eq "void*" || $name eq $wanted} return
        return "$word is not a handle of [qx::catalogue::native $type]"
    }
    # A name may be that of an object that the script creates.
    if {[regexp {^[A-Za-z]} $word] && ![string is wideinteger -strict $word]} return
    return "\"$word\" is not a handle"
}
