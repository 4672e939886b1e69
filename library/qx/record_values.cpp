// Values of single fields, for record_writer.cpp: numbers, addresses in all forms, arrays.
#include "library/qx/record_writer.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace qxsh {

namespace {

// The prefix length after the slash; -1 if it is not a number or has a leading zero.
int length_of(const char *text)
{
    if (*text < '0' || *text > '9' || (*text == '0' && text[1] != '\0') || std::strlen(text) > 3)
        return -1;
    char *end;
    const long length = std::strtol(text, &end, 10);
    return *end == '\0' ? static_cast<int>(length) : -1;
}

} // namespace

bool record_writer::field(const field_row &field, unsigned at, Tcl_Obj *value, const place &here)
{
    secret_ = field.holds == holding::key;
    if (field.record >= 0) {
        if (field.count != 0)
            return records(field, at, value, here);
        return nested(record_rows[field.record], at, value, &here);
    }
    return field.count != 0 ? array(field, at, value, here) : number(field, at, value, here);
}

// A nested record: a dict of its fields, or the address that it represents. A dict of a union
// starts with a view's name, which is never a number.
bool record_writer::nested(const record_row &row, unsigned at, Tcl_Obj *value, const place *here)
{
    int count;
    Tcl_Obj **words;
    if (types_ != typing::none && !session_.is_container(value) && !is_address(row) &&
        row.family < 0)
        return refuse_dict(row, value, here);
    if (types_ == typing::strict && session_.is_list(value) && !is_address(row))
        return refuse_dict(row, value, here);
    if (session_.is_dict(value) && !is_address(row))
        return record(row, at, value, here);
    if (Tcl_ListObjGetElements(nullptr, value, &count, &words) != TCL_OK)
        return refuse_dict(row, value, here);
    std::uint32_t first;
    const bool may_be_address =
        count == 1 || (count == 4 && session_.take_number(words[0], UINT32_MAX, first) !=
                                         record_session::taken::no_number);
    if (may_be_address && is_address(row))
        return address(at, value, holding::ip, here);
    if (count == 1 && row.family >= 0)
        return prefix(row, at, value, here);
    return record(row, at, value, here);
}

bool record_writer::records(const field_row &field, unsigned at, Tcl_Obj *value, const place &here)
{
    int count = 0;
    Tcl_Obj **each = nullptr;
    if (!elements(value, field.count, each, count, here))
        return false;
    for (int i = 0; i < count; ++i) {
        const place there = {&here, nullptr, i};
        if (!nested(record_rows[field.record], at + static_cast<unsigned>(i * field.size), each[i],
                    &there))
            return false;
    }
    return true;
}

bool record_writer::array(const field_row &field, unsigned at, Tcl_Obj *value, const place &here)
{
    if (field.holds == holding::ip || field.holds == holding::ipv6)
        return address(at, value, field.holds, &here);
    if (field.holds == holding::mac)
        return mac(field, at, value, here);
    return numbers_or_bytes(field, at, value, here);
}

bool record_writer::mac(const field_row &field, unsigned at, Tcl_Obj *value, const place &here)
{
    unsigned char bytes[6];
    int count = 0;
    Tcl_Obj **each = nullptr;
    if (parse_mac(Tcl_GetString(value), bytes)) {
        for (unsigned i = 0; i < sizeof bytes; ++i)
            store(at + i, 1, bytes[i]);
        return true;
    }
    if (Tcl_ListObjGetElements(nullptr, value, &count, &each) != TCL_OK ||
        (count == 1 && std::strchr(Tcl_GetString(value), ':') != nullptr))
        return refuse(&here, Tcl_ObjPrintf("\"%s\" is neither a MAC address like 02:00:00:00:00:01"
                                           " nor a list of 6 bytes",
                                           Tcl_GetString(value)));
    return numbers_or_bytes(field, at, value, here);
}

