// Statuses of SDK functions as errors; see judged_calls.h. Execution traces do not work: under Tcl
// 8.5 an error in a trace gets the result of the traced command. Instead, the command's procedure
// is replaced for the time being by one that calls it.
#include "library/qx/judged_calls.h"

namespace qxsh {

namespace {

// The original procedure of a command. Kept as long as the interpreter: when judging ends, the
// command may be running or have been renamed.
struct judged_call
{
    const char *name; // the original one, even if it was renamed
    Tcl_ObjCmdProc *procedure;
    ClientData data;
};

// The commands that are or were judged, by name.
Tcl_HashTable *calls_of(ClientData client)
{
    return static_cast<Tcl_HashTable *>(client);
}

judged_call *found(Tcl_HashEntry *entry)
{
    return static_cast<judged_call *>(Tcl_GetHashValue(entry));
}

bool is_zero(Tcl_Obj *result)
{
    int status;
    return Tcl_GetIntFromObj(nullptr, result, &status) == TCL_OK && status == 0;
}

int call(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const auto &own = *static_cast<judged_call *>(client);
    const bool judged = !unjudged_call::begins();
    const int code = own.procedure(own.data, interp, objc, objv);
    if (!judged || (code == TCL_OK && is_zero(Tcl_GetObjResult(interp))))
        return code;
    Tcl_Obj *const called = Tcl_NewListObj(objc, objv);
    Tcl_Obj *const name = Tcl_NewStringObj(own.name, -1);
    Tcl_ListObjReplace(nullptr, called, 0, 1, 1, &name);
    Tcl_Obj *words[] = {Tcl_NewStringObj("::qx::status::left", -1), called, Tcl_NewIntObj(code),
                        Tcl_GetObjResult(interp)};
    for (Tcl_Obj *const word : words)
        Tcl_IncrRefCount(word);
    const Tcl_InterpState state = Tcl_SaveInterpState(interp, code);
    const int judgement = Tcl_EvalObjv(interp, 4, words, TCL_EVAL_GLOBAL);
    for (Tcl_Obj *const word : words)
        Tcl_DecrRefCount(word);
    if (judgement == TCL_OK)
        return Tcl_RestoreInterpState(interp, state);
    Tcl_DiscardInterpState(state);
    return judgement;
}

int judge_calls(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int count;
    Tcl_Obj **names;
    if (objc != 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "names");
        return TCL_ERROR;
    }
    if (Tcl_ListObjGetElements(interp, objv[1], &count, &names) != TCL_OK)
        return TCL_ERROR;
    for (int i = 0; i < count; ++i) {
        const char *const name = Tcl_GetString(names[i]);
        Tcl_CmdInfo info;
        if (Tcl_GetCommandInfo(interp, name, &info) == 0 || info.objProc == call)
            continue;
        int is_new;
        Tcl_HashEntry *const entry = Tcl_CreateHashEntry(calls_of(client), name, &is_new);
        if (is_new)
            Tcl_SetHashValue(entry, Tcl_Alloc(sizeof(judged_call)));
        const auto *const key = static_cast<char *>(Tcl_GetHashKey(calls_of(client), entry));
        *found(entry) = {key, info.objProc, info.objClientData};
        info.objProc = call;
        info.objClientData = found(entry);
        Tcl_SetCommandInfo(interp, name, &info);
    }
    return TCL_OK;
}

int leave_calls(ClientData client, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_HashSearch search;
    for (auto *entry = Tcl_FirstHashEntry(calls_of(client), &search); entry != nullptr;
         entry = Tcl_NextHashEntry(&search)) {
        judged_call &own = *found(entry);
        Tcl_CmdInfo info;
        if (Tcl_GetCommandInfo(interp, own.name, &info) == 0 || info.objClientData != &own)
            continue;
        info.objProc = own.procedure;
        info.objClientData = own.data;
        Tcl_SetCommandInfo(interp, own.name, &info);
    }
    return TCL_OK;
}

void release(ClientData client, Tcl_Interp *)
{
    Tcl_HashSearch search;
    for (auto *entry = Tcl_FirstHashEntry(calls_of(client), &search); entry != nullptr;
         entry = Tcl_NextHashEntry(&search))
        Tcl_Free(reinterpret_cast<char *>(found(entry)));
    Tcl_DeleteHashTable(calls_of(client));
    Tcl_Free(static_cast<char *>(client));
}

} // namespace

void create_judging_commands(Tcl_Interp *interp)
{
    auto *const calls = reinterpret_cast<Tcl_HashTable *>(Tcl_Alloc(sizeof(Tcl_HashTable)));
    Tcl_InitHashTable(calls, TCL_STRING_KEYS);
    Tcl_CallWhenDeleted(interp, release, calls);
    Tcl_CreateObjCommand(interp, "::qx::status::judge_calls", judge_calls, calls, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::status::leave_calls", leave_calls, calls, nullptr);
}

} // namespace qxsh
