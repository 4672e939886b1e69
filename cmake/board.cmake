# Tool chain for a 32-bit ARM board of your own, with a vendor's compiler; docs/board.md is the
# guide. To be set, with -D:
#
#   QXSH_BOARD_COMPILER  what the names of the compilers begin with: /opt/vendor/bin/arm-linux-
#   QXSH_BOARD_SYSROOT   the folder with the board's usr/include and usr/lib; left out: the
#                        compiler's own
#   QXSH_BOARD_TCL       the folder with the board's include/tcl.h and lib/libtcl8.5.so; left
#                        out: usr of the sysroot
#   QXSH_LINE_EDITING    OFF where the board has no tclreadline
#
# QXSH_TCL_VERSION is 8.5 unless said otherwise.

# What a test compilation of CMake's own has to know, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES
     QXSH_BOARD_COMPILER QXSH_BOARD_SYSROOT QXSH_BOARD_TCL)

if(NOT QXSH_BOARD_COMPILER)
    message(FATAL_ERROR "QXSH_BOARD_COMPILER is not set: what the names of the board's compilers "
                        "begin with, such as /opt/vendor/bin/arm-linux-")
endif()
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER "${QXSH_BOARD_COMPILER}gcc")
set(CMAKE_CXX_COMPILER "${QXSH_BOARD_COMPILER}g++")
if(QXSH_BOARD_SYSROOT)
    set(CMAKE_SYSROOT "${QXSH_BOARD_SYSROOT}")
endif()

# A processor may not read a word at an odd address; a small loader does not know unique symbols.
set(CMAKE_C_FLAGS_INIT -mno-unaligned-access)
set(CMAKE_CXX_FLAGS_INIT "-mno-unaligned-access -fno-gnu-unique")

# The board's libraries are found there and nowhere else; programs are this machine's.
if(QXSH_BOARD_TCL)
    list(APPEND CMAKE_FIND_ROOT_PATH "${QXSH_BOARD_TCL}")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QXSH_TCL_VERSION 8.5 CACHE STRING "Tcl version to build with")
