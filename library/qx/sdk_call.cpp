// Words, blocks and results of a call; see sdk_call.h. Everything goes through the module's
// commands, so strict memory knows the blocks, and qx::watch sees the function.
#include "library/qx/sdk_call.h"

#include "library/qx/judged_calls.h"
#include "library/qx/record_writer.h"
#include "records/addresses.h"
#include "records/values.h"
#include "runtime/handle_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace qxsh {

namespace {

// The number of the argument that is the size of one of the call's arrays; -1 if it has none.
int counter_of(const call_row &row)
{
    for (const argument_row &argument : arguments_of(row))
        if (argument.count >= 0)
            return argument.count;
    return -1;
}

// The address in the text of a handle that a command has just returned; null if it is none.
unsigned char *memory_at(Tcl_Obj *handle)
{
    int length;
    const char *const text = Tcl_GetStringFromObj(handle, &length);
    std::uint32_t address = 0;
    if (length > 1 + static_cast<int>(address_digits) && text[0] == '_')
        read_address(text + 1, address);
    return static_cast<unsigned char *>(pointer_to(address));
}

bool refuse(Tcl_Interp *interp, const char *kind, const char *what, Tcl_Obj *text)
{
    Tcl_SetObjResult(interp, text);
    Tcl_SetErrorCode(interp, "QX", kind, what, nullptr);
    return false;
}

// Runs a command of the module without a frame of its own: the place in the script is that of
// qx::call, and half of the time is saved.
int invoke(Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    Tcl_CmdInfo info;
    Tcl_Command const command = Tcl_GetCommandFromObj(interp, words[0]);
    if (command == nullptr || Tcl_GetCommandInfoFromToken(command, &info) == 0)
        return Tcl_EvalObjv(interp, count, words, TCL_EVAL_GLOBAL);
    Tcl_ResetResult(interp);
    return info.objProc(info.objClientData, interp, count, words);
}

bool begins_like_word(const char *text)
{
    const char letter = static_cast<char>(text[0] | 0x20);
    return (letter >= 'a' && letter <= 'z') || text[0] == '_';
}

// Appends the arguments that qx::call wants words for.
void append_usage(Tcl_Obj *text, const call_row &row)
{
    const int counter = counter_of(row);
    Tcl_AppendStringsToObj(text, "qx::call ", row.name.text(), nullptr);
    for (int i = 0; i < row.arguments; ++i) {
        const argument_row &argument = arguments_of(row)[i];
        if (argument.way != direction::out)
            Tcl_AppendPrintfToObj(text, i == counter ? " ?%s?" : " %s", argument.name.text());
    }
}

} // namespace

// Blocks that still exist belong to a call that has failed: its error stays.
sdk_caller::one_call::~one_call()
{
    const auto is_made = [](const block &block) { return block.handle != nullptr; };
    if (std::any_of(std::begin(blocks_), std::end(blocks_), is_made)) {
        const Tcl_InterpState state = Tcl_SaveInterpState(interp(), TCL_OK);
        release_blocks();
        Tcl_RestoreInterpState(interp(), state);
    }
    for (Tcl_Obj *const word : words_)
        if (word != nullptr)
            Tcl_DecrRefCount(word);
}

void sdk_caller::one_call::release_blocks()
{
    for (block &block : blocks_) {
        Tcl_Obj *words[] = {caller_.free_, block.handle};
        if (block.handle != nullptr)
            invoke(interp(), 2, words);
        block.handle = nullptr;
    }
}

void sdk_caller::one_call::set_word(int number, Tcl_Obj *word)
{
    Tcl_IncrRefCount(word);
    words_[1 + number] = word;
}

// Whether a word for a record is a handle, and not the record itself. A dict is not asked for its
// text, which may be long.
bool sdk_caller::one_call::is_handle(Tcl_Obj *word) const
{
    if (caller_.session_.is_structured(word))
        return false;
    const char *const text = Tcl_GetString(word);
    if (from_ != origin::script)
        return !caller_.session_.is_list(word) && std::strcmp(text, "NULL") == 0;
    if (text[0] == '\0' || std::strpbrk(text, " \t\r\n{") != nullptr)
        return false;
    return text[0] == '_' || std::strcmp(text, "NULL") == 0 ||
           Tcl_FindCommand(interp(), text, nullptr, TCL_GLOBAL_ONLY) != nullptr;
}

// Whether a word of a draft is, or may have in it, what another call has to put out first.
bool sdk_caller::one_call::is_unknown(Tcl_Obj *word) const
{
    if (from_ != origin::draft || word == nullptr || caller_.session_.is_dict(word))
        return false;
    return caller_.session_.is_list(word) || Tcl_GetString(word)[0] == '$';
}

