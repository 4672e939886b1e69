// An extension for tests that looks at an interpreter's registry of types without being a member:
// commands registry::modules, types, record, own, sources, described. It reads the variable on its
// own. With registry::accept it puts another cast list in a record, as another module could.
#include "runtime/type_registry.h"

#include <tcl.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <string>

// The structures are shared with modules of other makers: each member one word, in this order.
constexpr std::size_t word = sizeof(void *);
static_assert(offsetof(swig_type_record, name) == 0);
static_assert(offsetof(swig_type_record, str) == word);
static_assert(offsetof(swig_type_record, dynamic_cast_hook) == 2 * word);
static_assert(offsetof(swig_type_record, cast) == 3 * word);
static_assert(offsetof(swig_type_record, client_data) == 4 * word);
static_assert(offsetof(swig_type_record, owns_client_data) == 5 * word);
static_assert(sizeof(swig_type_record) == 6 * word);
static_assert(offsetof(swig_cast_record, type) == 0);
static_assert(offsetof(swig_cast_record, converter) == word);
static_assert(offsetof(swig_cast_record, next) == 2 * word);
static_assert(offsetof(swig_cast_record, prev) == 3 * word);
static_assert(sizeof(swig_cast_record) == 4 * word);
static_assert(offsetof(swig_module_record, types) == 0);
static_assert(offsetof(swig_module_record, size) == word);
static_assert(offsetof(swig_module_record, next) == 2 * word);
static_assert(offsetof(swig_module_record, type_initial) == 3 * word);
static_assert(offsetof(swig_module_record, cast_initial) == 4 * word);
static_assert(offsetof(swig_module_record, client_data) == 5 * word);
static_assert(sizeof(swig_module_record) == 6 * word);

namespace {

constexpr unsigned endless = 100; // longer than any ring of a test

int fail(Tcl_Interp *interp, const std::string &message)
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message.c_str(), -1));
    return TCL_ERROR;
}

// Records are known to scripts by their addresses.
Tcl_Obj *address(const void *record)
{
    return Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(reinterpret_cast<std::uintptr_t>(record)));
}

template <class Record> const Record *record_at(Tcl_Obj *object)
{
    Tcl_WideInt value = 0;
    Tcl_GetWideIntFromObj(nullptr, object, &value);
    return reinterpret_cast<const Record *>(static_cast<std::uintptr_t>(value));
}

// "_" and the bytes of the pointer in memory order, two lower-case digits each.
const swig_module_record *published(Tcl_Interp *interp)
{
    const char *const value =
        Tcl_GetVar(interp, "swig_runtime_data_type_pointer4", TCL_GLOBAL_ONLY);
    const std::string text = value != nullptr ? value : "";
    if (text.size() != 1 + 2 * word || text[0] != '_' ||
        text.find_first_not_of("0123456789abcdef", 1) != text.npos)
        return nullptr;
    unsigned char bytes[word];
    for (std::size_t i = 0; i < word; ++i)
        bytes[i] = static_cast<unsigned char>(std::stoul(text.substr(1 + 2 * i, 2), nullptr, 16));
    const swig_module_record *module;
    std::memcpy(&module, bytes, word);
    return module;
}

// The modules of the ring, from the published one on, each as {address number-of-types}.
int list_modules(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    const auto *const first = published(interp);
    const auto *module = first;
    unsigned count = 0;
    while (module != nullptr && count++ < endless) {
        Tcl_Obj *const pair[] = {address(module), Tcl_NewIntObj(static_cast<int>(module->size))};
        Tcl_ListObjAppendElement(nullptr, list, Tcl_NewListObj(2, pair));
        module = module->next == first ? nullptr : module->next;
    }
    Tcl_SetObjResult(interp, list);
    return count > endless ? fail(interp, "the ring does not close") : TCL_OK;
}

const swig_module_record *module_of(Tcl_Interp *interp, Tcl_Obj *size)
{
    int wanted = -1;
    Tcl_GetIntFromObj(nullptr, size, &wanted);
    const auto *const first = published(interp);
    const auto *module = first;
    for (unsigned i = 0; module != nullptr && i < endless; ++i) {
        if (static_cast<int>(module->size) == wanted)
            return module;
        module = module->next == first ? nullptr : module->next;
    }
    return nullptr;
}

