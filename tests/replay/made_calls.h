// Calls of every function with random words and memory, and recordings of them, for the tests of
// reading and answering. Relies on the table of records and calls.
#pragma once

#include "records/call_words.h"
#include "records/table.h"
#include "replay/recording_header.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace recorded {

/// A call, with the memory that its words point to.
class made_call
{
public:
    /// All bytes are random, padding too; arrays have one to three elements.
    made_call(const qxsh::call_row &call, std::mt19937 &random);

    const qxsh::call_row &row() const { return *row_; }
    const qxsh::argument_row &argument(std::size_t number) const
    {
        return qxsh::arguments_of(*row_)[number];
    }
    std::vector<qxsh::call_word> words(); ///< valid as long as this is

    std::uint32_t status;
    std::vector<std::uint32_t> values; ///< of the arguments that are no pointers
    std::vector<bool> null;
    std::vector<std::vector<unsigned char>> before; ///< what the arguments point to
    std::vector<std::vector<unsigned char>> after;  ///< what the call makes of it

private:
    const qxsh::call_row *row_;
};

/// One call of each function, in the order of the table.
std::vector<made_call> one_of_each(unsigned seed);

/// The recording's text.
std::string recording_of(const qxsh::recording_header &header, std::vector<made_call> &calls);

/// A file in the working folder that is removed at the end.
class file
{
public:
    file(const std::string &name, const std::string &text);
    ~file();
    file(const file &) = delete;
    file &operator=(const file &) = delete;

    const std::string name;
};

/// The field of a record that a path names, without the argument: where it is.
struct place
{
    unsigned at;
    unsigned size;
};
place place_of(const qxsh::record_row &record, const std::string &path);

/// Whether bytes belong to a key, one for each byte of the record.
std::vector<bool> key_bytes(const qxsh::argument_row &argument);

} // namespace recorded
