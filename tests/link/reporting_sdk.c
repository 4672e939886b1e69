/* SDK functions that say on C's stdout what they were called with, and some that fill what they are
 * given. One prints without a line end, one prints nothing; the library never flushes. */
#include <qx_sdk.h>

#include <stdio.h>

unsigned int qx_qos_dscp_map_set(unsigned short dev_id, unsigned short port_id, unsigned char dscp,
                                 unsigned char priority)
{
    printf("sdk: dscp_map_set %u %u %u %u\n", dev_id, port_id, dscp, priority);
    return 0;
}

unsigned int qx_qos_map_mode_set(unsigned short dev_id, unsigned short port_id, unsigned int mode)
{
    printf("[sdk: map_mode_set %u %u %u]", dev_id, port_id, mode);
    return 0;
}

unsigned int qx_qos_map_mode_get(unsigned short dev_id, unsigned short port_id, unsigned int *mode)
{
    (void)dev_id;
    (void)port_id;
    if (mode != NULL)
        *mode = 4294967295u;
    return mode == NULL ? 8 : 0;
}

unsigned int qx_pm_system_suspend_enter(unsigned short dev_id)
{
    printf("sdk: system_suspend_enter %u\n", dev_id);
    return 0;
}

unsigned int qx_pm_cpu_info_get(unsigned short dev_id, qx_pm_cpu_info_t *cpu_info)
{
    (void)dev_id;
    if (cpu_info == NULL)
        return 8;
    cpu_info->freq = 1200;
    cpu_info->cpu_run[0] = 4294967295u;
    cpu_info->cpu_run[1] = 65536;
    return 0;
}

unsigned int qx_flow_add(unsigned short device_id, qx_flow_t *p_flow)
{
    printf("sdk: flow_add %u %s\n", device_id, p_flow == NULL ? "null" : "a flow");
    return 0;
}

unsigned int qx_flow_delete(unsigned short device_id, unsigned short flow_id)
{
    printf("sdk: flow_delete %u %u\n", device_id, flow_id);
    return 0;
}
