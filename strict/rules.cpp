// Rules by the form of a command; see rules.h.
#include "strict/rules.h"

namespace qxsh {

int words_of(const command_row &row)
{
    const word_kind *const kinds = word_kinds + row.kinds;
    int words = 0;
    while (kinds[words] != word_end)
        ++words;
    return words;
}

word_rule rule_of(const command_row &row, int number)
{
    const word_kind kind = word_kinds[row.kinds + number - 1];
    if (kind < word_any_handle)
        return {kind, memory_use::none, 0};
    if (row.form == command_form::releases)
        return {kind, memory_use::released, 0};
    if (row.form == command_form::points)
        return {kind, memory_use::base, 0};
    if (row.form == command_form::indexes && number == 1)
        return {kind, memory_use::indexed, words_of(row)};
    if (row.form == command_form::calls) {
        const int count = arguments_of(call_rows[row.what])[number - 1].count;
        if (count >= 0)
            return {kind, memory_use::counted, count + 1};
    }
    return {kind, memory_use::element, 0};
}

} // namespace qxsh
