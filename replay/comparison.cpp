// Comparing records byte by byte, and naming the fields that differ.
#include "replay/comparison.h"

#include "record_numbers.h"
#include "records/address_text.h"
#include "records/sha256.h"
#include "records/values.h"

#include <algorithm>
#include <cstring>

namespace qxsh {

namespace {

using hidden_key = recorded_memory::hidden;

std::string ip_text(const unsigned char *place)
{
    address_words words;
    std::memcpy(words, place, sizeof words);
    char text[most_address_text];
    const bool short_one = words[1] == 0 && words[2] == 0 && words[3] == 0;
    return {text, short_one ? put_ipv4(text, words[0]) : put_ipv6(text, words)};
}

// A field as a difference shows it; of an array of plain numbers, one element.
std::string value_text(const unsigned char *record, const field_row &field, unsigned index)
{
    char text[most_address_text];
    switch (field.holds) {
    case holding::mac:
        return {text, put_mac(text, place_of(record, field))};
    case holding::ipv4:
        return {text, put_ipv4(text, read_field(record, field, index))};
    case holding::ipv6:
    case holding::ip:
        return ip_text(place_of(record, field));
    default:
        return std::to_string(read_field(record, field, index));
    }
}

// Whether an array is shown as one value.
bool is_one_value(const field_row &field)
{
    return field.count == 0 || (field.holds != holding::number && field.holds != holding::ipv4);
}

// One record or number on both sides.
class element_comparison
{
public:
    // `recorded` and `now` are null where the other side has no recorded memory.
    struct side
    {
        const unsigned char *bytes;    // of the element
        const recorded_memory *memory; // null: all bytes are known
        std::uint32_t at;              // of the element, from the memory's start
        const std::string *salt;       // of fingerprints; null: they cannot be made again

        bool knows(unsigned from, unsigned size) const
        {
            return memory == nullptr ||
                   std::memchr(memory->known.data() + at + from, 0, size) == nullptr;
        }
        const hidden_key *hidden(unsigned from, unsigned size) const;
        std::string key_text(unsigned from, unsigned size, const std::string &with) const;
    };

    element_comparison(const side &recorded, const side &now, const loose_places &loose,
                       const difference_taker &taker, const argument_row &argument,
                       std::string path)
        : recorded_(recorded), now_(now), loose_(loose), taker_(taker), argument_(argument),
          path_(std::move(path))
    {}

    bool run();

private:
    bool may_differ();
    bool has_difference(unsigned at, unsigned size, std::uint32_t mask = UINT32_MAX);
    void forget_loose(const record_row &row, unsigned at);
    bool record(const record_row &row, unsigned at);
    bool field(const field_row &field, unsigned at);
    bool key(const field_row &field, unsigned at);
    bool padding(const record_row &row);
    bool report(const std::string &place, const std::string &recorded, const std::string &now)
    {
        return taker_({argument_.name.text(), path_ + place, recorded, now});
    }

