# Package qx, what the simulated device answers and certain values mean, and the examples of the
# calls, for help, pages and manuals. Relies on help_data.tcl, which the build generates from the
# catalogue and docs/simulator.md, and which is read when it is first needed.

namespace eval qx::catalogue {
    variable folder [file dirname [file normalize [info script]]]
}

# One of the variables of help_data.tcl, a dict:
#   example  call -> words, variable for the result, calls before it
#   answer   call -> names of statuses, when
#   special  RECORD.FIELD or CALL.ARGUMENT -> value and meaning, alternating
proc qx::catalogue::help_data {kind} {
    variable folder
    variable ${kind}_data
    if {![info exists ${kind}_data]} { uplevel #0 [list source [file join $folder help_data.tcl]] }
    return [set ${kind}_data]
}

# What the simulated device answers to a call besides 0, a dict: statuses, those with a reason of
# the call's own; when, the reasons in words; usual, those that most calls may answer.
proc qx::catalogue::answers {call} {
    lassign [entry call [help_data answer] $call] statuses when
    set usual {}
    set arguments [dict get [call $call] arguments]
    if {[dict get [lindex $arguments 0] name] in {device_id dev_id}} {
        lappend usual QX_BAD_DEVICE
    }
    foreach argument $arguments {
        if {![is_pointer [dict get $argument type]]} continue
        lappend usual QX_NULL_POINTER
        break
    }
    if {![string match qx_pm_* $call]} { lappend usual QX_SUSPENDED }
    return [dict create statuses $statuses when $when usual [lappend usual QX_NO_MEMORY]]
}

# What certain values of a record's field or a call's argument mean: value and meaning, alternating.
# A value is a number, a range such as `1 to 4`, or words.
proc qx::catalogue::special {owner name} {
    if {![dict exists [help_data special] $owner.$name]} return
    return [dict get [help_data special] $owner.$name]
}

# The example of a call, a dict: words for qx::call, result (the variable that others use it by),
# before (the calls that it needs, in order). Empty if it has none.
proc qx::catalogue::call_example {call} {
    if {![dict exists [help_data example] $call]} return
    lassign [dict get [help_data example] $call] words result before
    return [dict create words $words result $result before $before]
}
