// One call of a command, reading its words as wrappers do: a word that is not ready is converted
// first. Errors leave the same results.
#pragma once

#include "runtime/arguments.h"
#include "runtime/command_words.h"
#include "runtime/results.h"

#include <gtest/gtest.h>

#include <string>

class command_call
{
public:
    command_call(Tcl_Interp *interp, int objc, Tcl_Obj *const *objv, const char *usage)
        : interp_(interp), objc_(objc), objv_(objv), usage_(usage)
    {
        const std::string text{usage};
        const auto begin = text.find(':') + 1;
        name_ = text.substr(begin, text.find(' ') - begin);
    }

    bool count() const { return qxsh::check_word_count(interp_, objc_, objv_, usage_) == TCL_OK; }

    template <class Number> bool get(int number, Number &value) const
    {
        Number found;
        if (!qxsh::ready(objv_[number], found)) {
            Tcl_Obj converted;
            if (!convert(number, kind_of(value), {}, converted))
                return false;
            EXPECT_TRUE(qxsh::ready(&converted, found));
        }
        value = found;
        return true;
    }

    bool get(int number, void *&pointer) const
    {
        if (qxsh::ready(objv_[number], pointer))
            return true;
        Tcl_Obj converted;
        return convert(number, qxsh::word_any_handle, {}, converted) &&
               qxsh::ready(&converted, pointer);
    }

    bool get(int number, void *&pointer, swig_type_record *type) const
    {
        swig_type_record expected = expected_record(type);
        if (qxsh::ready(objv_[number], pointer, expected))
            return true;
        Tcl_Obj converted;
        return convert(number, qxsh::word_handle, {type, &expected}, converted) &&
               qxsh::ready(&converted, pointer, expected);
    }

    Tcl_Interp *interp() const { return interp_; }

private:
    static qxsh::word_kind kind_of(unsigned char) { return qxsh::word_unsigned_char; }
    static qxsh::word_kind kind_of(unsigned short) { return qxsh::word_unsigned_short; }
    static qxsh::word_kind kind_of(unsigned int) { return qxsh::word_unsigned_int; }
    static qxsh::word_kind kind_of(int) { return qxsh::word_int; }
    static qxsh::word_kind kind_of(unsigned long long) { return qxsh::word_unsigned_long_long; }

    // The type as a module that links it expects it.
    static swig_type_record expected_record(swig_type_record *type)
    {
        swig_type_record expected{type->name, type->str, nullptr, nullptr, nullptr, 0};
        swig_expect_type(type, &expected);
        return expected;
    }

    bool convert(int number, qxsh::word_kind kind, qxsh::wanted_type type, Tcl_Obj &to) const
    {
        return qxsh::convert_word(interp_, objv_[number], number, name_.c_str(), kind, type, to);
    }

    Tcl_Interp *interp_;
    int objc_;
    Tcl_Obj *const *objv_;
    const char *usage_;
    std::string name_;
};