bool sdk_caller::one_call::take(int count, Tcl_Obj *const words[])
{
    const int counter = counter_of(row_);
    const auto wanted = static_cast<int>(
        std::count_if(arguments_.begin(), arguments_.end(),
                      [](const argument_row &argument) { return argument.way != direction::out; }));
    const bool counted = count == wanted;
    if (!counted && (counter < 0 || count != wanted - 1)) {
        Tcl_Obj *const text = Tcl_NewStringObj("usage: ", -1);
        append_usage(text, row_);
        return refuse(interp(), "USAGE", nullptr, text);
    }
    for (int i = 0; i < row_.arguments; ++i)
        if (arguments_[i].way != direction::out && (counted || i != counter))
            given_[i] = *words++;
    if (counter >= 0 && !take_count(counter))
        return false;
    for (int i = 0; i < row_.arguments; ++i) {
        if (arguments_[i].pointer) {
            if (!take_pointer(i))
                return false;
        } else if (i != counter && !take_value(i)) {
            return false;
        }
    }
    return true;
}

// The number of the array's elements, which may be left out unless the array is a handle. What is
// given may be a record with a key: no error shows it.
bool sdk_caller::one_call::take_count(int number)
{
    int array = 0;
    while (arguments_[array].count != number)
        ++array;
    if (!caller_.session_.is_list(given_[array]) && is_unknown(given_[array]))
        return true;
    const char *const name = arguments_[array].name.text();
    const bool by_handle = is_handle(given_[array]);
    if (by_handle && given_[number] == nullptr)
        return refuse(
            interp(), "VALUE", name,
            Tcl_ObjPrintf("%s is a handle: give %s, too", name, arguments_[number].name.text()));
    if (by_handle) {
        set_word(number, given_[number]);
        return true;
    }
    int length;
    if ((from_ != origin::script && !caller_.session_.is_list(given_[array])) ||
        Tcl_ListObjLength(nullptr, given_[array], &length) != TCL_OK)
        return refuse(interp(), "VALUE", name, Tcl_ObjPrintf("%s is not a list", name));
    std::uint32_t count;
    if (given_[number] != nullptr && !is_unknown(given_[number]) &&
        (caller_.session_.take_number(given_[number], UINT32_MAX, count) !=
             record_session::taken::number ||
         count != static_cast<std::uint32_t>(length)))
        return refuse(interp(), "VALUE", arguments_[number].name.text(),
                      Tcl_ObjPrintf("%s is wrong: %s has %d element%s",
                                    arguments_[number].name.text(), name, length,
                                    length == 1 ? "" : "s"));
    set_word(number, Tcl_NewIntObj(length));
    return true;
}

// A value: what begins like a word is a code word if the argument has such words. All else is for
// the function's command to judge.
bool sdk_caller::one_call::take_value(int number)
{
    Tcl_Obj *const word = given_[number];
    if (is_unknown(word))
        return true;
    if (from_ == origin::draft && !check_value(number))
        return false;
    if (caller_.session_.is_number(word) || !begins_like_word(Tcl_GetString(word))) {
        set_word(number, word);
        return true;
    }
    const code_list *const codes = caller_.session_.codes().of(arguments_[number]);
    std::uint32_t code;
    if (codes == nullptr) {
        set_word(number, word);
    } else if (codes->number_of(Tcl_GetString(word), code)) {
        set_word(number, new_number(code));
    } else {
        return refuse_place(interp(), arguments_[number].name.text(),
                            codes->refusal(Tcl_GetString(word)));
    }
    return true;
}

// What the function's command will refuse: a number that is too large, a word where there are none.
bool sdk_caller::one_call::check_value(int number)
{
    const argument_row &argument = arguments_[number];
    const std::uint32_t greatest = bit_mask(0, 8u * argument.size);
    const char *const text = Tcl_GetString(given_[number]);
    std::uint32_t value;
    if (caller_.session_.is_container(given_[number]))
        return true; // it may have a key in it, which the command's error does not show
    const auto taken = caller_.session_.take_number(given_[number], greatest, value);
    if (taken == record_session::taken::outside)
        return refuse_place(
            interp(), argument.name.text(),
            Tcl_ObjPrintf("%s is outside 0 to %s", text, std::to_string(greatest).c_str()));
    return taken == record_session::taken::number || !begins_like_word(text) ||
           caller_.session_.codes().of(argument) != nullptr ||
           refuse_place(interp(), argument.name.text(),
                        Tcl_ObjPrintf("\"%s\" is not a number", text));
}

