// Dumps against a model that prints line by line with printf's own "%#x".
#include "helpers/dump.h"
#include "tests/unit/block.h"
#include "tests/unit/captured_output.h"

#include <cstdio>
#include <random>

namespace {

using namespace qxsh;

// A packed record of every kind of field, nested twice; 3 bytes, then 8 of them, then all.
constexpr field_layout tag_fields[] = {
    {"hue", 0, 1, 0, 0, 0, nullptr, true},
    {"level", 1, 2, 0, 0, 0, nullptr, true},
};
constexpr record_layout tag = {3, tag_fields};

constexpr field_layout view_fields[] = {
    {"word", 0, 4, 0, 0, 0, nullptr, true},
    {"tag", 0, 0, 0, 0, 0, &tag, true}, // a union: over the same bytes
};
constexpr record_layout view = {4, view_fields};

// clang-format off
constexpr field_layout lamp_fields[] = {
    {"id", 0, 2, 0, 0, 0, nullptr, true},
    {"mode", 2, 1, 0, 3, 0, nullptr, true},
    {"group", 2, 1, 3, 5, 0, nullptr, true},
    {"half", 3, 2, 5, 9, 0, nullptr, true},
    {"serial", 5, 4, 0, 30, 0, nullptr, true},
    {"kind", 5, 4, 30, 2, 0, nullptr, true},
    {"whole", 9, 4, 0, 32, 0, nullptr, true},
    {"bytes", 13, 1, 0, 0, 6, nullptr, true},
    {"shorts", 19, 2, 0, 0, 2, nullptr, true},
    {"words", 23, 4, 0, 0, 12, nullptr, true},
    {"single", 71, 1, 0, 0, 1, nullptr, true},
    {"secret", 72, 4, 0, 0, 0, nullptr, false},
    {"secrets", 76, 1, 0, 0, 4, nullptr, false},
    {"hidden", 80, 0, 0, 0, 0, &tag, false},
    {"now", 83, 0, 0, 0, 0, &view, true},
    {"palette", 87, 0, 0, 0, 3, &tag, true},
    {"program", 96, 0, 0, 0, 2, &view, true},
};
// clang-format on
constexpr record_layout lamp = {104, lamp_fields};

void append_line(std::string &text, const char *format, const char *name, unsigned first,
                 unsigned second = 0)
{
    char line[100];
    std::snprintf(line, sizeof line, format, name, first, second);
    text += line;
}

// `width` bits from bit `first` of the bytes at `start`.
unsigned bits_at(const unsigned char *start, unsigned first, unsigned width)
{
    unsigned value = 0;
    for (unsigned i = 0; i < width; ++i)
        value |= (start[(first + i) / 8] >> ((first + i) % 8) & 1u) << i;
    return value;
}

void append_model(std::string &text, const unsigned char *record, const record_layout &layout)
{
    for (const auto &field : layout.fields) {
        if (!field.dumped)
            continue;
        const auto *const start = record + field.offset;
        if (field.nested != nullptr) {
            for (unsigned i = 0; i < std::max<unsigned>(field.count, 1); ++i)
                append_model(text, start + i * field.nested->size, *field.nested);
        } else if (field.count != 0) {
            for (unsigned i = 0; i < field.count; ++i)
                append_line(text, "%s[%d] = %#x\n", field.name.text, i,
                            bits_at(start + i * field.size, 0, 8u * field.size));
        } else {
            const unsigned width = field.width != 0 ? field.width : 8u * field.size;
            append_line(text, "%s = %#x \n", field.name.text, bits_at(start, field.bit, width));
        }
    }
}

TEST(dumps, of_null_print_nothing)
{
    captured_output output;
    dump_record(nullptr, lamp);
    EXPECT_EQ(output.calls(), 0);
}

TEST(dumps, of_zeros)
{
    captured_output output;
    const block record{3};
    dump_record(record, tag);
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), "hue = 0 \nlevel = 0 \n");
}

TEST(dumps, of_a_union_show_every_member)
{
    captured_output output;
    const block record{byte_list{0x01, 0xff, 0x23, 0x45}};
    dump_record(record, view);
    EXPECT_EQ(output.take(), "word = 0x4523ff01 \nhue = 0x1 \nlevel = 0x23ff \n");
}

TEST(dumps, of_arrays_count_from_zero_without_a_blank)
{
    captured_output output;
    static constexpr field_layout fields[] = {{"a", 0, 1, 0, 0, 12, nullptr, true}};
    static constexpr record_layout layout = {12, fields};
    const block record{byte_list{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 255}};
    dump_record(record, layout);
    EXPECT_EQ(output.take(),
              "a[0] = 0\na[1] = 0x1\na[2] = 0x2\na[3] = 0x3\na[4] = 0x4\na[5] = 0x5\n"
              "a[6] = 0x6\na[7] = 0x7\na[8] = 0x8\na[9] = 0x9\na[10] = 0xa\n"
              "a[11] = 0xff\n");
}

TEST(dumps, of_random_records_are_what_printf_prints)
{
    captured_output output;
    std::mt19937 random{1};
    for (int time = 0; time < 2000; ++time) {
        block record{lamp.size};
        // Short numbers are as frequent as long ones.
        for (std::uint32_t i = 0; i < lamp.size; ++i)
            *record.at(i) = static_cast<unsigned char>(random() % 3 == 0 ? random() : 0);
        std::string right;
        append_model(right, record.at(0), lamp);
        dump_record(record, lamp);
        ASSERT_EQ(output.calls(), 1);
        ASSERT_EQ(output.take(), right);
    }
}

TEST(dumps, of_random_numbers_are_what_printf_prints)
{
    captured_output output;
    static constexpr field_layout fields[] = {{"n", 0, 4, 0, 0, 0, nullptr, true}};
    static constexpr record_layout layout = {4, fields};
    std::mt19937 random{2};
    for (int time = 0; time < 5000; ++time) {
        const std::uint32_t value = static_cast<std::uint32_t>(random()) >> (random() % 32);
        block record{4};
        std::memcpy(record.at(0), &value, sizeof value);
        std::string right;
        append_line(right, "%s = %#x \n", "n", value);
        dump_record(record, layout);
        ASSERT_EQ(output.take(), right);
    }
}

// Indices have as many digits as they need.
TEST(dumps, of_long_arrays)
{
    captured_output output;
    static constexpr field_layout fields[] = {{"x", 0, 1, 0, 0, 4000, nullptr, true}};
    static constexpr record_layout layout = {4000, fields};
    const block record{4000};
    std::string right;
    append_model(right, record.at(0), layout);
    dump_record(record, layout);
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), right);
}

} // namespace
