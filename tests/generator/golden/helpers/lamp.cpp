// Helpers of the area: Lamps.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "helpers.h"

#include "helpers/cells.h"
#include "helpers/dump.h"
#include "helpers/records.h"
#include "record_numbers.h"

using namespace qxsh;

qx_lamp_colour_t *qx_lamp_colour_create()
{
    return static_cast<qx_lamp_colour_t *>(create_record(3));
}

void qx_lamp_colour_init(qx_lamp_colour_t *cfg, unsigned char hue, unsigned short level)
{
    if (cfg == nullptr || !can_write(cfg, 3))
        return;
    put<std::uint8_t>(cfg, 0, hue);
    put<std::uint16_t>(cfg, 1, level);
}

void qx_lamp_colour_dump(qx_lamp_colour_t *cfg)
{
    dump_record(cfg, record_qx_lamp_colour_t);
}

void qx_lamp_colour_set_hue(qx_lamp_colour_t *cfg, unsigned char hue)
{
    set_scalar<std::uint8_t>(cfg, 0, hue);
}

unsigned char qx_lamp_colour_get_hue(qx_lamp_colour_t *cfg)
{
    return get_scalar<std::uint8_t>(cfg, 0);
}

void qx_lamp_colour_set_level(qx_lamp_colour_t *cfg, unsigned short level)
{
    set_scalar<std::uint16_t>(cfg, 1, level);
}

unsigned short qx_lamp_colour_get_level(qx_lamp_colour_t *cfg)
{
    return get_scalar<std::uint16_t>(cfg, 1);
}

qx_lamp_colour_t *qx_lamp_colour_array_create(unsigned int size)
{
    return static_cast<qx_lamp_colour_t *>(create_record_array(size, 3));
}

void qx_lamp_colour_array_set(qx_lamp_colour_t *arr, qx_lamp_colour_t *item, unsigned int idx)
{
    set_record_slot(arr, item, idx, 3);
}

qx_lamp_colour_t *qx_lamp_colour_array_get(qx_lamp_colour_t *arr, unsigned int idx)
{
    return static_cast<qx_lamp_colour_t *>(record_slot(arr, idx, 3));
}

qx_lamp_view_t *qx_lamp_view_create()
{
    return static_cast<qx_lamp_view_t *>(create_record(4));
}

void qx_lamp_view_dump(qx_lamp_view_t *cfg)
{
    dump_record(cfg, record_qx_lamp_view_t);
}

void qx_lamp_view_set_word(qx_lamp_view_t *cfg, unsigned int word)
{
    set_scalar<std::uint32_t>(cfg, 0, word);
}

unsigned int qx_lamp_view_get_word(qx_lamp_view_t *cfg)
{
    return get_scalar<std::uint32_t>(cfg, 0);
}

void qx_lamp_view_set_colour(qx_lamp_view_t *cfg, qx_lamp_colour_t *colour)
{
    set_record(cfg, 0, colour, 3);
}

qx_lamp_colour_t *qx_lamp_view_get_colour(qx_lamp_view_t *cfg)
{
    return static_cast<qx_lamp_colour_t *>(record_at(cfg, 0));
}

qx_lamp_view_t *qx_lamp_view_array_create(unsigned int size)
{
    return static_cast<qx_lamp_view_t *>(create_record_array(size, 4));
}

void qx_lamp_view_array_set(qx_lamp_view_t *arr, qx_lamp_view_t *item, unsigned int idx)
{
    set_record_slot(arr, item, idx, 4);
}

qx_lamp_view_t *qx_lamp_view_array_get(qx_lamp_view_t *arr, unsigned int idx)
{
    return static_cast<qx_lamp_view_t *>(record_slot(arr, idx, 4));
}

qx_lamp_t *qx_lamp_create()
{
    return static_cast<qx_lamp_t *>(create_record(56));
}

void qx_lamp_init(qx_lamp_t *cfg, unsigned short id, unsigned char mode, unsigned char group,
    unsigned char flags, unsigned int serial, unsigned int kind, qx_lamp_view_t *view,
    qx_lamp_colour_t *secret)
{
    if (cfg == nullptr || view == nullptr || secret == nullptr || !can_write(cfg, 56))
        return;
    put<std::uint16_t>(cfg, 0, id);
    store_bits<std::uint8_t>(cfg, 2, 0, 3, mode);
    store_bits<std::uint8_t>(cfg, 2, 3, 5, group);
    put<std::uint8_t>(cfg, 3, flags);
    store_bits<std::uint32_t>(cfg, 4, 0, 30, serial);
    store_bits<std::uint32_t>(cfg, 4, 30, 2, kind);
    put_record<4>(cfg, 20, view);
    put_record<3>(cfg, 52, secret);
}

void qx_lamp_dump(qx_lamp_t *cfg)
{
    dump_record(cfg, record_qx_lamp_t);
}

