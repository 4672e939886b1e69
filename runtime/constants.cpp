// The constant table; see constants.h.
#include "runtime/constants.h"

#include "runtime/handle.h"
#include "runtime/object_command.h"

#include <cstddef>

namespace {

// Process-wide, with string keys. Each value holds one reference of the table.
Tcl_HashTable constants_by_name;
bool initialised = false;

Tcl_Obj *value_of(const swig_const_info &constant)
{
    switch (constant.kind) {
    case SWIG_POINTER:
        return swig_new_instance_obj(nullptr, constant.pointer, *constant.type, 0);
    case SWIG_BINARY:
        return swig_new_packed_obj(constant.pointer, static_cast<std::size_t>(constant.integer),
                                   *constant.type);
    default:
        return nullptr;
    }
}

void enter(const char *name, Tcl_Obj *value)
{
    int is_new;
    Tcl_HashEntry *const entry = Tcl_CreateHashEntry(&constants_by_name, name, &is_new);
    auto *const old = is_new != 0 ? nullptr : static_cast<Tcl_Obj *>(Tcl_GetHashValue(entry));
    Tcl_IncrRefCount(value);
    Tcl_SetHashValue(entry, value);
    if (old != nullptr)
        Tcl_DecrRefCount(old);
}

} // namespace

void swig_install_constants(Tcl_Interp *interp, const swig_const_info *constants)
{
    if (!initialised) {
        Tcl_InitHashTable(&constants_by_name, TCL_STRING_KEYS);
        initialised = true;
    }
    for (const auto *each = constants; each->kind != SWIG_END_OF_CONSTANTS; ++each) {
        Tcl_Obj *const value = value_of(*each);
        if (value == nullptr)
            continue;
        Tcl_IncrRefCount(value); // setting the variable may fail and drop the object
        Tcl_SetVar2Ex(interp, each->name, nullptr, value, TCL_GLOBAL_ONLY);
        enter(each->name, value);
        Tcl_DecrRefCount(value);
    }
}

Tcl_Obj *qxsh::constant_for(Tcl_Obj *word)
{
    if (!initialised)
        return word;
    Tcl_HashEntry *const entry = Tcl_FindHashEntry(&constants_by_name, Tcl_GetString(word));
    if (entry == nullptr || Tcl_GetHashValue(entry) == nullptr)
        return word;
    return static_cast<Tcl_Obj *>(Tcl_GetHashValue(entry));
}

int qxsh::constant_count()
{
    return initialised ? constants_by_name.numEntries : -1;
}
