// Guarded accesses on behalf of other libraries; see memory_access.h.
#include "commands/memory_access.h"

#include "helpers/guarded_memory.h"

namespace qxsh {

// The result reports the fault, which must not become the next command's error.
static bool without_fault(bool accessed)
{
    if (!accessed)
        pending_fault.happened = false;
    return accessed;
}

static bool readable(const void *address, std::uint32_t size)
{
    return without_fault(can_read(address, size));
}

static bool writable(void *address, std::uint32_t size)
{
    return without_fault(can_write(address, size));
}

void offer_memory_access(Tcl_Interp *interp, decltype(memory_access::allows) allows)
{
    static constinit memory_access access = {readable, writable, nullptr};
    access.allows = allows;
    Tcl_SetAssocData(interp, memory_access_name, nullptr, &access);
}

} // namespace qxsh
