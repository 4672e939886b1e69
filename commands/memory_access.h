// The way to the memory behind handles for libraries that are loaded beside the module: whoever
// shares the interpreter finds it as associated data. So they meet memory in the same way as the
// module's own commands do.
#pragma once

#include "runtime/tcl_api.h"

#include <cstdint>

namespace qxsh {

/// The name of the associated data. What is found there keeps this form; another has another name.
constexpr const char *memory_access_name = "qxsh::memory_access 1";

struct memory_access
{
    /// Whether `size` bytes (1 to 4096) can be read. Where the process has no handler for faults of
    /// guarded_memory.h, an address without memory ends it.
    bool (*can_read)(const void *address, std::uint32_t size);

    /// The same for writing.
    bool (*can_write)(void *address, std::uint32_t size);

    /// Strict memory is on: only the module's commands know which handles are good.
    bool strict;
};

/// Lets the interpreter's other libraries find it.
void offer_memory_access(Tcl_Interp *interp, bool strict);

} // namespace qxsh
