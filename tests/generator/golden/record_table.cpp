// The records and calls of the SDK: records/table.h.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "records/table.h"

namespace qxsh {

using enum holding;
using enum direction;

const char table_names[] =
    "qx_lamp_colour_t" "\0"
    "hue" "\0"
    "level" "\0"
    "qx_lamp_view_t" "\0"
    "word" "\0"
    "colour" "\0"
    "qx_lamp_t" "\0"
    "id" "\0"
    "mode" "\0"
    "group" "\0"
    "flags" "\0"
    "serial" "\0"
    "kind" "\0"
    "name" "\0"
    "hours" "\0"
    "" "\0"
    "view" "\0"
    "palette" "\0"
    "program" "\0"
    "secret" "\0"
    "dev_id" "\0"
    "lamp" "\0"
    "lamp_id" "\0"
    "qx_lamp_add" "\0"
    "channel" "\0"
    "qx_lamp_tune" "\0"
;

const record_row record_rows[] = {
    {{0}, 3, 0, 2, false, 0, -1}, // qx_lamp_colour_t
    {{27}, 4, 2, 2, true, 0, -1}, // qx_lamp_view_t
    {{54}, 56, 4, 12, false, 0, -1}, // qx_lamp_t
};

const field_row field_rows[] = {
    {{17}, 0, 1, 0, 0, 0, number, true, -1, 0, false}, // hue
    {{21}, 1, 2, 0, 0, 0, number, true, -1, 0, false}, // level
    {{42}, 0, 4, 0, 0, 0, number, true, -1, 0, false}, // word
    {{47}, 0, 3, 0, 0, 0, number, true, 0, 0, false}, // colour
    {{64}, 0, 2, 0, 0, 0, number, true, -1, 0, false}, // id
    {{67}, 2, 1, 0, 0, 3, number, true, -1, 0, false}, // mode
    {{72}, 2, 1, 0, 3, 5, number, true, -1, 0, false}, // group
    {{78}, 3, 1, 0, 0, 0, number, true, -1, 0, true}, // flags
    {{84}, 4, 4, 0, 0, 30, number, true, -1, 0, true}, // serial
    {{91}, 4, 4, 0, 30, 2, number, true, -1, 0, false}, // kind
    {{96}, 8, 1, 3, 0, 0, key, true, -1, 0, false}, // name
    {{101}, 12, 4, 2, 0, 0, number, true, -1, 0, false}, // hours
    {{108}, 20, 4, 0, 0, 0, number, true, 1, 0, false}, // view
    {{113}, 24, 3, 4, 0, 0, number, true, 0, 0, false}, // palette
    {{121}, 36, 4, 4, 0, 0, number, true, 1, 0, false}, // program
    {{129}, 52, 3, 0, 0, 0, number, false, 0, 0, false}, // secret
};

const view_row view_rows[] = {
    {{107}, 12, 4, 0, 2, 1, 7}, // qx_lamp_t.view: id 7 is colour
    {{0}, 0, 0, 0, 0, 0, 0},
};

const call_row call_rows[] = {
    {{156}, 0, 3, true}, // qx_lamp_add
    {{176}, 3, 4, true}, // qx_lamp_tune
};

const argument_row argument_rows[] = {
    {{136}, in, false, 2, 0, -1, -1, 0}, // dev_id
    {{143}, in, true, 56, 0, -1, 2, 0}, // lamp
    {{148}, out, true, 4, 56, -1, -1, 1}, // lamp_id
    {{136}, in, false, 2, 0, -1, -1, 0}, // dev_id
    {{168}, in, false, 1, 0, -1, -1, 0}, // channel
    {{21}, in, false, 4, 0, -1, -1, 1}, // level
    {{143}, inout, true, 56, 0, -1, 2, 0}, // lamp
};

} // namespace qxsh
