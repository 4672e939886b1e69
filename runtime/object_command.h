// Object commands: a returned pointer as a Tcl command named after its handle, with the methods and
// attributes of its class. A type has them if its client data is a class description; no type of
// this module does.
#pragma once

#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

struct swig_class;

/// A pointer with its command. Freed with the command.
struct swig_instance
{
    Tcl_Obj *handle; ///< the pointer's handle, one reference held
    void *pointer;
    swig_class *class_description;
    int owned;         ///< whether deleting the command destroys the object
    Tcl_Command token; ///< null once the command is deleted
};

/// Called with the instance as client data and the command's words, word 1 replaced by the handle.
struct swig_method
{
    const char *name; ///< null ends a list
    Tcl_ObjCmdProc *method;
};

/// The getter is called with the words {command handle}, the setter with {command handle value};
/// both get the instance as client data.
struct swig_attribute
{
    const char *name; ///< as scripts write it after cget and configure; null ends a list
    Tcl_ObjCmdProc *getter;
    Tcl_ObjCmdProc *setter;
};

/// A class, as a type's client data. Everything belongs to the module that created it.
struct swig_class
{
    const char *name;
    swig_type_record **type;
    Tcl_ObjCmdProc *constructor;
    void (*destructor)(void *pointer); ///< null: objects are not destroyed
    const swig_method *methods;
    const swig_attribute *attributes;
    swig_class **bases; ///< one per base name; null until looked up
    const char *const
        *base_names; ///< mangled names of the bases' types, then a null; null: no bases
};

/// The handle of a returned pointer: a new object with reference count 0, or null as for
/// swig_new_pointer_obj. The object command is created too if the type has a class description and
/// either no command has the handle's name ("NULL" for a null pointer) or `flags` (owned) is not 0.
/// An owned pointer is entered in the object table. An earlier command of that name is deleted,
/// which destroys the object if it owned it: the new command then has a dangling pointer, so return
/// an object as owned only once.
Tcl_Obj *swig_new_instance_obj(Tcl_Interp *interp, void *pointer, swig_type_record *type,
                               int flags);

/// The procedure of object commands; the client data is the instance.
int swig_method_command(ClientData instance, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// Their delete procedure: an owned pointer that is still in the object table is removed from it
/// and destroyed.
void swig_object_delete(ClientData instance);
