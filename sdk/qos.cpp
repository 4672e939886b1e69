// QoS maps: for each port a map mode, and two tables from which a packet gets its priority.
#include "device.h"
#include "numbers.h"
#include "sdk_calls.h"

namespace qxsim {

static qx_status check_port(unsigned port)
{
    return port < size_of(sized::ports) ? QX_OK : QX_BAD_PORT;
}

static qx_status check_dscp(unsigned port, unsigned dscp)
{
    if (port >= size_of(sized::ports))
        return QX_BAD_PORT;
    return dscp < dscp_count ? QX_OK : QX_BAD_DSCP;
}

static qx_status check_dot1p(unsigned port, unsigned dot1p)
{
    if (port >= size_of(sized::ports))
        return QX_BAD_PORT;
    return dot1p < dot1p_count ? QX_OK : QX_BAD_DOT1P;
}

qx_status qos_map_mode_get(device &here, unsigned short port_id, unsigned int &mode)
{
    const qx_status status = check_port(port_id);
    if (status == QX_OK)
        mode = number_of<place::map_mode_get>(here.ports[port_id].mode);
    return status;
}

qx_status qos_map_mode_set(device &here, unsigned short port_id, unsigned int mode)
{
    const qx_status status = check_port(port_id);
    if (status != QX_OK)
        return status;
    const std::uint32_t known = meaning<place::map_mode_set>(mode);
    if (known == unknown)
        return QX_BAD_MAP_MODE;
    here.ports[port_id].mode = known;
    return QX_OK;
}

qx_status qos_dscp_map_get(device &here, unsigned short port_id, unsigned char dscp,
                           unsigned char &priority)
{
    const qx_status status = check_dscp(port_id, dscp);
    if (status == QX_OK)
        priority = here.ports[port_id].dscp[dscp];
    return status;
}

qx_status qos_dscp_map_set(device &here, unsigned short port_id, unsigned char dscp,
                           unsigned char priority)
{
    const qx_status status = check_dscp(port_id, dscp);
    if (status != QX_OK)
        return status;
    if (priority > priority_limit)
        return QX_BAD_PRIORITY;
    here.ports[port_id].dscp[dscp] = priority;
    return QX_OK;
}

qx_status qos_dot1p_map_get(device &here, unsigned short port_id, unsigned char dot1p,
                            unsigned char &priority)
{
    const qx_status status = check_dot1p(port_id, dot1p);
    if (status == QX_OK)
        priority = here.ports[port_id].dot1p[dot1p];
    return status;
}

qx_status qos_dot1p_map_set(device &here, unsigned short port_id, unsigned char dot1p,
                            unsigned char priority)
{
    const qx_status status = check_dot1p(port_id, dot1p);
    if (status != QX_OK)
        return status;
    if (priority > priority_limit)
        return QX_BAD_PRIORITY;
    here.ports[port_id].dot1p[dot1p] = priority;
    return QX_OK;
}

} // namespace qxsim
