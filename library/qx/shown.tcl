# Package qx, records and tables for people: qx::show prints a table in columns that fit the
# terminal, and a record as an indented tree. Relies on catalogue.tcl, columns.tcl, layout.tcl,
# tables.tcl and the package's library.
#
# What a value is made of is a list of leaves: path (a list of names), text, whether it is zero.

namespace eval qx::shown {}

# qx::show TABLE ?-device n? ?-key value ...? ?-json? ?-all?    qx::show HANDLE ?-json? ?-all?
proc qx::shown::show {args} {
    if {$args eq {}} {
        set rows {}
        foreach {name text} [qx::tables::texts] { lappend rows [list $name $text] }
        return [string trimright [qx::layout::table $rows] \n]
    }
    if {[regexp {^(_[0-9a-f]+_p_|NULL$)} [lindex $args 0]]} { return [record {*}$args] }
    set request [qx::tables::request qx::show $args {-json -all}]
    set rows [qx::tables::rows $request]
    if {[dict get $request json]} { return [json $request $rows] }
    if {$rows eq {}} { return [nothing $request] }
    set texts {}
    foreach part [dict get $request table parts] {
        set mine {}
        foreach row $rows {
            if {[dict get $part part] ne {}} {
                if {[dict get $row part] ne [dict get $part part]} continue
                dict unset row part
            }
            lappend mine $row
        }
        if {$mine eq {}} continue
        set text [columns $part $mine [dict get $request all]]
        if {[dict get $part part] ne {}} {
            set text "[dict get $part part]\n[regsub -all -line {^(?=.)} $text {  }]"
        }
        lappend texts $text
    }
    return [join $texts \n]
}

# -------------------------------------------------------------------------------------- leaves

# What an empty listing says: also what was asked for, and which ids were tried.
proc qx::shown::nothing {request} {
    set text "no [dict get $request name]"
    set word with
    set shown {}
    dict for {name interval} [dict get $request given] {
        dict set shown $name [qx::tables::interval_text $interval]
    }
    set tried [qx::tables::tried [dict get $request name] [dict get $request device]]
    dict for {name ids} [dict merge $tried $shown] {
        append text " $word $name $ids"
        set word and
    }
    return "$text on device [dict get $request device]"
}

# The leaves of a record's dict.
proc qx::shown::leaves {type dict {path {}}} {
    set result {}
    dict for {name value} $dict {
        set here [concat $path [list $name]]
        if {[catch { qx::catalogue::field $type $name } field]} {
            # Bytes that no field shows.
            lappend result $here $value [is_zero $value]
            continue
        }
        set inner [dict get $field type]
        set count [dict get $field count]
        if {![qx::catalogue::is_record $inner]} {
            lappend result $here [text $type $field $value] [is_zero $value]
        } elseif {$count} {
            set index -1
            foreach each $value {
                set element [lreplace $here end end "$name\([incr index])"]
                set result [concat $result [of_record $inner $each $element]]
            }
        } else {
            set result [concat $result [of_record $inner $value $here]]
        }
    }
    return $result
}

# The same for a nested record, which is one leaf if it is an address.
proc qx::shown::of_record {type value path} {
    if {![is_dict $type $value]} { return [list $path $value [is_zero $value]] }
    set address [address $type $value]
    if {$address ne {}} {
        set zero 1
        dict for {name part} $value { if {![is_zero $part]} { set zero 0 } }
        return [list $path $address $zero]
    }
    return [leaves $type $value $path]
}

# Whether a record is shown as a dict, and not as one word or as numbers.
proc qx::shown::is_dict {type value} {
    return [expr {![catch { dict size $value } size] && $size
        && ![catch { qx::catalogue::field $type [lindex $value 0] }]}]
}

