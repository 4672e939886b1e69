// NAT subnets by interface, and IP MTUs by port and encapsulation.
#include "codes.h"
#include "device.h"
#include "sdk_calls.h"

namespace qxsim {

qx_status nat_subnet_add(device &here, unsigned int intf_id, const qx_ip_address_t &nat_subnet)
{
    if (!valid_address(nat_subnet))
        return QX_BAD_ADDRESS;
    const subnet_key key{intf_id, prefix_of(nat_subnet)};
    if (here.subnets.find(key) != nullptr)
        return QX_EXISTS;
    if (here.subnets.full())
        return QX_TABLE_FULL;
    here.subnets.add(key, stored{nat_subnet});
    return QX_OK;
}

qx_status nat_subnet_delete(device &here, unsigned int intf_id, const qx_ip_address_t &nat_subnet)
{
    if (!valid_address(nat_subnet))
        return QX_BAD_ADDRESS;
    const subnet_key key{intf_id, prefix_of(nat_subnet)};
    if (here.subnets.find(key) == nullptr)
        return missing(here.subnets, key, QX_NO_SUBNET);
    here.subnets.remove(key);
    return QX_OK;
}

static qx_status check_encap(unsigned port, unsigned encap)
{
    if (port >= port_count)
        return QX_BAD_PORT;
    return encap > encap_limit ? QX_BAD_ENCAP : QX_OK;
}

qx_status port_encap_ip_mtu_add(device &here, unsigned short port_id, unsigned int encap,
                                unsigned int ip_mtu)
{
    const qx_status status = check_encap(port_id, encap);
    if (status != QX_OK)
        return status;
    if (ip_mtu < mtu_least || ip_mtu > mtu_limit)
        return QX_BAD_MTU;
    const port_encap_key key{port_id, encap};
    if (here.port_mtus.find(key) != nullptr)
        return QX_EXISTS;
    here.port_mtus.add(key, ip_mtu);
    return QX_OK;
}

qx_status port_encap_ip_mtu_delete(device &here, unsigned short port_id, unsigned int encap)
{
    const qx_status status = check_encap(port_id, encap);
    if (status != QX_OK)
        return status;
    const port_encap_key key{port_id, encap};
    if (here.port_mtus.find(key) == nullptr)
        return missing(here.port_mtus, key, QX_NO_MTU);
    here.port_mtus.remove(key);
    return QX_OK;
}

qx_status port_encap_ip_mtu_get(device &here, unsigned short port_id, unsigned int encap,
                                unsigned int &ip_mtu)
{
    const qx_status status = check_encap(port_id, encap);
    if (status != QX_OK)
        return status;
    const std::uint32_t *const mtu = here.port_mtus.find({port_id, encap});
    if (mtu == nullptr)
        return QX_NO_MTU;
    ip_mtu = *mtu;
    return QX_OK;
}

} // namespace qxsim
