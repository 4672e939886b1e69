# Package qx, records that scripts create: qx::new, qx::with. Relies on catalogue.tcl and on the
# package's library, which writes them.

namespace eval qx::records {}

# Creates a record with the fields in the dict and returns its handle. The caller releases it.
proc qx::records::new {type {values {}}} {
    qx::catalogue::record $type ;# which raises an error if it is not one
    set handle [::[qx::catalogue::stem $type]_create]
    if {$handle eq "NULL"} {
        return -code error -errorcode [list QX MEMORY $type] "there is no memory for a $type"
    }
    if {[catch { ::qx::set $handle $values } message options]} {
        ::qx_data_free $handle
        return -code error -errorcode [dict get $options -errorcode] $message
    }
    return $handle
}

# qx::with name record ?dict? body : runs the body with the handle of a new record in the variable,
# and then releases the record and unsets the variable, however the body has ended.
proc qx::records::with {name type args} {
    if {[llength $args] ni {1 2}} {
        return -code error -errorcode {QX USAGE} "usage: qx::with name record ?dict? body"
    }
    upvar 1 $name handle
    set made [new $type [lindex [linsert $args 0 {}] end-1]]
    set handle $made
    catch { uplevel 1 [lindex $args end] } result options
    ::qx_data_free $made
    unset -nocomplain handle
    dict incr options -level
    return -options $options $result
}
