# What it costs that calls are recorded: instructions of a qx_flow_add with a filled record, with
# the recorder over without it. What the kernel does for it is not counted. Relies on counter.tcl.

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

# The words before the shell, with the recorder in front of the library that does nothing. The
# emulator would load it itself if it were in its environment.
proc recorded::launcher {target words} {
    set preload LD_PRELOAD=[file join [counter::folder $target] lib libqx-record.so]
    set words [linsert $words 2 QX_RECORD=/dev/null QX_RECORD_FORCE=1]
    set emulator [lsearch -exact $words qemu-arm]
    if {$emulator < 0} { return [linsert $words 2 $preload] }
    return [linsert $words [expr {$emulator + 1}] -E $preload]
}

# Instructions of a run with this many calls.
proc recorded::run {target recording calls} {
    set file [file join $counter::scratch recorded.$target]
    set words [counter::counting_launcher $target $file 1]
    if {$recording} { set words [launcher $target $words] }
    exec {*}$words [counter::shell $target] $file.tcl $calls >/dev/null
    set channel [open $file]
    regexp -line {^(?:totals:|total) (\d+)$} [read $channel] -> count
    close $channel
    return $count
}

proc recorded::cost {target} {
    variable passes
    variable script
    file mkdir $counter::scratch
    set channel [open [file join $counter::scratch recorded.$target.tcl] w]
    puts $channel $script
    close $channel
    lassign $passes few many
    foreach recording {0 1} {
        set each($recording) [expr {double([run $target $recording $many] -
            [run $target $recording $few]) / ($many - $few)}]
    }
    return [expr {$each(1) - $each(0)}]
}
