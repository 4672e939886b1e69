// Commands that end while they run: in a method, in an accessor, between two accessors, in a
// deletion trace, in the destructor, with their interpreter. Memory checkers see what is touched
// afterwards.
#include "tests/objects/sample_class.h"

namespace {

// Evaluates the last word as a script. Then looks at everything that it was given once more.
int evaluate(ClientData data, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const std::string name = Tcl_GetString(objv[1]);
    const int status = Tcl_EvalObjEx(interp, objv[objc - 1], TCL_EVAL_GLOBAL);
    const auto *const instance = static_cast<swig_instance *>(data);
    EXPECT_EQ(Tcl_GetString(instance->handle), name);
    EXPECT_EQ(objv[1], instance->handle);
    EXPECT_GE(objv[1]->refCount, 1);
    EXPECT_STREQ(Tcl_GetString(objv[1]), name.c_str());
    EXPECT_NE(*Tcl_GetString(objv[0]), '\0');
    return status;
}

// What it evaluates is the object's own text.
int evaluate_text(ClientData data, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    const held_object script{*thing::of(data).text};
    Tcl_Obj *const words[] = {objv[0], objv[1], script};
    return evaluate(data, interp, 3, words);
}

int touch_and_set_width(ClientData data, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    thing::of(data).text->append("x"); // touches the object itself and what it holds
    return Tcl_GetIntFromObj(interp, objv[2], &thing::of(data).width);
}

class lifetime : public object_commands
{
protected:
    lifetime()
    {
        class_.method("eval", evaluate)
            .method("return_again",
                    [](ClientData data, Tcl_Interp *interp, int, Tcl_Obj *const[]) {
                        const auto &instance = *static_cast<swig_instance *>(data);
                        auto *const type = *instance.class_description->type;
                        Tcl_SetObjResult(interp,
                                         swig_new_instance_obj(interp, instance.pointer, type, 1));
                        return TCL_OK;
                    })
            .attribute("-eval", evaluate_text, evaluate)
            .attribute("-width", nullptr, touch_and_set_width)
            .destroyed_by(thing::destroy)
            .attach(type_);
    }

    /// An owned object, whose command a script finds in the variable `object`.
    std::string make(const std::string &text = "text")
    {
        object_ = thing::make(text);
        const auto name = returned(object_, 1);
        Tcl_SetVar(tcl_, "object", name.c_str(), TCL_GLOBAL_ONLY);
        return name;
    }

