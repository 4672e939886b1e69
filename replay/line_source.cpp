// Reading a file line by line.
#include "replay/line_source.h"

#include "replay/recorded_call.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef QXSH_ZLIB
#include <zlib.h>
#endif

namespace qxsh {

namespace {

constexpr std::size_t block_size = 128 * 1024;
// Many times the longest line of a call: 64 records before it and after it.
constexpr std::size_t longest_line = 4 * 1024 * 1024;
constexpr const char *cut_off = "the gzip data ends too early";

[[noreturn]] void fail(const std::string &what)
{
    throw recording_error{0, what};
}

[[noreturn]] void fail_with_errno(const char *what)
{
    fail(std::string{what} + ": " + std::strerror(errno));
}

} // namespace

#ifdef QXSH_ZLIB

struct line_source::gzip
{
    gzip() : usable(inflateInit2(&stream, gzip_window) == Z_OK) {}
    ~gzip()
    {
        if (usable)
            inflateEnd(&stream);
    }
    gzip(const gzip &) = delete;
    gzip &operator=(const gzip &) = delete;

    void restart()
    {
        inflateReset(&stream);
        inside = false;
    }

    static constexpr int gzip_window = 15 + 16;
    z_stream stream{};
    bool usable;
    bool inside = false; ///< a member that is not ended
    unsigned char packed[64 * 1024];
};

#else

struct line_source::gzip
{};

#endif

void line_source::open_file()
{
    file_ = open(name_.c_str(), O_RDONLY | O_CLOEXEC);
    if (file_ < 0)
        fail_with_errno("cannot open it");
    file_ = moved_away(file_);
}

void line_source::open_again()
{
    open_file();
    if (identity_of(file_) != identity_)
        fail("the program has closed it, and another file has its name now");
    if (lseek(file_, static_cast<off_t>(place_), SEEK_SET) < 0)
        fail_with_errno("the program has closed it");
}

line_source::line_source(const std::string &name) : name_(absolute(name)), block_(block_size)
{
    const bool compressed = name.ends_with(".gz");
#ifndef QXSH_ZLIB
    if (compressed)
        fail("this build has no zlib to read gzip with; gunzip the file first");
#endif
    open_file();
    identity_ = identity_of(file_);
    struct stat facts = {};
    if (fstat(file_, &facts) == 0 && S_ISREG(facts.st_mode))
        size_ = static_cast<std::uint64_t>(facts.st_size);
#ifdef QXSH_ZLIB
    if (compressed)
        gzip_ = std::make_unique<gzip>();
    if (compressed && !gzip_->usable) {
        close(file_);
        fail("no memory");
    }
#endif
}

line_source::~line_source()
{
    close(file_);
}

double line_source::done() const
{
    const off_t at = lseek(file_, 0, SEEK_CUR);
    if (size_ == 0 || at < 0)
        return 0;
    return std::min(1.0, static_cast<double>(at) / static_cast<double>(size_));
}

void line_source::restart()
{
    if (lseek(file_, 0, SEEK_SET) != 0)
        fail("it cannot be read twice: it is not a regular file");
#ifdef QXSH_ZLIB
    if (gzip_) {
        gzip_->stream.avail_in = 0;
        gzip_->restart();
    }
#endif
    begin_ = end_ = 0;
    line_ = 0;
    cut_ = false;
    place_ = 0;
}

// At least one byte, or 0 at the end of the file.
std::size_t line_source::read(char *to, std::size_t size)
{
    return gzip_ ? unpack(to, size) : read_file(to, size);
}

std::size_t line_source::read_file(void *to, std::size_t size)
{
    if (identity_of(file_) != identity_)
        open_again();
    ssize_t got = 0;
    do
        got = ::read(file_, to, size);
    while (got < 0 && errno == EINTR);
    if (got < 0)
        fail_with_errno("cannot read it");
    place_ += static_cast<std::uint64_t>(got);
    return static_cast<std::size_t>(got);
}

#ifdef QXSH_ZLIB

// A recorder that was killed leaves data without their end: what came out of them counts.
std::size_t line_source::unpack(char *to, std::size_t size)
{
    z_stream &stream = gzip_->stream;
    stream.next_out = reinterpret_cast<Bytef *>(to);
    stream.avail_out = static_cast<uInt>(size);
    while (stream.avail_out == size) {
        if (stream.avail_in == 0) {
            stream.next_in = gzip_->packed;
            stream.avail_in = static_cast<uInt>(read_file(gzip_->packed, sizeof gzip_->packed));
        }
        const bool at_end = stream.avail_in == 0;
        if (at_end && !gzip_->inside)
            return 0;
        gzip_->inside = true;
        const int code = inflate(&stream, Z_NO_FLUSH);
        if (code == Z_STREAM_END)
            gzip_->restart();
        else if (code == Z_BUF_ERROR && at_end)
            break;
        else if (code != Z_OK && stream.avail_out == size) // else it is said next time
            throw recording_error{line_ + 1, std::string{"damaged gzip data: "} +
                                                 (stream.msg ? stream.msg : zError(code))};
    }
    cut_ = stream.avail_out == size;
    if (cut_ && stream.total_out == 0)
        throw recording_error{line_ + 1, cut_off};
    return size - stream.avail_out;
}

#else

std::size_t line_source::unpack(char *, std::size_t)
{
    return 0;
}

#endif

// Reads behind the bytes that are left; false at the end of the file.
bool line_source::fill()
{
    if (begin_ > 0) {
        std::memmove(block_.data(), block_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    if (end_ == block_.size()) {
        if (end_ >= longest_line)
            throw recording_error{line_ + 1, "the line is longer than 4 MiB"};
        block_.resize(2 * end_);
    }
    const std::size_t got = read(block_.data() + end_, block_.size() - end_);
    end_ += got;
    return got > 0;
}

bool line_source::next(std::string_view &line)
{
    std::size_t searched = 0;
    for (;;) {
        const char *const start = block_.data() + begin_;
        const std::size_t left = end_ - begin_;
        const void *const found = std::memchr(start + searched, '\n', left - searched);
        if (found != nullptr) {
            line = {start, static_cast<std::size_t>(static_cast<const char *>(found) - start)};
            begin_ += line.size() + 1;
            ++line_;
            return true;
        }
        searched = left;
        if (fill())
            continue;
        if (left == 0)
            return false;
        if (cut_)
            throw recording_error{line_ + 1, cut_off};
        line = {block_.data(), left};
        begin_ = end_;
        ++line_;
        return true;
    }
}

} // namespace qxsh
