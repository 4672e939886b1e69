// Whether a text is one JSON value, by the grammar alone.
#pragma once

#include <string_view>

namespace fuzz {

bool is_json(std::string_view text);

} // namespace fuzz
