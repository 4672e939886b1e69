# What the examples share: SDK calls whose status is checked, output cells, addresses as people
# write them. Relies on the package qx_sim for the names of statuses. They are those of the
# simulated device: for a board, write its SDK's statuses into a qx_status.h of the same form.

foreach folder {../library ../../../qxsh} { ;# in the source tree, installed
    lappend auto_path [file normalize [file join [file dirname [info script]] $folder]]
}
package require qx_sim

# ------------------------------------------------------------------------------------- calls

# Calls an SDK function, which has to succeed: any status but QX_OK stops the script.
proc must {function args} { expect QX_OK $function {*}$args }

# Calls an SDK function, which has to answer with one of these statuses; gives the status's name.
# Anything else stops the script: one line tells where, which call, and why, and the exit status is
# 1.
proc expect {statuses function args} {
    set number [$function {*}$args]
    set name [qx::sim::status_name $number]
    if {$name in $statuses} { return $name }
    set answer "status $number"
    if {$name ne $number} { append answer ", $name: [qx::sim::status_meaning $number]" }
    flush stdout
    puts stderr "[calling_line]: [shown [linsert $args 0 $function]]: $answer"
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

# A call's words, a handle as its type: an address is another one in every run.
proc shown {words} {
    regsub -all {\m_[0-9a-f]{8}_p_(\w+)} $words {<\1>} words
    return $words
}

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

# A MAC address as people write it, as a list of six numbers.
proc mac {text} {
    set bytes {}
    foreach byte [split $text :] { lappend bytes 0x$byte }
    return $bytes
}

# The other way, from an array field: mac_text qx_pkt_info_get_da_mac $packet
proc mac_text {getter record} {
    set bytes {}
    foreach byte [elements $getter $record 6] { lappend bytes [format %02x $byte] }
    return [join $bytes :]
}

# An IP address as people write it, as a list of words: one for 192.0.2.1, four for 2001:db8::1.
proc ip_words {text} {
    if {[string first : $text] < 0} {
        foreach {a b c d} [split $text .] break
        return [list [expr {($a << 24) | ($b << 16) | ($c << 8) | $d}]]
    }
    set place [string first :: $text]
    if {$place >= 0} {
        # The double colon stands for the groups of zeros that are missing.
        set before [split [string range $text 0 [expr {$place - 1}]] :]
        set after [split [string range $text [expr {$place + 2}] end] :]
        set missing [expr {8 - [llength $before] - [llength $after]}]
        set text [join [concat $before [lrange {0 0 0 0 0 0 0 0} 0 [expr {$missing - 1}]] $after] :]
    }
    set words {}
    foreach {high low} [split $text :] {
        scan "$high $low" "%x %x" high low
        lappend words [expr {($high << 16) | $low}]
    }
    return $words
}

# The other way.
proc ip_text {words} {
    if {[llength $words] == 1} {
        return [join [list [expr {$words >> 24}] [expr {$words >> 16 & 255}] \
            [expr {$words >> 8 & 255}] [expr {$words & 255}]] .]
    }
    set groups {}
    foreach word $words {
        lappend groups [format %x [expr {$word >> 16}]] [format %x [expr {$word & 0xffff}]]
    }
    set text [join $groups :]
    regsub {(^|:)0(:0)+(:|$)} $text :: text
    return $text
}

# Fills an address or a prefix in place. Without a length it is all bits: family 0 is IPv4, 1 is
# IPv6.
#   set_ip [qx_pkt_info_get_da_ip $packet] 192.0.2.1
#   set_ip $prefix 2001:db8:1::/48
proc set_ip {record text} {
    foreach {address length} [split $text /] break
    set words [ip_words $address]
    if {$length eq {}} { set length [expr {32 * [llength $words]}] }
    set addr [qx_ip_address_get_ip_addr $record]
    qx_l3_ip_addr_set_addr $addr 0 4294967295 ;# as an index: every word
    fill_array qx_l3_ip_addr_set_addr $addr $words
    qx_ip_address_set_afi $record [expr {[llength $words] == 4}]
    qx_ip_address_set_addr_len $record $length
}

# A new address record, to be released.
proc new_ip {text} {
    set record [qx_ip_address_create]
    set_ip $record $text
    return $record
}

# What an address record holds; the length only if it is shorter than the address.
proc ip {record} {
    set count [expr {[qx_ip_address_get_afi $record] == 0 ? 1 : 4}]
    set length [qx_ip_address_get_addr_len $record]
    set words [elements qx_l3_ip_addr_get_addr [qx_ip_address_get_ip_addr $record] $count]
    set text [ip_text $words]
    if {$length != 32 * $count} { append text /$length }
    return $text
}
