# QoS maps and power states: the first things to try on a board or on the simulated device.
# Run it with:  ./run examples/qos_and_power.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set port 1

# The SDK answers through cells: bytes for priorities, words for modes and states.
proc mode {}     { filled uint32 cell { must qx_qos_map_mode_get $::device $::port $cell } }
proc dscp {dscp} { filled uint8 cell { must qx_qos_dscp_map_get $::device $::port $dscp $cell } }
proc tag {dot1p} { filled uint8 cell { must qx_qos_dot1p_map_get $::device $::port $dot1p $cell } }
proc show {} {
    puts "port $::port: map mode [mode], DSCP 46 has priority [dscp 46], 802.1p 5 has [tag 5]"
}

# What is there now is put back at the end.
set before [list [mode] [dscp 46] [tag 5]]
show

# Let the port classify by DSCP (mode 1), and send expedited forwarding (DSCP 46) and what is tagged
# with 802.1p priority 5 to priority 6.
must qx_qos_map_mode_set $device $port 1
must qx_qos_dscp_map_set $device $port 46 6
must qx_qos_dot1p_map_set $device $port 5 6
show

# A DSCP has six bits. The shell takes any byte; the device refuses 64, and its status says why.
puts "DSCP 64: [expect QX_BAD_DSCP qx_qos_dscp_map_set $device $port 64 6]"

# Slow the processor down, stop its second core, and look at it.
set cpu [qx_pm_cpu_info_create]
must qx_pm_cpu_info_get $device $cpu
set frequency [qx_pm_cpu_info_get_freq $cpu]
must qx_pm_cpu_frequency_set $device 800
must qx_pm_cpu_power_down $device 1
must qx_pm_cpu_info_get $device $cpu
puts "[qx_pm_cpu_info_get_freq $cpu] MHz, cores [elements qx_pm_cpu_info_get_cpu_run $cpu 2]"
puts "the whole record:"
qx_pm_cpu_info_dump $cpu

# Wake the core again, and switch the first PCIe controller off and on.
must qx_pm_cpu_power_up $device 1
foreach state {0 1} {
    must qx_pm_pcie_state_set $device 0 $state
    set read [filled uint32 cell { must qx_pm_pcie_state_get $device 0 $cell }]
    puts "PCIe controller 0 is in state $read"
}

# The system goes to sleep after its network engine; the call returns when it has woken up.
must qx_pm_ne_suspend_set $device 1
must qx_pm_system_suspend_enter $device
must qx_pm_ne_suspend_set $device 0
puts "slept and woke up"

# As it was. What the script created it also releases.
must qx_pm_cpu_frequency_set $device $frequency
must qx_qos_map_mode_set $device $port [lindex $before 0]
must qx_qos_dscp_map_set $device $port 46 [lindex $before 1]
must qx_qos_dot1p_map_set $device $port 5 [lindex $before 2]
show
release $cpu
puts done
