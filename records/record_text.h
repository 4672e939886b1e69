// A record as a JSON object. What is the same in every record of a type - names, punctuation, where
// the numbers are - is prepared when the first one is written.
#pragma once

#include "records/table.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qxsh {

/// Makes the text in place of secret bytes: printable ASCII without quotes and backslashes.
struct hidden_text
{
    std::string (*make)(const unsigned char *bytes, std::size_t size, const void *context);
    const void *context;
};

extern const hidden_text length_text; ///< their length, such as "32 bytes"

/// The constant part of a type's text. Everything here may throw std::bad_alloc.
class record_text
{
public:
    /// Of the type with this index in record_rows. The first call for a type is not thread-safe.
    static const record_text &of(int record);

    /// Appends all fields of a record by name, of a union all members; then the bits that are in
    /// no field, if they are not zero, as "padding(OFFSET)" with hexadecimal digits. `hidden` is
    /// null, or stands in place of secret keys and of fields that overlap them. `bytes` may have
    /// any alignment and must be readable.
    void append(std::string &to, const unsigned char *bytes, const hidden_text *hidden) const;

private:
    /// One value and the constant text in front of it.
    struct step
    {
        enum class value : std::uint8_t {
            none,
            number,
            secret, ///< `rest` steps follow for its numbers, or its hidden text
            padding ///< bytes with bits of no field
        };
        std::uint32_t text; ///< where the constant text ends; it begins where the last one ended
        std::uint16_t offset = 0;
        std::uint16_t size = 0;
        std::uint16_t rest = 0;
        value what = value::none;
        std::uint8_t bit = 0;
        std::uint8_t width = 0;
    };

    explicit record_text(int record);
    void add_record(const record_row &row, unsigned offset, const unsigned char *secret);
    void add_field(const field_row &field, unsigned offset, const unsigned char *secret);
    void add_padding(const record_row &row);
    void add_step(step one);
    void append_padding(std::string &to, const unsigned char *bytes, const step &run) const;

    std::string text_{}; ///< all constant texts
    std::vector<step> steps_{};
    std::vector<unsigned char> unused_; ///< of each byte the bits that are in no field
};

/// Appends a number.
void append_number(std::string &to, std::uint64_t value);

} // namespace qxsh
