# QoS maps and power states: the first things to try on a board or on the simulated device.
# Run it with:  ./run examples/qos_and_power.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set port 1

# Let the port classify by DSCP (mode 1), and send expedited forwarding (DSCP 46) to priority 6.
must qx_qos_map_mode_set $device $port 1
must qx_qos_dscp_map_set $device $port 46 6

# The SDK answers through cells: bytes for priorities, words for modes and states.
set mode     [filled uint32 cell { must qx_qos_map_mode_get $device $port $cell }]
set priority [filled uint8  cell { must qx_qos_dscp_map_get $device $port 46 $cell }]
puts "port $port: map mode $mode, DSCP 46 has priority $priority"

# A DSCP has six bits. The shell passes 64 on, and the device refuses it: the status says so.
puts "DSCP 64 is refused with status [qx_qos_dscp_map_set $device $port 64 6]"

# Put the second core to sleep and look at the processor.
must qx_pm_cpu_power_down $device 1
set cpu [qx_pm_cpu_info_create]
must qx_pm_cpu_info_get $device $cpu
puts "cores: [qx_pm_cpu_info_get_cpu_run $cpu 0] [qx_pm_cpu_info_get_cpu_run $cpu 1]"
puts "the whole record:"
qx_pm_cpu_info_dump $cpu

# Wake it again, and switch the first PCIe controller off and on.
must qx_pm_cpu_power_up $device 1
foreach state {0 1} {
    must qx_pm_pcie_state_set $device 0 $state
    set read [filled uint32 cell { must qx_pm_pcie_state_get $device 0 $cell }]
    puts "PCIe controller 0 is in state $read"
}

# What the script created it also releases.
qx_data_free $cpu
puts done
