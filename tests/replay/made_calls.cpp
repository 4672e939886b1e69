// Random calls, their recording, and where a path leads.
#include "made_calls.h"

#include "record_numbers.h"
#include "records/call_line.h"
#include "records/json.h"
#include "records/sha256.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace recorded {

using qxsh::argument_row;
using qxsh::direction;
using qxsh::field_row;
using qxsh::record_row;

made_call::made_call(const qxsh::call_row &call, std::mt19937 &random)
    : status(random() % 100), values(call.arguments), null(call.arguments), before(call.arguments),
      after(call.arguments), row_(&call)
{
    const auto fill = [&random](std::vector<unsigned char> &bytes) {
        for (unsigned char &one : bytes)
            one = static_cast<unsigned char>(random());
    };
    for (std::size_t i = 0; i < call.arguments; ++i)
        if (!argument(i).pointer)
            values[i] = static_cast<std::uint32_t>(random()) >> (32 - 8 * argument(i).size);
    for (std::size_t i = 0; i < call.arguments; ++i) {
        const argument_row &one = argument(i);
        if (!one.pointer)
            continue;
        std::size_t elements = 1;
        if (one.count >= 0)
            elements = values[static_cast<std::size_t>(one.count)] = 1 + random() % 3;
        before[i].resize(elements * one.size);
        fill(before[i]);
        after[i] = before[i];
        if (one.way != direction::in)
            fill(after[i]);
    }
}

std::vector<qxsh::call_word> made_call::words()
{
    std::vector<qxsh::call_word> result;
    for (std::size_t i = 0; i < row_->arguments; ++i) {
        if (!argument(i).pointer)
            result.emplace_back(values[i]);
        else
            result.emplace_back(null[i] ? nullptr : static_cast<void *>(before[i].data()));
    }
    return result;
}

std::vector<made_call> one_of_each(unsigned seed)
{
    std::mt19937 random{seed};
    std::vector<made_call> calls;
    for (unsigned i = 0; i < qxsh::call_count; ++i)
        calls.emplace_back(qxsh::call_rows[i], random);
    return calls;
}

std::string recording_of(const qxsh::recording_header &header, std::vector<made_call> &calls)
{
    const qxsh::hidden_text salted{
        [](const unsigned char *bytes, std::size_t size, const void *salt) {
            return qxsh::fingerprint(*static_cast<const std::string *>(salt), bytes, size);
        },
        &header.salt};
    const bool lengths = header.keys == qxsh::recorded_keys::lengths;
    qxsh::call_line line{64};
    line.show_keys(header.keys == qxsh::recorded_keys::clear, lengths ? qxsh::length_text : salted);
    std::string text = header_line(header);
    unsigned number = 0;
    for (made_call &one : calls) {
        const std::vector<qxsh::call_word> words = one.words();
        line.start(one.row(), words.data());
        const auto saved = one.before;
        for (std::size_t i = 0; i < words.size(); ++i)
            std::copy(one.after[i].begin(), one.after[i].end(), one.before[i].begin());
        text += line.finish(one.row(), words.data(), {++number, 77, one.status, "QX_ANY", false});
        for (std::size_t i = 0; i < words.size(); ++i)
            std::copy(saved[i].begin(), saved[i].end(), one.before[i].begin());
    }
    return text;
}

static std::string scratch_file(const std::string &name)
{
    const char *const folder = std::getenv("TMPDIR");
    return std::string{folder != nullptr ? folder : "/tmp"} + "/qx_replay_" +
           std::to_string(getpid()) + "_" + name;
}

file::file(const std::string &short_name, const std::string &text) : name(scratch_file(short_name))
{
    std::ofstream{name, std::ios::binary} << text;
}

file::~file()
{
    std::remove(name.c_str());
}

// "nexthop.id.port_id", "tag(1).vlan_id", "padding(3)".
place place_of(const record_row &record, const std::string &path)
{
    const std::string first = path.substr(0, path.find('.'));
    const std::string name = first.substr(0, first.find('('));
    const bool indexed = name.size() < first.size();
    const unsigned index =
        indexed ? static_cast<unsigned>(std::stoul(first.substr(name.size() + 1))) : 0;
    if (name == "padding")
        return {index, 1};
    for (const field_row &field : fields_of(record)) {
        if (name != field.name.text())
            continue;
        const unsigned at = field.offset + index * field.size;
        if (field.record < 0)
            return {at, indexed ? field.size : elements_of(field) * field.size};
        const place inside = place_of(*record_in(field), path.substr(first.size() + 1));
        return {at + inside.at, inside.size};
    }
    ADD_FAILURE() << record.name.text() << " has no " << path;
    return {0, 0};
}

static void mark_keys(std::vector<bool> &keys, const record_row &record, unsigned at)
{
    for (const field_row &field : fields_of(record)) {
        for (unsigned i = 0; i < elements_of(field); ++i) {
            const unsigned start = at + field.offset + i * field.size;
            if (field.record >= 0)
                mark_keys(keys, *record_in(field), start);
            else if (field.holds == qxsh::holding::key)
                keys[start] = true;
        }
    }
}

std::vector<bool> key_bytes(const argument_row &argument)
{
    std::vector<bool> keys(argument.size);
    if (argument.record >= 0)
        mark_keys(keys, qxsh::record_rows[argument.record], 0);
    return keys;
}

} // namespace recorded
