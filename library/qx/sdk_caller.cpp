// One call: words become blocks, the SDK function's command runs, blocks become data; see
// sdk_caller.h. Everything goes through the module's commands, so strict memory, qx::watch and
// renamed commands see what they see of any script.
#include "library/qx/sdk_caller.h"

#include "library/qx/judged_calls.h"
#include "library/qx/record_writer.h"
#include "records/addresses.h"
#include "records/values.h"
#include "runtime/handle_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <string_view>

namespace qxsh {

namespace {

constexpr const char *usage = "?-allow statuses? ?-status name? ?-dict? function ?word ...?";

int number_of_arguments()
{
    const call_row &last = call_rows[call_count - 1];
    return last.first + last.arguments;
}

// The number of the argument that is the size of one of the call's arrays; -1 if it has none.
int counter_of(const call_row &row)
{
    for (const argument_row &argument : arguments_of(row))
        if (argument.count >= 0)
            return argument.count;
    return -1;
}

// The address in the text of a handle that the module has just made.
unsigned char *memory_at(Tcl_Obj *handle)
{
    std::uint32_t address = 0;
    read_address(Tcl_GetString(handle) + 1, address);
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

// -------------------------------------------------------------------------------- one call

class sdk_caller::one_call
{
public:
    one_call(sdk_caller &caller, const call_row &row)
        : caller_(caller), row_(row), arguments_(arguments_of(row))
    {}
    ~one_call();
    one_call(const one_call &) = delete;
    one_call &operator=(const one_call &) = delete;

    /// Turns words into arguments. On failure returns false with an error in the interpreter.
    bool take(int count, Tcl_Obj *const words[]);

    /// Runs the function. On failure returns false with an error in the interpreter.
    bool perform(std::uint32_t &status);

    /// Releases the blocks. The interpreter's result is then what the function has put out:
    /// nothing, one value, or a dict by argument.
    void finish(bool as_dict);

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
    bool take_words(int count, Tcl_Obj *const words[], int wanted, bool counted);
    bool take_count(int number);
    bool take_pointer(int number);
    bool take_elements(const argument_row &argument, const block &block, Tcl_Obj *list);
    bool create(int number, int count);
    Tcl_Obj *creator(const argument_row &argument, bool array) const;
    void release_blocks();
    void set_word(int number, Tcl_Obj *word);
    Tcl_Interp *interp() const { return caller_.session_.interp(); }

    sdk_caller &caller_;
    const call_row &row_;
    const std::span<const argument_row> arguments_;
    Tcl_Obj *words_[1 + most_call_arguments] = {}; // of the command; each with a reference
    Tcl_Obj *given_[most_call_arguments] = {};     // by argument; null: left out
    block blocks_[most_call_arguments] = {};
};

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
    return text[0] == '_' || std::strcmp(text, "NULL") == 0 ||
           (text[0] != '\0' && Tcl_FindCommand(interp(), text, nullptr, TCL_GLOBAL_ONLY));
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
        } else if (i != counter) {
            set_word(i, given_[i]);
        }
    }
    return true;
}

// The number of the array's elements, which may be left out unless the array is a handle.
bool sdk_caller::one_call::take_count(int number)
{
    int array = 0;
    while (arguments_[array].count != number)
        ++array;
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
    if (Tcl_ListObjLength(nullptr, given_[array], &length) != TCL_OK)
        return refuse(
            interp(), "VALUE", name,
            Tcl_ObjPrintf("%s: \"%s\" is not a list", name, Tcl_GetString(given_[array])));
    std::uint32_t count;
    if (given_[number] != nullptr &&
        (caller_.session_.take_number(given_[number], UINT32_MAX, count) !=
             record_session::taken::number ||
         count != static_cast<std::uint32_t>(length)))
        return refuse(interp(), "VALUE", arguments_[number].name.text(),
                      Tcl_ObjPrintf("%s is %s, but %s has %d elements",
                                    arguments_[number].name.text(), Tcl_GetString(given_[number]),
                                    name, length));
    set_word(number, Tcl_NewIntObj(length));
    return true;
}

