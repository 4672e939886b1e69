// The format language of commands; see arguments.h.
#include "runtime/arguments.h"

#include "runtime/constants.h"
#include "runtime/handle.h"
#include "runtime/numbers.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

// The targets of a call; without an argument list, every letter has a null target.
class targets
{
public:
    explicit targets(va_list *list) : list_(list) {}

    void *next() { return list_ != nullptr ? va_arg(*list_, void *) : nullptr; }

private:
    va_list *list_;
};

bool store_long(Tcl_Interp *interp, Tcl_Obj *word, char letter, void *target)
{
    std::int32_t value;
    if (!qxsh::long32_from_obj(interp, word, value))
        return false;
    switch (letter) {
    case 'i':
        *static_cast<int *>(target) = value;
        break;
    case 'l':
        *static_cast<long *>(target) = value;
        break;
    case 'h':
        *static_cast<short *>(target) = static_cast<short>(value);
        break;
    default:
        *static_cast<unsigned char *>(target) = static_cast<unsigned char>(value);
        break;
    }
    return true;
}

bool store_double(Tcl_Interp *interp, Tcl_Obj *word, char letter, void *target)
{
    double value;
    if (Tcl_GetDoubleFromObj(interp, word, &value) != TCL_OK)
        return false;
    if (letter == 'f')
        *static_cast<float *>(target) = static_cast<float>(value);
    else
        *static_cast<double *>(target) = value;
    return true;
}

// Stores one word. Returns false with the message of a failed number, or with none.
bool store_word(Tcl_Interp *interp, Tcl_Obj *word, char letter, void *target, int *length,
                swig_type_record *type)
{
    switch (letter) {
    case 'i':
    case 'l':
    case 'h':
    case 'b':
        return store_long(interp, word, letter, target);
    case 'f':
    case 'd':
        return store_double(interp, word, letter, target);
    case 's':
        *static_cast<const char **>(target) = Tcl_GetStringFromObj(word, length);
        return true;
    case 'c':
        *static_cast<char *>(target) = Tcl_GetString(word)[0];
        return true;
    case 'o':
        *static_cast<Tcl_Obj **>(target) = word;
        return true;
    case 'p':
        return swig_convert_ptr(interp, word, static_cast<void **>(target), type, 0) == SWIG_OK;
    default:
        return true;
    }
}

int report(Tcl_Interp *interp, const char *format, int argument)
{
    const char *tail = std::strchr(format, ':');
    if (tail == nullptr)
        tail = std::strchr(format, ';');
    char number[16];
    std::snprintf(number, sizeof number, "%d", argument + 1);
    Tcl_AppendResult(interp, tail != nullptr ? tail : "", " argument ", number, nullptr);
    return TCL_ERROR;
}

int report(Tcl_Interp *interp, const char *message, const char *format, int argument)
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message, -1));
    return report(interp, format, argument);
}

int parse_words(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format,
                targets target_list)
{
    int argument = 0;
    bool optional = false;
    const char *letter = format;
    for (; *letter != '\0' && *letter != ':' && *letter != ';'; ++letter) {
        if (*letter == '|') {
            optional = true;
            continue;
        }
        if (argument >= objc - 1) {
            if (optional)
                return TCL_OK;
            return report(interp, "Wrong number of arguments ", format, argument);
        }
        const char kind = static_cast<char>(std::tolower(static_cast<unsigned char>(*letter)));
        void *const target = target_list.next();
        // A null target has no type or length behind it, and a "#" after it is a letter of its own.
        if (target != nullptr) {
            Tcl_Obj *word = objv[argument + 1];
            if (kind != *letter)
                word = qxsh::constant_for(word);
            swig_type_record *type = nullptr;
            int *length = nullptr;
            if (kind == 'p')
                type = static_cast<swig_type_record *>(target_list.next());
            if (kind == 's' && letter[1] == '#') {
                length = static_cast<int *>(target_list.next());
                ++letter;
            }
            if (!store_word(interp, word, kind, target, length, type))
                return report(interp, format, argument);
        }
        ++argument;
    }
    if (*letter != ';' && objc - 1 > argument)
        return report(interp, "Wrong # args.", format, argument);
    return TCL_OK;
}

} // namespace

int swig_get_args(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format, ...)
{
    va_list list;
    va_start(list, format);
    const int status = parse_words(interp, objc, objv, format, targets{&list});
    va_end(list);
    return status;
}

int qxsh::check_word_count(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format)
{
    return parse_words(interp, objc, objv, format, targets{nullptr});
}
