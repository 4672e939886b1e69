// Tcl for the targets: an interpreter, objects, and the texts that scripts can contain.
#pragma once

#include <tcl.h>

#include <string>
#include <string_view>
#include <utility>

namespace fuzz {

/// Initialises Tcl, fills the stub table and returns an interpreter that is never deleted. Ends the
/// program on failure.
Tcl_Interp *start_tcl(const char *program);

/// Deletes all commands but the global ones in `list` and the namespace of `info`, so that a
/// hostile word cannot access files, processes or timers, or loop.
void keep_commands(Tcl_Interp *interp, std::string_view list);

/// Bytes as the text of a script word: Tcl encodes a null byte as two bytes.
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

/// Has Tcl read the object as another type, which changes its internal representation.
void shimmer(Tcl_Obj *object, unsigned way);
constexpr unsigned shimmer_ways = 6; ///< way 0 does nothing

} // namespace fuzz
