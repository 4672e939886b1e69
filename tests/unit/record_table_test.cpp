// The table of records and calls, and the values that it leads to, against the tables of fields and
// commands.
#include "record_numbers.h"
#include "records/values.h"
#include "tests/unit/expected_table.h"

#include <map>
#include <random>
#include <set>
#include <sstream>

namespace {

using namespace qxsh;

int number_or_0(const std::string &text)
{
    return text == "-" ? 0 : std::stoi(text);
}

// The fields that tests/expected has for a record.
std::vector<table_row> expected_fields(const std::string &record)
{
    static const auto all = read_expected("fields.tsv");
    std::vector<table_row> fields;
    for (const table_row &row : all)
        if (row[0] == record)
            fields.push_back(row);
    return fields;
}

std::string type_of(const field_row &field)
{
    const record_row *const record = record_in(field);
    return record != nullptr ? record->name.text() : "u" + std::to_string(8 * field.size);
}

TEST(record_table, has_the_fields_of_every_record)
{
    const auto records = read_expected("records.tsv");
    EXPECT_EQ(records.size(), std::size_t{record_count});
    std::map<std::string, table_row> expected;
    for (const table_row &row : records)
        expected[row[0]] = row;
    for (const record_row &record : std::span{record_rows, record_count}) {
        const std::string name = record.name.text();
        SCOPED_TRACE(name);
        ASSERT_TRUE(expected.contains(name));
        EXPECT_EQ(record.is_union, expected[name][1] == "union");
        EXPECT_EQ(std::to_string(record.size), expected[name][2]);
        const auto fields = expected_fields(name);
        ASSERT_EQ(record.fields, fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const field_row &field = fields_of(record)[i];
            const table_row &row = fields[i];
            EXPECT_EQ(field.name.text(), row[1]);
            EXPECT_EQ(field.offset, std::stoi(row[2])) << row[1];
            EXPECT_EQ(field.bit, number_or_0(row[3])) << row[1];
            EXPECT_EQ(field.width, number_or_0(row[4])) << row[1];
            EXPECT_EQ(field.count, number_or_0(row[5])) << row[1];
            EXPECT_EQ(type_of(field), row[6]) << row[1];
            EXPECT_EQ(field.dumped, row[10] == "yes") << row[1];
        }
    }
}

TEST(record_table, knows_the_keys)
{
    std::set<std::string> keys;
    for (const record_row &record : std::span{record_rows, record_count})
        for (const field_row &field : fields_of(record))
            if (field.holds == holding::key)
                keys.insert(std::string{record.name.text()} + "." + field.name.text());
    const std::set<std::string> expected{"qx_ipsec_sa_t.ekey", "qx_ipsec_sa_t.akey",
                                         "qx_pptp_sa_t.key", "qx_l2tp_tunnel_cfg_t.cookie"};
    EXPECT_EQ(keys, expected);
}

TEST(record_table, has_the_arguments_of_every_call)
{
    std::map<std::string, table_row> expected;
    for (const table_row &row : read_expected("commands.tsv"))
        if (row[3] == "status")
            expected[row[0]] = row;
    EXPECT_EQ(expected.size(), std::size_t{call_count});
    for (const call_row &call : std::span{call_rows, call_count}) {
        const std::string name = call.name.text();
        SCOPED_TRACE(name);
        ASSERT_TRUE(expected.contains(name));
        std::istringstream usage{expected[name][1]};
        std::istringstream types{expected[name][2]};
        std::string word;
        usage >> word; // the call itself
        for (const argument_row &argument : arguments_of(call)) {
            usage >> word;
            EXPECT_EQ(argument.name.text(), word);
            std::getline(types, word, ',');
            EXPECT_EQ(argument.pointer, word.ends_with('*'));
            if (argument.record >= 0) {
                EXPECT_EQ(record_rows[argument.record].name.text() + std::string{" *"}, word);
                EXPECT_EQ(argument.size, record_rows[argument.record].size);
            }
            // The fourth argument counts the fifth.
            EXPECT_EQ(argument.count, std::string{argument.name.text()} == "sa_array" ? 3 : -1);
            EXPECT_LE(argument.place + (argument.count < 0 ? argument.size : 0), most_frame_bytes);
        }
        usage >> word;
        EXPECT_EQ(word, "|");
        EXPECT_TRUE(types.eof());
        EXPECT_EQ(call.names_device,
                  arguments_of(call)[0].name.text() == std::string{"dev_id"} ||
                      arguments_of(call)[0].name.text() == std::string{"device_id"});
    }
}

// `width` bits from bit `first` of the bytes at `start`.
std::uint32_t bits_at(const unsigned char *start, unsigned first, unsigned width)
{
    std::uint32_t value = 0;
    for (unsigned i = 0; i < width; ++i)
        value |= (start[(first + i) / 8] >> ((first + i) % 8) & 1U) << i;
    return value;
}

TEST(record_values, are_the_bits_of_their_field)
{
    std::mt19937 random{1};
    unsigned char bytes[most_record_bytes];
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(random());
    for (const field_row &field : std::span{field_rows, field_count}) {
        if (field.record >= 0)
            continue;
        for (unsigned i = 0; i < elements_of(field); ++i) {
            const unsigned width = field.width != 0 ? field.width : 8U * field.size;
            EXPECT_EQ(read_field(bytes, field, i),
                      bits_at(bytes, 8 * (field.offset + i * field.size) + field.bit, width))
                << field.name.text();
        }
    }
}

TEST(record_values, written_leave_their_neighbours_alone)
{
    for (const unsigned size : {1u, 2u, 4u}) {
        unsigned char bytes[] = {9, 9, 9, 9, 9, 9, 9};
        write_number(bytes + 1, size, 0x84838281);
        EXPECT_EQ(read_number(bytes + 1, size), 0x84838281 & bit_mask(0, 8 * size));
        EXPECT_EQ(bytes[0], 9);
        EXPECT_EQ(bytes[1 + size], 9);
    }
}

// Which bytes belong to fields, by the expected table.
void mark_expected(std::vector<bool> &used, const std::string &record, std::size_t start)
{
    for (const table_row &row : expected_fields(record)) {
        const auto size = static_cast<std::size_t>(std::stoi(row[7]));
        const bool nested = row[6].starts_with("qx_");
        const std::size_t element = nested ? size : std::stoul(row[6].substr(1)) / 8;
        for (int i = 0; i < std::max(1, number_or_0(row[5])); ++i) {
            const std::size_t at =
                start + std::stoul(row[2]) + static_cast<std::size_t>(i) * element;
            if (nested)
                mark_expected(used, row[6], at);
            else
                std::fill_n(used.begin() + static_cast<std::ptrdiff_t>(at), element, true);
        }
    }
}

TEST(record_values, padding_is_what_belongs_to_no_field)
{
    unsigned padded = 0;
    for (const record_row &record : std::span{record_rows, record_count}) {
        SCOPED_TRACE(record.name.text());
        std::vector<bool> used(record.size);
        mark_expected(used, record.name.text(), 0);
        std::vector<unsigned char> bytes(record.size + 1U, 0xff);
        clear_padding(bytes.data(), record);
        for (std::size_t i = 0; i < record.size; ++i) {
            ASSERT_EQ(bytes[i], used[i] ? 0xff : 0) << i;
            padded += used[i] ? 0 : 1;
        }
        EXPECT_EQ(bytes.back(), 0xff);
    }
    EXPECT_GT(padded, 50u);
}

} // namespace
