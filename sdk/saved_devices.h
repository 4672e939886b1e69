// All devices as bytes, and devices from such bytes. The bytes hold everything: ids, clocks, the
// memory of deleted entries, and keys. They are the same on every processor that a board or a PC
// has, and of no use to a simulator whose tables differ.
#pragma once

#include <string>

namespace qxsim {

/// The devices, with a check sum. May throw std::bad_alloc.
std::string saved_devices();

/// What saved_devices() is made from without the clocks: equal unless a call has changed something.
/// May throw std::bad_alloc.
std::string device_contents();

/// Replaces all devices by those in a file. Returns what is wrong, "cannot restore NAME: " and the
/// reason, or an empty text. May throw std::bad_alloc.
std::string restore_file(const std::string &name);

/// Replaces all devices by saved ones. Returns what is wrong with the bytes, an empty text if
/// nothing is; the devices then stay as they are. May throw std::bad_alloc.
std::string restore_devices(const std::string &bytes);

} // namespace qxsim
