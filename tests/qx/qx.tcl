# What the tests of the package qx share. Relies on tests/script/shell.tcl; the shell finds the
# package in the build tree by itself.

# What a script prints that has the package; it has to end well.
proc printed {script} { output_of "package require qx\n$script" }

# The words that a test writes as lines.
proc lines {args} { return "[join $args \n]\n" }
