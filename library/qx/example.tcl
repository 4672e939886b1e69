# Package qx, an example for every command: a few lines that run as they are on a fresh simulator.
# Relies on catalogue.tcl and layout.tcl.

namespace eval qx::example {}

# The commands of an example.
proc qx::example::lines {command} {
    foreach key {name shape arguments} { set $key [dict get $command $key] }
    if {$shape eq "free"} { return [list "set block \[qx_uint32_create 1\]" "$name \$block"] }
    set lines {}
    set words $name
    foreach {argument type} $arguments {
        if {[qx::catalogue::is_pointer $type]} {
            lappend lines "set $argument \[[creation [qx::catalogue::target $type]]\]"
            append words " \$$argument"
        } else {
            append words " [number $argument]"
        }
    }
    if {[string match *create $shape]} {
        return [list "set block \[$words\]" "qx_data_free \$block"]
    }
    return [lappend lines $words]
}

# The command that creates an object of a type.
proc qx::example::creation {type} {
    if {[qx::catalogue::is_record $type]} { return [qx::catalogue::stem $type]_create }
    return "qx_[qx::catalogue::cell $type]_create 0"
}

proc qx::example::number {argument} { expr {$argument in {idx index data} ? 0 : 1} }

# A command of an example as it is shown: indented, long ones on several lines.
proc qx::example::shown {line} {
    set text {}
    set lines [split [string trimright [qx::layout::wrapped $line {  } 6 2] \n] \n]
    foreach part [lrange $lines 0 end-1] { append text "$part \\\n" }
    return "$text[lindex $lines end]\n"
}
