// Words for command arguments, valid ones and all kinds of invalid ones, each with the result that
// the command has to give.
#pragma once

#include "fuzz/bytes.h"
#include "fuzz/live_blocks.h"
#include "fuzz/tcl_words.h"

#include <string>

namespace fuzz {

/// How a command has to treat a word.
struct word_meaning
{
    std::string error; ///< category of the error; empty if the word is accepted
    bool known = true; ///< false: Tcl evaluates the word, with any result
};

struct hostile_word
{
    held object;
    word_meaning meaning;
    std::uint32_t block = 0;  ///< address of the block, if a handle of a whole one; otherwise 0
    std::uint32_t room = 0;   ///< of a handle: how many objects of the type are there
    std::uint64_t number = 0; ///< of a valid number: its value
};

/// Creates the commands `live_0` and so on, whose " cget -this" returns a handle, and others that
/// return nothing usable.
void make_live_words(Tcl_Interp *interp);

class word_maker
{
public:
    word_maker(bytes &input, live_blocks &live) : input_(input), live_(live) {}

    /// A word for a handle of a type ("qx_flow_t"; "void": a block to be freed). `careful`: no word
    /// that could refer to a place other than the one reported.
    hostile_word handle(const std::string &pointee, bool careful);

    /// A word for a number of a native type.
    hostile_word number(const std::string &native);

    /// A word for a number below a limit, or an invalid one.
    hostile_word limited(const std::string &native, std::uint32_t limit);

private:
    hostile_word proper(const live_place &place, std::uint8_t form);
    hostile_word malformed(const std::string &pointee, std::uint8_t form);
    std::string raw(bool tame);
    held object(const std::string &text);

    bytes &input_;
    live_blocks &live_;
    std::size_t next_live_ = 0;
};

} // namespace fuzz
