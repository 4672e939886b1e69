// QoS maps and power states: values at the start, what a set changes, and the statuses of what is
// out of range.
#include "simulated.h"

using namespace simulated;

namespace {

class qos : public devices
{};
class power : public devices
{};

unsigned map_mode(unsigned short device, unsigned short port)
{
    unsigned mode = 99;
    EXPECT_EQ(qx_qos_map_mode_get(device, port, &mode), QX_OK);
    return mode;
}

unsigned dscp_priority(unsigned short device, unsigned short port, unsigned char dscp)
{
    unsigned char priority = 99;
    EXPECT_EQ(qx_qos_dscp_map_get(device, port, dscp, &priority), QX_OK);
    return priority;
}

unsigned dot1p_priority(unsigned short device, unsigned short port, unsigned char dot1p)
{
    unsigned char priority = 99;
    EXPECT_EQ(qx_qos_dot1p_map_get(device, port, dot1p, &priority), QX_OK);
    return priority;
}

} // namespace

TEST_F(qos, starts_with_the_classes_of_the_upper_bits)
{
    for (unsigned short port = 0; port < 32; ++port) {
        EXPECT_EQ(map_mode(0, port), 0U);
        for (unsigned char dscp = 0; dscp < 64; ++dscp)
            EXPECT_EQ(dscp / 8U, dscp_priority(0, port, dscp));
        for (unsigned char dot1p = 0; dot1p < 8; ++dot1p)
            EXPECT_EQ(dot1p, dot1p_priority(0, port, dot1p));
    }
}

TEST_F(qos, a_map_belongs_to_its_port_and_device)
{
    EXPECT_EQ(qx_qos_map_mode_set(1, 31, 2), QX_OK);
    EXPECT_EQ(qx_qos_dscp_map_set(1, 31, 63, 1), QX_OK);
    EXPECT_EQ(qx_qos_dot1p_map_set(1, 31, 7, 0), QX_OK);
    EXPECT_EQ(map_mode(1, 31), 2U);
    EXPECT_EQ(dscp_priority(1, 31, 63), 1U);
    EXPECT_EQ(dot1p_priority(1, 31, 7), 0U);
    EXPECT_EQ(map_mode(1, 30), 0U);
    EXPECT_EQ(map_mode(0, 31), 0U);
    EXPECT_EQ(dscp_priority(0, 31, 63), 7U);
    EXPECT_EQ(dscp_priority(1, 31, 62), 7U);
}

TEST_F(qos, refuses_what_is_out_of_range)
{
    const std::string before = snapshot();
    unsigned mode = 0xa5;
    unsigned char priority = 0xa5;
    EXPECT_EQ(qx_qos_map_mode_set(0, 32, 0), QX_BAD_PORT);
    EXPECT_EQ(qx_qos_map_mode_get(0, 65535, &mode), QX_BAD_PORT);
    EXPECT_EQ(qx_qos_map_mode_set(0, 0, 3), QX_BAD_MAP_MODE);
    EXPECT_EQ(qx_qos_dscp_map_set(0, 32, 64, 8), QX_BAD_PORT);
    EXPECT_EQ(qx_qos_dscp_map_set(0, 0, 64, 8), QX_BAD_DSCP);
    EXPECT_EQ(qx_qos_dscp_map_set(0, 0, 63, 8), QX_BAD_PRIORITY);
    EXPECT_EQ(qx_qos_dscp_map_get(0, 0, 255, &priority), QX_BAD_DSCP);
    EXPECT_EQ(qx_qos_dot1p_map_set(0, 0, 8, 8), QX_BAD_DOT1P);
    EXPECT_EQ(qx_qos_dot1p_map_set(0, 0, 7, 255), QX_BAD_PRIORITY);
    EXPECT_EQ(qx_qos_dot1p_map_get(0, 0, 8, &priority), QX_BAD_DOT1P);
    EXPECT_EQ(mode, 0xa5U);
    EXPECT_EQ(priority, 0xa5U);
    EXPECT_EQ(before, snapshot());
}

TEST_F(qos, a_port_set_back_is_a_port_as_new)
{
    const std::string before = snapshot();
    EXPECT_EQ(qx_qos_dscp_map_set(2, 4, 10, 7), QX_OK);
    EXPECT_NE(before, snapshot());
    EXPECT_EQ(qx_qos_dscp_map_set(2, 4, 10, 1), QX_OK);
    EXPECT_EQ(before, snapshot());
}

