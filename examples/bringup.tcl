# What the examples share: SDK calls whose status is checked, cells that are read and released in one go.

# Calls an SDK function and stops the script with its name and status unless it succeeded.
proc must {function args} {
    set status [$function {*}$args]
    if {$status != 0} {
        puts "$function $args: status $status"
        exit 1
    }
}

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

# Fills an array field from a list, element by element: fill_array qx_flow_set_swid_array $flow {1 2 3}
proc fill_array {setter record values} {
    set index 0
    foreach value $values {
        $setter $record $value $index
        incr index
    }
}

# A MAC address as people write it, as a list of six numbers.
proc mac {text} {
    set bytes {}
    foreach byte [split $text :] { lappend bytes 0x$byte }
    return $bytes
}