# An address with its family as one word, without the length of a whole address.
proc qx::shown::address {type value} {
    set fields [dict get [qx::catalogue::record $type] fields]
    if {[llength $fields] != 3 || [dict get [lindex $fields 0] holds] ne "family"} return
    set name [dict get [lindex $fields 0] name]
    set family [dict get $value $name]
    set text [dict get $value [dict get [lindex $fields 1] name]]
    set length [dict get $value [dict get [lindex $fields 2] name]]
    if {[llength $text] != 1} { return "$family $text" }
    if {[string is integer -strict $family] &&
            [qx::catalogue::code_word $type $name $family] eq {}} {
        return "$family $text/$length"
    }
    if {$length == ([string match *:* $text] ? 128 : 32)} { return $text }
    return $text/$length
}

# A number or an array as its field means it. Keys are shown by their length, as in logs.
proc qx::shown::text {owner field value} {
    if {[dict get $field holds] eq "key"} {
        return "[dict get $field count] bytes"
    }
    if {[dict get $field holds] ne {}} { return $value }
    set hex [dict exists $field hex]
    set texts {}
    foreach number $value {
        set word [qx::catalogue::code_word $owner [dict get $field name] $number]
        if {$word eq {}} {
            set word $number
            if {$hex && $number} { set word [format 0x%x $number] }
        }
        lappend texts $word
    }
    return [join $texts { }]
}

# Whether a value, in any notation, is all zero.
proc qx::shown::is_zero {value} { regexp {^[0 .:]*$|^0x0*$} $value }

# --------------------------------------------------------------------------------------- trees

# A record as an indented tree.
proc qx::shown::record {handle args} {
    set options {all 0 json 0}
    set view {}
    while {$args ne {}} {
        set args [lassign $args option]
        qx::tables::once qx::show $option taken
        if {$option in {-all -json}} {
            dict set options [string range $option 1 end] 1
        } elseif {$option eq "-view" && $args ne {}} {
            set args [lassign $args views]
            lappend view -view $views
        } else {
            return -code error -errorcode {QX USAGE} \
                "usage: qx::show handle ?-view views? ?-all? ?-json?"
        }
    }
    if {[dict get $options json]} { return [::qx::json $handle {*}$view] }
    set value [::qx::get $handle {*}$view]
    set type [lindex [qx::handle::of_record $handle] 0]
    set rest [of_record $type $value {}]
    if {![dict get $options all]} { set rest [not_zero $rest] }
    if {$rest eq {}} { return "$type, all zero" }
    return "$type\n[string trimright [tree $rest {  }] \n]"
}

proc qx::shown::not_zero {leaves} {
    set result {}
    foreach {path text zero} $leaves { if {!$zero} { lappend result $path $text $zero } }
    return $result
}

# Leaves below the same name stand under it.
proc qx::shown::tree {leaves indent} {
    # An address alone has no name.
    if {[lindex $leaves 0] eq {}} { return "$indent[lindex $leaves 1]\n" }
    set width 0
    foreach {path text zero} $leaves {
        if {[llength $path] == 1} { set width [expr {max($width, [string length $path])}] }
    }
    set result {}
    while {$leaves ne {}} {
        lassign $leaves path text
        if {[llength $path] == 1} {
            append result "$indent[string trimright [format {%-*s  %s} $width $path $text]]\n"
            set leaves [lrange $leaves 3 end]
            continue
        }
        set name [lindex $path 0]
        set below {}
        while {$leaves ne {} && [lindex $leaves 0 0] eq $name} {
            set rest [lassign $leaves path text zero]
            lappend below [lrange $path 1 end] $text $zero
            set leaves $rest
        }
        append result "$indent$name\n[tree $below "$indent  "]"
    }
    return $result
}

# ------------------------------------------------------------------------------------- columns

