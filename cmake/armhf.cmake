# Toolchain for 32-bit little-endian ARM boards, whose programs run under emulation. Relies on
# packages g++-arm-linux-gnueabihf and qemu-user and on build/sysroot/armhf.

set(foreign_compiler arm-linux-gnueabihf)
set(foreign_architecture armhf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
# The emulator allows unaligned accesses, boards may not: the compiler must not rely on them.
set(CMAKE_C_FLAGS_INIT -mno-unaligned-access)
set(CMAKE_CXX_FLAGS_INIT -mno-unaligned-access)
include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
