# Toolchain for 32-bit PCs, whose programs run natively. Relies on packages g++-i686-linux-gnu and
# libc6-i386 and on build/sysroot/i386.

set(foreign_compiler i686-linux-gnu)
set(foreign_architecture i386)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
