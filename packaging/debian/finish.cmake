# Run by cpack after all files are installed and before the packages are built: moves debug
# information into its own package, adds the files Debian requires in each, compresses manual pages,
# and makes the result reproducible. Relies on gzip, binutils and the variables of packages.cmake.
# All files get the time SOURCE_DATE_EPOCH.

set(debian "${CMAKE_CURRENT_LIST_DIR}")

# The programs' output goes to cpack's log; a failure ends cpack.
function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# separate(FILE): strips a program or library; debuggers find the debug information by build id.
function(separate file)
    execute_process(COMMAND readelf -n "${file}" OUTPUT_VARIABLE notes COMMAND_ERROR_IS_FATAL ANY)
    if(NOT notes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
        message(FATAL_ERROR "${file} has no build id to find its debug information by")
    endif()
    set(folder "${CPACK_TEMPORARY_DIRECTORY}/debug/usr/lib/debug/.build-id/${CMAKE_MATCH_1}")
    set(debug "${folder}/${CMAKE_MATCH_2}.debug")
    file(MAKE_DIRECTORY "${folder}")
    run("${CPACK_QXSH_OBJCOPY}" --only-keep-debug --compress-debug-sections "${file}" "${debug}")
    run("${CPACK_QXSH_STRIP}" --strip-unneeded --remove-section=.comment --remove-section=.note
        "${file}")
endfunction()

# finish(COMPONENT): completes the tree of one package.
function(finish component)
    string(TOUPPER "${component}" upper)
    set(name "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
    set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}")
    if(NOT IS_DIRECTORY "${root}/usr")
        message(FATAL_ERROR "nothing was installed for ${name}: ${root}/usr is missing")
    endif()

    set(doc "${root}/usr/share/doc/${name}")
    file(MAKE_DIRECTORY "${doc}")
    file(COPY_FILE "${CPACK_QXSH_CHANGELOG}" "${doc}/changelog.Debian")
    file(COPY_FILE "${debian}/copyright" "${doc}/copyright")
    if(EXISTS "${debian}/${name}.lintian-overrides")
        set(overrides "${root}/usr/share/lintian/overrides")
        file(MAKE_DIRECTORY "${overrides}")
        file(COPY_FILE "${debian}/${name}.lintian-overrides" "${overrides}/${name}")
    endif()
    if(EXISTS "${debian}/${name}.doc-base")
        file(MAKE_DIRECTORY "${root}/usr/share/doc-base")
        file(COPY_FILE "${debian}/${name}.doc-base" "${root}/usr/share/doc-base/${name}.${name}")
    endif()

    file(GLOB_RECURSE pages "${root}/usr/share/man/*")
    foreach(file IN LISTS pages ITEMS "${doc}/changelog.Debian")
        run(gzip -9nf "${file}")
    endforeach()

    # Fixed modes, whatever the checkout and the caller's umask; only files in bin are executable.
    run(chmod -R u=rwX,go=rX "${root}")
    run(find "${root}/usr" -type f -not -path "${root}/usr/bin/*" -exec chmod 0644 {} +)
    if(DEFINED ENV{SOURCE_DATE_EPOCH})
        run(find "${root}" -exec touch -h -d "@$ENV{SOURCE_DATE_EPOCH}" {} +)
    endif()
endfunction()

# Every ELF file, whatever its name. A link's file is reached by its own name: done twice, it would
# lose its debug information.
file(GLOB_RECURSE files "${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/*"
     "${CPACK_TEMPORARY_DIRECTORY}/*/usr/lib/*")
foreach(file IN LISTS files)
    file(READ "${file}" magic LIMIT 4 HEX)
    if(magic STREQUAL "7f454c46" AND NOT IS_SYMLINK "${file}")
        separate("${file}")
    endif()
endforeach()
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    finish("${component}")
endforeach()
