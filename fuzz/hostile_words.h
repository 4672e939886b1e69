// Words for arguments of commands, proper ones and all kinds of improper ones, each with what the
// command has to make of it.
#pragma once

#include "fuzz/bytes.h"
#include "fuzz/live_blocks.h"
#include "fuzz/tcl_words.h"

#include <string>

namespace fuzz {

/// What a command makes of a word.
struct word_meaning
{
    std::string error; ///< category of the error, if it is refused
    bool known = true; ///< false: Tcl evaluates the word, and may find anything or nothing in it
};

struct hostile_word
{
    held object;
    word_meaning meaning;
    std::uint32_t block = 0; ///< of a handle of a whole block: its address; else 0
    std::uint32_t room = 0;  ///< of a handle: how many things of the type lie there; 0: none
    std::uint64_t number = 0;
};

/// Makes the commands `live_0` and so on, whose " cget -this" answers with a handle, and others
/// that answer with nothing of use.
void make_live_words(Tcl_Interp *interp);

class word_maker
{
public:
    word_maker(bytes &input, live_blocks &live) : input_(input), live_(live) {}

    /// A word for a handle of a type ("qx_flow_t"; "void": a block to be freed). `careful`: nothing
    /// that could stand for a place other than the one that is told.
    hostile_word handle(const std::string &pointee, bool careful);

    /// A word for a number of a native type.
    hostile_word number(const std::string &native);

    /// A word for a number below a limit, or one that is refused.
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
