# Package qx: qx::check turns statuses into errors, qx::watch records the words of failing commands.
# Relies on catalogue.tcl. Statuses have the names of the profile in use.
#
# While a block runs, the package's library checks the 83 SDK functions; qx::watch uses Tcl's
# execution traces.

namespace eval qx::status {
    variable last {}     ;# the last failure: words, code, result, and Tcl's errorInfo before it
    variable blocks {}   ;# that run, the innermost last: its coroutine, and the allowed statuses
    variable suspended {} ;# coroutine -> its blocks, while it has yielded
    variable yields_traced 0
    variable watching 0
}

# qx::check ?-allow statuses? command ?word ...?    one SDK function
# qx::check ?-allow statuses? {script}              every SDK function that runs in the script
proc qx::status::check {args} {
    set allow {}
    if {[lindex $args 0] eq "-allow"} {
        if {[llength $args] < 3} { usage }
        set allow [numbers [lindex $args 1]]
        set args [lrange $args 2 end]
        if {[lindex $args 0] eq "-allow"} {
            return -code error -errorcode {QX USAGE} "qx::check: -allow is given twice"
        }
    }
    if {$args eq {}} { usage }
    set name [string trimleft [lindex $args 0] :]
    variable blocks
    if {[is_call $name] && ![llength $blocks]} {
        set code [catch { uplevel 1 $args } result options]
        if {$code == 1} { note $args 1 $result }
        if {$code == 0} { judge $args $result $allow }
    } elseif {[is_call $name]} {
        # The block around it would judge the call by what it allows itself.
        catch { uplevel 1 [list ::qx::status::block $allow $args] } result options
    } elseif {[llength $args] > 1} {
        refuse_call $name
    } else {
        catch { uplevel 1 [list ::qx::status::block $allow [lindex $args 0]] } result options
    }
    dict incr options -level
    return -options $options $result
}

proc qx::status::usage {} {
    return -level 2 -code error -errorcode {QX USAGE} \
        "usage: qx::check ?-allow statuses? command ?word ...?, or with a script"
}

proc qx::status::refuse_call {name} {
    return -code error -errorcode [list QX UNKNOWN call $name] \
        "\"$name\" is not an SDK function[qx::catalogue::like $name [qx::catalogue::calls]]"
}

proc qx::status::is_call {name} {
    if {![qx::catalogue::is_command $name]} { return 0 }
    return [expr {[dict get [qx::catalogue::facts $name] shape] eq "call"}]
}

# The numbers of statuses given by number or name.
proc qx::status::numbers {words} {
    set result {}
    foreach word $words {
        if {[string is wideinteger -strict $word]} {
            lappend result $word
        } elseif {[catch { qx::catalogue::status_number $word } number options]} {
            return -code error -errorcode [dict get $options -errorcode] $number
        } else {
            lappend result $number
        }
    }
    return $result
}

# Raises an error unless the status of a call is 0 or allowed.
proc qx::status::judge {words status allow} {
    if {$status == 0 || $status in $allow} return
    note $words 0 $status
    set name [qx::catalogue::status_name $status]
    # A status without a name is shown by its number.
    if {$name eq {}} { set name $status }
    return -level 2 -code error -errorcode [list QX_STATUS $status $name] [failure $words $status]
}

# The same for qx::call, which gives statuses as its caller wrote them.
proc qx::status::judge_data {words status allow} { judge $words $status [numbers $allow] }

# The error message: the call with its arguments by name, the status, its name and meaning.
proc qx::status::failure {words status} {
    set name [string trimleft [lindex $words 0] :]
    set text $name
    set facts [qx::catalogue::facts $name]
    foreach {argument type} [dict get $facts arguments] word [lrange $words 1 end] {
        append text " $argument=$word"
    }
    append text ": status $status"
    if {[qx::catalogue::status_name $status] ne {}} {
        append text " [qx::catalogue::status_name $status], [qx::catalogue::status_meaning $status]"
    }
    return $text
}

# ------------------------------------------------------------------------------------- blocks

