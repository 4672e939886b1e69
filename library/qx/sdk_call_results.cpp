// What a call has put out, and the call as errors show it, for sdk_call.cpp.
#include "library/qx/sdk_call.h"

#include "records/values.h"

namespace qxsh {

// The memory of an argument that is put out; null, with an error in the interpreter, if it was
// given as a handle whose record cannot be read any more.
const unsigned char *sdk_caller::one_call::memory_of(int number)
{
    if (blocks_[number].handle != nullptr)
        return blocks_[number].memory;
    found_record found;
    return caller_.session_.find(words_[1 + number], found) ? found.memory : nullptr;
}

// What an argument has put out; null, with an error in the interpreter, if the profile cannot be
// read.
Tcl_Obj *sdk_caller::one_call::value_of(const argument_row &argument, const unsigned char *memory,
                                        bool words)
{
    if (argument.record >= 0) {
        const auto *const plan =
            caller_.plans_.plan(record_rows[argument.record], {nullptr, false, words});
        return plan == nullptr ? nullptr : read_record(*plan, memory);
    }
    if (words && !caller_.session_.codes().open())
        return nullptr;
    const std::uint32_t number = read_number(memory, argument.size);
    const code_list *const codes = words ? caller_.session_.codes().of(argument) : nullptr;
    return codes == nullptr ? new_number(number) : codes->shown(number);
}

bool sdk_caller::one_call::finish(bool as_dict, bool words)
{
    Tcl_Obj *const dict = Tcl_NewListObj(0, nullptr);
    Tcl_Obj *value = nullptr;
    Tcl_IncrRefCount(dict);
    for (int i = 0; i < row_.arguments; ++i) {
        const argument_row &argument = arguments_[i];
        if (argument.way == direction::in)
            continue;
        const unsigned char *const memory = memory_of(i);
        value = memory == nullptr ? nullptr : value_of(argument, memory, words);
        if (value == nullptr) {
            Tcl_DecrRefCount(dict);
            return false;
        }
        Tcl_ListObjAppendElement(nullptr, dict, Tcl_NewStringObj(argument.name.text(), -1));
        Tcl_ListObjAppendElement(nullptr, dict, value);
    }
    int length;
    Tcl_ListObjLength(nullptr, dict, &length);
    release_blocks();
    Tcl_SetObjResult(interp(), length == 2 && !as_dict ? value : dict);
    Tcl_DecrRefCount(dict);
    return true;
}

void sdk_caller::one_call::note_failure()
{
    Tcl_Obj *const message = Tcl_GetObjResult(interp());
    Tcl_IncrRefCount(message);
    const Tcl_InterpState state = Tcl_SaveInterpState(interp(), TCL_ERROR);
    caller_.session_.run_script("::qx::status::note", {shown(), Tcl_NewIntObj(1), message});
    Tcl_RestoreInterpState(interp(), state);
    Tcl_DecrRefCount(message);
}

Tcl_Obj *sdk_caller::one_call::shown() const
{
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    Tcl_ListObjAppendElement(nullptr, list, Tcl_NewStringObj(row_.name.text(), -1));
    for (int i = 0; i < row_.arguments; ++i) {
        const argument_row &argument = arguments_[i];
        Tcl_Obj *word = words_[1 + i];
        if (blocks_[i].handle != nullptr || (word == nullptr && argument.pointer))
            word = argument.record < 0
                       ? Tcl_ObjPrintf("u%d", 8 * argument.size)
                       : Tcl_NewStringObj(record_rows[argument.record].name.text(), -1);
        else if (word == nullptr)
            word = given_[i] != nullptr ? given_[i] : Tcl_NewObj();
        Tcl_ListObjAppendElement(nullptr, list, word);
    }
    return list;
}

} // namespace qxsh
