// Methods and attributes of bases: in which order classes are searched, and how a base is found by
// its name in the modules that the interpreter's registry holds.
#include "tests/objects/sample_class.h"

namespace {

constexpr const char *registry = "swig_runtime_data_type_pointer4";

template <char Id> int answer(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    const char text[] = {Id, '\0'};
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text, 1));
    return TCL_OK;
}

// Types _p_left, _p_right, _p_root and _p_third of one module. The class of _p_thing has no base
// until a test names some.
class bases : public object_commands
{
protected:
    void link() { module_.link(tcl_); }
    void make()
    {
        class_.attach(type_);
        name_ = returned(at(0x10));
    }
    std::string value(const std::string &words) { return tcl_.value(name_ + " " + words); }
    std::string error(const std::string &words) { return tcl_.error(name_ + " " + words); }

    sample_module module_{"_p_left", "_p_right", "_p_root", "_p_third"};
    sample_class left_{"left"};
    sample_class right_{"right"};
    sample_class root_{"root"};
    std::string name_;
};

TEST_F(bases, bring_methods_and_attributes)
{
    link();
    left_.method("press", answer<'m'>).attribute("-width", answer<'g'>, answer<'s'>);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    make();
    EXPECT_EQ(value("press"), "m");
    EXPECT_EQ(value("cget -width"), "g");
    EXPECT_EQ(value("configure -width 1"), "s");
    EXPECT_EQ(error("pull"), std::string(invalid) + " press");
    EXPECT_EQ(error("cget -height"), "Invalid attribute name.");
}

TEST_F(bases, stand_behind_the_class)
{
    link();
    left_.method("press", answer<'l'>).attribute("-width", answer<'l'>, nullptr);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left").method("press", answer<'o'>).attribute("-width", answer<'o'>, nullptr);
    make();
    EXPECT_EQ(value("press"), "o");
    EXPECT_EQ(value("cget -width"), "o");
    EXPECT_EQ(error("pull"), std::string(invalid) + " press");
}

// The first base with all that stands behind it comes before the second.
TEST_F(bases, are_searched_depth_first)
{
    link();
    root_.method("a", answer<'0'>).method("b", answer<'0'>).method("c", answer<'0'>);
    root_.attribute("-a", answer<'0'>, nullptr).attribute("-b", answer<'0'>, nullptr);
    root_.attach(module_.own("_p_root"));
    left_.method("a", answer<'1'>).base("_p_root").attribute("-a", answer<'1'>, nullptr);
    left_.attach(module_.own("_p_left"));
    right_.method("a", answer<'2'>).method("b", answer<'2'>).method("d", answer<'2'>);
    right_.attribute("-b", answer<'2'>, nullptr).attribute("-d", answer<'2'>, nullptr);
    right_.attach(module_.own("_p_right"));
    class_.base("_p_left").base("_p_right").method("e", answer<'3'>);
    make();
    EXPECT_EQ(value("a") + value("b") + value("c") + value("d") + value("e"), "10023");
    EXPECT_EQ(value("cget -a") + value("cget -b") + value("cget -d"), "102");
    EXPECT_EQ(error("pull"), std::string(invalid) + " e a b c d");
}

TEST_F(bases, that_two_classes_share_are_listed_once)
{
    link();
    root_.method("press", answer<'0'>).method("two words", answer<'0'>);
    root_.attach(module_.own("_p_root"));
    left_.base("_p_root");
    left_.attach(module_.own("_p_left"));
    right_.base("_p_root");
    right_.attach(module_.own("_p_right"));
    class_.base("_p_left").base("_p_right");
    make();
    EXPECT_EQ(value("press"), "0");
    // A name with a blank is not recognised among the words.
    EXPECT_EQ(error("pull"), std::string(invalid) + " press {two words} {two words}");
}

// A base's method gets the object's own instance and handle.
TEST_F(bases, see_the_instance_of_the_derived_object)
{
    link();
    static ClientData seen;
    left_.method("press", [](ClientData data, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]) {
        seen = data;
        Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
        return TCL_OK;
    });
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    make();
    EXPECT_EQ(value("press it"), name_ + " " + name_ + " it");
    EXPECT_EQ(seen, instance_of(name_));
    EXPECT_EQ(instance_of(name_)->class_description, class_.description());
}

