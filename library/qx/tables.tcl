# Package qx, the tables of a device: qx::list walks one through the SDK's calls, as the catalogue
# describes it. Relies on catalogue.tcl, status.tcl, table_requests.tcl, and qx::call.
#
# A walk takes a request, a dict: command (for messages), name, table (as qx::catalogue::table has
# it), device, given (argument -> least and greatest), words, raw.

namespace eval qx::tables {}

# qx::list TABLE ?-device n? ?-key value ...? ?-words? ?-raw? : the rows of a table, each a dict:
# the arguments that lead to it, then what the call puts out. Without arguments: the tables and
# their texts.
proc qx::tables::list_rows {args} {
    if {$args eq {}} { return [texts] }
    return [rows [request qx::list $args {-words -raw}]]
}

# The tables with what they hold and what they have to be asked by; name and text, alternating.
proc qx::tables::texts {} {
    set result {}
    foreach name [qx::catalogue::tables] {
        set table [qx::catalogue::table $name]
        set text [dict get $table text]
        set keys {}
        foreach path [dict get $table keys] { append keys " -[short $path]" }
        if {$keys ne {}} { append text "; needs$keys" }
        if {[dict get $table parts] eq {}} { append text "; not listed: [dict get $table instead]" }
        lappend result $name $text
    }
    return $result
}

# --------------------------------------------------------------------------------------- walks

# The rows that a request asks for.
proc qx::tables::rows {request} {
    set rows {}
    foreach part [dict get $request table parts] { walk $request $part rows }
    return $rows
}

# Appends the rows of one call.
proc qx::tables::walk {request part rows_name} {
    upvar 1 $rows_name rows
    set loops {}
    foreach path [dict get $request table keys] {
        lappend loops $path [list [dict get $request given [short $path]]]
    }
    dict for {path values} [dict get $part indexes] {
        set short [short $path]
        if {[dict exists $request given $short]} {
            lappend loops $path [list [dict get $request given $short]]
        } else {
            lappend loops $path [intervals $request $part $path $values]
        }
    }
    set words {}
    set asks_device 0
    foreach argument [in_arguments [dict get $part call]] {
        set device [expr {[dict get $argument name] in {device_id dev_id}}]
        if {$device} { set asks_device 1 }
        lappend words [expr {$device ? [dict get $request device] : {}}]
    }
    if {!$asks_device} { check_device $request }
    nested $request [with_numbers $part] $loops {} $words rows
}

# A call without a device would not refuse a wrong one.
proc qx::tables::check_device {request} {
    set device [dict get $request device]
    set count [qx::catalogue::capacity devices]
    if {$count eq {} || $device < $count} return
    return -level 2 -code error -errorcode {QX USAGE} \
        "-device: there is no device $device; the profile has $count"
}

# A part with the numbers of its statuses.
proc qx::tables::with_numbers {part} {
    foreach fact {empty ends bare} {
        set numbers {}
        foreach name [dict get $part $fact] { lappend numbers {*}[status_number $name] }
        dict set part $fact $numbers
    }
    return $part
}

# The number of a status, as in the simulator: one that the profile does not have keeps its default
# number; none if that is another's.
proc qx::tables::status_number {name} {
    if {![catch { qx::catalogue::status_number $name } number]} { return $number }
    dict for {number status} [dict get [qx::profile::default] statuses] {
        if {[lindex $status 0] ne $name} continue
        return [expr {[qx::catalogue::status_name $number] eq {} ? $number : {}}]
    }
}

# The arguments that a call reads.
proc qx::tables::in_arguments {call} {
    set result {}
    foreach argument [dict get [qx::catalogue::call $call] arguments] {
        if {[dict get $argument direction] ne "out"} { lappend result $argument }
    }
    return $result
}

# The place of an argument among the words of qx::call.
proc qx::tables::place_of {call name} {
    set at 0
    foreach argument [in_arguments $call] {
        if {[dict get $argument name] eq $name} { return $at }
        incr at
    }
}

# The ids that the profile says a table has, as intervals; empty if it says none. Those that the
# simulated device assigns are its own, whatever the board's are.
proc qx::tables::ids_of_profile {name path values} {
    set ids [qx::profile::part ids]
    set parts [dict get [qx::catalogue::table $name] parts]
    if {![dict exists $ids $name] || [lindex [dict get [lindex $parts 0] indexes] 0] ne $path} {
        return
    }
    if {[lindex $values 0] eq "ids" && [qx::sim::is_loaded]} return
    return [dict get $ids $name]
}

