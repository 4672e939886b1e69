// Packing and unpacking of hexadecimal digits, the making of handles, and the conversion of handle
// texts.
#include "runtime/handle.h"
#include "runtime/object_command.h"
#include "tests/unit/handle_doors.h"

#include <climits>
#include <cstring>
#include <random>

namespace {

TEST(packing, writes_two_lower_case_digits_per_byte)
{
    const unsigned char data[] = {0x00, 0x01, 0x0f, 0x10, 0x9a, 0xff};
    char text[16];
    std::memset(text, '#', sizeof text);
    EXPECT_EQ(swig_pack_hex(text, data, sizeof data), text + 12);
    EXPECT_EQ(std::string(text, sizeof text), "00010f109aff####");
    EXPECT_EQ(swig_pack_hex(text, data, 0), text);
}

TEST(unpacking, reads_what_was_packed)
{
    unsigned char all[256];
    unsigned char back[256];
    char text[2 * sizeof all + 1] = {};
    for (unsigned i = 0; i < sizeof all; ++i)
        all[i] = static_cast<unsigned char>(i);
    swig_pack_hex(text, all, sizeof all);
    EXPECT_EQ(swig_unpack_hex(text, back, sizeof back), text + 2 * sizeof all);
    EXPECT_EQ(std::memcmp(all, back, sizeof all), 0);
}

TEST(unpacking, ends_behind_the_last_digit_and_looks_no_further)
{
    unsigned char data[2] = {};
    const char *const text = "1234not looked at";
    EXPECT_EQ(swig_unpack_hex(text, data, 2), text + 4);
    EXPECT_EQ(data[0], 0x12);
    EXPECT_EQ(data[1], 0x34);
    EXPECT_EQ(swig_unpack_hex(text, data, 0), text);
}

// At either place of a pair, every character but the sixteen digits is refused.
TEST(unpacking, refuses_all_but_the_sixteen_digits)
{
    for (int c = CHAR_MIN; c <= CHAR_MAX; ++c) {
        const bool digit = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
        unsigned char data;
        const char first[] = {static_cast<char>(c), '0', '\0'};
        const char second[] = {'0', static_cast<char>(c), '\0'};
        EXPECT_EQ(swig_unpack_hex(first, &data, 1) != nullptr, digit) << c;
        EXPECT_EQ(swig_unpack_hex(second, &data, 1) != nullptr, digit) << c;
    }
}

TEST(unpacking, keeps_the_bytes_before_a_bad_pair)
{
    unsigned char data[4] = {0xee, 0xee, 0xee, 0xee};
    EXPECT_EQ(swig_unpack_hex("1234g678", data, 4), nullptr);
    EXPECT_EQ(data[0], 0x12);
    EXPECT_EQ(data[1], 0x34);
    EXPECT_EQ(data[2], 0xee);
    EXPECT_EQ(data[3], 0xee);
    EXPECT_EQ(swig_unpack_hex("5G", data, 1), nullptr);
    EXPECT_EQ(data[0], 0x12);
    EXPECT_EQ(swig_unpack_hex("567", data, 2), nullptr); // ends within a pair
    EXPECT_EQ(data[0], 0x56);
    EXPECT_EQ(data[1], 0x34);
}

std::string made(void *pointer, swig_type_record *type)
{
    Tcl_Obj *const object = swig_new_pointer_obj(pointer, type);
    EXPECT_EQ(object->refCount, 0);
    return held_object{object}.text();
}

TEST(handles, hold_the_address_in_memory_order_and_the_type)
{
    plain_type flow{"_p_qx_flow_t"};
    plain_type cell{"_p_unsigned_int"};
    EXPECT_EQ(made(at(0x0001a2b0), flow), "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(made(at(0x00020008), cell), "_08000200_p_unsigned_int");
    EXPECT_EQ(made(at(0xffffffff), cell), "_ffffffff_p_unsigned_int");
    EXPECT_EQ(made(at(1), cell), "_01000000_p_unsigned_int");
    EXPECT_EQ(made(at(0x80000000), cell), "_00000080_p_unsigned_int");
}

TEST(handles, of_null_are_the_plain_text_NULL)
{
    plain_type flow{"_p_qx_flow_t"};
    const held_object null{swig_new_pointer_obj(nullptr, flow)};
    EXPECT_EQ(null.text(), "NULL");
    EXPECT_EQ(null.type(), "");
    EXPECT_EQ(held_object{swig_new_instance_obj(nullptr, nullptr, flow, 0)}.text(), "NULL");
}

TEST(handles, of_instances_are_the_same)
{
    interpreter tcl;
    plain_type flow{"_p_qx_flow_t"};
    EXPECT_EQ(held_object{swig_new_instance_obj(tcl, at(0x0001a2b0), flow, 0)}.text(),
              "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(tcl.value("info commands _*"), "");
}

#if UINTPTR_MAX > UINT32_MAX
// No 32 bits hold it: a handle would name another address.
TEST(handles, of_high_addresses_do_not_exist)
{
    plain_type flow{"_p_qx_flow_t"};
    void *const high = reinterpret_cast<void *>(std::uintptr_t{0x10001a2b0});
#ifdef NDEBUG
    EXPECT_EQ(made(high, flow), "NULL");
#else
    EXPECT_DEATH(made(high, flow), "below 4 GiB");
#endif
}
#endif

TEST(packed_handles, hold_the_bytes_and_the_type)
{
    plain_type word{"_p_word"};
    const unsigned char data[] = {0x00, 0xab, 0x7f};
    EXPECT_EQ(held_object{swig_new_packed_obj(data, 3, word)}.text(), "_00ab7f_p_word");
    EXPECT_EQ(held_object{swig_new_packed_obj(data, 1, word)}.text(), "_00_p_word");
    EXPECT_EQ(held_object{swig_new_packed_obj(data, 0, word)}.text(), "__p_word");
}

TEST(packed_handles, have_at_most_1000_characters)
{
    const std::vector<unsigned char> data(1000, 0x5a);
    plain_type odd{"_p_odd_length"};   // 13 characters
    plain_type even{"_p_evenlength_"}; // 14 characters
    const held_object longest{swig_new_packed_obj(data.data(), 493, odd)};
    ASSERT_NE(longest.get(), nullptr);
    EXPECT_EQ(longest.text().size(), 1000u);
    EXPECT_EQ(longest.text().substr(985), "5a_p_odd_length");
    EXPECT_EQ(swig_new_packed_obj(data.data(), 494, odd), nullptr);
    EXPECT_EQ(swig_new_packed_obj(data.data(), 493, even), nullptr); // 1001 characters
    EXPECT_NE(held_object{swig_new_packed_obj(data.data(), 492, even)}.get(), nullptr);
    EXPECT_EQ(swig_new_packed_obj(data.data(), SIZE_MAX, odd), nullptr);
    EXPECT_EQ(swig_new_packed_obj(data.data(), SIZE_MAX / 2 + 1, odd), nullptr);
}

class conversion : public handle_doors
{
protected:
    plain_type flow_{"_p_qx_flow_t"};
    plain_type vlan_{"_p_qx_vlan_t"};
};

TEST_F(conversion, round_trip)
{
    for (const std::uint32_t address : {1u, 0x0001a2b0u, 0x7fffffffu, 0x80000000u, 0xffffffffu})
        EXPECT_EQ(convert(made(at(address), flow_), flow_), at(address));
}

TEST_F(conversion, of_the_type_itself_only)
{
    EXPECT_EQ(convert("_b0a20100_p_qx_flow_t", flow_), at(0x0001a2b0));
    expect_refused("_b0a20100_p_qx_flow_t", vlan_);
    EXPECT_EQ(convert("_b0a20100_p_qx_vlan_t", vlan_), at(0x0001a2b0));
    expect_refused("_b0a20100_p_qx_vlan_t", flow_);
}

TEST_F(conversion, of_NULL_for_every_type)
{
    EXPECT_EQ(convert("NULL", flow_), nullptr);
    EXPECT_EQ(convert("NULL", vlan_), nullptr);
    EXPECT_EQ(convert("NULL", nullptr), nullptr);
}

TEST_F(conversion, of_other_spellings_of_null_fails)
{
    for (const char *word : {"null", "", "Null", "NULL ", " NULL", "NULLL", "NUL", "0", "\tNULL"}) {
        expect_refused(word, flow_);
        expect_refused(word, nullptr);
    }
}

// clang-format off
constexpr const char *damaged[] = {
    "_B0A20100_p_qx_flow_t", "_b0A20100_p_qx_flow_t", "_b0a2010F_p_qx_flow_t",
    "_b0a20100_p_qx_flow_tx", "_b0a20100_p_qx_flow_", "_b0a20100_p_qx_flow_t ",
    "_b0a20100_p_qx_flow_t\n", "_b0a20100 _p_qx_flow_t", "_b0a20100_P_qx_flow_t",
    "_b0a2_p_qx_flow_t", "_b0a2010_p_qx_flow_t", "_b0a201000_p_qx_flow_t",
    "_b0a2010000000000_p_qx_flow_t", "_b0a20100", "_b0a20100_", "_", "__", "__p_qx_flow_t",
    "__b0a20100_p_qx_flow_t", "_p_qx_flow_t", "_-0a20100_p_qx_flow_t", "_0xb0a201_p_qx_flow_t",
    "_g0a20100_p_qx_flow_t", "_b0a2010g_p_qx_flow_t", "_b0a20100_p_qx_flow_t_p_qx_flow_t",
};
// clang-format on

TEST_F(conversion, of_damaged_handles_fails)
{
    for (const char *text : damaged)
        expect_refused(text, flow_);
}

// Every character at every place of the eight digits.
TEST_F(conversion, of_all_digits_and_what_is_none)
{
    const std::string good = "_0123cdef_p_qx_flow_t";
    for (std::size_t place = 1; place <= 8; ++place) {
        for (int c = 1; c <= UCHAR_MAX; ++c) {
            auto text = good;
            text[place] = static_cast<char>(c);
            unsigned char bytes[4] = {};
            const bool digits = swig_unpack_hex(text.c_str() + 1, bytes, 4) != nullptr;
            std::uint32_t address;
            std::memcpy(&address, bytes, sizeof address);
            void *pointer;
            // As a text only: not every byte can stand in an object.
            EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, text.c_str(), &pointer, flow_, 0),
                      digits ? 0 : -1);
            EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, text.c_str(), &pointer, nullptr, 0), 0);
            EXPECT_EQ(pointer, at(address)) << text;
            if (c <= SCHAR_MAX && digits) {
                EXPECT_EQ(convert(text, flow_), at(address));
            } else if (c <= SCHAR_MAX) {
                expect_refused(text, flow_);
                EXPECT_EQ(convert(text, nullptr), at(address));
            }
        }
    }
}

