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
    EXPECT_EQ(QX_OK, qx_qos_map_mode_get(device, port, &mode));
    return mode;
}

unsigned dscp_priority(unsigned short device, unsigned short port, unsigned char dscp)
{
    unsigned char priority = 99;
    EXPECT_EQ(QX_OK, qx_qos_dscp_map_get(device, port, dscp, &priority));
    return priority;
}

unsigned dot1p_priority(unsigned short device, unsigned short port, unsigned char dot1p)
{
    unsigned char priority = 99;
    EXPECT_EQ(QX_OK, qx_qos_dot1p_map_get(device, port, dot1p, &priority));
    return priority;
}

} // namespace

TEST_F(qos, starts_with_the_classes_of_the_upper_bits)
{
    for (unsigned short port = 0; port < 32; ++port) {
        EXPECT_EQ(0U, map_mode(0, port));
        for (unsigned char dscp = 0; dscp < 64; ++dscp)
            EXPECT_EQ(dscp / 8U, dscp_priority(0, port, dscp));
        for (unsigned char dot1p = 0; dot1p < 8; ++dot1p)
            EXPECT_EQ(dot1p, dot1p_priority(0, port, dot1p));
    }
}

TEST_F(qos, a_map_belongs_to_its_port_and_device)
{
    EXPECT_EQ(QX_OK, qx_qos_map_mode_set(1, 31, 2));
    EXPECT_EQ(QX_OK, qx_qos_dscp_map_set(1, 31, 63, 1));
    EXPECT_EQ(QX_OK, qx_qos_dot1p_map_set(1, 31, 7, 0));
    EXPECT_EQ(2U, map_mode(1, 31));
    EXPECT_EQ(1U, dscp_priority(1, 31, 63));
    EXPECT_EQ(0U, dot1p_priority(1, 31, 7));
    EXPECT_EQ(0U, map_mode(1, 30));
    EXPECT_EQ(0U, map_mode(0, 31));
    EXPECT_EQ(7U, dscp_priority(0, 31, 63));
    EXPECT_EQ(7U, dscp_priority(1, 31, 62));
}

TEST_F(qos, refuses_what_is_out_of_range)
{
    const std::string before = snapshot();
    unsigned mode = 0xa5;
    unsigned char priority = 0xa5;
    EXPECT_EQ(QX_BAD_PORT, qx_qos_map_mode_set(0, 32, 0));
    EXPECT_EQ(QX_BAD_PORT, qx_qos_map_mode_get(0, 65535, &mode));
    EXPECT_EQ(QX_BAD_MAP_MODE, qx_qos_map_mode_set(0, 0, 3));
    EXPECT_EQ(QX_BAD_PORT, qx_qos_dscp_map_set(0, 32, 64, 8));
    EXPECT_EQ(QX_BAD_DSCP, qx_qos_dscp_map_set(0, 0, 64, 8));
    EXPECT_EQ(QX_BAD_PRIORITY, qx_qos_dscp_map_set(0, 0, 63, 8));
    EXPECT_EQ(QX_BAD_DSCP, qx_qos_dscp_map_get(0, 0, 255, &priority));
    EXPECT_EQ(QX_BAD_DOT1P, qx_qos_dot1p_map_set(0, 0, 8, 8));
    EXPECT_EQ(QX_BAD_PRIORITY, qx_qos_dot1p_map_set(0, 0, 7, 255));
    EXPECT_EQ(QX_BAD_DOT1P, qx_qos_dot1p_map_get(0, 0, 8, &priority));
    EXPECT_EQ(0xa5U, mode);
    EXPECT_EQ(0xa5U, priority);
    EXPECT_EQ(before, snapshot());
}

TEST_F(qos, a_port_set_back_is_a_port_as_new)
{
    const std::string before = snapshot();
    EXPECT_EQ(QX_OK, qx_qos_dscp_map_set(2, 4, 10, 7));
    EXPECT_NE(before, snapshot());
    EXPECT_EQ(QX_OK, qx_qos_dscp_map_set(2, 4, 10, 1));
    EXPECT_EQ(before, snapshot());
}

// ---------------------------------------------------------------------------------------- power

