# The SDK functions of a library with the SDK's interface, each of which passes its words on
# (entry_points.cpp), and the way back: a call of any function with given words (call_through.cpp).

proc generate::entry_points {} {
    variable note
    set text "// The functions of a library with the SDK's interface: records/call_words.h.\n// $note\n"
    append text "#include \"qx_sdk.h\"\n#include \"record_numbers.h\"\n"
    append text "#include \"records/call_words.h\"\n\nusing qxsh::call_word;\n"
    foreach call [catalogue::calls] { append text \n[entry_point $call] }
    write entry_points.cpp $text
    call_through
}

proc generate::entry_point {call} {
    set parameters {}
    set names {}
    foreach argument [dict get [catalogue::call $call] arguments] {
        lappend parameters [declarator [dict get $argument type] [dict get $argument name]]
        lappend names [dict get $argument name]
    }
    set text "[wrapped "unsigned int $call\(" $parameters ")"]\n\{\n"
    append text "[wrapped "    const call_word words\[\] = \{" $names "\};" 8]\n"
    append text "    return qxsh::answer_call(qxsh::call_$call, words,"
    append text " __builtin_return_address(0));\n\}\n"
}

proc generate::call_through {} {
    variable note
    set text "// A call of a given function: records/call_words.h.\n// $note\n"
    append text "#include \"qx_sdk.h\"\n#include \"record_numbers.h\"\n"
    append text "#include \"records/call_words.h\"\n\nnamespace qxsh \{\n\n"
    append text "unsigned int call_through(unsigned int number, any_function function,"
    append text " const call_word *words)\n\{\n    switch (number) \{\n"
    foreach call [catalogue::calls] {
        set words {}
        set number 0
        foreach argument [dict get [catalogue::call $call] arguments] {
            lappend words [word_as [dict get $argument type] "words\[$number\]"]
            incr number
        }
        append text "    case call_$call:\n"
        append text "        return reinterpret_cast<decltype(&$call)>(function)(\n"
        append text "[wrapped "            " $words ");" 12]\n"
    }
    append text "    default:\n        return 0;\n    \}\n\}\n\n\} // namespace qxsh\n"
    write call_through.cpp $text
}

# A word as an argument of this type.
proc generate::word_as {type word} {
    set native [string trimright [catalogue::native $type]]
    if {[string match {*[*]} $type]} { return "static_cast<$native>($word.pointer)" }
    return "static_cast<$native>($word.value)"
}
