// A JSON writer for call logs, snapshots and listings.
#pragma once

#include "records/record_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qxsh {

/// Builds one JSON value. Containers are written on one line, or with one line per element; commas,
/// indentation and quoting are added here. May throw std::bad_alloc.
class json_text
{
public:
    enum class layout : std::uint8_t { one_line, lines };

    /// Unless `keys` is true, `hidden`, which must outlive this, is written in place of secret keys
    /// and of fields that overlap them.
    explicit json_text(bool keys, const hidden_text &hidden = length_text)
        : hidden_(&hidden), keys_(keys)
    {}

    json_text &object(layout style = layout::one_line) { return open('{', style); }
    json_text &array(layout style = layout::one_line) { return open('[', style); }
    json_text &end(); ///< closes the innermost container; one must be open

    /// The name of the next member, without characters that JSON escapes; followed by its value.
    json_text &name(const char *text);

    json_text &number(std::uint64_t value);
    json_text &flag(bool value);
    json_text &null();
    json_text &string(const char *text);
    /// A record as record_text writes it. `number` is its type's index in record_rows.
    json_text &record(const void *bytes, int number);
    /// A value that is already JSON, written as it is.
    json_text &raw(const std::string &text);

    template <class Numbers> json_text &numbers(const Numbers &values)
    {
        array();
        for (const auto value : values)
            number(value);
        return end();
    }
    /// A member with a number.
    json_text &member(const char *its_name, std::uint64_t value)
    {
        return name(its_name).number(value);
    }

    const std::string &text() const { return text_; }
    /// The value as a line, with a newline at its end; clear() must follow.
    const std::string &line() { return text_ += '\n'; }
    /// Begins another value, in the memory of the last one.
    void clear()
    {
        text_.clear();
        levels_.clear();
        named_ = false;
    }

private:
    struct level
    {
        char closing;
        layout style;
        bool empty = true;
    };

    json_text &open(char bracket, layout style);
    void begin_value(); ///< writes the separator before a value
    void new_line();

    std::string text_;
    std::vector<level> levels_;
    bool named_ = false;
    const hidden_text *hidden_;
    bool keys_;
};

} // namespace qxsh
