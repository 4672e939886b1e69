// Records as dicts; see shown_call.h.
#include "replay/shown_call.h"

#include "record_numbers.h"
#include "records/address_text.h"
#include "records/values.h"

namespace qxsh {

namespace {

constexpr char hexadecimal_digits[] = "0123456789abcdef";

std::string hexadecimal(std::uint32_t number)
{
    std::string digits;
    do
        digits.insert(digits.begin(), hexadecimal_digits[number & 15]);
    while ((number >>= 4) != 0);
    return "0x" + digits;
}

std::string hexadecimal_bytes(const unsigned char *bytes, unsigned size)
{
    std::string text = "0x";
    for (unsigned i = 0; i < size; ++i) {
        text += hexadecimal_digits[bytes[i] >> 4];
        text += hexadecimal_digits[bytes[i] & 15];
    }
    return text;
}

void append(std::string &list, const std::string &word)
{
    list += (list.empty() ? "" : " ") + list_word(word);
}

// A small number of an id is as good as any other number.
std::string shown_id(unsigned kind, std::uint32_t number, const shown_style &style)
{
    constexpr std::uint32_t most_plain = 0xffffff; // as qx::show
    std::string text = style.id(kind, number);
    if (!text.empty())
        return text;
    return number > most_plain ? hexadecimal(number) : std::to_string(number);
}

// Writes the records of one memory. Offsets count from the memory's start.
class record_text
{
public:
    record_text(const recorded_memory *told, const unsigned char *bytes, const shown_names &names,
                const shown_style &style)
        : told_(told), bytes_(bytes), names_(names), style_(style)
    {}

    std::string record(const record_row &row, unsigned at);

private:
    enum class padding : bool { elsewhere, here }; // that of a view is shown by the union

    bool is_known(unsigned at) const { return told_ == nullptr || told_->known[at] != 0; }
    bool is_empty(unsigned at, unsigned size) const;
    const std::string *hidden_at(unsigned at, unsigned size) const;
    bool secret(const field_row &field, unsigned at, std::string &text) const;

    std::string nested(const record_row &row, unsigned at, padding own);
    std::string fields(const record_row &row, unsigned at, padding own);
    std::string views(const record_row &row, unsigned at, const field_row &first);
    std::string value(const record_row &owner, const field_row &field, unsigned at, padding own);
    std::string records(const field_row &field, unsigned at, padding own);
    std::string numbers(const field_row &field, unsigned at) const;
    std::string number(const field_row &field, std::uint32_t number) const;
    std::string address(const field_row &field, unsigned at, int version) const;
    std::string prefix(const record_row &row, unsigned at) const;
    std::string runs(const unsigned char *bits, unsigned size) const;

