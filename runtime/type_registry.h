// The registry of pointer types: one record per type, with the list of types whose handles it
// accepts, and the ring through which the binding modules of an interpreter share their records.
// Process-wide, for one thread. Other modules share the records, so their layouts are fixed.
#pragma once

#include "runtime/tcl_api.h"

struct swig_type_record;

/// Converts a pointer of a cast's source type to the target type. A converter that allocates sets
/// *new_memory, which no caller accepts.
using swig_converter = void *(*)(void *pointer, int *new_memory);

/// One entry in a type's list of accepted source types.
struct swig_cast_record
{
    swig_type_record *type;   ///< the source type; null ends a static array
    swig_converter converter; ///< null: the pointer is used unchanged
    swig_cast_record *next;
    swig_cast_record *prev; ///< null at the head
};

/// One pointer type.
struct swig_type_record
{
    const char *name; ///< mangled, as in handles: "_p_qx_flow_t"
    const char *str;  ///< as declared: "qx_flow_t *"
    swig_type_record *(*dynamic_cast_hook)(void **pointer); ///< reserved, null
    swig_cast_record *cast; ///< accepted source types, most recently matched first
    void *client_data;      ///< class description for object commands, or null
    int owns_client_data;   ///< part of the shared layout; not used here
};

/// One binding module with its types.
struct swig_module_record
{
    swig_type_record **types;              ///< resolved, sorted by mangled name, then a null
    unsigned int size;                     ///< number of types
    swig_module_record *next;              ///< the ring of modules; null until first linked
    swig_type_record *const *type_initial; ///< the module's own records, in the same order
    swig_cast_record *const
        *cast_initial; ///< an array of casts for each type, each ended by a null type
    void *client_data;
};

/// Adds the module to the ring that the interpreter's global variable
/// "swig_runtime_data_type_pointer4" publishes, or publishes it there. The first call for a module
/// also resolves its types against the other modules of the ring, by mangled name, and links its
/// casts. The module must outlive the process's interpreters.
void swig_link_module(Tcl_Interp *interp, swig_module_record *module);

/// Sets the `cast` of `expected`, a record of a module's own that is not in the ring, to the entry
/// by which the resolved type takes its own handles unchanged, the type itself without converter;
/// or to an entry in no list, if there is none.
void swig_expect_type(const swig_type_record *resolved, swig_type_record *expected);

/// A module of the ring that the interpreter's registry variable publishes, or null if the variable
/// is missing or malformed. The address in it is trusted.
swig_module_record *swig_published_module(Tcl_Interp *interp);

/// Copies each type's client data to the source types that have none, for casts without a
/// converter.
void swig_propagate_client_data(swig_module_record *module);

/// The cast of `type` whose source has exactly this mangled name, moved to the head of the list;
/// null if there is none.
swig_cast_record *swig_type_check(const char *name, swig_type_record *type);

/// The type of this mangled name in the modules from `start` up to but not including `end` (all
/// modules if both are the same); null if there is none.
swig_type_record *swig_type_query_mangled(swig_module_record *start, swig_module_record *end,
                                          const char *name);
