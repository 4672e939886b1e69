// The object table: the native pointers that scripts own. Process-wide, for one thread.
#pragma once

namespace qxsh::object_table {

/// Enters the pointer; no effect if it is in the table.
void acquire(void *pointer);

/// Removes the pointer; returns whether it was in the table. The pointer is not freed.
bool disown(void *pointer);

/// Whether the pointer is in the table.
bool owned(void *pointer);

} // namespace qxsh::object_table
