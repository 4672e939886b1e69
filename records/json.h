// Text in JSON, in one order: what logs of calls, snapshots and listings are written with.
#pragma once

#include "records/table.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qxsh {

/// Builds one JSON value. Containers are written on one line or with one line an element; commas,
/// indentation and quoting are done here. May throw std::bad_alloc.
class json_text
{
public:
    enum class layout : std::uint8_t { one_line, lines };

    /// Keys, and what lies over one in a union, are written as their length unless `keys` is true.
    explicit json_text(bool keys) : keys_(keys) {}

    json_text &object(layout style = layout::one_line) { return open('{', style); }
    json_text &array(layout style = layout::one_line) { return open('[', style); }
    json_text &end(); ///< closes the innermost container

    /// The name of the member that follows.
    json_text &name(const char *text);

    json_text &number(std::uint64_t value);
    json_text &flag(bool value);
    json_text &null();
    json_text &string(const char *text);
    /// All fields of the record with this number, at any address, by name; of a union all members.
    json_text &record(const void *bytes, int number);
    /// A value that is JSON already.
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

    const std::string &text() const noexcept { return text_; }

private:
    struct level
    {
        char closing;
        layout style;
        bool empty = true;
    };

    json_text &open(char bracket, layout style);
    void begin_value(); ///< what stands between the value before and the next one
    void new_line();
    /// `secret` has a 1 for each byte that must not be shown; null: there is none.
    void fields(const unsigned char *bytes, const unsigned char *secret, const record_row &row);
    void field(const unsigned char *bytes, const unsigned char *secret, const field_row &field);

    std::string text_;
    std::vector<level> levels_;
    bool named_ = false;
    bool keys_;
};

} // namespace qxsh
