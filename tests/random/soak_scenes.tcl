# Scenes that the soak test plays after each random script, in the same shell: records as data,
# arrays without elements, a channel that dumps while a dump is written to it, SDK calls under
# orders to the simulator. Each checks itself and leaves nothing behind: no block, no setting, no
# growth. Relies on package qx, on Linux's /proc, and on QXSH_STRICT_MEMORY; sourced by
# soak_shell.tcl.

namespace eval scenes {
    variable strict [expr {[info exists ::env(QXSH_STRICT_MEMORY)] &&
        $::env(QXSH_STRICT_MEMORY) eq "1"}]
    variable records [qx::catalogue::records]
    variable taken {}        ;# what the channel has taken
    variable interrupting {} ;# the record to dump at its next write; empty: none
    variable long {}         ;# records whose dumps bypass Tcl's buffer
}

proc scenes::any {list} { lindex $list [expr {int(rand() * [llength $list])}] }

proc scenes::expect {is wanted what} {
    if {$is ne $wanted} { error "$what is \"$is\", not \"$wanted\"" }
}

# The error code of a script, or {} for success.
proc scenes::code_of {script} {
    if {[catch { uplevel 1 $script }]} { return $::errorCode }
    return {}
}

# ---------------------------------------------------------------------------------- records

proc scenes::record {type} {
    set stem [qx::catalogue::stem $type]
    set first [${stem}_create]
    set array [${stem}_array_create 3]
    set second [${stem}_array_get $array 1]
    set value [qx::get $first]
    qx::set $second $value
    expect [qx::get $second] $value "$type, written as it was read"
    expect [qx::diff $first $second] {} "a difference"
    qx::json $second
    foreach command {qx::get qx::json} {
        expect [lindex [code_of { $command $first -view nosuch }] 0] QX "an unknown view's error"
    }
    expect [lindex [code_of { qx::set $first {no_such_field 1} }] 0] QX "an unknown field's error"
    ${stem}_array_set $array $first 2
    qx_data_free $first
    qx_data_free $array
}

# Without strict memory what is there is read: the words of an array without elements are not
# counted.
proc scenes::empty_array {} {
    variable records
    variable strict
    set type [any $records]
    set stem [qx::catalogue::stem $type]
    set array [${stem}_array_create 0]
    if {$strict} {
        foreach script {{qx::get $array} {qx::json $array} {qx::diff $array $array}
                {qx::set $array {}} {${stem}_array_set $array $array 0} {${stem}_dump $array}} {
            if {[code_of $script] eq {}} { error "$script reached an array of no $type" }
        }
    }
    qx_data_free $array
}

# ------------------------------------------------------------------------------- the channel

# Takes 1000 bytes at a time.
proc scenes::channel {method id args} {
    variable taken
    variable interrupting
    switch -- $method {
        initialize { return {initialize finalize watch write} }
        write {
            set bytes [string range [lindex $args 0] 0 999]
            append taken $bytes
            if {$interrupting ne {}} {
                set handle $interrupting
                set interrupting {}
                dump $handle
            }
            return [string length $bytes]
        }
    }
}

proc scenes::dump {handle} {
    [qx::catalogue::stem [lindex [qx::handle::of_record $handle] 0]]_dump $handle
}

proc scenes::dumped {handle {while {}}} {
    variable taken {}
    variable interrupting $while
    dump $handle
    flush stdout
    return $taken
}

# A new channel becomes stdout if that is closed.
proc scenes::interrupted_dump {} {
    variable records
    variable long
    set kept [open /proc/self/fd/1 w]
    close stdout
    set channel [chan create write scenes::channel]
    fconfigure $channel -translation lf
    set failed [catch {
        if {$long eq {}} {
            foreach type $records {
                set handle [[qx::catalogue::stem $type]_create]
                if {[string length [dumped $handle]] > 1100} { lappend long $type }
                qx_data_free $handle
            }
        }
        set handles {}
        foreach which {outer inner} {
            set $which [[qx::catalogue::stem [any $long]]_create]
            lappend handles [set $which]
        }
        set alone [dumped $outer]
        set wanted [string range $alone 0 999][dumped $inner][string range $alone 1000 end]
        if {[dumped $outer $inner] ne $wanted} { error "$outer and $inner are not dumped as alone" }
        foreach handle $handles { qx_data_free $handle }
    } message]
    close $channel
    open /proc/self/fd/[string range $kept 4 end] w
    close $kept
    if {$failed} { error $message }
}

# --------------------------------------------------------------------------------- SDK calls

proc scenes::calls {folder} {
    set flow [qx_flow_create]
    qx_flow_set_flow_id $flow [expr {int(rand() * 60000)}]
    set status [expr {1 + int(rand() * 80)}]
    set nth [expr {1 + int(rand() * 3)}]
    qx::sim::log [file join $folder calls.log]
    qx::sim::keys [any {on off}]
    qx::sim::latency qx_flow_* [expr {int(rand() * 20)}]
    qx::sim::fault qx_qos_dscp_map_set $nth $status
    for {set i 1} {$i <= 3} {incr i} {
        set code [code_of { qx::check qx_qos_dscp_map_set 0 1 $i 2 }]
        expect [lrange $code 0 1] [expr {$i == $nth ? [list QX_STATUS $status] : {}}] \
            "call $i under a fault"
    }
    qx::check {
        qx_flow_add 0 $flow
        qx_qos_dscp_map_set 0 1 7 3
    }
    expect [lrange [code_of { qx::check { qx_qos_dscp_map_set 0 1 64 6 } }] 0 1] {QX_STATUS 76} \
        "a failing block"
    qx::sim::snapshot
    qx::sim::reset
    qx::sim::clear
    qx::sim::keys off
    set channel [open [file join $folder calls.log]]
    expect [llength [split [string trimright [read $channel] \n] \n]] 6 "lines of the log"
    close $channel
    file delete [file join $folder calls.log]
    qx_data_free $flow
}

# Plays all scenes; prints one line for each that fails.
proc scenes::play {folder} {
    variable records
    foreach scene {{record [any $records]} {record [any $records]} empty_array interrupted_dump
            {calls $folder}} {
        if {[catch $scene message]} { puts "== scene [lindex $scene 0]: $message" }
    }
}

# What the package keeps of each record, it has from the start.
foreach type $scenes::records { scenes::record $type }
