// Records and calls as text: which fields are shown and how, views of unions, keys, ids, and the
// line of a call. That scripts can read the text back is tested with qx-trace.
#include "replay/shown_call.h"

#include "record_numbers.h"
#include "records/address_text.h"
#include "records/values.h"

#include <gtest/gtest.h>

namespace {

using namespace qxsh;

// A record by number, whose fields are set by path: "ingress_pkt.tag(0).vlan_id".
class shown_record_test : public testing::Test
{
protected:
    explicit shown_record_test(int record = record_qx_flow_t) { use(record); }

    void use(int record)
    {
        row = record_rows + record;
        bytes.assign(row->size, 0);
    }

    // Where a field is, counted from the record's start.
    std::pair<const field_row *, unsigned> find(const std::string &path) const
    {
        const record_row *in = row;
        unsigned at = 0;
        const field_row *found = nullptr;
        for (std::size_t start = 0; start <= path.size();) {
            const std::size_t end = std::min(path.find('.', start), path.size());
            std::string name = path.substr(start, end - start);
            unsigned index = 0;
            if (const std::size_t bracket = name.find('('); bracket != name.npos) {
                index = static_cast<unsigned>(std::stoul(name.substr(bracket + 1)));
                name.resize(bracket);
            }
            for (const field_row &field : fields_of(*in))
                if (name == field.name.text())
                    found = &field;
            EXPECT_STREQ(found->name.text(), name.c_str());
            at += found->offset + index * found->size;
            in = record_in(*found);
            start = end + 1;
        }
        return {found, at};
    }

    void set(const std::string &path, std::uint32_t value)
    {
        const auto [field, at] = find(path);
        if (field->width != 0)
            value = value << field->bit | read_number(bytes.data() + at, field->size);
        write_number(bytes.data() + at, field->size, value);
    }

    void set_address(const std::string &path, const char *text)
    {
        address_words words;
        ASSERT_NE(parse_ip(text, words), 0);
        std::memcpy(bytes.data() + find(path).second, words, sizeof words);
    }

    std::string shown() const { return shown_record(*row, bytes.data(), names); }

