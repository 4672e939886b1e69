/* Statuses for the sample. */
enum qx_status {
    QX_OK = 0,     /* done */
    QX_FAILED = 7, /* not done */
};
