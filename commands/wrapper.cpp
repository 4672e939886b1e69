// The slow paths of wrappers; see wrapper.h.
#include "commands/wrapper.h"

#include "runtime/arguments.h"
#include "runtime/errors.h"

#include <cstdio>
#include <string>

namespace qxsh {

static const word_kind *kinds_of(command_number command)
{
    return word_kinds + command_rows[command].kinds;
}

static int call(command_number command, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    return swig_commands[command].wrapper(nullptr, interp, objc, objv);
}

[[gnu::noinline]] static int convert_and_call(command_number command, Tcl_Interp *interp, int objc,
                                              Tcl_Obj *const objv[])
{
    if (check_word_count(interp, objc, objv, usage_of(command)) != TCL_OK)
        return TCL_ERROR;
    const word_kind *const kinds = kinds_of(command);
    Tcl_Obj converted[most_arguments];
    Tcl_Obj *words[1 + most_arguments];
    words[0] = objv[0];
    for (int i = 0; kinds[i] != word_end; ++i) {
        converted[i].bytes = nullptr; // tells the crash report that there is no text
        if (!convert_word(interp, objv[i + 1], i + 1, name_of(command), kinds[i], type_of(kinds[i]),
                          converted[i]))
            return TCL_ERROR;
        words[i + 1] = &converted[i];
    }
    return call(command, interp, objc, words);
}

int call_converted(command_number command, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    // Usually the word that is not ready is the first, a handle that a script has as text. That
    // case needs no stack frame either. The wrapper then looks at the type's cast list.
    const int type = *kinds_of(command) - word_handle;
    if (objc > 1 && type >= 0 && read_new_handle(objv[1], swig_types[type], swig_type_names[type]))
        return call(command, interp, objc, objv);
    return convert_and_call(command, interp, objc, objv);
}

int report_memory_fault(Tcl_Interp *interp, command_number command)
{
    char address[16];
    std::snprintf(address, sizeof address, "0x%08lx",
                  static_cast<unsigned long>(pending_fault.address));
    pending_fault.happened = false;
    const auto message =
        std::string{"in method '"} + name_of(command) + "', memory fault at " + address;
    swig_set_error_msg(interp, "SystemError", message.c_str());
    return TCL_ERROR;
}

} // namespace qxsh
