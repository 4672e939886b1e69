# Package qx, requests for the rows of a table: what the words of qx::list and qx::show ask for.
# Relies on catalogue.tcl and tables.tcl, where a request is described.

namespace eval qx::tables {}

# Reads the words behind a command; `flags` are the options without a value that it knows.
proc qx::tables::request {command words flags} {
    set name [lindex $words 0]
    if {$name ni [qx::catalogue::tables]} {
        return -code error -errorcode [list QX UNKNOWN table $name] \
            "there is no table \"$name\"[qx::catalogue::like $name [qx::catalogue::tables]]"
    }
    set table [qx::catalogue::table $name]
    if {[dict get $table parts] eq {}} {
        return -code error -errorcode [list QX TABLE $name] \
            "$name cannot be listed: [dict get $table instead]"
    }
    set request [dict create command $command name $name table $table device 0 given {}]
    foreach flag {-words -raw -json -all} { dict set request [string range $flag 1 end] 0 }
    set rest [lrange $words 1 end]
    while {$rest ne {}} {
        set rest [lassign $rest option]
        once "$command $name" $option taken
        if {$option in $flags} {
            dict set request [string range $option 1 end] 1
            continue
        }
        check_option $request $option $flags $rest
        set rest [lassign $rest value]
        if {$option eq "-device"} {
            dict set request device [number $option $value]
        } else {
            dict set request given [string range $option 1 end] [interval $request $option $value]
        }
    }
    check_keys $request
    return $request
}

# An option that is given twice is a mistake; `taken` has those before, in the caller.
proc qx::tables::once {call option taken_name} {
    upvar 1 $taken_name taken
    if {[info exists taken($option)]} {
        return -level 2 -code error -errorcode {QX USAGE} "$call: $option is given twice"
    }
    set taken($option) {}
}

# The arguments of a table that may be given, or have to be.
proc qx::tables::asked {table} {
    set paths [dict get $table keys]
    foreach part [dict get $table parts] {
        set paths [concat $paths [dict keys [dict get $part indexes]]]
    }
    return $paths
}

# An argument's name as an option and in a row: its path's last part.
proc qx::tables::short {path} { lindex [split $path .] end }

proc qx::tables::check_option {request option flags rest} {
    set known [concat -device $flags]
    foreach path [asked [dict get $request table]] { lappend known -[short $path] }
    set call "[dict get $request command] [dict get $request name]"
    if {$option ni $known} {
        return -level 2 -code error -errorcode {QX USAGE} \
            "$call: \"$option\" is not one of [join $known {, }]"
    }
    if {$rest eq {}} {
        return -level 2 -code error -errorcode {QX USAGE} "$call: $option needs a value"
    }
}

# The number that an option gives; `known` are the words that it may be, too.
proc qx::tables::number {option word {known {}}} {
    if {[string is wideinteger -strict $word]} {
        set range [qx::catalogue::range u32]
        if {$word >= [lindex $range 0] && $word <= [lindex $range 1]} { return [expr {$word + 0}] }
        set text "$option: $word is outside [qx::wording::between $range]"
    } elseif {$known ne {}} {
        set text "$option: \"$word\" is neither a number nor one of [join $known {, }]"
    } else {
        set text "$option: \"$word\" is not a number"
    }
    return -code error -errorcode {QX USAGE} $text
}

# What an option gives: N, A..B, or a code word; as least and greatest number.
proc qx::tables::interval {request option word} {
    if {[regexp {^(\d+|0[xX][0-9a-fA-F]+)\.\.(\d+|0[xX][0-9a-fA-F]+)$} $word -> least greatest]} {
        set interval [list [number $option $least] [number $option $greatest]]
        if {[lindex $interval 0] <= [lindex $interval 1]} { return $interval }
        return -code error -errorcode {QX USAGE} "$option: $word ends before it begins"
    }
    set known {}
    foreach part [dict get $request table parts] {
        set words [code_words [dict get $part call] [path_of $request $part $option]]
        if {[dict exists $words $word]} {
            return [list [dict get $words $word] [dict get $words $word]]
        }
        set known [concat $known [dict keys $words]]
    }
    set number [number $option $word $known]
    return [list $number $number]
}

# The path of the argument that an option names in a part's call.
proc qx::tables::path_of {request part option} {
    foreach path [concat [dict get $request table keys] [dict keys [dict get $part indexes]]] {
        if {"-[short $path]" eq $option} { return $path }
    }
}

proc qx::tables::check_keys {request} {
    set missing {}
    foreach path [dict get $request table keys] {
        if {![dict exists $request given [short $path]]} { lappend missing -[short $path] }
    }
    if {$missing eq {}} return
    return -level 2 -code error -errorcode [list QX TABLE [dict get $request name]] \
        "[dict get $request command] [dict get $request name]: [join $missing { and }]\
        [expr {[llength $missing] > 1 ? "are" : "is"}] missing, from a row of\
        [lindex [dict get $request table giver] 0]"
}
