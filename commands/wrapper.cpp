// The slow ways of wrappers; see wrapper.h.
#include "commands/wrapper.h"

#include "runtime/arguments.h"
#include "runtime/errors.h"

#include <cstdio>

namespace qxsh {

// The type of a handle word, or null for the other kinds.
static swig_type_record *type_of(word_kind kind)
{
    return kind >= word_handle ? swig_types[kind - word_handle] : nullptr;
}

// Lets every handle word that is plain text remember what it stands for. Gives whether there was
// one and as many words as kinds, so that it makes sense to look at the words again; nothing else
// happens to them.
static inline bool read_plain_handles(Tcl_Obj *const *word, Tcl_Obj *const *end,
                                      const word_kind *kind)
{
    bool any = false;
    for (; *kind != word_end; ++kind, ++word) {
        if (word == end)
            return false;
        if (*kind < word_handle)
            continue;
        auto *const type = swig_types[*kind - word_handle];
        if ((*word)->typePtr == &handle_type && (*word)->internalRep.twoPtrValue.ptr2 == type)
            continue;
        if (!read_plain_handle(*word, type))
            return false;
        any = true;
    }
    return any && word == end;
}

[[gnu::noinline]] static int convert_and_call(Tcl_ObjCmdProc *wrapper, Tcl_Interp *interp,
                                              int objc, Tcl_Obj *const objv[], const char *usage,
                                              const word_kind *kinds)
{
    if (check_word_count(interp, objc, objv, usage) != TCL_OK)
        return TCL_ERROR;
    Tcl_Obj converted[most_arguments];
    Tcl_Obj *words[1 + most_arguments];
    words[0] = objv[0];
    for (int i = 0; kinds[i] != word_end; ++i) {
        converted[i].bytes = nullptr; // for who looks at the words of a call: there is no text
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
    if (read_plain_handles(objv + 1, objv + objc, kinds))
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
