// The environment switch of strict memory; see switch.h.
#include "strict/switch.h"

#include "records/switches.h"

namespace qxsh {

[[gnu::cold]] bool strict_memory_is_on()
{
    static const bool on = switched_on("QXSH_STRICT_MEMORY");
    return on;
}

} // namespace qxsh