void qx_lamp_set_id(qx_lamp_t *cfg, unsigned short id)
{
    set_scalar<std::uint16_t>(cfg, 0, id);
}

unsigned short qx_lamp_get_id(qx_lamp_t *cfg)
{
    return get_scalar<std::uint16_t>(cfg, 0);
}

void qx_lamp_set_mode(qx_lamp_t *cfg, unsigned char mode)
{
    set_bits<std::uint8_t>(cfg, 2, 0, 3, mode);
}

unsigned char qx_lamp_get_mode(qx_lamp_t *cfg)
{
    return get_bits<std::uint8_t>(cfg, 2, 0, 3);
}

void qx_lamp_set_group(qx_lamp_t *cfg, unsigned char group)
{
    set_bits<std::uint8_t>(cfg, 2, 3, 5, group);
}

unsigned char qx_lamp_get_group(qx_lamp_t *cfg)
{
    return get_bits<std::uint8_t>(cfg, 2, 3, 5);
}

void qx_lamp_set_flags(qx_lamp_t *cfg, unsigned char flags)
{
    set_scalar<std::uint8_t>(cfg, 3, flags);
}

unsigned char qx_lamp_get_flags(qx_lamp_t *cfg)
{
    return get_scalar<std::uint8_t>(cfg, 3);
}

void qx_lamp_set_serial(qx_lamp_t *cfg, unsigned int serial)
{
    set_bits<std::uint32_t>(cfg, 4, 0, 30, serial);
}

unsigned int qx_lamp_get_serial(qx_lamp_t *cfg)
{
    return get_bits<std::uint32_t>(cfg, 4, 0, 30);
}

void qx_lamp_set_kind(qx_lamp_t *cfg, unsigned int kind)
{
    set_bits<std::uint32_t>(cfg, 4, 30, 2, kind);
}

unsigned int qx_lamp_get_kind(qx_lamp_t *cfg)
{
    return get_bits<std::uint32_t>(cfg, 4, 30, 2);
}

void qx_lamp_set_name(qx_lamp_t *cfg, unsigned char name, unsigned int idx)
{
    set_element<std::uint8_t>(cfg, 8, 3, name, idx, __func__);
}

unsigned char qx_lamp_get_name(qx_lamp_t *cfg, unsigned int idx)
{
    return get_element<std::uint8_t>(cfg, 8, 3, idx);
}

void qx_lamp_set_hours(qx_lamp_t *cfg, unsigned char hours, unsigned int idx)
{
    set_element<std::uint32_t>(cfg, 12, 2, hours, idx, __func__);
}

unsigned int qx_lamp_get_hours(qx_lamp_t *cfg, unsigned int idx)
{
    return get_element<std::uint32_t>(cfg, 12, 2, idx);
}

void qx_lamp_set_view(qx_lamp_t *cfg, qx_lamp_view_t *view)
{
    set_record(cfg, 20, view, 4);
}

qx_lamp_view_t *qx_lamp_get_view(qx_lamp_t *cfg)
{
    return static_cast<qx_lamp_view_t *>(record_at(cfg, 20));
}

void qx_lamp_set_palette(qx_lamp_t *cfg, qx_lamp_colour_t *palette, unsigned int idx)
{
    set_record_element(cfg, 24, 4, palette, 3, idx, __func__);
}

qx_lamp_colour_t *qx_lamp_get_palette(qx_lamp_t *cfg, unsigned int idx)
{
    return static_cast<qx_lamp_colour_t *>(
        record_element(cfg, 24, 4, 3, idx));
}

void qx_lamp_set_program(qx_lamp_t *cfg, qx_lamp_view_t *program, unsigned int idx)
{
    set_record_element(cfg, 36, 4, program, 4, idx, __func__);
}

qx_lamp_view_t *qx_lamp_get_program(qx_lamp_t *cfg, unsigned int idx)
{
    return static_cast<qx_lamp_view_t *>(
        record_element(cfg, 36, 4, 4, idx));
}

void qx_lamp_set_secret(qx_lamp_t *cfg, qx_lamp_colour_t *secret)
{
    set_record(cfg, 52, secret, 3);
}

qx_lamp_colour_t *qx_lamp_get_secret(qx_lamp_t *cfg)
{
    return static_cast<qx_lamp_colour_t *>(record_at(cfg, 52));
}

qx_lamp_t *qx_lamp_array_create(unsigned int size)
{
    return static_cast<qx_lamp_t *>(create_record_array(size, 56));
}

void qx_lamp_array_set(qx_lamp_t *arr, qx_lamp_t *item, unsigned int idx)
{
    set_record_slot(arr, item, idx, 56);
}

qx_lamp_t *qx_lamp_array_get(qx_lamp_t *arr, unsigned int idx)
{
    return static_cast<qx_lamp_t *>(record_slot(arr, idx, 56));
}
