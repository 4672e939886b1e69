// Linked into a test program, fills the stub table before the first test.
#include "tests/unit/stub_table.h"

#include <gtest/gtest.h>

namespace {

class stub_environment : public testing::Environment
{
    void SetUp() override
    {
        Tcl_Interp *const interp = Tcl_CreateInterp();
        ASSERT_TRUE(fill_stub_table(interp));
        Tcl_DeleteInterp(interp);
    }
};

[[maybe_unused]] const auto *const registered =
    testing::AddGlobalTestEnvironment(new stub_environment);

} // namespace
