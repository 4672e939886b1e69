# Finds Tcl and line editing for the target processor; to be included after project(). Relies on
# Debian's layout and on QXSH_SYSROOT of the toolchains; set the cache variables below by hand for
# another Tcl, such as a board's.
#
#   tcl::tcl           libtcl itself: for programs that call Tcl_Main or create interpreters
#   tcl::stub          the stub library, with USE_TCL_STUBS: for all that a stock tclsh loads
#   tcl::line_editing  tclreadline, Readline and ncurses, linked although none of them is called;
#                      nothing with QXSH_LINE_EDITING=OFF, for boards that have no tclreadline
#   tcl::readline      Readline with its headers, for what sets it up; with line editing only
#   QXSH_TCLSH         this machine's tclsh: runs generators and test drivers
#   QXSH_TARGET_TCLSH  a stock tclsh of that processor, to be run behind QXSH_LAUNCHER
#   QXSH_TCLSH_PRELOAD empty, or the NAME=VALUE word before it that lets it load sanitized code
#   QXSH_LAUNCHER      words before a built program: then NAME=VALUE words for its environment, then
#                      the program and its words; QXSH_LAUNCHER_TCL is the same as a Tcl list

set(QXSH_TCL_VERSION 8.6 CACHE STRING "Tcl version to build with")

# A board's toolchain sets CMake's own sysroot variable.
if(CMAKE_SYSROOT AND NOT QXSH_SYSROOT)
    set(QXSH_SYSROOT "${CMAKE_SYSROOT}")
endif()

find_path(QXSH_TCL_INCLUDE tcl.h PATH_SUFFIXES tcl${QXSH_TCL_VERSION} tcl
          DOC "folder of tcl.h (package tcl8.6-dev)")
find_library(QXSH_TCL_LIBRARY tcl${QXSH_TCL_VERSION} DOC "libtcl (package tcl8.6-dev)")
find_library(QXSH_TCLSTUB_LIBRARY tclstub${QXSH_TCL_VERSION}
             DOC "Tcl's stub library (package tcl8.6-dev)")
if(QXSH_LINE_EDITING)
    find_library(QXSH_TCLREADLINE_LIBRARY tclreadline
                 DOC "libtclreadline (package tcl-tclreadline)")
    find_library(QXSH_READLINE_LIBRARY readline DOC "libreadline (package libreadline-dev)")
    find_path(QXSH_READLINE_INCLUDE readline/readline.h
              DOC "folder of readline/readline.h (package libreadline-dev)")
    find_library(QXSH_NCURSES_LIBRARY ncurses DOC "libncurses (package libncurses-dev)")
endif()
find_program(QXSH_TCLSH NAMES tclsh8.6 tclsh NO_CMAKE_SYSTEM_PATH
             DOC "this machine's tclsh (package tcl8.6)")

set(wanted QXSH_TCL_INCLUDE QXSH_TCL_LIBRARY QXSH_TCLSTUB_LIBRARY QXSH_TCLSH)
if(QXSH_LINE_EDITING)
    list(APPEND wanted QXSH_TCLREADLINE_LIBRARY QXSH_READLINE_LIBRARY QXSH_READLINE_INCLUDE
                QXSH_NCURSES_LIBRARY)
endif()
foreach(variable IN LISTS wanted)
    if(NOT ${variable})
        get_property(what CACHE ${variable} PROPERTY HELPSTRING)
        if(QXSH_SYSROOT)
            string(APPEND what ", searched in ${QXSH_SYSROOT}")
        endif()
        message(FATAL_ERROR "${variable} was not found: ${what}")
    endif()
endforeach()

set(QXSH_TARGET_TCLSH "${QXSH_TCLSH}")
if(QXSH_SYSROOT)
    set(QXSH_TARGET_TCLSH "${QXSH_SYSROOT}/usr/bin/tclsh${QXSH_TCL_VERSION}")
