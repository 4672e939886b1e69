# tclsh idle_sdk.tcl CATALOGUE OUTPUT: writes the C source of an SDK library whose functions only
# return success, to measure our own cost of a call. Relies on tools/catalogue.tcl.

source [file join [file dirname [file normalize [info script]]] .. tools catalogue.tcl]

lassign $argv folder output
catalogue::load $folder
set text "/* Every function of the SDK, doing nothing. Arguments are passed and ignored. */\n"
foreach call [catalogue::calls] { append text "unsigned int ${call}(void) { return 0; }\n" }
set channel [open $output w]
puts -nonewline $channel $text
close $channel
