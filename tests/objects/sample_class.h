// Classes made up by tests, on types of their own, and the objects that such tests make commands
// of. Relies on the block memory: objects lie where handles can name them.
#pragma once

#include "helpers/block_memory.h"
#include "runtime/object_command.h"
#include "runtime/object_table.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

#include <memory>
#include <new>

/// An object of a test. Its text lives in memory of its own, so that the memory checkers notice
/// whoever touches an object that was destroyed.
struct thing
{
    std::string *text;
    int width;

    static inline int made = 0;
    static inline int destroyed = 0;

    static thing *make(const std::string &text = "a thing that is too long for a short string")
    {
        ++made;
        return new (qxsh::allocate_block(sizeof(thing))) thing{new std::string{text}, 0};
    }
    /// A class's destructor.
    static void destroy(void *pointer)
    {
        ++destroyed;
        auto *const object = static_cast<thing *>(pointer);
        delete object->text;
        object->text = nullptr;
        qxsh::free_block(object);
    }
    static thing &of(ClientData instance)
    {
        return *static_cast<thing *>(static_cast<swig_instance *>(instance)->pointer);
    }
};

/// The error of a method that an object does not have; the names of those that it has may follow.
inline constexpr const char *invalid =
    "Invalid method. Must be one of: configure cget -acquire -disown -delete";

/// A method whose result is the words that it was called with.
inline int report_words(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
    return TCL_OK;
}

/// A class description with everything that it points to. Lists are complete once it is attached.
class sample_class
{
public:
    explicit sample_class(std::string name) : name_(std::move(name)) {}
    sample_class(const sample_class &) = delete;
    sample_class &operator=(const sample_class &) = delete;

    sample_class &method(const char *name, Tcl_ObjCmdProc *procedure)
    {
        methods_.push_back({name, procedure});
        return *this;
    }
    sample_class &attribute(const char *name, Tcl_ObjCmdProc *getter, Tcl_ObjCmdProc *setter)
    {
        attributes_.push_back({name, getter, setter});
        return *this;
    }
    /// A base, by the mangled name of its type.
    sample_class &base(const char *mangled_name)
    {
        base_names_.push_back(mangled_name);
        return *this;
    }
    sample_class &destroyed_by(void (*destructor)(void *))
    {
        description_.destructor = destructor;
        return *this;
    }

    /// Makes the description the client data of a type. A type that outlives the class has to be
    /// told by detach().
    sample_class &attach(swig_type_record *type)
    {
        methods_.push_back({nullptr, nullptr});
        attributes_.push_back({nullptr, nullptr, nullptr});
        bases_.resize(base_names_.size());
        base_names_.push_back(nullptr);
        type_ = type;
        description_.name = name_.c_str();
        description_.type = &type_;
        description_.methods = methods_.data();
        description_.attributes = attributes_.data();
        description_.bases = bases_.data();
        description_.base_names = bases_.empty() ? nullptr : base_names_.data();
        type->client_data = &description_;
        return *this;
    }

    void detach() { type_->client_data = nullptr; }

    swig_class *description() { return &description_; }
    /// What is known of a base; null until it was looked up with success.
    const swig_class *known_base(std::size_t number) const { return bases_[number]; }

private:
    std::string name_;
    swig_type_record *type_ = nullptr;
    std::vector<swig_method> methods_;
    std::vector<swig_attribute> attributes_;
    std::vector<const char *> base_names_;
    std::vector<swig_class *> bases_;
    swig_class description_{};
};

/// A fixture with an interpreter, and a type "_p_thing" that may be given a class.
class object_commands : public testing::Test
{
protected:
    object_commands()
    {
        thing::made = 0;
        thing::destroyed = 0;
    }

    /// The handle that a command's result would be.
    std::string returned(Tcl_Interp *interp, void *pointer, int flags = 0)
    {
        return held_object{swig_new_instance_obj(interp, pointer, type_, flags)}.text();
    }
    std::string returned(void *pointer, int flags = 0) { return returned(tcl_, pointer, flags); }

    /// The command's instance, or null if the command is none of an object.
    static swig_instance *instance_of(Tcl_Interp *interp, const std::string &name)
    {
        Tcl_CmdInfo info;
        if (Tcl_GetCommandInfo(interp, name.c_str(), &info) == 0 ||
            info.objProc != swig_method_command)
            return nullptr;
        EXPECT_EQ(info.deleteProc, swig_object_delete);
        EXPECT_EQ(info.deleteData, info.objClientData);
        return static_cast<swig_instance *>(info.objClientData);
    }
    swig_instance *instance_of(const std::string &name) { return instance_of(tcl_, name); }

    bool is_command(const std::string &name)
    {
        return tcl_.value("llength [info commands " + name + "]") == "1";
    }

    static bool owned(void *pointer) { return qxsh::object_table::owned(pointer); }

    plain_type type_{"_p_thing"};
    sample_class class_{"thing"};
    interpreter tcl_; // destroyed first: its objects need their class
};
