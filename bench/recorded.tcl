# What it costs that calls are recorded and replayed: instructions of a qx_flow_add with a filled
# record, with the recorder, or the player in place of the library, over neither. What the kernel
# does for it is not counted. Relies on counter.tcl.

namespace eval recorded {
    # Numbers of calls; what is done once cancels out.
    variable passes {200 1200}
    variable script {
        package require qx
        set flow [qx::new qx_flow_t {flow_id 7 ingress_pkt {phy_port 1 da_mac 02:00:00:00:01:01
            sa_mac 02:00:00:00:01:02 sa_ip 192.168.1.23 da_ip 198.51.100.7/32 protocol 6
            l4_header {tcp {sport 40123 dport 443}}}}]
        for {set count 0} {$count < [lindex $argv 0]} {incr count} { qx_flow_add 0 $flow }
    }
}

# The words before the shell, with the recorder in front of the library that does nothing, writing
# to a file. The emulator would load it itself if it were in its environment.
proc recorded::recorder {target words file} {
    set preload LD_PRELOAD=[file join [counter::folder $target] lib libqx-record.so]
    set words [linsert $words 2 QX_RECORD=$file QX_RECORD_FORCE=1]
    set emulator [lsearch -exact $words qemu-arm]
    if {$emulator < 0} { return [linsert $words 2 $preload] }
    return [linsert $words [expr {$emulator + 1}] -E $preload]
}

# The same with the player in place of the library.
proc recorded::player {target words file} {
    set library [file join [counter::folder $target] lib replay]
    linsert $words 2 QX_REPLAY=$file LD_LIBRARY_PATH=$library
}

proc recorded::shell {target words calls} {
    set script [file join $counter::scratch recorded.$target.tcl]
    exec {*}$words [counter::shell $target] $script $calls >/dev/null
}

# Instructions of a run with this many calls: `plain`, `recorded` or `replayed`.
proc recorded::run {target how calls} {
    set file [file join $counter::scratch recorded.$target]
    set recording $file.$calls
    set words [counter::counting_launcher $target $file 1 \
        [expr {$how eq "replayed" ? "none" : "idle"}]]
    switch -- $how {
        recorded { set words [recorder $target $words /dev/null] }
        replayed {
            shell $target [recorder $target [counter::launcher $target] $recording] $calls
            set words [player $target $words $recording]
        }
    }
    shell $target $words $calls
    set channel [open $file]
    regexp -line {^(?:totals:|total) (\d+)$} [read $channel] -> count
    close $channel
    return $count
}

# The cost of a call, `recorded` or `replayed`.
proc recorded::cost {target how} {
    variable passes
    variable script
    file mkdir $counter::scratch
    set channel [open [file join $counter::scratch recorded.$target.tcl] w]
    puts $channel $script
    close $channel
    lassign $passes few many
    foreach kind [list plain $how] {
        set each($kind) [expr {double([run $target $kind $many] - [run $target $kind $few]) /
            ($many - $few)}]
    }
    return [expr {$each($how) - $each(plain)}]
}
