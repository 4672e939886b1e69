# Tool chain for this machine with a Tcl 8.5 of one's own in place of Debian's Tcl. Relies on
# build/sysroot/tcl85, which tools/setup/tcl85 makes; line editing's libraries are not there.

set(foreign_architecture tcl85)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(QXSH_TCL_VERSION 8.5 CACHE STRING "Tcl version to build with")
include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
