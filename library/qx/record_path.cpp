// Following paths; see record_path.h.
#include "library/qx/record_path.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace qxsh {

bool refuse_place(Tcl_Interp *interp, const char *place, Tcl_Obj *text)
{
    Tcl_IncrRefCount(text);
    Tcl_ResetResult(interp);
    Tcl_SetErrorCode(interp, "QX", "VALUE", place, nullptr);
    Tcl_AppendResult(interp, place, place[0] != '\0' ? ": " : "", Tcl_GetString(text), nullptr);
    Tcl_DecrRefCount(text);
    return false;
}

Tcl_Obj *unknown_field_text(const record_session &session, const record_row &row, const char *name)
{
    Tcl_Obj *const names = Tcl_NewListObj(0, nullptr);
    for (const field_row &field : fields_of(row))
        Tcl_ListObjAppendElement(nullptr, names, session.name(field));
    Tcl_Obj *const text = Tcl_ObjPrintf("%s has no such field", row.name.text());
    if (session.run_script("::qx::catalogue::like", {Tcl_NewStringObj(name, -1), names}))
        Tcl_AppendObjToObj(text, Tcl_GetObjResult(session.interp()));
    return text;
}

// Takes the element's number off the end of a name such as tag(0). Returns false if what is in the
// brackets is not a number; -1 stands for no brackets.
static bool take_index(std::string_view &name, int &index)
{
    index = -1;
    if (!name.ends_with(')'))
        return true;
    const auto open = name.find('(');
    if (open == name.npos)
        return false;
    const std::string_view digits = name.substr(open + 1, name.size() - open - 2);
    const char *const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, index);
    name = name.substr(0, open);
    return read.ec == std::errc{} && read.ptr == end && index >= 0;
}

bool follow_path(const record_session &session, const record_row &record, Tcl_Obj *path,
                 path_target &target)
{
    const char *const whole = Tcl_GetString(path);
    std::string_view rest = whole;
    target = {&record, nullptr, 0, -1};
    for (;;) {
        const auto dot = rest.find('.');
        std::string_view name = rest.substr(0, dot);
        const bool has_index = take_index(name, target.index);
        const auto fields = fields_of(*target.row);
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const field_row &each) {
            return name == each.name.text();
        });
        if (field == fields.end())
            return refuse_place(
                session.interp(), whole,
                unknown_field_text(session, *target.row, std::string{name}.c_str()));
        target.field = &*field;
        if (!has_index || (target.index >= 0 && target.index >= field->count))
            return refuse_place(session.interp(), whole,
                                field->count == 0
                                    ? Tcl_ObjPrintf("%s is not an array", field->name.text())
                                    : Tcl_ObjPrintf("the elements of %s are 0 to %d",
                                                    field->name.text(), field->count - 1));
        if (dot == rest.npos)
            return true;
        if (field->record < 0 || (field->count != 0 && target.index < 0))
            return refuse_place(session.interp(), whole,
                                Tcl_ObjPrintf(field->record < 0 ? "%s has no fields"
                                                                : "name an element, as in %s(0)",
                                              field->name.text()));
        target.at = target.start();
        target.row = record_rows + field->record;
        rest.remove_prefix(dot + 1);
    }
}

} // namespace qxsh
