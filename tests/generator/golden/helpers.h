// Prototypes of every record helper and cell function.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

#include "qx_sdk.h"

// Lamps

qx_lamp_colour_t *qx_lamp_colour_create();
void qx_lamp_colour_init(qx_lamp_colour_t *cfg, unsigned char hue, unsigned short level);
void qx_lamp_colour_dump(qx_lamp_colour_t *cfg);
void qx_lamp_colour_set_hue(qx_lamp_colour_t *cfg, unsigned char hue);
unsigned char qx_lamp_colour_get_hue(qx_lamp_colour_t *cfg);
void qx_lamp_colour_set_level(qx_lamp_colour_t *cfg, unsigned short level);
unsigned short qx_lamp_colour_get_level(qx_lamp_colour_t *cfg);
qx_lamp_colour_t *qx_lamp_colour_array_create(unsigned int size);
void qx_lamp_colour_array_set(qx_lamp_colour_t *arr, qx_lamp_colour_t *item, unsigned int idx);
qx_lamp_colour_t *qx_lamp_colour_array_get(qx_lamp_colour_t *arr, unsigned int idx);
qx_lamp_view_t *qx_lamp_view_create();
void qx_lamp_view_dump(qx_lamp_view_t *cfg);
void qx_lamp_view_set_word(qx_lamp_view_t *cfg, unsigned int word);
unsigned int qx_lamp_view_get_word(qx_lamp_view_t *cfg);
void qx_lamp_view_set_colour(qx_lamp_view_t *cfg, qx_lamp_colour_t *colour);
qx_lamp_colour_t *qx_lamp_view_get_colour(qx_lamp_view_t *cfg);
qx_lamp_view_t *qx_lamp_view_array_create(unsigned int size);
void qx_lamp_view_array_set(qx_lamp_view_t *arr, qx_lamp_view_t *item, unsigned int idx);
qx_lamp_view_t *qx_lamp_view_array_get(qx_lamp_view_t *arr, unsigned int idx);
qx_lamp_t *qx_lamp_create();
void qx_lamp_init(qx_lamp_t *cfg, unsigned short id, unsigned char mode, unsigned char group,
    unsigned char flags, unsigned int serial, unsigned int kind, qx_lamp_view_t *view,
    qx_lamp_colour_t *secret);
void qx_lamp_dump(qx_lamp_t *cfg);
void qx_lamp_set_id(qx_lamp_t *cfg, unsigned short id);
unsigned short qx_lamp_get_id(qx_lamp_t *cfg);
void qx_lamp_set_mode(qx_lamp_t *cfg, unsigned char mode);
unsigned char qx_lamp_get_mode(qx_lamp_t *cfg);
void qx_lamp_set_group(qx_lamp_t *cfg, unsigned char group);
unsigned char qx_lamp_get_group(qx_lamp_t *cfg);
void qx_lamp_set_flags(qx_lamp_t *cfg, unsigned char flags);
unsigned char qx_lamp_get_flags(qx_lamp_t *cfg);
void qx_lamp_set_serial(qx_lamp_t *cfg, unsigned int serial);
unsigned int qx_lamp_get_serial(qx_lamp_t *cfg);
void qx_lamp_set_kind(qx_lamp_t *cfg, unsigned int kind);
unsigned int qx_lamp_get_kind(qx_lamp_t *cfg);
void qx_lamp_set_name(qx_lamp_t *cfg, unsigned char name, unsigned int idx);
unsigned char qx_lamp_get_name(qx_lamp_t *cfg, unsigned int idx);
void qx_lamp_set_hours(qx_lamp_t *cfg, unsigned char hours, unsigned int idx);
unsigned int qx_lamp_get_hours(qx_lamp_t *cfg, unsigned int idx);
void qx_lamp_set_view(qx_lamp_t *cfg, qx_lamp_view_t *view);
qx_lamp_view_t *qx_lamp_get_view(qx_lamp_t *cfg);
void qx_lamp_set_palette(qx_lamp_t *cfg, qx_lamp_colour_t *palette, unsigned int idx);
qx_lamp_colour_t *qx_lamp_get_palette(qx_lamp_t *cfg, unsigned int idx);
void qx_lamp_set_program(qx_lamp_t *cfg, qx_lamp_view_t *program, unsigned int idx);
qx_lamp_view_t *qx_lamp_get_program(qx_lamp_t *cfg, unsigned int idx);
void qx_lamp_set_secret(qx_lamp_t *cfg, qx_lamp_colour_t *secret);
qx_lamp_colour_t *qx_lamp_get_secret(qx_lamp_t *cfg);
qx_lamp_t *qx_lamp_array_create(unsigned int size);
void qx_lamp_array_set(qx_lamp_t *arr, qx_lamp_t *item, unsigned int idx);
qx_lamp_t *qx_lamp_array_get(qx_lamp_t *arr, unsigned int idx);

// Blocks and cells

void qx_data_free(void *data);
unsigned long long *qx_uint64_create(unsigned long long data);
unsigned long long qx_uint64_get(unsigned long long *ptr);
unsigned int *qx_uint32_create(unsigned int data);
unsigned int qx_uint32_get(unsigned int *ptr);
unsigned int *qx_uint32_array_create(unsigned int data, unsigned int size);
unsigned int qx_uint32_array_get(unsigned int *ptr, unsigned int index);
void qx_uint32_array_set(unsigned int *ptr, unsigned int data, unsigned int index);
unsigned long long *qx_uint64_array_create(unsigned long long data, unsigned int size);
unsigned long long qx_uint64_array_get(unsigned long long *ptr, unsigned int index);
void qx_uint64_array_set(unsigned long long *ptr, unsigned long long data, unsigned int index);
unsigned char *qx_uint8_create(unsigned char data);
unsigned char qx_uint8_get(unsigned char *ptr);
unsigned char *qx_uint8_array_create(unsigned char data, unsigned int size);
unsigned char qx_uint8_array_get(unsigned char *ptr, unsigned int index);
void qx_uint8_array_set(unsigned char *ptr, unsigned char data, unsigned int index);
int *qx_int32_create(int data);
int qx_int32_get(int *ptr);
int *qx_int32_array_create(int data, unsigned int size);
int qx_int32_array_get(int *ptr, unsigned int index);
void qx_int32_array_set(int *ptr, int data, unsigned int index);
