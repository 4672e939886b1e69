// A binding module of another maker, for tests: types with the names of others' and texts of its
// own, or with none. It shares nothing with this package but the layout of the registry's records.
//
//   namesake_publish {NAME TEXT ...}   publishes a module of these types, in ascending order of
//   their
//                                      names, each of which accepts itself; an empty text is null
#include <tcl.h>

#include <cstring>
#include <deque>
#include <string>
#include <vector>

namespace {

struct type_record;

struct cast_record
{
    type_record *type;
    void *(*converter)(void *, int *);
    cast_record *next;
    cast_record *prev;
};

struct type_record
{
    const char *name;
    const char *text;
    void *(*hook)(void **);
    cast_record *casts;
    void *client_data;
    int owns_client_data;
};

struct module_record
{
    type_record **types;
    unsigned size;
    module_record *next;
    type_record **type_initial;
    cast_record **cast_initial;
    void *client_data;
};

// Everything that a published module points to. It is never released, as in any binding module.
struct module_memory
{
    std::deque<std::string> texts;
    std::deque<type_record> types;
    std::deque<cast_record> casts; // two for each type: itself, and the end of the list
    std::vector<type_record *> table;
    std::vector<type_record *> initial;
    std::vector<cast_record *> cast_initial;
    module_record module;
};
module_memory *memory;

const char *kept(Tcl_Obj *text)
{
    return memory->texts.emplace_back(Tcl_GetString(text)).c_str();
}

void add_type(Tcl_Obj *name, Tcl_Obj *text)
{
    const char *const shown = *Tcl_GetString(text) != '\0' ? kept(text) : nullptr;
    auto &type =
        memory->types.emplace_back(type_record{kept(name), shown, nullptr, nullptr, nullptr, 0});
    auto &itself = memory->casts.emplace_back(cast_record{&type, nullptr, nullptr, nullptr});
    memory->casts.emplace_back(cast_record{nullptr, nullptr, nullptr, nullptr});
    type.casts = &itself;
    memory->table.push_back(&type);
    memory->cast_initial.push_back(&itself);
}

// "_" and the bytes of the pointer in memory order, two lower-case digits each.
std::string digits_of(const void *pointer)
{
    unsigned char bytes[sizeof pointer];
    std::memcpy(bytes, &pointer, sizeof pointer);
    std::string text = "_";
    for (const unsigned char byte : bytes)
        text.append(1, "0123456789abcdef"[byte >> 4]).append(1, "0123456789abcdef"[byte & 15]);
    return text;
}

int publish(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    int count;
    Tcl_Obj **words;
    if (Tcl_ListObjGetElements(interp, objv[1], &count, &words) != TCL_OK)
        return TCL_ERROR;
    memory = new module_memory{};
    for (int i = 0; i + 1 < count; i += 2)
        add_type(words[i], words[i + 1]);
    memory->initial = memory->table;
    memory->table.push_back(nullptr);
    memory->module = {memory->table.data(),
                      static_cast<unsigned>(memory->initial.size()),
                      &memory->module,
                      memory->initial.data(),
                      memory->cast_initial.data(),
                      nullptr};
    Tcl_SetVar(interp, "swig_runtime_data_type_pointer4", digits_of(&memory->module).c_str(),
               TCL_GLOBAL_ONLY);
    return TCL_OK;
}

} // namespace

extern "C" DLLEXPORT int Namesake_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    Tcl_CreateObjCommand(interp, "namesake_publish", publish, nullptr, nullptr);
    return TCL_OK;
}
