// Files that logs, recordings and saved devices are kept in. They are readable by their owner only,
// and writing them neither waits for long nor sends a signal. Functions that can fail return what
// is wrong, in words for people; an empty text if nothing is.
#pragma once

#include <csignal>
#include <cstdint>
#include <string>
#include <string_view>

namespace qxsh {

/// A file's name, a relative one starting from the folder in which the first name was asked for.
std::string absolute(std::string_view name);

/// "cannot write NAME: " and the reason in errno.
std::string cannot_write(const std::string &name);

/// Opens a file for writing, with further flags of open(), creating it with mode 0600 or changing
/// it to that; of a FIFO there must be a reader. Stores a descriptor that the caller closes; -1 on
/// failure.
std::string open_for_writing(const std::string &name, int flags, int &file);

/// Opens a file for appending, creating it with mode 0600 or changing it to that. If the file ends
/// with half a line, the line is ended. Stores a descriptor that the caller closes; -1 on failure.
std::string open_log(const std::string &name, int &file);

/// True if this name no longer leads to the file that the descriptor is open on.
bool has_moved(int file, const std::string &name);

/// Which file a descriptor is open on; all zero, with errno set, if on none. A program may close
/// descriptors that are not its own, and open others under their numbers.
struct file_identity
{
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    bool operator==(const file_identity &) const = default;
};
file_identity identity_of(int file);

/// Moves a descriptor beyond those that a program gets, and lets no program that is started have
/// it: the numbers of the process's own stay what they are, and a program that closes what it did
/// not open hardly meets it. Returns the new one; the same if none is free.
int moved_away(int file);

/// Writes all of a text to a file descriptor; false, with errno set, if that fails, also if there
/// is a pipe behind it that takes nothing for a second.
bool write_all(int file, const std::string &text);

/// The same for a caller that holds SIGPIPE and SIGXFSZ back; `before` is what the thread held back
/// before that.
bool write_held(int file, const std::string &text, const sigset_t &before);

/// Replaces a file's content, creating it with mode 0600 or changing it to that.
std::string write_file(const std::string &name, const std::string &text);

/// Writes a file that must not be there yet, not even as a symbolic link.
std::string write_new_file(const std::string &name, const std::string &text);

/// Replaces a file: writes a new one beside it, with mode 0600, and renames that, so that the file
/// is never half-written. What is there and is not a regular file is not replaced.
std::string replace_file(const std::string &name, const std::string &text);

/// Identifies one version of a file; all zero if there is no file.
struct file_mark
{
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    int error = 0; ///< why it cannot be looked at or read
    bool operator==(const file_mark &) const = default;
    bool exists() const { return error == 0 && *this != file_mark{}; }
};
file_mark mark_of(const std::string &name);

/// Reads a regular file; the error's number, EINVAL for a file of another kind, 0 on success.
int read_file(const std::string &name, std::string &text);

} // namespace qxsh
