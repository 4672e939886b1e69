// A recording that is being written: the header, then a line for each call, each with one write, so
// that a process that ends without warning loses no finished call. Relies on records/files and,
// where it is, on zlib.
#pragma once

#include "records/files.h"
#include "replay/recording_header.h"

#include <csignal>
#include <cstdint>
#include <memory>
#include <string>

namespace qxsh {

/// Functions that can fail return what is wrong, in words for people; an empty text if nothing is.
/// May throw std::bad_alloc. A file that is still open when this is destroyed is closed.
class recording_writer
{
public:
    recording_writer();
    ~recording_writer();
    recording_writer(const recording_writer &) = delete;
    recording_writer &operator=(const recording_writer &) = delete;

    /// Creates the file, readable by its owner only, and writes the header. What is there already
    /// stays as it is and is an error, unless `replace` is true; then a regular file loses its
    /// content, and another kind is written to. A file that a process records into is never
    /// replaced. A name that ends in ".gz" means gzip, for which this has to be built with zlib.
    std::string open(const std::string &name, bool replace, const recording_header &header);
    bool is_open() const { return file_ >= 0; }

    /// Writes a line with its newline. After a failure the file is closed and, if it is a regular
    /// one, ends with the last whole line. A descriptor that the program has closed, and maybe
    /// opened on another file, is left alone. A caller that holds SIGPIPE and SIGXFSZ back saves
    /// the time to do so here with `held`, what the thread held back before that.
    std::string append(const std::string &line, const sigset_t *held = nullptr);
    /// Brings what is written into its final form; lines may follow nevertheless.
    std::string finish();
    void close();
    /// Closes the file as it is, in the child of a fork: the rest is the parent's.
    void abandon();

private:
    struct gzip;

    bool is_mine() const { return identity_of(file_) == identity_; }
    std::string make(const std::string &name, bool replace);
    std::string write(const std::string &bytes, const sigset_t *held);

    std::string name_;
    int file_ = -1;
    file_identity identity_{};
    bool regular_ = false;
    std::uint64_t size_ = 0; ///< bytes that are whole lines
    std::unique_ptr<gzip> gzip_;
};

/// Whether a name that ends in ".gz" can be written.
bool can_compress();

} // namespace qxsh
