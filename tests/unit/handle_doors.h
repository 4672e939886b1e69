// A fixture for handle conversion: each text is converted through all entry points, as text, as an
// object and as a word of a command (new, again, and shared), with the same result.
#pragma once

#include "runtime/handle.h"
#include "tests/unit/command_call.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

class handle_doors : public testing::Test
{
protected:
    /// The pointer that a valid text converts to.
    void *convert(const std::string &text, swig_type_record *type, int flags = 0)
    {
        void *pointer = at(0x77777777);
        EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, text.c_str(), &pointer, type, flags), 0)
            << text;
        const held_object word{text};
        const held_object other{word};
        for (int time = 0; time < 3; ++time) {
            void *again = at(0x77777777);
            EXPECT_EQ(swig_convert_ptr(tcl_, word, &again, type, flags), 0) << text;
            EXPECT_EQ(again, pointer) << text;
            EXPECT_EQ(word.text(), text);
        }
        if (flags == 0)
            convert_words(text, type, pointer);
        return pointer;
    }

    /// Expects a text to be rejected, without a message.
    void expect_refused(const std::string &text, swig_type_record *type, int flags = 0)
    {
        void *pointer = at(0x77777777);
        EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, text.c_str(), &pointer, type, flags), -1)
            << text;
        const held_object word{text};
        const held_object other{word};
        for (int time = 0; time < 3; ++time) {
            EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, type, flags), -1) << text;
            EXPECT_EQ(word.text(), text);
        }
        EXPECT_EQ(tcl_.result(), "");
        if (flags == 0)
            refuse_words(text, type);
    }

    interpreter tcl_;

private:
    // Reads a command's only word as a handle of the type, or of any type if that is null.
    bool get(const word_list &words, swig_type_record *type, void *&pointer)
    {
        const command_call call{tcl_, words.count(), words.data(), "o:qx_door word "};
        return type != nullptr ? call.get(1, pointer, type) : call.get(1, pointer);
    }

    void convert_words(const std::string &text, swig_type_record *type, void *right)
    {
        const word_list words{"qx_door", text};
        for (int time = 0; time < 3; ++time) {
            void *pointer = at(0x77777777);
            EXPECT_TRUE(get(words, type, pointer)) << text;
            EXPECT_EQ(pointer, right) << text;
            EXPECT_EQ(words[1].text(), text);
        }
    }

    void refuse_words(const std::string &text, swig_type_record *type)
    {
        const word_list words{"qx_door", text};
        for (int time = 0; time < 3; ++time) {
            void *pointer;
            EXPECT_FALSE(get(words, type, pointer)) << text;
            EXPECT_EQ(tcl_.result(),
                      std::string{"TypeError in method 'qx_door', argument 1 of type '"} +
                          (type != nullptr ? type->str : "void *") + "'");
            Tcl_ResetResult(tcl_);
        }
    }
};
