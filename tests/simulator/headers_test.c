/* Both public headers in C: the statuses are an enumeration, the functions are there.
 * Relies on qx_sdk.h and qx_status.h only. */
#include "qx_sdk.h"
#include "qx_status.h"

unsigned int called_from_c(void);

/* QX_OK if a call from C answers what its enumeration says. */
unsigned int called_from_c(void)
{
    qx_pm_cpu_info_t info;
    qx_status status = (qx_status)qx_pm_cpu_info_get(9, &info);
    switch (status) {
    case QX_BAD_DEVICE:
        return QX_OK;
    default:
        return status;
    }
}
