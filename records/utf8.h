// The form of texts in UTF-8, which profiles and recordings are read and written in.
#pragma once

#include <cstddef>
#include <string_view>

namespace qxsh {

/// The length of the UTF-8 sequence at the start of a text that is not empty; 0 if it is none.
inline std::size_t sequence_length(std::string_view text)
{
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    if (byte(0) < 0x80)
        return 1;
    const std::size_t length = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < length)
        return 0;
    for (std::size_t index = 1; index < length; ++index)
        if ((byte(index) & 0xc0) != 0x80)
            return 0;
    const unsigned lead = byte(0) << 8 | byte(1); // overlong forms, surrogates, beyond U+10FFFF
    const bool forbidden = (lead >= 0xe080 && lead < 0xe0a0) || (lead >= 0xeda0 && lead < 0xee00) ||
                           (lead >= 0xf080 && lead < 0xf090) || lead >= 0xf490;
    return forbidden ? 0 : length;
}

} // namespace qxsh