bool sdk_caller::one_call::take_pointer(int number)
{
    const argument_row &argument = arguments_[number];
    Tcl_Obj *const word = given_[number];
    if (word != nullptr && (argument.record < 0 || is_handle(word))) {
        set_word(number, word);
        found_record found;
        if (argument.way != direction::inout)
            return true;
        if (!caller_.session_.find(word, found))
            return false;
        blocks_[number].memory = found.memory;
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
    return record_writer{caller_.session_, blocks_[number].memory}.write(
        record_rows[argument.record], word, argument.name.text());
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
        unsigned char *const memory = block.memory + static_cast<std::size_t>(i) * record.size;
        if (is_handle(element)) {
            found_record found;
            if (!caller_.session_.find(element, found))
                return false;
            if (found.row != &record)
                return refuse(interp(), "VALUE", argument.name.text(),
                              Tcl_ObjPrintf("%s(%d) is a %s, not a %s", argument.name.text(), i,
                                            found.row->name.text(), record.name.text()));
            std::memcpy(memory, found.memory, record.size);
        } else if (!record_writer{caller_.session_, memory}.write(record, element,
                                                                  argument.name.text(), i)) {
            return false;
        }
    }
}

// Creates the block of an argument: an array if a count is given, else one record or cell.
bool sdk_caller::one_call::create(int number, int count)
{
    const argument_row &argument = arguments_[number];
    Tcl_Obj *words[] = {creator(argument, count >= 0), nullptr};
    int words_used = 1;
    if (count >= 0)
        words[words_used++] = Tcl_NewIntObj(count);
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
    if (std::strcmp(Tcl_GetString(made), "NULL") == 0)
        return refuse(interp(), "MEMORY", argument.name.text(),
                      Tcl_ObjPrintf("there is no memory for %s", argument.name.text()));
    set_word(number, made);
    blocks_[number] = {made, memory_at(made)};
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
    const unjudged_calls by_itself;
    if (Tcl_EvalObjv(interp(), 1 + row_.arguments, words_, TCL_EVAL_GLOBAL) != TCL_OK)
        return false;
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(interp(), Tcl_GetObjResult(interp()), &wide) != TCL_OK)
        return false;
    status = static_cast<std::uint32_t>(wide);
    return true;
}

void sdk_caller::one_call::finish(bool as_dict)
{
    Tcl_Obj *values[2 * most_call_arguments] = {};
    int count = 0;
    for (int i = 0; i < row_.arguments; ++i) {
        const argument_row &argument = arguments_[i];
        const unsigned char *const memory = blocks_[i].memory;
        if (argument.way == direction::in)
            continue;
        values[count++] = Tcl_NewStringObj(argument.name.text(), -1);
        if (argument.record < 0)
            values[count++] = Tcl_NewWideIntObj(read_number(memory, argument.size));
        else
            values[count++] = read_record(
                *caller_.plans_.plan(record_rows[argument.record], {nullptr, false}), memory);
    }
    Tcl_Obj *const dict = Tcl_NewListObj(count, values);
    Tcl_IncrRefCount(dict);
    release_blocks();
    Tcl_SetObjResult(interp(), count == 2 && !as_dict ? values[1] : dict);
    Tcl_DecrRefCount(dict);
}

Tcl_Obj *sdk_caller::one_call::shown() const
{
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    Tcl_ListObjAppendElement(nullptr, list, Tcl_NewStringObj(row_.name.text(), -1));
    for (int i = 0; i < row_.arguments; ++i) {
        const argument_row &argument = arguments_[i];
        Tcl_Obj *word = words_[1 + i];
        if (blocks_[i].handle != nullptr)
            word = argument.record < 0
                       ? Tcl_ObjPrintf("u%d", 8 * argument.size)
                       : Tcl_NewStringObj(record_rows[argument.record].name.text(), -1);
        Tcl_ListObjAppendElement(nullptr, list, word);
    }
    return list;
}

// -------------------------------------------------------------------------------- the command

