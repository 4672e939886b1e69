/* The statuses that the simulator's SDK functions return by default. A status never
 * changes its number. Generated from the catalogue by tools/generate.tcl; changes belong there.
 */
#ifndef QX_STATUS_H
#define QX_STATUS_H

typedef enum qx_status {
    QX_OK = 0,                 /* done */
    QX_FAILED = 7              /* not done */
} qx_status;

#endif
