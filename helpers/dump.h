// Dumps: a record's fields as text, one line a scalar, "<field> = <hex> \n", and one an array
// element, "<field>[<index>] = <hex>\n" (without the blank), nested records through their own
// fields.
#pragma once

namespace qxsh {

/// Prints all fields of a record in declaration order, in one piece; nothing for null, or where
/// there is no memory. `number` is the record's in record_rows.
void dump_record(const void *record, int number);

} // namespace qxsh
