// The first word of an object command: the built-in methods, those of the class, and what is said
// about others.
#include "tests/objects/sample_class.h"

namespace {

template <int Status> int end_with(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewIntObj(Status));
    return Status;
}

class methods : public object_commands
{
protected:
    /// Attaches the class and makes the object's command.
    void make()
    {
        class_.attach(type_);
        name_ = returned(at(0x0001a2b0));
    }
    std::string value(const std::string &words) { return tcl_.value(name_ + " " + words); }
    std::string error(const std::string &words) { return tcl_.error(name_ + " " + words); }

    std::string name_;
};

TEST_F(methods, need_a_word)
{
    make();
    EXPECT_EQ(error(""), "wrong # args.");
    EXPECT_EQ(tcl_.error_code(), "NONE");
}

TEST_F(methods, that_are_built_in_have_no_result)
{
    make();
    for (const char *word : {"-acquire", "-disown", "-delete"}) {
        tcl_.eval("set result {an earlier result}");
        EXPECT_EQ(value(word), "") << word;
    }
    EXPECT_FALSE(is_command(name_));
}

// Only word 1 counts.
TEST_F(methods, that_are_built_in_take_no_notice_of_more_words)
{
    make();
    EXPECT_EQ(value("-acquire for ever"), "");
    EXPECT_EQ(value("cget -thisown"), "1");
    EXPECT_EQ(value("-disown {} {}"), "");
    EXPECT_EQ(value("cget -thisown"), "0");
    EXPECT_EQ(value("-delete now"), "");
    EXPECT_FALSE(is_command(name_));
}

TEST_F(methods, get_the_handle_in_place_of_their_name)
{
    class_.method("words", report_words);
    make();
    EXPECT_EQ(value("words"), name_ + " " + name_);
    EXPECT_EQ(value("words a {b c} {}"), name_ + " " + name_ + " a {b c} {}");
    tcl_.value("rename " + name_ + " other");
    EXPECT_EQ(tcl_.value("other words a"), "other " + name_ + " a");
}

// The handle object itself, with a reference for the time of the call; and the instance.
TEST_F(methods, get_the_handle_object)
{
    static Tcl_Obj *word;
    static int references;
    static ClientData data;
    class_.method("look", [](ClientData instance, Tcl_Interp *, int, Tcl_Obj *const objv[]) {
        data = instance;
        word = objv[1];
        references = word->refCount;
        return TCL_OK;
    });
    make();
    auto *const instance = instance_of(name_);
    const word_list words{name_, "look", "more"};
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(swig_method_command(instance, tcl_, words.count(), words.data()), TCL_OK);
        EXPECT_EQ(data, instance);
        EXPECT_EQ(word, instance->handle);
        EXPECT_EQ(references, 2);
        EXPECT_EQ(instance->handle->refCount, 1);
    }
    // The caller's own words are as they were.
    EXPECT_EQ(words[1].text(), "look");
    EXPECT_EQ(words[1].get()->refCount, 1);
}

TEST_F(methods, keep_the_handle_after_a_reference_to_it_was_kept)
{
    static held_object kept{nullptr};
    class_.method("keep", [](ClientData, Tcl_Interp *, int, Tcl_Obj *const objv[]) {
        kept = held_object{objv[1]};
        return TCL_OK;
    });
    make();
    value("keep");
    EXPECT_EQ(kept.get(), instance_of(name_)->handle);
    EXPECT_EQ(kept.get()->refCount, 2);
    value("-delete");
    EXPECT_EQ(kept.get()->refCount, 1);
    EXPECT_EQ(kept.text(), name_);
    kept = held_object{nullptr};
}

TEST_F(methods, end_the_command_with_their_status)
{
    class_.method("ok", end_with<TCL_OK>)
        .method("error", end_with<TCL_ERROR>)
        .method("break", end_with<TCL_BREAK>)
        .method("odd", end_with<42>);
    make();
    for (const auto &[word, status] :
         {std::pair{"ok", TCL_OK}, {"error", TCL_ERROR}, {"break", TCL_BREAK}, {"odd", 42}})
        EXPECT_EQ(tcl_.value("catch {" + name_ + " " + word + "} message; list $message [catch {" +
                             name_ + " " + word + "}]"),
                  std::to_string(status) + " " + std::to_string(status));
}

TEST_F(methods, of_a_class_stand_before_cget_and_configure)
{
    class_.method("cget", end_with<TCL_OK>).method("configure", report_words);
    make();
    EXPECT_EQ(value("cget -this"), "0");
    EXPECT_EQ(value("configure"), name_ + " " + name_);
}

TEST_F(methods, of_a_class_stand_behind_those_with_a_dash)
{
    class_.method("-acquire", end_with<TCL_ERROR>)
        .method("-disown", end_with<TCL_ERROR>)
        .method("-delete", end_with<TCL_ERROR>);
    make();
    EXPECT_EQ(value("-acquire"), "");
    EXPECT_TRUE(owned(at(0x0001a2b0)));
    EXPECT_EQ(value("-disown"), "");
    EXPECT_EQ(value("-delete"), "");
    EXPECT_FALSE(is_command(name_));
}

