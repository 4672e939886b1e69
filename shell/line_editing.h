// The interface between the shell's handling of SIGINT and a library that edits lines at the
// prompt. Both find it in the interpreter's associated data, which scripts cannot see, so neither
// is linked against the other.
#pragma once

namespace qxsh {

/// The name of the associated data, a line_editing that the shell owns. Missing if the shell does
/// not handle SIGINT.
inline constexpr char line_editing_key[] = "qxsh line editing";

/// Set by the library, both or none.
struct line_editing
{
    /// Returns whether the library reads keys from the terminal. Called from the signal handler.
    bool (*reads_keys)();
    /// Discards the line being edited if the library itself is what waits for events; returns
    /// whether it is. Never called from a signal handler.
    bool (*drop_line)();
};

} // namespace qxsh