// A list of the first elements, or bytes in one word: 0x0011aaff.
bool record_writer::numbers_or_bytes(const field_row &field, unsigned at, Tcl_Obj *value,
                                     const place &here)
{
    int count = 0;
    Tcl_Obj **each = nullptr;
    if (!elements(value, field.count, each, count, here))
        return false;
    if (field.size != 1 || count != 1)
        return numbers(field, at, count, each, &here);
    const std::string_view text = Tcl_GetString(each[0]);
    if (!text.starts_with("0x") || text.size() == 2)
        return numbers(field, at, count, each, &here);
    unsigned char bytes[most_elements] = {};
    unsigned length = 0;
    if (!hexadecimal(each[0], field.count, bytes, length, here))
        return false;
    for (unsigned i = 0; i < length; ++i)
        store(at + i, 1, bytes[i]);
    return true;
}

// Bytes in one word. Its digits may be a key: errors do not show them.
bool record_writer::hexadecimal(Tcl_Obj *value, unsigned most, unsigned char *bytes,
                                unsigned &count, const place &here)
{
    std::string_view digits = Tcl_GetString(value);
    if (!digits.starts_with("0x") || digits.size() == 2)
        return refuse(&here, Tcl_NewStringObj("wants bytes like 0x00ff", -1));
    digits.remove_prefix(2);
    count = static_cast<unsigned>(digits.size() / 2);
    if (digits.size() % 2 != 0)
        return refuse(&here, Tcl_NewStringObj("0x is followed by half a byte", -1));
    if (count > most)
        return refuse(&here, Tcl_ObjPrintf("%d bytes are more than the %d there are",
                                           static_cast<int>(count), static_cast<int>(most)));
    for (unsigned i = 0; i < count; ++i) {
        const char *const end = digits.data() + 2 * i + 2;
        const auto read = std::from_chars(end - 2, end, bytes[i], 16);
        if (read.ec != std::errc{} || read.ptr != end)
            return refuse(&here,
                          Tcl_NewStringObj("0x is followed by other than hexadecimal digits", -1));
    }
    return true;
}

bool record_writer::number(const field_row &field, unsigned at, Tcl_Obj *value, const place &here)
{
    std::uint32_t word = 0;
    if (field.holds == holding::ipv4 && parse_ipv4(Tcl_GetString(value), word)) {
        store(at, 4, word);
        return true;
    }
    const unsigned bits = field.width != 0 ? field.width : 8u * field.size;
    const std::uint32_t greatest = bit_mask(0, bits);
    if (!take(&field, value, greatest, word, &here))
        return false;
    if (field.width != 0)
        store(at, field.size, word << field.bit, greatest << field.bit);
    else
        store(at, field.size, word);
    return true;
}

bool record_writer::numbers(const field_row &field, unsigned at, int count,
                            Tcl_Obj *const elements[], const place *here)
{
    const unsigned size = field.size;
    for (int i = 0; i < count; ++i) {
        std::uint32_t word = 0;
        if (!take(&field, elements[i], bit_mask(0, 8 * size), word, here, i))
            return false;
        store(at + static_cast<unsigned>(i) * size, size, word);
    }
    return true;
}

bool record_writer::address_numbers(unsigned at, Tcl_Obj *const elements[], const place *here)
{
    for (int i = 0; i < 4; ++i) {
        std::uint32_t word = 0;
        if (!take(nullptr, elements[i], UINT32_MAX, word, here, i))
            return false;
        store(at + 4 * static_cast<unsigned>(i), 4, word);
    }
    return true;
}

// An address as four words or as text.
bool record_writer::address(unsigned at, Tcl_Obj *value, holding holds, const place *here)
{
    int count = 0;
    Tcl_Obj **each = nullptr;
    if (Tcl_ListObjGetElements(nullptr, value, &count, &each) == TCL_OK && count == 4)
        return address_numbers(at, each, here);
    address_words words;
    const int version = parse_ip(Tcl_GetString(value), words);
    if (version == 0 || (holds == holding::ipv6 && version == 4))
        return refuse(here,
                      Tcl_ObjPrintf("\"%s\" is neither an %s address nor a list of 4 words",
                                    Tcl_GetString(value), holds == holding::ipv6 ? "IPv6" : "IP"));
    for (unsigned i = 0; i < 4; ++i)
        store(at + 4 * i, 4, words[i]);
    version_ = version;
    return true;
}

