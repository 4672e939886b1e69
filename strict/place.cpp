// Places in scripts, from `info frame`; see place.h.
#include "strict/place.h"

namespace qxsh {

namespace {

// The `info frame` dict of the running command, at level -1, or of one around it, below; null if
// there is none. The command behind `info frame` is evaluated as a list to give it a frame: a
// direct call fails if there is none below, as for a command that C code calls outside any script.
// Returns null without evaluating anything if a script has replaced that command.
Tcl_Obj *describe_frame(Tcl_Interp *interp, int level)
{
    static constexpr const char *name = "::tcl::info::frame";
    Tcl_CmdInfo frame;
    if (!Tcl_GetCommandInfo(interp, name, &frame) || !frame.isNativeObjectProc)
        return nullptr;
    Tcl_Obj *const words[] = {Tcl_NewStringObj(name, -1), Tcl_NewIntObj(level)};
    Tcl_Obj *const list = Tcl_NewListObj(2, words);
    Tcl_IncrRefCount(list);
    const int code = Tcl_EvalObjEx(interp, list, 0);
    Tcl_DecrRefCount(list);
    return code == TCL_OK ? Tcl_GetObjResult(interp) : nullptr;
}

Tcl_Obj *value_of(Tcl_Obj *description, const char *name)
{
    Tcl_Obj *const key = Tcl_NewStringObj(name, -1);
    Tcl_IncrRefCount(key);
    Tcl_Obj *value = nullptr;
    if (Tcl_DictObjGet(nullptr, description, key, &value) != TCL_OK)
        value = nullptr;
    Tcl_DecrRefCount(key);
    return value;
}

std::string text_of(Tcl_Obj *description, const char *name)
{
    Tcl_Obj *const value = value_of(description, name);
    return value != nullptr ? Tcl_GetString(value) : "";
}

void describe(Tcl_Obj *description, script_place &place)
{
    Tcl_Obj *const line = value_of(description, "line");
    if (line == nullptr || Tcl_GetIntFromObj(nullptr, line, &place.line) != TCL_OK)
        place.line = 0;
    place.file = text_of(description, "file");
    place.procedure = place.file.empty() ? text_of(description, "proc") : "";
    // Typed or evaluated commands have line numbers in a text that no one can look up.
    if (place.file.empty() && place.procedure.empty())
        place.line = 0;
}

// The folder of package qx's scripts, with a slash behind it; empty if the package is not loaded.
std::string folder_of_package(Tcl_Interp *interp)
{
    Tcl_Obj *const folder = Tcl_GetVar2Ex(interp, "::qx::handle::folder", nullptr, 0);
    return folder == nullptr ? std::string{} : Tcl_GetString(folder) + std::string{"/"};
}

} // namespace

script_place current_place(Tcl_Interp *interp, const char *command)
{
    script_place place;
    place.command = command;
    Tcl_ResetResult(interp);
    const std::string package = folder_of_package(interp);
    for (int level = -1;; --level) {
        Tcl_Obj *const description = describe_frame(interp, level);
        if (description == nullptr)
            break;
        describe(description, place);
        // What package qx does, bodies that it runs included, is done where a script has called it.
        if (package.empty() || !(place.file.empty() ? place.procedure.starts_with("::qx::")
                                                    : place.file.starts_with(package)))
            break;
    }
    Tcl_ResetResult(interp);
    return place;
}

static std::string without_current_folder(const std::string &file)
{
    Tcl_DString name;
    std::string shorter = file;
    if (Tcl_GetCwd(nullptr, &name) != nullptr) {
        std::string folder{Tcl_DStringValue(&name)};
        Tcl_DStringFree(&name);
        if (folder.empty() || folder.back() != '/')
            folder += '/';
        if (file.starts_with(folder))
            shorter = file.substr(folder.size());
    }
    return shorter;
}

std::string shown(const script_place &place)
{
    std::string text = "'" + place.command + "'";
    const std::string line = std::to_string(place.line);
    if (!place.file.empty())
        text += " at " + without_current_folder(place.file) + ":" + line;
    else if (!place.procedure.empty())
        text += " in line " + line + " of procedure '" + place.procedure + "'";
    return text;
}

} // namespace qxsh