bool sdk_caller::one_call::take_pointer(int number)
{
    const argument_row &argument = arguments_[number];
    Tcl_Obj *const word = given_[number];
    if (is_unknown(word) && (argument.count < 0 || !caller_.session_.is_list(word)))
        return true;
    if (word != nullptr && (argument.record < 0 || is_handle(word))) {
        set_word(number, word);
        return true;
    }
    int count = -1;
    if (argument.count >= 0)
        Tcl_ListObjLength(nullptr, word, &count);
    if (!create(number, count))
        return false;
    if (word == nullptr)
        return true;
    if (count >= 0)
        return take_elements(argument, blocks_[number], word);
    return writer(blocks_[number].memory)
        .write(record_rows[argument.record], word, argument.name.text());
}

bool sdk_caller::one_call::take_elements(const argument_row &argument, const block &block,
                                         Tcl_Obj *list)
{
    const record_row &record = record_rows[argument.record];
    // Writing a record may run scripts, which may change the list's representation.
    Tcl_Obj *element;
    for (int i = 0;; ++i) {
        if (Tcl_ListObjIndex(interp(), list, i, &element) != TCL_OK)
            return false;
        if (element == nullptr)
            return true;
        if (is_unknown(element))
            continue;
        unsigned char *const memory = block.memory + static_cast<std::size_t>(i) * record.size;
        if (from_ == origin::script && is_handle(element)) {
            found_record found;
            if (!caller_.session_.find(element, found))
                return false;
            if (found.row != &record)
                return refuse(interp(), "VALUE", argument.name.text(),
                              Tcl_ObjPrintf("%s(%d) is a %s, not a %s", argument.name.text(), i,
                                            found.row->name.text(), record.name.text()));
            std::memcpy(memory, found.memory, record.size);
        } else if (!writer(memory).write(record, element, argument.name.text(), i)) {
            return false;
        }
    }
}

record_writer sdk_caller::one_call::writer(unsigned char *memory) const
{
    return {caller_.session_, memory,
            from_ != origin::script ? record_writer::typing::containers
                                    : record_writer::typing::none};
}

// Creates the block of an argument: an array if a count is given, else one record or cell.
bool sdk_caller::one_call::create(int number, int count)
{
    const argument_row &argument = arguments_[number];
    Tcl_Obj *words[] = {creator(argument, count >= 0), nullptr};
    int words_used = 1;
    if (count >= 0)
        words[words_used++] = Tcl_NewIntObj(std::max(count, 1)); // the function looks at it first
    else if (argument.record < 0)
        words[words_used++] = caller_.zero_;
    for (int i = 0; i < words_used; ++i)
        Tcl_IncrRefCount(words[i]);
    const int code = invoke(interp(), words_used, words);
    for (int i = 0; i < words_used; ++i)
        Tcl_DecrRefCount(words[i]);
    if (code != TCL_OK)
        return false;
    Tcl_Obj *const made = Tcl_GetObjResult(interp());
    unsigned char *const memory = memory_at(made);
    if (memory == nullptr)
        return refuse(interp(), "MEMORY", argument.name.text(),
                      Tcl_ObjPrintf("there is no memory for %s", argument.name.text()));
    set_word(number, made);
    blocks_[number] = {made, memory};
    return true;
}

// The name of the command that creates a record, an array of records, or a cell.
Tcl_Obj *sdk_caller::one_call::creator(const argument_row &argument, bool array) const
{
    Tcl_Obj *&kept = caller_.words_[call_count + (&argument - argument_rows)];
    if (kept != nullptr)
        return kept;
    if (argument.record < 0) {
        kept = Tcl_ObjPrintf("::qx_uint%d_create", 8 * argument.size);
    } else {
        std::string_view stem = record_rows[argument.record].name.text();
        if (stem.ends_with("_t"))
            stem.remove_suffix(2);
        kept = Tcl_ObjPrintf("::%.*s%s", static_cast<int>(stem.size()), stem.data(),
                             array ? "_array_create" : "_create");
    }
    Tcl_IncrRefCount(kept);
    return kept;
}

bool sdk_caller::one_call::perform(std::uint32_t &status)
{
    Tcl_Obj *&function = caller_.words_[&row_ - call_rows];
    if (function == nullptr) {
        function = Tcl_ObjPrintf("::%s", row_.name.text());
        Tcl_IncrRefCount(function);
    }
    words_[0] = function;
    Tcl_IncrRefCount(function);
    const unjudged_call judged_here;
    if (Tcl_EvalObjv(interp(), 1 + row_.arguments, words_, TCL_EVAL_GLOBAL) != TCL_OK)
        return false;
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(interp(), Tcl_GetObjResult(interp()), &wide) != TCL_OK)
        return false;
    status = static_cast<std::uint32_t>(wide);
    return true;
}

} // namespace qxsh
