// Error categories and messages; see errors.h.
#include "runtime/errors.h"

#include "runtime/numbers.h"

const char *swig_error_type_name(int code)
{
    switch (code) {
    case SWIG_IOError:
        return "IOError";
    case SWIG_RuntimeError:
        return "RuntimeError";
    case SWIG_IndexError:
        return "IndexError";
    case SWIG_TypeError:
        return "TypeError";
    case SWIG_DivisionByZero:
        return "ZeroDivisionError";
    case SWIG_OverflowError:
        return "OverflowError";
    case SWIG_SyntaxError:
        return "SyntaxError";
    case SWIG_ValueError:
        return "ValueError";
    case SWIG_SystemError:
        return "SystemError";
    case SWIG_AttributeError:
        return "AttributeError";
    case SWIG_MemoryError:
        return "MemoryError";
    default:
        return "RuntimeError";
    }
}

void swig_set_error_msg(Tcl_Interp *interp, const char *category, const char *message)
{
    Tcl_ResetResult(interp);
    Tcl_SetErrorCode(interp, "SWIG", category, nullptr);
    Tcl_AppendResult(interp, category, " ", message, nullptr);
}
