// One call of a command: its words, checked and converted in order, and its result. Every wrapper
// is written with this class; a failed step has already left the message that the script sees. What
// nearly every call needs (a handle that is remembered, a small number) is decided inline; the rest
// is in command_words.cpp. The object itself never leaves the registers.
#pragma once

#include "runtime/handle.h"
#include "runtime/known_objects.h"
#include "runtime/numbers.h"

#include <tcl.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace qxsh {

// The slow halves of the steps below; `words` are the command's, `format` its usage.
bool count_words(Tcl_Interp *interp, int objc, Tcl_Obj *const words[], const char *format);
bool convert_word(Tcl_Interp *interp, Tcl_Obj *const words[], int number, const char *format,
                  void **pointer, swig_type_record *type);
template <class Number>
bool convert_word(Tcl_Interp *interp, Tcl_Obj *const words[], int number, const char *format,
                  Number &value);

// Results; each returns TCL_OK.
int set_int_result(Tcl_Interp *interp, int value);
int set_great_result(Tcl_Interp *interp, unsigned int value); ///< beyond the integer objects
int set_low32_result(Tcl_Interp *interp, unsigned long long value);
/// The handle of a pointer, whose type is one of this module's.
int set_pointer_result(Tcl_Interp *interp, void *pointer, swig_type_record *type);

class command_words
{
public:
    /// `format` is the command's usage, e.g. "oo:qx_flow_add device_id p_flow ".
    command_words(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format)
        : interp_(interp), objc_(objc), objv_(objv), format_(format)
    {}

    /// Whether there are exactly `arguments` words behind the command's name.
    bool count(int arguments) const
    {
        return objc_ - 1 == arguments || count_words(interp_, objc_, objv_, format_);
    }

    /// Word `number` (from 1) as a number of the target's type.
    template <class Number> bool get(int number, Number &value) const
    {
        using limits = std::numeric_limits<Number>;
        const Tcl_Obj *const word = objv_[number];
        if (word->typePtr == known.integer_type) {
            // Beyond 2147483647 a board has no integer that is not negative.
            constexpr auto greatest = std::min<unsigned long long>(limits::max(), INT32_MAX);
            const auto integer = static_cast<unsigned long>(word->internalRep.longValue);
            if (integer <= greatest) {
                value = static_cast<Number>(integer);
                return true;
            }
        }
        return convert_word(interp_, objv_, number, format_, value);
    }

    /// Word `number` as a handle of any type.
    bool get(int number, void *&pointer) const
    {
        const Tcl_Obj *const word = objv_[number];
        if (word->typePtr == &handle_type) {
            pointer = word->internalRep.twoPtrValue.ptr1;
            return true;
        }
        return convert_word(interp_, objv_, number, format_, &pointer, nullptr);
    }

    /// Word `number` as a handle of `type`, which is the type of the pointer. "NULL" gives null.
    template <class Target> bool get(int number, Target *&pointer, swig_type_record *type) const
    {
        void *untyped;
        if (!remembers(objv_[number], type, &untyped) &&
            !convert_word(interp_, objv_, number, format_, &untyped, type))
            return false;
        pointer = static_cast<Target *>(untyped);
        return true;
    }

    // The command's result; each returns TCL_OK.
    int none() const { return TCL_OK; }
    int int_result(int value) const { return set_int_result(interp_, value); }
    int unsigned_result(unsigned int value) const
    {
        if (value <= greatest_integer_result)
            return set_int_result(interp_, static_cast<int>(value));
        return set_great_result(interp_, value);
    }
    /// The low 32 bits with their sign, as an unsigned 64-bit number: all that a command keeps of
    /// one.
    int low32_result(unsigned long long value) const { return set_low32_result(interp_, value); }
    /// The low 16 bits of an SDK function's status.
    int status_result(unsigned int status) const { return unsigned_result(status & 0xffff); }
    int pointer_result(void *pointer, swig_type_record *type) const
    {
        return set_pointer_result(interp_, pointer, type);
    }

private:
    Tcl_Interp *interp_;
    int objc_;
    Tcl_Obj *const *objv_;
    const char *format_;
};

} // namespace qxsh
