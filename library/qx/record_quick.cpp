// The quick way to write a dict, for record_writer.cpp: one as qx::get makes it, in list form,
// whose names are the shared objects in the order of the fields, with numbers and addresses as
// texts. Whatever else there is, mistakes included, is left to the writer's other functions: they
// write again what has been written here.
#include "library/qx/record_writer.h"

#include <cstring>

namespace qxsh {

inline bool record_writer::quick_number(const field_row &field, unsigned at, Tcl_Obj *value)
{
    std::uint32_t number;
    if (field.width == 0) {
        if (!session_.take_small(value, bit_mask(0, 8u * field.size), number))
            return false;
    } else {
        if (!session_.take_small(value, bit_mask(0, field.width), number))
            return false;
        number = number << field.bit |
                 (read_number(bytes_ + at, field.size) & ~bit_mask(field.bit, field.width));
    }
    write_number(bytes_ + at, field.size, number);
    return true;
}

bool record_writer::quick(const record_row &row, unsigned at, Tcl_Obj *values)
{
    int count;
    Tcl_Obj **words;
    if (!session_.is_list(values) ||
        Tcl_ListObjGetElements(nullptr, values, &count, &words) != TCL_OK || count % 2 != 0)
        return false;
    const field_row *field = fields_of(row).data();
    const field_row *const end = field + row.fields;
    Tcl_Obj *const *name = session_.names_of(row);
    const field_row *family = nullptr;
    int version = 0;
    unsigned viewed = 0;
    if (row.is_union && count != 2)
        return false;
    for (int i = 0; i < count; i += 2, ++field, ++name) {
        while (field != end && *name != words[i]) {
            ++field;
            ++name;
        }
        if (field == end)
            return false;
        Tcl_Obj *const value = words[i + 1];
        if (field->holds == holding::number && field->record < 0 && field->count == 0) {
            if (!quick_number(*field, at + field->offset, value))
                return false;
            continue;
        }
        version_ = 0;
        whole_ = false;
        if (!quick_field(*field, at + field->offset, value))
            return false;
        if (whole_ && field->count == 0)
            viewed = field->size;
        if (field->holds == holding::family)
            family = field;
        if (version_ != 0 && field->record >= 0)
            version = version_;
    }
    version_ = 0;
    if (family != nullptr && row.family >= 0 && version != 0) {
        const int wanted = session_.codes().families().version_of(read_field(bytes_ + at, *family));
        if (wanted != 0 && wanted != version)
            return false;
    }
    zero_rest(row, at, row.is_union ? viewed != 0 : count == 2 * row.fields, viewed);
    return true;
}

bool record_writer::quick_field(const field_row &field, unsigned at, Tcl_Obj *value)
{
    if (const record_row *const inner = record_in(field); inner != nullptr) {
        if (field.count == 0 && is_address(*inner))
            return quick_address(at, value, holding::ip);
        return field.count == 0 ? quick(*inner, at, value) : quick_array(field, at, value);
    }
    switch (field.holds) {
    case holding::mac: {
        unsigned char bytes[6];
        if (session_.is_list(value) || !parse_mac(Tcl_GetString(value), bytes))
            return false;
        std::memcpy(bytes_ + at, bytes, sizeof bytes);
        return true;
    }
    case holding::ip:
    case holding::ipv6:
        return quick_address(at, value, field.holds);
    case holding::ipv4:
        return false;
    default:
        return field.count == 0 ? quick_number(field, at, value) : quick_array(field, at, value);
    }
}

bool record_writer::quick_array(const field_row &field, unsigned at, Tcl_Obj *value)
{
    int count;
    Tcl_Obj **elements;
    if (!session_.is_list(value) ||
        Tcl_ListObjGetElements(nullptr, value, &count, &elements) != TCL_OK || count > field.count)
        return false;
    const record_row *const inner = record_in(field);
    for (int i = 0; i < count; ++i, at += field.size)
        if (inner != nullptr ? !quick(*inner, at, elements[i])
                             : !quick_number(field, at, elements[i]))
            return false;
    return true;
}

bool record_writer::quick_address(unsigned at, Tcl_Obj *value, holding holds)
{
    address_words words;
    if (session_.is_container(value))
        return false;
    version_ = parse_ip(Tcl_GetString(value), words);
    if (version_ == 0 || (version_ == 4 && holds == holding::ipv6))
        return false;
    std::memcpy(bytes_ + at, words, sizeof words);
    return true;
}

} // namespace qxsh
