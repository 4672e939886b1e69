# A person at a terminal: runs the shell on a pseudo-terminal and types at its prompt. Relies on
# shell.tcl and on the package Expect.

constraint terminal {[testConstraint same_machine] && ![catch {package require Expect}]} \
    "tclsh has no package Expect (package tcl-expect), or ssh is between it and the shell"
if {[testConstraint terminal]} { log_user 0 }

# A home folder with this rc file, or with none.
proc home_with {{rc {}}} {
    set home [scratch home]
    file delete -force $home
    file mkdir $home
    if {$rc ne {}} { write_file [file join $home .myapprc] $rc }
    return $home
}

# One run on a terminal: each line is typed when the prompt has come; the last one has to end the
# shell. A line of several lines is typed with a wait for the second prompt in between, and a tab
# with a wait for what it does: a pasted one is a letter. -> dict: out (as on the screen, line ends
# as \n; Tcl ends lines with CR LF there), raw (the bytes as they came), status. Words go to the
# shell, for runs that need no typing.
proc at_terminal {environment lines {words {}} {columns 200}} {
    global spawn_id stty_init timeout
    set stty_init "rows 24 cols $columns"
    set timeout 60 ;# an emulated shell on a busy machine is slow
    set before [pwd]
    cd $::harness::folder
    # Libraries that are not ours keep memory to the end.
    set environment [linsert $environment 0 ASAN_OPTIONS=detect_leaks=0]
    spawn -noecho {*}[shell_command $environment] {*}$words
    cd $before
    set out {}
    foreach typed $lines {
        append out [wait_for {% $}]
        set first 1
        foreach line [split $typed \n] {
            if {!$first} { append out [wait_for {> $}] }
            set first 0
            append out [type $line\r]
        }
    }
    append out [wait_for_end]
    set end [wait]
    set status [lindex $end [expr {[lindex $end 4] eq "CHILDKILLED" ? 5 : 3}]]
    set shown [string map {\r\r\n \n \r\n \n} $out]
    if {$::harness::strict} { set shown [without_leak_report $shown] }
    return [dict create out $shown raw $out status $status]
}

# Types keys; -> what the shell has shown meanwhile. What has several line ends is pasted.
proc type {keys} {
    set out {}
    if {[regexp {\r.} $keys]} {
        send -- $keys
        return
    }
    set pieces [split $keys \t]
    foreach piece [lrange $pieces 0 end-1] {
        if {$piece ne {}} {
            send -- $piece
            # Its last letters have come back when the shell has read all of it.
            regexp {[ -~]{0,4}$} $piece last
            append out [wait_for "[regsub -all {\W} $last {\\&}]\$"]
        }
        send -- \t
        append out [wait_for .] [wait_for_silence]
    }
    send -- [lindex $pieces end]
    return $out
}

# What comes until for a moment nothing comes any more.
proc wait_for_silence {} {
    global spawn_id
    set out {}
    set more 1
    while {$more} {
        after 100
        set more 0
        expect {
            -timeout 0
            -re .+ {
                append out $expect_out(buffer)
                set more 1
            }
            timeout {}
            eof     {}
        }
    }
    return $out
}

proc wait_for {pattern} {
    global spawn_id timeout
    set expect_out(buffer) {}
    expect {
        -re $pattern { return $expect_out(buffer) }
        eof          \
            { error "the shell has ended instead of \"$pattern\": \"$expect_out(buffer)\"" }
        timeout      { error "nothing matches \"$pattern\": \"$expect_out(buffer)\"" }
    }
}

proc wait_for_end {} {
    global spawn_id timeout
    expect {
        eof     { return $expect_out(buffer) }
        timeout { error "the shell does not end: \"$expect_out(buffer)\"" }
    }
}

# Types at the shell: {keys pattern ...}, each pattern being waited for, one end of line for each on
# the screen; ^C is the key. -> "fine" and the exit status.
proc typing {home args} {
    global spawn_id stty_init
    set stty_init {rows 24 cols 200}
    set ::timeout 60
    set before [pwd]
    cd $::harness::folder
    spawn -noecho {*}[shell_command [list HOME=$home TERM=vt100 ASAN_OPTIONS=detect_leaks=0]]
    cd $before
    wait_for {% $}
    foreach {keys pattern} $args {
        # A prompt is shown a moment before its line is read; nobody is as fast as this program.
        after 100
        send -- [string map [list ^C \x03] $keys]
        wait_for [string map [list \n {[\r\n]+}] $pattern]
    }
    send "exit 3\r"
    wait_for_end
    return "fine [lindex [wait] 3]"
}
