# Package qx, qx::graph: who holds whom on a device, as a picture or for Graphviz. The catalogue's
# tables say which rows are nodes and which rows they name. Relies on catalogue.tcl and tables.tcl.
#
# A node's id is its table with the numbers that lead to it; what a row names may have no row of its
# own, because it is gone or because the SDK does not show it.

namespace eval qx::graph {}

# qx::graph FILE.svg|FILE.dot ?-device n?
proc qx::graph::draw {file args} {
    set device 0
    if {[llength $args] == 2 && [lindex $args 0] eq "-device"} {
        set device [lindex $args 1]
    } elseif {$args ne {}} {
        return -code error -errorcode {QX USAGE} "usage: qx::graph file.svg|file.dot ?-device n?"
    }
    set kind [string tolower [file extension $file]]
    if {$kind ni {.svg .dot}} {
        return -code error -errorcode {QX USAGE} "$file ends neither in .svg nor in .dot"
    }
    if {$kind eq ".svg" && [auto_execok dot] eq {}} {
        return -code error -errorcode {QX GRAPH} "Graphviz's program dot, which draws the picture,\
            is not installed; [file rootname $file].dot needs no program"
    }
    set text [dot $device]
    if {$kind eq ".svg"} {
        # Written here, because dot does not tell of a full disk.
        set text [exec {*}[auto_execok dot] -Tsvg << $text]\n
    }
    # As an absolute name, lest it be a command for a pipe.
    set channel [open [file join [pwd] $file] w]
    if {[catch { puts -nonewline $channel $text; flush $channel }]} {
        set reason $::errorCode
        catch { close $channel }
        return -code error -errorcode $reason [lindex $reason end]
    }
    close $channel
}

# The graph of a device in Graphviz's language.
proc qx::graph::dot {device} {
    set rows {}
    foreach name [qx::catalogue::tables] {
        if {[dict get [qx::catalogue::table $name] node] ne {}} { collect $name $device rows }
    }
    set labels {}
    set edges {}
    dict for {name found} $rows {
        foreach row $found { dict set labels [id $name $row] [label $name $row] }
    }
    dict for {name found} $rows {
        foreach row $found {
            foreach {table numbers} [held $name $row $rows] {
                set target [concat $table $numbers]
                lappend edges "  [quoted [id $name $row]] -> [quoted $target]\n"
                if {![dict exists $labels $target]} { dict set unseen $target 1 }
            }
        }
    }
    set text "digraph [quoted "device $device"] \{\n  rankdir=LR\n  node \[shape=box\]\n"
    dict for {id label} $labels { append text "  [quoted $id] \[label=[quoted $label]\]\n" }
    if {[info exists unseen]} {
        dict for {id one} $unseen {
            append text "  [quoted $id] \[label=[quoted [unseen_label $id]], style=dashed\]\n"
        }
    }
    return "$text[join $edges {}]\}\n"
}

proc qx::graph::quoted {text} { return "\"[string map {\\ \\\\ \" \\\" \n \\n} $text]\"" }

# Reads the rows of a table, after those of the table that has its keys.
proc qx::graph::collect {name device rows_name} {
    upvar 1 $rows_name rows
    if {[dict exists $rows $name]} return
    set table [qx::catalogue::table $name]
    dict set rows $name {}
    if {[dict get $table parts] eq {}} return
    set requests [list {}]
    lassign [dict get $table giver] giver condition
    if {$giver ne {}} {
        collect $giver $device rows
        set requests {}
        foreach row [dict get $rows $giver] {
            if {![meets $giver $row $condition]} continue
            set request {}
            foreach path [dict get $table keys] {
                set short [qx::tables::short $path]
                lappend request -$short [dict get $row $short]
            }
            lappend requests $request
        }
    }
    foreach request $requests {
        dict set rows $name [concat [dict get $rows $name] [qx::tables::rows \
            [qx::tables::request qx::graph [concat $name -device $device $request] {}]]]
    }
}

# A node's id: its table, and what leads to the row.
proc qx::graph::id {name row} {
    set paths [qx::tables::asked [qx::catalogue::table $name]]
    set part [lindex [dict get [qx::catalogue::table $name] parts] 0]
    set numbers {}
    if {[dict get $part walk] ne {}} { lappend paths [dict get $part leads] }
    foreach path $paths { lappend numbers [value_at $name $row $path] }
    return [concat $name $numbers]
}

# The value at a path of a row: an argument, or a field of a record.
proc qx::graph::value_at {name row path} {
    set names [split $path .]
    set value [dict get $row [lindex $names 0]]
    if {[llength $names] == 1} { return $value }
    ::qx::with handle [type_of $name [lindex $names 0]] $value {
        return [::qx::get $handle [join [lrange $names 1 end] .]]
    }
}

