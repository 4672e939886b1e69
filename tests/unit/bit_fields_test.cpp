// Every bit-field of every record through its commands: the setter reaches exactly its bits, the
// getter reads them, and the places are those of the independent table of fields.
#include "helpers/block_memory.h"
#include "runtime/handle.h"
#include "shell/demo.h"
#include "tests/unit/bit_field_place.h"
#include "tests/unit/expected_table.h"
#include "tests/unit/interpreter.h"

#include <cstring>
#include <map>
#include <random>

namespace {

struct bit_field
{
    std::string record;
    std::string field;
    unsigned offset;
    unsigned bit;
    unsigned width;
    unsigned unit_bits;
};

std::vector<bit_field> expected_bit_fields()
{
    std::vector<bit_field> result;
    for (const auto &row : read_expected("fields.tsv")) {
        if (row[3] != "-") {
            const auto number = [&](int column) {
                return static_cast<unsigned>(std::stoul(row[column]));
            };
            result.push_back({row[0], row[1], number(2), number(3), number(4),
                              static_cast<unsigned>(std::stoul(row[6].substr(1)))});
        }
    }
    return result;
}

// The record's bytes after `value`'s low bits went to the field, one by one.
std::vector<unsigned char> with_field(std::vector<unsigned char> bytes, const bit_field &field,
                                      unsigned value)
{
    for (unsigned i = 0; i < field.width; ++i) {
        const unsigned place = 8 * field.offset + field.bit + i;
        const auto mask = static_cast<unsigned char>(1u << (place % 8));
        bytes[place / 8] = static_cast<unsigned char>(
            (value >> i & 1) != 0 ? bytes[place / 8] | mask : bytes[place / 8] & ~mask);
    }
    return bytes;
}

TEST(bit_fields, are_those_of_the_table)
{
    std::map<std::string, std::vector<unsigned>> places;
    for (const auto *place = bit_field_places; place->name != nullptr; ++place)
        places[place->name] = {place->offset, place->bit, place->width};
    const auto fields = expected_bit_fields();
    EXPECT_EQ(places.size(), fields.size());
    EXPECT_GT(fields.size(), 10u);
    for (const auto &each : fields)
        EXPECT_EQ(places[each.record + "." + each.field],
                  (std::vector{each.offset, each.bit, each.width}))
            << each.record << "." << each.field;
}

TEST(bit_fields, are_set_and_read_alone)
{
    std::map<std::string, std::size_t> sizes;
    for (const auto &row : read_expected("records.tsv"))
        sizes[row[0]] = std::stoul(row[2]);
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    std::mt19937 random{4};
    for (const auto &each : expected_bit_fields()) {
        const auto &record = each.record;
        const auto stem = record.ends_with("_t") ? record.substr(0, record.size() - 2) : record;
        const auto handle = tcl.value(stem + "_create");
        void *start;
        ASSERT_EQ(swig_convert_ptr(tcl, held_object{handle}, &start, nullptr, 0), 0);
        for (int time = 0; time < 40; ++time) {
            std::vector<unsigned char> bytes(sizes[record]);
            for (auto &byte : bytes)
                byte = static_cast<unsigned char>(time == 0 ? 0 : time == 1 ? 0xff : random());
            // Any value of the argument's type: what is too much is cut off.
            const auto value = static_cast<unsigned>(random()) >> (32 - each.unit_bits);
            std::memcpy(start, bytes.data(), bytes.size());
            const auto right = with_field(bytes, each, value);
            const auto words = "_" + each.field + " " + handle;
            ASSERT_EQ(tcl.value(stem + "_set" + words + " " + std::to_string(value)), "");
            std::memcpy(bytes.data(), start, bytes.size());
            ASSERT_EQ(bytes, right) << record << "." << each.field << " = " << value;
            const auto mask = UINT32_MAX >> (32 - each.width);
            ASSERT_EQ(tcl.value(stem + "_get" + words), std::to_string(value & mask));
        }
        qxsh::free_block(start);
    }
}

TEST(bit_fields, of_null)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    for (const auto &each : expected_bit_fields()) {
        const auto &record = each.record;
        const auto stem = record.ends_with("_t") ? record.substr(0, record.size() - 2) : record;
        EXPECT_EQ(tcl.value(stem + "_set_" + each.field + " NULL 1"), "");
        EXPECT_EQ(tcl.value(stem + "_get_" + each.field + " NULL"), "0");
    }
}

} // namespace
