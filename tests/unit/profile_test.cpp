// The reader of profiles: what it makes of each kind of line, and its message for each mistake.
#include "records/profile.h"

#include "default_profile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

using qxsh::profile;
using qxsh::profile_number;
using qxsh::read_profile;

static profile read_well(std::string_view text)
{
    profile read;
    const auto mistake = read_profile(text, read);
    EXPECT_FALSE(mistake) << mistake->line << ": " << mistake->text;
    return read;
}

static std::string shown(const profile_number &one)
{
    return one.place + " " + one.name + " " + std::to_string(one.number) + " " +
           std::to_string(one.line);
}

TEST(profile, reads_each_kind_of_line)
{
    const profile read = read_well("\xef\xbb\xbf# a board\n"
                                   "\r\n"
                                   "status 0x1E NP_GONE\tno such  fl\xc3\xb6w \r\n"
                                   " \tstatus 0 QX_OK done\n"
                                   "code qx_tunnel_cfg_t.type 5 ip-sec_2\n"
                                   "code qx_ipsec_sa_t.sa_dir 1 out\n"
                                   "code qx_ipsec_spd_add.direction 4294967295 out\n"
                                   "code qx_pm_pcie_state_get.state 5 out\n"
                                   "capacity flows 0X10\nports 8\ndevices 1\n"
                                   "family ipv6 10\nfamily ipv4 2\n"
                                   "loose qx_rtp_stats_t.pkt_cnt\nloose qx_l3_nexthop_add.index\n"
                                   "ids tunnels 1..0x40 77 4294967295..4294967295");
    ASSERT_EQ(read.statuses.size(), 2u);
    EXPECT_EQ(read.statuses[0].number, 30u);
    EXPECT_EQ(read.statuses[0].name, "NP_GONE");
    EXPECT_EQ(read.statuses[0].meaning, "no such  fl\xc3\xb6w");
    EXPECT_EQ(read.statuses[0].line, 3u);
    ASSERT_EQ(read.codes.size(), 4u);
    EXPECT_EQ(shown(read.codes[0]), "qx_tunnel_cfg_t.type ip-sec_2 5 5");
    EXPECT_EQ(shown(read.codes[2]), "qx_ipsec_spd_add.direction out 4294967295 7");
    ASSERT_EQ(read.sizes.size(), 3u);
    EXPECT_EQ(shown(read.sizes[0]), " flows 16 9");
    EXPECT_EQ(shown(read.sizes[1]), " ports 8 10");
    EXPECT_EQ(shown(read.sizes[2]), " devices 1 11");
    ASSERT_EQ(read.families.size(), 2u);
    EXPECT_EQ(shown(read.families[0]), " ipv6 10 12");
    EXPECT_EQ(read.loose,
              (std::vector<std::string>{"qx_rtp_stats_t.pkt_cnt", "qx_l3_nexthop_add.index"}));
    ASSERT_EQ(read.ids.size(), 1u);
    EXPECT_EQ(read.ids[0].table, "tunnels");
    EXPECT_EQ(read.ids[0].line, 16u);
    ASSERT_EQ(read.ids[0].ranges.size(), 3u);
    EXPECT_EQ(read.ids[0].ranges[0].first, 1u);
    EXPECT_EQ(read.ids[0].ranges[0].last, 64u);
    EXPECT_EQ(read.ids[0].ranges[1].last, 77u);
    EXPECT_EQ(read.ids[0].ranges[2].first, 4294967295u);
}

TEST(profile, a_file_replaces_lines_of_the_default_one)
{
    const std::string name = testing::TempDir() + "qxsh-profile-in-use";
    std::ofstream{name} << "status 0 QX_OK done\nstatus 9 NP_GONE gone\n"
                           "code qx_tunnel_cfg_t.type 5 ipsec\nfamily ipv4 2\nports 8\n";
    setenv("QX_PROFILE", name.c_str(), 1);
    const profile all = qxsh::profile_in_use();
    unsetenv("QX_PROFILE");
    const profile before = qxsh::profile_in_use();
    EXPECT_EQ(all.statuses.size(), 2u);
    EXPECT_EQ(before.statuses.size(), std::size(qxsh::default_statuses));
    // One word for the type of a tunnel in place of four.
    EXPECT_EQ(all.codes.size(), before.codes.size() - 3);
    EXPECT_EQ(shown(all.codes.back()), "qx_tunnel_cfg_t.type ipsec 5 3");
    EXPECT_EQ(all.sizes.size(), before.sizes.size());
    EXPECT_EQ(shown(all.sizes.back()), " ports 8 5");
    ASSERT_EQ(all.families.size(), 2u);
    EXPECT_EQ(shown(all.families[0]), " ipv6 1 0");
    EXPECT_EQ(all.loose, before.loose);
    EXPECT_FALSE(all.loose.empty());
}

