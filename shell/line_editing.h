// The interface between the shell and a library that edits lines at the prompt. Both find it in the
// interpreter's associated data, which scripts cannot see, so neither is linked against the other.
#pragma once

namespace qxsh {

/// The name of the associated data, a line_editing that the shell owns. Missing if the shell does
/// not handle SIGINT.
inline constexpr char line_editing_key[] = "qxsh line editing";

struct line_editing
{
    /// Set by the library, or null: discards the line being edited. Called while the library waits
    /// for keys, never from a signal handler.
    void (*drop_line)();
    /// Set by the shell: gives Tcl's loop `size` bytes to read next, whole lines in the encoding of
    /// stdin. They are copied.
    void (*give)(const char *bytes, int size);
};

} // namespace qxsh
