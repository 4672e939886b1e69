// Number conversion with the board's 32-bit long; see numbers.h.
#include "runtime/numbers.h"

#include "runtime/known_objects.h"

#include <charconv>
#include <limits>
#include <string_view>

namespace {

// A 32-bit long accepts every integer whose magnitude fits in 32 bits, with either sign.
constexpr Tcl_WideInt greatest = 4294967295;

bool wrap(Tcl_WideInt wide, std::int32_t &value)
{
    if (wide < -greatest || wide > greatest)
        return false;
    value = static_cast<std::int32_t>(static_cast<std::uint32_t>(wide));
    return true;
}

void report_too_large(Tcl_Interp *interp)
{
    static constexpr const char *message = "integer value too large to represent";
    if (interp == nullptr)
        return;
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message, -1));
    Tcl_SetErrorCode(interp, "ARITH", "IOVERFLOW", message, nullptr);
}

bool is_blank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// strtoul with base 0 on a whole text, for any width: blanks, a sign, then 0x, 0 (octal) or
// decimal.
template <class Unsigned> int parse(std::string_view text, Unsigned &value)
{
    const char *position = text.data();
    const char *const end = position + text.size();
    while (position != end && is_blank(*position))
        ++position;
    const bool negative = position != end && *position == '-';
    if (position != end && (*position == '-' || *position == '+'))
        ++position;
    int base = 10;
    if (position != end && *position == '0') {
        const bool hexadecimal = end - position > 2 && (position[1] | 0x20) == 'x';
        base = hexadecimal ? 16 : 8;
        position += hexadecimal ? 2 : 0;
    }
    Unsigned magnitude;
    const auto [rest, error] = std::from_chars(position, end, magnitude, base);
    if (error == std::errc::invalid_argument || rest != end)
        return SWIG_TypeError;
    if (error == std::errc::result_out_of_range)
        return SWIG_OverflowError;
    value = negative ? Unsigned{0} - magnitude : magnitude;
    return SWIG_OK;
}

// The second reading of an unsigned word, by its text.
template <class Unsigned> int parse_text(Tcl_Obj *object, Unsigned &value)
{
    int length;
    const char *const text = Tcl_GetStringFromObj(object, &length);
    if (text == nullptr || length < 1)
        return SWIG_TypeError;
    if (text[0] == '-')
        return SWIG_OverflowError;
    return parse({text, static_cast<std::size_t>(length)}, value);
}

int unsigned32_from_obj(Tcl_Obj *object, std::uint32_t &value)
{
    std::int32_t number;
    if (qxsh::long32_from_obj(nullptr, object, number) && number >= 0) {
        value = static_cast<std::uint32_t>(number);
        return SWIG_OK;
    }
    return parse_text(object, value);
}

template <class Narrow> int narrow_from_obj(Tcl_Obj *object, Narrow *value)
{
    std::uint32_t number;
    const int code = unsigned32_from_obj(object, number);
    if (code != SWIG_OK)
        return code;
    if (number > std::numeric_limits<Narrow>::max())
        return SWIG_OverflowError;
    if (value != nullptr)
        *value = static_cast<Narrow>(number);
    return SWIG_OK;
}

template <class Signed> int signed_from_obj(Tcl_Obj *object, Signed *value)
{
    std::int32_t number;
    if (!qxsh::long32_from_obj(nullptr, object, number))
        return SWIG_TypeError;
    if (value != nullptr)
        *value = number;
    return SWIG_OK;
}

template <class Number> Tcl_Obj *number_object(Number value)
{
    if (value <= qxsh::greatest_integer_result)
        return Tcl_NewIntObj(static_cast<int>(value));
    char digits[24];
    const char *const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return Tcl_NewStringObj(digits, static_cast<int>(end - digits));
}

} // namespace

bool qxsh::long32_from_obj(Tcl_Interp *interp, Tcl_Obj *object, std::int32_t &value)
{
    using qxsh::known;
    if (object->typePtr == known.integer_type && wrap(object->internalRep.longValue, value))
        return true;
    qxsh::learn_known_objects();
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(interp, object, &wide) != TCL_OK)
        return false;
    // Tcl also returns the low 64 bits of some greater numbers; those have a different type.
    const bool is_wide =
        object->typePtr == known.integer_type || object->typePtr == known.wide_type;
    if (is_wide && wrap(wide, value))
        return true;
    report_too_large(interp);
    return false;
}

int swig_as_val_long(Tcl_Interp *, Tcl_Obj *object, long *value)
{
    return signed_from_obj(object, value);
}

int swig_as_val_int(Tcl_Interp *, Tcl_Obj *object, int *value)
{
    return signed_from_obj(object, value);
}

int swig_as_val_unsigned_long(Tcl_Interp *, Tcl_Obj *object, unsigned long *value)
{
    std::uint32_t number;
    const int code = unsigned32_from_obj(object, number);
    if (code == SWIG_OK && value != nullptr)
        *value = number;
    return code;
}

int swig_as_val_unsigned_int(Tcl_Interp *, Tcl_Obj *object, unsigned int *value)
{
    return narrow_from_obj(object, value);
}

int swig_as_val_unsigned_short(Tcl_Interp *, Tcl_Obj *object, unsigned short *value)
{
    return narrow_from_obj(object, value);
}

int swig_as_val_unsigned_char(Tcl_Interp *, Tcl_Obj *object, unsigned char *value)
{
    return narrow_from_obj(object, value);
}

int swig_as_val_unsigned_long_long(Tcl_Interp *, Tcl_Obj *object, unsigned long long *value)
{
    std::int32_t low;
    unsigned long long number;
    if (qxsh::long32_from_obj(nullptr, object, low)) {
        // Intended: a negative number is taken as 32 unsigned bits, not rejected.
        number = static_cast<std::uint32_t>(low);
    } else if (const int code = parse_text(object, number); code != SWIG_OK) {
        return code;
    }
    if (value != nullptr)
        *value = number;
    return SWIG_OK;
}

Tcl_Obj *swig_from_int(int value)
{
    return Tcl_NewIntObj(value);
}
Tcl_Obj *swig_from_unsigned_long(unsigned long value)
{
    return number_object(value);
}
Tcl_Obj *swig_from_unsigned_long_long(unsigned long long value)
{
    return number_object(value);
}
