# The shell's side of the soak test: runs the scripts whose names come on standard input, plays the
# scenes after each, and says how much memory and how many open files the process has. The argument
# is a folder for the scenes' files.
package require qx
foreach file {prologue.tcl soak_scenes.tcl} { source [file join [file dirname [info script]] $file] }
qx::sim::attach [file join [lindex $argv 0] control]
expr {srand(1)}

proc resident_memory {} {
    set file [open /proc/self/status]
    set text [read $file]
    close $file
    regexp {VmRSS:\s+(\d+) kB} $text -> size
    return $size
}

while {[gets stdin name] >= 0} {
    # Variables of a script that went before are none of this one's.
    foreach variable [info globals b*] { unset $variable }
    source $name
    scenes::play [lindex $argv 0]
    puts "== memory [resident_memory] files [llength [glob -directory /proc/self/fd *]]"
    flush stdout
}
