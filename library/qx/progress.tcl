# Package qx, how far work is that takes more than a second: one line on standard error, if that is
# a terminal, and gone when the work ends. Needs nothing else, so that benches use it, too.

namespace eval qx::progress {
    variable what {}  ;# the work; empty: none, or nobody would see it
    variable total 0
    variable next 0   ;# when the line is written again, in milliseconds
    variable shown 0
}

# Tcl gives only a terminal the options of a serial line.
proc qx::progress::on_terminal {} { expr {![catch { fconfigure stderr -mode }]} }

# Begins some work of so many steps.
proc qx::progress::begin {text count} {
    variable what
    variable total $count
    variable next [expr {[clock milliseconds] + 1000}]
    set what [expr {[on_terminal] ? $text : ""}]
}

# So many steps are done.
proc qx::progress::at {done} {
    variable what
    variable total
    variable next
    variable shown
    if {$what eq {}} return
    set now [clock milliseconds]
    if {$now < $next} return
    set next [expr {$now + 200}]
    set shown 1
    puts -nonewline stderr "\r\033\[K$what: $done of $total"
    flush stderr
}

# Takes the line away, for other output; the next step may bring it back.
proc qx::progress::hide {} {
    variable shown
    if {!$shown} return
    puts -nonewline stderr "\r\033\[K"
    flush stderr
    set shown 0
}

proc qx::progress::end {} {
    variable what {}
    hide
}
