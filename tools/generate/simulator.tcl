# What a call of the simulated SDK leads to. A behaviour has the function's name without the prefix.
# It takes the device (if the function names one) and the function's arguments, with records and
# cells by reference.

proc generate::simulator {} {
    variable note
    set header "// Behaviours of the SDK functions.\n// $note\n#pragma once\n\n"
    append header "#include \"call.h\"\n#include \"qx_sdk.h\"\n\nnamespace qxsim {\n\n"
    append header "/// By number of the call: its behaviour, on the frame's copies.\n"
    append header "extern qx_status (*const behaviours\[\])(call_frame &);\n\n"
    set text "// The behaviours of the SDK functions, by number.\n// $note\n"
    append text "#include \"sdk_calls.h\"\n\nnamespace qxsim {\n"
    foreach call [catalogue::calls] {
        lassign [behaviour $call] declaration definition
        append header $declaration
        append text \n$definition
        append numbered "    behave_$call,\n"
    }
    append text "\nqx_status (*const behaviours\[\])(call_frame &) = \{\n$numbered\};\n"
    append text "\n} // namespace qxsim\n"
    write sdk_calls.h "$header\n} // namespace qxsim\n"
    write sdk_calls.cpp $text
}

# A behaviour's declaration, and the function in the table, which gets the arguments from the frame
# and calls it.
proc generate::behaviour {call} {
    set parameters {}
    set words {}
    set number 0
    foreach argument [dict get [catalogue::call $call] arguments] {
        lassign [frame_argument $call $argument $number] parameter word
        lappend parameters $parameter
        lappend words $word
        incr number
    }
    if {[catalogue::names_device $call]} {
        lset parameters 0 "device &here"
        lset words 0 *frame.here
    }
    set name [regsub {^qx_} $call {}]
    set definition "static qx_status behave_$call\(call_frame &frame)\n\{\n"
    append definition "[wrapped "    return $name\(" $words ");" 8]\n\}\n"
    return [list "[wrapped "qx_status $name\(" $parameters ");"]\n" $definition]
}

# The parameter of a behaviour for an argument, and the expression that gets it from the frame.
proc generate::frame_argument {call argument number} {
    set name [dict get $argument name]
    set type [dict get $argument type]
    set native [catalogue::native [string trimright $type *]]
    if {![string match {*[*]} $type]} {
        return [list "$native $name" "frame.value<$native>($number)"]
    }
    if {[catalogue::count_of $call $name] >= 0} {
        return [list "const record_array<$native> &$name" "frame.array<$native>($number)"]
    }
    set const [expr {[dict get $argument direction] eq "in" ? "const " : ""}]
    return [list "$const$native &$name" "frame.record<$native>($number)"]
}
