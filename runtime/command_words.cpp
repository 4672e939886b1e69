// Conversion of a command's words and its messages; see command_words.h.
#include "runtime/command_words.h"

#include "runtime/errors.h"

#include <string>

namespace qxsh {

object_type converted_number = make_object_type("");

static const char *native_name(word_kind kind, wanted_type type)
{
    switch (kind) {
    case word_unsigned_char:
        return "unsigned char";
    case word_unsigned_short:
        return "unsigned short";
    case word_unsigned_int:
        return "unsigned int";
    case word_int:
        return "int";
    case word_unsigned_long_long:
        return "unsigned long long";
    case word_any_handle:
        return "void *";
    default:
        return type.expected->str;
    }
}

bool refuse_word(Tcl_Interp *interp, int number, const char *command, word_kind kind,
                 wanted_type type, int code)
{
    const auto message = std::string{"in method '"} + command + "', argument " +
                         std::to_string(number) + " of type '" + native_name(kind, type) + "'";
    swig_set_error_msg(interp, swig_error_type_name(code == SWIG_ERROR ? SWIG_TypeError : code),
                       message.c_str());
    return false;
}

// Converts the word to a number of the type that `read` returns.
template <class Number>
static int convert_number(int (*read)(Tcl_Interp *, Tcl_Obj *, Number *), Tcl_Obj *word,
                          Tcl_Obj &converted)
{
    Number value = 0;
    const int code = read(nullptr, word, &value);
    converted.typePtr = &converted_number;
    converted.internalRep.wideValue = static_cast<Tcl_WideInt>(value);
    return code;
}

static int convert(Tcl_Interp *interp, Tcl_Obj *word, word_kind kind, wanted_type type,
                   Tcl_Obj &converted)
{
    switch (kind) {
    case word_unsigned_char:
        return convert_number(swig_as_val_unsigned_char, word, converted);
    case word_unsigned_short:
        return convert_number(swig_as_val_unsigned_short, word, converted);
    case word_unsigned_int:
        return convert_number(swig_as_val_unsigned_int, word, converted);
    case word_int:
        return convert_number(swig_as_val_int, word, converted);
    case word_unsigned_long_long:
        return convert_number(swig_as_val_unsigned_long_long, word, converted);
    default:
        void *pointer;
        const int code = swig_convert_ptr(interp, word, &pointer, type.resolved, 0);
        if (code == SWIG_OK)
            become_handle(&converted, pointer, type.expected);
        // The cast lists are other modules' as well: what was expected may have changed.
        if (type.expected != nullptr)
            swig_expect_type(type.resolved, type.expected);
        return code;
    }
}

bool convert_word(Tcl_Interp *interp, Tcl_Obj *word, int number, const char *command,
                  word_kind kind, wanted_type type, Tcl_Obj &converted)
{
    const int code = convert(interp, word, kind, type, converted);
    return code == SWIG_OK || refuse_word(interp, number, command, kind, type, code);
}

} // namespace qxsh
