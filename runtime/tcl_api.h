// Tcl's API as the module uses it: through the stub table, whose pointer is linked into the module.
// The pointer is declared hidden, so that a call of Tcl needs no look-up in the global offset
// table. Also here: the differences between the headers of Tcl 8.5 and 8.6.
#pragma once

// Included before the pragma below, because tcl.h includes it and the pragma would hide the C
// library's names, too.
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

/// The type that Tcl_Obj::typePtr points to. Tcl 8.5 declares it, and the types' names, without
/// const; neither Tcl nor the module writes to them.
using object_type = std::remove_pointer_t<decltype(Tcl_Obj::typePtr)>;

/// An object type that scripts cannot convert to. `name` must outlive it. The internal
/// representation owns no memory. `copy` may be null if objects are never duplicated, `make_text`
/// if they always have a text.
constexpr Tcl_ObjType make_object_type(const char *name, Tcl_DupInternalRepProc *copy = nullptr,
                                       Tcl_UpdateStringProc *make_text = nullptr) noexcept
{
    return {const_cast<decltype(Tcl_ObjType::name)>(name), nullptr, copy, make_text, nullptr};
}

} // namespace qxsh
