// Object commands: creation, methods, attributes, deletion; see object_command.h.
#include "runtime/object_command.h"

#include "runtime/handle.h"
#include "runtime/object_table.h"

#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace qxsh;

int fail(Tcl_Interp *interp, const char *message)
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message, -1));
    return TCL_ERROR;
}

int fail_without_command(Tcl_Interp *interp, Tcl_Obj *name)
{
    const std::string text = Tcl_GetString(name);
    return fail(interp, ("invalid command name \"" + text + "\"").c_str());
}

// The description of a base, looked up by its type's name the first time. Null if no module has it.
swig_class *base_of(Tcl_Interp *interp, const swig_class &description, int number)
{
    swig_class *&base = description.bases[number];
    if (base == nullptr) {
        auto *const ring = swig_published_module(interp);
        auto *const type =
            ring == nullptr ? nullptr
                            : swig_type_query_mangled(ring, ring, description.base_names[number]);
        base = type == nullptr ? nullptr : static_cast<swig_class *>(type->client_data);
    }
    return base;
}

// Visits a class and then its bases, depth first, until the visitor returns true.
bool visit(Tcl_Interp *interp, const swig_class &description,
           const std::function<bool(const swig_class &)> &visitor)
{
    if (visitor(description))
        return true;
    if (description.base_names == nullptr)
        return false;
    for (int i = 0; description.base_names[i] != nullptr; ++i) {
        const auto *const base = base_of(interp, description, i);
        if (base != nullptr && visit(interp, *base, visitor))
            return true;
    }
    return false;
}

// The entry of this name in the lists of a class and its bases, or null.
template <class Entry>
const Entry *find(Tcl_Interp *interp, const swig_class &description, const Entry *swig_class::*list,
                  std::string_view name)
{
    const Entry *found = nullptr;
    visit(interp, description, [&](const swig_class &each) {
        for (const Entry *entry = each.*list; entry != nullptr && entry->name != nullptr; ++entry) {
            if (name == entry->name) {
                found = entry;
                return true;
            }
        }
        return false;
    });
    return found;
}

// Calls a method or an accessor with a separate list of words, in which word 1 is the handle.
int call(swig_instance &instance, Tcl_Interp *interp, Tcl_ObjCmdProc *procedure,
         std::vector<Tcl_Obj *> words)
{
    words[1] = instance.handle;
    return procedure(&instance, interp, static_cast<int>(words.size()), words.data());
}

int get_attribute(swig_instance &instance, Tcl_Interp *interp, Tcl_Obj *const objv[])
{
    const std::string_view name = Tcl_GetString(objv[2]);
    if (name == "-this") {
        Tcl_SetObjResult(interp, Tcl_DuplicateObj(instance.handle));
        return TCL_OK;
    }
    if (name == "-thisown") {
        const bool owned = object_table::owned(instance.pointer);
        Tcl_SetObjResult(interp, Tcl_NewStringObj(owned ? "1" : "0", 1));
        return TCL_OK;
    }
    const auto *const attribute =
        find(interp, *instance.class_description, &swig_class::attributes, name);
    if (attribute == nullptr || attribute->getter == nullptr)
        return fail(interp, "Invalid attribute name.");
    return call(instance, interp, attribute->getter, {objv[0], nullptr});
}

int set_attributes(swig_instance &instance, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc < 4)
        return fail(interp, "wrong # args.");
    for (int i = 2; i + 1 < objc; i += 2) { // a name without value at the end is not looked at
        // A setter may delete the command; the remaining words fail as in a separate command.
        if (instance.token == nullptr)
            return fail_without_command(interp, objv[0]);
        const auto *const attribute = find(interp, *instance.class_description,
                                           &swig_class::attributes, Tcl_GetString(objv[i]));
        if (attribute == nullptr || attribute->setter == nullptr)
            return fail(interp, "Invalid attribute name.");
        const int status =
            call(instance, interp, attribute->setter, {objv[0], nullptr, objv[i + 1]});
        if (status != TCL_OK)
            return status;
    }
    return TCL_OK;
}

