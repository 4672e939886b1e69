# Common part of the toolchains whose libraries are not this machine's. Relies on
# `foreign_architecture`, the folder below build/sysroot, and, for another processor, on
# `foreign_compiler` (prefix of Debian's cross compiler) and CMAKE_LIBRARY_ARCHITECTURE.

get_filename_component(foreign_project "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)

set(CMAKE_SYSTEM_NAME Linux)
if(foreign_compiler)
    set(CMAKE_C_COMPILER ${foreign_compiler}-gcc)
    set(CMAKE_CXX_COMPILER ${foreign_compiler}-g++)
endif()

# Libraries are searched only here; programs are this machine's.
set(QXSH_SYSROOT "${foreign_project}/build/sysroot/${foreign_architecture}/root")
set(CMAKE_FIND_ROOT_PATH "${QXSH_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Runs the built programs: ctest prefixes test programs with it, and test drivers the shell.
set(CMAKE_CROSSCOMPILING_EMULATOR "${foreign_project}/tools/setup/launch" ${foreign_architecture})
set(QXSH_LAUNCHER "${CMAKE_CROSSCOMPILING_EMULATOR}")
