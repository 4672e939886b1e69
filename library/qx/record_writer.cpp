// Walks the dict; see record_writer.h. Values of single fields are in record_values.cpp.
#include "library/qx/record_writer.h"

#include "library/qx/record_path.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace qxsh {

// A dict object is read as one: reading it as a list would discard its hash table. Others are read
// as lists.
class record_writer::entries
{
public:
    entries() = default;
    entries(const entries &) = delete;
    entries &operator=(const entries &) = delete;
    ~entries()
    {
        if (is_dict_)
            Tcl_DictObjDone(&search_);
    }

    // Returns false if the object is not a dict.
    bool open(const record_session &session, Tcl_Obj *values)
    {
        int count;
        if (session.is_dict(values))
            return open_dict(values);
        if (Tcl_ListObjGetElements(nullptr, values, &count, &next_) != TCL_OK || count % 2 != 0)
            return false;
        count_ = count / 2;
        left_ = count_;
        return true;
    }

    // The key that a list has twice, or null. Keys that are the shared name objects in field order
    // cannot repeat; any others are compared.
    const char *repeated(const record_session &session, const record_row &row) const
    {
        if (is_dict_)
            return nullptr;
        const field_row *field = fields_of(row).data();
        const field_row *const end = field + row.fields;
        int i = 0;
        for (; i < count_; ++i) {
            while (field != end && session.name(*field) != next_[2 * i])
                ++field;
            if (field == end)
                break;
            ++field;
        }
        if (i == count_)
            return nullptr;
        // More keys than fields: one is repeated among the first, or is not a field.
        const int compared = std::min(count_, row.fields + 1);
        for (i = 1; i < compared; ++i)
            for (int j = 0; j < i; ++j)
                if (std::strcmp(Tcl_GetString(next_[2 * i]), Tcl_GetString(next_[2 * j])) == 0)
                    return Tcl_GetString(next_[2 * i]);
        return nullptr;
    }

    int count() const { return count_; }

    bool next(Tcl_Obj *&key, Tcl_Obj *&value)
    {
        if (left_ == 0)
            return false;
        --left_;
        if (is_dict_) {
            key = key_;
            value = value_;
            int done;
            Tcl_DictObjNext(&search_, &key_, &value_, &done);
        } else {
            key = *next_++;
            value = *next_++;
        }
        return true;
    }

private:
    bool open_dict(Tcl_Obj *values)
    {
        int done;
        if (Tcl_DictObjSize(nullptr, values, &count_) != TCL_OK)
            return false;
        left_ = count_;
        Tcl_DictObjFirst(nullptr, values, &search_, &key_, &value_, &done);
        is_dict_ = true;
        return true;
    }

    Tcl_Obj **next_ = nullptr;
    int count_ = 0;
    int left_ = 0;
    bool is_dict_ = false;
    Tcl_DictSearch search_;
    Tcl_Obj *key_ = nullptr;
    Tcl_Obj *value_ = nullptr;
};

// The field of a key, or null. Most dicts follow the record's order, so the search starts where the
// last one ended.
static const field_row *field_of(const record_session &session, const record_row &row, Tcl_Obj *key,
                                 unsigned &hint)
{
    const field_row *const all = fields_of(row).data();
    for (unsigned i = hint; i < row.fields; ++i) {
        if (session.name(all[i]) == key) {
            hint = i + 1;
            return all + i;
        }
    }
    const char *const text = Tcl_GetString(key);
    for (unsigned i = 0; i < row.fields; ++i) {
        const unsigned at = (hint + i) % row.fields;
        if (std::strcmp(all[at].name.text(), text) == 0) {
            hint = at + 1;
            return all + at;
        }
    }
    return nullptr;
}

bool record_writer::write(const record_row &row, Tcl_Obj *values)
{
    if (types_ != typing::strict && session_.codes().open() && quick(row, 0, values))
        return true;
    return nested(row, 0, values, nullptr);
}

