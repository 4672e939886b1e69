// Records and calls as text for people and scripts: a record as a dict of its fields that are not
// zero, in the form that qx::set and qx::call take, and a call as one line. Unions are shown by the
// view that the record's numbers choose, then by what this view does not show. Relies on
// shown_names, and on recorded_call.h for what a call is.
#pragma once

#include "replay/recorded_call.h"
#include "replay/shown_names.h"

#include <string>

namespace qxsh {

/// How values are written that not everybody may see, or that are another device's.
class shown_style
{
public:
    virtual ~shown_style() = default;

    /// An id of this kind, an id_number, that the device has assigned; an empty text stands for its
    /// number.
    virtual std::string id(unsigned kind, std::uint32_t number) const;

    /// A key, or a field that overlaps one, of so many bytes. `hidden` is what a recording that
    /// does not tell it has in its place, else empty. An empty text stands for the bytes
    /// themselves.
    virtual std::string secret(const field_row &field, unsigned size,
                               const std::string &hidden) const;
};

/// Numbers are shown as numbers, and of keys only what a recording has, or their length.
extern const shown_style plain_style;

/// The record at `bytes`, a Tcl dict; an empty text if everything in it is zero. An IP address with
/// its family is one word where qx::set takes that.
std::string shown_record(const record_row &record, const unsigned char *bytes,
                         const shown_names &names, const shown_style &style = plain_style);

/// The same for what a pointer argument points to, which has been read: a dict, or a list of dicts
/// for an array, or a number.
std::string shown_memory(const argument_row &argument, const recorded_memory &memory,
                         const shown_names &names, const shown_style &style = plain_style);

/// An argument that is not a pointer.
std::string shown_value(const argument_row &argument, std::uint32_t value, const shown_names &names,
                        const shown_style &style = plain_style);

/// One word of a Tcl list, given a text without quotes and backslashes: in braces where needed.
std::string list_word(const std::string &text);

/// One line for a call, without a newline, such as
/// `12 qx_flow_add device_id 0 p_flow {flow_id 7} -> QX_OK, 3 us`. Behind the arrow is what a
/// successful call has put out, and whatever a call has changed.
std::string shown_line(const recorded_call &call, const shown_names &names);

} // namespace qxsh
