# Runs inside the shell, words COUNT SEED ?ODD?: each SDK function with success and with failures as
# every_call.tcl has it, then COUNT calls in random order. Their words are those that were seen
# before, some replaced; records have random bytes, padding included; unless ODD is 0, there are null
# pointers and long arrays. Prints each call with its status, every byte of its records and its cells.
# Says the same in every build.
package require qx

set folder [file dirname [file normalize [info script]]]
source [file join $folder .. qx every_call.tcl]
lassign $argv count seed odd
if {$odd eq {}} { set odd 1 }

# The same numbers with every version of Tcl: 0 to limit - 1.
proc random {limit} {
    set ::seed [expr {($::seed * 1103515245 + 12345) & 0x7fffffff}]
    return [expr {($::seed >> 8) % $limit}]
}
proc one_of {list} { lindex $list [random [llength $list]] }

# function -> the words of its calls so far, in-arguments only; ids and other results so far.
set seen {}
set results {0}

proc do {function args} {
    dict lappend ::seen $function $args
    set out [qx::call -status status -dict $function {*}$args]
    puts [list $function $status $out]
    foreach {name value} $out { if {[string is integer -strict $value]} { lappend ::results $value } }
    return [lindex $out 1]
}

# A number that the command takes: often a result of an earlier call, or the usual one.
proc number {type usual} {
    set bits [string range $type 1 end]
    switch [random 16] {
        0 { set value [one_of $::results] }
        1 { set value [one_of {0 1 2 3 4 5 31 32 63 64 65535 4294967295}] }
        2 { set value [expr {wide([random 65536]) << 16 | [random 65536]}] }
        default { set value $usual }
    }
    return [expr {$value & ((wide(1) << $bits) - 1)}]
}

# Writes some random bytes anywhere into a record.
proc spoil {block type} {
    set view _[string range $block 1 8]_p_unsigned_char
    for {set i [random 4]} {$i > 0} {incr i -1} {
        set size [dict get [qx::catalogue::record $type] size]
        qx_uint8_array_set $view [random 256] [random $size]
    }
}

# Makes one call of a function with words like those of one of its calls so far, and prints it.
proc call_again {number function} {
    set usual [one_of [dict get $::seen $function]]
    set words {}
    set shown {}
    set blocks {}
    set place -1
    foreach argument [dict get [qx::catalogue::call $function] arguments] {
        foreach key {name type direction} { set $key [dict get $argument $key] }
        set target [string trimright $type *]
        if {$name eq "sa_count"} {
            set size [expr {[random 50] || !$::odd ? [llength [lindex $usual [expr {$place + 1}]]] : 70}]
            lappend words $size
            continue
        }
        set value {}
        if {$direction ne "out"} { set value [lindex $usual [incr place]] }
        if {$target eq $type} {
            lappend words [number $type $value]
            continue
        }
        if {[random 100] == 0 && $::odd} {
            lappend words NULL
            continue
        }
        if {![qx::catalogue::is_record $target]} {
            set stem qx_uint[string range $target 1 end]
            set block [${stem}_create [random 256]]
            lappend shown "\[${stem}_get $block\]"
        } elseif {$name eq "sa_array"} {
            # As many as are said to be there, and one more, as none cannot be made.
            set block [qx_ipsec_sa_array_create [expr {$size + 1}]]
            for {set i 0} {$i < $size} {incr i} {
                set element [qx_ipsec_sa_array_get $block $i]
                qx::set $element [lindex $value $i]
                if {[random 3] == 0} { spoil $element $target }
                lappend shown "\[qx::get $element -raw\]"
            }
        } else {
            set block [qx::new $target $value]
            if {[random 3] == 0} { spoil $block $target }
            lappend shown "\[qx::get $block -raw\]"
        }
        lappend words $block
        lappend blocks $block
    }
    set status [$function {*}$words]
    puts [list $number $function $status [subst [join $shown]]]
    if {$status == 0 && [regexp {uint32_get} $shown]} {
        set ::results [lrange [concat $::results [subst [lindex $shown end]]] end-40 end]
    }
    foreach block $blocks { qx_data_free $block }
}

every_call
set functions [qx::catalogue::calls]
for {set n 1} {$n <= $count} {incr n} {
    call_again $n [one_of $functions]
    # While an engine sleeps nearly all calls are refused.
    if {$n % 10 == 0} { do qx_pm_ne_suspend_set [random 4] 0 }
    if {$n % 100 == 0} { do qx_l3_route_init_0 2 }
}
