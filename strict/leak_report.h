// The report of blocks that were never freed, printed when a session under strict memory ends.
#pragma once

#include "strict/block_table.h"

#include <string>
#include <vector>

namespace qxsh {

/// The text of the report, with newlines; empty if there are no leaks. The first line has the
/// total, then up to `most_places` lines have one place each, and one line sums up the rest.
std::string leak_report(const std::vector<leak> &leaks);

constexpr std::size_t most_places = 20;

} // namespace qxsh