proc qx::graph::call_of {name} {
    return [dict get [lindex [dict get [qx::catalogue::table $name] parts] 0] call]
}

# The record that an argument of a table's call points to.
proc qx::graph::type_of {name argument} {
    return [qx::catalogue::target [dict get \
        [qx::catalogue::call_argument [call_of $name] $argument] type]]
}

# Whether a row's number at a path is that of a code word.
proc qx::graph::meets {name row condition} {
    if {$condition eq {}} { return 1 }
    lassign $condition path word
    set words [qx::tables::code_words [call_of $name] $path]
    if {![dict exists $words $word]} { return 0 }
    return [expr {[value_at $name $row $path] == [dict get $words $word]}]
}

# What a row holds: tables and the numbers of their rows, alternating.
proc qx::graph::held {name row rows} {
    set result {}
    set table [qx::catalogue::table $name]
    set giver [lindex [dict get $table giver] 0]
    if {$giver ne {}} {
        set numbers {}
        foreach path [qx::tables::asked [qx::catalogue::table $giver]] {
            lappend numbers [dict get $row [qx::tables::short $path]]
        }
        lappend result $giver $numbers
    }
    foreach holds [dict get $table holds] {
        if {![meets $name $row [dict get $holds if]]} continue
        set numbers [named $name $row $holds]
        set first [lindex $numbers 0]
        lassign [dict get $holds within] least greatest
        if {$least ne {} && ($first < $least || $first > $greatest)} continue
        set target [dict get $holds table]
        if {[dict get $holds by] ne {}} {
            set first [row_by $target [dict get $rows $target] [dict get $holds by] $first]
            set numbers [list $first]
        }
        # 0 names nothing.
        if {$first ne "0"} { lappend result $target $numbers }
    }
    return $result
}

# The numbers by which a row names another.
proc qx::graph::named {name row holds} {
    set numbers {}
    set target [qx::catalogue::table [dict get $holds table]]
    foreach path [dict get $holds paths] asked [qx::tables::asked $target] {
        if {[string match =* $path]} {
            set words [qx::tables::code_words [call_of [dict get $holds table]] $asked]
            set word [string range $path 1 end]
            lappend numbers [expr {[dict exists $words $word] ? [dict get $words $word] : $word}]
        } else {
            lappend numbers [value_at $name $row $path]
        }
    }
    return $numbers
}

# The number that leads to the row with a value at a path, or the value if there is none.
proc qx::graph::row_by {name rows path value} {
    foreach row $rows {
        if {[value_at $name $row $path] eq $value} {
            return [lindex [id $name $row] 1]
        }
    }
    return $value
}

# ---------------------------------------------------------------------------------------- labels

proc qx::graph::label {name row} {
    lassign [dict get [qx::catalogue::table $name] node] noun paths
    set numbers [lrange [id $name $row] 1 end]
    set part [lindex [dict get [qx::catalogue::table $name] parts] 0]
    if {[dict get $part walk] ne {}} { set numbers [lrange $numbers 0 end-1] }
    set lines [list [headline $noun $name $numbers]]
    foreach path $paths {
        set value [value_at $name $row $path]
        foreach {below text zero} [leaves $name $path $value] {
            if {$text ne {}} { lappend lines [string trim "[join $below .] $text"] }
        }
    }
    return [join $lines \n]
}

# The leaves of a value at a path, as qx::show has them.
proc qx::graph::leaves {name path value} {
    set names [split $path .]
    set type [type_of $name [lindex $names 0]]
    if {[llength $names] == 1} { return [qx::shown::of_record $type $value {}] }
    foreach each [lrange $names 1 end-1] {
        set type [dict get [qx::catalogue::field $type $each] type]
    }
    set field [qx::catalogue::field $type [lindex $names end]]
    if {[qx::catalogue::is_record [dict get $field type]]} {
        return [qx::shown::of_record [dict get $field type] $value {}]
    }
    return [list {} [qx::shown::text $type $field $value] [qx::shown::is_zero $value]]
}

proc qx::graph::unseen_label {id} {
    lassign [dict get [qx::catalogue::table [lindex $id 0]] node] noun
    return [headline $noun [lindex $id 0] [lrange $id 1 end]]
}

# A noun with the numbers that lead to a row of a table, as qx::show has them: codes are words, ids
# hexadecimal.
proc qx::graph::headline {noun name numbers} {
    set paths [qx::tables::asked [qx::catalogue::table $name]]
    foreach number $numbers path $paths {
        set word {}
        if {$path ne {}} {
            set word [qx::catalogue::code_word \
                {*}[qx::tables::code_place [call_of $name] $path] $number]
        }
        if {$word eq {}} { set word $number }
        if {[string is wideinteger -strict $word]} { set word [qx::shown::id $word] }
        append noun " $word"
    }
    return $noun
}
