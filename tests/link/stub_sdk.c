/* A library with all functions of the SDK, each of which only returns SDK_STATUS. They are weak:
 * another source of the same library may have one that does more. What the shell passes to them is
 * ignored. */

#define SDK_FUNCTION(name)                                                                         \
    __attribute__((weak)) unsigned int name(void)                                                  \
    {                                                                                              \
        return SDK_STATUS;                                                                         \
    }
#include "sdk_functions.inc"
