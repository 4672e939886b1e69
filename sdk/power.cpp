// Power management: clock and cores, controllers, suspend. CPU 0 runs the caller, so it is always
// on. The system can be suspended once the network engine is; it wakes up before the call returns.
#include "device.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

// `state` is a power_state, or `unknown`.
static qx_status set_cpu(device &here, unsigned cpu, unsigned state)
{
    if (cpu >= cpu_count)
        return QX_BAD_CPU;
    if (state == unknown)
        return QX_BAD_STATE;
    if (cpu == 0 && state != power_on)
        return QX_BOOT_CPU;
    here.power.cpu[cpu] = state;
    return QX_OK;
}

template <place At, class States>
static qx_status get_state(const States &states, unsigned number, unsigned &state)
{
    if (number >= states.size())
        return QX_BAD_CONTROLLER;
    state = number_of<At>(states[number]);
    return QX_OK;
}

template <place At, class States>
static qx_status set_state(States &states, unsigned number, unsigned state)
{
    if (number >= states.size())
        return QX_BAD_CONTROLLER;
    const std::uint32_t known = meaning<At>(state);
    if (known == unknown)
        return QX_BAD_STATE;
    states[number] = known;
    return QX_OK;
}

qx_status pm_cpu_info_get(device &here, qx_pm_cpu_info_t &cpu_info)
{
    cpu_info.freq = here.power.frequency;
    for (unsigned cpu = 0; cpu < cpu_count; ++cpu)
        cpu_info.cpu_run[cpu] = number_of<place::cpu_run>(here.power.cpu[cpu]);
    return QX_OK;
}

qx_status pm_cpu_frequency_set(device &here, unsigned int freq)
{
    if (freq < frequency_least || freq > frequency_limit)
        return QX_BAD_FREQUENCY;
    here.power.frequency = freq;
    return QX_OK;
}

qx_status pm_cpu_power_up(device &here, unsigned int cpu_id)
{
    return set_cpu(here, cpu_id, power_on);
}

qx_status pm_cpu_power_down(device &here, unsigned int cpu_id)
{
    return set_cpu(here, cpu_id, power_off);
}

qx_status pm_cpu_power_state_set(device &here, unsigned int cpu_id, unsigned int cpu_state)
{
    return set_cpu(here, cpu_id, meaning<place::cpu_state>(cpu_state));
}

qx_status pm_pcie_state_get(device &here, unsigned int pcie_id, unsigned int &state)
{
    return get_state<place::pcie_get>(here.power.pcie, pcie_id, state);
}

qx_status pm_pcie_state_set(device &here, unsigned int pcie_id, unsigned int state)
{
    return set_state<place::pcie_set>(here.power.pcie, pcie_id, state);
}

qx_status pm_sata_state_get(device &here, unsigned int sata_id, unsigned int &state)
{
    return get_state<place::sata_get>(here.power.sata, sata_id, state);
}

qx_status pm_sata_state_set(device &here, unsigned int sata_id, unsigned int state)
{
    return set_state<place::sata_set>(here.power.sata, sata_id, state);
}

qx_status pm_usb_state_get(device &here, unsigned int usb_id, unsigned int &state)
{
    return get_state<place::usb_get>(here.power.usb, usb_id, state);
}

qx_status pm_usb_state_set(device &here, unsigned int usb_id, unsigned int state)
{
    return set_state<place::usb_set>(here.power.usb, usb_id, state);
}

qx_status pm_ne_suspend_get(device &here, unsigned char &suspend)
{
    suspend = static_cast<std::uint8_t>(here.power.network_engine_suspended);
    return QX_OK;
}

qx_status pm_ne_suspend_set(device &here, unsigned char suspend)
{
    if (suspend > 1)
        return QX_BAD_FLAG;
    here.power.network_engine_suspended = suspend;
    return QX_OK;
}

qx_status pm_pe_suspend_get(device &here, unsigned int pe_id, unsigned char &suspend)
{
    if (pe_id >= packet_engine_count)
        return QX_BAD_ENGINE;
    suspend = here.power.packet_engine_suspended[pe_id];
    return QX_OK;
}

qx_status pm_pe_suspend_set(device &here, unsigned int pe_id, unsigned char suspend)
{
    if (pe_id >= packet_engine_count)
        return QX_BAD_ENGINE;
    if (suspend > 1)
        return QX_BAD_FLAG;
    here.power.packet_engine_suspended[pe_id] = suspend;
    return QX_OK;
}

qx_status pm_system_suspend_enter(device &here)
{
    if (here.power.network_engine_suspended == 0)
        return QX_NOT_SUSPENDED;
    ++here.power.suspends;
    return QX_OK;
}

} // namespace qxsim
