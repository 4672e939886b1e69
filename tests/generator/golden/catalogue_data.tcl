# What the package qx knows of the SDK; catalogue.tcl answers from it.
# Generated from the catalogue by tools/generate.tcl; changes belong there.
namespace eval qx::catalogue {
    variable scalar_data {
u8 {1 {unsigned char}}
u16 {2 {unsigned short}}
u32 {4 {unsigned int}}
i32 {4 int}
u64 {8 {unsigned long long}}
    }
    variable cell_data {
u64 uint64
u32 uint32
u8 uint8
i32 int32
    }
    variable area_data {
lamp {text Lamps records {qx_lamp_colour_t qx_lamp_view_t qx_lamp_t} calls {qx_lamp_add qx_lamp_tune}}
data {text {Blocks and cells} records {} calls {}}
    }
    variable record_data {
qx_lamp_colour_t {kind record size 3 packed 1 text {a colour} fields {{name hue text hue bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 0 type u8} {name level text {at an odd offset, since the record is packed} bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 1 type u16}} area lamp}
qx_lamp_view_t {kind union size 4 packed 0 text {one word, two ways} fields {{name word text {the whole word} bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 0 type u32} {name colour text {the colour in it} bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 0 type qx_lamp_colour_t}} area lamp}
qx_lamp_t {kind record size 56 packed 0 text {one lamp} fields {{name id text {lamp number} bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 0 type u16} {name mode text {mode, 0 to 7} bit 0 width 3 count 0 set_as {} holds {} dumped 1 range {} offset 2 type u8} {name group text group bit 3 width 5 count 0 set_as {} holds {} dumped 1 range {} offset 2 type u8} {name flags text flags bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 3 type u8 hex 1} {name serial text {serial number} bit 0 width 30 count 0 set_as {} holds {} dumped 1 range {} offset 4 type u32 hex 1} {name kind text kind bit 30 width 2 count 0 set_as {} holds {} dumped 1 range {} offset 4 type u32} {name name text {three characters that no log shows} bit 0 width 0 count 3 set_as {} holds key dumped 1 range {} offset 8 type u8} {name hours text {hours lit, by level} bit 0 width 0 count 2 set_as u8 holds {} dumped 1 range {} offset 12 type u32} {name view text {the present light} bit 0 width 0 count 0 set_as {} holds {} dumped 1 range {} offset 20 type qx_lamp_view_t view_by {id 7 colour}} {name palette text {colours to choose from} bit 0 width 0 count 4 set_as {} holds {} dumped 1 range {} offset 24 type qx_lamp_colour_t} {name program text {the day's program} bit 0 width 0 count 4 set_as {} holds {} dumped 1 range {} offset 36 type qx_lamp_view_t} {name secret text {left out of the dump} bit 0 width 0 count 0 set_as {} holds {} dumped 0 range {} offset 52 type qx_lamp_colour_t}} area lamp}
    }
    variable call_data {
qx_lamp_add {text {adds a lamp} arguments {{name dev_id type u16 direction in text {device number} range {} counted_by {}} {name lamp type qx_lamp_t* direction in text {the lamp} range {} counted_by {}} {name lamp_id type u32* direction out text {receives its id} range {} counted_by {}}} area lamp}
qx_lamp_tune {text {changes a lamp in place} arguments {{name dev_id type u16 direction in text {device number} range {} counted_by {}} {name channel type u8 direction in text {channel, 0 to 255} range {} counted_by {}} {name level type u32 direction in text level range {} counted_by {}} {name lamp type qx_lamp_t* direction inout text {the lamp} range {} counted_by {}}} area lamp}
    }
    variable command_data {
qx_lamp_colour_create {lamp create qx_lamp_colour_t {} {} qx_lamp_colour_t*}
qx_lamp_colour_init {lamp init qx_lamp_colour_t {} {cfg qx_lamp_colour_t* hue u8 level u16} none}
qx_lamp_colour_dump {lamp dump qx_lamp_colour_t {} {cfg qx_lamp_colour_t*} none}
qx_lamp_colour_set_hue {lamp set_scalar qx_lamp_colour_t hue {cfg qx_lamp_colour_t* hue u8} none}
qx_lamp_colour_get_hue {lamp get_scalar qx_lamp_colour_t hue {cfg qx_lamp_colour_t*} u8}
qx_lamp_colour_set_level {lamp set_scalar qx_lamp_colour_t level {cfg qx_lamp_colour_t* level u16} none}
qx_lamp_colour_get_level {lamp get_scalar qx_lamp_colour_t level {cfg qx_lamp_colour_t*} u16}
qx_lamp_colour_array_create {lamp array_create qx_lamp_colour_t {} {size u32} qx_lamp_colour_t*}
qx_lamp_colour_array_set {lamp array_set qx_lamp_colour_t {} {arr qx_lamp_colour_t* item qx_lamp_colour_t* idx u32} none}
qx_lamp_colour_array_get {lamp array_get qx_lamp_colour_t {} {arr qx_lamp_colour_t* idx u32} qx_lamp_colour_t*}
qx_lamp_view_create {lamp create qx_lamp_view_t {} {} qx_lamp_view_t*}
qx_lamp_view_dump {lamp dump qx_lamp_view_t {} {cfg qx_lamp_view_t*} none}
qx_lamp_view_set_word {lamp set_scalar qx_lamp_view_t word {cfg qx_lamp_view_t* word u32} none}
qx_lamp_view_get_word {lamp get_scalar qx_lamp_view_t word {cfg qx_lamp_view_t*} u32}
qx_lamp_view_set_colour {lamp set_record qx_lamp_view_t colour {cfg qx_lamp_view_t* colour qx_lamp_colour_t*} none}
qx_lamp_view_get_colour {lamp get_record qx_lamp_view_t colour {cfg qx_lamp_view_t*} qx_lamp_colour_t*}
qx_lamp_view_array_create {lamp array_create qx_lamp_view_t {} {size u32} qx_lamp_view_t*}
qx_lamp_view_array_set {lamp array_set qx_lamp_view_t {} {arr qx_lamp_view_t* item qx_lamp_view_t* idx u32} none}
qx_lamp_view_array_get {lamp array_get qx_lamp_view_t {} {arr qx_lamp_view_t* idx u32} qx_lamp_view_t*}
qx_lamp_create {lamp create qx_lamp_t {} {} qx_lamp_t*}
qx_lamp_init {lamp init qx_lamp_t {} {cfg qx_lamp_t* id u16 mode u8 group u8 flags u8 serial u32 kind u32 view qx_lamp_view_t* secret qx_lamp_colour_t*} none}
qx_lamp_dump {lamp dump qx_lamp_t {} {cfg qx_lamp_t*} none}
qx_lamp_set_id {lamp set_scalar qx_lamp_t id {cfg qx_lamp_t* id u16} none}
qx_lamp_get_id {lamp get_scalar qx_lamp_t id {cfg qx_lamp_t*} u16}
qx_lamp_set_mode {lamp set_bits qx_lamp_t mode {cfg qx_lamp_t* mode u8} none}
qx_lamp_get_mode {lamp get_bits qx_lamp_t mode {cfg qx_lamp_t*} u8}
qx_lamp_set_group {lamp set_bits qx_lamp_t group {cfg qx_lamp_t* group u8} none}
qx_lamp_get_group {lamp get_bits qx_lamp_t group {cfg qx_lamp_t*} u8}
qx_lamp_set_flags {lamp set_scalar qx_lamp_t flags {cfg qx_lamp_t* flags u8} none}
qx_lamp_get_flags {lamp get_scalar qx_lamp_t flags {cfg qx_lamp_t*} u8}
qx_lamp_set_serial {lamp set_bits qx_lamp_t serial {cfg qx_lamp_t* serial u32} none}
qx_lamp_get_serial {lamp get_bits qx_lamp_t serial {cfg qx_lamp_t*} u32}
qx_lamp_set_kind {lamp set_bits qx_lamp_t kind {cfg qx_lamp_t* kind u32} none}
qx_lamp_get_kind {lamp get_bits qx_lamp_t kind {cfg qx_lamp_t*} u32}
qx_lamp_set_name {lamp set_array qx_lamp_t name {cfg qx_lamp_t* name u8 idx u32} none}
qx_lamp_get_name {lamp get_array qx_lamp_t name {cfg qx_lamp_t* idx u32} u8}
qx_lamp_set_hours {lamp set_array qx_lamp_t hours {cfg qx_lamp_t* hours u8 idx u32} none}
qx_lamp_get_hours {lamp get_array qx_lamp_t hours {cfg qx_lamp_t* idx u32} u32}
qx_lamp_set_view {lamp set_record qx_lamp_t view {cfg qx_lamp_t* view qx_lamp_view_t*} none}
qx_lamp_get_view {lamp get_record qx_lamp_t view {cfg qx_lamp_t*} qx_lamp_view_t*}
qx_lamp_set_palette {lamp set_records qx_lamp_t palette {cfg qx_lamp_t* palette qx_lamp_colour_t* idx u32} none}
qx_lamp_get_palette {lamp get_records qx_lamp_t palette {cfg qx_lamp_t* idx u32} qx_lamp_colour_t*}
qx_lamp_set_program {lamp set_records qx_lamp_t program {cfg qx_lamp_t* program qx_lamp_view_t* idx u32} none}
qx_lamp_get_program {lamp get_records qx_lamp_t program {cfg qx_lamp_t* idx u32} qx_lamp_view_t*}
qx_lamp_set_secret {lamp set_record qx_lamp_t secret {cfg qx_lamp_t* secret qx_lamp_colour_t*} none}
qx_lamp_get_secret {lamp get_record qx_lamp_t secret {cfg qx_lamp_t*} qx_lamp_colour_t*}
qx_lamp_array_create {lamp array_create qx_lamp_t {} {size u32} qx_lamp_t*}
qx_lamp_array_set {lamp array_set qx_lamp_t {} {arr qx_lamp_t* item qx_lamp_t* idx u32} none}
qx_lamp_array_get {lamp array_get qx_lamp_t {} {arr qx_lamp_t* idx u32} qx_lamp_t*}
qx_lamp_add {lamp call qx_lamp_add {} {dev_id u16 lamp qx_lamp_t* lamp_id u32*} status}
qx_lamp_tune {lamp call qx_lamp_tune {} {dev_id u16 channel u8 level u32 lamp qx_lamp_t*} status}
qx_data_free {data free {} {} {data void*} none}
qx_uint64_create {data cell_create u64 {} {data u64} u64*}
qx_uint64_get {data cell_get u64 {} {ptr u64*} low32}
qx_uint32_create {data cell_create u32 {} {data u32} u32*}
qx_uint32_get {data cell_get u32 {} {ptr u32*} u32}
qx_uint32_array_create {data cell_array_create u32 {} {data u32 size u32} u32*}
qx_uint32_array_get {data cell_array_get u32 {} {ptr u32* index u32} u32}
qx_uint32_array_set {data cell_array_set u32 {} {ptr u32* data u32 index u32} none}
qx_uint64_array_create {data cell_array_create u64 {} {data u64 size u32} u64*}
qx_uint64_array_get {data cell_array_get u64 {} {ptr u64* index u32} low32}
qx_uint64_array_set {data cell_array_set u64 {} {ptr u64* data u64 index u32} none}
qx_uint8_create {data cell_create u8 {} {data u8} u8*}
qx_uint8_get {data cell_get u8 {} {ptr u8*} u8}
qx_uint8_array_create {data cell_array_create u8 {} {data u8 size u32} u8*}
qx_uint8_array_get {data cell_array_get u8 {} {ptr u8* index u32} u8}
qx_uint8_array_set {data cell_array_set u8 {} {ptr u8* data u8 index u32} none}
qx_int32_create {data cell_create i32 {} {data i32} i32*}
qx_int32_get {data cell_get i32 {} {ptr i32*} i32}
qx_int32_array_create {data cell_array_create i32 {} {data i32 size u32} i32*}
qx_int32_array_get {data cell_array_get i32 {} {ptr i32* index u32} i32}
qx_int32_array_set {data cell_array_set i32 {} {ptr i32* data i32 index u32} none}
    }
    variable table_data {
lamps {area lamp text {lamps, by channel and level} parts {{call qx_lamp_tune part {} walk getnext leads lamp.id indexes {channel {capacity channels} level {range 1 9}} empty {} ends {QX_DARK QX_DIM} bare {} absent {}}} keys {} giver {} node {lamp {lamp.id lamp.view.word}} holds {{paths lamp.serial table shelves by {} if {lamp.kind bright} within {1 99}} {paths lamp.id table numbered by lamp.hours if {} within {}}} instead {}}
numbered {area lamp text {lamps, by id and flags} parts {{call qx_lamp_tune part first walk {} leads {} indexes {level {ids 0} lamp.flags codes lamp.id {range 0 1} channel {range 0 1}} empty QX_DARK ends {} bare QX_DIM absent {}} {call qx_lamp_add part second walk {} leads {} indexes {lamp.id {range 0 7}} empty {} ends {} bare {} absent lamp_id}} keys {} giver {} node {{numbered lamp} {}} holds {} instead {}}
chosen {area lamp text {lamps of a channel and a level} parts {{call qx_lamp_tune part {} walk {} leads {} indexes {lamp.id {range 7 9}} empty QX_DARK ends {} bare {} absent {}}} keys {channel level} giver {lamps {lamp.kind bright}} node {} holds {} instead {}}
shelves {area lamp text {where lamps stand} parts {} keys {} giver {} node {shelf {}} holds {} instead {nothing reads them; ask the owner}}
    }
    variable status_data {
0 {QX_OK done}
7 {QX_FAILED {not done}}
    }
    variable code_data {
qx_lamp_t.mode {bright 1 dim-light 2}
qx_lamp_tune.level {low 3}
    }
    variable capacity_data {
ports 5
lamps 12
    }
    variable family_data {
ipv6 9
    }
}
