// cget and configure.
#include "tests/objects/sample_class.h"

namespace {

int get_width(ClientData instance, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewIntObj(thing::of(instance).width));
    return TCL_OK;
}

int set_width(ClientData instance, Tcl_Interp *interp, int, Tcl_Obj *const objv[])
{
    return Tcl_GetIntFromObj(interp, objv[2], &thing::of(instance).width);
}

int get_text(ClientData instance, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(thing::of(instance).text->c_str(), -1));
    return TCL_OK;
}

int set_text(ClientData instance, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    *thing::of(instance).text = Tcl_GetString(objv[2]);
    Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
    return TCL_OK;
}

class attributes : public object_commands
{
protected:
    attributes()
    {
        class_.attribute("-width", get_width, set_width)
            .attribute("-text", get_text, set_text)
            .attribute("-words", report_words, report_words)
            .attribute("-read_only", get_width, nullptr)
            .attribute("-write_only", nullptr, set_width)
            .attribute("two words", get_width, set_width)
            .attribute("plain", get_width, set_width)
            .destroyed_by(thing::destroy);
    }
    void SetUp() override
    {
        class_.attach(type_);
        object_ = thing::make("first");
        object_->width = 7;
        name_ = returned(object_, 1);
    }
    std::string value(const std::string &words) { return tcl_.value(name_ + " " + words); }
    std::string error(const std::string &words) { return tcl_.error(name_ + " " + words); }

    thing *object_;
    std::string name_;
};

TEST_F(attributes, this_is_a_copy_of_the_handle)
{
    EXPECT_EQ(tcl_.eval(name_ + " cget -this"), TCL_OK);
    EXPECT_NE(Tcl_GetObjResult(tcl_), instance_of(name_)->handle);
    EXPECT_EQ(tcl_.result(), name_);
    EXPECT_EQ(instance_of(name_)->handle->refCount, 1);
    EXPECT_EQ(tcl_.value("set copy [" + name_ + " cget -this]; append copy !"), name_ + "!");
    EXPECT_EQ(value("cget -this"), name_);
}

// What counts is the object table, not the flag of this command.
TEST_F(attributes, thisown_is_the_object_tables)
{
    EXPECT_EQ(value("cget -thisown"), "1");
    qxsh::object_table::disown(object_);
    EXPECT_EQ(value("cget -thisown"), "0");
    EXPECT_EQ(instance_of(name_)->owned, 1);
    qxsh::object_table::acquire(object_);
    EXPECT_EQ(value("cget -thisown"), "1");
    value("-disown");
    EXPECT_EQ(value("cget -thisown"), "0");
    qxsh::object_table::acquire(object_);
    EXPECT_EQ(value("cget -thisown"), "1");
    value("-acquire");
}

TEST_F(attributes, are_read)
{
    EXPECT_EQ(value("cget -width"), "7");
    EXPECT_EQ(value("cget -text"), "first");
    EXPECT_EQ(value("cget {two words}"), "7");
    EXPECT_EQ(value("cget plain"), "7");
    object_->width = 8;
    EXPECT_EQ(value("cget -width"), "8");
}

TEST_F(attributes, are_written)
{
    value("configure -width 12");
    EXPECT_EQ(object_->width, 12);
    value("configure {two words} 13");
    EXPECT_EQ(object_->width, 13);
    value("configure -text {a b} -width -4");
    EXPECT_EQ(*object_->text, "a b");
    EXPECT_EQ(object_->width, -4);
}

TEST_F(attributes, are_written_in_order)
{
    value("configure -width 1 -width 2 -width 3");
    EXPECT_EQ(object_->width, 3);
}

TEST_F(attributes, accessors_get_the_command_and_the_handle)
{
    EXPECT_EQ(value("cget -words"), name_ + " " + name_);
    EXPECT_EQ(value("configure -words 1"), name_ + " " + name_ + " 1");
    EXPECT_EQ(value("configure -words {} -words {a b}"), name_ + " " + name_ + " {a b}");
    tcl_.value("rename " + name_ + " other");
    EXPECT_EQ(tcl_.value("other cget -words"), "other " + name_);
    EXPECT_EQ(tcl_.value("other configure -words 1"), "other " + name_ + " 1");
}

