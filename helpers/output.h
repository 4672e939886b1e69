// The output sink: everything the helpers print goes through it. It does not depend on Tcl; the
// command layer points it at Tcl's stdout channel, so that dumps and `puts` keep their order.
#pragma once

#include <cstddef>
#include <string_view>

namespace qxsh {

/// Writes `size` bytes, which it does not keep. It handles its errors itself, as printf does.
using output_function = void (*)(const char *bytes, std::size_t size);

/// Replaces the sink; null restores the default, C's stdout.
void set_output(output_function function);

/// Passes the bytes to the sink in one call.
void write_output(std::string_view bytes);

} // namespace qxsh