TEST(profile, a_file_in_use_that_is_wrong_is_named_with_its_line)
{
    const std::string name = testing::TempDir() + "qxsh-profile-in-use";
    std::ofstream{name} << "# ours\nports\n";
    for (const std::string &file : {name, name + ".gone"}) {
        setenv("QX_PROFILE", file.c_str(), 1);
        try {
            qxsh::profile_in_use();
            ADD_FAILURE() << file;
        } catch (const qxsh::profile_error &wrong) {
            EXPECT_EQ(wrong.text, file == name
                                      ? name + ":2: expected: ports NUMBER"
                                      : file + ": cannot be read: No such file or directory");
        }
    }
    unsetenv("QX_PROFILE");
}

TEST(profile, an_empty_text_says_nothing)
{
    const profile read = read_well("");
    EXPECT_TRUE(read.statuses.empty() && read.codes.empty() && read.sizes.empty() &&
                read.families.empty());
}

TEST(profile, names_line_and_mistake)
{
    static constexpr std::pair<const char *, const char *> cases[] = {
        {"statuses 1 A b",
         "\"statuses\" is not one of status, code, capacity, ports, devices, family, ids, loose"},
        {"status", "expected: status NUMBER NAME MEANING"},
        {"loose", "expected: loose RECORD.FIELD, or loose FUNCTION.ARGUMENT"},
        {"loose qx_vlan_t.vlan_id 3", "expected: loose RECORD.FIELD, or loose FUNCTION.ARGUMENT"},
        {"loose qx_vlan_t.colour", "\"qx_vlan_t\" has no field \"colour\""},
        {"status 5", "expected: status NUMBER NAME MEANING"},
        {"status 5 A", "expected: status NUMBER NAME MEANING"},
        {"status A 5 b", "\"A\" is not a number from 0 to 65535"},
        {"status -1 A b", "\"-1\" is not a number from 0 to 65535"},
        {"status 65536 A b", "\"65536\" is not a number from 0 to 65535"},
        {"status 0x A b", "\"0x\" is not a number from 0 to 65535"},
        {"status 0x1g A b", "\"0x1g\" is not a number from 0 to 65535"},
        {"status 5 A-B b", "\"A-B\" is not a name of letters, digits and _"},
        {"status 5 5A b", "\"5A\" is not a name of letters, digits and _"},
        {"status 7 TAKEN b", "status TAKEN is given twice"},
        {"status 0x9 FREE b", "status number 9 is given twice"},
        {"status 7 QX_OK fine", "QX_OK is success, which is 0"},
        {"code", "expected: code RECORD.FIELD NUMBER WORD, or code FUNCTION.ARGUMENT NUMBER WORD"},
        {"code qx_tunnel_cfg_t.type 5",
         "expected: code RECORD.FIELD NUMBER WORD, or code FUNCTION.ARGUMENT NUMBER WORD"},
        {"code qx_tunnel_cfg_t.type 5 ip sec",
         "expected: code RECORD.FIELD NUMBER WORD, or code FUNCTION.ARGUMENT NUMBER WORD"},
        {"code type 5 ipsec", "\"type\" is neither RECORD.FIELD nor FUNCTION.ARGUMENT"},
        {"code qx_tunel_cfg_t.type 5 ipsec", "there is no record or function \"qx_tunel_cfg_t\""},
        {"code qx_tunnel_cfg_t.typ 5 ipsec", "\"qx_tunnel_cfg_t\" has no field \"typ\""},
        {"code qx_tunnel_cfg_t. 5 ipsec", "\"qx_tunnel_cfg_t\" has no field \"\""},
        {"code qx_tunnel_cfg_t.dest_addr 5 x",
         "qx_tunnel_cfg_t.dest_addr is a record, not a number"},
        {"code qx_vlan_t.priority 256 x", "\"256\" is not a number from 0 to 255"},
        {"code qx_pkt_info_t.da_mac 5 x", "qx_pkt_info_t.da_mac is a MAC address, not a number"},
        {"code qx_pptp_sa_t.key 5 x", "qx_pptp_sa_t.key is a key, not a number"},
        {"code qx_l3_ip_addr.ipv4_addr 5 x",
         "qx_l3_ip_addr.ipv4_addr is an IP address, not a number"},
        {"code qx_ip_address_t.afi 5 ipx",
         "qx_ip_address_t.afi is an address family, whose words are ipv4 and ipv6; their numbers "
         "are family lines"},
        {"code qx_ipsec_spd_add.way 5 out", "\"qx_ipsec_spd_add\" has no argument \"way\""},
        {"code qx_flow_add.p_flow 5 x", "qx_flow_add.p_flow is a record, not a number"},
        {"code qx_ipsec_sa_t.sa_dir 2 out", "\"2\" is not a number from 0 to 1"},
        {"code qx_pptp_session_delete.direction 256 out", "\"256\" is not a number from 0 to 255"},
        {"code qx_tunnel_cfg_t.type 4294967296 x",
         "\"4294967296\" is not a number from 0 to 4294967295"},
        {"code qx_tunnel_cfg_t.type 5 5", "\"5\" is not a word of letters, digits, _ and -"},
        {"code qx_tunnel_cfg_t.type 5 -x", "\"-x\" is not a word of letters, digits, _ and -"},
        {"code qx_tunnel_cfg_t.dir 8 in", "\"in\" is given twice for qx_tunnel_cfg_t.dir"},
        {"code qx_tunnel_cfg_t.dir 7 out", "7 is given twice for qx_tunnel_cfg_t.dir"},
        {"capacity", "expected: capacity TABLE ENTRIES"},
        {"capacity flows", "expected: capacity TABLE ENTRIES"},
        {"capacity floes 1", "there is no table \"floes\""},
        {"capacity ports 1", "there is no table \"ports\""},
        {"capacity flows 0", "\"0\" is not a number from 1 to 4294967295"},
        {"capacity flows 1 2", "expected: capacity TABLE ENTRIES"},
        {"capacity rules 3", "rules is given twice"},
        {"ports", "expected: ports NUMBER"},
        {"ports 3", "ports is given twice"},
        {"devices four", "\"four\" is not a number from 1 to 4294967295"},
        {"devices 1 2", "expected: devices NUMBER"},
        {"family", "expected: family ipv4 NUMBER, or family ipv6 NUMBER"},
        {"family ipx 4", "\"ipx\" is neither ipv4 nor ipv6"},
        {"family ipv6 two", "\"two\" is not a number from 0 to 4294967295"},
        {"family ipv6 2 3", "expected: family ipv4 NUMBER, or family ipv6 NUMBER"},
        {"family ipv4 3", "family ipv4 is given twice"},
        {"family ipv6 2", "family number 2 is given twice"},
        {"ids", "expected: ids TABLE FIRST..LAST ..."},
        {"ids tunnels", "expected: ids TABLE FIRST..LAST ..."},
        {"ids routes 1..9", "there is no table \"routes\" that is listed by ids"},
        {"ids tunnels 1..x", "\"x\" is not a number from 1 to 4294967295"},
        {"ids tunnels ..3", "\"\" is not a number from 0 to 4294967295"},
        {"ids tunnels 9..3", "\"3\" is not a number from 9 to 4294967295"},
        {"ids tunnels 1..9 9..12", "\"9\" is not a number from 10 to 4294967295"},
        {"ids tunnels 1..4294967295 7", "there is no id behind 4294967295"},
        {"ids pptp_sessions 1..65536", "\"65536\" is not a number from 1 to 65535"},
        {"ids pppoe_ports 7", "the ids of pppoe_ports are given twice"},
        {"# \xff", "not UTF-8"},
        {"# \xc3", "not UTF-8"},
        {"# \xe0\x80\x80", "not UTF-8"},
        {"# \xed\xa0\x80", "not UTF-8"},
        {"# \xf4\x90\x80\x80", "not UTF-8"},
        {"# \x1b[0m", "a control character"},
    };
    for (const auto &[line, text] : cases) {
        profile read = read_well("ports 77");
        const auto mistake =
            read_profile("status 9 TAKEN a\ncode qx_tunnel_cfg_t.dir 7 in\n"
                         "capacity rules 2\nports 2\nfamily ipv4 2\nids pppoe_ports 1..9\n" +
                             std::string{line} + "\nnonsense\n",
                         read);
        ASSERT_TRUE(mistake) << line;
        EXPECT_EQ(mistake->text, text) << line;
        EXPECT_EQ(mistake->line, 7u) << line;
        EXPECT_TRUE(read.statuses.empty()) << line;
        EXPECT_EQ(shown(read.sizes.at(0)), " ports 77 1") << line;
    }
}

