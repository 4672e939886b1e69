// One call of a command: its words, checked and converted in order, and its result. Every wrapper is
// written with this class; a failed step has already left the message that the script sees.
#pragma once

#include "runtime/type_registry.h"

#include <tcl.h>

namespace qxsh {

class command_words
{
public:
    /// `format` is the command's usage, e.g. "oo:qx_flow_add device_id p_flow ".
    command_words(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format)
        : interp_(interp), objc_(objc), objv_(objv), format_(format)
    {}

    /// Whether there are exactly `arguments` words behind the command's name.
    bool count(int arguments) const { return objc_ - 1 == arguments || miscounted(); }

    // Word `number` (from 1) as a number of the target's type.
    bool get(int number, int &value) const;
    bool get(int number, unsigned int &value) const;
    bool get(int number, unsigned short &value) const;
    bool get(int number, unsigned char &value) const;
    bool get(int number, unsigned long long &value) const;

    /// Word `number` as a handle of any type.
    bool get(int number, void *&pointer) const;

    /// Word `number` as a handle of `type`, which is the type of the pointer. "NULL" gives null.
    template <class Target> bool get(int number, Target *&pointer, swig_type_record *type) const
    {
        void *untyped;
        if (!get_pointer(number, untyped, type))
            return false;
        pointer = static_cast<Target *>(untyped);
        return true;
    }

    // The command's result; each returns TCL_OK.
    int none() const { return TCL_OK; }
    int int_result(int value) const;
    int unsigned_result(unsigned int value) const;
    /// The low 32 bits with their sign, as an unsigned 64-bit number: all that a command keeps of one.
    int low32_result(unsigned long long value) const;
    /// The low 16 bits of an SDK function's status.
    int status_result(unsigned int status) const;
    int pointer_result(void *pointer, swig_type_record *type) const;

private:
    bool miscounted() const;
    bool get_pointer(int number, void *&pointer, swig_type_record *type) const;
    bool refuse(int number, int code, const char *native_type) const;

    Tcl_Interp *interp_;
    int objc_;
    Tcl_Obj *const *objv_;
    const char *format_;
};

} // namespace qxsh
