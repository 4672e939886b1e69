# Runs inside the shell: `do FUNCTION ?word ...?` makes one SDK call, in-arguments only, and prints
# function, status and what came back. By data it is qx::call; by hand it makes every record with
# the commands of its fields and every cell with its own, calls, reads and releases.

proc by_data {} {
    proc do {function args} {
        set out [qx::call -status status -dict $function {*}$args]
        puts [list $function $status $out]
        return [lindex $out 1]
    }
}

proc by_hand {} {
    proc do {function args} {
        set words {}
        set cells {}
        set blocks {}
        set place -1
        foreach argument [dict get [qx::catalogue::call $function] arguments] {
            foreach key {name type direction} { set $key [dict get $argument $key] }
            set target [string trimright $type *]
            set record [qx::catalogue::is_record $target]
            if {$name eq "sa_count"} {
                # The array is the next word.
                lappend words [llength [lindex $args [expr {$place + 1}]]]
                continue
            }
            if {$direction ne "out"} { set value [lindex $args [incr place]] }
            if {$target eq $type} {
                lappend words $value
                continue
            }
            if {!$record} {
                set stem qx_uint[string range $target 1 end]
                set block [${stem}_create 0]
                lappend cells $name ${stem}_get $block
            } elseif {$name eq "sa_array"} {
                set block [qx_ipsec_sa_array_create [llength $value]]
                set index 0
                foreach fields $value {
                    put $target [qx_ipsec_sa_array_get $block $index] $fields
                    incr index
                }
            } else {
                set block [[qx::catalogue::stem $target]_create]
                if {$direction ne "out"} { put $target $block $value }
                if {$direction ne "in"} { lappend cells $name qx::get $block }
            }
            lappend words $block
            lappend blocks $block
        }
        set status [$function {*}$words]
        set out {}
        if {$status == 0} {
            foreach {name reader block} $cells { lappend out $name [$reader $block] }
        }
        foreach block $blocks { qx_data_free $block }
        puts [list $function $status $out]
        return [lindex $out 1]
    }
}

# Writes fields through their setters alone. Arrays of numbers may be bytes in hexadecimal.
proc put {type handle values} {
    set stem [qx::catalogue::stem $type]
    if {$type eq "qx_ip_address_t" && [llength $values] == 1} { set values [address $values] }
    foreach {name value} $values {
        set field [qx::catalogue::field $type $name]
        set inner [dict get $field type]
        if {[dict get $field holds] eq "mac"} { set value [bytes [join [split $value :] {}]] }
        if {[dict get $field holds] eq "key"} { set value [bytes [string range $value 2 end]] }
        set indexed [dict get $field count]
        if {!$indexed} { set value [list $value] }
        set index 0
        foreach element $value {
            set at [expr {$indexed ? $index : {}}]
            if {[qx::catalogue::is_record $inner]} {
                put $inner [${stem}_get_$name $handle {*}$at] $element
            } else {
                ${stem}_set_$name $handle $element {*}$at
            }
            incr index
        }
    }
}

proc bytes {digits} {
    set result {}
    foreach {high low} [split $digits {}] { lappend result [scan $high$low %x] }
    return $result
}

# 10.0.0.0/8, or four groups of IPv6 before `::`.
proc address {text} {
    lassign [split $text /] text length
    if {[string match *:* $text]} {
        lassign [split [regsub -all ::.* $text {}] :] a b c d
        foreach group {a b c d} { if {[set $group] eq {}} { set $group 0 } }
        set words [list 0x[format %04s%04s $a $b] 0x[format %04s%04s $c $d] 0 0]
        set full 128
    } else {
        lassign [split $text .] a b c d
        set words [list [expr {wide($a) << 24 | $b << 16 | $c << 8 | $d}] 0 0 0]
        set full 32
    }
    if {$length eq {}} { set length $full }
    return [list afi [expr {$full == 128}] ip_addr [list addr $words] addr_len $length]
}
