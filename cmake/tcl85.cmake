# Toolchain for this machine with a self-built Tcl 8.5 instead of Debian's Tcl. Relies on
# build/sysroot/tcl85, which tools/setup/tcl85 builds, without the libraries for line editing.

set(foreign_architecture tcl85)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(QXSH_TCL_VERSION 8.5 CACHE STRING "Tcl version to build with")
include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