// types SIZE: the names in the resolved table of the module with that many types.
int list_types(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    const auto *const module = module_of(interp, objv[1]);
    if (module == nullptr)
        return fail(interp, "no such module");
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    for (auto *const *each = module->types; *each != nullptr; ++each)
        Tcl_ListObjAppendElement(nullptr, list, Tcl_NewStringObj((*each)->name, -1));
    Tcl_SetObjResult(interp, list);
    return TCL_OK;
}

int find_in(swig_type_record *const *types, Tcl_Interp *interp, const swig_module_record *module,
            Tcl_Obj *name)
{
    for (unsigned i = 0; i < module->size; ++i) {
        if (std::strcmp(types[i]->name, Tcl_GetString(name)) == 0) {
            Tcl_SetObjResult(interp, address(types[i]));
            return TCL_OK;
        }
    }
    return fail(interp, "no such type");
}

// record SIZE NAME: the record that the module has in its resolved table.
int find_record(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    const auto *const module = module_of(interp, objv[1]);
    return module == nullptr ? fail(interp, "no such module")
                             : find_in(module->types, interp, module, objv[2]);
}

// own SIZE NAME: the record that the module itself brings.
int find_own(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    const auto *const module = module_of(interp, objv[1]);
    return module == nullptr ? fail(interp, "no such module")
                             : find_in(module->type_initial, interp, module, objv[2]);
}

// sources RECORD: the names in its cast list, from the head on.
int list_sources(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    const swig_cast_record *before = nullptr;
    for (const auto *cast = record_at<swig_type_record>(objv[1])->cast; cast != nullptr;
         before = cast, cast = cast->next)
        Tcl_ListObjAppendElement(
            nullptr, list,
            Tcl_NewStringObj(cast->prev == before ? cast->type->name : "broken", -1));
    Tcl_SetObjResult(interp, list);
    return TCL_OK;
}

// described RECORD: whether it has client data.
int is_described(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    const bool described = record_at<swig_type_record>(objv[1])->client_data != nullptr;
    Tcl_SetObjResult(interp, Tcl_NewIntObj(described));
    return TCL_OK;
}

// The converter of such lists leads to the next of several flows.
constexpr std::size_t flow_size = 212;
int conversions;
void *next_flow(void *flow, int *)
{
    ++conversions;
    return static_cast<char *>(flow) + flow_size;
}

// accept RECORD {SOURCE next-or-plain ...}: from now on the type accepts these, in this order.
int replace_casts(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    static auto *const lists =
        new std::deque<swig_cast_record>; // records may point there to the end
    int count;
    Tcl_Obj **words;
    if (Tcl_ListObjGetElements(interp, objv[2], &count, &words) != TCL_OK)
        return TCL_ERROR;
    auto *const type = const_cast<swig_type_record *>(record_at<swig_type_record>(objv[1]));
    type->cast = nullptr;
    swig_cast_record *last = nullptr;
    for (int i = 0; i + 1 < count; i += 2) {
        auto *const source = const_cast<swig_type_record *>(record_at<swig_type_record>(words[i]));
        const bool converted = std::strcmp(Tcl_GetString(words[i + 1]), "next") == 0;
        auto &cast = lists->emplace_back();
        cast.type = source;
        cast.converter = converted ? next_flow : nullptr;
        cast.prev = last;
        (last != nullptr ? last->next : type->cast) = &cast;
        last = &cast;
    }
    return TCL_OK;
}

// conversions: how often the converter has run.
int count_conversions(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewIntObj(conversions));
    return TCL_OK;
}

} // namespace

extern "C" DLLEXPORT int Registry_view_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    const std::pair<const char *, Tcl_ObjCmdProc *> commands[] = {
        {"registry::modules", list_modules}, {"registry::types", list_types},
        {"registry::record", find_record},   {"registry::own", find_own},
        {"registry::sources", list_sources}, {"registry::described", is_described},
        {"registry::accept", replace_casts}, {"registry::conversions", count_conversions},
    };
    for (const auto &[name, procedure] : commands)
        Tcl_CreateObjCommand(interp, name, procedure, nullptr, nullptr);
    return TCL_OK;
}
