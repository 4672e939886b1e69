# Quality of service: per port, the map mode and two tables that give a packet its priority,
# one by DSCP (0 to 63) and one by 802.1p value (0 to 7). Every byte is passed on; what becomes
# of values beyond these ranges is up to the SDK.

area qos "QoS classification maps"

call qx_qos_dot1p_map_set "set the priority of an 802.1p value on a port" {
    in     u16   dev_id
    in     u16   port_id
    in     u8    dot1p
    in     u8    priority  "priority the value gets"
    example  0 1 5 6
}

call qx_qos_dscp_map_get "read the priority of a DSCP value on a port" {
    in     u16   dev_id
    in     u16   port_id
    in     u8    dscp
    out    u8*   priority  "receives the priority"
    example  0 1 46
}

call qx_qos_dscp_map_set "set the priority of a DSCP value on a port" {
    in     u16   dev_id
    in     u16   port_id
    in     u8    dscp
    in     u8    priority  "priority the value gets"
    example  0 1 46 6
}

call qx_qos_dot1p_map_get "read the priority of an 802.1p value on a port" {
    in     u16   dev_id
    in     u16   port_id
    in     u8    dot1p
    out    u8*   priority  "receives the priority"
    example  0 1 5
}

call qx_qos_map_mode_get "read which map a port uses" {
    in     u16   dev_id
    in     u16   port_id
    out    u32*  mode      "receives the map mode, an SDK code"
    example  0 1
}

call qx_qos_map_mode_set "choose the map a port uses" {
    in     u16   dev_id
    in     u16   port_id
    in     u32   mode      "map mode, an SDK code"
    example  0 1 1
}

table qos_mode "which map each port uses" {
    call   qx_qos_map_mode_get
    index  port_id  ports
}

table qos_dscp_map "priorities of DSCP values, by port" {
    call   qx_qos_dscp_map_get
    index  port_id  ports
    index  dscp     0..63
}

table qos_dot1p_map "priorities of 802.1p values, by port" {
    call   qx_qos_dot1p_map_get
    index  port_id  ports
    index  dot1p    0..7
}
