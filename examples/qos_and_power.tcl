# QoS maps and power states: the first things to try on a board or on the simulated device.
# Run it with:  ./run examples/qos_and_power.tcl
package require qx

set device 0
set port 1

# What a port does with DSCP 46, and with what is tagged with 802.1p priority 5.
proc show {} {
    global device port
    puts "port $port: mode [qx::call -words qx_qos_map_mode_get $device $port],\
        DSCP 46 has priority [qx::call qx_qos_dscp_map_get $device $port 46],\
        802.1p 5 has [qx::call qx_qos_dot1p_map_get $device $port 5]"
}

# What is there now is put back at the end.
set mode [qx::call qx_qos_map_mode_get $device $port]
set dscp [qx::call qx_qos_dscp_map_get $device $port 46]
set dot1p [qx::call qx_qos_dot1p_map_get $device $port 5]
show

# Let the port classify by DSCP, and send expedited forwarding (DSCP 46) to priority 6.
qx::call qx_qos_map_mode_set $device $port dscp
qx::call qx_qos_dscp_map_set $device $port 46 6
qx::call qx_qos_dot1p_map_set $device $port 5 6
show

# A DSCP has six bits. The shell takes any byte; the device refuses 64, and its status says why.
set status [qx::check -allow QX_BAD_DSCP qx_qos_dscp_map_set $device $port 64 6]
puts "DSCP 64: status $status, [qx::catalogue::status_meaning $status]"

# Slow the processor down, stop its second core, and look at it.
set frequency [dict get [qx::call qx_pm_cpu_info_get $device] freq]
qx::call qx_pm_cpu_frequency_set $device 800
qx::call qx_pm_cpu_power_down $device 1
puts "processor: [qx::call qx_pm_cpu_info_get $device]"
qx::call qx_pm_cpu_power_up $device 1

# Switch the first PCIe controller off and on.
foreach state {off on} {
    qx::call qx_pm_pcie_state_set $device 0 $state
    puts "PCIe controller 0 is [qx::call -words qx_pm_pcie_state_get $device 0]"
}

# The system goes to sleep after its network engine; the call returns when it has woken up.
qx::call qx_pm_ne_suspend_set $device 1
qx::call qx_pm_system_suspend_enter $device
qx::call qx_pm_ne_suspend_set $device 0
puts "slept and woke up"

# As it was.
qx::call qx_pm_cpu_frequency_set $device $frequency
qx::call qx_qos_map_mode_set $device $port $mode
qx::call qx_qos_dscp_map_set $device $port 46 $dscp
qx::call qx_qos_dot1p_map_set $device $port 5 $dot1p
show
