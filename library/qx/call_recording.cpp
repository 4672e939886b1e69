// A recording of calls; see call_recording.h.
#include "library/qx/call_recording.h"

#include "records/sha256.h"
#include "replay/recorded_call.h"
#include "replay/sdk_library.h"

#include <dlfcn.h>
#include <unistd.h>

namespace qxsh {

// The function that calls go to. Where package demo was loaded alone, as in a plain tclsh, its
// library is not in the process's scope.
static any_function sdk_function(const char *name)
{
    void *found = dlsym(RTLD_DEFAULT, name);
    if (found == nullptr) {
        void *const library = dlopen("libqx-sdk.so", RTLD_LAZY | RTLD_NOLOAD);
        found = library != nullptr ? dlsym(library, name) : nullptr;
        if (library != nullptr)
            dlclose(library);
    }
    return reinterpret_cast<any_function>(found);
}

static std::string fingerprint_with(const unsigned char *bytes, std::size_t size,
                                    const void *header)
{
    return fingerprint(static_cast<const recording_header *>(header)->salt, bytes, size);
}

call_recording::call_recording(call_line::copy_function *copy) : line_(most_recorded_elements, copy)
{}

std::string call_recording::begin(const std::string &name, bool replace, bool keys)
{
    const library_file library = file_of(sdk_function(call_rows[0].name.text()));
    header_ = {library.path, library.size, library.build_id};
    header_.keys = keys ? recorded_keys::clear : recorded_keys::fingerprints;
    describe_here_and_now(header_);
    hidden_ = header_.keys == recorded_keys::fingerprints ? hidden_text{fingerprint_with, &header_}
                                                          : length_text;
    line_.show_keys(keys, hidden_);
    name_ = name;
    process_ = static_cast<std::uint32_t>(getpid());
    calls_ = 0;
    return writer_.open(name, replace, header_);
}

std::string call_recording::after(const call_row &call, const call_word *words,
                                  std::uint32_t status, const char *name_of_status)
{
    std::string mistake = writer_.append(
        line_.finish(call, words, {calls_ + 1, process_, status, name_of_status, false}));
    if (mistake.empty())
        ++calls_;
    return mistake;
}

} // namespace qxsh
