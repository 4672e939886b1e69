// Tcl for tests: interpreters, objects and words that are released when they go out of scope.
#pragma once

#include <gtest/gtest.h>
#include <tcl.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// A counted reference to an object.
class held_object
{
public:
    explicit held_object(Tcl_Obj *object) : object_(object)
    {
        if (object_ != nullptr)
            Tcl_IncrRefCount(object_);
    }
    explicit held_object(const std::string &text)
        : held_object(Tcl_NewStringObj(text.data(), static_cast<int>(text.size())))
    {}
    held_object(const held_object &other) : held_object(other.object_) {}
    held_object &operator=(held_object other)
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~held_object()
    {
        if (object_ != nullptr)
            Tcl_DecrRefCount(object_);
    }

    Tcl_Obj *get() const { return object_; }
    operator Tcl_Obj *() const { return object_; }
    std::string text() const { return Tcl_GetString(object_); }
    /// The name of the object's current type; empty for a pure string.
    std::string type() const { return object_->typePtr != nullptr ? object_->typePtr->name : ""; }

private:
    Tcl_Obj *object_;
};

/// Why a test that needs several threads is skipped if Tcl has none.
inline constexpr const char *no_threads = "this Tcl was built without threads";

/// An interpreter without Tcl's script library.
class interpreter
{
public:
    interpreter() : interp_(Tcl_CreateInterp()) {}
    ~interpreter() { Tcl_DeleteInterp(interp_); }
    interpreter(const interpreter &) = delete;
    interpreter &operator=(const interpreter &) = delete;

    operator Tcl_Interp *() const { return interp_; }

    int eval(const std::string &script)
    {
        return Tcl_EvalEx(interp_, script.data(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL);
    }
    /// Expects a script to succeed, and returns its result.
    std::string value(const std::string &script)
    {
        EXPECT_EQ(eval(script), TCL_OK) << script << ": " << result();
        return result();
    }
    /// Whether Tcl was built with threads; without, it treats all threads as one.
    bool has_threads() { return value("info exists tcl_platform(threaded)") == "1"; }

    /// Expects a script to fail, and returns its result.
    std::string error(const std::string &script)
    {
        EXPECT_EQ(eval(script), TCL_ERROR) << script << ": " << result();
        return result();
    }
    std::string result() const { return Tcl_GetStringResult(interp_); }
    /// The error code that a script would get from the current failure.
    std::string error_code() const
    {
        const held_object options{Tcl_GetReturnOptions(interp_, TCL_ERROR)};
        Tcl_Obj *code = nullptr;
        Tcl_DictObjGet(nullptr, options, held_object{"-errorcode"}, &code);
        return code != nullptr ? Tcl_GetString(code) : "(none)";
    }
    std::string variable(const char *name) const
    {
        const char *const value = Tcl_GetVar(interp_, name, TCL_GLOBAL_ONLY);
        return value != nullptr ? value : "(unset)";
    }

private:
    Tcl_Interp *interp_;
};

/// The words of one command, its name first, as a wrapper gets them.
class word_list
{
public:
    word_list(std::initializer_list<std::string> texts)
    {
        for (const auto &text : texts)
            add(held_object{text});
    }

    void add(const held_object &word)
    {
        words_.push_back(word);
        objects_.push_back(word.get());
    }
    int count() const { return static_cast<int>(objects_.size()); }
    Tcl_Obj *const *data() const { return objects_.data(); }
    const held_object &operator[](std::size_t number) const { return words_[number]; }

private:
    std::vector<held_object> words_;
    std::vector<Tcl_Obj *> objects_;
};
