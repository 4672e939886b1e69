// Between the shell and a library that edits lines at the prompt: how each reaches the other. The
// two find it in the interpreter's associated data, where no script sees it, so that neither has to
// be linked with the other.
#pragma once

namespace qxsh {

/// The name of the associated data, a line_editing. Missing where the shell leaves SIGINT alone.
inline constexpr char line_editing_key[] = "qxsh line editing";

struct line_editing {
    /// The library's, or null: called while a line is waited for, never by a signal handler.
    void (*drop_line)();
    /// The shell's: Tcl's loop reads these bytes next, in the encoding of stdin.
    void (*give)(const char *bytes, int size);
};

} // namespace qxsh
