# The shell's side of the soak test: runs the scripts whose names come on standard input, and says
# after each how much memory and how many open files the process has.
source [file join [file dirname [info script]] prologue.tcl]

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
    puts "== memory [resident_memory] files [llength [glob -directory /proc/self/fd *]]"
    flush stdout
}
