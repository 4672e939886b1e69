// One line of a recording as a call: the events of nlohmann's JSON parser, checked against the
// table of records and calls as they come.
#pragma once

#include "replay/recorded_call.h"
#include "replay/recording_header.h"

#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace qxsh {

/// Reads lines of calls, one after the other, without building JSON values.
class recorded_line
{
public:
    explicit recorded_line(recorded_keys keys) : keys_(keys) {}

    /// Reads a line without its end into `call`. Returns what is wrong with it; empty: nothing.
    /// Never contains text of the line that may be a key.
    std::string read(std::string_view line, recorded_call &call);

    // The parser's events; false ends the parsing.
    bool null();
    bool boolean(bool value);
    bool number_integer(std::int64_t value);
    bool number_unsigned(std::uint64_t value);
    bool number_float(double value, const std::string &text);
    bool string(const std::string &text);
    template <class Binary> bool binary(Binary &) { return false; }
    bool start_object(std::size_t);
    bool key(const std::string &name);
    bool end_object();
    bool start_array(std::size_t);
    bool end_array();
    template <class Error> bool parse_error(std::size_t at, const std::string &, const Error &error)
    {
        return refuse_syntax(at, error.what());
    }

private:
    enum class kind : std::uint8_t {
        line,
        arguments,
        memory,   // {"before": .., "after": ..}
        elements, // of an array that an argument points to
        record,
        numbers, // of a field
        records, // of a field
    };
    enum line_member : unsigned {
        line_call,
        line_process,
        line_time,
        line_function,
        line_arguments,
        line_status,
        line_name,
        line_fault,
        line_microseconds,
    };
    static constexpr const char *line_members[] = {"call",     "process",   "time",
                                                   "function", "arguments", "status",
                                                   "name",     "fault",     "microseconds"};
    static constexpr const char *memory_members[] = {"before", "after"};
    static constexpr const char *too_large = "a fraction or a number beyond 64 bits";

    // A container that is open.
    struct level
    {
        kind what;
        const record_row *record = nullptr; // of a record
        const field_row *field = nullptr;   // of a field's array
        std::uint32_t at = 0;               // of either, from the memory's start
        std::uint32_t count = 0;            // elements so far
        std::uint64_t seen = 0;             // members so far, as bits
        unsigned member = UINT_MAX;         // the one whose value comes; + 1: likely the next
        std::uint32_t outer = 0;            // of the record around it that has the padding
    };

    bool refuse(const std::string &what);
    bool refuse_syntax(std::size_t at, const char *what);
    bool unexpected(const char *what);
    const char *expected() const;
    std::string path() const;
    static std::string quoted(const std::string &text);

    bool line_key(const std::string &name);
    bool argument_key(const std::string &name);
    bool field_key(const std::string &name);
    bool padding_key(const std::string &name);
    bool now_comes(unsigned member);
    bool is_outermost() const;
    bool is_missing(const level &of, unsigned member) const;

    const argument_row &argument() const { return arguments_of(*call_->row)[argument_]; }
    const field_row &field() const
    {
        return fields_of(*levels_.back().record)[levels_.back().member];
    }
    recorded_memory &memory();
    bool on_padding() const { return levels_.back().member == padding_member; }

    void open(level next) { levels_.push_back(next); }
    bool open_outermost();
    bool open_record(const record_row &record, std::uint32_t at);
    bool next_element(std::uint32_t most);
    void grow_memory();
    bool end_line();
    bool end_arguments();
    bool end_memory();
    bool end_record();

    bool fits(std::uint64_t value, unsigned bits);
    bool line_number(std::uint64_t value);
    bool put(std::uint32_t at, const field_row &field, std::uint64_t value);
    bool put(std::uint32_t at, unsigned size, std::uint32_t mask, std::uint32_t value);
    bool line_text(const std::string &text);
    bool hidden_field(const std::string &text);
    bool padding(const std::string &text);

    static constexpr unsigned padding_member = 64; // behind all fields

    const recorded_keys keys_;
    recorded_call *call_ = nullptr;
    std::vector<level> levels_{};
    std::vector<unsigned char> told_{};   // the bits of the memory that fields have told
    std::vector<unsigned char> secret_{}; // 1 for each byte of a key, in a record as below
    const record_row *secret_in_ = nullptr;
    unsigned argument_ = 0; // whose value or memory comes
    bool after_ = false;
    std::uint32_t padding_at_ = 0; // of the padding that comes, from the record's start
    std::string mistake_{};
};

} // namespace qxsh