    const record_row *row;
    std::vector<unsigned char> bytes;
    const shown_names names{default_profile()};
};

TEST_F(shown_record_test, leaves_out_zeros)
{
    EXPECT_EQ(shown(), "");
    set("flow_id", 7);
    set("ingress_pkt.tag(1).vlan_id", 12);
    set("swid_array(1)", 5);
    EXPECT_EQ(shown(), "flow_id 7 ingress_pkt {tag {{} {vlan_id 12}}} swid_array {0 5}");
}

TEST_F(shown_record_test, shows_numbers_of_the_wire_in_hexadecimal)
{
    set("ingress_pkt.eth_type", 0x800);
    set("ingress_pkt.tos", 16);
    EXPECT_EQ(shown(), "ingress_pkt {eth_type 0x800 tos 16}");
}

TEST_F(shown_record_test, shows_macs)
{
    set("ingress_pkt.da_mac(0)", 2);
    set("ingress_pkt.da_mac(5)", 0xab);
    EXPECT_EQ(shown(), "ingress_pkt {da_mac 02:00:00:00:00:ab}");
}

TEST_F(shown_record_test, shows_an_address_with_its_family_as_one_word)
{
    set_address("ingress_pkt.da_ip.ip_addr", "198.51.100.7");
    set("ingress_pkt.da_ip.addr_len", 32);
    set_address("ingress_pkt.sa_ip.ip_addr", "2001:db8::");
    set("ingress_pkt.sa_ip.afi", 1);
    set("ingress_pkt.sa_ip.addr_len", 48);
    EXPECT_EQ(shown(), "ingress_pkt {da_ip 198.51.100.7 sa_ip 2001:db8::/48}");
}

TEST_F(shown_record_test, shows_an_address_by_fields_where_one_word_does_not_say_it)
{
    set_address("ingress_pkt.da_ip.ip_addr", "198.51.100.7");
    set("ingress_pkt.da_ip.addr_len", 33);
    EXPECT_EQ(shown(), "ingress_pkt {da_ip {afi 0 ip_addr 198.51.100.7 addr_len 33}}");
    set("ingress_pkt.da_ip.afi", 9);
    EXPECT_EQ(shown(), "ingress_pkt {da_ip {afi 9 ip_addr 198.51.100.7 addr_len 33}}");
    set("ingress_pkt.da_ip.afi", 0);
    set_address("ingress_pkt.da_ip.ip_addr", "2001:db8::1");
    EXPECT_EQ(shown(), "ingress_pkt {da_ip {afi 0 ip_addr {536939960 0 0 1} addr_len 33}}");
}

TEST_F(shown_record_test, shows_the_view_that_a_number_chooses)
{
    set("ingress_pkt.l4_header.udp.sport", 53);
    EXPECT_EQ(shown(), "ingress_pkt {l4_header {tcp {sport 53}}}");
    set("ingress_pkt.protocol", 17);
    EXPECT_EQ(shown(), "ingress_pkt {protocol 17 l4_header {udp {sport 53}}}");
    set("ingress_pkt.protocol", 50);
    EXPECT_EQ(shown(), "ingress_pkt {protocol 50 l4_header {esp {spi_idx 53}}}");
}

TEST_F(shown_record_test, shows_what_a_view_leaves_out)
{
    use(record_qx_tunnel_cfg_t);
    set("type", 1);
    set("tunnel.gre.up_call_id", 7);
    set("tunnel.etherip.hop_limit", 64);
    EXPECT_EQ(shown(), "type gre tunnel {gre {up_call_id 7} l2tp {tid 7 encap_type 16384}}");
    set("type", 9);
    EXPECT_EQ(shown(), "type 9 tunnel {etherip {local_lan_mac 00:00:07:00:00:00 hop_limit 64}}");
}

TEST_F(shown_record_test, shows_padding)
{
    use(record_qx_vlan_t);
    set("vlan_id", 3);
    bytes[7] = 0xee;
    EXPECT_EQ(shown(), "vlan_id 3 padding {7 0xee}");
    use(record_qx_flow_t);
    bytes[2] = 0x10;
    bytes[3] = 0x0f;
    bytes[8 + 16 + 7] = 1;
    EXPECT_EQ(shown(), "ingress_pkt {tag {{padding {7 0x01}}}} padding {2 0x100f}");
}

TEST_F(shown_record_test, shows_words_and_bits)
{
    use(record_qx_ipsec_sa_t);
    set("sa_dir", 1);
    set("ealg", 2);
    set("spi", 4096);
    EXPECT_EQ(shown(), "spi 0x1000 sa_dir out ealg 2");
}

TEST_F(shown_record_test, shows_keys_by_length)
{
    use(record_qx_ipsec_sa_t);
    set("ekey(3)", 1);
    EXPECT_EQ(shown(), "ekey {32 bytes}");
}

TEST_F(shown_record_test, hides_what_overlaps_a_key_unless_the_key_is_zero)
{
    use(record_qx_tunnel_cfg_t);
    set("type", 3);
    set_address("tunnel.etherip.tun_saddr", "192.0.2.1");
    EXPECT_EQ(shown(), "type etherip tunnel {etherip {tun_saddr 192.0.2.1}}");
    set_address("tunnel.etherip.tun_saddr", "2001:db8:1:2:3:4:5:6");
    EXPECT_EQ(shown(), "type etherip tunnel {etherip {tun_saddr {16 bytes}}}");
}

// Ids as variables, keys as they are.
class script_style : public shown_style
{
public:
    std::string id(unsigned kind, std::uint32_t number) const override
    {
        return "$id" + std::to_string(kind) + "_" + std::to_string(number);
    }
    std::string secret(const field_row &, unsigned, const std::string &hidden) const override
    {
        return hidden.empty() ? "" : "$key";
    }
};

TEST_F(shown_record_test, writes_ids_and_keys_as_the_style_says)
{
    use(record_qx_tunnel_cfg_t);
    set("type", 2);
    set("nexthop_id", 5);
    set("tunnel.ipsec.ipsec_policy", 6);
    const script_style style;
    EXPECT_EQ(shown_record(*row, bytes.data(), names, style),
              "type ipsec nexthop_id $id" + std::to_string(id_nexthop) +
                  "_5 tunnel {ipsec {ipsec_policy $id" + std::to_string(id_policy) + "_6}}");
    EXPECT_EQ(shown(), "type ipsec nexthop_id 5 tunnel {ipsec {ipsec_policy 6}}");
    use(record_qx_ipsec_sa_t);
    set("akey(31)", 0xff);
    EXPECT_EQ(shown_record(*row, bytes.data(), names, style),
              "akey 0x" + std::string(62, '0') + "ff");
    use(record_qx_tunnel_mtu_t);
    set("tunnel_id", 0x06000001);
    EXPECT_EQ(shown(), "tunnel_id 0x6000001");
}

TEST_F(shown_record_test, shows_the_text_that_a_recording_has_for_a_key)
{
    use(record_qx_ipsec_sa_t);
    recorded_memory told{true, bytes, std::vector<unsigned char>(bytes.size(), 1), {}};
    std::fill_n(told.known.begin() + 12, 32, 0);
    told.keys.push_back({12, 32, "32 bytes, 0f1e2d3c4b5a6978"});
    argument_row argument{};
    argument.pointer = true;
    argument.size = row->size;
    argument.count = -1;
    argument.record = record_qx_ipsec_sa_t;
    EXPECT_EQ(shown_memory(argument, told, names), "ekey {32 bytes, 0f1e2d3c4b5a6978}");
    EXPECT_EQ(shown_memory(argument, told, names, script_style{}), "ekey $key");
}

// ------------------------------------------------------------------------------- calls

recorded_memory memory_of(const argument_row &row, std::initializer_list<unsigned char> first)
{
    recorded_memory memory;
    memory.bytes.assign(row.size, 0);
    std::copy(first.begin(), first.end(), memory.bytes.begin());
    memory.known.assign(row.size, 1);
    return memory;
}

recorded_call call_of(int number)
{
    recorded_call call;
    call.number = 12;
    call.row = call_rows + number;
    for (const argument_row &row : arguments_of(*call.row)) {
        recorded_argument argument;
        if (row.pointer)
            argument.before = argument.after = memory_of(row, {});
        call.arguments.push_back(argument);
    }
    return call;
}

TEST(shown_line, has_the_words_before_the_call_and_what_it_put_out)
{
    const shown_names names{default_profile()};
    recorded_call add = call_of(call_qx_flow_add);
    add.arguments[1].before.bytes[0] = add.arguments[1].after.bytes[0] = 7;
    add.microseconds = 3;
    EXPECT_EQ(shown_line(add, names),
              "12 qx_flow_add device_id 0 p_flow {flow_id 7} -> QX_OK, 3 us");
    recorded_call get = call_of(call_qx_flow_get);
    get.arguments[1].value = 17;
    get.arguments[2].before.bytes[0] = 9;
    get.arguments[2].after.bytes[0] = 7;
    EXPECT_EQ(shown_line(get, names),
              "12 qx_flow_get device_id 0 hash_index 17 -> QX_OK, p_flow {flow_id 7}");
}

TEST(shown_line, has_of_a_failing_call_only_what_it_changed)
{
    const shown_names names{default_profile()};
    recorded_call get = call_of(call_qx_flow_get);
    get.status = 30;
    get.fault = true;
    EXPECT_EQ(shown_line(get, names),
              "12 qx_flow_get device_id 0 hash_index 0 -> QX_NO_FLOW, injected");
    get.arguments[2].after.bytes[0] = 7;
    get.status = 999;
    get.fault = false;
    EXPECT_EQ(shown_line(get, names),
              "12 qx_flow_get device_id 0 hash_index 0 -> 999, p_flow {flow_id 7}");
}

TEST(shown_line, has_null_pointers_arrays_words_and_what_was_not_read)
{
    const shown_names names{default_profile()};
    recorded_call call = call_of(call_qx_ipsec_spd_add);
    call.arguments[1].value = 1;
    call.arguments[3].null = true;
    call.status = 2;
    EXPECT_EQ(shown_line(call, names), "12 qx_ipsec_spd_add device_id 0 direction out spd_id 0 "
                                       "spd_handle NULL -> QX_NULL_POINTER");
    call = call_of(call_qx_ipsec_sa_add);
    const auto row = arguments_of(*call.row)[4];
    call.arguments[3].value = 2;
    call.arguments[4].before = memory_of(row, {5});
    call.arguments[4].before.bytes.resize(2u * row.size);
    call.arguments[4].before.known.resize(2u * row.size, 1);
    call.arguments[4].after = call.arguments[4].before;
    EXPECT_EQ(shown_line(call, names),
              "12 qx_ipsec_sa_add device_id 0 spd_handle 0 policy_handle 0 sa_count 2 sa_array "
              "{{replay_window 5} {}} previous_sa_handle 0 -> QX_OK, sa_handle 0");
    call.arguments[4].before = call.arguments[4].after = recorded_memory{false, {}, {}, {}};
    call.status = 66;
    EXPECT_EQ(shown_line(call, names),
              "12 qx_ipsec_sa_add device_id 0 spd_handle 0 policy_handle 0 sa_count 2 sa_array "
              "{not read} previous_sa_handle 0 -> QX_BAD_COUNT");
}

} // namespace
