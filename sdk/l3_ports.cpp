// NAT subnets by interface, and IP MTUs by port and encapsulation.
#include "device.h"
#include "numbers.h"
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

// Checks port and encapsulation, a meaning.
static qx_status check_encap(const port_encap_key &key)
{
    if (key.port >= size_of(sized::ports))
        return QX_BAD_PORT;
    return key.encap == unknown ? QX_BAD_ENCAP : QX_OK;
}

qx_status port_encap_ip_mtu_add(device &here, unsigned short port_id, unsigned int encap,
                                unsigned int ip_mtu)
{
    const port_encap_key key{port_id, meaning<place::mtu_add_encap>(encap)};
    const qx_status status = check_encap(key);
    if (status != QX_OK)
        return status;
    if (ip_mtu < mtu_least || ip_mtu > mtu_limit)
        return QX_BAD_MTU;
    if (here.port_mtus.find(key) != nullptr)
        return QX_EXISTS;
    if (here.port_mtus.full())
        return QX_TABLE_FULL;
    here.port_mtus.add(key, ip_mtu);
    return QX_OK;
}

qx_status port_encap_ip_mtu_delete(device &here, unsigned short port_id, unsigned int encap)
{
    const port_encap_key key{port_id, meaning<place::mtu_delete_encap>(encap)};
    const qx_status status = check_encap(key);
    if (status != QX_OK)
        return status;
    if (here.port_mtus.find(key) == nullptr)
        return missing(here.port_mtus, key, QX_NO_MTU);
    here.port_mtus.remove(key);
    return QX_OK;
}

qx_status port_encap_ip_mtu_get(device &here, unsigned short port_id, unsigned int encap,
                                unsigned int &ip_mtu)
{
    const port_encap_key key{port_id, meaning<place::mtu_get_encap>(encap)};
    const qx_status status = check_encap(key);
    if (status != QX_OK)
        return status;
    const std::uint32_t *const mtu = here.port_mtus.find(key);
    if (mtu == nullptr)
        return QX_NO_MTU;
    ip_mtu = *mtu;
    return QX_OK;
}

} // namespace qxsim
