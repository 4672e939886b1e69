// Checks before a command, bookkeeping after it; see strict_command.h.
#include "strict/strict_command.h"

#include "commands/command_table.h"
#include "commands/sdk_output.h"
#include "commands/wrapper.h"
#include "helpers/block_memory.h"
#include "records/addresses.h"
#include "runtime/errors.h"
#include "strict/checks.h"
#include "strict/leak_report.h"

#include <algorithm>
#include <new>

namespace qxsh {

namespace {

// Bytes of freed memory that are not reused yet. A board has little to spare.
constexpr std::uint64_t kept_bytes = 4 * 1024 * 1024;

// Never destroyed: the exit handler reads it.
block_table &blocks()
{
    static auto *const table = new block_table{free_block, kept_bytes};
    return *table;
}

int type_number(word_kind kind)
{
    return kind - word_handle;
}

// One running command.
class checked_call
{
public:
    checked_call(const swig_command_info &row, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
        : command_(row), row_(row_of(row)), kinds_(word_kinds + row_.kinds), interp_(interp),
          objc_(objc)
    {
        words_[0] = objv[0];
        std::copy(objv + 1, objv + objc, words_ + 1);
    }

    int run();

private:
    bool convert(int number);
    bool is_handle_or_command(Tcl_Obj *word, word_kind kind) const;
    std::string problem_of(int number) const;
    int call() { return command_.wrapper(command_.client_data, interp_, objc_, words_); }
    int release(const void *pointer);
    int make();

    const void *pointer(int number) const
    {
        return converted_[number].internalRep.twoPtrValue.ptr1;
    }
    std::uint32_t value(int number) const
    {
        return static_cast<std::uint32_t>(converted_[number].internalRep.wideValue);
    }

    const swig_command_info &command_;
    const command_row &row_;
    const word_kind *const kinds_; // word n has [n - 1]
    Tcl_Interp *const interp_;
    const int objc_;
    Tcl_Obj *words_[1 + most_arguments];
    Tcl_Obj converted_[1 + most_arguments];
};

// Where any type is accepted, a malformed handle still converts to an address; and any text that
// does not begin with "_" is evaluated. This rejects both.
bool checked_call::is_handle_or_command(Tcl_Obj *word, word_kind kind) const
{
    if (word->typePtr == &handle_type)
        return true;
    const char *const text = Tcl_GetString(word);
    std::uint32_t address;
    if (text[0] == '_')
        return kind != word_any_handle || swig_unpack_hex(text + 1, &address, sizeof address);
    return std::string_view{text} == "NULL" || Tcl_FindCommand(interp_, text, nullptr, 0);
}

bool checked_call::convert(int number)
{
    const word_kind kind = kinds_[number - 1];
    const wanted_type type = type_of(kind);
    Tcl_Obj *const word = words_[number];
    if (kind >= word_any_handle && !is_handle_or_command(word, kind))
        return refuse_word(interp_, number, command_.name, kind, type);
    Tcl_Obj &converted = converted_[number];
    converted.bytes = nullptr; // it has no text
    words_[number] = &converted;
    return convert_word(interp_, word, number, command_.name, kind, type, converted);
}

std::string checked_call::problem_of(int number) const
{
    const word_kind kind = kinds_[number - 1];
    if (kind < word_any_handle || pointer(number) == nullptr)
        return {};
    const checked_pointer what{pointer(number), type_number(kind)};
    if (row_.form == command_form::releases)
        return problem_of_release(blocks(), what.pointer);
    if (row_.form == command_form::points)
        return problem_of_base(blocks(), what);
    if (row_.form == command_form::indexes && number == 1)
        return problem_of_access(blocks(), what, value(objc_ - 1), 1);
    std::uint32_t count = 1;
    if (row_.form == command_form::calls) {
        const int counter = arguments_of(call_rows[row_.what])[number - 1].count;
        // Even an array without elements must exist.
        if (counter >= 0)
            count = std::max(value(counter + 1), 1u);
    }
    return problem_of_access(blocks(), what, 0, count);
}

int checked_call::release(const void *pointer)
{
    if (pointer == nullptr)
        return call();
    blocks().release(address_of(pointer), current_place(interp_, command_.name));
    return TCL_OK;
}

// The size is computed as in the helpers.
int checked_call::make()
{
    const std::uint32_t count = row_.form == command_form::makes_array ? value(objc_ - 1) : 1;
    const auto place = current_place(interp_, command_.name);
    if (const int code = call(); code != TCL_OK)
        return code;
    const Tcl_Obj *const made = Tcl_GetObjResult(interp_);
    if (made->typePtr == &handle_type) {
        blocks().add(address_of(made->internalRep.twoPtrValue.ptr1),
                     count * element_types[row_.what].size, row_.what, place);
    }
    return TCL_OK;
}

int checked_call::run()
{
    // All words are converted before the first is checked: a word that names a command may run any
    // code, even free the block of an earlier word.
    for (int number = 1; number < objc_; ++number)
        if (!convert(number))
            return TCL_ERROR;
    for (int number = 1; number < objc_; ++number) {
        const std::string problem = problem_of(number);
        if (problem.empty())
            continue;
        const auto message = "in method '" + std::string{command_.name} + "', argument " +
                             std::to_string(number) + ": " + problem;
        swig_set_error_msg(interp_, "SystemError", message.c_str());
        return TCL_ERROR;
    }
    switch (row_.form) {
    case command_form::releases:
        return release(pointer(1));
    case command_form::makes:
    case command_form::makes_array:
        return make();
    default:
        return call();
    }
}

void report_at_exit(ClientData)
{
    const std::string report = leak_report(blocks().leaks());
    if (report.empty())
        return;
    flush_tcl_output();
    std::fputs(report.c_str(), stderr);
}

} // namespace

int strict_command(ClientData row, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const auto &command = *static_cast<const swig_command_info *>(row);
    // The wrapper reports the wrong number of words.
    if (objc != 1 + words_of(row_of(command)))
        return command.wrapper(command.client_data, interp, objc, objv);
    try {
        return checked_call{command, interp, objc, objv}.run();
    } catch (const std::bad_alloc &) {
        swig_set_error_msg(interp, "MemoryError", "no memory to keep account of blocks");
        return TCL_ERROR;
    }
}

bool strictly_allows(Tcl_Interp *interp, const void *address, const char *record)
{
    const auto *const end = element_types + type_count;
    const auto *const type = std::find_if(element_types, end, [&](const element_type &each) {
        return each.record >= 0 && record_rows[each.record].name.text() == std::string_view{record};
    });
    try {
        const checked_pointer what{address, static_cast<int>(type - element_types)};
        const auto problem = type == end
                                 ? std::string{"the commands do not know the record "} + record
                                 : problem_of_access(blocks(), what, 0, 1);
        Tcl_SetObjResult(interp, Tcl_NewStringObj(problem.c_str(), -1));
        return problem.empty();
    } catch (const std::bad_alloc &) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("no memory to look at blocks", -1));
        return false;
    }
}

void report_leaks_at_exit()
{
    static bool arranged = false;
    if (!arranged)
        Tcl_CreateExitHandler(report_at_exit, nullptr);
    arranged = true;
}

} // namespace qxsh
