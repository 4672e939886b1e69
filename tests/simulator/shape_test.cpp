// What all functions have in common: records at any address, failing calls that write nothing,
// statuses of the device number before those of pointers. (That each of the 83 checks both is
// tested by script.)
#include "simulated.h"

using namespace simulated;

namespace {

class shape : public devices
{};

// A record at an odd address, with guard bytes around it.
template <class Record> class misplaced
{
public:
    explicit misplaced(const Record &record)
    {
        std::memset(bytes_, 0x5a, sizeof bytes_);
        std::memcpy(bytes_ + place, &record, sizeof record);
    }
    Record *address() { return reinterpret_cast<Record *>(bytes_ + place); }
    Record value() const
    {
        Record record;
        std::memcpy(&record, bytes_ + place, sizeof record);
        return record;
    }
    bool guarded() const
    {
        return bytes_[place - 1] == 0x5a && bytes_[place + sizeof(Record)] == 0x5a;
    }

private:
    static constexpr std::size_t place = 13;
    alignas(16) unsigned char bytes_[place + sizeof(Record) + 8];
};

} // namespace

TEST_F(shape, the_device_number_comes_first)
{
    EXPECT_EQ(qx_flow_add(4, nullptr), QX_BAD_DEVICE);
    EXPECT_EQ(qx_flow_add(0xfffe, nullptr), QX_BAD_DEVICE);
    EXPECT_EQ(qx_flow_add(3, nullptr), QX_NULL_POINTER);
    EXPECT_EQ(qx_qos_map_mode_get(0, 99, nullptr), QX_NULL_POINTER) << "pointers before ranges";
}

TEST_F(shape, records_may_lie_anywhere)
{
    misplaced one{flow(3)};
    EXPECT_EQ(qx_flow_add(0, one.address()), QX_OK);
    misplaced cfg{gre_tunnel(1)};
    misplaced id{0U};
    EXPECT_EQ(qx_tunnel_add(0, cfg.address(), id.address()), QX_OK);
    EXPECT_TRUE(id.guarded());
    misplaced got{untouched<qx_tunnel_cfg_t>()};
    EXPECT_EQ(qx_tunnel_get(0, id.value(), got.address()), QX_OK);
    EXPECT_TRUE(got.guarded());
    EXPECT_TRUE(same_bytes(cfg.value(), got.value()));
    misplaced via{route(ipv4(0x0a000000, 8), nexthop(1))};
    EXPECT_EQ(qx_l3_route_add(0, via.address()), QX_OK);
    misplaced found{route(ipv4(0x0a000001), zeroed<qx_l3_nexthop_t>())};
    EXPECT_EQ(qx_l3_route_get(0, found.address()), QX_OK);
    EXPECT_TRUE(same_bytes(via.value(), found.value()));
    misplaced cell{static_cast<unsigned char>(9)};
    EXPECT_EQ(qx_pm_ne_suspend_get(0, cell.address()), QX_OK);
    EXPECT_EQ(cell.value(), 0);
    EXPECT_TRUE(cell.guarded());
}

TEST_F(shape, arrays_may_lie_anywhere)
{
    struct pair
    {
        qx_ipsec_sa_t first;
        qx_ipsec_sa_t second;
    };
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    unsigned spd = 0;
    unsigned handle = 0;
    unsigned sa = 0;
    ASSERT_EQ(qx_ipsec_spd_add(0, 0, 1, &spd), QX_OK);
    qx_ipsec_policy_t one = policy(1);
    ASSERT_EQ(qx_ipsec_policy_add(0, spd, &one, &handle), QX_OK);
    misplaced sas{pair{association(256, 0), association(257, 0)}};
    auto *const start = reinterpret_cast<qx_ipsec_sa_t *>(sas.address());
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, handle, 2, start, 0, &sa), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, handle, 0, nullptr, 0, &sa), QX_NULL_POINTER);
}

TEST_F(shape, one_record_may_be_read_and_written)
{
    // The cell that receives the index is part of the record that is read.
    qx_l3_nexthop_t hop = nexthop(1);
    ASSERT_EQ(qx_l3_nexthop_add(0, &hop, &hop.nhid.intf_id), QX_OK);
    EXPECT_EQ(hop.nhid.intf_id, 0x05000001U);
}

extern "C" unsigned int called_from_c(void);

TEST_F(shape, the_headers_serve_c_as_well)
{
    EXPECT_EQ(called_from_c(), QX_OK);
}

TEST_F(shape, devices_are_apart)
{
    for (unsigned short device = 0; device < 4; ++device) {
        qx_flow_t one = flow(1);
        EXPECT_EQ(qx_flow_add(device, &one), QX_OK);
        qx_pptp_sa_t session = pptp(1, 0);
        EXPECT_EQ(qx_pptp_session_add(device, &session), QX_OK);
    }
    EXPECT_EQ(qx_flow_delete(2, 1), QX_OK);
    EXPECT_EQ(
        [] {
            qx_flow_t one = flow(1);
            return qx_flow_add(3, &one);
        }(),
        QX_EXISTS);
    EXPECT_EQ(qx_flow_delete(2, 1), QX_DELETED);
}
