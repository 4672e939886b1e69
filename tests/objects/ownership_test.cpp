// Who destroys an object, and that it happens once: -acquire, -disown and -delete in every order,
// objects of several commands and of several interpreters.
#include "runtime/handle.h"
#include "tests/objects/sample_class.h"

namespace {

class ownership : public object_commands
{
protected:
    ownership()
    {
        class_.destroyed_by(thing::destroy);
        class_.attach(type_);
    }
    // What a command does that takes an object over.
    void take_over(const std::string &name)
    {
        void *pointer;
        const held_object word{name};
        EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, type_, swig_disown), 0);
    }
};

TEST_F(ownership, of_a_borrowed_object_is_not_the_commands)
{
    auto *const object = thing::make();
    const auto name = returned(object);
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "0");
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 0);
    EXPECT_EQ(tcl_.error(name), "invalid command name \"" + name + "\"");
    thing::destroy(object);
}

TEST_F(ownership, of_an_owned_object_ends_with_its_command)
{
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "1");
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_FALSE(owned(object));
    EXPECT_EQ(tcl_.error(name), "invalid command name \"" + name + "\"");
}

// Renaming to nothing, and a procedure of the same name, end a command as well.
TEST_F(ownership, ends_however_the_command_ends)
{
    tcl_.value("rename " + returned(thing::make(), 1) + " {}");
    EXPECT_EQ(thing::destroyed, 1);
    tcl_.value("proc " + returned(thing::make(), 1) + " args {}");
    EXPECT_EQ(thing::destroyed, 2);
    const auto name = returned(thing::make(), 1);
    tcl_.value("namespace eval inner {}; rename " + name +
               " inner::object; namespace delete inner");
    EXPECT_EQ(thing::destroyed, 3);
    Tcl_DeleteCommand(tcl_, returned(thing::make(), 1).c_str());
    EXPECT_EQ(thing::destroyed, 4);
}

TEST_F(ownership, without_a_destructor)
{
    class_.destroyed_by(nullptr);
    auto *const object = thing::make();
    tcl_.value(returned(object, 1) + " -delete");
    EXPECT_FALSE(owned(object));
    thing::destroy(object);
}

// A model of two bits, the command's flag and the table's entry, against every sequence of up to
// five steps.
TEST_F(ownership, in_every_order)
{
    enum step { acquire, disown, taken_over, entered_by_others, steps };
    int sequences = 0;
    for (int length = 0; length <= 5; ++length) {
        int count = 2; // to begin with: borrowed or owned
        for (int i = 0; i < length; ++i)
            count *= steps;
        for (int sequence = 0; sequence < count; ++sequence, ++sequences) {
            bool flag = sequence % 2 == 1;
            bool entry = flag;
            auto *const object = thing::make();
            const auto name = returned(object, flag ? 1 : 0);
            for (int i = 0, rest = sequence / 2; i < length; ++i, rest /= steps) {
                switch (rest % steps) {
                case acquire:
                    tcl_.eval(name + " -acquire");
                    flag = entry = true;
                    break;
                case disown: // of what the command does not own, the entry stays
                    tcl_.eval(name + " -disown");
                    entry = entry && !flag;
                    flag = false;
                    break;
                case taken_over:
                    take_over(name);
                    entry = false;
                    break;
                case entered_by_others:
                    qxsh::object_table::acquire(object);
                    entry = true;
                    break;
                }
                ASSERT_EQ(owned(object), entry);
                ASSERT_EQ(tcl_.value(name + " cget -thisown"), entry ? "1" : "0");
                ASSERT_EQ(instance_of(name)->owned, flag ? 1 : 0);
            }
            const int before = thing::destroyed;
            tcl_.eval(name + " -delete");
            const bool destroyed = flag && entry;
            ASSERT_EQ(thing::destroyed - before, destroyed ? 1 : 0) << length << ": " << sequence;
            ASSERT_EQ(owned(object), entry && !flag);
            if (!destroyed) {
                qxsh::object_table::disown(object);
                thing::destroy(object);
            }
        }
    }
    EXPECT_EQ(sequences, 2 * (1 + 4 + 16 + 64 + 256 + 1024));
    EXPECT_EQ(thing::destroyed, thing::made);
}

