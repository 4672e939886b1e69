// Random calls of all 83 functions on one device: a world of records, cells and ids supplies the
// arguments, mostly valid ones, so that some calls succeed and some fail.
#pragma once

#include "simulated.h"

#include <random>
#include <vector>

namespace simulated {

class world
{
    /// The kinds of objects with ids.
    enum kind { rtp_id, translation_id, nexthop_id, tunnel_id, spd_id, policy_id, sa_id, kinds };

public:
    explicit world(std::uint32_t seed) : random_(seed) {}

    /// Makes one random call; stores the function's name in `name` and returns the status. `quiet`
    /// is false if the call failed but wrote something.
    unsigned call(const char *&name, bool &quiet);

    /// Forgets all ids; to be called when the devices are reset.
    void forget();

private:
    unsigned below(unsigned limit) { return random_() % limit; }
    bool rarely() { return below(16) == 0; }
    /// A number below a limit, occasionally one far above it.
    unsigned number(unsigned limit)
    {
        return rarely() ? below(2) * 0x7fffff00U + below(300) : below(limit);
    }
    unsigned short word(unsigned limit) { return static_cast<unsigned short>(number(limit)); }
    unsigned char byte(unsigned limit) { return static_cast<unsigned char>(number(limit)); }
    unsigned short device() { return below(8) == 0 ? word(6) : static_cast<unsigned short>(0); }
    /// One of the last ids of a kind, occasionally one of another kind, or any number.
    unsigned id(kind wanted);

    qx_ip_address_t any_address();
    qx_flow_t any_flow();
    qx_l3_nexthop_t any_nexthop();
    qx_tunnel_cfg_t any_tunnel();
    qx_ipsec_policy_t any_policy();
    qx_ipsec_sa_t any_association(unsigned way);
    qx_pptp_sa_t any_pptp();

    /// Keeps the id in `cell_` if the call succeeded.
    unsigned gives(kind given, unsigned status);

    unsigned call_fixed(unsigned which, const char *&name);
    unsigned call_flows(unsigned which, const char *&name);
    unsigned call_l3(unsigned which, const char *&name);
    unsigned call_tunnels(unsigned which, const char *&name);
    unsigned call_sessions(unsigned which, const char *&name);

    void fill();
    bool untouched_outputs() const;

    std::mt19937 random_;
    std::vector<unsigned> ids_[kinds];

    // The outputs of calls.
    unsigned cell_ = 0;
    unsigned char small_cell_ = 0;
    qx_pm_cpu_info_t cpu_;
    qx_flow_t flow_;
    qx_rule_hash_t rule_;
    qx_rtp_stats_t stats_;
    qx_ip_translate_cfg_t translation_;
    qx_l3_nexthop_t nexthop_;
    qx_tunnel_cfg_t tunnel_;
    qx_pppoe_port_cfg_t pppoe_;
};

} // namespace simulated
