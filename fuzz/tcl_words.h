// What the targets hold of Tcl: an interpreter, objects, and texts as scripts can have them.
#pragma once

#include <tcl.h>

#include <string>
#include <string_view>
#include <utility>

namespace fuzz {

/// Readies Tcl and fills the stub table; gives an interpreter for the life of the process. Ends the
/// program if that fails.
Tcl_Interp *start_tcl(const char *program);

/// Leaves the interpreter only these global commands and the namespace of `info`: what a hostile
/// word may evaluate reaches no file, no process, no timer and no loop.
void keep_commands(Tcl_Interp *interp, std::string_view list);

/// Bytes as the text of a script word: Tcl writes a null byte as two others.
std::string script_text(std::string_view bytes);

/// A counted reference to an object.
class held
{
public:
    explicit held(Tcl_Obj *object) : object_(object) { Tcl_IncrRefCount(object_); }
    explicit held(std::string_view text)
        : held(Tcl_NewStringObj(text.data(), static_cast<int>(text.size())))
    {}
    held(const held &other) : held(other.object_) {}
    held &operator=(held other)
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~held() { Tcl_DecrRefCount(object_); }

    operator Tcl_Obj *() const { return object_; }
    std::string_view text() const
    {
        int length;
        const char *const bytes = Tcl_GetStringFromObj(object_, &length);
        return {bytes, static_cast<std::size_t>(length)};
    }

private:
    Tcl_Obj *object_;
};

/// Lets Tcl read the object's text in one of several ways, so that it remembers something else.
void shimmer(Tcl_Obj *object, unsigned way);
constexpr unsigned shimmer_ways = 6; ///< way 0 does nothing

} // namespace fuzz
