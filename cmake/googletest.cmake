# GoogleTest (targets gtest, gtest_main, gmock), compiled like the tests, without its own warnings.
# Relies on Debian's copy of the sources (package googletest).

set(QXSH_GOOGLETEST /usr/src/googletest CACHE PATH "GoogleTest's sources (package googletest)")
if(NOT EXISTS "${QXSH_GOOGLETEST}/CMakeLists.txt")
    message(FATAL_ERROR "${QXSH_GOOGLETEST} does not contain GoogleTest: install googletest, or "
                        "configure with -DBUILD_TESTING=OFF")
endif()

function(add_googletest)
    set(INSTALL_GTEST OFF)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    add_subdirectory("${QXSH_GOOGLETEST}" "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
endfunction()
add_googletest()
include(GoogleTest)