// A complete address record from text like 10.0.0.0/8; the length defaults to all bits.
bool record_writer::prefix(const record_row &row, unsigned at, Tcl_Obj *value, const place *here)
{
    const char *const text = Tcl_GetString(value);
    const char *const slash = std::strchr(text, '/');
    const auto length_of_text =
        slash != nullptr ? static_cast<std::size_t>(slash - text) : std::strlen(text);
    char address_only[64];
    address_words words;
    int version = 0;
    if (length_of_text < sizeof address_only) {
        std::memcpy(address_only, text, length_of_text);
        address_only[length_of_text] = '\0';
        version = parse_ip(address_only, words);
    }
    if (version == 0)
        return refuse(here,
                      Tcl_ObjPrintf("\"%s\" is not an IP address or prefix like 10.0.0.0/8", text));
    if (!session_.codes().open())
        return false;
    const int bits = version == 4 ? 32 : 128;
    const int length = slash != nullptr ? length_of(slash + 1) : bits;
    if (length < 0 || length > bits)
        return refuse(
            here, Tcl_ObjPrintf("\"%s\" has no length from 0 to %d behind the slash", text, bits));
    for (const field_row &field : fields_of(row)) {
        const unsigned there = at + field.offset;
        if (field.holds == holding::family)
            store(there, field.size, session_.codes().families().family_of(version));
        else if (field.record < 0)
            store(there, field.size, static_cast<std::uint32_t>(length));
        else
            for (unsigned i = 0; i < 4; ++i)
                store(there + 4 * i, 4, words[i]);
    }
    return true;
}

// ------------------------------------------------------------------------------- lists, numbers

// The elements of a list, which may be shorter than the array.
bool record_writer::elements(Tcl_Obj *value, int most, Tcl_Obj **&elements, int &count,
                             const place &here)
{
    const bool has_type =
        types_ == typing::none || session_.is_list(value) ||
        (!session_.is_dict(value) && std::string_view{Tcl_GetString(value)}.starts_with("0x"));
    if (!has_type || Tcl_ListObjGetElements(nullptr, value, &count, &elements) != TCL_OK)
        return refuse(&here, Tcl_ObjPrintf("\"%s\" is not a list", shown(value)));
    if (count > most)
        return refuse(&here,
                      Tcl_ObjPrintf("wants a list of at most %d elements, not of %d", most, count));
    return true;
}

bool record_writer::take(const field_row *field, Tcl_Obj *value, std::uint32_t greatest,
                         std::uint32_t &number, const place *here, int index)
{
    const auto taken = types_ != typing::none && session_.is_container(value)
                           ? record_session::taken::no_number
                           : session_.take_number(value, greatest, number);
    if (taken == record_session::taken::number)
        return true;
    const place element = {here, nullptr, index};
    const place *const there = index >= 0 ? &element : here;
    if (taken == record_session::taken::no_number)
        return take_word(field, value, number, there);
    // Tcl_ObjPrintf prints unsigned numbers in the width of Tcl's own.
    char limit[12];
    std::snprintf(limit, sizeof limit, "%lu", static_cast<unsigned long>(greatest));
    return refuse(there, Tcl_ObjPrintf("%s is outside 0 to %s", shown(value), limit));
}

// A code word; the profile's reader has seen to it that its number fits the field.
bool record_writer::take_word(const field_row *field, Tcl_Obj *value, std::uint32_t &number,
                              const place *there)
{
    if (field != nullptr && !session_.codes().open())
        return false;
    const code_list *const codes = field == nullptr ? nullptr : session_.codes().of(*field);
    if (codes == nullptr)
        return refuse(there, Tcl_ObjPrintf("\"%s\" is not a number", shown(value)));
    return codes->number_of(Tcl_GetString(value), number) ||
           refuse(there, codes->refusal(shown(value)));
}

} // namespace qxsh
