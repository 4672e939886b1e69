// A profile as a dict; see profile_file.h. records/profile reads the lines.
#include "library/qx/profile_file.h"

#include "library/qx/held_object.h"

namespace qxsh {

namespace {

// A new object of a text in UTF-8, which Tcl's own form is not for every character.
Tcl_Obj *new_text(const std::string &text)
{
    Tcl_Encoding const encoding = Tcl_GetEncoding(nullptr, "utf-8");
    Tcl_DString converted;
    Tcl_ExternalToUtfDString(encoding, text.data(), static_cast<int>(text.size()), &converted);
    Tcl_Obj *const object =
        Tcl_NewStringObj(Tcl_DStringValue(&converted), Tcl_DStringLength(&converted));
    Tcl_DStringFree(&converted);
    Tcl_FreeEncoding(encoding);
    return object;
}

Tcl_Obj *statuses_of(const profile &profile)
{
    Tcl_Obj *const dict = Tcl_NewDictObj();
    for (const profile_status &status : profile.statuses) {
        Tcl_Obj *const facts[] = {new_text(status.name), new_text(status.meaning)};
        Tcl_DictObjPut(nullptr, dict, Tcl_NewWideIntObj(status.number), Tcl_NewListObj(2, facts));
    }
    return dict;
}

Tcl_Obj *codes_of(const profile &profile)
{
    Tcl_Obj *const dict = Tcl_NewDictObj();
    for (const profile_number &code : profile.codes) {
        Tcl_Obj *const path[] = {new_text(code.place), new_text(code.name)};
        for (Tcl_Obj *const key : path)
            Tcl_IncrRefCount(key);
        Tcl_DictObjPutKeyList(nullptr, dict, 2, path, Tcl_NewWideIntObj(code.number));
        for (Tcl_Obj *const key : path)
            Tcl_DecrRefCount(key);
    }
    return dict;
}

Tcl_Obj *numbers_of(const std::vector<profile_number> &numbers)
{
    Tcl_Obj *const dict = Tcl_NewDictObj();
    for (const profile_number &each : numbers)
        Tcl_DictObjPut(nullptr, dict, new_text(each.name), Tcl_NewWideIntObj(each.number));
    return dict;
}

// By table a list of ranges, each a list of two numbers.
Tcl_Obj *ids_of(const profile &profile)
{
    Tcl_Obj *const dict = Tcl_NewDictObj();
    for (const profile_ids &ids : profile.ids) {
        Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
        for (const number_range &range : ids.ranges) {
            Tcl_Obj *const ends[] = {Tcl_NewWideIntObj(range.first), Tcl_NewWideIntObj(range.last)};
            Tcl_ListObjAppendElement(nullptr, list, Tcl_NewListObj(2, ends));
        }
        Tcl_DictObjPut(nullptr, dict, new_text(ids.table), list);
    }
    return dict;
}

// Calls take(key, value) for each entry of a dict, as long as that returns true.
template <class Take> bool take_each(Tcl_Interp *interp, Tcl_Obj *dict, Take take)
{
    Tcl_DictSearch search;
    Tcl_Obj *key;
    Tcl_Obj *value;
    int done;
    if (Tcl_DictObjFirst(interp, dict, &search, &key, &value, &done) != TCL_OK)
        return false;
    bool good = true;
    for (; good && done == 0; Tcl_DictObjNext(&search, &key, &value, &done))
        good = take(key, value);
    Tcl_DictObjDone(&search);
    return good;
}

bool take_number(Tcl_Interp *interp, Tcl_Obj *object, std::uint32_t &number)
{
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(interp, object, &wide) != TCL_OK)
        return false;
    number = static_cast<std::uint32_t>(wide);
    return true;
}

void put(Tcl_Obj *dict, const char *name, Tcl_Obj *value)
{
    Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj(name, -1), value);
}

} // namespace

int parse_profile_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 3) {
        Tcl_WrongNumArgs(interp, 1, objv, "name bytes");
        return TCL_ERROR;
    }
    int length;
    const auto *const bytes = Tcl_GetByteArrayFromObj(objv[2], &length);
    profile read;
    if (const auto mistake = read_profile(
            {reinterpret_cast<const char *>(bytes), static_cast<unsigned>(length)}, read)) {
        const char *const name = Tcl_GetString(objv[1]);
        const std::string line = std::to_string(mistake->line);
        Tcl_Obj *const what = new_text(mistake->text);
        Tcl_IncrRefCount(what);
        Tcl_SetObjResult(interp,
                         Tcl_ObjPrintf("%s:%s: %s", name, line.c_str(), Tcl_GetString(what)));
        Tcl_DecrRefCount(what);
        Tcl_SetErrorCode(interp, "QX", "PROFILE", name, line.c_str(), nullptr);
        return TCL_ERROR;
    }
    Tcl_Obj *const dict = Tcl_NewDictObj();
    put(dict, "statuses", statuses_of(read));
    put(dict, "codes", codes_of(read));
    put(dict, "capacities", numbers_of(read.sizes));
    put(dict, "families", numbers_of(read.families));
    put(dict, "ids", ids_of(read));
    Tcl_SetObjResult(interp, dict);
    return TCL_OK;
}

bool take_profile(Tcl_Interp *interp, profile &in_use)
{
    const auto take_status = [&](Tcl_Obj *number, Tcl_Obj *facts) {
        Tcl_Obj *name;
        profile_status &status = in_use.statuses.emplace_back();
        if (Tcl_ListObjIndex(interp, facts, 0, &name) != TCL_OK || name == nullptr)
            return false;
        status.name = Tcl_GetString(name);
        return take_number(interp, number, status.number);
    };
    const auto take_family = [&](Tcl_Obj *name, Tcl_Obj *number) {
        profile_number &family = in_use.families.emplace_back();
        family.name = Tcl_GetString(name);
        return take_number(interp, number, family.number);
    };
    const auto take_codes = [&](Tcl_Obj *place, Tcl_Obj *words) {
        return take_each(interp, words, [&](Tcl_Obj *word, Tcl_Obj *number) {
            profile_number &code = in_use.codes.emplace_back();
            code.place = Tcl_GetString(place);
            code.name = Tcl_GetString(word);
            return take_number(interp, number, code.number);
        });
    };
    const auto take_part = [&](const char *name, auto take) {
        const std::string script = std::string{"::qx::profile::part "} + name;
        if (Tcl_EvalEx(interp, script.c_str(), -1, TCL_EVAL_GLOBAL) != TCL_OK)
            return false;
        const held_object part{Tcl_GetObjResult(interp)};
        Tcl_ResetResult(interp);
        return take_each(interp, part.get(), take);
    };
    return take_part("statuses", take_status) && take_part("codes", take_codes) &&
           take_part("families", take_family);
}

} // namespace qxsh