TEST_F(power, cores_start_stop_and_sleep)
{
    auto info = untouched<qx_pm_cpu_info_t>();
    EXPECT_EQ(QX_OK, qx_pm_cpu_info_get(0, &info));
    EXPECT_EQ(1000U, info.freq);
    EXPECT_EQ(1U, info.cpu_run[0]);
    EXPECT_EQ(1U, info.cpu_run[1]);
    EXPECT_EQ(QX_OK, qx_pm_cpu_frequency_set(0, 1200));
    EXPECT_EQ(QX_OK, qx_pm_cpu_power_down(0, 1));
    EXPECT_EQ(QX_OK, qx_pm_cpu_info_get(0, &info));
    EXPECT_EQ(1200U, info.freq);
    EXPECT_EQ(0U, info.cpu_run[1]);
    EXPECT_EQ(QX_OK, qx_pm_cpu_power_state_set(0, 1, 2));
    EXPECT_EQ(QX_OK, qx_pm_cpu_info_get(0, &info));
    EXPECT_EQ(2U, info.cpu_run[1]);
    EXPECT_EQ(QX_OK, qx_pm_cpu_power_up(0, 1));
    EXPECT_EQ(QX_OK, qx_pm_cpu_info_get(0, &info));
    EXPECT_EQ(1U, info.cpu_run[1]);
}

TEST_F(power, the_first_core_stays_on)
{
    EXPECT_EQ(QX_BOOT_CPU, qx_pm_cpu_power_down(0, 0));
    EXPECT_EQ(QX_BOOT_CPU, qx_pm_cpu_power_state_set(0, 0, 2));
    EXPECT_EQ(QX_OK, qx_pm_cpu_power_state_set(0, 0, 1));
    EXPECT_EQ(QX_OK, qx_pm_cpu_power_up(0, 0));
}

TEST_F(power, refuses_what_is_out_of_range)
{
    const std::string before = snapshot();
    unsigned state = 0xa5;
    unsigned char suspend = 0xa5;
    EXPECT_EQ(QX_BAD_FREQUENCY, qx_pm_cpu_frequency_set(0, 99));
    EXPECT_EQ(QX_BAD_FREQUENCY, qx_pm_cpu_frequency_set(0, 1201));
    EXPECT_EQ(QX_BAD_CPU, qx_pm_cpu_power_up(0, 2));
    EXPECT_EQ(QX_BAD_CPU, qx_pm_cpu_power_down(0, 0xffffffff));
    EXPECT_EQ(QX_BAD_STATE, qx_pm_cpu_power_state_set(0, 1, 3));
    EXPECT_EQ(QX_BAD_CONTROLLER, qx_pm_pcie_state_get(0, 2, &state));
    EXPECT_EQ(QX_BAD_CONTROLLER, qx_pm_sata_state_get(0, 2, &state));
    EXPECT_EQ(QX_BAD_CONTROLLER, qx_pm_usb_state_get(0, 2, &state));
    EXPECT_EQ(QX_BAD_STATE, qx_pm_pcie_state_set(0, 1, 3));
    EXPECT_EQ(QX_BAD_STATE, qx_pm_sata_state_set(0, 1, 3));
    EXPECT_EQ(QX_BAD_STATE, qx_pm_usb_state_set(0, 1, 3));
    EXPECT_EQ(QX_BAD_CONTROLLER, qx_pm_usb_state_set(0, 2, 0));
    EXPECT_EQ(QX_BAD_ENGINE, qx_pm_pe_suspend_get(0, 8, &suspend));
    EXPECT_EQ(QX_BAD_ENGINE, qx_pm_pe_suspend_set(0, 8, 2));
    EXPECT_EQ(QX_BAD_FLAG, qx_pm_pe_suspend_set(0, 7, 2));
    EXPECT_EQ(QX_BAD_FLAG, qx_pm_ne_suspend_set(0, 255));
    EXPECT_EQ(0xa5U, state);
    EXPECT_EQ(0xa5U, suspend);
    EXPECT_EQ(before, snapshot());
}

