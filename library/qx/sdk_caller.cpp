// The command qx::call; see sdk_caller.h.
#include "library/qx/sdk_caller.h"

#include "library/qx/sdk_call.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace qxsh {

namespace {

constexpr const char *usage = "?-allow statuses? ?-status name? ?-dict? ?-words? function"
                              " ?word ...?";

int number_of_arguments()
{
    const call_row &last = call_rows[call_count - 1];
    return last.first + last.arguments;
}

const call_row *refuse_usage(Tcl_Interp *interp, Tcl_Obj *text)
{
    Tcl_SetObjResult(interp, text);
    Tcl_SetErrorCode(interp, "QX", "USAGE", nullptr);
    return nullptr;
}

const call_row *refuse_usage(Tcl_Interp *interp)
{
    return refuse_usage(interp, Tcl_ObjPrintf("usage: qx::call %s", usage));
}

} // namespace

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
        const bool has_value = word == "-allow" || word == "-status";
        bool &flag = word == "-dict" ? options.dict : options.words;
        Tcl_Obj *&value = word == "-allow" ? options.allow : options.status;
        if (has_value ? i + 1 == objc : word != "-dict" && word != "-words")
            return refuse_usage(interp);
        if (has_value ? value != nullptr : flag)
            return refuse_usage(interp, Tcl_ObjPrintf("qx::call: %s is given twice", word.data()));
        if (has_value)
            value = objv[++i];
        else
            flag = true;
    }
    if (i == objc)
        return refuse_usage(interp);
    first = i + 1;
    return find(objv[i]);
}

const call_row *sdk_caller::find(Tcl_Obj *function) const
{
    auto *const table = const_cast<Tcl_HashTable *>(&calls_);
    const char *name = Tcl_GetString(function);
    if (std::strncmp(name, "::", 2) == 0)
        name += 2;
    if (Tcl_HashEntry *const entry = Tcl_FindHashEntry(table, name); entry != nullptr)
        return static_cast<const call_row *>(Tcl_GetHashValue(entry));
    session_.run_script("::qx::status::refuse_call", {function});
    return nullptr;
}

bool sdk_caller::keep_status(const call_options &options, std::uint32_t status) const
{
    return options.status == nullptr ||
           Tcl_ObjSetVar2(session_.interp(), options.status, nullptr, Tcl_NewWideIntObj(status),
                          TCL_LEAVE_ERR_MSG) != nullptr;
}

int sdk_caller::run(int objc, Tcl_Obj *const objv[])
{
    call_options options;
    int first;
    const call_row *const row = take_function(objc, objv, first, options);
    std::uint32_t status;
    return row == nullptr ? TCL_ERROR
                          : call(*row, options, origin::script, objc - first, objv + first, status);
}

int sdk_caller::call(Tcl_Obj *function, Tcl_Obj *allow, int count, Tcl_Obj *const words[],
                     std::uint32_t &status)
{
    call_options options;
    options.allow = allow;
    const call_row *const row = find(function);
    return row == nullptr ? TCL_ERROR : call(*row, options, origin::data, count, words, status);
}

bool sdk_caller::check(Tcl_Obj *function, int count, Tcl_Obj *const words[])
{
    const call_row *const row = find(function);
    if (row == nullptr || !session_.codes().open())
        return false;
    one_call call{*this, *row, origin::draft};
    if (call.take(count, words))
        return true;
    call.note_failure();
    return false;
}

int sdk_caller::call(const call_row &row, const call_options &options, origin from, int count,
                     Tcl_Obj *const words[], std::uint32_t &status)
{
    Tcl_Interp *const interp = session_.interp();
    if (options.allow != nullptr && !session_.run_script("::qx::status::numbers", {options.allow}))
        return TCL_ERROR;
    // A profile that cannot be read is an error before the call, not behind it.
    if (!session_.codes().open())
        return TCL_ERROR;
    one_call call{*this, row, from};
    if (!call.take(count, words) || !call.perform(status)) {
        call.note_failure();
        return TCL_ERROR;
    }
    if (!keep_status(options, status))
        return TCL_ERROR;
    if (status == 0)
        return call.finish(options.dict, options.words) ? TCL_OK : TCL_ERROR;
    Tcl_ResetResult(interp);
    if (options.status != nullptr)
        return TCL_OK;
    Tcl_Obj *const allow = options.allow != nullptr ? options.allow : Tcl_NewObj();
    const bool allowed = session_.run_script("::qx::status::judge_data",
                                             {call.shown(), Tcl_NewWideIntObj(status), allow});
    return allowed ? TCL_OK : TCL_ERROR;
}

} // namespace qxsh
