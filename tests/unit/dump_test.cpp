// Dumps against a model that prints line by line with printf's own "%#x".
#include "helpers/dump.h"
#include "records/table.h"
#include "tests/unit/block.h"
#include "tests/unit/captured_output.h"

#include <cstdio>
#include <random>

// Records of every kind of field, in place of the catalogue's: packed, nested twice, and three with
// one field.
namespace qxsh {

const char table_names[] =
    "\0tag\0hue\0level\0view\0word\0lamp\0id\0mode\0group\0half\0serial\0kind\0"
    "whole\0bytes\0shorts\0words\0single\0secret\0secrets\0hidden\0now\0"
    "palette\0program\0a\0n\0x\0"
    "twenty_seven_characters_own\0another_of_twenty_seven_too\0"
    "a_name_of_more_than_two_pieces_of_a_dump_of_seventy_characters_or_more\0texts";

static table_name named(const std::string &name)
{
    const std::string_view all{table_names, sizeof table_names};
    return {static_cast<std::uint16_t>(all.find('\0' + name + '\0') + 1)};
}

enum { tag, view, lamp, twelve, number, many, texts };

// clang-format off
const field_row field_rows[] = {
    {named("hue"), 0, 1, 0, 0, 0, holding::number, true, -1},
    {named("level"), 1, 2, 0, 0, 0, holding::number, true, -1},

    {named("word"), 0, 4, 0, 0, 0, holding::number, true, -1},
    {named("tag"), 0, 3, 0, 0, 0, holding::number, true, tag}, // a union: over the same bytes

    {named("id"), 0, 2, 0, 0, 0, holding::number, true, -1},
    {named("mode"), 2, 1, 0, 0, 3, holding::number, true, -1},
    {named("group"), 2, 1, 0, 3, 5, holding::number, true, -1},
    {named("half"), 3, 2, 0, 5, 9, holding::number, true, -1},
    {named("serial"), 5, 4, 0, 0, 30, holding::number, true, -1},
    {named("kind"), 5, 4, 0, 30, 2, holding::number, true, -1},
    {named("whole"), 9, 4, 0, 0, 32, holding::number, true, -1},
    {named("bytes"), 13, 1, 6, 0, 0, holding::key, true, -1},
    {named("shorts"), 19, 2, 2, 0, 0, holding::number, true, -1},
    {named("words"), 23, 4, 12, 0, 0, holding::number, true, -1},
    {named("single"), 71, 1, 1, 0, 0, holding::number, true, -1},
    {named("secret"), 72, 4, 0, 0, 0, holding::number, false, -1},
    {named("secrets"), 76, 1, 4, 0, 0, holding::number, false, -1},
    {named("hidden"), 80, 3, 0, 0, 0, holding::number, false, tag},
    {named("now"), 83, 4, 0, 0, 0, holding::number, true, view},
    {named("palette"), 87, 3, 3, 0, 0, holding::number, true, tag},
    {named("program"), 96, 4, 2, 0, 0, holding::number, true, view},

    {named("a"), 0, 1, 12, 0, 0, holding::number, true, -1},
    {named("n"), 0, 4, 0, 0, 0, holding::number, true, -1},
    {named("x"), 0, 1, 4000, 0, 0, holding::number, true, -1},

    {named("twenty_seven_characters_own"), 0, 1, 0, 0, 0, holding::number, true, -1},
    {named("another_of_twenty_seven_too"), 1, 1, 0, 0, 0, holding::number, true, -1},
    {named("a_name_of_more_than_two_pieces_of_a_dump_of_seventy_characters_or_more"), 2, 1, 2, 0, 0,
     holding::number, true, -1},
};
// clang-format on

const record_row record_rows[] = {
    {named("tag"), 3, 0, 2, false, 0, -1},     {named("view"), 4, 2, 2, true, 0, -1},
    {named("lamp"), 104, 4, 17, false, 0, -1}, {named("a"), 12, 21, 1, false, 0, -1},
    {named("n"), 4, 22, 1, false, 0, -1},      {named("x"), 4000, 23, 1, false, 0, -1},
    {named("texts"), 4, 24, 3, false, 0, -1},
};

} // namespace qxsh

namespace {

using namespace qxsh;

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

void append_model(std::string &text, const unsigned char *record, const record_row &row)
{
    for (const auto &field : fields_of(row)) {
        if (!field.dumped)
            continue;
        const auto *const start = record + field.offset;
        const char *const name = field.name.text();
        if (field.record >= 0) {
            const record_row &inner = record_rows[field.record];
            for (unsigned i = 0; i < std::max<unsigned>(field.count, 1); ++i)
                append_model(text, start + i * inner.size, inner);
        } else if (field.count != 0) {
            for (unsigned i = 0; i < field.count; ++i)
                append_line(text, "%s[%d] = %#x\n", name, i,
                            bits_at(start + i * field.size, 0, 8u * field.size));
        } else {
            const unsigned width = field.width != 0 ? field.width : 8u * field.size;
            append_line(text, "%s = %#x \n", name, bits_at(start, field.bit, width));
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
    const block record{byte_list{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 255}};
    dump_record(record, twelve);
    EXPECT_EQ(output.take(),
              "a[0] = 0\na[1] = 0x1\na[2] = 0x2\na[3] = 0x3\na[4] = 0x4\na[5] = 0x5\n"
              "a[6] = 0x6\na[7] = 0x7\na[8] = 0x8\na[9] = 0x9\na[10] = 0xa\n"
              "a[11] = 0xff\n");
}

TEST(dumps, of_random_records_are_what_printf_prints)
{
    captured_output output;
    const record_row &row = record_rows[lamp];
    std::mt19937 random{1};
    for (int time = 0; time < 2000; ++time) {
        block record{row.size};
        // Short numbers are as frequent as long ones.
        for (std::uint32_t i = 0; i < row.size; ++i)
            *record.at(i) = static_cast<unsigned char>(random() % 3 == 0 ? random() : 0);
        std::string right;
        append_model(right, record.at(0), row);
        dump_record(record, lamp);
        ASSERT_EQ(output.calls(), 1);
        ASSERT_EQ(output.take(), right);
    }
}

TEST(dumps, of_random_numbers_are_what_printf_prints)
{
    captured_output output;
    std::mt19937 random{2};
    for (int time = 0; time < 5000; ++time) {
        const std::uint32_t value = static_cast<std::uint32_t>(random()) >> (random() % 32);
        block record{4};
        std::memcpy(record.at(0), &value, sizeof value);
        std::string right;
        append_line(right, "%s = %#x \n", "n", value);
        dump_record(record, number);
        ASSERT_EQ(output.take(), right);
    }
}

// Texts are copied in pieces of 32 bytes; before the values these have 32, 34 and 80.
TEST(dumps, of_long_names)
{
    captured_output output;
    const block record{byte_list{1, 0, 0x23, 0}};
    std::string right;
    append_model(right, record.at(0), record_rows[texts]);
    dump_record(record, texts);
    EXPECT_EQ(output.take(), right);
}

// Indices have as many digits as they need.
TEST(dumps, of_long_arrays)
{
    captured_output output;
    const block record{4000};
    std::string right;
    append_model(right, record.at(0), record_rows[many]);
    dump_record(record, many);
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), right);
}

} // namespace
