# Package qx, records that scripts create: qx::new, qx::with. Relies on catalogue.tcl and on the
# package's library, which writes them.

namespace eval qx::records {}

# Creates a record with the fields in the dict and returns its handle. The caller releases it.
proc qx::records::new {record {dict {}}} {
    qx::catalogue::record $record ;# which raises an error if it is not one
    set handle [::[qx::catalogue::stem $record]_create]
    if {$handle eq "NULL"} {
        return -code error -errorcode [list QX MEMORY $record] "there is no memory for a $record"
    }
    if {[catch { ::qx::set $handle $dict } message options]} {
        ::qx_data_free $handle
        return -code error -errorcode [dict get $options -errorcode] $message
    }
    return $handle
}

# qx::with name record ?dict? body : runs the body with the handle of a new record in the variable,
# and then releases the record and unsets the variable, however the body has ended.
proc qx::records::with {args} {
    if {[llength $args] ni {3 4}} {
        return -code error -errorcode {QX USAGE} "usage: qx::with name record ?dict? body"
    }
    lassign $args name record dict
    if {[llength $args] == 3} { set dict {} }
    upvar 1 $name handle
    set made [new $record $dict]
    if {![catch { set handle $made } result options]} {
        catch { uplevel 1 [lindex $args end] } result options
    }
    ::qx_data_free $made
    catch { unset -nocomplain handle }
    dict incr options -level
    return -options $options $result
}