// ---------------------------------------------------------------------------------------- power

TEST_F(power, cores_start_stop_and_sleep)
{
    auto info = untouched<qx_pm_cpu_info_t>();
    EXPECT_EQ(qx_pm_cpu_info_get(0, &info), QX_OK);
    EXPECT_EQ(info.freq, 1000U);
    EXPECT_EQ(info.cpu_run[0], 1U);
    EXPECT_EQ(info.cpu_run[1], 1U);
    EXPECT_EQ(qx_pm_cpu_frequency_set(0, 1200), QX_OK);
    EXPECT_EQ(qx_pm_cpu_power_down(0, 1), QX_OK);
    EXPECT_EQ(qx_pm_cpu_info_get(0, &info), QX_OK);
    EXPECT_EQ(info.freq, 1200U);
    EXPECT_EQ(info.cpu_run[1], 0U);
    EXPECT_EQ(qx_pm_cpu_power_state_set(0, 1, 2), QX_OK);
    EXPECT_EQ(qx_pm_cpu_info_get(0, &info), QX_OK);
    EXPECT_EQ(info.cpu_run[1], 2U);
    EXPECT_EQ(qx_pm_cpu_power_up(0, 1), QX_OK);
    EXPECT_EQ(qx_pm_cpu_info_get(0, &info), QX_OK);
    EXPECT_EQ(info.cpu_run[1], 1U);
}

TEST_F(power, the_first_core_stays_on)
{
    EXPECT_EQ(qx_pm_cpu_power_down(0, 0), QX_BOOT_CPU);
    EXPECT_EQ(qx_pm_cpu_power_state_set(0, 0, 2), QX_BOOT_CPU);
    EXPECT_EQ(qx_pm_cpu_power_state_set(0, 0, 1), QX_OK);
    EXPECT_EQ(qx_pm_cpu_power_up(0, 0), QX_OK);
}

TEST_F(power, refuses_what_is_out_of_range)
{
    const std::string before = snapshot();
    unsigned state = 0xa5;
    unsigned char suspend = 0xa5;
    EXPECT_EQ(qx_pm_cpu_frequency_set(0, 99), QX_BAD_FREQUENCY);
    EXPECT_EQ(qx_pm_cpu_frequency_set(0, 1201), QX_BAD_FREQUENCY);
    EXPECT_EQ(qx_pm_cpu_power_up(0, 2), QX_BAD_CPU);
    EXPECT_EQ(qx_pm_cpu_power_down(0, 0xffffffff), QX_BAD_CPU);
    EXPECT_EQ(qx_pm_cpu_power_state_set(0, 1, 3), QX_BAD_STATE);
    EXPECT_EQ(qx_pm_pcie_state_get(0, 2, &state), QX_BAD_CONTROLLER);
    EXPECT_EQ(qx_pm_sata_state_get(0, 2, &state), QX_BAD_CONTROLLER);
    EXPECT_EQ(qx_pm_usb_state_get(0, 2, &state), QX_BAD_CONTROLLER);
    EXPECT_EQ(qx_pm_pcie_state_set(0, 1, 3), QX_BAD_STATE);
    EXPECT_EQ(qx_pm_sata_state_set(0, 1, 3), QX_BAD_STATE);
    EXPECT_EQ(qx_pm_usb_state_set(0, 1, 3), QX_BAD_STATE);
    EXPECT_EQ(qx_pm_usb_state_set(0, 2, 0), QX_BAD_CONTROLLER);
    EXPECT_EQ(qx_pm_pe_suspend_get(0, 8, &suspend), QX_BAD_ENGINE);
    EXPECT_EQ(qx_pm_pe_suspend_set(0, 8, 2), QX_BAD_ENGINE);
    EXPECT_EQ(qx_pm_pe_suspend_set(0, 7, 2), QX_BAD_FLAG);
    EXPECT_EQ(qx_pm_ne_suspend_set(0, 255), QX_BAD_FLAG);
    EXPECT_EQ(state, 0xa5U);
    EXPECT_EQ(suspend, 0xa5U);
    EXPECT_EQ(before, snapshot());
}

