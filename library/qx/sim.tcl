# Package qx, qx::sim: control of the simulated device. Faults, latency, call log, reset, snapshots,
# and the flow table's hash. On a board only the hash is meaningful.
#
# The simulator reads commands from a control file, which must be named before the first SDK call of
# the process: by the environment variable QX_SIM_CONTROL, or by `qx::sim::attach` in the script.
# Each procedure has taken effect when it returns. Relies on the shell's SDK commands.

namespace eval qx::sim {
    variable control {}  ;# the control file; empty until attached
    variable settings {} ;# its lines that last
}

# ---------------------------------------------------------------------------------- control

# Starts controlling the simulator. The default file is the one named by QX_SIM_CONTROL.
proc qx::sim::attach {{file {}}} {
    variable control
    variable settings
    if {$file eq {}} {
        if {![info exists ::env(QX_SIM_CONTROL)] || $::env(QX_SIM_CONTROL) eq {}} {
            return -code error "name a control file, here or in QX_SIM_CONTROL"
        }
        set file $::env(QX_SIM_CONTROL)
    }
    set ::env(QX_SIM_CONTROL) $file
    set control [file normalize $file]
    set settings {}
    set answer $control.answer
    order [list "snapshot $answer"]
    if {![file exists $answer]} {
        file delete $control
        set control {}
        return -code error "the simulator does not look at $file: name the control file before the\
            first SDK call of the process"
    }
    file delete $answer
    order {}
    return $control
}

# Ends all settings and removes the control file.
proc qx::sim::detach {} {
    variable control
    variable settings {}
    order {}
    file delete $control
    nudge
    set control {}
    return
}

# Replaces the control file by the settings and the given commands, and makes the simulator read it.
# The new file is written under another name and renamed, so that it is never read half-written.
proc qx::sim::order {lines} {
    variable control
    variable settings
    if {$control eq {}} { return -code error "not attached: call qx::sim::attach first" }
    set channel [open $control.new {WRONLY CREAT TRUNC} 0600]
    foreach line [concat $settings $lines] {
        if {[string first \n $line] >= 0} {
            close $channel
            return -code error "an order is one line: $line"
        }
        puts $channel $line
    }
    close $channel
    file rename -force $control.new $control
    nudge
    return
}

# A call on this device only makes the simulator check the control file.
proc qx::sim::nudge {} { qx_flow_delete 65535 0 }

proc qx::sim::setting {line} {
    variable settings
    set before $settings
    lappend settings $line
    if {[catch {order {}} message]} {
        set settings $before
        return -code error $message
    }
    return
}

# Makes calls of the functions that match the pattern fail with the status, a number or a name, and
# do nothing else: the `when`th call (3), that and all later ones (3+), or every call (*).
proc qx::sim::fault {pattern when status} { setting "fault $pattern $when $status" }

# Makes each call of the matching functions take at least this many microseconds.
proc qx::sim::latency {pattern microseconds} { setting "latency $pattern $microseconds" }

# Appends every call from now on to a file, one JSON line each.
proc qx::sim::log {file} { setting "log [file normalize $file]" }

# Switches writing keys in logs and snapshots: on or off.
proc qx::sim::keys {onoff} { setting "keys $onoff" }

# Ends all faults, latencies and the log.
proc qx::sim::clear {} {
    variable settings {}
    order {}
}

# Returns all devices to their initial state.
proc qx::sim::reset {} { order [list reset] }

# Writes the configuration of all devices as JSON to the file, or returns it without one.
proc qx::sim::snapshot {{file {}}} { listing snapshot $file }

# The same with clocks, counters, table usage and calls so far.
proc qx::sim::state {{file {}}} { listing state $file }

proc qx::sim::listing {what file} {
    variable control
    if {$file ne {}} { return [order [list "$what [file normalize $file]"]] }
    set answer $control.answer
    order [list "$what $answer"]
    set channel [open $answer]
    set text [read $channel]
    close $channel
    file delete $answer
    return $text
}

# ---------------------------------------------------------------------------- the flow table

# The bytes of a flow that are hashed: those of its ingress packet, numbers low byte first.
proc qx::sim::flow_key {flow} {
    set packet [qx_flow_get_ingress_pkt $flow]
    set key [numbers 1 [qx_pkt_info_get_phy_port $packet]]
    foreach field {da_mac sa_mac} {
        for {set index 0} {$index < 6} {incr index} {
            lappend key [qx_pkt_info_get_$field $packet $index]
        }
    }
    set session 0
    if {[qx_pkt_info_get_pppoe_session_id_valid $packet]} {
        set session [qx_pkt_info_get_pppoe_session_id $packet]
    }
    set key [concat $key [numbers 2 [qx_pkt_info_get_eth_type $packet] \
        [qx_vlan_get_vlan_id [qx_pkt_info_get_tag $packet 0]] \
        [qx_vlan_get_vlan_id [qx_pkt_info_get_tag $packet 1]] $session]]
    foreach field {da_ip sa_ip} {
        set address [qx_pkt_info_get_$field $packet]
        set family [qx_ip_address_get_afi $address]
        lappend key [expr {$family & 0xff}]
        for {set index 0} {$index < 4} {incr index} {
            # An IPv4 address is only the first word.
            set word [qx_l3_ip_addr_get_addr [qx_ip_address_get_ip_addr $address] $index]
            set key [concat $key [numbers 4 [expr {$family == 0 && $index > 0 ? 0 : $word}]]]
        }
    }
    set header [qx_l4_header_get_esp [qx_pkt_info_get_l4_header $packet]]
    return [concat $key [numbers 1 [qx_pkt_info_get_protocol $packet]] \
        [numbers 4 [qx_l4_esp_get_spi_idx $header] [qx_pkt_info_get_natt_4_bytes $packet]]]
}

# Numbers as bytes, the low byte first.
proc qx::sim::numbers {size args} {
    set bytes {}
    foreach number $args {
        for {set count 0} {$count < $size} {incr count} {
            lappend bytes [expr {($number >> (8 * $count)) & 0xff}]
        }
    }
    return $bytes
}

# The hash slot of a flow.
proc qx::sim::flow_slot {flow} {
    set hash 2166136261
    foreach byte [flow_key $flow] { set hash [expr {(($hash ^ $byte) * 16777619) & 0xffffffff}] }
    return [expr {($hash ^ ($hash >> 16)) % 4096}]
}

# The slot that holds a flow on a device, searched by flow id from the hash slot on; -1 if there is
# none.
proc qx::sim::find_flow {device flow} {
    set home [flow_slot $flow]
    set found [qx_flow_create]
    set result -1
    for {set step 0} {$step < 16 && $result < 0} {incr step} {
        set slot [expr {($home + $step) % 4096}]
        if {[qx_flow_get $device $slot $found] == 0 &&
            [qx_flow_get_flow_id $found] == [qx_flow_get_flow_id $flow]} {
            set result $slot
        }
    }
    qx_data_free $found
    return $result
}
