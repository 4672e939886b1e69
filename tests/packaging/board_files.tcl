# What the tests of the board's build files share. Relies on tests/script/shell.tcl and QXSH_CMAKE.

without_transcript

set version [project_version]

# Configures the project with these words as a build system does, for this machine; -> the lines in
# which CMake complains of words it does not know.
proc configure {name words} {
    set text [exec $::env(QXSH_CMAKE) -G Ninja -S [project] -B [scratch $name] \
        -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_BUILD_TYPE=Release {*}$words 2>@1]
    if {![string match {*Build files have been written*} $text]} { error $text }
    set unknown {}
    regexp {not used by the project:(.*)$} $text -> unknown
    regsub -all {\s*--[^\n]*} $unknown {} unknown
    return [string trim $unknown]
}

# The value of a variable in the cache of a configured folder.
proc cached {name variable} {
    set cache [file_text [file join [scratch $name] CMakeCache.txt]]
    regexp -line "^$variable:\[A-Z\]+=(.*)$" $cache -> value
    return $value
}
