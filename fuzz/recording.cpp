// Fuzz target: the reader of recordings. What the writer of lines writes comes back byte for byte;
// any other text is read or refused in one line, without a key in it, and what was read comes back
// when it is written again. Input: one byte selects a file, the text behind a header, or a call;
// that is a byte for the function, one for keys, two that its memory is made of, and then edits of
// its line: two bytes for the place, one for what is done there, one for a character.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/own_folder.h"
#include "fuzz/target.h"

#include "record_numbers.h"
#include "records/call_line.h"
#include "records/sha256.h"
#include "replay/recorded_line.h"
#include "replay/recording_reader.h"

#include <algorithm>
#include <fstream>

namespace fuzz {

namespace {

using qxsh::call_word;
using qxsh::recorded_call;
using qxsh::recorded_keys;
using qxsh::recorded_memory;

std::string folder;
const std::string salt = "sixteen of bytes";
constexpr std::string_view key_text = "KEYKEY"; // texts in place of numbers

void check_message(const std::string &text)
{
    expect(!text.empty() && text.size() < 400, "a message is a line");
    for (const char one : text)
        expect(one >= ' ' && one <= '~', "a message is printable");
    // Names of members and functions are told, between quotes.
    bool quoted = false;
    std::string values;
    for (const char one : text) {
        quoted = quoted != (one == '"');
        if (!quoted)
            values += one;
    }
    if (values.find(key_text) != values.npos)
        finding("a message tells a value: " + text);
}

// ---------------------------------------------------------------------------------- files

void read_file(const std::string &text)
{
    const std::string name = folder + "/recording";
    std::ofstream{name, std::ios::binary} << text;
    std::uint64_t calls = 0;
    try {
        qxsh::recording_reader reader{name};
        recorded_call call;
        for (unsigned pass = 0; pass < 2; ++pass) {
            std::uint64_t last = 0;
            std::uint64_t count = 0;
            for (; reader.next(call); last = call.number, ++count)
                expect(call.row != nullptr && call.number > last, "calls ascend");
            expect(pass == 0 || count == calls, "the second time has the same calls");
            calls = count;
            reader.restart();
        }
    } catch (const qxsh::recording_error &error) {
        check_message(error.text);
        const auto lines = static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
        expect(error.line >= 1 && error.line <= lines + 1, "the message's line is in the file");
    }
}

// ---------------------------------------------------------------------------------- calls

// A call with its memory, before and after.
struct made_call
{
    const qxsh::call_row *row;
    std::vector<call_word> words;
    std::vector<std::string> before;
    std::vector<std::string> after;
};

// Memory of a few bytes again and again, so that zeros are among it.
made_call made_of(bytes &input)
{
    made_call call{&qxsh::call_rows[input.below(qxsh::call_count)], {}, {}, {}};
    const std::uint8_t step = input.byte();
    std::uint8_t value = input.byte();
    const auto fill = [&](std::size_t size) {
        std::string text(size, '\0');
        for (char &one : text)
            one = static_cast<char>((value = static_cast<std::uint8_t>(value * 5 + step)) & step);
        return text;
    };
    const auto rows = arguments_of(*call.row);
    for (const qxsh::argument_row &row : rows) {
        const std::uint32_t most = row.size >= 4 ? UINT32_MAX : (1U << 8 * row.size) - 1;
        call.words.emplace_back((value * 0x01010101U) & most);
    }
    for (const qxsh::argument_row &row : rows)
        if (row.count >= 0)
            call.words[static_cast<std::size_t>(row.count)] = call_word{step % 4U};
    for (const qxsh::argument_row &row : rows) {
        const std::size_t count =
            row.count < 0 ? 1 : call.words[static_cast<std::size_t>(row.count)].value;
        call.before.push_back(row.pointer ? fill(count * row.size) : "");
        call.after.push_back(row.way == qxsh::direction::in ? call.before.back()
                                                            : fill(call.before.back().size()));
    }
    return call;
}

// The line without its end.
std::string line_of(const made_call &call, recorded_keys keys)
{
    static const qxsh::hidden_text salted{
        [](const unsigned char *bytes, std::size_t size, const void *) {
            return qxsh::fingerprint(salt, bytes, size);
        },
        nullptr};
    qxsh::call_line line{qxsh::most_recorded_elements};
    line.show_keys(keys == recorded_keys::clear,
                   keys == recorded_keys::lengths ? qxsh::length_text : salted);
    std::vector<std::string> memory = call.before;
    std::vector<call_word> words = call.words;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (arguments_of(*call.row)[i].pointer)
            words[i] = call_word{static_cast<void *>(memory[i].data())};
    line.start(*call.row, words.data());
    for (std::size_t i = 0; i < words.size(); ++i)
        std::copy(call.after[i].begin(), call.after[i].end(), memory[i].begin());
    std::string text = line.finish(*call.row, words.data(), {1, 2, 3, "QX", false});
    text.pop_back();
    return text;
}

// Bytes that are told are right, the others are zero and belong to a hidden field.
void check_memory(const recorded_memory &read, const std::string &memory)
{
    expect(read.read && read.bytes.size() == memory.size() && read.known.size() == memory.size(),
           "as much memory comes back");
    for (std::size_t i = 0; i < memory.size(); ++i) {
        const auto should = static_cast<unsigned char>(read.known[i] != 0 ? memory[i] : 0);
        expect_equal(unsigned{read.bytes[i]}, unsigned{should}, "byte " + std::to_string(i));
        const bool hidden = std::any_of(read.keys.begin(), read.keys.end(), [i](const auto &one) {
            return one.offset <= i && i < one.offset + one.size;
        });
        expect(read.known[i] != 0 || hidden, "what is not told is hidden");
    }
}

void check_round_trip(const made_call &call, const std::string &line, recorded_keys keys)
{
    recorded_call read;
    const std::string mistake = qxsh::recorded_line{keys}.read(line, read);
    expect_equal(mistake, std::string{}, "the reader's opinion of a written line", line);
    expect(read.row == call.row && read.number == 1 && read.status == 3, "the call comes back");
    for (std::size_t i = 0; i < call.words.size(); ++i) {
        if (!arguments_of(*call.row)[i].pointer) {
            expect_equal(read.arguments[i].value, call.words[i].value, "an argument");
            continue;
        }
        check_memory(read.arguments[i].before, call.before[i]);
        check_memory(read.arguments[i].after, call.after[i]);
    }
}

void edit(std::string &line, bytes &input)
{
    static constexpr std::string_view pieces[] = {"0",
                                                  "{",
                                                  "}",
                                                  "[",
                                                  "]",
                                                  ",",
                                                  "\"KEYKEY\"",
                                                  "null",
                                                  "65536",
                                                  "\"before\": ",
                                                  "-",
                                                  ", \"padding(1)\": "
                                                  "\"01\""};
    const std::size_t at = input.below(65536) % (line.size() + 1);
    const std::uint8_t what = input.byte();
    const std::uint8_t by = input.byte();
    switch (what % 6) {
    case 0:
        line.erase(at, 1 + by);
        break;
    case 1:
        line.insert(at, 1, static_cast<char>(by));
        break;
    case 2:
        line.insert(at, line.substr(at, by));
        break;
    case 3:
        line.resize(at);
        break;
    case 4: { // a number becomes something else
        const std::size_t digit = line.find_first_of("0123456789", at);
        const std::size_t end = line.find_first_not_of("0123456789", digit);
        if (digit != line.npos)
            line.replace(digit, end - digit, pieces[by % std::size(pieces)]);
        break;
    }
    default:
        line.insert(at, pieces[by % std::size(pieces)]);
    }
}

// A line that was accepted, written again from what was read.
void check_again(const recorded_call &read)
{
    made_call call{read.row, {}, {}, {}};
    for (std::size_t i = 0; i < read.arguments.size(); ++i) {
        const qxsh::recorded_argument &one = read.arguments[i];
        if (one.null || !one.before.read || !one.after.read ||
            one.before.bytes.size() != one.after.bytes.size())
            return;
        call.words.emplace_back(one.value);
        call.before.emplace_back(one.before.bytes.begin(), one.before.bytes.end());
        call.after.emplace_back(one.after.bytes.begin(), one.after.bytes.end());
    }
    check_round_trip(call, line_of(call, recorded_keys::clear), recorded_keys::clear);
}

void read_call(bytes &input)
{
    const auto keys = static_cast<recorded_keys>(input.byte() % 3);
    const made_call call = made_of(input);
    std::string line = line_of(call, keys);
    check_round_trip(call, line, keys);
    if (input.empty())
        return;
    while (!input.empty())
        edit(line, input);
    std::replace(line.begin(), line.end(), '\n', ' ');
    recorded_call read;
    const std::string mistake = qxsh::recorded_line{keys}.read(line, read);
    if (!mistake.empty())
        check_message(mistake);
    else if (keys == recorded_keys::clear)
        check_again(read);
}

} // namespace

void prepare(const char *)
{
    folder = own_folder();
}

void execute(std::span<const std::uint8_t> data)
{
    bytes input{data};
    qxsh::recording_header header;
    header.keys = recorded_keys::clear;
    switch (input.byte() % 8) {
    case 0:
        return read_file(input.rest());
    case 1:
        return read_file(header_line(header) + input.rest());
    default:
        return read_call(input);
    }
}

} // namespace fuzz
