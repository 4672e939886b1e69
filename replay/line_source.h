// The lines of a file, plain or, where zlib is, compressed: read in large blocks, in constant
// memory. Relies on POSIX and zlib.
#pragma once

#include "records/files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qxsh {

/// An open file. A name that ends in ".gz" means gzip. Where the program closes the descriptor, or
/// opens another file under its number, reading goes on with one of its own. Everything here throws
/// recording_error.
class line_source
{
public:
    explicit line_source(const std::string &name);
    ~line_source();
    line_source(const line_source &) = delete;
    line_source &operator=(const line_source &) = delete;

    /// The next line, without its end; false at the end of the file. Valid until the next call.
    bool next(std::string_view &line);

    std::uint64_t line() const { return line_; } ///< the number of that line, from 1
    double done() const;                         ///< the part of the file that was read, 0 to 1
    void restart();                              ///< goes back to the first line

private:
    void open_file();
    void open_again();
    bool fill();
    std::size_t read(char *to, std::size_t size);
    std::size_t read_file(void *to, std::size_t size);
    std::size_t unpack(char *to, std::size_t size);

    struct gzip;

    std::string name_;
    int file_ = -1;
    file_identity identity_{};
    std::uint64_t place_ = 0;    ///< in the file: what was read
    std::unique_ptr<gzip> gzip_; ///< null for a plain file
    bool cut_ = false;           ///< gzip data that ended without its end
    std::uint64_t size_ = 0;
    std::vector<char> block_;
    std::size_t begin_ = 0; ///< of the bytes in block_ that no line has used yet
    std::size_t end_ = 0;
    std::uint64_t line_ = 0;
};

} // namespace qxsh
