// The entry of the test programs that use Tcl: readies the library before the tests and puts it
// away after them, so that a leak checker sees only what tests have lost.
#include <gtest/gtest.h>
#include <tcl.h>

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    Tcl_FindExecutable(argv[0]);
    const int status = RUN_ALL_TESTS();
    Tcl_Finalize();
    return status;
}