bool has_word(std::string_view text, std::string_view word)
{
    while (!text.empty()) {
        const auto end = text.find(' ');
        if (text.substr(0, end) == word)
            return true;
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
    }
    return false;
}

int report_methods(const swig_instance &instance, Tcl_Interp *interp)
{
    fail(interp, "Invalid method. Must be one of: configure cget -acquire -disown -delete");
    visit(interp, *instance.class_description, [interp](const swig_class &each) {
        const auto *method = each.methods;
        for (; method != nullptr && method->name != nullptr; ++method) {
            // A copy, because appending reallocates the text.
            const std::string text = Tcl_GetStringResult(interp);
            if (!has_word(text, method->name))
                Tcl_AppendElement(interp, method->name);
        }
        return false;
    });
    return TCL_ERROR;
}

int dispatch(swig_instance &instance, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc < 2)
        return fail(interp, "wrong # args.");
    const std::string_view name = Tcl_GetString(objv[1]);
    if (name == "-acquire") {
        instance.owned = 1;
        object_table::acquire(instance.pointer);
        return TCL_OK;
    }
    if (name == "-disown") {
        if (instance.owned != 0)
            object_table::disown(instance.pointer);
        instance.owned = 0;
        return TCL_OK;
    }
    if (name == "-delete") {
        Tcl_DeleteCommandFromToken(interp, instance.token);
        return TCL_OK;
    }
    if (const auto *method = find(interp, *instance.class_description, &swig_class::methods, name))
        return call(instance, interp, method->method, {objv, objv + objc});
    if (name == "cget" && objc == 3)
        return get_attribute(instance, interp, objv);
    if (name == "configure")
        return set_attributes(instance, interp, objc, objv);
    return report_methods(instance, interp);
}

void free_instance(char *memory)
{
    delete reinterpret_cast<swig_instance *>(memory);
}

void make_command(Tcl_Interp *interp, Tcl_Obj *handle, void *pointer, swig_type_record *type,
                  int flags)
{
    const char *const name = Tcl_GetString(handle);
    // Object commands are in the global namespace; one of that name in the caller's namespace is
    // not ours.
    if (flags == 0 && Tcl_FindCommand(interp, name, nullptr, TCL_GLOBAL_ONLY) != nullptr)
        return;
    auto *const instance =
        new swig_instance{Tcl_DuplicateObj(handle), pointer,
                          static_cast<swig_class *>(type->client_data), flags, nullptr};
    Tcl_IncrRefCount(instance->handle);
    // An earlier command of the name is deleted, and destroys the object if it owns it: intended.
    instance->token =
        Tcl_CreateObjCommand(interp, name, swig_method_command, instance, swig_object_delete);
    if (flags != 0)
        object_table::acquire(pointer);
}

} // namespace

Tcl_Obj *swig_new_instance_obj(Tcl_Interp *interp, void *pointer, swig_type_record *type, int flags)
{
    Tcl_Obj *const handle = swig_new_pointer_obj(pointer, type);
    const bool named = pointer == nullptr || has_handle(pointer);
    if (handle != nullptr && named && type->client_data != nullptr && interp != nullptr)
        make_command(interp, handle, pointer, type, flags);
    return handle;
}

int swig_method_command(ClientData data, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    // A method may delete its own command; the instance and its handle must live until it returns.
    auto *const instance = static_cast<swig_instance *>(data);
    Tcl_Obj *const handle = instance->handle;
    Tcl_Preserve(data);
    Tcl_IncrRefCount(handle);
    const int status = dispatch(*instance, interp, objc, objv);
    Tcl_DecrRefCount(handle);
    Tcl_Release(data);
    return status;
}

void swig_object_delete(ClientData data)
{
    auto *const instance = static_cast<swig_instance *>(data);
    if (instance->owned != 0 && object_table::disown(instance->pointer) &&
        instance->class_description->destructor != nullptr)
        instance->class_description->destructor(instance->pointer);
    instance->token = nullptr;
    Tcl_DecrRefCount(instance->handle);
    Tcl_EventuallyFree(data, free_instance);
}
