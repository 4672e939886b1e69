// Writing values by their paths, for record_writer.cpp. What belongs together may come by several
// paths: the views of a union, and an address and its family.
#include "library/qx/held_object.h"
#include "library/qx/record_writer.h"

namespace qxsh {

bool record_writer::write(const path_target &target, Tcl_Obj *value, const char *path)
{
    const place here = {nullptr, path, 0};
    if (written_ == nullptr)
        written_ = by_path_.emplace().data();
    version_ = 0;
    if (!(target.field == nullptr ? padding_at(target, value, here)
                                  : value_at(target, value, here)))
        return false;
    if (contradiction_)
        return refuse(&here, Tcl_NewStringObj("contradicts an earlier path", -1));
    if (target.field != nullptr && target.row->family >= 0 && target.field->record >= 0 &&
        version_ != 0)
        note_address(*target.row, target.at, version_, here, value);
    return check_families();
}

bool record_writer::value_at(const path_target &target, Tcl_Obj *value, const place &here)
{
    const field_row &field = *target.field;
    if (target.index < 0)
        return this->field(field, target.at + field.offset, value, here);
    if (field.record >= 0)
        return nested(record_rows[field.record], target.start(), value, &here);
    std::uint32_t number;
    secret_ = field.holds == holding::key;
    if (!take(&field, value, bit_mask(0, 8u * field.size), number, &here))
        return false;
    store(target.start(), field.size, number);
    return true;
}

// Bytes in no field, of any view and nested record.
bool record_writer::padding_at(const path_target &target, Tcl_Obj *value, const place &here)
{
    unsigned char free[most_record_bytes];
    unsigned char bytes[most_record_bytes];
    unsigned count;
    const auto from = static_cast<unsigned>(target.index);
    secret_ = false;
    if (!hexadecimal(value, target.row->size - from, bytes, count, here))
        return false;
    free_bits(*target.row, free);
    for (unsigned i = 0; i < count; ++i) {
        const unsigned char bits = free[from + i];
        if ((bytes[i] & ~bits) != 0)
            return refuse(&here, Tcl_ObjPrintf("byte %u belongs to a field", from + i));
        store(target.at + from + i, 1, bytes[i], bits);
    }
    return true;
}

// An address whose family is not written together with it.
void record_writer::note_address(const record_row &row, unsigned at, int version,
                                 const place &address, Tcl_Obj *text)
{
    if (!by_path_)
        return;
    const held_object shown{Tcl_NewObj()};
    append_place(shown.get(), &address);
    addresses_.push_back({&row, at, version, Tcl_GetString(shown.get()), Tcl_GetString(text)});
}

// Addresses that paths have written match the families that paths have written.
bool record_writer::check_families()
{
    for (const noted_address &each : addresses_) {
        const field_row &family = fields_of(*each.row)[static_cast<unsigned>(each.row->family)];
        if (read_field(by_path_->data() + each.at, family) == 0)
            continue;
        const place address = {nullptr, each.place.c_str(), 0};
        const held_object text{Tcl_NewStringObj(each.text.c_str(), -1)};
        if (!check_family(*each.row, read_field(bytes_ + each.at, family), each.version, address,
                          text.get()))
            return false;
    }
    return true;
}

} // namespace qxsh