TEST(profile, refuses_the_default_number_of_the_other_family)
{
    profile read = read_well("ports 77");
    const auto mistake = read_profile("\nfamily ipv6 0\nports 3\n", read);
    ASSERT_TRUE(mistake);
    EXPECT_EQ(mistake->text,
              "the families ipv4 and ipv6 have the same number: ipv4 needs a line, too");
    EXPECT_EQ(mistake->line, 2u);
    EXPECT_EQ(shown(read.sizes.at(0)), " ports 77 1");
}

TEST(profile, takes_what_utf8_has)
{
    const profile read = read_well("status 1 A \xc2\x80\xe0\xa0\x80\xed\x9f\xbf\xf0\x90\x80\x80"
                                   "\xf4\x8f\xbf\xbf");
    EXPECT_EQ(read.statuses.at(0).meaning.size(), 16u);
}

// The generator reads the default profile with a few lines of its own.
TEST(profile, reads_the_default_profile_as_the_generator_does)
{
    std::ifstream file{QXSH_DEFAULT_PROFILE};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    const profile read = read_well(text);
    const auto compare = [](const std::vector<profile_number> &numbers, const auto &defaults) {
        ASSERT_EQ(numbers.size(), std::size(defaults));
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            EXPECT_EQ(numbers[index].place, defaults[index].owner);
            EXPECT_EQ(numbers[index].name, defaults[index].name);
            EXPECT_EQ(numbers[index].number, defaults[index].number);
        }
    };
    compare(read.codes, qxsh::default_codes);
    compare(read.sizes, qxsh::default_sizes);
    compare(read.families, qxsh::default_families);
    EXPECT_GT(read.statuses.size(), 50u);
}