TEST_F(power, controllers_are_apart)
{
    EXPECT_EQ(QX_OK, qx_pm_pcie_state_set(0, 0, 0));
    EXPECT_EQ(QX_OK, qx_pm_sata_state_set(0, 1, 2));
    EXPECT_EQ(QX_OK, qx_pm_usb_state_set(3, 0, 2));
    using get = unsigned (*)(unsigned short, unsigned, unsigned *);
    const auto state = [](get function, unsigned short device, unsigned number) {
        unsigned value = 99;
        EXPECT_EQ(QX_OK, function(device, number, &value));
        return value;
    };
    EXPECT_EQ(0U, state(qx_pm_pcie_state_get, 0, 0));
    EXPECT_EQ(1U, state(qx_pm_pcie_state_get, 0, 1));
    EXPECT_EQ(1U, state(qx_pm_sata_state_get, 0, 0));
    EXPECT_EQ(2U, state(qx_pm_sata_state_get, 0, 1));
    EXPECT_EQ(1U, state(qx_pm_usb_state_get, 0, 0));
    EXPECT_EQ(2U, state(qx_pm_usb_state_get, 3, 0));
}

TEST_F(power, the_system_is_suspended_after_the_network_engine)
{
    unsigned char suspend = 9;
    EXPECT_EQ(QX_NOT_SUSPENDED, qx_pm_system_suspend_enter(0));
    EXPECT_EQ(QX_OK, qx_pm_pe_suspend_set(0, 7, 1));
    EXPECT_EQ(QX_NOT_SUSPENDED, qx_pm_system_suspend_enter(0));
    EXPECT_EQ(QX_OK, qx_pm_ne_suspend_set(0, 1));
    const std::string before = snapshot();
    EXPECT_EQ(QX_OK, qx_pm_system_suspend_enter(0));
    EXPECT_EQ(before, snapshot()) << "what was on before the suspension is on after it";
    EXPECT_EQ(1U, number_in(state(), "\"device\": 0", "suspends"));
    EXPECT_EQ(QX_OK, qx_pm_ne_suspend_get(0, &suspend));
    EXPECT_EQ(1U, suspend);
    EXPECT_EQ(QX_OK, qx_pm_pe_suspend_get(0, 7, &suspend));
    EXPECT_EQ(1U, suspend);
    EXPECT_EQ(QX_OK, qx_pm_pe_suspend_get(0, 6, &suspend));
    EXPECT_EQ(0U, suspend);
}

TEST_F(power, a_suspended_engine_answers_no_calls_but_those_of_power)
{
    qx_flow_t one = flow(1);
    qx_rtp_cfg_t cfg = rtp(1);
    unsigned id = 0;
    ASSERT_EQ(QX_OK, qx_rtp_translate_add(0, &cfg, &one, &id));
    ASSERT_EQ(QX_OK, qx_pm_pe_suspend_set(0, 1, 1));
    EXPECT_EQ(QX_NO_FLOW, qx_flow_get(0, 0, &one)) << "a packet engine refuses nothing";
    ASSERT_EQ(QX_OK, qx_pm_ne_suspend_set(0, 1));
    const std::string before = snapshot();
    one = flow(2);
    EXPECT_EQ(QX_SUSPENDED, qx_flow_add(0, &one));
    EXPECT_EQ(QX_SUSPENDED, qx_flow_get(0, 65535, &one)) << "before ranges";
    EXPECT_EQ(QX_NULL_POINTER, qx_flow_add(0, nullptr)) << "after pointers";
    EXPECT_EQ(QX_SUSPENDED, qx_qos_map_mode_set(0, 1, 1));
    EXPECT_EQ(QX_SUSPENDED, qx_ipsec_init(0));
    auto stats = untouched<qx_rtp_stats_t>();
    EXPECT_EQ(QX_SUSPENDED, qx_rtp_statistics_get(id, &stats));
    EXPECT_TRUE(is_untouched(stats));
    EXPECT_EQ(QX_OK, qx_ipsec_init(1)) << "another device";
    unsigned state = 0;
    EXPECT_EQ(QX_OK, qx_pm_usb_state_get(0, 1, &state));
    EXPECT_EQ(QX_OK, qx_pm_system_suspend_enter(0));
    EXPECT_EQ(before, snapshot());
    ASSERT_EQ(QX_OK, qx_pm_ne_suspend_set(0, 0));
    EXPECT_EQ(QX_OK, qx_flow_add(0, &one));
}
