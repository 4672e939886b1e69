// A recording that is being written; see recording_writer.h.
#include "replay/recording_writer.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef QXSH_ZLIB
#include <zlib.h>
#endif

namespace qxsh {

#ifdef QXSH_ZLIB

/// Compresses lines to members of a gzip file, each line complete.
struct recording_writer::gzip
{
    gzip() : usable(deflateInit2(&stream, fastest, Z_DEFLATED, gzip_window, 8, 0) == Z_OK) {}
    ~gzip()
    {
        if (usable)
            deflateEnd(&stream);
    }
    gzip(const gzip &) = delete;
    gzip &operator=(const gzip &) = delete;

    const std::string &compress(const std::string &text, bool last)
    {
        out.clear();
        if (!inside && text.empty())
            return out;
        stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.data()));
        stream.avail_in = static_cast<uInt>(text.size());
        do {
            char piece[4096];
            stream.next_out = reinterpret_cast<Bytef *>(piece);
            stream.avail_out = sizeof piece;
            deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
            out.append(piece, sizeof piece - stream.avail_out);
        } while (stream.avail_out == 0);
        inside = !last;
        if (last)
            deflateReset(&stream);
        return out;
    }

    static constexpr int fastest = 1;
    static constexpr int gzip_window = 15 + 16;
    z_stream stream{};
    std::string out{};
    bool usable;
    bool inside = false; ///< a member that is not ended
};

bool can_compress()
{
    return true;
}

#else

struct recording_writer::gzip
{
    const std::string &compress(const std::string &text, bool) { return text; }
    bool usable = false;
};

bool can_compress()
{
    return false;
}

#endif

recording_writer::recording_writer() = default;

recording_writer::~recording_writer()
{
    close();
}

// Whether another process records into the file. Where files cannot be locked, none does.
static bool locked_by_another(int file)
{
    struct flock whole
    {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return fcntl(file, F_SETLK, &whole) != 0 && (errno == EACCES || errno == EAGAIN);
}

std::string recording_writer::make(const std::string &name, bool replace)
{
    std::string mistake = open_for_writing(name, replace ? 0 : O_EXCL, file_);
    if (!mistake.empty())
        return mistake;
    file_ = moved_away(file_);
    identity_ = identity_of(file_);
    struct stat is
    {};
    regular_ = fstat(file_, &is) == 0 && S_ISREG(is.st_mode);
    if (regular_ && locked_by_another(file_))
        return "cannot write " + name + ": a process records into it";
    if (regular_ && is.st_size != 0 && ftruncate(file_, 0) != 0)
        return cannot_write(name);
    return {};
}

std::string recording_writer::open(const std::string &name, bool replace,
                                   const recording_header &header)
{
    close();
    name_ = name;
    size_ = 0;
    if (name.ends_with(".gz")) {
        if (!can_compress())
            return "cannot write " + name + ": this was built without zlib, for .gz";
        gzip_ = std::make_unique<gzip>();
        if (!gzip_->usable)
            return "cannot write " + name + ": no memory for zlib";
    }
    std::string mistake = make(name, replace);
    if (mistake.empty())
        mistake = append(header_line(header));
    if (!mistake.empty())
        close();
    return mistake;
}

// Half a line at the end would make the whole recording a damaged one.
std::string recording_writer::write(const std::string &bytes, const sigset_t *held)
{
    if (!is_mine()) {
        file_ = -1;
        errno = EBADF;
        return cannot_write(name_);
    }
    if (held != nullptr ? write_held(file_, bytes, *held) : write_all(file_, bytes)) {
        size_ += bytes.size();
        return {};
    }
    std::string mistake = cannot_write(name_);
    struct stat is
    {};
    if (regular_ && fstat(file_, &is) == 0 && static_cast<std::uint64_t>(is.st_size) != size_ &&
        ftruncate(file_, static_cast<off_t>(size_)) != 0)
        mistake += ", and its last line is cut";
    abandon();
    return mistake;
}

std::string recording_writer::append(const std::string &line, const sigset_t *held)
{
    return write(gzip_ ? gzip_->compress(line, false) : line, held);
}

std::string recording_writer::finish()
{
    return gzip_ && is_open() ? write(gzip_->compress({}, true), nullptr) : std::string{};
}

void recording_writer::close()
{
    if (!is_open())
        return;
    finish();
    abandon();
    gzip_.reset();
}

void recording_writer::abandon()
{
    if (is_open() && is_mine())
        ::close(file_);
    file_ = -1;
}

} // namespace qxsh
