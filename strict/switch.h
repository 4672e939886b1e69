// The environment switch of strict memory.
#pragma once

namespace qxsh {

/// Whether QXSH_STRICT_MEMORY is 1; reads it once per process. A value other than 0, 1 or empty is
/// reported on stderr and means no. In a process with elevated rights (setuid or setgid) the answer
/// is always no, without a report.
bool strict_memory_is_on();

} // namespace qxsh
