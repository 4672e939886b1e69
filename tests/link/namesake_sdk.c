/* A library whose inner functions are named like helpers of the shell, visible to the whole
 * process, and called by its own entries. Neither side may reach the other's. */
#include <qx_sdk.h>

#include <stdio.h>

void qx_flow_dump(qx_flow_t *flow)
{
    (void)flow;
    printf("the library's qx_flow_dump\n");
}

void qx_pm_cpu_info_dump(qx_pm_cpu_info_t *info)
{
    (void)info;
    printf("the library's qx_pm_cpu_info_dump\n");
}

int qx_l3_route_init(int tables)
{
    printf("the library's qx_l3_route_init\n");
    return tables + 41;
}

void *qx_uint32_create(const char *name)
{
    printf("the library's qx_uint32_create of %s\n", name);
    return NULL;
}

unsigned int qx_flow_add(unsigned short device_id, qx_flow_t *p_flow)
{
    (void)device_id;
    qx_flow_dump(p_flow);
    return 0;
}

unsigned int qx_pm_cpu_info_get(unsigned short dev_id, qx_pm_cpu_info_t *cpu_info)
{
    (void)dev_id;
    qx_pm_cpu_info_dump(cpu_info);
    qx_uint32_create("itself");
    return 0;
}

unsigned int qx_l3_route_shut(unsigned short device_id)
{
    (void)device_id;
    return (unsigned int)qx_l3_route_init(1);
}
