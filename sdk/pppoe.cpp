// PPPoE ports, each bound to a physical port, and their encapsulation.
#include "device.h"
#include "sdk_calls.h"

namespace qxsim {

qx_status pppoe_port_add(device &here, unsigned short port_id, unsigned short pppoe_port_id)
{
    if (port_id >= size_of(sized::ports))
        return QX_BAD_PORT;
    if (here.pppoe.find(pppoe_port_id) != nullptr)
        return QX_EXISTS;
    if (here.pppoe.full())
        return QX_TABLE_FULL;
    here.pppoe.add(pppoe_port_id, {port_id, 0, {}});
    return QX_OK;
}

qx_status pppoe_port_delete(device &here, unsigned short pppoe_port_id)
{
    if (here.pppoe.find(pppoe_port_id) == nullptr)
        return missing(here.pppoe, pppoe_port_id, QX_NO_PPPOE_PORT);
    here.pppoe.remove(pppoe_port_id);
    return QX_OK;
}

qx_status pppoe_port_config_get(device &here, unsigned short pppoe_port_id,
                                qx_pppoe_port_cfg_t &p_cfg)
{
    const pppoe_entry *const entry = here.pppoe.find(pppoe_port_id);
    if (entry == nullptr)
        return QX_NO_PPPOE_PORT;
    if (entry->configured == 0)
        return QX_NO_ENCAP;
    entry->cfg.copy_to(p_cfg);
    return QX_OK;
}

qx_status pppoe_port_encap_set(device &here, unsigned short pppoe_port_id,
                               const qx_pppoe_port_cfg_t &p_cfg)
{
    if (p_cfg.tx_phy_port >= size_of(sized::ports))
        return QX_BAD_PORT;
    if (p_cfg.pppoe_session_id == 0)
        return QX_BAD_SESSION_ID;
    pppoe_entry *const entry = here.pppoe.find(pppoe_port_id);
    if (entry == nullptr)
        return QX_NO_PPPOE_PORT;
    entry->cfg = stored{p_cfg};
    entry->configured = 1;
    return QX_OK;
}

} // namespace qxsim
