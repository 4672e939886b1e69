// The environment switch of strict memory.
#pragma once

namespace qxsh {

/// Whether QXSH_STRICT_MEMORY is 1. Asks once in a process. Any other value but 0 and the empty
/// one is told on stderr and means no, as does any value in a process that runs with rights its
/// user has not.
bool strict_memory_is_on();

} // namespace qxsh
