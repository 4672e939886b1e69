# Package qx::prompt, started by the sample rc file. With the package tclreadline it has line
# editing with completion and a persistent history, without it a plain prompt; in both, only a
# command's full name runs it. Relies on the files beside this one; the package qx is loaded when it
# is first needed, so that the prompt appears immediately.

namespace eval qx::prompt {
    variable folder [file dirname [file normalize [info script]]]
    variable editing 0 ;# whether lines are edited
    # Commands of the package qx, which is loaded when one of them is called.
    variable lazy {
        help apropos areas call apply new with get set template diff json list show graph check why
        watch lint profile
    }
}

apply {{folder parts} {
    foreach part $parts { source [file join $folder $part.tcl] }
}} $qx::prompt::folder {
    cursor locals offers subcommands arguments calls data history names editing
}

# Starts the prompt. Does nothing in a shell that is not interactive.
proc qx::prompt::start {} {
    variable editing
    variable lazy
    if {![info exists ::tcl_interactive] || !$::tcl_interactive} return
    foreach name $lazy { set ::auto_index(::qx::$name) {package require qx} }
    index qx tclreadline
    set editing [editing::load_library]
    names::guard
    if {$editing} {
        editing::begin
        set ::tcl_prompt1 ::qx::prompt::editing::prompt
    }
}

# Finds packages without reading all other indexes, as Tcl's own search would; leaves packages that
# it does not find to Tcl.
proc qx::prompt::index {args} {
    foreach folder $::auto_path {
        foreach name $args {
            foreach file [glob -nocomplain -directory $folder $name\[0-9\]*/pkgIndex.tcl] {
                # Package indexes use this variable.
                set dir [file dirname $file]
                catch { source $file }
            }
        }
    }
}

# Loads the package qx if necessary; -> whether it is available.
proc qx::prompt::have_catalogue {} {
    variable known
    if {![info exists known]} { set known [expr {![catch { package require qx }]}] }
    return $known
}

# The commands that can be called: global ones, those of the package qx, and, if the text ends in a
# qualified name, those of its namespace.
proc qx::prompt::commands {{text {}}} {
    variable lazy
    set names [namespace eval :: { info commands }]
    foreach name $lazy { lappend names qx::$name }
    if {[regexp {(?:::)?(\w+(?:::\w*)+)$} $text -> word]} {
        foreach name [info commands ::$word*] { lappend names [string range $name 2 end] }
    }
    return [lsort -unique $names]
}
