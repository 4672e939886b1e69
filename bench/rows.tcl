# The operations that are measured in loops. A row is a name, under which bounds.tsv has its title
# and bounds, and a dictionary with
#   setup    script before the loop, in the loop's procedure; `n` is the number of passes
#   command  the loop's body; the floor has no_op in place of each command of the module
#   loop     `count` (for) or `texts` (foreach text $texts)          default count
#   passes   passes of the shorter and of the longer counted loop    default 500 2500
#   timed    passes of a timed loop                                  default 100000
#   peers    the peers that have equivalent commands                 default none
# Words are variables and literals, as in scripts. Used inside the shell and by the driver.

namespace eval rows {
    variable names {}
    variable all {}
}

proc rows::row {name properties} {
    variable names
    variable all
    set defaults {setup {} loop count passes {500 2500} timed 100000 peers {}}
    lappend names $name
    dict set all $name [dict merge $defaults $properties]
}

proc rows::get {name} { variable all; dict get $all $name }

rows::row getter {
    setup {set flow [qx_flow_create]; qx_flow_set_flow_id $flow 7}
    command {qx_flow_get_flow_id $flow}
    peers {hand critcl}
}
rows::row cell_read {
    setup {set cell [qx_uint32_create 7]}
    command {qx_uint32_get $cell}
    peers {hand critcl}
}
rows::row setter {
    setup {set flow [qx_flow_create]}
    command {qx_flow_set_flow_id $flow 7}
    peers {hand critcl}
}
rows::row array_field_get {
    setup {set flow [qx_flow_create]}
    command {qx_flow_get_swid_array $flow 1}
    peers {hand critcl}
}
rows::row array_field_set {
    setup {set flow [qx_flow_create]}
    command {qx_flow_set_swid_array $flow 7 1}
    peers {hand critcl}
}
rows::row cell_array_get {
    setup {set cells [qx_uint32_array_create 7 8]}
    command {qx_uint32_array_get $cells 5}
}
rows::row cell_array_set {
    setup {set cells [qx_uint32_array_create 7 8]}
    command {qx_uint32_array_set $cells 9 5}
}
rows::row nested_getter {
    setup {set flow [qx_flow_create]}
    command {qx_flow_get_ingress_pkt $flow}
    peers {hand critcl}
}
rows::row element_getter {
    setup {set flows [qx_flow_array_create 8]}
    command {qx_flow_array_get $flows 5}
    peers {hand critcl}
}
rows::row sdk_call {
    setup {set flow [qx_flow_create]}
    command {qx_flow_add 0 $flow}
    peers {hand critcl}
}
rows::row flow_init {
    setup {
        set flow [qx_flow_create]
        set in [qx_pkt_info_create]
        set out [qx_pkt_info_create]
    }
    command {qx_flow_init $flow 7 2 $in $out 1 300 4000 5 6}
    peers {hand critcl}
}
rows::row create_free {
    command {qx_data_free [qx_flow_create]}
    peers {hand critcl}
}
rows::row great_result {
    setup {set flow [qx_flow_create]; qx_flow_set_flow_type $flow 4294967295}
    command {qx_flow_get_flow_type $flow}
    peers {hand critcl}
}
rows::row new_text {
    setup {
        set flows [qx_flow_array_create $n]
        set handles {}
        for {set i 0} {$i < $n} {incr i} { lappend handles [qx_flow_array_get $flows $i] }
        # Split again, so that each element is a pure string.
        set texts [split [join $handles \n] \n]
    }
    command {qx_flow_get_flow_id $text}
    loop texts
    timed 20000
    peers {hand critcl}
}
rows::row dump {
    setup {set flow [qx_flow_create]; fill_flow $flow}
    command {qx_flow_dump $flow}
    passes {50 250}
    timed 4000
    peers {hand critcl}
}
