# What the tests of the link share. Relies on tests/script/shell.tcl and on the environment that
# CMakeLists.txt sets beside: QXSH_CMAKE, QXSH_READELF, QXSH_SDK, QXSH_BUILD_TYPE, QXSH_PROCESSOR.

set here [file dirname [file normalize [info script]]]

# Libraries differ from build to build.
without_transcript

# The text readelf prints about a file.
proc elf {option file} {
    set code [catch { exec $::env(QXSH_READELF) -W $option $file 2>@1 } text]
    if {$code} { error $text }
    return $text
}

# The values of one tag of a file's dynamic section.
proc dynamic {tag file} {
    set found {}
    foreach {line value} [regexp -all -inline -line "\\($tag\\).*\\\[(.*)\\]" [elf -d $file]] {
        lappend found $value
    }
    return $found
}

# The names in a file's dynamic symbol table, versions cut off: those it defines, or those it wants.
proc symbols {which file} {
    set found {}
    foreach line [split [elf --dyn-syms $file] \n] {
        if {[llength $line] < 8 || ![regexp {^\d+:$} [lindex $line 0]]} continue
        set wanted [expr {[lindex $line 6] eq "UND"}]
        if {$wanted == ($which eq "wanted") && [lindex $line 4] ne "LOCAL"} {
            lappend found [lindex [split [lindex $line 7] @] 0]
        }
    }
    return [lsort -unique $found]
}

# The SDK's functions, from the table of expected commands.
proc sdk_functions {} {
    set names {}
    foreach row [expected commands.tsv] {
        if {[lindex $row 3] eq "status"} { lappend names [lindex $row 0] }
    }
    return [lsort $names]
}

# The folder of a library of CMakeLists.txt.
proc library {name} { return [file join $::env(QXSH_BUILD) link $name] }

# Which library a run of `ask` got: the simulator has a status of its own for a null cell, the
# others of CMakeLists.txt give the same for everything.
set ask {puts [qx_qos_map_mode_get 0 0 NULL]}
proc loaded_library {run} {
    if {[dict get $run status] ne "0"} { return $run }
    switch -- [string trim [dict get $run out]] {
        7              { return other }
        1              { return wide }
        2              { return simulator }
        default        { return [dict get $run out] }
    }
}

constraint optimised {[testConstraint unsanitized]} "sanitizers bring libraries along"