bool record_writer::write(const record_row &row, Tcl_Obj *values, const char *argument, int index)
{
    if (types_ != typing::strict && session_.codes().open() && quick(row, 0, values))
        return true;
    const place whole = {nullptr, argument, 0};
    const place element = {&whole, nullptr, index};
    return nested(row, 0, values, index < 0 ? &whole : &element);
}

bool record_writer::record(const record_row &row, unsigned at, Tcl_Obj *values, const place *here)
{
    entries all;
    if (!all.open(session_, values))
        return refuse_dict(row, values, here);
    if (const char *const name = all.repeated(session_, row); name != nullptr) {
        const place there = {here, name, 0};
        return refuse(&there, Tcl_NewStringObj("named twice", -1));
    }
    if (!row.is_union || all.count() < 2)
        return fields(row, at, all, here);
    unsigned char written[most_record_bytes];
    const bool outermost = written_ == nullptr;
    if (outermost) {
        std::memset(written, 0, sizeof written);
        written_ = written;
    }
    const bool earlier = std::exchange(contradiction_, false);
    const bool good = fields(row, at, all, here);
    if (outermost)
        written_ = nullptr;
    if (!good || !contradiction_) {
        contradiction_ = earlier;
        return good;
    }
    constexpr const char *what = "the views of the union contradict each other; name one";
    return refuse(here, here == nullptr ? Tcl_ObjPrintf("%s: %s", row.name.text(), what)
                                        : Tcl_NewStringObj(what, -1));
}

// A record of which every field is named is written whole: its padding, too, and of a union all
// that lies behind the view.
bool record_writer::fields(const record_row &row, unsigned at, entries &all, const place *here)
{
    Tcl_Obj *key;
    Tcl_Obj *value;
    const field_row *family = nullptr;
    Tcl_Obj *address_text = nullptr;
    Tcl_Obj *runs = nullptr;
    place address_place = {};
    int version = 0;
    int named = 0;
    unsigned viewed = 0; // bytes of the largest view that is whole
    for (unsigned hint = 0; all.next(key, value);) {
        const field_row *const each = field_of(session_, row, key, hint);
        if (each == nullptr) {
            const place there = {here, Tcl_GetString(key), 0};
            if (std::strcmp(there.name, padding_name) != 0)
                return refuse(&there, unknown_field_text(session_, row, there.name));
            runs = value;
            continue;
        }
        const place there = {here, each->name.text(), 0};
        version_ = 0;
        whole_ = false;
        if (!field(*each, at + each->offset, value, there))
            return false;
        ++named;
        if (whole_ && each->count == 0)
            viewed = std::max<unsigned>(viewed, each->size);
        if (each->holds == holding::family)
            family = each;
        if (row.family >= 0 && each->record >= 0 && version_ != 0) {
            version = version_;
            address_place = there;
            address_text = value;
        }
    }
    version_ = 0; // an outer family does not apply to addresses in here
    zero_rest(row, at, row.is_union ? viewed != 0 : named == row.fields, viewed);
    const place there = {here, padding_name, 0};
    if (runs != nullptr && !padding(row, at, runs, there))
        return false;
    if (version == 0)
        return true;
    if (family == nullptr) {
        note_address(row, at, version, address_place, address_text);
        return true;
    }
    return check_family(row, read_field(bytes_ + at, *family), version, address_place,
                        address_text);
}

// Behind the fields of a record that may be whole; of a union, `viewed` bytes of a view are.
void record_writer::zero_rest(const record_row &row, unsigned at, bool whole, unsigned viewed)
{
    whole_ = whole;
    if (whole && row.is_union)
        for (unsigned i = viewed; i < row.size; ++i)
            zero(at + i, 255);
    else if (whole)
        for (const hole &each : session_.holes().of_record(row))
            zero(at + each.offset, each.bits);
}

