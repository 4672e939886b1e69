// What a session under strict memory says at its end about blocks that were never freed.
#pragma once

#include "strict/block_table.h"

#include <string>
#include <vector>

namespace qxsh {

/// The lines, each ended; empty if nothing leaked. The first counts all, then comes one line a
/// place, at most `most_places`, and one for the rest.
std::string leak_report(const std::vector<leak> &leaks);

constexpr std::size_t most_places = 20;

} // namespace qxsh
