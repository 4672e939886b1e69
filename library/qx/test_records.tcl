# Package qx::test, expect_record: compares fields of a record, however their values are written.
# Relies on package qx. The values of keys are not shown.

# An error that names each field that differs, unless the record, a handle or a dict as qx::get or
# qx::call return it, has these fields. Fields are a dict or paths and values, as for qx::set.
proc qx::test::expect_record {record fields} {
    if {[llength $fields] % 2} {
        return -code error -errorcode {QX USAGE} "fields are names and values: $fields"
    }
    if {[catch { record::differences $record $fields } found options]} {
        return -code error -errorcode [dict get $options -errorcode] $found
    }
    if {![llength $found]} return
    set count [llength $found]
    return -code error -errorcode {QX TEST RECORD} \
        "$count field[expr {$count == 1 ? " differs" : "s differ"}]\n  [join $found "\n  "]"
}

namespace eval qx::test::record {}

proc qx::test::record::differences {record fields} {
    if {[llength $record] == 1} {
        set type [lindex [qx::handle::of_record $record] 0]
        return [compared $type $record $fields]
    }
    set types [types_of $record]
    foreach type $types {
        if {[catch { qx::new $type $record } handle]} continue
        catch { compared $type $handle $fields } result options
        qx_data_free $handle
        return -options [dict replace $options -level 1] $result
    }
    return [loose $record $fields]
}

# The fields are written into a copy: what differs then is not as expected, and qx::set knows every
# form of a value.
proc qx::test::record::compared {type handle fields} {
    set copy [qx::new $type [qx::get $handle]]
    set code [catch {
        if {[llength $fields]} { eval [linsert $fields 0 qx::set $copy] }
        qx::diff $handle $copy
    } result options]
    qx_data_free $copy
    if {$code} { return -options $options $result }
    set found {}
    dict for {path pair} $result {
        lassign $pair is wanted
        if {[is_key $type $path]} {
            lappend found "[lindex [split $path "("] 0]: not the expected key"
        } else {
            lappend found "$path: is $is, expected $wanted"
        }
    }
    return [lsort -unique -dictionary $found]
}

proc qx::test::record::is_key {type path} {
    foreach name [split [regsub -all {\(\d+\)} $path {}] .] {
        if {[catch { qx::catalogue::field $type $name } field]} { return 0 }
        set type [dict get $field type]
    }
    return [expr {[dict get $field holds] eq "key"}]
}

# The record types whose dicts have these names.
proc qx::test::record::types_of {dict} {
    if {[llength $dict] % 2} return
    set types {}
    foreach type [qx::catalogue::records] {
        if {[dict keys [qx::template $type]] eq [dict keys $dict]} { lappend types $type }
    }
    return $types
}

# A dict of several values, of which some may be records.
proc qx::test::record::loose {dict fields} {
    set found {}
    foreach {name wanted} $fields {
        if {[catch { dict get $dict $name } is]} {
            lappend found "$name: is not there"
        } elseif {[llength $is] > 1 && [llength [types_of $is]]} {
            foreach each [differences $is $wanted] { lappend found $name.$each }
        } elseif {$is ne $wanted && !([string is double -strict $is]
                && [string is double -strict $wanted] && $is == $wanted)} {
            lappend found "$name: is $is, expected $wanted"
        }
    }
    return $found
}
