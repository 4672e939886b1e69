// Starting the module and calling its commands.
#include "fuzz/module.h"

#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "helpers/output.h"
#include "shell/demo.h"

#include "control.h"

#include <array>

namespace fuzz {

namespace {

Tcl_Interp *interp;
std::vector<const random_test::command *> commands;

} // namespace

Tcl_Interp *start_module(const char *program, void (*print)(const char *, std::size_t),
                         tcl_commands kept)
{
    interp = start_tcl(program);
    qxsim::control = qxsim::control_mode::off;
    // Strict memory uses `info frame` to find out where a block was created.
    if (kept == tcl_commands::harmless)
        keep_commands(interp, "info list concat error catch");
    expect(Demo_Init(interp) == TCL_OK, "the module starts");
    qxsh::set_output(print);
    for (const auto &[name, command] : tables().commands)
        commands.push_back(&command);
    return interp;
}

const random_test::tables &tables()
{
    static const auto all = random_test::read_tables(QXSH_PROJECT "/tests/expected");
    return all;
}

const random_test::command &any_command(std::uint32_t number)
{
    return *commands[number % commands.size()];
}

int evaluate(const std::vector<Tcl_Obj *> &words)
{
    Tcl_ResetResult(interp); // every input starts from the same state
    return Tcl_EvalObjv(interp, static_cast<int>(words.size()), words.data(), TCL_EVAL_GLOBAL);
}

std::string result()
{
    return Tcl_GetStringResult(interp);
}

std::uint32_t address_in(const std::string &handle)
{
    std::array<unsigned char, 4> bytes{};
    if (handle.size() <= 9 || handle[0] != '_' ||
        read_digits(std::string_view{handle}.substr(1), bytes.data(), bytes.size()) != bytes.size())
        return 0;
    return bytes[0] | bytes[1] << 8U | bytes[2] << 16U | std::uint32_t{bytes[3]} << 24U;
}

} // namespace fuzz
