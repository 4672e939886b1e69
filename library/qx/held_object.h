// A reference to a Tcl object that ends with its scope, also if memory ends there.
#pragma once

#include <tcl.h>

namespace qxsh {

class held_object
{
public:
    explicit held_object(Tcl_Obj *object) : object_(object) { Tcl_IncrRefCount(object_); }
    ~held_object() { Tcl_DecrRefCount(object_); }
    held_object(const held_object &) = delete;
    held_object &operator=(const held_object &) = delete;

    Tcl_Obj *get() const { return object_; }

private:
    Tcl_Obj *const object_;
};

} // namespace qxsh
