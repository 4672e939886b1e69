# tclsh board_times.tcl LAUNCHER STATE FOLDER ROUNDS: times the loops of rows.tcl on the board that
# STATE leads to and prints them beside those of the PC's page: build/bench/result.json, or the
# published one. FOLDER is the copy that both machines have. Called by bench/on_board.bash.

set here [file dirname [file normalize [info script]]]
foreach file {rows bounds counter scale times results ../library/qx/progress} {
    source [file join $here $file.tcl]
}

namespace eval board_times {
    lassign $argv launcher state folder rounds
    # Prints what it runs on.
    variable machine {
        set processor $tcl_platform(machine)
        if {![catch { open /proc/cpuinfo } channel]} {
            regexp -line {^(?:model name|Processor)\s*:\s*(.*)$} [read $channel] -> processor
        }
        puts "$processor, $tcl_platform(os) $tcl_platform(osVersion), Tcl [info patchlevel]"
    }
}

# What the board's shell prints, in the folder `rounds`. What fails there ends this program; the
# launcher has said so if it was the connection.
proc board_times::shell {args} {
    variable launcher; variable state; variable folder
    cd [file join $folder rounds]
    if {[catch {
        exec $launcher $state HOME=/nonexistent \
            LD_LIBRARY_PATH=[file join $folder build bench idle] \
            [file join $folder build bin qxsh] {*}$args
    } text]} {
        qx::progress::hide
        set reason [lindex [split $text \n] 0]
        if {![string match "bench/run: *" $reason]} {
            set reason "bench/run: the board's shell failed: $reason"
        }
        puts stderr $reason
        exit 2
    }
    return $text
}

# Dictionary row -> dictionary variant -> nanoseconds per pass. Dumps go to the board's null device:
# the connection would take longer than they do.
proc board_times::measure {} {
    variable folder; variable rounds
    set channel [open [file join $folder rounds round.tcl] w]
    puts $channel "close stdout; open /dev/null w; source {[file join $folder bench time.tcl]}"
    close $channel
    set libraries {}
    foreach name {floor whole_flow} {
        lappend libraries [file join $folder build bench $name.so]
    }
    qx::progress::begin "qxsh: measuring times on the board" "$rounds rounds"
    for {set round 0} {$round < $rounds} {incr round} {
        qx::progress::at $round
        shell round.tcl $round times {} {*}$libraries
        foreach {row variant time} [scale::lines times] { lappend found($row,$variant) $time }
    }
    qx::progress::end
    return [times::medians [array get found]]
}

# The PC's result: of the latest run here, or as published.
proc board_times::pc {} {
    set own [file join $counter::project build bench result.json]
    if {![file exists $own]} { set own [file join $counter::here result.json] }
    return [json::json2dict [results::read_file $own]]
}

proc board_times::print {} {
    variable machine; variable rounds
    set board [string trim [shell << $machine]]
    set times [measure]
    set pc [pc]
    results::line "## Processor time on the board, beside the PC"
    results::line
    results::line "The board: $board; $rounds rounds. The PC: [dict get $pc machine processor],\
        measured [dict get $pc machine date]; [dict get $pc rounds] rounds. \`ours\` is a multiple\
        of the floor."
    results::line
    foreach each [dict get $pc times] {
        set of_pc([dict get $each row]) [dict get $each nanoseconds]
    }
    set lines {}
    foreach row $rows::names {
        set line [list [bounds::get $row title]]
        foreach found [list [dict get $times $row] [results::get [array get of_pc] $row]] {
            if {$found eq "-"} { lappend line - -; continue }
            set floor [dict get $found floor]
            lappend line [results::grouped $floor] [results::multiple $found ours $floor]
        }
        lappend lines $line
    }
    results::table {operation "board: floor, ns" ours "PC: floor, ns" ours} $lines
}

board_times::print
