// The parts of a handle's text, as many of them are read; what is right is what reads any handle.
#include "runtime/handle.h"
#include "tests/unit/interpreter.h"
#include "types.h"

#include <climits>
#include <cstring>
#include <string>

namespace {

using qxsh::has_name;
using qxsh::read_address;

// A text of handles with this name, at an address where a word may be.
class handle_of
{
public:
    explicit handle_of(const qxsh::handle_name &name)
    {
        std::strcpy(text_, "_1f0a9b7c");
        std::strcat(text_, name.text);
    }
    char *text() { return text_; }

private:
    alignas(qxsh::name_word) char text_[64];
};

TEST(handle_names, are_those_of_the_types)
{
    for (int type = 0; type < type_count; ++type) {
        EXPECT_STREQ(swig_type_names[type].text, swig_module.type_initial[type]->name);
        const std::size_t length =
            1 + qxsh::address_digits + std::strlen(swig_type_names[type].text);
        const bool compared = length > qxsh::address_digits + sizeof(qxsh::name_word);
        EXPECT_EQ(swig_type_names[type].handle_length() > 0, compared);
        if (compared) {
            EXPECT_EQ(swig_type_names[type].handle_length(), static_cast<int>(length));
        }
    }
}

TEST(handle_names, are_recognised)
{
    for (const auto &name : swig_type_names) {
        if (name.handle_length() > 0) {
            EXPECT_TRUE(has_name(handle_of{name}.text(), name)) << name.text;
        }
    }
}

// A difference counts at every place, in every bit.
TEST(handle_names, are_no_others)
{
    for (const auto &name : swig_type_names) {
        if (name.handle_length() < 0)
            continue;
        for (int at = 0; at < name.handle_length(); ++at) {
            for (int bit = 0; bit < 8; ++bit) {
                handle_of handle{name};
                handle.text()[at] = static_cast<char>(handle.text()[at] ^ 1 << bit);
                const bool in_address = at <= static_cast<int>(qxsh::address_digits);
                EXPECT_EQ(has_name(handle.text(), name), in_address) << handle.text();
            }
        }
    }
}

// Where the processor cannot read words at every address, this is left to what reads any handle.
TEST(handle_names, are_recognised_at_odd_addresses_only_where_words_are_read_anywhere)
{
    constexpr qxsh::handle_name name = "_p_qx_flow_t";
    handle_of handle{name};
    std::memmove(handle.text() + 1, handle.text(), std::strlen(handle.text()) + 1);
    EXPECT_EQ(has_name(handle.text() + 1, name), qxsh::reads_anywhere);
}

TEST(addresses, have_every_pair_of_characters_in_every_byte_as_elsewhere)
{
    for (std::size_t at = 0; at < qxsh::address_digits; at += 2) {
        for (int high = CHAR_MIN; high <= CHAR_MAX; ++high) {
            for (int low = CHAR_MIN; low <= CHAR_MAX; ++low) {
                std::string text = "1f0a9b7c";
                text[at] = static_cast<char>(high);
                text[at + 1] = static_cast<char>(low);
                std::uint32_t address = 0x77777777;
                std::uint32_t wanted = 0;
                const bool good = swig_unpack_hex(text.c_str(), &wanted, sizeof wanted) != nullptr;
                ASSERT_EQ(read_address(text.c_str(), address), good) << text;
                ASSERT_EQ(address, good ? wanted : 0x77777777) << text;
            }
        }
    }
}

constexpr qxsh::handle_name sample_name = "_p_sample_t";

class new_handle : public testing::Test
{
protected:
    new_handle() { type_.cast = &cast_; }

    /// Whether an object with this text is taken; it then stands for the right thing, and keeps its
    /// text either way.
    bool taken(const char *text, const qxsh::handle_name &name = sample_name)
    {
        const held_object word{text};
        return taken(word, name);
    }

    bool taken(const held_object &word, const qxsh::handle_name &name = sample_name)
    {
        const std::string text = word.text();
        Tcl_Obj *const object = word;
        const auto *const before = object->typePtr;
        const bool taken = qxsh::read_new_handle(object, &type_, name);
        if (taken) {
            EXPECT_EQ(object->typePtr, &qxsh::handle_type);
            EXPECT_EQ(object->internalRep.twoPtrValue.ptr1, right(text));
            EXPECT_EQ(object->internalRep.twoPtrValue.ptr2, &type_);
        } else {
            EXPECT_EQ(object->typePtr, before);
        }
        EXPECT_EQ(word.text(), text);
        return taken;
    }

    swig_type_record type_ = {sample_name.text, "sample_t *", nullptr, nullptr, nullptr, 0};
    swig_cast_record cast_ = {&type_, nullptr, nullptr, nullptr};

private:
    void *right(const std::string &text)
    {
        void *pointer = nullptr;
        EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(nullptr, text.c_str(), &pointer, &type_, 0), 0);
        return pointer;
    }
};

TEST_F(new_handle, is_taken)
{
    EXPECT_TRUE(taken("_1f0a9b7c_p_sample_t"));
    EXPECT_TRUE(taken("_00000000_p_sample_t"));
    EXPECT_TRUE(taken("_ffffffff_p_sample_t"));
}

TEST_F(new_handle, is_not_taken_if_it_is_not_well_formed)
{
    for (const char *text :
         {"", "NULL", "_", "_1f0a9b7c", "_1f0a9b7c_p_sample_", "_1f0a9b7c_p_sample_tt",
          "_1f0a9b7c_p_sample_u", "_1F0A9B7C_p_sample_t", "_1f0a9b7g_p_sample_t",
          "x1f0a9b7c_p_sample_t", " 1f0a9b7c_p_sample_t", "_1f0a9b7_p_sample_tt"})
        EXPECT_FALSE(taken(text)) << text;
}

TEST_F(new_handle, is_not_taken_if_the_word_was_looked_at_before)
{
    const held_object word{"_1f0a9b7c_p_sample_t"};
    int length;
    ASSERT_EQ(Tcl_ListObjLength(nullptr, word, &length), TCL_OK);
    EXPECT_FALSE(taken(word));
}

TEST_F(new_handle, is_not_taken_if_its_name_is_too_short_to_be_compared)
{
    constexpr qxsh::handle_name name = "_p_int";
    type_.name = name.text;
    EXPECT_EQ(taken("_1f0a9b7c_p_int", name), sizeof(qxsh::name_word) <= std::strlen("_p_int"));
}

// What the type accepts is the wrapper's question, for a handle that is remembered, too.
TEST_F(new_handle, is_taken_whatever_the_type_accepts)
{
    type_.cast = nullptr;
    const held_object word{"_1f0a9b7c_p_sample_t"};
    EXPECT_TRUE(qxsh::read_new_handle(word, &type_, sample_name));
    void *pointer;
    EXPECT_EQ(swig_convert_ptr(nullptr, word, &pointer, &type_, 0), -1);
    type_.cast = &cast_;
    cast_.converter = [](void *, int *) -> void * { return nullptr; };
    EXPECT_EQ(swig_convert_ptr(nullptr, word, &pointer, &type_, 0), 0);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(word.text(), "_1f0a9b7c_p_sample_t");
}

} // namespace