// An object that is destroyed is destroyed by its own class, not by its bases too.
TEST_F(bases, do_not_destroy)
{
    link();
    left_.destroyed_by(thing::destroy);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    class_.attach(type_);
    auto *const object = thing::make();
    tcl_.value(returned(object, 1) + " -delete");
    EXPECT_EQ(thing::destroyed, 0);
    EXPECT_FALSE(owned(object));
    thing::destroy(object);
}

// ------------------------------------------------------------------------------- bases known by
// name only

TEST_F(bases, are_looked_up_when_they_are_needed)
{
    link();
    left_.method("press", answer<'l'>);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left").method("own", answer<'o'>);
    make();
    EXPECT_EQ(class_.known_base(0), nullptr);
    EXPECT_EQ(value("own"), "o"); // found before any base is asked
    EXPECT_EQ(class_.known_base(0), nullptr);
    EXPECT_EQ(value("press"), "l");
    EXPECT_EQ(class_.known_base(0), left_.description());
}

TEST_F(bases, are_looked_up_once)
{
    link();
    left_.method("press", answer<'l'>);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    make();
    EXPECT_EQ(value("press"), "l");
    Tcl_UnsetVar(tcl_, registry, TCL_GLOBAL_ONLY);
    EXPECT_EQ(value("press"), "l");
    EXPECT_EQ(error("pull"), std::string(invalid) + " press");
}

TEST_F(bases, that_are_known_need_no_registry)
{
    left_.method("press", answer<'l'>);
    plain_type left_type{"_p_left"};
    left_.attach(left_type);
    class_.base("_p_left");
    make();
    class_.description()->bases[0] = left_.description();
    EXPECT_EQ(value("press"), "l");
}

TEST_F(bases, that_nobody_has_are_left_out)
{
    link();
    left_.method("press", answer<'l'>);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_nowhere").base("_p_left").base("").base("_p_lef").base("_p_left_");
    make();
    EXPECT_EQ(value("press"), "l");
    EXPECT_EQ(error("pull"), std::string(invalid) + " press");
    EXPECT_EQ(error("cget -width"), "Invalid attribute name.");
    for (const std::size_t number : {0, 2, 3, 4})
        EXPECT_EQ(class_.known_base(number), nullptr);
}

TEST_F(bases, without_a_registry_are_left_out)
{
    class_.base("_p_left");
    make();
    EXPECT_EQ(error("press"), invalid);
    Tcl_SetVar(tcl_, registry, "garbage", TCL_GLOBAL_ONLY);
    EXPECT_EQ(error("press"), invalid);
    EXPECT_EQ(class_.known_base(0), nullptr);
}

// Not finding one is not remembered: a module that is loaded later may bring it.
TEST_F(bases, may_come_later)
{
    class_.base("_p_left").base("_p_right");
    make();
    EXPECT_EQ(error("press"), invalid);
    link();
    EXPECT_EQ(error("press"), invalid); // the types are there, their classes are not
    left_.method("press", answer<'l'>);
    left_.attach(module_.own("_p_left"));
    EXPECT_EQ(value("press"), "l");
    right_.method("pull", answer<'r'>);
    right_.attach(module_.own("_p_right"));
    EXPECT_EQ(value("pull"), "r");
}

TEST_F(bases, may_be_another_modules)
{
    sample_module other{"_p_another"};
    link();
    other.link(tcl_);
    left_.method("press", answer<'l'>);
    left_.attach(other.own("_p_another"));
    class_.base("_p_another");
    make();
    EXPECT_EQ(value("press"), "l");
}

// Whose interpreter it is decides where a name is looked up.
TEST_F(bases, are_looked_up_in_the_calling_interpreter)
{
    interpreter other;
    link();
    left_.method("press", answer<'l'>);
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    make();
    returned(other, at(0x10));
    EXPECT_EQ(other.error(name_ + " press"), invalid);
    EXPECT_EQ(value("press"), "l");
    EXPECT_EQ(other.value(name_ + " press"), "l"); // known by now
}

TEST_F(bases, of_bases_are_found_by_name_too)
{
    link();
    root_.method("press", answer<'0'>);
    root_.attach(module_.own("_p_root"));
    left_.base("_p_root");
    left_.attach(module_.own("_p_left"));
    class_.base("_p_left");
    make();
    EXPECT_EQ(value("press"), "0");
    EXPECT_EQ(left_.known_base(0), root_.description());
    // The base's own objects have it as well.
    const held_object handle{swig_new_instance_obj(tcl_, at(0x20), module_.own("_p_left"), 0)};
    EXPECT_EQ(tcl_.value(handle.text() + " press"), "0");
}

} // namespace
