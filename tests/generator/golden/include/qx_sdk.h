/* Records and functions of the SDK, little-endian, sizes and offsets as on the board.
 * Every function returns a status, 0 for success.
 * Generated from the catalogue by tools/generate.tcl; changes belong there. */
#ifndef QX_SDK_H
#define QX_SDK_H

#ifdef __cplusplus
extern "C" {
#endif

/* A colour. 3 bytes. */
typedef struct qx_lamp_colour_t {
    unsigned char hue;                             /* hue */
    unsigned short level;                          /* at an odd offset, since the record is packed */
} __attribute__((packed)) qx_lamp_colour_t;

/* One word, two ways. 4 bytes. */
typedef union qx_lamp_view_t {
    unsigned int word;                             /* the whole word */
    qx_lamp_colour_t colour;                       /* the colour in it */
} qx_lamp_view_t;

/* One lamp. 56 bytes. */
typedef struct qx_lamp_t {
    unsigned short id;                             /* lamp number */
    unsigned char mode : 3;                        /* mode, 0 to 7 */
    unsigned char group : 5;                       /* group */
    unsigned char flags;                           /* flags */
    unsigned int serial : 30;                      /* serial number */
    unsigned int kind : 2;                         /* kind */
    unsigned char name[3];                         /* three characters that no log shows */
    unsigned int hours[2];                         /* hours lit, by level */
    qx_lamp_view_t view;                           /* the present light */
    qx_lamp_colour_t palette[4];                   /* colours to choose from */
    qx_lamp_view_t program[4];                     /* the day's program */
    qx_lamp_colour_t secret;                       /* left out of the dump */
} qx_lamp_t;

/* Adds a lamp.
 *   dev_id                 device number
 *   lamp (in)              the lamp
 *   lamp_id (out)          receives its id
 */
unsigned int qx_lamp_add(unsigned short dev_id, qx_lamp_t *lamp, unsigned int *lamp_id);

/* Changes a lamp in place.
 *   dev_id                 device number
 *   channel                channel, 0 to 255
 *   level                  level
 *   lamp (inout)           the lamp
 */
unsigned int qx_lamp_tune(unsigned short dev_id, unsigned char channel, unsigned int level,
    qx_lamp_t *lamp);

#ifdef __cplusplus
}
#endif

#endif