# The ids of a kind that the simulated device assigns: kind, device, and a number from 1.
proc qx::tables::assigned {kind device} {
    set start [expr {($kind << 24) + (($device & 255) << 16)}]
    return [list [expr {$start + 1}] [expr {$start + 65535}]]
}

# What a table that is walked by ids tries on a device: a name, and intervals as text; else nothing.
proc qx::tables::tried {name device} {
    lassign [dict get [qx::catalogue::table $name] parts] part
    if {$part eq {}} return
    lassign [dict get $part indexes] path values
    set intervals [ids_of_profile $name $path $values]
    if {$intervals eq {} && [lindex $values 0] eq "ids"} {
        set intervals [list [assigned [lindex $values 1] $device]]
    }
    set texts {}
    foreach interval $intervals { lappend texts [interval_text $interval] }
    if {$texts eq {}} return
    return [list [short $path] [join $texts {, }]]
}

# An interval as an option takes it.
proc qx::tables::interval_text {interval} {
    set ends {}
    foreach number [lsort -unique -integer $interval] { lappend ends [qx::shown::id $number] }
    return [join $ends ..]
}

# The numbers to try for an index: a list of least and greatest ones.
proc qx::tables::intervals {request part path values} {
    set said [ids_of_profile [dict get $request name] $path $values]
    if {$said ne {}} { return $said }
    lassign $values kind first second
    switch -- $kind {
        range { return [list [list $first $second]] }
        ids { return [list [assigned $first [dict get $request device]]] }
        capacity {
            set count [qx::catalogue::capacity $first]
            if {$count ne {}} { return [list [list 0 [expr {$count - 1}]]] }
        }
        codes {
            # A word without a line in the profile keeps its default number, as in the simulator.
            lassign [code_place [dict get $part call] $path] owner name
            set words [qx::catalogue::code_words $owner $name]
            set defaults [dict get [qx::profile::default] codes]
            if {[dict exists $defaults $owner.$name]} {
                set words [dict merge [dict get $defaults $owner.$name] $words]
            }
            set result {}
            foreach number [lsort -integer -unique [dict values $words]] {
                lappend result [list $number $number]
            }
            if {$result ne {}} { return $result }
        }
    }
    return -level 3 -code error -errorcode [list QX TABLE [dict get $request name]] \
        "[dict get $request command] [dict get $request name]: -[short $path] is missing; the\
        profile does not say which values there are"
}

# The code words of an argument, or of a field of the record that it points to.
proc qx::tables::code_words {call path} {
    if {$path eq {}} return
    return [qx::catalogue::code_words {*}[code_place $call $path]]
}

# What the code words of a path belong to: a call and its argument, or a record and its field.
proc qx::tables::code_place {call path} {
    set names [split $path .]
    if {[llength $names] == 1} { return [list $call $path] }
    set argument [qx::catalogue::call_argument $call [lindex $names 0]]
    set record [qx::catalogue::target [dict get $argument type]]
    foreach name [lrange $names 1 end-1] {
        set record [dict get [qx::catalogue::field $record $name] type]
    }
    return [list $record [lindex $names end]]
}

# Runs through the values of the loops, outermost first; a status that ends a walk ends the
# innermost. `bound` has the values by path, `words` those of qx::call. Returns 1 at the end.
proc qx::tables::nested {request part loops bound words rows_name} {
    upvar 1 $rows_name rows
    if {$loops eq {}} {
        if {[dict get $part walk] ne {}} { return [follow $request $part $bound $words rows] }
        return [visit $request $part $bound $words rows]
    }
    set inner [lassign $loops path intervals]
    # An index may be a field of a record.
    regexp {^([^.]*)\.?(.*)$} $path -> name field
    set at [place_of [dict get $part call] $name]
    foreach interval $intervals {
        lassign $interval least greatest
        for {set value $least} {$value <= $greatest} {incr value} {
            dict set bound $path $value
            if {$field eq {}} {
                lset words $at $value
            } else {
                lset words $at [dict replace [lindex $words $at] $field $value]
            }
            if {[nested $request $part $inner $bound $words rows] && $inner eq {}} { return 1 }
        }
    }
    return 0
}