    const recorded_memory *const told_; // null: all bytes are known
    const unsigned char *const bytes_;
    const shown_names &names_;
    const shown_style &style_;
    unsigned char keys_[most_record_bytes]; // 1 for each byte of the record that is a key's
    unsigned start_ = 0;                    // of the record
};

std::string record_text::record(const record_row &row, unsigned at)
{
    static constexpr holding key = holding::key;
    std::memset(keys_, 0, row.size);
    mark_fields(keys_, row, &key);
    start_ = at;
    return nested(row, at, padding::here);
}

// Whether nothing is in these bytes but zeros.
bool record_text::is_empty(unsigned at, unsigned size) const
{
    for (unsigned i = at; i < at + size; ++i)
        if (bytes_[i] != 0 || !is_known(i))
            return false;
    return true;
}

// What a recording has in place of these bytes: of this field, else of one that overlaps it.
const std::string *record_text::hidden_at(unsigned at, unsigned size) const
{
    const std::string *found = nullptr;
    for (const auto &each : told_->keys) {
        if (each.offset == at && each.size == size)
            return &each.text;
        if (found == nullptr && each.offset < at + size && at < each.offset + each.size)
            found = &each.text;
    }
    return found;
}

// Whether a field is shown as the style says, because it has bytes of a key that are not zero or
// not told. Zeros are not secret.
bool record_text::secret(const field_row &field, unsigned at, std::string &text) const
{
    const unsigned size = elements_of(field) * field.size;
    bool is_secret = false;
    bool is_told = true;
    for (unsigned i = at; i < at + size; ++i) {
        is_secret = is_secret || (keys_[i - start_] != 0 && bytes_[i] != 0) || !is_known(i);
        is_told = is_told && is_known(i);
    }
    if (!is_secret)
        return false;
    const std::string *const hidden = is_told ? nullptr : hidden_at(at, size);
    text = style_.secret(field, size, hidden == nullptr ? std::string{} : *hidden);
    return !text.empty();
}

// An address without a family is IPv4 if only its first word is used; one that does not match its
// family is shown as numbers.
std::string record_text::address(const field_row &field, unsigned at, int version) const
{
    std::string text;
    if (secret(field, at, text))
        return text;
    address_words words;
    std::memcpy(words, bytes_ + at, sizeof words);
    const bool is_short = words[1] == 0 && words[2] == 0 && words[3] == 0;
    char shown[most_address_text];
    if (version == 6 || (version == 0 && !is_short))
        return {shown, put_ipv6(shown, words)};
    if (is_short)
        return {shown, put_ipv4(shown, words[0])};
    for (const std::uint32_t word : words)
        append(text, std::to_string(word));
    return text;
}

// An address with its family and length in one word; an empty text if that does not say all of it.
std::string record_text::prefix(const record_row &row, unsigned at) const
{
    int version = 0;
    unsigned length = 0;
    const field_row *where = nullptr;
    for (const field_row &field : fields_of(row)) {
        if (field.holds == holding::family)
            version = names_.version_of(read_field(bytes_ + at, field));
        else if (field.record < 0)
            length = read_field(bytes_ + at, field);
        else
            where = &field;
    }
    const unsigned bits = version == 4 ? 32 : 128;
    std::string text;
    if (where == nullptr || version == 0 || length > bits ||
        secret(*where, at + where->offset, text))
        return {};
    text = address(*where, at + where->offset, version);
    if (text.find(' ') != std::string::npos)
        return {};
    return length == bits ? text : text + "/" + std::to_string(length);
}

std::string record_text::number(const field_row &field, std::uint32_t number) const
{
    if (const std::string *const word = names_.word(field, number); word != nullptr)
        return *word;
    if (field.id != id_none)
        return shown_id(field.id, number, style_);
    if (field.holds == holding::ipv4) {
        char shown[most_address_text];
        return {shown, put_ipv4(shown, number)};
    }
    return field.hexadecimal ? hexadecimal(number) : std::to_string(number);
}

// The first elements of an array, up to the last one that is not zero.
std::string record_text::numbers(const field_row &field, unsigned at) const
{
    unsigned count = field.count;
    while (count > 1 && is_empty(at + (count - 1) * field.size, field.size))
        --count;
    std::string list;
    for (unsigned i = 0; i < count; ++i)
        append(list, number(field, read_number(bytes_ + at + i * field.size, field.size)));
    return list;
}

std::string record_text::records(const field_row &field, unsigned at, padding own)
{
    unsigned count = field.count;
    while (count > 1 && is_empty(at + (count - 1) * field.size, field.size))
        --count;
    std::string list;
    for (unsigned i = 0; i < count; ++i)
        append(list, nested(*record_in(field), at + i * field.size, own));
    return list;
}

// A field that is not empty; `at` is where its record, `owner`, begins.
std::string record_text::value(const record_row &owner, const field_row &field, unsigned at,
                               padding own)
{
    const unsigned there = at + field.offset;
    if (const record_row *const inner = record_in(field); inner != nullptr) {
        if (field.count != 0)
            return records(field, there, own);
        if (is_address(*inner)) {
            const int version =
                owner.family < 0
                    ? 0
                    : names_.version_of(read_field(
                          bytes_ + at, fields_of(owner)[static_cast<unsigned>(owner.family)]));
            return address(field, there, version);
        }
        if (inner->is_union)
            return views(*inner, there, names_.view_of(field, bytes_ + at));
        return nested(*inner, there, own);
    }
    std::string text;
    if (secret(field, there, text))
        return text;
    char shown[most_address_text];
    switch (field.holds) {
    case holding::mac:
        return {shown, put_mac(shown, bytes_ + there)};
    case holding::ip:
    case holding::ipv6:
        return address(field, there, field.holds == holding::ipv6 ? 6 : 0);
    case holding::key:
        return hexadecimal_bytes(bytes_ + there, elements_of(field) * field.size);
    default:
        break;
    }
    if (field.count != 0)
        return numbers(field, there);
    return number(field, read_field(bytes_ + at, field));
}

std::string record_text::nested(const record_row &row, unsigned at, padding own)
{
    if (is_empty(at, row.size))
        return {};
    if (row.is_union)
        return views(row, at, fields_of(row)[static_cast<unsigned>(row.largest)]);
    if (row.family >= 0)
        if (std::string text = prefix(row, at); !text.empty())
            return text;
    return fields(row, at, own);
}

std::string record_text::fields(const record_row &row, unsigned at, padding own)
{
    std::string dict;
    for (const field_row &field : fields_of(row)) {
        const bool empty = field.width != 0
                               ? read_field(bytes_ + at, field) == 0
                               : is_empty(at + field.offset, elements_of(field) * field.size);
        // An address beside it would be taken for one of any family.
        if (empty && field.holds != holding::family)
            continue;
        append(dict, field.name.text());
        append(dict, value(row, field, at, own));
    }
    if (own == padding::elsewhere)
        return dict;
    unsigned char bits[most_record_bytes] = {};
    for (const field_row &field : fields_of(row))
        mark_bits(bits, field, false);
    for (unsigned i = 0; i < row.size; ++i)
        bits[i] = static_cast<unsigned char>(bytes_[at + i] & ~bits[i]);
    if (const std::string text = runs(bits, row.size); !text.empty()) {
        append(dict, padding_name);
        append(dict, text);
    }
    return dict;
}

// The views of a union that show all of it, and the bits that no view shows; as qx::get does.
std::string record_text::views(const record_row &row, unsigned at, const field_row &first)
{
    std::string dict;
    unsigned char rest[most_record_bytes];
    std::memcpy(rest, bytes_ + at, row.size);
    // Takes what a view shows from the rest; returns whether it shows anything.
    const auto take = [&](const field_row &field) {
        unsigned char bits[most_record_bytes] = {};
        bool shows = false;
        mark_bits(bits, field, true);
        for (unsigned i = 0; i < row.size; ++i) {
            shows = shows || (rest[i] & bits[i]) != 0;
            rest[i] = static_cast<unsigned char>(rest[i] & ~bits[i]);
        }
        return shows;
    };
    const auto show = [&](const field_row &field) {
        append(dict, field.name.text());
        append(dict, value(row, field, at, padding::elsewhere));
    };
    take(first);
    if (!is_empty(at + first.offset, elements_of(first) * first.size))
        show(first);
    for (const field_row &field : fields_of(row))
        if (&field != &first && take(field))
            show(field);
    if (const std::string text = runs(rest, row.size); !text.empty()) {
        append(dict, padding_name);
        append(dict, text);
    }
    return dict;
}

// Bytes that are not zero, by offset.
std::string record_text::runs(const unsigned char *bits, unsigned size) const
{
    std::string text;
    for (unsigned start = 0; start < size; ++start) {
        unsigned end = start;
        while (end < size && bits[end] != 0)
            ++end;
        if (end == start)
            continue;
        append(text, std::to_string(start));
        append(text, hexadecimal_bytes(bits + start, end - start));
        start = end;
    }
    return text;
}

std::string shown_bytes(const argument_row &argument, const recorded_memory *told,
                        const unsigned char *bytes, unsigned at, const shown_names &names,
                        const shown_style &style)
{
    if (argument.record >= 0)
        return record_text{told, bytes, names, style}.record(record_rows[argument.record], at);
    return shown_value(argument, read_number(bytes + at, argument.size), names, style);
}

} // namespace

const shown_style plain_style;

std::string shown_style::id(unsigned, std::uint32_t) const
{
    return {};
}

std::string shown_style::secret(const field_row &, unsigned size, const std::string &hidden) const
{
    return hidden.empty() ? std::to_string(size) + " bytes" : hidden;
}

std::string shown_record(const record_row &record, const unsigned char *bytes,
                         const shown_names &names, const shown_style &style)
{
    return record_text{nullptr, bytes, names, style}.record(record, 0);
}

std::string shown_memory(const argument_row &argument, const recorded_memory &memory,
                         const shown_names &names, const shown_style &style)
{
    const unsigned char *const bytes = memory.bytes.data();
    if (argument.count < 0)
        return shown_bytes(argument, &memory, bytes, 0, names, style);
    std::string list;
    for (unsigned at = 0; at < memory.bytes.size(); at += argument.size)
        append(list, shown_bytes(argument, &memory, bytes, at, names, style));
    return list;
}

std::string shown_value(const argument_row &argument, std::uint32_t value, const shown_names &names,
                        const shown_style &style)
{
    if (const std::string *const word = names.word(argument, value); word != nullptr)
        return *word;
    if (argument.id != id_none)
        return shown_id(argument.id, value, style);
    return std::to_string(value);
}

} // namespace qxsh