    const side recorded_;
    const side now_;
    const loose_places &loose_;
    const difference_taker &taker_;
    const argument_row &argument_;
    std::string path_;
    unsigned char differs_[most_record_bytes];    // bits that no field has shown yet
    unsigned char shown_keys_[most_record_bytes]; // 1 for each byte of a key that was reported
};

// The field in whose place the recording has a text.
const hidden_key *element_comparison::side::hidden(unsigned from, unsigned size) const
{
    if (memory == nullptr)
        return nullptr;
    for (const hidden_key &one : memory->keys)
        if (one.offset == at + from && one.size == size)
            return &one;
    return nullptr;
}

// The fingerprint of a key, as written or with a salt.
std::string element_comparison::side::key_text(unsigned from, unsigned size,
                                               const std::string &with) const
{
    const hidden_key *const text = hidden(from, size);
    return text != nullptr ? text->text : fingerprint(with, bytes + from, size);
}

// Fills differs_; false if nothing is there to look at.
bool element_comparison::may_differ()
{
    const unsigned size = argument_.size;
    const auto has_keys = [](const side &one) {
        return one.memory != nullptr && !one.memory->keys.empty();
    };
    const bool keys = has_keys(recorded_) || has_keys(now_);
    if (!keys && std::memcmp(recorded_.bytes, now_.bytes, size) == 0)
        return false;
    for (unsigned i = 0; i < size; ++i) {
        const bool known = recorded_.knows(i, 1) && now_.knows(i, 1);
        differs_[i] = known ? recorded_.bytes[i] ^ now_.bytes[i] : 0;
    }
    return true;
}

// Whether bits differ that no field has shown; they are shown now.
bool element_comparison::has_difference(unsigned at, unsigned size, std::uint32_t mask)
{
    bool result = false;
    for (unsigned i = at; i < at + size; ++i, mask = mask >> 8 | mask << 24) {
        const auto bits = static_cast<unsigned char>(mask & 255);
        result = result || (differs_[i] & bits) != 0;
        differs_[i] &= static_cast<unsigned char>(~bits);
    }
    return result;
}

void element_comparison::forget_loose(const record_row &row, unsigned at)
{
    for (const field_row &one : fields_of(row)) {
        const record_row *const inner = record_in(one);
        for (unsigned i = 0; i < elements_of(one); ++i) {
            const unsigned place = at + one.offset + i * one.size;
            if (inner != nullptr)
                forget_loose(*inner, place);
            else if (loose_.has(one))
                has_difference(place, one.size,
                               one.width == 0 ? UINT32_MAX : bit_mask(one.bit, one.width));
        }
    }
}

bool element_comparison::record(const record_row &row, unsigned at)
{
    const std::size_t start = path_.size();
    for (const field_row &one : fields_of(row)) {
        const record_row *const inner = record_in(one);
        for (unsigned i = 0; inner != nullptr && i < elements_of(one); ++i) {
            path_ += std::string{"."} + one.name.text();
            if (one.count != 0)
                path_ += "(" + std::to_string(i) + ")";
            const bool go_on = record(*inner, at + one.offset + i * one.size);
            path_.resize(start);
            if (!go_on)
                return false;
        }
        if (inner == nullptr && !field(one, at))
            return false;
    }
    return true;
}

// A field of numbers, of the record at `at`.
bool element_comparison::field(const field_row &field, unsigned at)
{
    const unsigned whole = elements_of(field) * field.size;
    if (field.holds == holding::key || recorded_.hidden(at + field.offset, whole) != nullptr ||
        now_.hidden(at + field.offset, whole) != nullptr)
        return key(field, at);
    const std::uint32_t mask = field.width == 0 ? UINT32_MAX : bit_mask(field.bit, field.width);
    const bool together = is_one_value(field);
    for (unsigned i = 0; i < (together ? 1 : field.count); ++i) {
        const unsigned size = together ? whole : field.size;
        if (!has_difference(at + field.offset + i * field.size, size, mask))
            continue;
        const std::string index = together ? "" : "(" + std::to_string(i) + ")";
        if (!report(std::string{"."} + field.name.text() + index,
                    value_text(recorded_.bytes + at, field, i),
                    value_text(now_.bytes + at, field, i)))
            return false;
    }
    return true;
}

// A key, or a field that shares bytes with one and is hidden as well.
bool element_comparison::key(const field_row &field, unsigned at)
{
    const unsigned from = at + field.offset;
    const unsigned size = elements_of(field) * field.size;
    const hidden_key *const before = recorded_.hidden(from, size);
    const hidden_key *const after = now_.hidden(from, size);
    static const std::string none;
    const std::string *salt = &none;
    if (before != nullptr && after != nullptr) {
        if (recorded_.salt == nullptr || now_.salt == nullptr || *recorded_.salt != *now_.salt)
            return true;
    } else if (before != nullptr || after != nullptr) {
        salt = before != nullptr ? recorded_.salt : now_.salt;
        if (salt == nullptr)
            return true;
    } else if (!has_difference(from, size)) {
        return true;
    }
    const std::string recorded = recorded_.key_text(from, size, *salt);
    const std::string now = now_.key_text(from, size, *salt);
    // Fields over a key that was shown would only show it again.
    if (recorded == now || std::memchr(shown_keys_ + from, 1, size) != nullptr)
        return true;
    std::memset(shown_keys_ + from, 1, size);
    return report(std::string{"."} + field.name.text(), recorded, now);
}

// What still differs is in no field.
bool element_comparison::padding(const record_row &row)
{
    unsigned char used[most_record_bytes];
    std::memset(used, 0, row.size);
    mark_bits(used, row);
    for (unsigned start = 0; start < row.size; ++start) {
        unsigned end = start;
        while (end < row.size && differs_[end] != 0)
            ++end;
        if (end == start)
            continue;
        const auto digits = [&](const side &one) {
            std::string bytes;
            for (unsigned at = start; at < end; ++at)
                bytes += static_cast<char>(one.bytes[at] & ~used[at]);
            return hexadecimal(bytes);
        };
        if (!report(".padding(" + std::to_string(start) + ")", digits(recorded_), digits(now_)))
            return false;
        start = end;
    }
    return true;
}

bool element_comparison::run()
{
    if (!may_differ())
        return true;
    if (argument_.record < 0)
        return report("", std::to_string(read_number(recorded_.bytes, argument_.size)),
                      std::to_string(read_number(now_.bytes, argument_.size)));
    const record_row &row = record_rows[argument_.record];
    std::memset(shown_keys_, 0, row.size);
    forget_loose(row, 0);
    return record(row, 0) && padding(row);
}

// The salt with which fingerprints of a recording can be made again, or null.
const std::string *salt_of(const recording_header &header)
{
    return header.keys == recorded_keys::fingerprints && !header.salt.empty() ? &header.salt
                                                                              : nullptr;
}

std::uint32_t elements_in(const argument_row &argument, const recorded_memory &memory)
{
    return static_cast<std::uint32_t>(memory.bytes.size() / argument.size);
}

} // namespace

loose_places::loose_places(const profile &from)
    : fields_(field_count),
      arguments_(call_rows[call_count - 1].first + call_rows[call_count - 1].arguments)
{
    const auto is_loose = [&from](const char *whole, const char *part) {
        const std::string place = std::string{whole} + "." + part;
        return std::find(from.loose.begin(), from.loose.end(), place) != from.loose.end();
    };
    for (const record_row &record : std::span{record_rows, record_count})
        for (const field_row &field : fields_of(record))
            fields_[static_cast<std::size_t>(&field - field_rows)] =
                is_loose(record.name.text(), field.name.text());
    for (const call_row &call : std::span{call_rows, call_count})
        for (const argument_row &argument : arguments_of(call))
            arguments_[static_cast<std::size_t>(&argument - argument_rows)] =
                is_loose(call.name.text(), argument.name.text());
}

bool memory_comparison::compare(const argument_row &argument, const recorded_memory &recorded,
                                const unsigned char *now, std::uint32_t elements,
                                const difference_taker &taker) const
{
    return recorded.read ? compare_elements(argument, recorded, {now, nullptr, elements}, taker)
                         : true;
}

bool memory_comparison::compare(const argument_row &argument, const recorded_memory &recorded,
                                const recorded_memory &now, const difference_taker &taker) const
{
    if (recorded.read && now.read)
        return compare_elements(argument, recorded,
                                {now.bytes.data(), &now, elements_in(argument, now)}, taker);
    if (recorded.read == now.read)
        return true;
    const auto text = [](const recorded_memory &one) { return one.read ? "read" : "not read"; };
    return taker({argument.name.text(), argument.name.text(), text(recorded), text(now)});
}

bool memory_comparison::compare_elements(const argument_row &argument,
                                         const recorded_memory &recorded, const given &now,
                                         const difference_taker &taker) const
{
    if (loose_.has(argument))
        return true;
    const std::uint32_t elements = std::min(elements_in(argument, recorded), now.elements);
    for (std::uint32_t i = 0; i < elements; ++i) {
        const std::uint32_t at = i * argument.size;
        std::string path = argument.name.text();
        if (argument.count >= 0)
            path += "(" + std::to_string(i) + ")";
        element_comparison one{{recorded.bytes.data() + at, &recorded, at, salt_of(recorded_)},
                               {now.bytes + at, now.memory, at, salt_of(now_)},
                               loose_,
                               taker,
                               argument,
                               std::move(path)};
        if (!one.run())
            return false;
    }
    return true;
}

} // namespace qxsh
