# Toolchain for your own 32-bit ARM board, with a vendor's compiler. docs/board.md is the guide.
# Options, set with -D:
#
#   QXSH_BOARD_COMPILER  the prefix of the compilers: /opt/vendor/bin/arm-linux-
#   QXSH_BOARD_SYSROOT   folder with the board's usr/include and usr/lib; default: the compiler's
#   QXSH_BOARD_TCL       folder with the board's include/tcl.h and lib/libtcl8.5.so; default: usr
#                        in the sysroot
#   QXSH_LINE_EDITING    OFF if the board has no tclreadline
#
# QXSH_TCL_VERSION is 8.5 by default.

# Variables that CMake's own test compilations need, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES
     QXSH_BOARD_COMPILER QXSH_BOARD_SYSROOT QXSH_BOARD_TCL)

if(NOT QXSH_BOARD_COMPILER)
    message(FATAL_ERROR "QXSH_BOARD_COMPILER is not set: the prefix of the board's compilers, such "
                        "as /opt/vendor/bin/arm-linux-")
endif()
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER "${QXSH_BOARD_COMPILER}gcc")
set(CMAKE_CXX_COMPILER "${QXSH_BOARD_COMPILER}g++")
if(QXSH_BOARD_SYSROOT)
    set(CMAKE_SYSROOT "${QXSH_BOARD_SYSROOT}")
endif()

# The processor may not support unaligned reads, and a small loader may not support unique symbols.
set(CMAKE_C_FLAGS_INIT -mno-unaligned-access)
set(CMAKE_CXX_FLAGS_INIT "-mno-unaligned-access -fno-gnu-unique")

# Libraries are searched only there; programs are this machine's.
if(QXSH_BOARD_TCL)
    list(APPEND CMAKE_FIND_ROOT_PATH "${QXSH_BOARD_TCL}")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QXSH_TCL_VERSION 8.5 CACHE STRING "Tcl version to build with")
