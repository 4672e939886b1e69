// A second binding module, for tests: it measures flows. Six types, two of which the package has as
// well, and casts between them. Relies on a copy of the runtime of its own.
//
//   meter_new TYPE BYTES         the handle of a new block of zeroes
//   meter_free HANDLE            releases such a block
//   meter_address TYPE HANDLE    the address that a handle gives where TYPE is expected
//   meter_return TYPE HANDLE FLAGS   the handle as a command's result, owned if flags is not 0
//   meter_describe TYPE          gives the type a class, whose method "words" returns its words and
//                                whose attributes -x and -y are an object's first two bytes
//   meter_destroyed              how often the class's destructor was called; it only counts
//   meter_casts TYPE HOW         changes the type's casts: "none" empties its list, "shifted" lets
//                                its first entry add 4 bytes; "back" undoes the last change
#include "helpers/block_memory.h"
#include "runtime/handle.h"
#include "runtime/known_objects.h"
#include "runtime/object_command.h"
#include "runtime/type_registry.h"

#include <tcl.h>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

swig_type_record copy_type = {"_p_mt_copy_t", "mt_copy_t *", nullptr, nullptr, nullptr, 0};
swig_type_record flow_part_type = {"_p_mt_flow_t", "mt_flow_t *", nullptr, nullptr, nullptr, 0};
swig_type_record reading_type = {"_p_mt_reading_t", "mt_reading_t *", nullptr, nullptr, nullptr, 0};
swig_type_record tag_type = {"_p_mt_tag_t", "mt_tag_t *", nullptr, nullptr, nullptr, 0};
// The meter has other texts for the types that the package has as well, and none for one of them.
swig_type_record flow_type = {
    "_p_qx_flow_t", "struct flow *|qx_flow_t *", nullptr, nullptr, nullptr, 0};
swig_type_record vlan_type = {"_p_qx_vlan_t", nullptr, nullptr, nullptr, nullptr, 0};

// A flow's reading lies 16 bytes into it, and a tag's VLAN 4 bytes.
void *reading_of_flow(void *flow, int *)
{
    return static_cast<char *>(flow) + 16;
}
void *vlan_of_tag(void *tag, int *)
{
    return static_cast<char *>(tag) + 4;
}

// Nobody can take the new memory, so nobody may offer it.
void *flow_of_copy(void *copy, int *new_memory)
{
    *new_memory = 1;
    return copy;
}

constexpr swig_cast_record end_of_casts = {nullptr, nullptr, nullptr, nullptr};

swig_cast_record copy_casts[] = {{&copy_type, nullptr, nullptr, nullptr}, end_of_casts};
swig_cast_record flow_part_casts[] = {{&flow_part_type, nullptr, nullptr, nullptr}, end_of_casts};
swig_cast_record reading_casts[] = {{&reading_type, nullptr, nullptr, nullptr},
                                    {&flow_type, reading_of_flow, nullptr, nullptr},
                                    end_of_casts};
swig_cast_record tag_casts[] = {{&tag_type, nullptr, nullptr, nullptr}, end_of_casts};
swig_cast_record flow_casts[] = {{&flow_type, nullptr, nullptr, nullptr},
                                 {&flow_part_type, nullptr, nullptr, nullptr},
                                 {&copy_type, flow_of_copy, nullptr, nullptr},
                                 end_of_casts};
swig_cast_record vlan_casts[] = {{&vlan_type, nullptr, nullptr, nullptr},
                                 {&tag_type, vlan_of_tag, nullptr, nullptr},
                                 end_of_casts};

constexpr unsigned type_count = 6;
swig_type_record *const own_types[] = {&copy_type, &flow_part_type, &reading_type,
                                       &tag_type,  &flow_type,      &vlan_type};
swig_cast_record *const own_casts[] = {copy_casts, flow_part_casts, reading_casts,
                                       tag_casts,  flow_casts,      vlan_casts};
swig_type_record *types[type_count + 1];
swig_module_record module = {types, type_count, nullptr, own_types, own_casts, nullptr};

int fail(Tcl_Interp *interp, const char *message)
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message, -1));
    return TCL_ERROR;
}

// The module's record of the type, resolved; or null, with a message.
swig_type_record *type_named(Tcl_Interp *interp, Tcl_Obj *name)
{
    auto *const type = swig_type_query_mangled(&module, module.next, Tcl_GetString(name));
    if (type == nullptr)
        fail(interp, "no type of the meter");
    return type;
}

