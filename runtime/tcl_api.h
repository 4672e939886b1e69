// Tcl's API as the module sees it: through the stub table, whose pointer is linked into the module.
// Declared hidden, it is reached without a look-up, which every call of Tcl would pay for. Also here:
// what the headers of Tcl 8.5 and 8.6 declare differently.
#pragma once

// Before the pragma below, which would hide the C library's names, too: tcl.h includes it.
#include <cstdio>
#include <type_traits>

#ifdef USE_TCL_STUBS
#pragma GCC visibility push(hidden)
#include <tcl.h>
#pragma GCC visibility pop
#else
#include <tcl.h>
#endif

namespace qxsh {

/// What Tcl_Obj::typePtr points to. Tcl 8.5 declares it, and the types' names, without const;
/// neither Tcl nor the module writes to them.
using object_type = std::remove_pointer_t<decltype(Tcl_Obj::typePtr)>;

/// An object type that scripts cannot convert to. `name` must outlive it. The internal
/// representation owns nothing; null procedures: it is never copied, or always has a text.
constexpr Tcl_ObjType make_object_type(const char *name, Tcl_DupInternalRepProc *copy = nullptr,
                                       Tcl_UpdateStringProc *make_text = nullptr) noexcept
{
    return {const_cast<decltype(Tcl_ObjType::name)>(name), nullptr, copy, make_text, nullptr};
}

} // namespace qxsh
