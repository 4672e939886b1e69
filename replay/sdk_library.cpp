// The SDK library behind a library in front of it; see sdk_library.h.
#include "replay/sdk_library.h"

#include "records/files.h"
#include "replay/recording_header.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qxsh {

namespace {

class open_file
{
public:
    explicit open_file(const std::string &path)
        : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK))
    {}
    ~open_file()
    {
        if (file_ >= 0)
            close(file_);
    }
    open_file(const open_file &) = delete;
    open_file &operator=(const open_file &) = delete;

    std::uint64_t size() const
    {
        struct stat is
        {};
        return file_ >= 0 && fstat(file_, &is) == 0 && S_ISREG(is.st_mode)
                   ? static_cast<std::uint64_t>(is.st_size)
                   : 0;
    }
    bool read(void *to, std::size_t size, std::uint64_t place) const
    {
        return pread(file_, to, size, static_cast<off_t>(place)) == static_cast<ssize_t>(size);
    }

private:
    int file_;
};

// The notes between two places of a file. Name and description are padded to four bytes.
std::string build_id_among(const open_file &file, std::uint64_t place, std::uint64_t size)
{
    const auto padded = [](std::uint64_t bytes) { return (bytes + 3) & ~std::uint64_t{3}; };
    Elf32_Nhdr note{}; // the same in both classes
    while (size >= sizeof note && file.read(&note, sizeof note, place)) {
        const std::uint64_t whole = sizeof note + padded(note.n_namesz) + padded(note.n_descsz);
        char name[4] = "";
        std::string id(note.n_descsz <= 64 ? note.n_descsz : 0, '\0');
        if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == sizeof name &&
            file.read(name, sizeof name, place + sizeof note) &&
            std::memcmp(name, ELF_NOTE_GNU, sizeof name) == 0 &&
            file.read(id.data(), id.size(), place + sizeof note + sizeof name))
            return hexadecimal(id);
        if (whole > size)
            break;
        place += whole;
        size -= whole;
    }
    return {};
}

template <class Header, class Segment> std::string build_id_of_class(const open_file &file)
{
    Header header{};
    if (!file.read(&header, sizeof header, 0) || header.e_phentsize != sizeof(Segment))
        return {};
    for (unsigned number = 0; number < header.e_phnum; ++number) {
        Segment segment{};
        if (!file.read(&segment, sizeof segment, header.e_phoff + number * sizeof segment))
            return {};
        if (segment.p_type != PT_NOTE)
            continue;
        std::string id = build_id_among(file, segment.p_offset, segment.p_filesz);
        if (!id.empty())
            return id;
    }
    return {};
}

// The file that is mapped at a place, as yet without size and build id.
library_file mapped_at(any_function place)
{
    const void *const address = reinterpret_cast<void *>(place);
    std::string maps;
    if (read_file("/proc/self/maps", maps) != 0)
        return {};
    library_file found;
    for (std::size_t at = 0; at < maps.size();) {
        const std::size_t end_of_line = std::min(maps.find('\n', at), maps.size());
        const std::string line = maps.substr(at, end_of_line - at);
        at = end_of_line + 1;
        library_file piece;
        const std::size_t path = line.find('/');
        if (path == line.npos)
            continue;
        const char *const last = line.data() + line.size();
        const char *const dash = std::from_chars(line.data(), last, piece.start, 16).ptr;
        std::from_chars(dash + 1, last, piece.end, 16);
        piece.path = line.substr(path);
        if (piece.path == found.path)
            piece.start = found.start;
        else if (found.has(address))
            break;
        found = piece;
    }
    return found.has(address) ? found : library_file{};
}

} // namespace

// What follows in the loader's order is found without its name. A library that was loaded for
// another one alone, such as the package of a plain tclsh, is not in that order: it has the name.
any_function find_behind(const char *name)
{
    void *found = dlsym(RTLD_NEXT, name);
    if (found == nullptr) {
        void *const library = dlopen("libqx-sdk.so", RTLD_LAZY);
        found = library != nullptr ? dlsym(library, name) : nullptr;
        // This library under the other's name would be called by itself without end.
        if (mapped_at(reinterpret_cast<any_function>(find_behind)).has(found))
            found = nullptr;
    }
    return reinterpret_cast<any_function>(found);
}

bool is_behind(const char *name)
{
    return dlsym(RTLD_NEXT, name) != nullptr;
}

std::string build_id_in(const std::string &path)
{
    const open_file file{path};
    std::array<unsigned char, EI_NIDENT> start{};
    if (!file.read(start.data(), start.size(), 0) ||
        std::memcmp(start.data(), ELFMAG, SELFMAG) != 0)
        return {};
    return start[EI_CLASS] == ELFCLASS64 ? build_id_of_class<Elf64_Ehdr, Elf64_Phdr>(file)
                                         : build_id_of_class<Elf32_Ehdr, Elf32_Phdr>(file);
}

library_file file_of(any_function function)
{
    library_file file = mapped_at(function);
    if (!file.path.empty()) {
        file.size = open_file{file.path}.size();
        file.build_id = build_id_in(file.path);
    }
    return file;
}

} // namespace qxsh