# Looks at one place of a table. Returns 1 at its end.
proc qx::tables::visit {request part bound words rows_name} {
    upvar 1 $rows_name rows
    set call [dict get $part call]
    set values [::qx::call -dict -status status $call {*}$words]
    if {$status} {
        if {$status in [dict get $part empty]} { return 0 }
        # Whoever asks for a place behind the end has to know.
        set innermost [short [lindex [dict keys [dict get $part indexes]] end]]
        set asked_for [dict exists $request given $innermost]
        if {$status in [dict get $part ends] && !$asked_for} { return 1 }
        if {$status ni [dict get $part bare]} { fail $call $words $status }
    }
    set absent [dict get $part absent]
    if {$absent ne {}} {
        if {![dict get $values $absent]} { return 0 }
        dict unset values $absent
    }
    lappend rows [row $request $part $bound $values]
    return 0
}

# Follows a walk from its start: the same record again and again, which the call moves on.
proc qx::tables::follow {request part bound words rows_name} {
    upvar 1 $rows_name rows
    set call [dict get $part call]
    foreach argument [in_arguments $call] {
        if {[dict get $argument direction] ne "inout"} continue
        set record [qx::catalogue::target [dict get $argument type]]
        set at [place_of $call [dict get $argument name]]
    }
    set before {}
    ::qx::with place $record {
        lset words $at $place
        for {set step {start 0}} 1 {set step {continue 1}} {
            if {[dict get $part walk] eq "next"} {
                lset words [place_of $call next] [number_of_step $call {*}$step]
            }
            set values [::qx::call -dict -status status $call {*}$words]
            if {$status in [dict get $part ends]} break
            if {$status} { fail $call $words $status }
            if {$values eq $before} {
                return -code error -errorcode [list QX TABLE [dict get $request name]] \
                    "$call gives the same entry again; the walk does not go on"
            }
            set before $values
            lappend rows [row $request $part $bound $values]
        }
    }
    return 1
}

# The number of a step of a walk; `usual` if the profile has no word for it.
proc qx::tables::number_of_step {call word usual} {
    set number [qx::catalogue::code_number $call next $word]
    return [expr {$number eq {} ? $usual : $number}]
}

# A row: its part, the arguments that lead to it, the values.
proc qx::tables::row {request part bound values} {
    set call [dict get $part call]
    set row {}
    if {[dict get $part part] ne {}} { lappend row part [dict get $part part] }
    dict for {path value} $bound {
        # A field of a record stands in the record.
        if {[string match *.* $path]} continue
        if {[dict get $request words]} { set value [in_word $call $path $value] }
        lappend row $path $value
    }
    dict for {name value} $values {
        if {[dict get $request raw] || [dict get $request words]} {
            set value [rewritten $request $call $name $value]
        }
        lappend row $name $value
    }
    return $row
}

# A number as its code word, if it has one.
proc qx::tables::in_word {owner name number} {
    set word [qx::catalogue::code_word $owner $name $number]
    if {$word eq {}} { return $number }
    return $word
}

# A value that a call has put out with the options -raw and -words of qx::get.
proc qx::tables::rewritten {request call name value} {
    set type [qx::catalogue::target [dict get [qx::catalogue::call_argument $call $name] type]]
    if {![qx::catalogue::is_record $type]} {
        if {[dict get $request words]} { return [in_word $call $name $value] }
        return $value
    }
    set options {}
    foreach option {raw words} { if {[dict get $request $option]} { lappend options -$option } }
    ::qx::with handle $type $value { return [::qx::get $handle {*}$options] }
}

# A status that a walk does not expect is the error of qx::check.
proc qx::tables::fail {call words status} {
    set shown [list $call]
    foreach argument [dict get [qx::catalogue::call $call] arguments] {
        set type [dict get $argument type]
        if {[dict get $argument direction] ne "out"} { set words [lassign $words word] }
        if {[qx::catalogue::is_pointer $type]} { set word [qx::catalogue::target $type] }
        lappend shown $word
    }
    if {[catch { qx::status::judge_data $shown $status {} } message options]} {
        return -level 2 -code error -errorcode [dict get $options -errorcode] $message
    }
}