TEST_F(conversion, of_random_addresses)
{
    std::mt19937 random{5};
    for (int time = 0; time < 10000; ++time) {
        const auto address = static_cast<std::uint32_t>(random() | 1);
        ASSERT_EQ(convert(made(at(address), flow_), flow_), at(address));
    }
}

TEST_F(conversion, of_handles_with_a_leading_blank_fails)
{
    expect_refused(" _b0a20100_p_qx_flow_t", flow_);
    expect_refused(" _b0a20100_p_qx_flow_t", nullptr);
}

TEST_F(conversion, to_any_type_takes_every_handle)
{
    EXPECT_EQ(convert("_b0a20100_p_qx_flow_t", nullptr), at(0x0001a2b0));
    EXPECT_EQ(convert("_b0a20100_p_no_such_type", nullptr), at(0x0001a2b0));
    EXPECT_EQ(convert("_b0a20100", nullptr), at(0x0001a2b0));
    EXPECT_EQ(convert("_b0a20100 and more", nullptr), at(0x0001a2b0));
}

TEST_F(conversion, to_any_type_takes_bad_digits)
{
    EXPECT_EQ(convert("_", nullptr), nullptr);
    EXPECT_EQ(convert("_p_qx_flow_t", nullptr), nullptr);
    EXPECT_EQ(convert("_b", nullptr), nullptr);
    EXPECT_EQ(convert("_b0", nullptr), at(0xb0));
    EXPECT_EQ(convert("_b0A20100_p_qx_flow_t", nullptr), at(0xb0));
    EXPECT_EQ(convert("_b0a2010G_p_qx_flow_t", nullptr), at(0x0001a2b0));
    EXPECT_EQ(convert("_ffffff", nullptr), at(0xffffff));
}

// A zero address is no "NULL": it has a type.
TEST_F(conversion, of_zero_addresses)
{
    EXPECT_EQ(convert("_00000000_p_qx_flow_t", flow_), nullptr);
    EXPECT_EQ(convert("_00000000_p_qx_flow_t", nullptr), nullptr);
    expect_refused("_00000000_p_qx_flow_t", vlan_);
}

TEST_F(conversion, without_interpreter)
{
    void *pointer = at(5);
    EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(nullptr, "_b0a20100_p_qx_flow_t", &pointer, flow_, 0),
              0);
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(nullptr, "NULL", &pointer, flow_, 0), 0);
    EXPECT_EQ(pointer, nullptr);
}

TEST_F(conversion, of_a_type_that_accepts_nothing_fails)
{
    sample_type closed{"_p_closed"};
    expect_refused("_b0a20100_p_closed", closed);
    EXPECT_EQ(convert("NULL", closed), nullptr);
}

} // namespace
