// Object commands under other names and in other places: renamed, in namespaces, imported, behind
// aliases; and as words that stand for their handles.
#include "runtime/handle.h"
#include "tests/objects/sample_class.h"

namespace {

class names : public object_commands
{
protected:
    names()
    {
        class_
            .method("words",
                    [](ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]) {
                        Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
                        return TCL_OK;
                    })
            .destroyed_by(thing::destroy)
            .attach(type_);
        object_ = thing::make();
        name_ = returned(object_, 1);
        tcl_.value("proc unknown args { error {the unknown handler was called} }");
        // `pointer WORD`: what the word stands for, as a handle of the same type; or "refused".
        Tcl_CreateObjCommand(tcl_, "pointer", convert, this, nullptr);
    }

    static int convert(ClientData data, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
    {
        auto &self = *static_cast<names *>(data);
        void *pointer;
        if (swig_convert_ptr(interp, objv[1], &pointer, self.type_, 0) != 0)
            Tcl_AppendResult(interp, "refused", nullptr);
        else
            Tcl_AppendResult(interp,
                             held_object{swig_new_pointer_obj(pointer, self.type_)}.text().c_str(),
                             nullptr);
        return TCL_OK;
    }

    thing *object_;
    std::string name_;
};

TEST_F(names, other_than_the_handle)
{
    tcl_.value("rename " + name_ + " flow; rename flow {a b}; rename {a b} x");
    EXPECT_EQ(tcl_.value("x cget -this"), name_);
    EXPECT_EQ(tcl_.value("x words"), "x " + name_);
    tcl_.value("x -delete");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value("info commands x"), "");
}

TEST_F(names, are_words_for_the_handle)
{
    EXPECT_EQ(tcl_.value("pointer " + name_), name_); // the text itself, no command is asked
    tcl_.value("rename " + name_ + " flow");
    EXPECT_EQ(tcl_.value("pointer " + name_), name_);
    EXPECT_EQ(tcl_.value("pointer flow"), name_);
    EXPECT_EQ(tcl_.value("pointer ::flow"), name_);
    tcl_.value("flow -delete");
    EXPECT_EQ(tcl_.value("pointer flow"), "refused");
    EXPECT_EQ(tcl_.value("pointer " + name_), name_);
}

// A name that begins like a handle is read as one.
TEST_F(names, that_begin_with_an_underscore_are_no_commands)
{
    tcl_.value("rename " + name_ + " _flow");
    EXPECT_EQ(tcl_.value("_flow cget -this"), name_);
    EXPECT_EQ(tcl_.value("pointer _flow"), "refused");
    EXPECT_EQ(tcl_.value("pointer ::_flow"), name_);
}

TEST_F(names, lead_on_from_one_to_the_next)
{
    tcl_.value("rename " + name_ +
               " flow; proc box args { return flow }; proc outer args { return box }");
    EXPECT_EQ(tcl_.value("pointer outer"), name_);
}

// A type that does not accept the handle does not accept its command.
TEST_F(names, of_another_type_are_refused)
{
    plain_type other_type{"_p_other"};
    sample_class other_class{"other"};
    other_class.attach(other_type);
    const auto other = held_object{swig_new_instance_obj(tcl_, at(0x10), other_type, 0)}.text();
    tcl_.value("rename " + other + " other");
    EXPECT_EQ(tcl_.value("pointer other"), "refused");
    EXPECT_EQ(tcl_.value("pointer " + other), "refused");
}

// A class without "cget -this" of its own making: what its cget answers is what counts.
TEST_F(names, of_a_class_with_a_cget_of_its_own)
{
    plain_type odd_type{"_p_odd"};
    sample_class odd_class{"odd"};
    static std::string target;
    target = name_;
    odd_class
        .method("cget",
                [](ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[]) {
                    Tcl_SetObjResult(interp, Tcl_NewStringObj(target.c_str(), -1));
                    return TCL_OK;
                })
        .attach(odd_type);
    tcl_.value("rename " + held_object{swig_new_instance_obj(tcl_, at(0x10), odd_type, 0)}.text() +
               " odd");
    EXPECT_EQ(tcl_.value("pointer odd"), name_);
}

