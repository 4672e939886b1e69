# What each command does with memory: the tables of strict/rules.h.

proc generate::strict_rules {} {
    variable note
    set text "// What each command does with memory, in the order of the command table.\n// $note\n"
    append text "#include \"strict/rules.h\"\n\n#include \"helpers.h\"\n#include \"types.h\"\n\n"
    append text "namespace qxsh \{\n\nusing enum memory_use;\n\n"
    append text "const element_type element_types\[\] = \{\n"
    foreach type [catalogue::types] { append text "    [element_type $type],\n" }
    append text "\};\n\nconst word_rule word_rules\[\] = \{\n"
    set rows {}
    set first 0
    foreach command [catalogue::commands] {
        set rules [memory_rules $command]
        append text "    // [dict get $command name]\n[wrapped {    } $rules ,]\n"
        append rows "    \{$first, [expr {[llength $rules] - 1}]\},\n"
        incr first [llength $rules]
    }
    append text "\};\n\nconst command_rule command_rules\[\] = \{\n$rows\};\n"
    append text "\n\} // namespace qxsh\n"
    write strict_rules.cpp $text
}

proc generate::element_type {type} {
    if {[catalogue::is_record $type]} { return "\{[catalogue::type_size $type], [record_number $type]\}" }
    # A type that is neither a record nor a scalar has no commands.
    variable ::catalogue::scalar_types
    set known [dict exists $scalar_types $type]
    return "\{[expr {$known ? [catalogue::type_size $type] : 1}], -1\}"
}

# One rule a word, and one for the result.
proc generate::memory_rules {command} {
    set rules {}
    foreach {name type} [dict get $command arguments] {
        lappend rules "\{[word_kind $type], [join [memory_use $command $name $type] {, }]\}"
    }
    set count [expr {[llength [dict get $command arguments]] / 2}]
    switch -glob -- [dict get $command shape] {
        *array_create { set result "makes, $count" }
        *create       { set result "makes, 0" }
        default       { return [lappend rules "\{word_end, none, 0\}"] }
    }
    return [lappend rules "\{[word_kind [dict get $command result]], $result\}"]
}

# What becomes of one word, and the number of the word that it takes for that. The index of an array
# is its command's last word.
proc generate::memory_use {command name type} {
    set arguments [dict get $command arguments]
    set last [expr {[llength $arguments] / 2}]
    switch -glob -- $type {
        void* { return {released 0} }
        *[*]  {}
        default { return {none 0} }
    }
    switch -- [dict get $command shape] {
        call {
            set counter [catalogue::count_of [dict get $command owner] $name]
            if {$counter >= 0} { return [list counted [expr {$counter + 1}]] }
        }
        array_get { return {base 0} }
        array_set { if {$name eq "arr"} { return [list indexed $last] } }
        cell_array_get - cell_array_set { return [list indexed $last] }
    }
    return {element 0}
}
