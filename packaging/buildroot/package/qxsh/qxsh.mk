################################################################################
#
# qxsh
#
################################################################################

QXSH_VERSION = 0.2.0
QXSH_SITE = $(BR2_EXTERNAL_QXSH_PATH)/../..
QXSH_SITE_METHOD = local
# Do not copy builds in the source folder.
QXSH_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS = --exclude build
QXSH_LICENSE = MIT
QXSH_LICENSE_FILES = LICENSE
QXSH_DEPENDENCIES = json-for-modern-cpp tcl $(QXSH_EXTRA_DEPENDENCIES)
QXSH_SUPPORTS_IN_SOURCE_BUILD = NO

QXSH_CONF_OPTS = \
	-DBUILD_TESTING=OFF \
	-DQXSH_SIMULATOR=OFF \
	-DQXSH_STATIC_RUNTIME=ON \
	-DQXSH_TCLSH=$(shell command -v $(call qstrip,$(BR2_PACKAGE_QXSH_TCLSH))) \
	-DQXSH_PACKAGE_DIR=lib

# Records may be at any address, and the processor may not be able to read words there.
ifeq ($(BR2_arm),y)
QXSH_CONF_OPTS += \
	-DCMAKE_C_FLAGS="$(TARGET_CFLAGS) -mno-unaligned-access" \
	-DCMAKE_CXX_FLAGS="$(TARGET_CXXFLAGS) -mno-unaligned-access"
endif

ifeq ($(BR2_PACKAGE_QXSH_LINE_EDITING),y)
QXSH_DEPENDENCIES += readline ncurses
QXSH_CONF_OPTS += -DQXSH_LINE_EDITING=ON
else
QXSH_CONF_OPTS += -DQXSH_LINE_EDITING=OFF
endif

$(eval $(cmake-package))
