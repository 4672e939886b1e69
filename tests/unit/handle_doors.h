// A fixture for handle conversion: each text goes through both doors, as text and as an object (fresh, again,
// and shared), and all have to give the same.
#pragma once

#include "runtime/handle.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

class handle_doors : public testing::Test
{
protected:
    /// The pointer that a text has to give.
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
        return pointer;
    }

    /// A text that has to be refused, without a message.
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
    }

    interpreter tcl_;
};
