# Named cases: one run of the shell carries out the probes of all cases of a file, and each case is
# a test. Relies on shell.tcl and probes.tcl.
#
#   case NAME DESCRIPTION { ok ...; fails_with ... }     then, at the end of the file, run_cases
#   prepare SCRIPT                          runs in the shell before the probes that follow
#   ok COMMAND RESULT ?PRINTED?             the command succeeds with this result and text
#   like COMMAND PATTERN ?PRINTED?          the same with a regular expression for the result
#   type_error, overflow COMMAND N TYPE     the conversion error of argument N
#   miscounted COMMAND MESSAGE              a word-count error

source [file join [file dirname [info script]] probes.tcl]

namespace eval cases {
    variable all {}
    variable current {}
}

proc case {name description probes} {
    lappend cases::all $name $description
    set cases::current $name
    uplevel #0 $probes
}

proc prepare {script} { probes::setup $script }
proc ok {command result {printed {}}} { probes::returns $cases::current $command $result $printed }
proc like {command pattern {printed {}}} {
    probes::returns_like $cases::current $command $pattern $printed
}

proc conversion_error {category command number type} {
    probes::fails $cases::current $command [list SWIG $category] \
        "$category in method '[lindex [split $command] 0]', argument $number of type '$type'"
}
proc type_error {command number type} { conversion_error TypeError $command $number $type }
proc overflow   {command number type} { conversion_error OverflowError $command $number $type }
proc miscounted {command message} { probes::fails $cases::current $command NONE $message }

proc run_cases {} {
    probes::run_probes
    foreach {name description} $cases::all {
        test $name $description -body [list probes::differences $name] -result {}
    }
}
