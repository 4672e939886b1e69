# The type table, the wrappers and the command table.

proc generate::type_index {type} {
    return type_[string map {{ } _} [catalogue::native [string trimright $type *]]]
}

proc generate::most_arguments {} {
    set most 0
    foreach command [catalogue::commands] {
        set most [expr {max($most, [llength [dict get $command arguments]] / 2)}]
    }
    return $most
}

proc generate::types {} {
    variable note
    set header "// The pointer types of this module: their numbers in the type table, in its order.\n"
    append header "// $note\n#pragma once\n\n#include \"runtime/handle_text.h\"\n"
    append header "#include \"runtime/type_registry.h\"\n\nenum type_index {\n"
    set text "// The type table and the module record.\n// $note\n#include \"types.h\"\n\n"
    set names {}
    set texts {}
    set records {}
    set casts {}
    set expected {}
    foreach type [catalogue::types] {
        set index [type_index $type]
        set mangled [catalogue::mangled $type]
        append header "    $index,\n"
        append names "    \"$mangled\",\n"
        set literals "swig_type_names\[$index\].text, \"[catalogue::native $type] *\","
        append texts "static swig_type_record record$mangled = \{$literals\n    nullptr,\
            nullptr, nullptr, 0\};\n"
        append texts "static swig_cast_record casts$mangled\[\] = \{\n    \{&record$mangled,\
            nullptr, nullptr, nullptr\}, \{nullptr, nullptr, nullptr, nullptr\}\};\n"
        append records "    &record$mangled,\n"
        append casts "    casts$mangled,\n"
        append expected "    \{$literals\n     nullptr, nullptr, nullptr, 0\},\n"
    }
    append header "    type_count\n};\n\n"
    append header "/// Of the command with the longest usage.\n"
    append header "constexpr int most_arguments = [most_arguments];\n\n"
    append header "/// The types as resolved when the module was first linked; ends with a null.\n"
    append header "\[\[gnu::visibility(\"hidden\")\]\] "
    append header "extern swig_type_record *swig_types\[type_count + 1\];\n"
    append header "/// The types as commands expect them, with this module's own literals and the `cast` of\n"
    append header "/// swig_expect_type. Not in the ring: only this module sees them.\n"
    append header "\[\[gnu::visibility(\"hidden\")\]\] "
    append header "extern swig_type_record swig_expected_types\[type_count\];\n"
    append header "/// The names of the types in the texts of handles.\n"
    append header "\[\[gnu::visibility(\"hidden\")\]\] "
    append header "extern const qxsh::handle_name swig_type_names\[type_count\];\n"
    append header "extern swig_module_record swig_module;\n"
    append text "constexpr qxsh::handle_name swig_type_names\[type_count\] = \{\n$names\};\n\n$texts"
    append text "\nswig_type_record *swig_types\[type_count + 1\];\n"
    append text "swig_type_record swig_expected_types\[type_count\] = \{\n$expected\};\n"
    append text "static swig_type_record *const type_initial\[\] = \{\n$records\};\n"
    append text "static swig_cast_record *const cast_initial\[\] = \{\n$casts\};\n"
    append text "swig_module_record swig_module = \{swig_types, type_count, nullptr, type_initial,\n"
    append text "    cast_initial, nullptr\};\n"
    write types.h $header
    write types.cpp $text
}

proc generate::wrappers {} {
    variable note
    variable word_lists {}
    set declarations {}
    set numbers {}
    set commands {}
    set rows {}
    set usages {}
    set usage_at 0
    foreach command [catalogue::commands] {
        set area [dict get $command area]
        set name [dict get $command name]
        dict append texts $area \n[wrapper $command]
        append declarations "Tcl_ObjCmdProc wrap_$name;\n"
        append commands "    \{\"$name\", wrap_$name, nullptr\},\n"
        append numbers "    command_$name,\n"
        append rows "    [command_row $command $usage_at], // $name\n"
        set usage [catalogue::usage $command]
        append usages "    [quoted $usage] \"\\0\"\n"
        incr usage_at [expr {[string length $usage] + 1}]
    }
    foreach area [catalogue::areas] {
        set text "// Commands of the area: [dict get [catalogue::area $area] text].\n// $note\n"
        append text "#include \"test_wrap.h\"\n\n#include \"commands/sdk_call.h\"\n"
        append text "#include \"commands/wrapper.h\"\n#include \"helpers.h\"\n"
        append text "\nusing namespace qxsh;\n"
        if {[dict exists $texts $area]} { append text [dict get $texts $area] }
        write commands/$area.cpp $text
    }
    set text "// The wrappers, in the order of the command table.\n// $note\n#pragma once\n\n"
    append text "#include \"commands/command_table.h\"\n\n$declarations\n"
    append text "/// The commands by number.\nenum : qxsh::command_number \{\n$numbers\};\n"
    write test_wrap.h $text
    set text "// The command table, in the order of registration, and what its commands are.\n"
    append text "// $note\n#include \"test_wrap.h\"\n\n#include \"record_numbers.h\"\n"
    append text "#include \"types.h\"\n\n"
    append text "const swig_command_info swig_commands\[\] = \{\n"
    append text "$commands    \{nullptr, nullptr, nullptr\},\n\};\n\nnamespace qxsh \{\n\n"
    append text "const command_row command_rows\[\] = \{\n$rows\};\n\n"
    append text "const char command_usages\[\] =\n[string trimright $usages];\n\n"
    append text "const word_kind word_kinds\[\] = \{\n"
    dict for {kinds at} $word_lists { append text "[wrapped {    } [concat $kinds word_end] ,]\n" }
    append text "\};\n\nconst element_type element_types\[\] = \{\n"
    foreach type [catalogue::types] { append text "    [element_type $type],\n" }
    append text "\};\n\n\} // namespace qxsh\n"
    write test_wrap.cpp $text
}

