// A folder of a fuzz target's process, for the files that its inputs name.
#pragma once

#include "fuzz/expect.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace fuzz {

/// The name of a new folder in $TMPDIR, which is removed when the process ends.
inline const std::string &own_folder()
{
    struct temporary
    {
        temporary()
        {
            const char *const base = std::getenv("TMPDIR");
            name = std::string{base != nullptr ? base : "/tmp"} + "/qx_fuzz.XXXXXX";
            expect(mkdtemp(name.data()) != nullptr, "a folder can be made");
        }
        ~temporary() { std::filesystem::remove_all(name); }

        std::string name{};
    };
    static const temporary folder;
    return folder.name;
}

} // namespace fuzz