TEST_F(names, in_namespaces)
{
    tcl_.value("namespace eval a { namespace eval b {} }; rename " + name_ + " a::b::flow");
    EXPECT_EQ(tcl_.value("pointer a::b::flow"), name_);
    EXPECT_EQ(tcl_.value("pointer ::a::b::flow"), name_);
    EXPECT_EQ(tcl_.value("pointer flow"), "refused");
    EXPECT_EQ(tcl_.value("namespace eval a { ::pointer b::flow }"), name_);
    EXPECT_EQ(tcl_.value("namespace eval a::b { ::pointer flow }"), name_);
    EXPECT_EQ(tcl_.value("namespace eval a::b { flow cget -this }"), name_);
    EXPECT_EQ(tcl_.value("namespace eval a { ::pointer flow }"), "refused");
    EXPECT_EQ(tcl_.value("namespace eval a::b { proc p {} { ::pointer flow } }; a::b::p"), name_);
}

// The global command is seen from every namespace, unless one has a command of that name.
TEST_F(names, seen_from_a_namespace)
{
    tcl_.value("rename " + name_ + " flow; namespace eval inner {}");
    EXPECT_EQ(tcl_.value("namespace eval inner { ::pointer flow }"), name_);
    tcl_.value("proc inner::flow args { return NULL }");
    EXPECT_EQ(tcl_.value("namespace eval inner { ::pointer flow }"), "NULL");
    EXPECT_EQ(tcl_.value("namespace eval inner { ::pointer ::flow }"), name_);
}

TEST_F(names, imported)
{
    tcl_.value("namespace eval a { namespace export flow }; rename " + name_ + " a::flow");
    tcl_.value("namespace eval b { namespace import ::a::flow }");
    EXPECT_EQ(tcl_.value("namespace eval b { ::pointer flow }"), name_);
    EXPECT_EQ(tcl_.value("b::flow words"), "b::flow " + name_);
    tcl_.value("b::flow -delete");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value("info commands a::*") + tcl_.value("info commands b::*"), "");
}

TEST_F(names, behind_an_alias)
{
    tcl_.value("interp alias {} flow {} " + name_);
    EXPECT_EQ(tcl_.value("pointer flow"), name_);
    EXPECT_EQ(tcl_.value("flow words a"), name_ + " " + name_ + " a");
    tcl_.value("flow -delete");
    EXPECT_EQ(tcl_.value("pointer flow"), "refused"); // the alias has outlived its target
}

// A word of a child interpreter may name an object of its parent.
TEST_F(names, of_another_interpreter)
{
    auto *const child = Tcl_CreateSlave(tcl_, "child", 0);
    Tcl_CreateObjCommand(child, "pointer", convert, this, nullptr);
    EXPECT_EQ(tcl_.value("child eval {pointer flow}"), "refused");
    tcl_.value("child alias flow " + name_);
    EXPECT_EQ(tcl_.value("child eval {pointer flow}"), name_);
    tcl_.value("interp delete child");
    EXPECT_EQ(thing::destroyed, 0);
}

TEST_F(names, hidden)
{
    tcl_.value("rename " + name_ + " flow; interp hide {} flow");
    EXPECT_EQ(tcl_.value("pointer flow"), "refused");
    EXPECT_EQ(tcl_.value("interp invokehidden {} flow cget -this"), name_);
    tcl_.value("interp expose {} flow");
    EXPECT_EQ(tcl_.value("pointer flow"), name_);
}

// An object that ends while it is asked for its handle was still there to answer.
TEST_F(names, that_end_when_they_are_asked)
{
    tcl_.value("rename " + name_ + " flow");
    tcl_.value("proc once args { set handle [flow cget -this]; flow -delete; return $handle }");
    EXPECT_EQ(tcl_.value("pointer once"), name_);
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value("pointer once"), "refused");
}

} // namespace
