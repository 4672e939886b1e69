# What the tool chains for other processors share. Relies on three variables, `foreign_compiler`
# (prefix of Debian's cross compiler), `foreign_architecture` (Debian's name for the processor) and
# CMAKE_LIBRARY_ARCHITECTURE, and on what `tools/setup/sysroot ARCHITECTURE` unpacks under build/.

get_filename_component(foreign_project "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${foreign_compiler}-gcc)
set(CMAKE_CXX_COMPILER ${foreign_compiler}-g++)

# That processor's Debian libraries are found here and nowhere else; programs are this machine's.
set(QXSH_SYSROOT "${foreign_project}/build/sysroot/${foreign_architecture}/root")
set(CMAKE_FIND_ROOT_PATH "${QXSH_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Runs what was built: ctest puts it before test programs, and test drivers before the shell.
set(CMAKE_CROSSCOMPILING_EMULATOR "${foreign_project}/tools/setup/launch" ${foreign_architecture})
set(QXSH_LAUNCHER "${CMAKE_CROSSCOMPILING_EMULATOR}")
