# A reader of JSON for tests, strict: objects become dicts (a member twice is a mistake), arrays
# lists, anything else its text. Relies on nothing.

namespace eval json_reader {
    variable text {}
    variable at 0
}

proc json_reader::read {json} {
    variable text $json
    variable at 0
    set value [value]
    skip
    if {$at < [string length $text]} { fail "more behind the end" }
    return $value
}

proc json_reader::fail {what} { variable at; error "at $at: $what" }

proc json_reader::skip {} {
    variable text
    variable at
    regexp -indices -start $at {\A\s*} $text blank
    set at [expr {[lindex $blank 1] + 1}]
    return [string index $text $at]
}

# Takes one mark; its absence is a mistake.
proc json_reader::mark {wanted} {
    variable at
    if {[skip] ne $wanted} { fail "expected $wanted" }
    incr at
}

proc json_reader::value {} {
    switch -- [skip] {
        \{      { return [object] }
        \[      { return [array] }
        \"      { return [quoted] }
        default { return [word] }
    }
}

proc json_reader::word {} {
    variable text
    variable at
    set form {\A(?:true|false|null|-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][+-]?\d+)?)}
    if {![regexp -start $at $form $text word]} {
        fail "no value"
    }
    incr at [string length $word]
    return $word
}

proc json_reader::quoted {} {
    variable text
    variable at
    if {![regexp -start $at {\A"((?:[^"\\]|\\["\\/bfnrt]|\\u[0-9a-fA-F]{4})*)"} $text all inner]} {
        fail "no text"
    }
    incr at [string length $all]
    return [subst -nocommands -novariables $inner]
}

proc json_reader::array {} {
    variable at
    set result {}
    mark \[
    if {[skip] eq "\]"} { incr at; return {} }
    while 1 {
        lappend result [value]
        if {[skip] ne ","} break
        incr at
    }
    mark \]
    return $result
}

proc json_reader::object {} {
    variable at
    set result {}
    mark \{
    if {[skip] eq "\}"} { incr at; return {} }
    while 1 {
        skip
        set name [quoted]
        if {[dict exists $result $name]} { fail "member $name twice" }
        mark :
        dict set result $name [value]
        if {[skip] ne ","} break
        incr at
    }
    mark \}
    return $result
}