endif()
set(QXSH_TCLSH_PRELOAD "")
if(QXSH_SANITIZED)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libasan.so
                    OUTPUT_VARIABLE asan_library OUTPUT_STRIP_TRAILING_WHITESPACE)
    set(QXSH_TCLSH_PRELOAD "LD_PRELOAD=${asan_library}")
endif()
if(NOT QXSH_LAUNCHER)
    find_program(QXSH_ENV env REQUIRED)
    set(QXSH_LAUNCHER "${QXSH_ENV}")
endif()
list(TRANSFORM QXSH_LAUNCHER REPLACE "(.+)" "{\\1}" OUTPUT_VARIABLE QXSH_LAUNCHER_TCL)
list(JOIN QXSH_LAUNCHER_TCL " " QXSH_LAUNCHER_TCL)

# link_by_name(TARGET LIBRARY): links a shared library by name. For a whole path, or a link
# directory, CMake would add an entry to the RUNPATH, which must contain only our own library's
# folder.
function(link_by_name target library)
    get_filename_component(folder "${library}" DIRECTORY)
    get_filename_component(name "${library}" NAME_WLE)
    string(REGEX REPLACE "^lib" "-l" option "${name}")
    target_link_libraries(${target} INTERFACE ${option})
    if(NOT folder IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
        # The second folder is for the dependencies of these libraries.
        target_link_options(${target} INTERFACE "-L${folder}" "LINKER:-rpath-link,${folder}")
    endif()
endfunction()

# Built programs find libraries only in <build>/lib, so a Tcl that the loader does not find goes
# there.
get_filename_component(folder "${QXSH_TCL_LIBRARY}" DIRECTORY)
if(NOT folder IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
    file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
    get_filename_component(name "${QXSH_TCL_LIBRARY}" NAME)
    file(CREATE_LINK "${QXSH_TCL_LIBRARY}" "${CMAKE_BINARY_DIR}/lib/${name}" SYMBOLIC)
endif()

add_library(tcl::tcl INTERFACE IMPORTED)
target_include_directories(tcl::tcl INTERFACE "${QXSH_TCL_INCLUDE}")
link_by_name(tcl::tcl "${QXSH_TCL_LIBRARY}")

add_library(tcl::stub INTERFACE IMPORTED)
target_include_directories(tcl::stub INTERFACE "${QXSH_TCL_INCLUDE}")
target_compile_definitions(tcl::stub INTERFACE USE_TCL_STUBS)
target_link_libraries(tcl::stub INTERFACE "${QXSH_TCLSTUB_LIBRARY}")
# Each library has its own copy of these functions, hidden. Some have the same names in Tcl 8.5, so
# a shell that exported them would override those of every extension it loads, whose stub table
# would stay empty.
get_filename_component(name "${QXSH_TCLSTUB_LIBRARY}" NAME)
target_link_options(tcl::stub INTERFACE "LINKER:--exclude-libs,${name}")

add_library(tcl::line_editing INTERFACE IMPORTED)
if(QXSH_LINE_EDITING)
    target_link_libraries(tcl::line_editing INTERFACE "-Wl,--push-state,--no-as-needed")
    # The loader searches libraries in this order: those with most of the wanted names come first.
    # All are behind the SDK's, whose own functions must not give way to theirs. The compiler would
    # put a plain -lc last.
    link_by_name(tcl::line_editing "${QXSH_READLINE_LIBRARY}")
    target_link_libraries(tcl::line_editing INTERFACE "-Wl,-lc")
    link_by_name(tcl::line_editing "${QXSH_NCURSES_LIBRARY}")
    link_by_name(tcl::line_editing "${QXSH_TCLREADLINE_LIBRARY}")
    target_link_libraries(tcl::line_editing INTERFACE "-Wl,--pop-state")

    add_library(tcl::readline INTERFACE IMPORTED)
    target_include_directories(tcl::readline INTERFACE "${QXSH_READLINE_INCLUDE}")
    link_by_name(tcl::readline "${QXSH_READLINE_LIBRARY}")
endif()