# Rows as columns; those that are zero in each row are left out, except what leads to the row.
proc qx::shown::columns {part rows all} {
    set keys {}
    set order {}
    set table {}
    foreach row $rows {
        set cells {}
        set last -1
        foreach {path text zero} [row_leaves $part $row] {
            set leads [expr {$zero eq "key"}]
            if {$leads && $path ni $keys} { lappend keys $path }
            # Rows may have different views: a column's place is behind the one before it.
            set at [lsearch -exact $order $path]
            if {$at < 0} { set order [linsert $order [set at [expr {$last + 1}]] $path] }
            set last $at
            dict set cells $path $text
            if {$all || $leads || !$zero} { dict set wanted $path 1 }
        }
        lappend table $cells
    }
    set columns {}
    set leading [llength $keys]
    foreach path $order { if {$path ni $keys} { lappend keys $path } }
    foreach path $keys {
        if {![dict exists $wanted $path]} continue
        set texts {}
        foreach cells $table {
            set text {}
            if {[dict exists $cells $path]} { set text [dict get $cells $path] }
            lappend texts $text
        }
        lappend columns [list $path $texts]
    }
    return [qx::columns::blocks $columns $leading]
}

# The leaves of a row. Those that lead to it are marked `key` in place of zero, and so is a number
# that is all there is to say.
proc qx::shown::row_leaves {part row} {
    set call [dict get $part call]
    set result {}
    set records 0
    foreach argument [dict get [qx::catalogue::call $call] arguments] {
        if {[dict get $argument direction] ne "in"} { incr records }
    }
    dict for {name value} $row {
        set argument [qx::catalogue::call_argument $call $name]
        set type [dict get $argument type]
        if {[qx::catalogue::is_pointer $type]} { set type [qx::catalogue::target $type] }
        if {[qx::catalogue::is_record $type]} {
            set path [expr {$records == 1 ? {} : [list $name]}]
            set below [of_record $type $value $path]
            foreach {path text zero} $below {
                set full [join [concat [list $name] $path] .]
                # An address alone has its argument's name.
                if {$path eq {}} { set path [list $name] }
                if {[leads $part $full]} { set zero key }
                lappend result $path $text $zero
            }
        } else {
            set word [qx::catalogue::code_word $call $name $value]
            if {$word eq {}} { set word [id $value] }
            set leads [expr {[dict get $argument direction] eq "in" ? "key" : 0}]
            lappend result [list $name] $word $leads
        }
    }
    return $result
}

# Whether a path leads to the row: an index, or what a walk is ordered by.
proc qx::shown::leads {part path} {
    if {[dict exists $part indexes $path]} { return 1 }
    set leads [dict get $part leads]
    return [expr {$leads ne {} && ($path eq $leads || [string match $leads.* $path])}]
}

# A number, in hexadecimal if it is so large that it must be an id.
proc qx::shown::id {number} {
    if {$number <= 0xffffff} { return $number }
    return [format 0x%x $number]
}

# ---------------------------------------------------------------------------------------- JSON

# Rows as a JSON list of objects; nothing is left out.
proc qx::shown::json {request rows} {
    set calls {}
    foreach part [dict get $request table parts] {
        dict set calls [dict get $part part] [dict get $part call]
    }
    set objects {}
    foreach row $rows {
        set part [expr {[dict exists $row part] ? [dict get $row part] : {}}]
        set members {}
        dict for {name value} $row {
            lappend members "    \"$name\": [json_value [dict get $calls $part] $name $value]"
        }
        lappend objects "  \{\n[join $members ",\n"]\n  \}"
    }
    if {$objects eq {}} { return {[]} }
    return "\[\n[join $objects ",\n"]\n\]"
}

proc qx::shown::json_value {call name value} {
    if {$name eq "part"} { return "\"$value\"" }
    set type [dict get [qx::catalogue::call_argument $call $name] type]
    if {![qx::catalogue::is_pointer $type]} { return $value }
    set type [qx::catalogue::target $type]
    if {![qx::catalogue::is_record $type]} { return $value }
    ::qx::with handle $type $value { return [string map {\n "\n    "} [::qx::json $handle]] }
}
