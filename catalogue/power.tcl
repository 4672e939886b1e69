# Power management: clock and run state of the two CPU cores, power state of the PCIe, SATA and
# USB controllers, suspension of the network engine, of single packet engines and of the system.
# States and controller numbers are codes of the SDK.

area power "Power management"

record qx_pm_cpu_info_t 12 "clock and run state of the CPU cores" {
    0   u32     freq                 "processor clock frequency, in the SDK's unit"
    4   u32[2]  cpu_run  -set-as u8  "run state by core; read as 32 bits, set from 8"
}

call qx_pm_cpu_info_get "read clock and run state of the CPU cores" {
    in     u16                dev_id
    out    qx_pm_cpu_info_t*  cpu_info   "receives clock and run states"
    example  0
}

call qx_pm_cpu_frequency_set "set the processor clock" {
    in     u16                dev_id
    in     u32                freq       "frequency, in the SDK's unit"
    example  0 600
}

call qx_pm_cpu_power_up "power a CPU core up" {
    in     u16                dev_id
    in     u32                cpu_id
    example  0 1
}

call qx_pm_cpu_power_down "power a CPU core down" {
    in     u16                dev_id
    in     u32                cpu_id
    example  0 1
}

call qx_pm_cpu_power_state_set "put a CPU core into a power state" {
    in     u16                dev_id
    in     u32                cpu_id
    in     u32                cpu_state  "power state, an SDK code"
    example  0 1 2
}

call qx_pm_pcie_state_get "read the power state of a PCIe controller" {
    in     u16                dev_id
    in     u32                pcie_id
    out    u32*               state      "receives the power state, an SDK code"
    example  0 1
}

call qx_pm_pcie_state_set "put a PCIe controller into a power state" {
    in     u16                dev_id
    in     u32                pcie_id
    in     u32                state      "power state, an SDK code"
    example  0 1 0
}

call qx_pm_sata_state_get "read the power state of a SATA controller" {
    in     u16                dev_id
    in     u32                sata_id
    out    u32*               state      "receives the power state, an SDK code"
    example  0 1
}

call qx_pm_sata_state_set "put a SATA controller into a power state" {
    in     u16                dev_id
    in     u32                sata_id
    in     u32                state      "power state, an SDK code"
    example  0 1 0
}

call qx_pm_usb_state_get "read the power state of a USB controller" {
    in     u16                dev_id
    in     u32                usb_id
    out    u32*               state      "receives the power state, an SDK code"
    example  0 1
}

call qx_pm_usb_state_set "put a USB controller into a power state" {
    in     u16                dev_id
    in     u32                usb_id
    in     u32                state      "power state, an SDK code"
    example  0 1 0
}

call qx_pm_ne_suspend_get "read whether the network engine is suspended" {
    in     u16                dev_id
    out    u8*                suspend    "receives the suspend flag"
    example  0
}

call qx_pm_ne_suspend_set "suspend or resume the network engine" {
    in     u16                dev_id
    in     u8                 suspend    "suspend flag"
    example  0 1
}

call qx_pm_pe_suspend_get "read whether a packet engine is suspended" {
    in     u16                dev_id
    in     u32                pe_id
    out    u8*                suspend    "receives the suspend flag"
    example  0 3
}

call qx_pm_pe_suspend_set "suspend or resume a packet engine" {
    in     u16                dev_id
    in     u32                pe_id
    in     u8                 suspend    "suspend flag"
    example  0 3 1
}

call qx_pm_system_suspend_enter "enter system suspend" {
    in     u16                dev_id
    after    qx_pm_ne_suspend_set
    example  0
}

table power "clock, power states and suspension" {
    call   qx_pm_cpu_info_get    cpu
    call   qx_pm_pcie_state_get  pcie
    index  pcie_id  0..255
    ends   QX_BAD_CONTROLLER
    call   qx_pm_sata_state_get  sata
    index  sata_id  0..255
    ends   QX_BAD_CONTROLLER
    call   qx_pm_usb_state_get   usb
    index  usb_id   0..255
    ends   QX_BAD_CONTROLLER
    call   qx_pm_ne_suspend_get  network_engine
    call   qx_pm_pe_suspend_get  packet_engine
    index  pe_id    0..255
    ends   QX_BAD_ENGINE
}
