// The object table: the native pointers that the script side owns. Process-wide, for one thread.
#pragma once

namespace qxsh::object_table {

/// Enters the pointer.
void acquire(void *pointer);

/// Takes the pointer out; true if it was in.
bool disown(void *pointer);

/// Whether the pointer is in the table.
bool owned(void *pointer);

} // namespace qxsh::object_table
