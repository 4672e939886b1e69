# Package qx::prompt: what the sample rc file starts. Line editing with completion and a kept
# history where the package tclreadline is there, a plain prompt where not; in both nothing runs but
# commands that are typed in full. Relies on the files beside this one; the package qx is loaded
# when something is first asked of it, so that the prompt comes at once.

namespace eval qx::prompt {
    variable folder [file dirname [file normalize [info script]]]
    variable editing 0 ;# whether lines are edited
    # Commands of the package qx, loaded when one of them is called.
    variable lazy {
        help apropos areas get set template diff json check why watch lint
    }
}

apply {{folder parts} {
    foreach part $parts { source [file join $folder $part.tcl] }
}} $qx::prompt::folder {
    cursor offers arguments history names editing
}

# Starts all of it. At anything but a prompt it does nothing.
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

# Finds packages without reading the indexes of all others, as Tcl's own search would; what is not
# found is left to that one.
proc qx::prompt::index {args} {
    foreach folder $::auto_path {
        foreach name $args {
            foreach file [glob -nocomplain -directory $folder $name\[0-9\]*/pkgIndex.tcl] {
                # Indexes look at this variable.
                set dir [file dirname $file]
                catch { source $file }
            }
        }
    }
}

# Whether the package qx is there; asking loads it.
proc qx::prompt::have_catalogue {} {
    variable known
    if {![info exists known]} { set known [expr {![catch { package require qx }]}] }
    return $known
}

# The commands that may be called: global ones, those of the package qx, and where a text ends in a
# name with colons those of its namespace.
proc qx::prompt::commands {{text {}}} {
    variable lazy
    set names [namespace eval :: { info commands }]
    foreach name $lazy { lappend names qx::$name }
    if {[regexp {(?:::)?(\w+(?:::\w*)+)$} $text -> word]} {
        foreach name [info commands ::$word*] { lappend names [string range $name 2 end] }
    }
    return [lsort -unique $names]
}
