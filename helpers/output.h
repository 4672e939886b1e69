// The one way out for everything the helpers print. Knows nothing of Tcl: the command layer points
// it at Tcl's stdout channel, so that dumps and `puts` come out in the script's order.
#pragma once

#include <cstddef>
#include <string_view>

namespace qxsh {

/// Takes `size` ready bytes. Errors of the sink are its own business, as with printf.
using output_function = void (*)(const char *bytes, std::size_t size);

/// Replaces the sink; null puts back the default, C's stdout.
void set_output(output_function function);

/// Hands the bytes to the sink in one call.
void write_output(std::string_view bytes);

} // namespace qxsh
