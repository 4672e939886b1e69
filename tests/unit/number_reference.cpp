// The board's conversions step by step; see number_reference.h.
#include "tests/unit/number_reference.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <limits>

namespace {

constexpr const char *type_error = "TypeError";
constexpr const char *overflow_error = "OverflowError";

std::string reading_as_int(Tcl_Obj *object)
{
    long value;
    if (Tcl_GetLongFromObj(nullptr, object, &value) != TCL_OK)
        return type_error;
    return std::to_string(value);
}

std::string reading_as_unsigned(Tcl_Obj *object, unsigned long greatest)
{
    long number;
    unsigned long value;
    if (Tcl_GetLongFromObj(nullptr, object, &number) == TCL_OK && number >= 0) {
        value = static_cast<unsigned long>(number);
    } else {
        int length;
        const char *const text = Tcl_GetStringFromObj(object, &length);
        if (text == nullptr || length < 1)
            return type_error;
        if (text[0] == '-')
            return overflow_error;
        char *end;
        errno = 0;
        value = std::strtoul(text, &end, 0);
        if (text[0] == '\0' || *end != '\0')
            return type_error;
        if (value == ULONG_MAX && errno == ERANGE)
            return overflow_error;
    }
    return value > greatest ? overflow_error : std::to_string(value);
}

std::string reading_as_unsigned_long_long(Tcl_Obj *object)
{
    long number;
    if (Tcl_GetLongFromObj(nullptr, object, &number) == TCL_OK)
        return std::to_string(static_cast<unsigned long>(number));
    int length;
    const char *const text = Tcl_GetStringFromObj(object, &length);
    if (text == nullptr || length < 1)
        return type_error;
    if (text[0] == '-')
        return overflow_error;
    char *end;
    errno = 0;
    const unsigned long long value = std::strtoull(text, &end, 0);
    if (text[0] == '\0' || *end != '\0')
        return type_error;
    if (value == ULLONG_MAX && errno == ERANGE)
        return overflow_error;
    return std::to_string(value);
}

std::string reading_by_tcl(Tcl_Interp *interp, Tcl_Obj *object)
{
    long value;
    if (Tcl_GetLongFromObj(interp, object, &value) == TCL_OK)
        return std::to_string(value);
    const std::string message = Tcl_GetStringResult(interp);
    return message.starts_with("expected integer but got") ? "no integer" : message;
}

} // namespace

number_row reference_readings(Tcl_Interp *interp, Tcl_Obj *object)
{
    number_row row;
    row.readings[as_int] = reading_as_int(object);
    row.readings[as_unsigned_int] = reading_as_unsigned(object, UINT_MAX);
    row.readings[as_unsigned_short] = reading_as_unsigned(object, USHRT_MAX);
    row.readings[as_unsigned_char] = reading_as_unsigned(object, UCHAR_MAX);
    row.readings[as_unsigned_long_long] = reading_as_unsigned_long_long(object);
    row.readings[as_tcl_long] = reading_by_tcl(interp, object);
    row.word = Tcl_GetString(object);
    return row;
}
