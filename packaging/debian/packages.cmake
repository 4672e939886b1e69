# The Debian packages that `cpack` builds from an installation below /usr: names, relations, texts.
# finish.cmake processes the files of a package. Relies on Debian 12: names of libraries' packages
# are those of that release, and tests compare them with the programs.

set(here "${CMAKE_CURRENT_LIST_DIR}")
# Debian requires a maintainer with an address. The project has no address of its own: without one
# given here, cpack refuses to build packages.
set(QXSH_MAINTAINER "" CACHE STRING
    "maintainer of the packages: Name <address>; by default DEBFULLNAME <DEBEMAIL>")
set(QXSH_PACKAGER "${QXSH_MAINTAINER}")
if(NOT QXSH_PACKAGER AND DEFINED ENV{DEBFULLNAME} AND DEFINED ENV{DEBEMAIL})
    set(QXSH_PACKAGER "$ENV{DEBFULLNAME} <$ENV{DEBEMAIL}>")
endif()

# The first line of the changelog names the version; its revision counts packages of one version.
file(STRINGS "${here}/changelog.in" entry LIMIT_COUNT 1)
if(NOT entry MATCHES "^qxsh \\(([^-]+)-([^)]+)\\) ")
    message(FATAL_ERROR "packaging/debian/changelog.in does not begin with a version: ${entry}")
elseif(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/debian/changelog.in is at ${CMAKE_MATCH_1}, "
                        "the project at ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE "${CMAKE_MATCH_2}")
set(CPACK_QXSH_CHANGELOG "${CMAKE_BINARY_DIR}/changelog.Debian")
configure_file("${here}/changelog.in" "${CPACK_QXSH_CHANGELOG}" @ONLY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qxsh)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${here}/finish.cmake")
set(CPACK_THREADS 1)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${QXSH_PACKAGER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# A toolchain file for another processor gives Debian's name for it; cpack asks dpkg for this
# machine's.
if(CMAKE_CROSSCOMPILING)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE "${foreign_architecture}")
endif()
# finish.cmake separates debug information with these.
set(CPACK_QXSH_OBJCOPY "${CMAKE_OBJCOPY}")
set(CPACK_QXSH_STRIP "${CMAKE_STRIP}")

# package(COMPONENT NAME FIELD VALUE...): the fields of one package. A value has no semicolon.
set(CPACK_COMPONENTS_ALL "")
function(package component name)
    string(TOUPPER "${component}" upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME "${name}" PARENT_SCOPE)
    while(ARGN)
        list(POP_FRONT ARGN field value)
        if(NOT field STREQUAL "DESCRIPTION")
            set(field "PACKAGE_${field}")
        endif()
        set(CPACK_DEBIAN_${upper}_${field} "${value}" PARENT_SCOPE)
    endwhile()
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(libc "libc6 (>= 2.36)")
set(this_version "= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(libraries "${libc}, libtcl8.6 (>= 8.6.0)")
if(QXSH_LINE_EDITING)
    # tclreadline's library has its version in its name.
    string(APPEND libraries ", tcl-tclreadline (>= 2.3.8), tcl-tclreadline (<< 2.3.9~)"
                            ", libreadline8 (>= 6.0), libncurses6 (>= 6), libtinfo6 (>= 6)")
endif()
if(QXSH_ZLIB)
    string(APPEND libraries ", zlib1g (>= 1:1.2.0)")
endif()

package(shell qxsh SECTION interpreters
    DEPENDS "${libraries}" SUGGESTS "tcl, qxsh-sim (${this_version}), qxsh-doc"
    DESCRIPTION "Tcl shell for bringing up a network processor
An interactive Tcl shell with 1093 extra commands, which build the records
of a network-processor SDK field by field in native memory, print them and
call its 83 functions. The commands are also the Tcl package demo. The
package qx adds help, records as dicts and a script checker, which is also
the command qx-lint; that command needs a tclsh. The command qx-run runs
scripts for CI. The commands qxsh-record, qxsh-replay and qx-trace record
calls of the SDK, answer from a recording, and show and compare recordings.
.
The SDK itself, libqx-sdk.so, belongs to the board: no package contains it.
Without it the shell does not start. The package qxsh-sim has a simulated
one.")
if(QXSH_SIMULATOR)
    package(simulator qxsh-sim SECTION interpreters
        DEPENDS "${libc}, qxsh (${this_version})" SUGGESTS qxsh-doc
        DESCRIPTION "simulated network processor for qxsh
The command qxsh-sim, which is the shell qxsh on a simulated device, and
the simulator: a libqx-sdk.so where no other program finds it by accident.
Numbers, messages and dumps are those of a board, so scripts can be tested
at a desk or in CI.
.
The Tcl package qx, which comes with the shell, makes it fail, wait and
write logs on request (qx::sim).")
endif()
package(documentation qxsh-doc ARCHITECTURE all SECTION doc
    DESCRIPTION "reference and examples of qxsh
All commands, records and statuses of the shell qxsh as pages to browse,
with a map of each record's bytes and a search box, and as manual pages of
section n; the guides, and one example script for each area of the SDK.")
package(development qxsh-dev ARCHITECTURE all SECTION libdevel
    DESCRIPTION "headers of the network-processor SDK that qxsh calls
The header qx_sdk.h declares the records and functions of libqx-sdk.so as
qxsh uses them, for a library that replaces it or a program that shares it.
The header qx_status.h names the simulator's statuses.")
# Nothing is installed into it: finish.cmake fills it from the other components.
install(DIRECTORY DESTINATION lib/debug COMPONENT debug)
package(debug qxsh-dbg SECTION debug DEPENDS "qxsh (${this_version})"
    DESCRIPTION "debug information of qxsh and of its simulator
Debug information for the stripped programs. Every helper of a record is
a named function to set a breakpoint on.")

include(CPack)