proc qx::status::block {allow script} {
    variable yields_traced
    set coroutine [current_coroutine]
    if {$coroutine ne {} && !$yields_traced} {
        foreach command {::yield ::yieldto} {
            if {![llength [info commands $command]]} continue
            trace add execution $command enter ::qx::status::suspend
            trace add execution $command leave ::qx::status::resume
        }
        set yields_traced 1
    }
    begin [list [list $coroutine $allow]]
    catch { uplevel 1 $script } result options
    end 1
    dict incr options -level
    return -options $options $result
}

# The coroutine that runs; empty outside all, and in Tcl 8.5.
proc qx::status::current_coroutine {} {
    if {[catch { info coroutine } name]} return
    return $name
}

# Runs a script outside all blocks.
proc qx::status::unjudged {script} {
    variable blocks
    set left $blocks
    if {[llength $left]} { end [llength $left] }
    catch { uplevel 1 $script } result options
    begin $left
    dict incr options -level
    return -options $options $result
}

proc qx::status::begin {more} {
    variable blocks
    # Without a block nothing ends the judging again.
    if {![llength $more]} return
    if {![llength $blocks]} { judge_calls [qx::catalogue::calls] }
    set blocks [concat $blocks $more]
}

proc qx::status::end {count} {
    variable blocks
    set blocks [lrange $blocks 0 end-$count]
    if {![llength $blocks]} { leave_calls }
}

# Before a coroutine yields: its blocks, which are the innermost, do not count until it goes on.
proc qx::status::suspend {args} {
    variable blocks
    variable suspended
    set coroutine [current_coroutine]
    set first [llength $blocks]
    while {$first > 0 && [lindex $blocks $first-1 0] eq $coroutine} { incr first -1 }
    dict set suspended $coroutine [lrange $blocks $first end]
    end [expr {[llength $blocks] - $first}]
}

proc qx::status::resume {args} {
    variable suspended
    set coroutine [current_coroutine]
    if {![dict exists $suspended $coroutine]} return
    begin [dict get $suspended $coroutine]
    dict unset suspended $coroutine
}

# Called when an SDK function of a block has ended in an error or with a status other than 0; an
# error here becomes the function's.
proc qx::status::left {words code result} {
    variable blocks
    if {$code != 0} { return [note $words $code $result] }
    # A block that waits for events may have ended already.
    if {![llength $blocks]} return
    judge $words $result [lindex $blocks end 1]
}

# ------------------------------------------------------------------------------------- events

# Reports errors of events that Tcl still holds back: one that has woken up its vwait is reported by
# the next event loop only. What scripts wait to do themselves, they go on waiting for.
proc qx::status::report_events {} {
    set waiting {}
    foreach id [after info] {
        lassign [after info $id] script kind
        if {$kind ne "idle"} continue
        after cancel $id
        lappend waiting $script
    }
    update idletasks
    foreach script [lreverse $waiting] { after idle $script }
}

# ----------------------------------------------------------------------------------- watching

# Switches recording the words of every failing command on or off; without an argument returns the
# setting.
proc qx::status::watch {{switch {}}} {
    variable watching
    if {$switch eq {}} { return $watching }
    if {![string is boolean -strict $switch]} {
        return -code error -errorcode {QX USAGE} "usage: qx::watch ?on|off?"
    }
    set wanted [expr {bool($switch)}]
    if {$wanted == $watching} return
    foreach name [qx::catalogue::commands] {
        # A script may have renamed it.
        if {![llength [info commands ::$name]]} continue
        trace [expr {$wanted ? "add" : "remove"}] execution ::$name leave ::qx::status::watched
    }
    set watching $wanted
    return
}

proc qx::status::watched {words code result operation} {
    if {$code != 0} {
        note $words $code $result
    } elseif {$result ne "0" && [is_call [string trimleft [lindex $words 0] :]]} {
        note $words 0 $result
    }
}

# Records a failure for qx::why.
proc qx::status::note {words code result} {
    variable last
    set before {}
    if {[info exists ::errorInfo]} { set before $::errorInfo }
    set last [list $words $code $result $before]
    return
}
