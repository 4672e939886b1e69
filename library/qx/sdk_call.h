// One call of an SDK function: words become blocks, the function's command runs, blocks become
// data.
#pragma once

#include "library/qx/record_writer.h"
#include "library/qx/sdk_caller.h"

#include <span>

namespace qxsh {

class sdk_caller::one_call
{
public:
    one_call(sdk_caller &caller, const call_row &row, origin from)
        : caller_(caller), row_(row), from_(from), arguments_(arguments_of(row))
    {}
    ~one_call();
    one_call(const one_call &) = delete;
    one_call &operator=(const one_call &) = delete;

    /// Turns words into arguments. On failure returns false with an error in the interpreter.
    bool take(int count, Tcl_Obj *const words[]);

    /// Runs the function. On failure returns false with an error in the interpreter.
    bool perform(std::uint32_t &status);

    /// Releases the blocks. The interpreter's result is then what the function has put out:
    /// nothing, one value, or a dict by argument. Returns false, with an error in the interpreter,
    /// if a record that was given as a handle cannot be read any more.
    /// Codes are shown as words on request.
    bool finish(bool as_dict, bool words);

    /// Records the words of a call that has failed, and its error, for qx::why.
    void note_failure();

    /// The call as an error shows it, a new list: records and cells are shown as their types.
    Tcl_Obj *shown() const;

private:
    // The memory of an argument's elements.
    struct block
    {
        Tcl_Obj *handle; // null: none, or not made here
        unsigned char *memory;
    };

    bool is_handle(Tcl_Obj *word) const;
    bool is_unknown(Tcl_Obj *word) const;
    bool check_value(int number);
    bool take_count(int number);
    bool take_pointer(int number);
    bool take_value(int number);
    Tcl_Obj *value_of(const argument_row &argument, const unsigned char *memory, bool words);
    bool take_elements(const argument_row &argument, const block &block, Tcl_Obj *list);
    record_writer writer(unsigned char *memory) const;
    bool create(int number, int count);
    Tcl_Obj *creator(const argument_row &argument, bool array) const;
    const unsigned char *memory_of(int number);
    void release_blocks();
    void set_word(int number, Tcl_Obj *word);
    Tcl_Interp *interp() const { return caller_.session_.interp(); }

    sdk_caller &caller_;
    const call_row &row_;
    const origin from_;
    const std::span<const argument_row> arguments_;
    Tcl_Obj *words_[1 + most_call_arguments] = {}; // of the command; each with a reference
    Tcl_Obj *given_[most_call_arguments] = {};     // by argument; null: left out
    block blocks_[most_call_arguments] = {};
};

} // namespace qxsh
