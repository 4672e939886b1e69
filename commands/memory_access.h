// Memory access for other libraries in the same interpreter, which find it as associated data. They
// then check memory behind handles in the same way as the module's own commands.
#pragma once

#include "runtime/tcl_api.h"

#include <cstdint>

namespace qxsh {

/// The name of the associated data, a memory_access. The struct never changes under this name; a
/// different one gets a new name.
constexpr const char *memory_access_name = "qxsh::memory_access 2";

struct memory_access
{
    /// Whether `size` bytes (1 to 4096) at `address`, which may be null, can be read. If the
    /// process has no handler for the faults of guarded_memory.h, an address without memory ends
    /// it.
    bool (*can_read)(const void *address, std::uint32_t size);

    /// The same for writing; the bytes keep their values.
    bool (*can_write)(void *address, std::uint32_t size);

    /// Whether strict memory allows access to the record of this type at `address`, which is not
    /// null. If not, leaves the reason as the interpreter's result. Null if strict memory is off.
    bool (*allows)(Tcl_Interp *interp, const void *address, const char *record);
};

/// Publishes the memory access in the interpreter. The struct is static and shared by all
/// interpreters.
void offer_memory_access(Tcl_Interp *interp, decltype(memory_access::allows) allows);

} // namespace qxsh