TEST_F(attributes, accessors_get_the_handle_object)
{
    static std::vector<std::pair<Tcl_Obj *, int>>
        seen; // the object and how often it is referred to
    seen.clear();
    plain_type watched{"_p_watched"};
    sample_class watched_class{"watched"};
    Tcl_ObjCmdProc *const look = [](ClientData, Tcl_Interp *, int, Tcl_Obj *const objv[]) {
        seen.emplace_back(objv[1], objv[1]->refCount);
        return TCL_OK;
    };
    watched_class.attribute("-look", look, look).attach(watched);
    const held_object handle{swig_new_instance_obj(tcl_, at(0x10), watched, 0)};
    tcl_.value(handle.text() + " cget -look");
    tcl_.value(handle.text() + " configure -look 1 -look 2");
    auto *const own = instance_of(handle.text())->handle;
    EXPECT_EQ(seen, (std::vector<std::pair<Tcl_Obj *, int>>(3, {own, 2})));
    EXPECT_EQ(own->refCount, 1);
}

TEST_F(attributes, that_nobody_has)
{
    for (const char *name : {"-height", "width", "-widt", "-widths", "-Width", "{}", "-words -"})
        if (std::string(name).find(' ') == std::string::npos) {
            EXPECT_EQ(error("cget " + std::string(name)), "Invalid attribute name.") << name;
            EXPECT_EQ(error("configure " + std::string(name) + " 1"), "Invalid attribute name.")
                << name;
        }
    EXPECT_EQ(tcl_.error_code(), "NONE");
}

// The two of every object are read only.
TEST_F(attributes, this_and_thisown_are_not_written)
{
    EXPECT_EQ(error("configure -this x"), "Invalid attribute name.");
    EXPECT_EQ(error("configure -thisown 0"), "Invalid attribute name.");
    EXPECT_EQ(value("cget -thisown"), "1");
}

TEST_F(attributes, without_an_accessor)
{
    EXPECT_EQ(value("cget -read_only"), "7");
    EXPECT_EQ(error("configure -read_only 1"), "Invalid attribute name.");
    value("configure -write_only 9");
    EXPECT_EQ(object_->width, 9);
    EXPECT_EQ(error("cget -write_only"), "Invalid attribute name.");
}

TEST_F(attributes, configure_needs_pairs)
{
    for (const char *words : {"", "-width", "-height"})
        EXPECT_EQ(error("configure " + std::string(words)), "wrong # args.") << words;
    EXPECT_EQ(tcl_.error_code(), "NONE");
    EXPECT_EQ(object_->width, 7);
}

TEST_F(attributes, configure_applies_complete_pairs)
{
    value("configure -width 1 -text");
    EXPECT_EQ(object_->width, 1);
    EXPECT_EQ(*object_->text, "first");
    value("configure -width 2 -text a -width");
    EXPECT_EQ(object_->width, 2);
    EXPECT_EQ(*object_->text, "a");
    value("configure -width 3 -height"); // a name without value is not looked at
    EXPECT_EQ(object_->width, 3);
    EXPECT_EQ(error("configure -height 1 -width"), "Invalid attribute name.");
    EXPECT_EQ(object_->width, 3);
}

TEST_F(attributes, configure_ends_at_an_unknown_name)
{
    EXPECT_EQ(error("configure -width 1 -height 2 -text last"), "Invalid attribute name.");
    EXPECT_EQ(object_->width, 1);
    EXPECT_EQ(*object_->text, "first");
}

TEST_F(attributes, configure_ends_at_a_failure)
{
    EXPECT_EQ(error("configure -text second -width wide -text third"),
              "expected integer but got \"wide\"");
    EXPECT_EQ(*object_->text, "second");
    EXPECT_EQ(object_->width, 7);
}

TEST_F(attributes, accessors_end_the_command_with_their_status)
{
    plain_type odd{"_p_odd"};
    sample_class odd_class{"odd"};
    static int calls;
    calls = 0;
    odd_class
        .attribute(
            "-odd", [](ClientData, Tcl_Interp *, int, Tcl_Obj *const[]) { return 42; },
            [](ClientData, Tcl_Interp *, int, Tcl_Obj *const[]) { return ++calls, TCL_BREAK; })
        .attach(odd);
    const auto name = held_object{swig_new_instance_obj(tcl_, at(0x10), odd, 0)}.text();
    EXPECT_EQ(tcl_.value("catch {" + name + " cget -odd}"), "42");
    EXPECT_EQ(tcl_.value("catch {" + name + " configure -odd 1 -odd 2}"),
              std::to_string(TCL_BREAK));
    EXPECT_EQ(calls, 1);
}

// The text is not the list's: a word is taken as it is.
TEST_F(attributes, values_are_any_text)
{
    value("configure -text {$x [error no] \\n}");
    EXPECT_EQ(*object_->text, "$x [error no] \\n");
    value("configure -text -width");
    EXPECT_EQ(*object_->text, "-width");
}

} // namespace
