# What the examples share: SDK calls whose status is checked, output cells, fields of records.
# Relies on the package qx, whose names of statuses are those of the simulated device.

package require qx

# ------------------------------------------------------------------------------------- calls

# Calls an SDK function, which has to succeed: any other status stops the script.
proc must {function args} { checked {} [linsert $args 0 $function] }

# Calls an SDK function, which has to answer with one of these statuses; gives the status's name.
# Anything else stops the script.
proc expect {statuses function args} {
    set call [linsert $args 0 $function]
    set name [qx::catalogue::status_name [checked $statuses $call]]
    if {$name ni $statuses} { stop "[shown $call]: $name, expected [join $statuses { or }]" }
    return $name
}

# The status of a call, 0 or one of those allowed.
proc checked {allowed call} {
    if {![catch { qx::check -allow $allowed {*}$call } status options]} { return $status }
    if {[lindex [dict get $options -errorcode] 0] ne "QX_STATUS"} {
        return -options $options $status
    }
    stop [shown $status]
}

# Ends the script with status 1 and one line, which tells where and why.
proc stop {why} {
    flush stdout
    puts stderr "[calling_line]: $why"
    exit 1
}

# Where the script is at the moment: the innermost line that is not in this file.
proc calling_line {} {
    for {set level [info frame]} {$level > 0} {incr level -1} {
        set frame [info frame $level]
        if {[dict exists $frame file] && [dict get $frame file] ne $::bringup_file} {
            return "[file tail [dict get $frame file]]:[dict get $frame line]"
        }
    }
    return "at the prompt"
}
set bringup_file [file normalize [info script]]

# A text with handles as their types: an address is another one in every run.
proc shown {text} { regsub -all {\m_[0-9a-f]{8}_p_(\w+)} $text {<\1>} }

# ----------------------------------------------------------------------------------- storage

# Runs a script with a new cell in the variable `name` and gives what the cell holds afterwards.
#   set mode [filled uint32 cell { must qx_qos_map_mode_get 0 1 $cell }]
proc filled {type name script} {
    upvar 1 $name cell
    set cell [qx_${type}_create 0]
    uplevel 1 $script
    set value [qx_${type}_get $cell]
    qx_data_free $cell
    return $value
}

# Gives records, arrays and cells back. Only what a _create made: a record that a getter found
# inside another one goes with that.
proc release {args} {
    foreach block $args { qx_data_free $block }
}

# Sets fields of a record: set_fields qx_vlan $tag vlan_id 100 priority 5
proc set_fields {stem record args} {
    foreach {field value} $args { ${stem}_set_$field $record $value }
}

# Fields of a record in one line: "vlan_id 100, priority 5".
proc fields {stem record args} {
    set texts {}
    foreach field $args { lappend texts "$field [${stem}_get_$field $record]" }
    return [join $texts ", "]
}

# Sets an array field from a list, element by element: fill_array qx_flow_set_swid_array $flow {1 2
# 3}
proc fill_array {setter record values} {
    set index 0
    foreach value $values {
        $setter $record $value $index
        incr index
    }
}

# The first `count` elements of an array field.
proc elements {getter record count} {
    set values {}
    for {set index 0} {$index < $count} {incr index} { lappend values [$getter $record $index] }
    return $values
}

# --------------------------------------------------------------------------------- addresses

# Fills an address or a prefix in place. Without a length it is all bits: family 0 is IPv4, 1 is
# IPv6.
#   set_ip [qx_pkt_info_get_da_ip $packet] 192.0.2.1
#   set_ip $prefix 2001:db8:1::/48
proc set_ip {record text} {
    lassign [split $text /] address length
    set family [string match *:* $address]
    if {$length eq {}} { set length [all_bits $family] }
    qx::set $record [list afi $family ip_addr $address addr_len $length]
}

proc all_bits {family} { expr {$family ? 128 : 32} }

# A new address record, to be released.
proc new_ip {text} {
    set record [qx_ip_address_create]
    set_ip $record $text
    return $record
}

# What an address record holds; the length only if it is shorter than the address.
proc ip {record} {
    set value [qx::get $record]
    set text [dict get $value ip_addr]
    set length [dict get $value addr_len]
    if {$length != [all_bits [dict get $value afi]]} { append text /$length }
    return $text
}
