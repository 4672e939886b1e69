# Sizes of what is shipped: the stripped shell, the stripped package, and the code of a command: its
# wrapper and its share of the record helpers. Relies on binutils for the target.

namespace eval sizes {
    variable prefixes {pc {} armhf arm-linux-gnueabihf-}
}

proc sizes::tool {target name} { variable prefixes; return [dict get $prefixes $target]$name }

# A dictionary of a stripped copy: bytes of the file, its code, constants and all loaded sections.
proc sizes::stripped {target file} {
    file mkdir $counter::scratch
    set copy [file join $counter::scratch stripped.$target]
    exec [tool $target strip] -o $copy $file
    set sections {.text 0 .rodata 0 Total 0}
    foreach line [split [exec [tool $target size] -A $copy] \n] {
        lassign $line name bytes
        if {[dict exists $sections $name]} { dict set sections $name $bytes }
    }
    list file [file size $copy] code [dict get $sections .text] \
        constants [dict get $sections .rodata] loaded [dict get $sections Total]
}

proc sizes::file_size {target file} { dict get [stripped $target $file] file }

# Bytes of functions in the unstripped shell: wrappers, helpers, and everything else.
proc sizes::functions {target} {
    array set bytes {wrappers 0 helpers 0 others 0}
    array set count {wrappers 0 helpers 0 others 0}
    set symbols [exec [tool $target nm] -C -S --defined-only [counter::shell $target]]
    set form {^[0-9a-f]+ ([0-9a-f]+) [tTwW] (.*)$}
    foreach {- size name} [regexp -all -inline -line $form $symbols] {
        switch -glob -- $name {
            wrap_qx_* { set kind wrappers }
            qx_*      { set kind helpers }
            default   { set kind others }
        }
        incr bytes($kind) [scan $size %x]
        # A function's unlikely part that the compiler has split off is not another function.
        if {![string match {*\[clone*} $name]} { incr count($kind) }
    }
    list wrappers $bytes(wrappers) helpers $bytes(helpers) others $bytes(others) \
        commands $count(wrappers) \
        per_command [expr {double($bytes(wrappers) + $bytes(helpers)) / $count(wrappers)}]
}

# The shared libraries that the shell needs.
proc sizes::needed {target} {
    set result {}
    set text [exec [tool $target readelf] -dW [counter::shell $target]]
    foreach {- name} [regexp -all -inline {\(NEEDED\)[^\[]*\[([^\]]+)\]} $text] {
        lappend result $name
    }
    return $result
}

proc sizes::measure {target} {
    list shell [stripped $target [counter::shell $target]] \
        package [stripped $target [counter::package_library $target]] \
        functions [functions $target] needed [needed $target]
}
