// Module start-up: package, types, commands, constants. Relies on the generated tables.
#include "shell/demo.h"

#include "commands/call_watching.h"
#include "commands/command_table.h"
#include "commands/memory_access.h"
#include "commands/sdk_output.h"
#include "runtime/constants.h"
#include "runtime/known_objects.h"
#include "strict/strict_command.h"
#include "strict/switch.h"
#include "types.h"

#include <atomic>

// There are no constants yet; the code that installs them is complete.
static const swig_const_info swig_constants[] = {
    {SWIG_END_OF_CONSTANTS, nullptr, 0, 0.0, nullptr, nullptr},
};

// The module's tables are not locked, so only the first thread that loads it may use it. Two
// threads may try at the same moment.
static bool in_first_thread()
{
    static constinit std::atomic<Tcl_ThreadId> first = nullptr;
    Tcl_ThreadId known = nullptr;
    const Tcl_ThreadId here = Tcl_GetCurrentThread();
    return first.compare_exchange_strong(known, here) || known == here;
}

static void propagate_client_data_once()
{
    static bool already_run = false;
    if (already_run)
        return;
    already_run = true;
    swig_propagate_client_data(&swig_module);
}

// Under strict memory a command's client data is its row, otherwise null.
static void create_commands(Tcl_Interp *interp)
{
    if (qxsh::strict_memory_is_on()) {
        qxsh::report_leaks_at_exit();
        for (const auto *each = swig_commands; each->name != nullptr; ++each)
            Tcl_CreateObjCommand(interp, each->name, qxsh::strict_command,
                                 const_cast<swig_command_info *>(each), nullptr);
        return;
    }
    for (const auto *each = swig_commands; each->name != nullptr; ++each)
        Tcl_CreateObjCommand(interp, each->name, each->wrapper, each->client_data, nullptr);
}

int Demo_Init(Tcl_Interp *interp)
{
    if (interp == nullptr)
        return TCL_ERROR;
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    if (!in_first_thread()) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("package demo is in use in another thread", -1));
        return TCL_ERROR;
    }
    qxsh::learn_known_objects();
    Tcl_PkgProvide(interp, "demo", "0.0");
    swig_link_module(interp, &swig_module);
    for (int i = 0; i < type_count; ++i)
        swig_expect_type(swig_types[i], &swig_expected_types[i]);
    propagate_client_data_once();
    create_commands(interp);
    swig_install_constants(interp, swig_constants);
    qxsh::send_output_to_tcl();
    qxsh::offer_memory_access(interp,
                              qxsh::strict_memory_is_on() ? qxsh::strictly_allows : nullptr);
    qxsh::offer_call_watching(interp);
    return TCL_OK;
}

int Demo_SafeInit(Tcl_Interp *interp)
{
    return Demo_Init(interp);
}