TEST_F(power, controllers_are_apart)
{
    EXPECT_EQ(qx_pm_pcie_state_set(0, 0, 0), QX_OK);
    EXPECT_EQ(qx_pm_sata_state_set(0, 1, 2), QX_OK);
    EXPECT_EQ(qx_pm_usb_state_set(3, 0, 2), QX_OK);
    using get = unsigned (*)(unsigned short, unsigned, unsigned *);
    const auto state = [](get function, unsigned short device, unsigned number) {
        unsigned value = 99;
        EXPECT_EQ(function(device, number, &value), QX_OK);
        return value;
    };
    EXPECT_EQ(state(qx_pm_pcie_state_get, 0, 0), 0U);
    EXPECT_EQ(state(qx_pm_pcie_state_get, 0, 1), 1U);
    EXPECT_EQ(state(qx_pm_sata_state_get, 0, 0), 1U);
    EXPECT_EQ(state(qx_pm_sata_state_get, 0, 1), 2U);
    EXPECT_EQ(state(qx_pm_usb_state_get, 0, 0), 1U);
    EXPECT_EQ(state(qx_pm_usb_state_get, 3, 0), 2U);
}

TEST_F(power, the_system_is_suspended_after_the_network_engine)
{
    unsigned char suspend = 9;
    EXPECT_EQ(qx_pm_system_suspend_enter(0), QX_NOT_SUSPENDED);
    EXPECT_EQ(qx_pm_pe_suspend_set(0, 7, 1), QX_OK);
    EXPECT_EQ(qx_pm_system_suspend_enter(0), QX_NOT_SUSPENDED);
    EXPECT_EQ(qx_pm_ne_suspend_set(0, 1), QX_OK);
    const std::string before = snapshot();
    EXPECT_EQ(qx_pm_system_suspend_enter(0), QX_OK);
    EXPECT_EQ(before, snapshot()) << "what was on before the suspension is on after it";
    EXPECT_EQ(number_in(state(), "\"device\": 0", "suspends"), 1U);
    EXPECT_EQ(qx_pm_ne_suspend_get(0, &suspend), QX_OK);
    EXPECT_EQ(suspend, 1U);
    EXPECT_EQ(qx_pm_pe_suspend_get(0, 7, &suspend), QX_OK);
    EXPECT_EQ(suspend, 1U);
    EXPECT_EQ(qx_pm_pe_suspend_get(0, 6, &suspend), QX_OK);
    EXPECT_EQ(suspend, 0U);
}

TEST_F(power, a_suspended_engine_answers_no_calls_but_those_of_power)
{
    qx_flow_t one = flow(1);
    qx_rtp_cfg_t cfg = rtp(1);
    unsigned id = 0;
    ASSERT_EQ(qx_rtp_translate_add(0, &cfg, &one, &id), QX_OK);
    ASSERT_EQ(qx_pm_pe_suspend_set(0, 1, 1), QX_OK);
    EXPECT_EQ(qx_flow_get(0, 0, &one), QX_NO_FLOW) << "a packet engine refuses nothing";
    ASSERT_EQ(qx_pm_ne_suspend_set(0, 1), QX_OK);
    const std::string before = snapshot();
    one = flow(2);
    EXPECT_EQ(qx_flow_add(0, &one), QX_SUSPENDED);
    EXPECT_EQ(qx_flow_get(0, 65535, &one), QX_SUSPENDED) << "before ranges";
    EXPECT_EQ(qx_flow_add(0, nullptr), QX_NULL_POINTER) << "after pointers";
    EXPECT_EQ(qx_qos_map_mode_set(0, 1, 1), QX_SUSPENDED);
    EXPECT_EQ(qx_ipsec_init(0), QX_SUSPENDED);
    auto stats = untouched<qx_rtp_stats_t>();
    EXPECT_EQ(qx_rtp_statistics_get(id, &stats), QX_SUSPENDED);
    EXPECT_TRUE(is_untouched(stats));
    EXPECT_EQ(qx_ipsec_init(1), QX_OK) << "another device";
    unsigned state = 0;
    EXPECT_EQ(qx_pm_usb_state_get(0, 1, &state), QX_OK);
    EXPECT_EQ(qx_pm_system_suspend_enter(0), QX_OK);
    EXPECT_EQ(before, snapshot());
    ASSERT_EQ(qx_pm_ne_suspend_set(0, 0), QX_OK);
    EXPECT_EQ(qx_flow_add(0, &one), QX_OK);
}
