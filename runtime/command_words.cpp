// Conversion of a command's words, its error messages and its result; see command_words.h.
#include "runtime/command_words.h"

#include "runtime/arguments.h"
#include "runtime/errors.h"
#include "runtime/known_objects.h"
#include "runtime/object_command.h"

#include <cstring>
#include <string>

namespace qxsh {

bool count_words(Tcl_Interp *interp, int objc, Tcl_Obj *const words[], const char *format)
{
    return check_word_count(interp, objc, words, format) == TCL_OK;
}

// The usage holds the command's name, between the colon and the first blank.
static std::string name_in(const char *format)
{
    const char *const name = std::strchr(format, ':') + 1;
    return {name, std::strcspn(name, " ")};
}

static bool refuse(Tcl_Interp *interp, int number, const char *format, int code,
                   const char *native_type)
{
    const auto message = "in method '" + name_in(format) + "', argument " +
                         std::to_string(number) + " of type '" + native_type + "'";
    swig_set_error_msg(interp, swig_error_type_name(code == SWIG_ERROR ? SWIG_TypeError : code),
                       message.c_str());
    return false;
}

bool convert_word(Tcl_Interp *interp, Tcl_Obj *const words[], int number, const char *format,
                  void **pointer, swig_type_record *type)
{
    if (type != nullptr && read_plain_handle(words[number], type, pointer))
        return true;
    const int code = swig_convert_ptr(interp, words[number], pointer, type, 0);
    return code == SWIG_OK ||
           refuse(interp, number, format, code, type != nullptr ? type->str : "void *");
}

static int convert(Tcl_Obj *word, int *value) { return swig_as_val_int(nullptr, word, value); }
static int convert(Tcl_Obj *word, unsigned int *value)
{
    return swig_as_val_unsigned_int(nullptr, word, value);
}
static int convert(Tcl_Obj *word, unsigned short *value)
{
    return swig_as_val_unsigned_short(nullptr, word, value);
}
static int convert(Tcl_Obj *word, unsigned char *value)
{
    return swig_as_val_unsigned_char(nullptr, word, value);
}
static int convert(Tcl_Obj *word, unsigned long long *value)
{
    return swig_as_val_unsigned_long_long(nullptr, word, value);
}

template <class Number> constexpr const char *native_name = nullptr;
template <> constexpr const char *native_name<int> = "int";
template <> constexpr const char *native_name<unsigned int> = "unsigned int";
template <> constexpr const char *native_name<unsigned short> = "unsigned short";
template <> constexpr const char *native_name<unsigned char> = "unsigned char";
template <> constexpr const char *native_name<unsigned long long> = "unsigned long long";

template <class Number>
bool convert_word(Tcl_Interp *interp, Tcl_Obj *const words[], int number, const char *format,
                  Number &value)
{
    const int code = convert(words[number], &value);
    return code == SWIG_OK || refuse(interp, number, format, code, native_name<Number>);
}

using words_array = Tcl_Obj *const[];
template bool convert_word(Tcl_Interp *, words_array, int, const char *, int &);
template bool convert_word(Tcl_Interp *, words_array, int, const char *, unsigned int &);
template bool convert_word(Tcl_Interp *, words_array, int, const char *, unsigned short &);
template bool convert_word(Tcl_Interp *, words_array, int, const char *, unsigned char &);
template bool convert_word(Tcl_Interp *, words_array, int, const char *, unsigned long long &);

// The interpreter's own result object, if it is as fresh as Tcl leaves it: filling it is cheaper
// than a new object. Its text is Tcl's shared empty one and need not be freed.
static inline Tcl_Obj *fresh_result(Tcl_Interp *interp)
{
    Tcl_Obj *const result = Tcl_GetObjResult(interp);
    if (result->refCount > 1 || result->typePtr != nullptr || result->bytes != known.empty_text)
        return nullptr;
    result->bytes = nullptr;
    return result;
}

int set_int_result(Tcl_Interp *interp, int value)
{
    if (Tcl_Obj *const result = fresh_result(interp); result != nullptr) {
        result->internalRep.longValue = value;
        result->typePtr = known.integer_type;
    } else {
        Tcl_SetObjResult(interp, swig_from_int(value));
    }
    return TCL_OK;
}

int set_great_result(Tcl_Interp *interp, unsigned int value)
{
    constexpr int digits = 10; // of every 32-bit number beyond the integer objects
    if (Tcl_Obj *const result = fresh_result(interp); result != nullptr) {
        char *const text = Tcl_Alloc(digits + 1);
        for (int i = digits; i-- > 0; value /= 10)
            text[i] = static_cast<char>('0' + value % 10);
        text[digits] = '\0';
        result->bytes = text;
        result->length = digits;
    } else {
        Tcl_SetObjResult(interp, swig_from_unsigned_long(value));
    }
    return TCL_OK;
}

int set_low32_result(Tcl_Interp *interp, unsigned long long value)
{
    // The sign is meant: 2^31 gives 18446744071562067968.
    const auto widened = static_cast<long long>(static_cast<std::int32_t>(value));
    Tcl_SetObjResult(interp,
                     swig_from_unsigned_long_long(static_cast<unsigned long long>(widened)));
    return TCL_OK;
}

int set_pointer_result(Tcl_Interp *interp, void *pointer, swig_type_record *type)
{
    Tcl_Obj *result = nullptr;
    if (has_handle(pointer) && type->client_data == nullptr)
        result = fresh_result(interp);
    if (result != nullptr)
        become_handle(result, pointer, type);
    else
        Tcl_SetObjResult(interp, swig_new_instance_obj(interp, pointer, type, 0));
    return TCL_OK;
}

} // namespace qxsh
