# A sample rc file: copy it to ~/.myapprc, or let yours source it. It makes the prompt comfortable:
# line editing, completion and a history where the package tclreadline is there, and a plain prompt
# where not. At the prompt nothing runs but commands that are typed in full. Scripts are not
# touched.

# The rc file is also read when commands come from a pipe; comforts are for people.
if {![info exists tcl_interactive] || !$tcl_interactive} return

namespace eval qx::prompt {
    variable lent {} ;# Readline's rc file of ours and the user's setting, while it is in force
    variable history_file /dev/null
    if {[info exists ::env(HOME)]} { set history_file [file join $::env(HOME) .qxsh_history] }
}

# Tcl's own handler of unknown commands would run abbreviations (qx_flow_ad) and Unix programs (ls).
# This one loads what the script libraries have to offer, and refuses everything else.
proc qx::prompt::unknown {name args} {
    if {![info exists ::auto_noload] && [auto_load $name [uplevel 1 {namespace current}]]} {
        return [uplevel 1 [linsert $args 0 $name]]
    }
    return -code error -errorcode [list TCL LOOKUP COMMAND $name] "invalid command name \"$name\""
}

proc qx::prompt::replace_unknown {} {
    # For scripts that look: Unix programs are not run by name.
    set ::auto_noexec 1
    proc ::unknown {name args} { uplevel 1 [concat [list ::qx::prompt::unknown $name] $args] }
}

# -------------------------------------------------------------------------------- completion

# Called by tclreadline; -> a list: what the word becomes, then the possible words. Commands
# complete where a command stands, variables behind a dollar sign, and nothing else does: file names
# after every command would be noise.
proc qx::prompt::complete {part start end line} {
    # Braces and quotes do not begin a word of Readline's.
    regexp {^([\{"]*)(.*)$} $part -> opening word
    set before [string trimright [string range $line 0 [expr {$start - 1}]]]$opening
    set matches {}
    if {[string match {$*} $word]} {
        foreach name [uplevel #0 [list info vars [string range $word 1 end]*]] {
            lappend matches $opening\$$name
        }
    } elseif {$before eq {} || [string match {*[\[;\{]} $before]} {
        foreach name [uplevel #0 [list info commands $word*]] { lappend matches $opening$name }
    }
    # An empty answer would make Readline look for files; this one leaves the word as it is.
    if {$matches eq {}} { return [list $part {}] }
    set matches [lsort -unique $matches]
    if {[llength $matches] == 1} { return $matches }
    return [linsert $matches 0 [common_start $matches]]
}

# Of a sorted list the first and the last element differ first.
proc qx::prompt::common_start {sorted} {
    set first [lindex $sorted 0]
    set last [lindex $sorted end]
    set length 0
    while {$length < [string length $first] &&
           [string index $first $length] eq [string index $last $length]} { incr length }
    return [string range $first 0 [expr {$length - 1}]]
}

# ------------------------------------------------------------------------------ line editing

# Loads tclreadline; -> whether it is there. Where its library is missing it would end the process.
proc qx::prompt::load_editing {} {
    rename ::exit ::qx::prompt::real_exit
    proc ::exit {args} { error "tclreadline has no library" }
    set missing [catch {package require tclreadline}]
    rename ::exit {}
    rename ::qx::prompt::real_exit ::exit
    return [expr {!$missing}]
}

# Readline brackets what is pasted with codes that a serial console shows as rubbish. That is a
# setting of its own rc file: it is given one that reads the user's and then switches the codes off.
proc qx::prompt::write_inputrc {} {
    set users ~/.inputrc
    if {[info exists ::env(INPUTRC)]} { set users $::env(INPUTRC) }
    set folder /tmp
    if {[info exists ::env(TMPDIR)]} { set folder $::env(TMPDIR) }
    set file [file join $folder qxsh-inputrc-[pid]-[clock clicks]]
    set channel [open $file {WRONLY CREAT EXCL} 0600]
    puts $channel "\$include $users\nset enable-bracketed-paste off"
    close $channel
    return $file
}

# Readline looks at the variable when it begins to read its first line. File and variable go away
# while it waits for that line, or, if it has come already, before it is carried out.
proc qx::prompt::lend_inputrc {} {
    variable lent
    if {[catch { write_inputrc } file]} return
    set lent [list $file [array get ::env INPUTRC]]
    set ::env(INPUTRC) $file
    after 0 qx::prompt::take_inputrc_back
}

proc qx::prompt::take_inputrc_back {} {
    variable lent
    if {$lent eq {}} return
    file delete [lindex $lent 0]
    unset ::env(INPUTRC)
    array set ::env [lindex $lent 1]
    set lent {}
}

proc qx::prompt::start_editing {} {
    variable history_file
    set ::tclreadline::historyLength 1000
    lend_inputrc
    ::tclreadline::Setup $history_file
    ::tclreadline::readline builtincompleter 0
    ::tclreadline::readline customcompleter ::qx::prompt::complete
}

# A whole command, typed on as many lines as it takes. The prompt is that of a shell without
# editing.
proc qx::prompt::read_command {} {
    set command [::tclreadline::readline read "% "]
    while {![info complete $command\n]} {
        append command \n [::tclreadline::readline read "> "]
    }
    take_inputrc_back
    return $command
}

# Written after every command, since the process may not live to do it at its end.
proc qx::prompt::remember {command} {
    variable history_file
    history add $command
    catch { ::tclreadline::readline write $history_file }
}

# Reads and carries out commands until the process ends, with results and messages as Tcl's own
# loop.
proc qx::prompt::loop {} {
    info script {} ;# what is typed belongs to no file
    while {1} {
        if {[catch { read_command } command]} {
            puts stderr "line editing ends here: $command"
            return
        }
        if {[string trim $command] eq {}} continue
        remember $command
        set code [catch { uplevel #0 $command } result]
        if {$code == 3 || $code == 4} {
            set result "invoked \"[lindex {break continue} [expr {$code - 3}]]\" outside of a loop"
        }
        if {$code != 0 && $code != 2} {
            puts stderr $result
        } elseif {$result ne {}} {
            puts $result
        }
    }
}

set qx::prompt::editing [qx::prompt::load_editing]
qx::prompt::replace_unknown
if {$qx::prompt::editing} {
    qx::prompt::start_editing
    qx::prompt::loop
}
