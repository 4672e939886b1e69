// The call log.
#include "call_log.h"

#include "complaint.h"
#include "numbers.h"
#include "records/files.h"

#include <unistd.h>

namespace qxsim {

void call_log::close()
{
    if (file_ >= 0)
        ::close(file_);
    file_ = -1;
}

std::string call_log::use(const std::string &name)
{
    if (name == name_ && open() && !qxsh::has_moved(file_, name))
        return {};
    close();
    name_ = name;
    return name.empty() ? std::string{} : qxsh::open_log(name, file_);
}

void call_log::start(const call_row &call, const call_word *words, std::uint32_t number)
try {
    number_ = number;
    line_.start(call, words);
} catch (...) {
    complain("no memory for the call log, which ends here");
    close();
}

void call_log::finish(const call_row &call, const call_word *words, std::uint32_t status,
                      bool fault)
try {
    if (!qxsh::write_all(file_, line_.finish(call, words,
                                             {number_, static_cast<std::uint32_t>(getpid()), status,
                                              status_name(status), fault}))) {
        complain("%s; the call log ends here", qxsh::cannot_write(name_).c_str());
        close();
    }
} catch (...) {
    complain("no memory for the call log, which ends here");
    close();
}

} // namespace qxsim
