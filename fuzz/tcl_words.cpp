// Tcl for the fuzz targets.
#include "fuzz/tcl_words.h"

#include "fuzz/expect.h"
#include "tests/unit/stub_table.h"

namespace fuzz {

Tcl_Interp *start_tcl(const char *program)
{
    Tcl_FindExecutable(program);
    Tcl_Interp *const interp = Tcl_CreateInterp();
    expect(interp != nullptr && fill_stub_table(interp), "Tcl starts");
    return interp;
}

void keep_commands(Tcl_Interp *interp, std::string_view list)
{
    const std::string script =
        "set gone {}\n"
        "foreach space [concat [namespace children ::tcl] [namespace children ::]] {\n"
        "    if {$space ni {::tcl ::tcl::info}} { lappend gone $space }\n"
        "}\n"
        "namespace delete {*}$gone\n"
        "set gone [info commands ::tcl::*]\n"
        "foreach command [info commands] {\n"
        "    if {$command ni {rename " +
        std::string{list} +
        "}} { lappend gone $command }\n"
        "}\n"
        "foreach command $gone { rename $command {} }\n"
        "rename rename {}\n";
    if (Tcl_EvalEx(interp, script.data(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL) !=
        TCL_OK)
        finding(Tcl_GetStringResult(interp));
}

std::string script_text(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        if (c == '\0')
            text += "\xc0\x80";
        else
            text += c;
    }
    return text;
}

void shimmer(Tcl_Obj *object, unsigned way)
{
    int number;
    Tcl_WideInt wide;
    double real;
    switch (way) {
    case 1:
        Tcl_GetIntFromObj(nullptr, object, &number);
        break;
    case 2:
        Tcl_GetWideIntFromObj(nullptr, object, &wide);
        break;
    case 3:
        Tcl_GetDoubleFromObj(nullptr, object, &real);
        break;
    case 4:
        Tcl_ListObjLength(nullptr, object, &number);
        break;
    case 5:
        Tcl_GetCharLength(object);
        break;
    default:
        break;
    }
}

} // namespace fuzz
