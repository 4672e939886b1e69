// Our converters in the words of the number table; see number_readings.h.
#include "tests/unit/number_readings.h"

#include "runtime/errors.h"
#include "runtime/numbers.h"

#include <gtest/gtest.h>

namespace {

template <class Number> using converter = int (*)(Tcl_Interp *, Tcl_Obj *, Number *);

template <class Number>
std::string reading(Tcl_Interp *interp, converter<Number> convert, Tcl_Obj *object)
{
    Tcl_SetResult(interp, const_cast<char *>("untouched"), TCL_STATIC);
    constexpr Number untouched = 77;
    Number value = untouched;
    const int code = convert(interp, object, &value);
    EXPECT_EQ(convert(interp, object, nullptr), code);
    EXPECT_STREQ(Tcl_GetStringResult(interp), "untouched");
    if (code == SWIG_OK)
        return std::to_string(value);
    EXPECT_EQ(value, untouched);
    return swig_error_type_name(code);
}

std::string reading_as_tcl_long(Tcl_Interp *interp, Tcl_Obj *object)
{
    std::int32_t value;
    if (qxsh::long32_from_obj(interp, object, value))
        return std::to_string(value);
    const std::string message = Tcl_GetStringResult(interp);
    return message.starts_with("expected integer but got") ? "no integer" : message;
}

} // namespace

number_row converter_readings(Tcl_Interp *interp, Tcl_Obj *object)
{
    number_row row;
    row.readings[as_int] = reading(interp, swig_as_val_int, object);
    row.readings[as_unsigned_int] = reading(interp, swig_as_val_unsigned_int, object);
    row.readings[as_unsigned_short] = reading(interp, swig_as_val_unsigned_short, object);
    row.readings[as_unsigned_char] = reading(interp, swig_as_val_unsigned_char, object);
    row.readings[as_unsigned_long_long] = reading(interp, swig_as_val_unsigned_long_long, object);
    row.readings[as_tcl_long] = reading_as_tcl_long(interp, object);
    // On the board long and int are alike.
    EXPECT_EQ(reading(interp, swig_as_val_long, object), row.readings[as_int]);
    EXPECT_EQ(reading(interp, swig_as_val_unsigned_long, object), row.readings[as_unsigned_int]);
    row.word = Tcl_GetString(object);
    return row;
}
