// The SDK library that a library in front of it stands for: its functions, and the file that they
// are in. Relies on the dynamic loader and, for the file, on /proc and ELF.
#pragma once

#include "records/call_words.h"

#include <cstdint>
#include <string>

namespace qxsh {

/// The function of this name in the SDK library, not in the library that this is linked into: the
/// one that the loader would have taken without it. Null if there is none.
any_function find_behind(const char *name);

/// Whether the loader has one behind this library: one that was loaded with the program.
bool is_behind(const char *name);

/// A file with code.
struct library_file
{
    std::string path{};       ///< empty if it cannot be told, as all else then
    std::uint64_t size = 0;   ///< in bytes
    std::string build_id{};   ///< hexadecimal; empty if the file has none
    std::uintptr_t start = 0; ///< where it is in memory
    std::uintptr_t end = 0;

    /// Whether code or data of it are at an address.
    bool has(const void *place) const
    {
        const auto address = reinterpret_cast<std::uintptr_t>(place);
        return start <= address && address < end;
    }
};

/// The file that a function of this process is in. May throw std::bad_alloc.
library_file file_of(any_function function);

/// The build id in an ELF file of either class, hexadecimal; empty if there is none, or no such
/// file.
std::string build_id_in(const std::string &path);

} // namespace qxsh