    thing *object_;
};

constexpr const char *endings[] = {
    "$object -delete",
    "rename $object {}",
    "proc $object args {}",
    "$object eval {$object -delete}",
    "$object eval {rename $object other}; other -delete",
    "$object -disown; $object -acquire; $object -delete",
};

TEST_F(lifetime, ends_in_a_method)
{
    for (const auto *ending : endings) {
        const auto name = make();
        const int before = thing::destroyed;
        tcl_.value(name + " eval {" + ending + "; set done yes}");
        EXPECT_EQ(tcl_.result(), "yes");
        EXPECT_EQ(thing::destroyed, before + 1) << ending;
        EXPECT_EQ(instance_of(name), nullptr);
        tcl_.eval("rename " + name + " {}");
    }
    EXPECT_EQ(thing::destroyed, thing::made);
}

// A method that fails after its command has ended.
TEST_F(lifetime, ends_in_a_method_with_an_error)
{
    const auto name = make();
    EXPECT_EQ(tcl_.error(name + " eval {$object -delete; error afterwards}"), "afterwards");
    EXPECT_EQ(thing::destroyed, 1);
}

TEST_F(lifetime, ends_in_a_getter)
{
    for (const auto *ending : endings) {
        const auto name = make(std::string(ending) + "; set done yes");
        const int before = thing::destroyed;
        EXPECT_EQ(tcl_.value(name + " cget -eval"), "yes");
        EXPECT_EQ(thing::destroyed, before + 1) << ending;
        tcl_.eval("rename " + name + " {}");
    }
}

TEST_F(lifetime, ends_in_the_last_setter)
{
    for (const auto *ending : endings) {
        const auto name = make();
        const int before = thing::destroyed;
        EXPECT_EQ(tcl_.value(name + " configure -width 1 -eval {" + ending + "; set done yes}"),
                  "yes");
        EXPECT_EQ(thing::destroyed, before + 1) << ending;
        tcl_.eval("rename " + name + " {}");
    }
}

// What remains to be set is refused, as it would be in a configure of its own: there is no object
// any more.
TEST_F(lifetime, ends_between_two_setters)
{
    for (const auto *ending : endings) {
        const auto name = make();
        const int before = thing::destroyed;
        EXPECT_EQ(tcl_.error(name + " configure -eval {" + ending + "} -width 1"),
                  "invalid command name \"" + name + "\"");
        EXPECT_EQ(thing::destroyed, before + 1) << ending;
        tcl_.eval("rename " + name + " {}");
    }
}

TEST_F(lifetime, ends_between_two_setters_of_a_borrowed_object)
{
    const auto name = make();
    tcl_.value(name + " -disown");
    EXPECT_EQ(tcl_.error("rename $object other; other configure -eval {other -delete} -width 1"),
              "invalid command name \"other\"");
    EXPECT_EQ(thing::destroyed, 0);
    EXPECT_EQ(object_->width, 0);
    thing::destroy(object_);
}

// The command is another one then, but it is there.
TEST_F(lifetime, goes_on_between_two_setters_under_another_name)
{
    const auto name = make();
    tcl_.value(name + " configure -eval {rename $object other} -width 3");
    EXPECT_EQ(object_->width, 3);
    tcl_.value("other -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

// The result that a method makes replaces the command which is running. That was borrowed, or it
// would have destroyed the object.
TEST_F(lifetime, ends_by_its_own_successor)
{
    const auto name = make();
    tcl_.value(name + " -disown");
    EXPECT_EQ(tcl_.value(name + " return_again"), name);
    EXPECT_EQ(thing::destroyed, 0);
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "1");
    EXPECT_EQ(*object_->text, "text");
    tcl_.value(name + " -disown");
    EXPECT_EQ(tcl_.error(name + " configure -eval {$object return_again} -width 1"),
              "invalid command name \"" + name + "\"");
    EXPECT_EQ(object_->width, 0);
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

TEST_F(lifetime, ends_by_its_own_successor_and_destroys_what_it_owns)
{
    static int destroyed;
    destroyed = 0;
    class_.destroyed_by([](void *) { ++destroyed; });
    const auto name = make();
    EXPECT_EQ(tcl_.value(name + " return_again"), name);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "1");
    tcl_.value(name + " -delete");
    EXPECT_EQ(destroyed, 2);
    thing::destroy(object_);
}

TEST_F(lifetime, ends_deep_inside)
{
    const auto name = make();
    std::string script = "$object -delete; set done yes";
    for (int depth = 0; depth < 20; ++depth)
        script = "$object eval {" + script + "}";
    EXPECT_EQ(tcl_.value(script), "yes");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_FALSE(is_command(name));
}

// Two objects, each of which ends the other's command within its own.
TEST_F(lifetime, ends_in_another_objects_method)
{
    const auto first = make();
    const auto second = make();
    EXPECT_EQ(tcl_.value(first + " eval {" + second + " eval {" + first + " -delete; " + second +
                         " -delete; set done yes}}"),
              "yes");
    EXPECT_EQ(thing::destroyed, 2);
}

// Tcl still knows the command while a trace says that it goes.
TEST_F(lifetime, is_used_in_a_deletion_trace)
{
    for (const char *use :
         {"$object -delete", "$object eval {$object -delete}", "rename $object {}",
          "$object configure -width 1", "lappend seen [$object cget -this]", "$object -acquire"}) {
        const auto name = make();
        const int before = thing::destroyed;
        tcl_.value("trace add command " + name + " delete {apply {args {global object; " + use +
                   "}}}");
        tcl_.value(name + " -delete");
        EXPECT_EQ(thing::destroyed, before + 1) << use;
        EXPECT_FALSE(is_command(name));
        EXPECT_FALSE(owned(object_));
    }
}

TEST_F(lifetime, is_given_up_in_a_deletion_trace)
{
    const auto name = make();
    tcl_.value("trace add command " + name + " delete {apply {args {$::object -disown}}}");
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 0);
    thing::destroy(object_);
}

// A destructor that asks its own command once more.
class in_a_destructor : public lifetime
{
protected:
    in_a_destructor()
    {
        interp_ = tcl_;
        class_.destroyed_by([](void *pointer) {
            const std::string script = *static_cast<thing *>(pointer)->text;
            outcome_ = std::to_string(Tcl_EvalEx(interp_, script.c_str(), -1, TCL_EVAL_GLOBAL));
            outcome_ += std::string(" ") + Tcl_GetStringResult(interp_);
            thing::destroy(pointer);
        });
    }
    static inline Tcl_Interp *interp_;
    static inline std::string outcome_;
};

TEST_F(in_a_destructor, the_command_is_still_there)
{
    auto name = make("$object cget -this");
    tcl_.value(name + " -delete");
    EXPECT_EQ(outcome_, "0 " + name);
    name = make("$object cget -thisown");
    tcl_.value(name + " -delete");
    EXPECT_EQ(outcome_, "0 0");
    EXPECT_EQ(thing::destroyed, 2);
}

TEST_F(in_a_destructor, another_deletion_does_nothing)
{
    for (const char *script :
         {"$object -delete", "rename $object {}", "$object eval {$object -delete}",
          "$object -delete; catch {$object -delete}; set none {}"}) {
        const auto name = make(script);
        const int before = thing::destroyed;
        tcl_.value(name + " -delete");
        EXPECT_EQ(outcome_, "0 ") << script;
        EXPECT_EQ(thing::destroyed, before + 1) << script;
        EXPECT_FALSE(is_command(name));
    }
}

// ---------------------------------------------------------------------------------- with the
// interpreter

class with_interpreter : public lifetime
{
protected:
    /// An owned object of a child interpreter, whose command is the child's variable `object`.
    std::string make_in_child(const std::string &text = "text")
    {
        child_ = Tcl_CreateSlave(tcl_, "child", 0);
        object_ = thing::make(text);
        const auto name = returned(child_, object_, 1);
        Tcl_SetVar(child_, "object", name.c_str(), TCL_GLOBAL_ONLY);
        tcl_.value("child alias end_child interp delete child");
        return name;
    }
    Tcl_Interp *child_;
};

TEST_F(with_interpreter, ends_in_a_method)
{
    const auto name = make_in_child();
    tcl_.eval("child eval {" + name + " eval end_child}");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value("interp exists child"), "0");
}

TEST_F(with_interpreter, ends_in_accessors)
{
    make_in_child("end_child");
    tcl_.eval("child eval {$object cget -eval}");
    EXPECT_EQ(thing::destroyed, 1);
    make_in_child();
    tcl_.eval("child eval {$object configure -eval end_child}");
    EXPECT_EQ(thing::destroyed, 2);
    EXPECT_EQ(tcl_.value("interp exists child"), "0");
}

// Whether the second setter still runs is Tcl's matter; the object is destroyed afterwards, once.
TEST_F(with_interpreter, ends_between_two_setters)
{
    make_in_child();
    tcl_.eval("child eval {$object configure -eval end_child -width 1}");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value("interp exists child"), "0");
}

TEST_F(with_interpreter, ends_in_the_object_of_a_parent)
{
    const auto name = make();
    const int before = thing::destroyed;
    tcl_.value("interp create child; child alias object " + name);
    tcl_.value("child eval {object eval {interp delete child; set done yes}}");
    EXPECT_EQ(tcl_.value("set done"), "yes");
    EXPECT_EQ(thing::destroyed, before);
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, before + 1);
}

} // namespace