// Bytes in no field, by offset.
bool record_writer::padding(const record_row &row, unsigned at, Tcl_Obj *runs, const place &here)
{
    entries all;
    Tcl_Obj *key;
    Tcl_Obj *value;
    unsigned char given[most_record_bytes] = {};
    secret_ = false;
    if (!all.open(session_, runs))
        return refuse(&here, Tcl_NewStringObj("wants offsets, each with bytes like 0x00ff", -1));
    while (all.next(key, value)) {
        std::uint32_t offset;
        unsigned char bytes[most_record_bytes];
        unsigned count;
        if (!take(nullptr, key, row.size - 1u, offset, &here))
            return false;
        const place run = {&here, nullptr, static_cast<int>(offset)};
        if (!hexadecimal(value, row.size - offset, bytes, count, run))
            return false;
        for (const hole &each : session_.holes().of_record(row)) {
            if (each.offset - offset >= count) // also if it lies before
                continue;
            store(at + each.offset, 1, bytes[each.offset - offset], each.bits);
            bytes[each.offset - offset] &= static_cast<unsigned char>(~each.bits);
        }
        for (unsigned i = 0; i < count; ++i)
            if (bytes[i] != 0 || given[offset + i]++ != 0)
                return refuse(
                    &run, Tcl_ObjPrintf("byte %u %s", static_cast<unsigned>(offset + i),
                                        bytes[i] != 0 ? "belongs to a field" : "is given twice"));
    }
    return true;
}

// Leaves what another view of the same union has written.
void record_writer::zero(unsigned at, std::uint8_t bits)
{
    if (written_ != nullptr)
        bits &= static_cast<std::uint8_t>(~written_[at]);
    bytes_[at] &= static_cast<unsigned char>(~bits);
}

// An address that is written together with its family must match it.
bool record_writer::check_family(const record_row &row, std::uint32_t family, int version,
                                 const place &address, Tcl_Obj *text)
{
    if (!session_.codes().open())
        return false;
    const int wanted = session_.codes().families().version_of(family);
    if (wanted == 0 || wanted == version)
        return true;
    return refuse(&address,
                  Tcl_ObjPrintf("%s is an IPv%d address, but %s says IPv%d", Tcl_GetString(text),
                                version, fields_of(row)[row.family].name.text(), wanted));
}

// ------------------------------------------------------------------------------- stores

void record_writer::store(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask)
{
    if (written_ != nullptr) [[unlikely]]
        compare(at, size, value, mask);
    if (mask != UINT32_MAX)
        value |= read_number(bytes_ + at, size) & ~mask;
    write_number(bytes_ + at, size, value);
}

void record_writer::compare(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask)
{
    for (unsigned i = 0; i < size; ++i, value >>= 8, mask >>= 8) {
        unsigned char &written = written_[at + i];
        if (((bytes_[at + i] ^ value) & written & mask & 255) != 0)
            contradiction_ = true;
        written = static_cast<unsigned char>(written | mask);
    }
}

// ------------------------------------------------------------------------------- errors

void record_writer::append_place(Tcl_Obj *text, const place *here)
{
    if (here->outer != nullptr)
        append_place(text, here->outer);
    if (here->name == nullptr)
        Tcl_AppendPrintfToObj(text, "(%d)", here->index);
    else
        Tcl_AppendStringsToObj(text, here->outer != nullptr ? "." : "", here->name, nullptr);
}

static bool holds_key(const record_row &row)
{
    for (const field_row &field : fields_of(row)) {
        const record_row *const inner = record_in(field);
        if (field.holds == holding::key || (inner != nullptr && holds_key(*inner)))
            return true;
    }
    return false;
}

bool record_writer::refuse_dict(const record_row &row, Tcl_Obj *value, const place *here)
{
    secret_ = holds_key(row);
    return refuse(here, Tcl_ObjPrintf("\"%s\" is not a dict of fields", shown(value)));
}

bool record_writer::refuse(const place *here, Tcl_Obj *text)
{
    Tcl_Obj *const shown = Tcl_NewObj();
    Tcl_IncrRefCount(shown);
    if (here != nullptr)
        append_place(shown, here);
    refuse_place(session_.interp(), Tcl_GetString(shown), text);
    Tcl_DecrRefCount(shown);
    return false;
}

} // namespace qxsh
