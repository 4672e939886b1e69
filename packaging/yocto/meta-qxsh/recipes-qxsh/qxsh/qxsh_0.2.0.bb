SUMMARY = "Tcl shell for bringing up a network processor"
DESCRIPTION = "A Tcl shell with commands for the records and functions of a \
network-processor SDK. It needs the board's libqx-sdk.so at run time; the \
simulated one is not installed."
SECTION = "console/utils"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=6db2847f75610964da22eece703b5cf0"

# The prompt starts a thread; every C library here supports threads, so nothing requires it.
DEPENDS = "nlohmann-json tcl tcl-native"

inherit cmake externalsrc

# The layer is part of the source tree that it builds.
EXTERNALSRC ?= "${THISDIR}/../../../../.."

EXTRA_OECMAKE = " \
    -DBUILD_TESTING=OFF \
    -DQXSH_SIMULATOR=OFF \
    -DQXSH_STATIC_RUNTIME=ON \
    -DQXSH_TCLSH=${STAGING_BINDIR_NATIVE}/tclsh \
    -DQXSH_PACKAGE_DIR=${baselib} \
"

# No layer that this one depends on has tclreadline: whoever enables this must provide a recipe.
PACKAGECONFIG ??= ""
PACKAGECONFIG[line-editing] = "-DQXSH_LINE_EDITING=ON,-DQXSH_LINE_EDITING=OFF,\
tclreadline readline ncurses"

# Records may be at any address, and the processor may not be able to read words there.
TARGET_CC_ARCH:append:arm = " -mno-unaligned-access"

# The SDK library belongs to the board: no recipe provides it, and nothing links the real one.
INSANE_SKIP:${PN} += "file-rdeps"

FILES:${PN} += " \
    ${libdir}/demo0.0 \
    ${libdir}/qx[0-9]* \
    ${libdir}/qx_prompt[0-9]* \
    ${datadir}/qxsh \
"
RDEPENDS:${PN} = "tcl"