int make_block(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    auto *const type = type_named(interp, objv[1]);
    int size;
    if (type == nullptr || Tcl_GetIntFromObj(interp, objv[2], &size) != TCL_OK)
        return TCL_ERROR;
    void *const block = qxsh::allocate_block(static_cast<std::uint32_t>(size));
    Tcl_SetObjResult(interp, swig_new_instance_obj(interp, block, type, 0));
    return TCL_OK;
}

int free_block(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    void *block;
    if (swig_convert_ptr(interp, objv[1], &block, nullptr, 0) != 0)
        return fail(interp, "no handle");
    qxsh::free_block(block);
    return TCL_OK;
}

int give_address(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    auto *const type = type_named(interp, objv[1]);
    if (type == nullptr)
        return TCL_ERROR;
    void *pointer;
    if (swig_convert_ptr(interp, objv[2], &pointer, type, 0) != 0)
        return fail(interp, "refused");
    const auto address = reinterpret_cast<std::uintptr_t>(pointer);
    Tcl_SetObjResult(interp, Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(address)));
    return TCL_OK;
}

int return_again(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    auto *const type = type_named(interp, objv[1]);
    void *pointer;
    int flags;
    if (type == nullptr || Tcl_GetIntFromObj(interp, objv[3], &flags) != TCL_OK)
        return TCL_ERROR;
    if (swig_convert_ptr(interp, objv[2], &pointer, nullptr, 0) != 0)
        return fail(interp, "no handle");
    Tcl_SetObjResult(interp, swig_new_instance_obj(interp, pointer, type, flags));
    return TCL_OK;
}

int report_words(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
    return TCL_OK;
}

template <int Position> int get_byte(ClientData instance, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    const auto *const bytes =
        static_cast<const unsigned char *>(static_cast<swig_instance *>(instance)->pointer);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(bytes[Position]));
    return TCL_OK;
}

template <int Position>
int set_byte(ClientData instance, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    int value;
    if (Tcl_GetIntFromObj(interp, objv[2], &value) != TCL_OK)
        return TCL_ERROR;
    auto *const bytes =
        static_cast<unsigned char *>(static_cast<swig_instance *>(instance)->pointer);
    bytes[Position] = static_cast<unsigned char>(value);
    return TCL_OK;
}

int destroyed;
void count_destruction(void *)
{
    ++destroyed;
}

int report_destroyed(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewIntObj(destroyed));
    return TCL_OK;
}

int change_casts(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    static swig_cast_record *first = nullptr;
    auto *const type = type_named(interp, objv[1]);
    if (type == nullptr)
        return TCL_ERROR;
    const std::string_view how = Tcl_GetString(objv[2]);
    if (how == "back") {
        first->converter = nullptr;
        type->cast = first;
        return TCL_OK;
    }
    first = type->cast;
    if (how == "none")
        type->cast = nullptr;
    else
        first->converter = vlan_of_tag;
    return TCL_OK;
}

constexpr swig_method methods[] = {{"words", report_words}, {nullptr, nullptr}};
constexpr swig_attribute attributes[] = {{"-x", get_byte<0>, set_byte<0>},
                                         {"-y", get_byte<1>, set_byte<1>},
                                         {nullptr, nullptr, nullptr}};
swig_type_record *described;
swig_class description = {"meter", &described, nullptr, count_destruction,
                          methods, attributes, nullptr, nullptr};

int describe(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    auto *const type = type_named(interp, objv[1]);
    if (type == nullptr)
        return TCL_ERROR;
    type->client_data = &description;
    return TCL_OK;
}

} // namespace

extern "C" DLLEXPORT int Meter_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    qxsh::learn_known_objects();
    swig_link_module(interp, &module);
    const std::pair<const char *, Tcl_ObjCmdProc *> commands[] = {
        {"meter_new", make_block},       {"meter_free", free_block},
        {"meter_address", give_address}, {"meter_return", return_again},
        {"meter_describe", describe},    {"meter_destroyed", report_destroyed},
        {"meter_casts", change_casts},
    };
    for (const auto &[name, procedure] : commands)
        Tcl_CreateObjCommand(interp, name, procedure, nullptr, nullptr);
    return Tcl_PkgProvide(interp, "meter", "1.0");
}

extern "C" DLLEXPORT int Meter_SafeInit(Tcl_Interp *interp)
{
    return Meter_Init(interp);
}