sdk_caller::sdk_caller(record_session &session, plan_cache &plans)
    : session_(session), plans_(plans),
      words_(reinterpret_cast<Tcl_Obj **>(Tcl_Alloc(static_cast<unsigned>(
          (call_count + number_of_arguments()) * static_cast<int>(sizeof(Tcl_Obj *)))))),
      free_(Tcl_NewStringObj("::qx_data_free", -1)), zero_(Tcl_NewIntObj(0))
{
    std::fill_n(words_, call_count + number_of_arguments(), nullptr);
    Tcl_IncrRefCount(free_);
    Tcl_IncrRefCount(zero_);
    Tcl_InitHashTable(&calls_, TCL_STRING_KEYS);
    for (int i = 0; i < call_count; ++i) {
        int is_new;
        Tcl_SetHashValue(Tcl_CreateHashEntry(&calls_, call_rows[i].name.text(), &is_new),
                         const_cast<call_row *>(call_rows + i));
    }
}

sdk_caller::~sdk_caller()
{
    for (int i = 0; i < call_count + number_of_arguments(); ++i)
        if (words_[i] != nullptr)
            Tcl_DecrRefCount(words_[i]);
    Tcl_Free(reinterpret_cast<char *>(words_));
    Tcl_DecrRefCount(free_);
    Tcl_DecrRefCount(zero_);
    Tcl_DeleteHashTable(&calls_);
}

// Reads the options and the function's name; `first` is then the number of its first word. Returns
// null, with an error in the interpreter, if they are wrong.
const call_row *sdk_caller::take_function(int objc, Tcl_Obj *const objv[], int &first,
                                          call_options &options)
{
    Tcl_Interp *const interp = session_.interp();
    int i = 1;
    for (; i < objc && Tcl_GetString(objv[i])[0] == '-'; ++i) {
        const std::string_view word = Tcl_GetString(objv[i]);
        if (word == "-dict") {
            options.dict = true;
        } else if ((word == "-allow" || word == "-status") && i + 1 < objc) {
            (word == "-allow" ? options.allow : options.status) = objv[++i];
        } else {
            refuse(interp, "USAGE", nullptr, Tcl_ObjPrintf("usage: qx::call %s", usage));
            return nullptr;
        }
    }
    if (i == objc) {
        refuse(interp, "USAGE", nullptr, Tcl_ObjPrintf("usage: qx::call %s", usage));
        return nullptr;
    }
    const char *name = Tcl_GetString(objv[i]);
    if (std::strncmp(name, "::", 2) == 0)
        name += 2;
    first = i + 1;
    if (Tcl_HashEntry *const entry = Tcl_FindHashEntry(&calls_, name); entry != nullptr)
        return static_cast<const call_row *>(Tcl_GetHashValue(entry));
    session_.run_script("::qx::status::refuse_call", {objv[i]});
    return nullptr;
}

int sdk_caller::run(int objc, Tcl_Obj *const objv[])
{
    Tcl_Interp *const interp = session_.interp();
    call_options options;
    int first;
    const call_row *const row = take_function(objc, objv, first, options);
    if (row == nullptr)
        return TCL_ERROR;
    if (options.allow != nullptr && !session_.run_script("::qx::status::numbers", {options.allow}))
        return TCL_ERROR;
    one_call call{*this, *row};
    std::uint32_t status;
    if (!call.take(objc - first, objv + first) || !call.perform(status))
        return TCL_ERROR;
    if (options.status != nullptr) {
        Tcl_Obj *const number = Tcl_NewWideIntObj(status);
        if (Tcl_ObjSetVar2(interp, options.status, nullptr, number, TCL_LEAVE_ERR_MSG) == nullptr)
            return TCL_ERROR;
    }
    if (status == 0) {
        call.finish(options.dict);
        return TCL_OK;
    }
    Tcl_ResetResult(interp);
    if (options.status != nullptr)
        return TCL_OK;
    Tcl_Obj *const allow = options.allow != nullptr ? options.allow : Tcl_NewObj();
    const bool allowed = session_.run_script("::qx::status::judge_data",
                                             {call.shown(), Tcl_NewWideIntObj(status), allow});
    return allowed ? TCL_OK : TCL_ERROR;
}

} // namespace qxsh
