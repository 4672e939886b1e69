// Routes against a plain model: a list that is searched from its start to its end. Next hops
// against counts over that list.
#include "simulated.h"

#include <algorithm>
#include <random>
#include <vector>

using namespace simulated;

namespace {

class route_model : public devices
{};

// Bit `place` of an address, counted from its start.
bool bit(const qx_ip_address_t &address, unsigned place)
{
    const std::uint32_t word = address.ip_addr.addr[place / 32];
    return (word >> (31 - place % 32) & 1) != 0;
}

// The first `length` bits agree.
bool agree(const qx_ip_address_t &left, const qx_ip_address_t &right, unsigned length)
{
    if (left.afi != right.afi)
        return false;
    for (unsigned place = 0; place < length; ++place)
        if (bit(left, place) != bit(right, place))
            return false;
    return true;
}

class table
{
public:
    explicit table(std::uint32_t seed) : random_(seed) {}

    void add();
    void remove();
    void look_up();
    void check_next_hops();
    std::size_t size() const { return routes_.size(); }

private:
    qx_ip_address_t prefix();
    static std::size_t place_in(const std::vector<qx_l3_route_t> &routes,
                                const qx_ip_address_t &wanted);
    const qx_l3_route_t *exact(const qx_ip_address_t &wanted) const;
    qx_l3_route_t *longest(const qx_ip_address_t &wanted);

    std::mt19937 random_;
    std::vector<qx_l3_route_t> routes_;
    std::vector<qx_l3_route_t> removed_; ///< the last ones, as many as the device remembers
};

// Few different bits, so that prefixes cover each other.
qx_ip_address_t table::prefix()
{
    const std::uint32_t words[] = {0, 0x80000000, 0xc0a80000, 0xc0a80001, 0xffffffff, 0xc0a8ffff};
    const auto word = [&] { return words[random_() % 6]; };
    if (random_() % 2 == 0)
        return ipv4(word() ^ (random_() % 4) << 14, random_() % 33);
    return ipv6({word(), word(), word(), word()}, random_() % 129);
}

// The place of the route with exactly this prefix; the size if there is none.
std::size_t table::place_in(const std::vector<qx_l3_route_t> &routes, const qx_ip_address_t &wanted)
{
    std::size_t place = 0;
    while (place < routes.size() && !(routes[place].prefix.addr_len == wanted.addr_len &&
                                      agree(routes[place].prefix, wanted, wanted.addr_len)))
        ++place;
    return place;
}

const qx_l3_route_t *table::exact(const qx_ip_address_t &wanted) const
{
    const std::size_t place = place_in(routes_, wanted);
    return place < routes_.size() ? &routes_[place] : nullptr;
}

qx_l3_route_t *table::longest(const qx_ip_address_t &wanted)
{
    qx_l3_route_t *best = nullptr;
    for (qx_l3_route_t &one : routes_)
        if (one.prefix.addr_len <= wanted.addr_len &&
            agree(one.prefix, wanted, one.prefix.addr_len) &&
            (best == nullptr || best->prefix.addr_len < one.prefix.addr_len))
            best = &one;
    return best;
}

void table::add()
{
    qx_l3_route_t one = route(prefix(), nexthop(random_() % 20, random_() % 3));
    const bool known = exact(one.prefix) != nullptr;
    ASSERT_EQ(known ? QX_EXISTS : QX_OK, static_cast<int>(qx_l3_route_add(0, &one)));
    if (known)
        return;
    routes_.push_back(one);
    const std::size_t before = place_in(removed_, one.prefix);
    if (before < removed_.size())
        removed_.erase(removed_.begin() + static_cast<std::ptrdiff_t>(before));
}

void table::remove()
{
    qx_l3_route_t one = route(prefix(), nexthop(1));
    if (!routes_.empty() && random_() % 2 == 0)
        one = routes_[random_() % routes_.size()];
    const qx_l3_route_t *const known = exact(one.prefix);
    const bool deleted = place_in(removed_, one.prefix) < removed_.size();
    ASSERT_EQ(known != nullptr ? QX_OK
              : deleted        ? QX_DELETED
                               : QX_NO_ROUTE,
              static_cast<int>(qx_l3_route_delete(0, &one)));
    if (known == nullptr)
        return;
    removed_.push_back(*known);
    if (removed_.size() > 512)
        removed_.erase(removed_.begin());
    routes_.erase(routes_.begin() + (known - routes_.data()));
}

void table::look_up()
{
    qx_l3_route_t wanted = route(prefix(), zeroed<qx_l3_nexthop_t>());
    const qx_l3_route_t *const expected = longest(wanted.prefix);
    qx_l3_route_t got = wanted;
    const unsigned status = qx_l3_route_get(0, &got);
    if (expected == nullptr) {
        ASSERT_EQ(status, QX_NO_ROUTE);
        ASSERT_TRUE(same_bytes(wanted, got));
    } else {
        ASSERT_EQ(status, QX_OK);
        ASSERT_TRUE(same_bytes(*expected, got));
    }
}

void table::check_next_hops()
{
    auto walk = zeroed<qx_l3_nexthop_t>();
    std::size_t leading = 0;
    unsigned char next = 0;
    while (qx_l3_nexthop_show(0, &walk, next) == QX_OK) {
        next = 1;
        const auto users = std::count_if(routes_.begin(), routes_.end(), [&](const auto &one) {
            return same_bytes(one.nexthop, walk);
        });
        ASSERT_GT(users, 0) << "a next hop that no route leads to";
        leading += static_cast<std::size_t>(users);
    }
    ASSERT_EQ(routes_.size(), leading) << "every route has its next hop in the table";
}

} // namespace

TEST_F(route_model, random_changes_and_lookups)
{
    table model{4};
    for (unsigned round = 0; round < 6000 && !HasFatalFailure(); ++round) {
        if (round % 3 != 0 && model.size() < 300)
            model.add();
        else
            model.remove();
        model.look_up();
        if (round % 200 == 0)
            model.check_next_hops();
    }
    EXPECT_GT(model.size(), 50U);
}