TEST_F(methods, have_whole_names)
{
    class_.method("press", end_with<TCL_OK>)
        .method("", report_words)
        .method("two words", report_words);
    make();
    EXPECT_EQ(value("press"), "0");
    EXPECT_EQ(value("{}"), name_ + " " + name_);
    EXPECT_EQ(value("{two words} x"), name_ + " " + name_ + " x");
    for (const char *word : {"pres", "presss", "PRESS", "{press }", "{ press}", "-delet",
                             "-deleted", "-Delete", "acquire", "two"})
        EXPECT_EQ(error(word).substr(0, 15), "Invalid method.") << word;
}

// ------------------------------------------------------------------------------------------ other
// words

TEST_F(methods, of_a_class_without_any)
{
    make();
    EXPECT_EQ(error("press"), invalid);
    EXPECT_EQ(tcl_.error_code(), "NONE");
}

TEST_F(methods, of_a_class_without_lists)
{
    class_.attach(type_);
    class_.description()->methods = nullptr;
    class_.description()->attributes = nullptr;
    name_ = returned(at(0x0001a2b0));
    EXPECT_EQ(error("press"), invalid);
    EXPECT_EQ(error("cget -width"), "Invalid attribute name.");
    EXPECT_EQ(error("configure -width 1"), "Invalid attribute name.");
}

TEST_F(methods, are_listed)
{
    class_.method("press", report_words).method("release", report_words);
    make();
    EXPECT_EQ(error("pull"), std::string(invalid) + " press release");
    EXPECT_EQ(error("{}"), std::string(invalid) + " press release");
}

// "cget" has its 3 words or is no method; "configure" always is one.
TEST_F(methods, cget_with_other_words_is_none)
{
    class_.method("press", report_words);
    make();
    EXPECT_EQ(error("cget"), std::string(invalid) + " press");
    EXPECT_EQ(error("cget -this -thisown"), std::string(invalid) + " press");
    EXPECT_EQ(error("cget -this {}"), std::string(invalid) + " press");
    EXPECT_EQ(error("configure"), "wrong # args.");
}

TEST_F(methods, are_listed_as_elements_of_a_list)
{
    class_.method("two words", report_words)
        .method("", report_words)
        .method("a$b", report_words)
        .method("open{", report_words)
        .method("#remark", report_words)
        .method("semi;colon", report_words)
        .method("back\\slash", report_words);
    make();
    EXPECT_EQ(error("pull"),
              std::string(invalid) +
                  " {two words} {} {a$b} open\\{ #remark {semi;colon} {back\\slash}");
    EXPECT_EQ(tcl_.value("catch {" + name_ + " pull} text; lrange $text end-6 end"),
              "{two words} {} {a$b} open\\{ #remark {semi;colon} {back\\slash}");
}

// A name that the text already has as a word of its own, wherever in it, is not repeated.
TEST_F(methods, are_not_repeated)
{
    class_.method("press", report_words)
        .method("press", end_with<TCL_ERROR>)
        .method("cget", report_words)
        .method("configure", report_words)
        .method("-delete", report_words)
        .method("be", report_words)
        .method("one", report_words)
        .method("of:", report_words)
        .method("Invalid", report_words)
        .method("method.", report_words);
    make();
    EXPECT_EQ(error("pull"), std::string(invalid) + " press");
}

TEST_F(methods, are_repeated_unless_a_whole_word)
{
    class_.method("pressing", report_words)
        .method("press", report_words)
        .method("ress", report_words)
        .method("pressin", report_words)
        .method("delete", report_words)
        .method("-del", report_words)
        .method("method", report_words)
        .method("of", report_words)
        .method("b", report_words)
        .method("Be", report_words);
    make();
    EXPECT_EQ(error("pull"),
              std::string(invalid) + " pressing press ress pressin delete -del method of b Be");
}

// A name with a blank is never one word, and what surrounds it is cut at the blanks.
TEST_F(methods, with_blanks_are_repeated)
{
    class_.method("two words", report_words)
        .method("two words", report_words)
        .method("two", report_words)
        .method("words", report_words)
        .method("one of:", report_words);
    make();
    EXPECT_EQ(error("pull"), std::string(invalid) + " {two words} {two words} two words {one of:}");
}

// Only blanks part words.
TEST_F(methods, with_other_white_space)
{
    class_.method("tab\tbed", report_words)
        .method("tab\tbed", report_words)
        .method("{tab", report_words)
        .method("tab", report_words);
    make();
    EXPECT_EQ(error("pull"), std::string(invalid) + " {tab\tbed} {tab\tbed} \\{tab tab");
}

TEST_F(methods, are_many)
{
    std::deque<std::string> names;
    std::string expected = invalid;
    for (int i = 0; i < 500; ++i) {
        names.push_back("method" + std::to_string(i));
        class_.method(names.back().c_str(), report_words);
        expected += " " + names.back();
    }
    make();
    EXPECT_EQ(error("pull"), expected);
    EXPECT_EQ(value("method499"), name_ + " " + name_);
}

} // namespace
