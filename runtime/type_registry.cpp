// The type registry and its ring of modules; see type_registry.h.
#include "runtime/type_registry.h"

#include "runtime/handle.h"

#include <algorithm>
#include <cstring>

static constexpr const char *registry_variable = "swig_runtime_data_type_pointer4";

// The variable holds "_" and all bytes of a native pointer, unlike a handle: modules of one process
// share it.
swig_module_record *swig_published_module(Tcl_Interp *interp)
{
    const char *const text = Tcl_GetVar(interp, registry_variable, TCL_GLOBAL_ONLY);
    swig_module_record *module = nullptr;
    if (text == nullptr || text[0] != '_' || std::strlen(text) != 1 + 2 * sizeof module)
        return nullptr;
    if (swig_unpack_hex(text + 1, &module, sizeof module) == nullptr)
        return nullptr;
    return module;
}

static void publish_module(Tcl_Interp *interp, swig_module_record *module)
{
    char text[2 + 2 * sizeof module] = "_";
    *swig_pack_hex(text + 1, &module, sizeof module) = '\0';
    Tcl_SetVar(interp, registry_variable, text, TCL_GLOBAL_ONLY);
}

static void join_ring(swig_module_record *member, swig_module_record *module)
{
    auto *each = member;
    do {
        if (each == module)
            return;
        each = each->next;
    } while (each != member);
    // Swapping the two pointers joins the rings even if the module is already in another one.
    std::swap(member->next, module->next);
}

static bool accepts(const swig_type_record *type, const char *name)
{
    for (const auto *cast = type->cast; cast != nullptr; cast = cast->next) {
        if (std::strcmp(cast->type->name, name) == 0)
            return true;
    }
    return false;
}

static void put_first(swig_type_record *type, swig_cast_record *cast)
{
    cast->prev = nullptr;
    cast->next = type->cast;
    if (type->cast != nullptr)
        type->cast->prev = cast;
    type->cast = cast;
}

// The record used for a type in the whole ring: another module's if there is one, else our own.
static swig_type_record *resolve(swig_module_record *module, swig_type_record *own)
{
    if (module->next == module)
        return own;
    auto *const found = swig_type_query_mangled(module->next, module, own->name);
    return found != nullptr ? found : own;
}

static void resolve_types(swig_module_record *module)
{
    for (unsigned int i = 0; i < module->size; ++i) {
        auto *const type = resolve(module, module->type_initial[i]);
        for (auto *cast = module->cast_initial[i]; cast->type != nullptr; ++cast) {
            cast->type = resolve(module, cast->type);
            if (!accepts(type, cast->type->name))
                put_first(type, cast);
        }
        module->types[i] = type;
    }
    module->types[module->size] = nullptr;
}

void swig_link_module(Tcl_Interp *interp, swig_module_record *module)
{
    const bool first_call = module->next == nullptr;
    if (first_call)
        module->next = module;
    if (auto *const member = swig_published_module(interp))
        join_ring(member, module);
    else
        publish_module(interp, module);
    if (first_call)
        resolve_types(module);
}

void swig_expect_type(const swig_type_record *resolved, swig_type_record *expected)
{
    static swig_cast_record in_no_list;
    auto *cast = resolved->cast;
    while (cast != nullptr && (cast->type != resolved || cast->converter != nullptr))
        cast = cast->next;
    expected->cast = cast != nullptr ? cast : &in_no_list;
}

void swig_propagate_client_data(swig_module_record *module)
{
    for (unsigned int i = 0; i < module->size; ++i) {
        auto *const type = module->types[i];
        if (type->client_data == nullptr)
            continue;
        for (auto *cast = type->cast; cast != nullptr; cast = cast->next) {
            if (cast->converter == nullptr && cast->type->client_data == nullptr)
                cast->type->client_data = type->client_data;
        }
    }
}

swig_cast_record *swig_type_check(const char *name, swig_type_record *type)
{
    for (auto *cast = type->cast; cast != nullptr; cast = cast->next) {
        if (std::strcmp(cast->type->name, name) != 0)
            continue;
        if (cast != type->cast) {
            cast->prev->next = cast->next;
            if (cast->next != nullptr)
                cast->next->prev = cast->prev;
            put_first(type, cast);
        }
        return cast;
    }
    return nullptr;
}

swig_type_record *swig_type_query_mangled(swig_module_record *start, swig_module_record *end,
                                          const char *name)
{
    auto *module = start;
    do {
        swig_type_record *const *const first = module->types;
        swig_type_record *const *const last = first + module->size;
        swig_type_record *const *const found = std::lower_bound(
            first, last, name, [](const swig_type_record *type, const char *wanted) {
                return std::strcmp(type->name, wanted) < 0;
            });
        if (found != last && std::strcmp((*found)->name, name) == 0)
            return *found;
        module = module->next;
    } while (module != end);
    return nullptr;
}
