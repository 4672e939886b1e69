// Following paths; see record_path.h.
#include "library/qx/record_path.h"

#include "records/values.h"

#include <algorithm>
#include <charconv>
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

Tcl_Obj *unknown_field_text(const record_session &session, const record_row &row,
                            std::string_view name)
{
    Tcl_Obj *const names = Tcl_NewListObj(0, nullptr);
    for (const field_row &field : fields_of(row))
        Tcl_ListObjAppendElement(nullptr, names, session.name(field));
    Tcl_Obj *const text = Tcl_ObjPrintf("%s has no such field", row.name.text());
    if (session.run_script("::qx::catalogue::like",
                           {Tcl_NewStringObj(name.data(), static_cast<int>(name.size())), names}))
        Tcl_AppendObjToObj(text, Tcl_GetObjResult(session.interp()));
    return text;
}

namespace {

// What stands in brackets behind a name, as in tag(0).
struct path_part
{
    std::string_view name;
    int index = -1;     // -1: no brackets
    bool good = true;   // whether the brackets hold a number
    bool again = false; // whether there are more of them behind, as in tag(0)(1)
};

path_part split_part(std::string_view text)
{
    const auto open = text.find('(');
    if (open == text.npos || !text.ends_with(')'))
        return {text};
    path_part part = {text.substr(0, open)};
    const auto close = text.find(')', open);
    const std::string_view digits = text.substr(open + 1, close - open - 1);
    const char *const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, part.index);
    part.good = read.ec == std::errc{} && read.ptr == end && part.index >= 0;
    part.again = close + 1 != text.size();
    return part;
}

// Why a field has no such element: a new object; null if it has.
Tcl_Obj *index_mistake(const field_row &field, const path_part &part)
{
    const char *const name = field.name.text();
    if (part.good && part.index < 0)
        return nullptr;
    if (field.count == 0)
        return Tcl_ObjPrintf("%s is not an array", name);
    if (!part.good || part.index >= field.count)
        return Tcl_ObjPrintf("the elements of %s are 0 to %d", name, field.count - 1);
    return part.again ? Tcl_ObjPrintf("%s(%d) is not an array", name, part.index) : nullptr;
}

// Why a record has no padding that begins at a byte: a new object; null if it has.
Tcl_Obj *padding_mistake(const record_row &row, const path_part &part)
{
    unsigned char free[most_record_bytes];
    if (!part.good || part.index < 0 || part.again)
        return Tcl_NewStringObj("name a byte of the record, as in padding(7)", -1);
    if (part.index >= row.size)
        return Tcl_ObjPrintf("the bytes of %s are 0 to %d", row.name.text(), row.size - 1);
    free_bits(row, free);
    return free[part.index] == 0 ? Tcl_ObjPrintf("byte %d belongs to a field", part.index)
                                 : nullptr;
}

} // namespace

bool follow_path(const record_session &session, const record_row &record, Tcl_Obj *path,
                 path_target &target)
{
    const char *const whole = Tcl_GetString(path);
    std::string_view rest = whole;
    target = {&record, nullptr, 0, -1};
    for (;;) {
        const auto dot = rest.find('.');
        const path_part part = split_part(rest.substr(0, dot));
        target.index = part.index;
        const auto fields = fields_of(*target.row);
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const field_row &each) {
            return part.name == each.name.text();
        });
        if (field == fields.end() && dot == rest.npos && part.name == padding_name) {
            target.field = nullptr;
            Tcl_Obj *const text = padding_mistake(*target.row, part);
            return text == nullptr || refuse_place(session.interp(), whole, text);
        }
        if (field == fields.end())
            return refuse_place(session.interp(), whole,
                                unknown_field_text(session, *target.row, part.name));
        target.field = &*field;
        if (Tcl_Obj *const text = index_mistake(*field, part); text != nullptr)
            return refuse_place(session.interp(), whole, text);
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
