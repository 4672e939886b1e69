# Lamps: no device has them. Each line is here for one case of the generator.
area lamp "Lamps"

record qx_lamp_colour_t 3 packed "a colour" {
    0   u8   hue    "hue"
    1   u16  level  "at an odd offset, since the record is packed"
}

union qx_lamp_view_t 4 "one word, two ways" {
    0   u32               word    "the whole word"
    0   qx_lamp_colour_t  colour  "the colour in it"
}

record qx_lamp_t 56 "one lamp" {
    0     u16                  id       "lamp number"
    # a unit of bit-fields, next to a plain byte
    2.0   u8:3                 mode     "mode, 0 to 7"
    2.3   u8:5                 group    "group"
    3     u8                   flags    "flags"
    4.0   u32:30               serial   "serial number"
    4.30  u32:2                kind     "kind"
    8     u8[3]                name     -holds key "three characters that no log shows"
    12    u32[2]               hours    -set-as u8 "hours lit, by level"
    20    qx_lamp_view_t       view     -view-by {id 7 colour} "the present light"
    24    qx_lamp_colour_t[4]  palette  "colours to choose from"
    36    qx_lamp_view_t[4]    program  "the day's program"
    52    qx_lamp_colour_t     secret   -no-dump "left out of the dump"
}

call qx_lamp_add "adds a lamp" {
    in     u16         dev_id
    in     qx_lamp_t*  lamp     "the lamp"
    out    u32*        lamp_id  "receives its id"
}

call qx_lamp_tune "changes a lamp in place" {
    in     u16         dev_id
    in     u8          channel  "channel, 0 to 255"
    in     u32         level    "level"
    inout  qx_lamp_t*  lamp     "the lamp"
}

table lamps "lamps, by channel and level" {
    call   qx_lamp_tune
    walk   getnext
    leads  lamp.id
    ends   QX_DARK QX_DIM
    index  channel  channels
    index  level    1..9
    node   lamp  lamp.id lamp.view.word
    holds  lamp.serial shelves
    if     lamp.kind bright
    within 1..99
    holds  lamp.id numbered
    by     lamp.hours
}

table numbered "lamps, by id and flags" {
    call   qx_lamp_tune  first
    index  level       ids
    index  lamp.flags  codes
    index  lamp.id     0..1
    index  channel     0..1
    empty  QX_DARK
    bare   QX_DIM
    call   qx_lamp_add  second
    index  lamp.id     0..7
    absent lamp_id
    node   "numbered lamp"
}

table chosen "lamps of a channel and a level" {
    keys   {channel level} lamps lamp.kind bright
    call   qx_lamp_tune
    index  lamp.id  7..9
    empty  QX_DARK
}

table shelves "where lamps stand" {
    instead "nothing reads them; ask the owner"
    node    shelf
}
