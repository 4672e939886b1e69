// Devices that outlive the process in a file.
#include "kept_state.h"
#include "complaint.h"

#include "saved_devices.h"

#include <unistd.h>

namespace qxsim {

void kept_state::name(const std::string &file)
{
    name_ = file;
    process_ = getpid();
}

// A file that is not there is written at once, which shows whether it can be.
void kept_state::read()
{
    const qxsh::file_mark now = qxsh::mark_of(name_);
    if (begun_ && now == seen_)
        return;
    const std::string mistake =
        now.exists() ? restore_file(name_) : qxsh::replace_file(name_, saved_devices());
    if (!mistake.empty() && (!broken_ || now.exists()))
        complain("QX_SIM_STATE: %s", mistake.c_str());
    broken_ = !mistake.empty();
    begun_ = !broken_ || now.exists();
    seen_ = now.exists() ? now : qxsh::mark_of(name_);
    if (!broken_)
        contents_ = device_contents();
}

void kept_state::write()
{
    const std::string mistake = qxsh::replace_file(name_, saved_devices());
    if (!mistake.empty() && !failed_)
        complain("QX_SIM_STATE: %s", mistake.c_str());
    failed_ = !mistake.empty();
    seen_ = qxsh::mark_of(name_);
}

bool kept_state::before()
try {
    if (!name_.empty())
        read();
    return !broken_;
} catch (...) {
    complain("no memory to restore %s", name_.c_str());
    return false;
}

void kept_state::after()
try {
    if (name_.empty() || broken_ || getpid() != process_)
        return;
    std::string contents = device_contents();
    if (contents == contents_)
        return;
    write();
    if (!failed_)
        contents_ = std::move(contents);
} catch (...) {
    complain("no memory to write %s", name_.c_str());
}

void kept_state::finish()
try {
    if (name_.empty() || broken_ || !begun_ || getpid() != process_ || !seen_.exists())
        return;
    if (qxsh::mark_of(name_) == seen_)
        write();
} catch (...) {
    complain("no memory to write %s", name_.c_str());
}

} // namespace qxsim
