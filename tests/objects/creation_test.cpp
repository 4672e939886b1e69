// When a returned pointer becomes an object command, and what it replaces.
#include "runtime/handle.h"
#include "tests/objects/sample_class.h"

namespace {

class creation : public object_commands
{
protected:
    creation() { class_.destroyed_by(thing::destroy); }

    std::string commands() { return tcl_.value("lsort [info commands *_p_*]"); }
};

TEST_F(creation, needs_a_class)
{
    EXPECT_EQ(returned(at(0x0001a2b0)), "_b0a20100_p_thing");
    EXPECT_EQ(returned(at(0x0001a2b0), 1), "_b0a20100_p_thing");
    EXPECT_EQ(commands(), "");
    EXPECT_FALSE(owned(at(0x0001a2b0)));
}

TEST_F(creation, makes_a_command_named_like_the_handle)
{
    class_.attach(type_);
    EXPECT_EQ(returned(at(0x0001a2b0)), "_b0a20100_p_thing");
    EXPECT_EQ(commands(), "_b0a20100_p_thing");
    EXPECT_EQ(tcl_.result(), "_b0a20100_p_thing"); // nothing but our own question has a result
    EXPECT_FALSE(owned(at(0x0001a2b0)));
}

TEST_F(creation, fills_the_instance)
{
    class_.attach(type_);
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    const auto *const instance = instance_of(name);
    ASSERT_NE(instance, nullptr);
    EXPECT_STREQ(Tcl_GetString(instance->handle), name.c_str());
    EXPECT_EQ(instance->handle->refCount, 1);
    EXPECT_EQ(instance->pointer, object);
    EXPECT_EQ(instance->class_description, class_.description());
    EXPECT_EQ(instance->owned, 1);
    EXPECT_EQ(instance->token, Tcl_FindCommand(tcl_, name.c_str(), nullptr, TCL_GLOBAL_ONLY));
    EXPECT_TRUE(owned(object));
}

// The caller may do with the result what it likes.
TEST_F(creation, gives_a_handle_of_its_own)
{
    class_.attach(type_);
    Tcl_Obj *const handle = swig_new_instance_obj(tcl_, at(0x10), type_, 0);
    EXPECT_EQ(handle->refCount, 0);
    EXPECT_NE(handle, instance_of("_10000000_p_thing")->handle);
    Tcl_AppendToObj(handle, "!", 1);
    EXPECT_EQ(held_object{handle}.text(), "_10000000_p_thing!");
    EXPECT_EQ(tcl_.value("_10000000_p_thing cget -this"), "_10000000_p_thing");
}

TEST_F(creation, leaves_the_result_alone)
{
    class_.attach(type_);
    tcl_.eval("set result {an earlier result}");
    returned(at(0x10));
    returned(at(0x10), 1);
    EXPECT_EQ(tcl_.result(), "an earlier result");
    EXPECT_TRUE(qxsh::object_table::disown(at(0x10)));
}

// A null pointer is no exception: its handle and its command are called "NULL".
TEST_F(creation, makes_a_command_of_a_null_pointer)
{
    static std::vector<void *> destroyed;
    destroyed.clear();
    class_.destroyed_by([](void *pointer) { destroyed.push_back(pointer); });
    class_.attach(type_);
    EXPECT_EQ(returned(nullptr), "NULL");
    EXPECT_EQ(tcl_.value("info commands {NULL*}"), "NULL");
    EXPECT_EQ(instance_of("NULL")->pointer, nullptr);
    EXPECT_EQ(tcl_.value("NULL cget -this"), "NULL");
    EXPECT_EQ(tcl_.value("NULL cget -thisown"), "0");
    tcl_.value("NULL -delete");
    EXPECT_TRUE(destroyed.empty());
    returned(nullptr, 1);
    EXPECT_TRUE(owned(nullptr));
    EXPECT_EQ(tcl_.value("NULL cget -thisown"), "1");
    tcl_.value("NULL -delete");
    EXPECT_EQ(destroyed, std::vector<void *>{nullptr});
    EXPECT_FALSE(owned(nullptr));
    EXPECT_EQ(tcl_.value("info commands {NULL*}"), "");
}

TEST_F(creation, makes_no_command_of_a_null_pointer_without_a_class)
{
    EXPECT_EQ(returned(nullptr, 1), "NULL");
    EXPECT_EQ(tcl_.value("info commands {NULL*}"), "");
    EXPECT_FALSE(owned(nullptr));
}

// As with any other handle.
TEST_F(creation, leaves_or_replaces_a_command_named_NULL)
{
    class_.destroyed_by(nullptr).attach(type_);
    tcl_.value("proc NULL args { return {still here} }");
    EXPECT_EQ(returned(nullptr, 0), "NULL");
    EXPECT_EQ(tcl_.value("NULL"), "still here");
    EXPECT_EQ(returned(nullptr, 1), "NULL");
    EXPECT_EQ(tcl_.value("NULL cget -this"), "NULL");
    tcl_.value("NULL -delete");
}

TEST_F(creation, needs_an_interpreter)
{
    class_.attach(type_);
    for (const int flags : {0, 1}) {
        EXPECT_EQ(returned(nullptr, at(0x10), flags), "_10000000_p_thing");
        EXPECT_FALSE(owned(at(0x10)));
    }
    EXPECT_EQ(commands(), "");
}

// A handle is made in 1024 bytes, its end included: 1014 remain for the type's name.
TEST_F(creation, gives_no_object_when_the_name_is_too_long)
{
    plain_type longest{"_p_" + std::string(1011, 'x')};
    plain_type too_long{"_p_" + std::string(1012, 'x')};
    sample_class one{"one"};
    sample_class two{"two"};
    one.attach(longest);
    two.attach(too_long);
    for (const int flags : {0, 1}) {
        const held_object handle{swig_new_instance_obj(tcl_, at(0x10), longest, flags)};
        EXPECT_EQ(handle.text(), std::string("_10000000_p_") + std::string(1011, 'x'));
        EXPECT_EQ(commands(), handle.text());
        EXPECT_EQ(swig_new_instance_obj(tcl_, at(0x20), too_long, flags), nullptr);
        EXPECT_EQ(commands(), handle.text());
        EXPECT_FALSE(owned(at(0x20)));
        EXPECT_EQ(held_object{swig_new_instance_obj(tcl_, nullptr, too_long, flags)}.text(),
                  "NULL");
        tcl_.value("NULL -delete; " + handle.text() + " -delete");
    }
}

#if defined(NDEBUG) && UINTPTR_MAX > UINT32_MAX
// Such a pointer has no handle, hence no command.
TEST_F(creation, makes_nothing_of_a_pointer_above_4_GiB)
{
    class_.attach(type_);
    auto *const high = reinterpret_cast<void *>((std::uintptr_t{1} << 32) + 16);
    for (const int flags : {0, 1}) {
        EXPECT_EQ(returned(high, flags), "NULL");
        EXPECT_EQ(tcl_.value("info commands {NULL*}"), "");
        EXPECT_FALSE(owned(high));
    }
}
#endif

TEST_F(creation, keeps_the_command_that_is_there)
{
    class_.attach(type_);
    const auto name = returned(at(0x10));
    const auto *const instance = instance_of(name);
    EXPECT_EQ(returned(at(0x10)), name);
    EXPECT_EQ(instance_of(name), instance);
    EXPECT_EQ(commands(), name);
}

// Returning an owned object again, as a borrowed one, takes nothing away.
TEST_F(creation, keeps_an_owner)
{
    class_.attach(type_);
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    const auto *const instance = instance_of(name);
    returned(object, 0);
    EXPECT_EQ(instance_of(name), instance);
    EXPECT_EQ(instance->owned, 1);
    EXPECT_TRUE(owned(object));
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

TEST_F(creation, replaces_a_borrowed_one_by_an_owner)
{
    class_.attach(type_);
    auto *const object = thing::make();
    const auto name = returned(object, 0);
    EXPECT_EQ(instance_of(name)->owned, 0);
    EXPECT_FALSE(owned(object));
    returned(object, 1);
    EXPECT_EQ(instance_of(name)->owned, 1);
    EXPECT_TRUE(owned(object));
    EXPECT_EQ(commands(), name);
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

// The earlier command ends like any other: it destroys what it owns, though the new one stands for
// the same pointer.
TEST_F(creation, replaces_an_owner_that_destroys_its_object)
{
    static int destroyed;
    destroyed = 0;
    class_.destroyed_by([](void *) { ++destroyed; });
    class_.attach(type_);
    const auto name = returned(at(0x10), 1);
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(destroyed, time);
        EXPECT_EQ(returned(at(0x10), 1), name);
        EXPECT_EQ(destroyed, time + 1);
        EXPECT_EQ(instance_of(name)->owned, 1);
        EXPECT_TRUE(owned(at(0x10)));
        EXPECT_EQ(commands(), name);
    }
    tcl_.value(name + " -delete");
    EXPECT_EQ(destroyed, 4);
    EXPECT_FALSE(owned(at(0x10)));
}

// What was taken over is not destroyed, whatever the earlier command's flag says.
TEST_F(creation, replaces_an_owner_of_an_object_that_was_taken_over)
{
    class_.attach(type_);
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    EXPECT_TRUE(qxsh::object_table::disown(object));
    returned(object, 1);
    EXPECT_EQ(thing::destroyed, 0);
    EXPECT_TRUE(owned(object));
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

TEST_F(creation, leaves_or_replaces_commands_of_others)
{
    class_.attach(type_);
    tcl_.value("proc _10000000_p_thing args { return {a procedure} }");
    returned(at(0x10), 0);
    EXPECT_EQ(tcl_.value("_10000000_p_thing"), "a procedure");
    returned(at(0x10), 1);
    EXPECT_EQ(tcl_.value("_10000000_p_thing cget -this"), "_10000000_p_thing");
    EXPECT_TRUE(owned(at(0x10)));
    tcl_.value("_10000000_p_thing -disown");
}

// The command is global, whoever asks. So is the one that is looked for: another command of that
// name in the namespace of the moment neither stands in its way nor hides it.
class in_a_namespace : public creation
{
protected:
    in_a_namespace()
    {
        class_.attach(type_);
        static in_a_namespace *self; // for a command without client data
        self = this;
        Tcl_CreateObjCommand(
            tcl_, "return_it",
            [](ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const *) {
                Tcl_SetObjResult(
                    interp, swig_new_instance_obj(interp, self->object_, self->type_, objc - 1));
                return TCL_OK;
            },
            nullptr, nullptr);
    }

    thing *object_ = thing::make();
};

TEST_F(in_a_namespace, the_command_is_global)
{
    const auto name = tcl_.value("namespace eval inner { return_it }");
    EXPECT_EQ(tcl_.value("namespace which " + name), "::" + name);
    EXPECT_EQ(tcl_.value("namespace eval inner { " + name + " cget -this }"), name);
    EXPECT_EQ(tcl_.value("info commands inner::*"), "");
    thing::destroy(object_);
}

TEST_F(in_a_namespace, a_namesake_is_in_nobodys_way)
{
    const auto name = returned(nullptr, object_);
    tcl_.value("namespace eval inner { proc " + name + " args { return namesake } }");
    EXPECT_EQ(tcl_.value("namespace eval inner { return_it }"), name);
    ASSERT_NE(instance_of("::" + name), nullptr);
    EXPECT_EQ(tcl_.value("inner::" + name), "namesake");
    thing::destroy(object_);
}

TEST_F(in_a_namespace, a_namesake_does_not_hide_the_command)
{
    const auto name = returned(object_, 0);
    const auto *const instance = instance_of("::" + name);
    tcl_.value("namespace eval inner { proc " + name + " args { return namesake } }");
    EXPECT_EQ(tcl_.value("namespace eval inner { return_it }"), name);
    EXPECT_EQ(instance_of("::" + name), instance);
    EXPECT_EQ(tcl_.value("namespace eval inner { return_it owned }"), name);
    EXPECT_TRUE(owned(object_));
    EXPECT_EQ(tcl_.value("inner::" + name), "namesake");
    tcl_.value("::" + name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

} // namespace
