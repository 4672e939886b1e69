// The environment switch of strict memory.
#pragma once

namespace qxsh {

/// Whether QXSH_STRICT_MEMORY is on (records/switches.h); reads it once per process.
bool strict_memory_is_on();

} // namespace qxsh