// Renamed away, the first command still has the object; the second is made anew.
TEST_F(ownership, of_one_object_by_two_commands)
{
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    tcl_.value("rename " + name + " first");
    returned(object, 1);
    EXPECT_EQ(tcl_.value("first cget -this"), name);
    EXPECT_NE(instance_of("first"), instance_of(name));
    tcl_.value("first -delete");
    EXPECT_EQ(thing::destroyed, 1);
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

TEST_F(ownership, given_up_by_one_of_two_commands)
{
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    tcl_.value("rename " + name + " first");
    returned(object, 1);
    tcl_.value("first -disown"); // the table has one entry for both
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "0");
    tcl_.value(name + " -delete; first -delete");
    EXPECT_EQ(thing::destroyed, 0);
    thing::destroy(object);
}

TEST_F(ownership, of_one_object_in_two_interpreters)
{
    auto *const object = thing::make();
    std::string name;
    {
        interpreter other;
        name = returned(object, 1);
        EXPECT_EQ(returned(other, object, 1), name);
        EXPECT_EQ(other.value(name + " cget -thisown"), "1");
        EXPECT_NE(instance_of(tcl_, name), instance_of(other, name));
    }
    EXPECT_EQ(thing::destroyed, 1);
    EXPECT_EQ(tcl_.value(name + " cget -thisown"), "0");
    tcl_.value(name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

// The same pointer as objects of two types: the table knows pointers only.
TEST_F(ownership, of_one_pointer_as_two_types)
{
    plain_type part_type{"_p_part"};
    sample_class part_class{"part"};
    part_class.destroyed_by(thing::destroy).attach(part_type);
    auto *const object = thing::make();
    const auto name = returned(object, 1);
    const auto part = held_object{swig_new_instance_obj(tcl_, object, part_type, 1)}.text();
    EXPECT_NE(part, name);
    tcl_.value(part + " -delete; " + name + " -delete");
    EXPECT_EQ(thing::destroyed, 1);
}

// A pointer that is used again is a new object: nothing of the earlier one is left.
TEST_F(ownership, of_a_place_that_is_used_again)
{
    void *previous = nullptr;
    int reused = 0;
    for (int time = 0; time < 10; ++time) {
        auto *const object = thing::make();
        reused += object == previous;
        previous = object;
        EXPECT_FALSE(owned(object));
        const auto name = returned(object, 1);
        EXPECT_EQ(tcl_.value(name + " cget -thisown"), "1");
        tcl_.value(name + " -delete");
    }
    EXPECT_EQ(thing::destroyed, 10);
    RecordProperty("reused", reused);
}

TEST_F(ownership, ends_with_the_interpreter)
{
    std::vector<thing *> borrowed;
    {
        interpreter other;
        for (int i = 0; i < 100; ++i) {
            returned(other, thing::make(), 1);
            borrowed.push_back(thing::make());
            returned(other, borrowed.back(), 0);
            auto *const given_up = thing::make();
            other.value(returned(other, given_up, 1) + " -disown");
            borrowed.push_back(given_up);
            other.value(returned(other, thing::make(), 0) + " -acquire");
            other.value("rename " + returned(other, thing::make(), 1) + " object" +
                        std::to_string(i));
        }
        EXPECT_EQ(thing::destroyed, 0);
    }
    EXPECT_EQ(thing::destroyed, 300);
    for (auto *object : borrowed) {
        EXPECT_FALSE(owned(object));
        thing::destroy(object);
    }
    EXPECT_EQ(thing::destroyed, thing::made);
}

TEST_F(ownership, ends_with_a_child_interpreter)
{
    auto *const child = Tcl_CreateSlave(tcl_, "child", 0);
    ASSERT_NE(child, nullptr);
    const auto name = returned(child, thing::make(), 1);
    EXPECT_EQ(tcl_.value("child eval {" + name + " cget -thisown}"), "1");
    tcl_.value("interp delete child");
    EXPECT_EQ(thing::destroyed, 1);
}

} // namespace
