// Conversion of a command's words, and its error messages; see command_words.h.
#include "runtime/command_words.h"

#include "runtime/arguments.h"
#include "runtime/errors.h"
#include "runtime/handle.h"
#include "runtime/numbers.h"
#include "runtime/object_command.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace qxsh {

bool command_words::miscounted() const
{
    return check_word_count(interp_, objc_, objv_, format_) == TCL_OK;
}

// The usage holds the command's name, between the colon and the first blank.
static std::string name_in(const char *format)
{
    const char *const name = std::strchr(format, ':') + 1;
    return {name, std::strcspn(name, " ")};
}

bool command_words::refuse(int number, int code, const char *native_type) const
{
    const auto message = "in method '" + name_in(format_) + "', argument " +
                         std::to_string(number) + " of type '" + native_type + "'";
    swig_set_error_msg(interp_, swig_error_type_name(code == SWIG_ERROR ? SWIG_TypeError : code),
                       message.c_str());
    return false;
}

bool command_words::get(int number, int &value) const
{
    const int code = swig_as_val_int(nullptr, objv_[number], &value);
    return code == SWIG_OK || refuse(number, code, "int");
}

bool command_words::get(int number, unsigned int &value) const
{
    const int code = swig_as_val_unsigned_int(nullptr, objv_[number], &value);
    return code == SWIG_OK || refuse(number, code, "unsigned int");
}

bool command_words::get(int number, unsigned short &value) const
{
    const int code = swig_as_val_unsigned_short(nullptr, objv_[number], &value);
    return code == SWIG_OK || refuse(number, code, "unsigned short");
}

bool command_words::get(int number, unsigned char &value) const
{
    const int code = swig_as_val_unsigned_char(nullptr, objv_[number], &value);
    return code == SWIG_OK || refuse(number, code, "unsigned char");
}

bool command_words::get(int number, unsigned long long &value) const
{
    const int code = swig_as_val_unsigned_long_long(nullptr, objv_[number], &value);
    return code == SWIG_OK || refuse(number, code, "unsigned long long");
}

bool command_words::get(int number, void *&pointer) const
{
    const int code = swig_convert_ptr(interp_, objv_[number], &pointer, nullptr, 0);
    return code == SWIG_OK || refuse(number, code, "void *");
}

bool command_words::get_pointer(int number, void *&pointer, swig_type_record *type) const
{
    const int code = swig_convert_ptr(interp_, objv_[number], &pointer, type, 0);
    return code == SWIG_OK || refuse(number, code, type->str);
}

int command_words::int_result(int value) const
{
    Tcl_SetObjResult(interp_, swig_from_int(value));
    return TCL_OK;
}

int command_words::unsigned_result(unsigned int value) const
{
    Tcl_SetObjResult(interp_, swig_from_unsigned_long(value));
    return TCL_OK;
}

int command_words::low32_result(unsigned long long value) const
{
    // The sign is meant: 2^31 gives 18446744071562067968.
    const auto widened = static_cast<long long>(static_cast<std::int32_t>(value));
    Tcl_SetObjResult(interp_, swig_from_unsigned_long_long(static_cast<unsigned long long>(widened)));
    return TCL_OK;
}

int command_words::status_result(unsigned int status) const
{
    return unsigned_result(status & 0xffff);
}

int command_words::pointer_result(void *pointer, swig_type_record *type) const
{
    Tcl_SetObjResult(interp_, swig_new_instance_obj(interp_, pointer, type, 0));
    return TCL_OK;
}

} // namespace qxsh
