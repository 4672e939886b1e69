// Devices that outlive the process in a file, as a board's do. The file is read before a call if
// somebody else has written it, and written after a call that has changed a device.
#pragma once

#include "records/files.h"

#include <string>

namespace qxsim {

class kept_state
{
public:
    /// Keeps the devices in this file, an absolute name, from now on. May throw std::bad_alloc.
    void name(const std::string &file);

    /// To be called before each call: reads the file if it is new or was written by somebody else.
    /// False while it is there and cannot be restored, which is reported once.
    bool before();

    /// To be called after each call: writes the file if a device has changed. A failure is reported
    /// once.
    void after();

    /// To be called when the process ends: writes the clocks, too, if the file is still ours.
    void finish();

private:
    void read();
    void write();

    std::string name_;     ///< empty: nothing is kept
    qxsh::file_mark seen_; ///< the file as last read or written
    std::string contents_; ///< of the devices then
    int process_ = 0;      ///< whose devices these are: a forked child writes nothing
    bool begun_ = false;
    bool broken_ = false; ///< the file cannot be restored
    bool failed_ = false; ///< the file could not be written, which has been reported
};

} // namespace qxsim
