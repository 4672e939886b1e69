// What stands around SDK calls: the status as a result, and the history of the latest calls.
#include "commands/call_watching.h"
#include "commands/sdk_call.h"
#include "commands/sdk_output.h"
#include "runtime/command_words.h"
#include "runtime/known_objects.h"
#include "test_wrap.h"
#include "tests/unit/interpreter.h"

#include <climits>
#include <string>

namespace {

using namespace qxsh;

class sdk_calls : public testing::Test
{
protected:
    std::string result_of(unsigned int status, command_number command = command_qx_flow_add)
    {
        const held_object number{Tcl_NewIntObj(0)};
        Tcl_Obj *const words[] = {nullptr, number, number};
        begin_sdk_call(command, tcl_, words);
        EXPECT_EQ(history.interp, tcl_);
        EXPECT_EQ(history.command, command);
        EXPECT_EQ(end_sdk_call(status), TCL_OK);
        EXPECT_EQ(history.interp, nullptr);
        return tcl_.result();
    }

    const call_history::call &latest(unsigned int back)
    {
        return history.calls[(history.count - 1 - back) % call_history::length];
    }

    interpreter tcl_;
};

TEST_F(sdk_calls, status_keeps_16_bits)
{
    EXPECT_EQ(result_of(0), "0");
    EXPECT_EQ(result_of(65537), "1");
    EXPECT_EQ(result_of(UINT_MAX), "65535");
    EXPECT_EQ(result_of(0x80000000), "0");
}

TEST_F(sdk_calls, history_has_the_latest_with_whole_statuses)
{
    const auto before = history.count;
    for (unsigned int i = 0; i < 3 * call_history::length + 5; ++i)
        result_of(0x10000 + i, i % 2 != 0 ? command_qx_flow_add : command_qx_flow_delete);
    EXPECT_EQ(history.count, before + 3 * call_history::length + 5);
    for (unsigned int back = 0; back < call_history::length; ++back) {
        EXPECT_EQ(latest(back).status, 0x10000 + 3 * call_history::length + 4 - back);
        EXPECT_STREQ(name_of(latest(back).command),
                     latest(back).status % 2 != 0 ? "qx_flow_add" : "qx_flow_delete");
    }
}

// As where C's stdout cannot be made unbuffered once it is in use, with uClibc.
TEST_F(sdk_calls, a_stdout_that_is_flushed_after_each_call_does_not_have_each_inspected)
{
    static unsigned int inspections = 0;
    const auto direct = stdout_now.c_stdout_is_direct;
    stdout_now.c_stdout_is_direct = false;
    inspect_after_sdk_calls([](const char *) { ++inspections; });
    for (unsigned int i = 0; i < 3 * 2048; ++i)
        result_of(0);
    inspect_after_sdk_calls(nullptr);
    stdout_now.c_stdout_is_direct = direct;
    EXPECT_GE(inspections, 3u);
    EXPECT_LE(inspections, 64u + 3u);
}

// What watchers have seen.
std::string seen;
const call_watching *watching;

void see(const char *call, const call_word *words)
{
    seen += std::string{call} + " ";
    for (int i = 0; i < 3; ++i)
        seen += std::to_string(words[i].value) + (words[i].pointer != nullptr ? "* " : " ");
}

void see_end(const char *call, const call_word *words, unsigned int status)
{
    see(call, words);
    seen += "-> " + std::to_string(status) + "\n";
}

TEST_F(sdk_calls, a_watcher_gets_words_and_whole_statuses)
{
    static constexpr call_watcher watcher = {see, see_end};
    learn_known_objects();
    offer_call_watching(tcl_);
    watching =
        static_cast<const call_watching *>(Tcl_GetAssocData(tcl_, call_watching_name, nullptr));
    Tcl_Obj converted; // as the wrappers have it
    converted.typePtr = &converted_number;
    converted.internalRep.wideValue = 0xfffffffe;
    Tcl_Obj handle;
    handle.typePtr = &handle_type;
    handle.internalRep.twoPtrValue.ptr1 = &seen;
    const held_object number{Tcl_NewIntObj(7)};
    Tcl_Obj *const words[] = {nullptr, number, &converted, &handle};
    const auto call = [&](unsigned int status) {
        begin_sdk_call(command_qx_qos_map_mode_get, tcl_, words);
        end_sdk_call(status);
    };
    seen.clear();
    call(1);
    EXPECT_EQ(seen, "");
    watching->watch(&watcher);
    call(0x12345678);
    handle.internalRep.twoPtrValue.ptr1 = nullptr;
    call(2);
    EXPECT_EQ(seen, "qx_qos_map_mode_get 7 4294967294 0* "
                    "qx_qos_map_mode_get 7 4294967294 0* -> 305419896\n"
                    "qx_qos_map_mode_get 7 4294967294 0 "
                    "qx_qos_map_mode_get 7 4294967294 0 -> 2\n");
    EXPECT_EQ(latest(1).status, 0x12345678u);
    watching->watch(nullptr);
    seen.clear();
    call(3);
    EXPECT_EQ(seen, "");
}

// A watcher's output may run a script with calls of its own.
void call_within(const char *, const call_word *, unsigned int)
{
    static constexpr call_watcher inner = {see, see_end};
    Tcl_Interp *const interp = Tcl_CreateInterp();
    watching->watch(&inner);
    const held_object number{Tcl_NewIntObj(0)};
    Tcl_Obj *const words[] = {nullptr, number, number};
    begin_sdk_call(command_qx_flow_delete, interp, words);
    end_sdk_call(9);
    watching->watch(nullptr);
    Tcl_DeleteInterp(interp);
}

TEST_F(sdk_calls, calls_of_a_watcher_leave_the_call_as_it_is)
{
    static constexpr call_watcher outer = {see, call_within};
    offer_call_watching(tcl_);
    watching =
        static_cast<const call_watching *>(Tcl_GetAssocData(tcl_, call_watching_name, nullptr));
    watching->watch(&outer);
    seen.clear();
    EXPECT_EQ(result_of(5), "5");
    EXPECT_EQ(seen, "qx_flow_add 0 0 0 qx_flow_delete 0 0 0 qx_flow_delete 0 0 0 -> 9\n");
    EXPECT_EQ(latest(0).command, command_qx_flow_add);
    EXPECT_EQ(latest(0).status, 5u);
    EXPECT_EQ(latest(1).command, command_qx_flow_delete);
    EXPECT_EQ(latest(1).status, 9u);
}

// Both ends of a call take their slow way only while somebody watches.
TEST_F(sdk_calls, calls_that_nobody_watches_are_not_prepared)
{
    static constexpr call_watcher watcher = {see, see_end};
    offer_call_watching(tcl_);
    watching =
        static_cast<const call_watching *>(Tcl_GetAssocData(tcl_, call_watching_name, nullptr));
    const auto direct = stdout_now.c_stdout_is_direct;
    stdout_now.c_stdout_is_direct = true;
    for (int i = 0; i < 100; ++i)
        result_of(0);
    if (!stdout_now.c_stdout_is_direct)
        GTEST_SKIP() << "C's stdout is buffered here, and flushed after each call";
    EXPECT_NE(stdout_now.tcl_stdout, nullptr);
    EXPECT_GT(history.next_inspection, history.count);
    watching->watch(&watcher);
    result_of(0);
    EXPECT_EQ(stdout_now.tcl_stdout, nullptr);
    EXPECT_EQ(history.next_inspection, history.count);
    watching->watch(nullptr);
    result_of(0);
    EXPECT_NE(stdout_now.tcl_stdout, nullptr);
    EXPECT_GT(history.next_inspection, history.count);
    stdout_now.c_stdout_is_direct = direct;
}

TEST_F(sdk_calls, block_memory_is_noted_too)
{
    begin_call(command_qx_data_free, tcl_, nullptr);
    EXPECT_EQ(history.command, command_qx_data_free);
    const auto count = history.count;
    end_call();
    EXPECT_EQ(history.interp, nullptr);
    EXPECT_EQ(history.count, count);
}

} // namespace
