# Package qx: qx::apropos, the search in names and descriptions. Every name it lists is a topic of
# qx::help. Relies on catalogue.tcl, wording.tcl, commands.tcl and layout.tcl.

namespace eval qx::apropos {}

# Everything that has all words in its name or description, as a table. Where all words are whole
# ones, it comes first.
proc qx::apropos::find {word args} {
    set words [concat [list $word] $args]
    set whole {}
    set partly {}
    set lower {}
    foreach word $words { lappend lower [string tolower $word] }
    foreach row [rows] {
        switch -- [fits $lower $row] {
            2 { lappend whole $row }
            1 { lappend partly $row }
        }
    }
    set found [concat $whole $partly]
    if {$found ne {}} { return [string trimright [qx::layout::table $found] \n] }
    set quoted {}
    foreach word $words { lappend quoted "\"$word\"" }
    return "nothing has [join $quoted { and }] in its name or description"
}

# 2 if a row has all words as whole ones, 1 if it has them, 0 if not. Case does not count: words are
# in lower case.
proc qx::apropos::fits {words row} {
    set text " [string tolower $row] "
    set degree 2
    foreach word $words {
        if {[string first $word $text] < 0} { return 0 }
        set literal [regsub -all {\W} $word {\\&}]
        if {![regexp "\[^a-z0-9\]${literal}\[^a-z0-9\]" $text]} { set degree 1 }
    }
    return $degree
}

# All that can be found: name and description.
proc qx::apropos::rows {} {
    set rows {}
    foreach name [qx::catalogue::areas] {
        lappend rows [list $name "area: [dict get [qx::catalogue::area $name] text]"]
    }
    foreach type [qx::catalogue::records] {
        set record [qx::catalogue::record $type]
        lappend rows [list $type "record: [dict get $record text]"]
        foreach field [dict get $record fields] {
            lappend rows [list $type.[dict get $field name] [dict get $field text]]
        }
    }
    foreach name [qx::catalogue::commands] {
        # A record's commands are covered by the record and its fields.
        set facts [qx::catalogue::facts $name]
        if {![qx::catalogue::is_record [dict get $facts owner]]} {
            lappend rows [list $name [qx::wording::purpose $facts]]
        }
    }
    foreach name [qx::catalogue::tables] {
        lappend rows [list $name "table: [dict get [qx::catalogue::table $name] text]"]
    }
    dict for {number status} [qx::catalogue::statuses] {
        lappend rows [list [lindex $status 0] "status $number: [lindex $status 1]"]
    }
    dict for {name facts} [concat [qx::commands::all] [qx::commands::others]] {
        lappend rows [list $name [dict get $facts purpose]]
    }
    return $rows
}
