// Object commands: a returned pointer as a Tcl command named after its handle, with the methods and
// attributes of its class. A type has them if its client data is a class description; none of this
// module's types has.
#pragma once

#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

struct swig_class;

/// One pointer that is a command. Freed with the command.
struct swig_instance {
    Tcl_Obj *handle;   ///< the pointer's handle, one reference held
    void *pointer;
    swig_class *class_description;
    int owned;         ///< whether deleting the command destroys the object
    Tcl_Command token; ///< null once the command is deleted
};

/// Called with the instance as client data and the command's words, word 1 replaced by the handle.
struct swig_method {
    const char *name; ///< null ends a list
    Tcl_ObjCmdProc *method;
};

/// The getter is called with the words {command handle}, the setter with {command handle value};
/// both get the instance as client data.
struct swig_attribute {
    const char *name; ///< as scripts write it behind cget and configure; null ends a list
    Tcl_ObjCmdProc *getter;
    Tcl_ObjCmdProc *setter;
};

/// A class, as a type's client data. Everything belongs to the module that made it.
struct swig_class {
    const char *name;
    swig_type_record **type;
    Tcl_ObjCmdProc *constructor;
    void (*destructor)(void *pointer); ///< null: nothing is done
    const swig_method *methods;
    const swig_attribute *attributes;
    swig_class **bases;            ///< one per base name; null until looked up
    const char *const
        *base_names; ///< mangled names of the bases' types, then a null; null: no bases
};

/// The handle of a returned pointer, a new object. If the type has a class description, the pointer
/// is not null, and either no command is named like the handle or `flags` (owned) is not 0, the
/// object command is made too; an owned pointer is entered in the object table. An earlier command
/// of that name gives up its ownership and is replaced.
Tcl_Obj *swig_new_instance_obj(Tcl_Interp *interp, void *pointer, swig_type_record *type,
                               int flags);

/// The procedure of object commands; the client data is the instance.
int swig_method_command(ClientData instance, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// Their delete procedure: an owned pointer that is still in the object table is taken out and
/// destroyed.
void swig_object_delete(ClientData instance);
