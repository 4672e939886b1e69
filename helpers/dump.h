// Dumps: a record's fields as text. A scalar gives a line "<field> = <hex> \n", each array element
// "<field>[<index>] = <hex>\n" without the blank; a nested record gives the lines of its fields.
#pragma once

namespace qxsh {

/// Prints the fields of a record in declaration order with one write, except those that dumps leave
/// out. `number` is its index in record_rows. Prints nothing for null; an address without memory
/// sets pending_fault (guarded_memory.h).
void dump_record(const void *record, int number);

} // namespace qxsh
