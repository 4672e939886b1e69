// Numbers of the records and calls in records/table.h, and bounds of all of them.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

namespace qxsh {

enum record_number {
    record_qx_lamp_colour_t,
    record_qx_lamp_view_t,
    record_qx_lamp_t,
    record_count
};

enum call_number {
    call_qx_lamp_add,
    call_qx_lamp_tune,
    call_count
};

enum id_number {
    id_none,
    id_lamp,
    id_count
};

constexpr unsigned field_count = 16;
constexpr unsigned view_count = 1;
constexpr unsigned most_record_bytes = 56;
constexpr unsigned most_fields = 12;
constexpr unsigned most_elements = 4; ///< of an array
constexpr unsigned most_call_arguments = 4;
constexpr unsigned most_frame_bytes = 60; ///< argument_row::place

} // namespace qxsh