# The position of a list of kinds among those of all commands; equal lists are stored once.
proc generate::kinds_at {kinds} {
    variable word_lists
    if {![dict exists $word_lists $kinds]} {
        set at 0
        foreach list [dict keys $word_lists] { incr at [expr {[llength $list] + 1}] }
        dict set word_lists $kinds $at
    }
    return [dict get $word_lists $kinds]
}

proc generate::word_kinds {command} {
    set kinds {}
    foreach {name type} [dict get $command arguments] { lappend kinds [word_kind $type] }
    return $kinds
}

# A command's row in the command table. Its usage has this place in command_usages.
proc generate::command_row {command usage_at} {
    set what 0
    switch -glob -- [dict get $command shape] {
        array_get     { set form points }
        array_set     - cell_array_get - cell_array_set { set form indexes }
        free          { set form releases }
        call          { set form calls; set what call_[dict get $command name] }
        *array_create { set form makes_array; set what [type_index [dict get $command result]] }
        *create       { set form makes; set what [type_index [dict get $command result]] }
        default       { set form plain }
    }
    return "\{$usage_at, [kinds_at [word_kinds $command]], command_form::$form, $what\}"
}

proc generate::element_type {type} {
    variable ::catalogue::scalar_types
    set record [record_number $type]
    # A type that is neither a record nor a scalar has no commands.
    set known [expr {$record >= 0 || [dict exists $scalar_types $type]}]
    return "\{[expr {$known ? [catalogue::type_size $type] : 1}], $record\}"
}

# One object command: reads its words, converting them if necessary, makes one call and sets the
# result.
proc generate::wrapper {command} {
    set name [dict get $command name]
    set arguments [dict get $command arguments]
    set checks [list "objc != [expr {1 + [llength $arguments] / 2}]"]
    set declarations {}
    set names {}
    foreach {argument type} $arguments {
        append declarations "    [declarator $type $argument];\n"
        lappend names $argument
        set word "objv\[[llength $names]\], $argument"
        if {[is_typed_pointer $type]} { append word ", swig_expected_types\[[type_index $type]\]" }
        lappend checks "!ready($word)"
    }
    set text "int wrap_$name\(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv\[\])\n\{\n"
    append text $declarations [conditions $checks] \
        [wrapped "        return call_converted(" [list command_$name interp objc objv] ");" 30]\n
    foreach line [call_and_result $command "$name\([join $names {, }])"] {
        append text "    $line\n"
    }
    append text "\}\n"
}

proc generate::is_typed_pointer {type} { expr {$type ne "void*" && [string match {*[*]} $type]} }

proc generate::word_kind {type} {
    if {[is_typed_pointer $type]} { return "handle_of([type_index $type])" }
    if {$type eq "void*"} { return word_any_handle }
    return word_[string map {{ } _} [catalogue::native $type]]
}

proc generate::conditions {checks} {
    set line "    if ([join $checks { || }])\n"
    if {[string length $line] > 100} { set line "    if ([join $checks " ||\n        "])\n" }
    return $line
}

# The last lines of a wrapper. They mark calls of the SDK and of block memory, in which a fault
# cannot be undone.
proc generate::call_and_result {command call} {
    set number command_[dict get $command name]
    set begin "($number, interp, objv);"
    set result [dict get $command result]
    switch -glob -- [dict get $command shape] {
        call { return [list "begin_sdk_call$begin" "return end_sdk_call($call);"] }
        free { return [list "begin_call$begin" "$call;" "end_call();" "return TCL_OK;"] }
        *create {
            return [list "begin_call$begin" "auto *const result = $call;" "end_call();" \
                "return set_pointer_result(interp, result, swig_types\[[type_index $result]\]);"]
        }
    }
    if {$result eq "none"} { return [list "$call;" "return finish(interp, $number);"] }
    if {[is_typed_pointer $result]} {
        return [list "auto *const result = $call;" \
            "return set_pointer_result(interp, result, swig_types\[[type_index $result]\]);"]
    }
    return [list "return finish(interp, $number, $call);"]
}
