// SDK calls for other libraries in the same process, which find this as associated data. They see
// each call as the command makes it, with its words converted, whatever the command is named now.
#pragma once

#include "records/call_words.h"
#include "runtime/tcl_api.h"

namespace qxsh {

/// The name of the associated data, a call_watching. The structs never change under this name;
/// different ones get a new name.
constexpr const char *call_watching_name = "qxsh::call_watching 1";

/// Gets all SDK calls of the process, whichever interpreter they are made in. `call` is the SDK
/// function's name, the same text each time; there is a word for each argument. The two functions
/// are called by turns.
struct call_watcher
{
    /// Directly before the function runs. Must not run scripts.
    void (*before)(const char *call, const call_word *words);

    /// Directly after it. May run scripts, with calls of their own, and end the watching.
    void (*after)(const char *call, const call_word *words, unsigned int status);
};

struct call_watching
{
    /// Sets the one watcher, which must stay valid; null: nobody. Calls that nobody watches do not
    /// pay for it.
    void (*watch)(const call_watcher *watcher);
};

/// Publishes it in the interpreter. The struct is static and shared by all interpreters.
void offer_call_watching(Tcl_Interp *interp);

} // namespace qxsh
