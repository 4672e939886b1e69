// The slow paths of wrappers; see wrapper.h.
#include "commands/wrapper.h"

#include "runtime/arguments.h"
#include "runtime/errors.h"

#include <cstdio>

namespace qxsh {

[[gnu::noinline]] static int convert_and_call(Tcl_ObjCmdProc *wrapper, Tcl_Interp *interp, int objc,
                                              Tcl_Obj *const objv[], const char *usage,
                                              const word_kind *kinds)
{
    if (check_word_count(interp, objc, objv, usage) != TCL_OK)
        return TCL_ERROR;
    Tcl_Obj converted[most_arguments];
    Tcl_Obj *words[1 + most_arguments];
    words[0] = objv[0];
    for (int i = 0; kinds[i] != word_end; ++i) {
        converted[i].bytes = nullptr; // tells the crash report that there is no text
        if (!convert_word(interp, objv[i + 1], i + 1, usage, kinds[i], type_of(kinds[i]),
                          converted[i]))
            return TCL_ERROR;
        words[i + 1] = &converted[i];
    }
    return wrapper(nullptr, interp, objc, words);
}

int call_converted(Tcl_ObjCmdProc *wrapper, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[],
                   const char *usage, const word_kind *kinds)
{
    // Usually the word that is not ready is the first, a handle that a script has as text. That
    // case needs no stack frame either. The wrapper then looks at the type's cast list.
    const int type = kinds[0] - word_handle;
    if (objc > 1 && type >= 0 && read_new_handle(objv[1], swig_types[type], swig_type_names[type]))
        return wrapper(nullptr, interp, objc, objv);
    return convert_and_call(wrapper, interp, objc, objv, usage, kinds);
}

int report_memory_fault(Tcl_Interp *interp, const char *usage)
{
    char address[16];
    std::snprintf(address, sizeof address, "0x%08lx",
                  static_cast<unsigned long>(pending_fault.address));
    pending_fault.happened = false;
    const auto message = "in method '" + method_name(usage) + "', memory fault at " + address;
    swig_set_error_msg(interp, "SystemError", message.c_str());
    return TCL_ERROR;
}

} // namespace qxsh
