// Paths to values in records, as errors print them: ingress_pkt.tag(0).vlan_id.
#pragma once

#include "library/qx/record_session.h"

#include <string_view>

namespace qxsh {

/// A field, or one of its elements, or bytes in no field, within a record.
struct path_target
{
    const record_row *row;  ///< the record that has the field
    const field_row *field; ///< what the path names; null: padding
    unsigned at;            ///< bytes from the outermost record's start to `row`
    int index;              ///< the element; -1: the whole field; of padding the first byte

    /// Bytes from the outermost record's start to the field or element, not of padding.
    unsigned start() const
    {
        return at + field->offset + (index < 0 ? 0 : static_cast<unsigned>(index) * field->size);
    }
};

/// Finds what a path names in a record. On failure returns false with an error in the interpreter,
/// error code {QX VALUE <path>}; `target` is then unspecified.
bool follow_path(const record_session &session, const record_row &record, Tcl_Obj *path,
                 path_target &target);

/// Leaves an error for a path or place that cannot be used, and returns false. Frees `text`, a new
/// object.
bool refuse_place(Tcl_Interp *interp, const char *place, Tcl_Obj *text);

/// The text that a record has no field of this name, and which names are nearest: a new object.
Tcl_Obj *unknown_field_text(const record_session &session, const record_row &row,
                            std::string_view name);

} // namespace qxsh
