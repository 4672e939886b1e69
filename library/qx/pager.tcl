# Package qx: qx::page, a text a screenful at a time. Relies on layout.tcl, and on a program that
# turns pages.

namespace eval qx::pager {}

# Returns the text if it fits the terminal, or if there is none that can turn pages or no program
# for it; otherwise shows it, and returns nothing.
proc qx::pager::show {text} {
    if {[catch { qx::layout::terminal } size]} { return $text }
    if {[llength [split $text \n]] < [lindex $size 0]} { return $text }
    set program [program]
    if {$program eq {} || [catch { exec sh -c $program << $text\n >@ stdout 2>@ stderr }]} {
        return $text
    }
    return
}

# The command that turns pages: PAGER, or what the system has. None on a terminal that cannot move
# its cursor.
proc qx::pager::program {} {
    set terminal dumb
    if {[info exists ::env(TERM)]} { set terminal $::env(TERM) }
    if {$terminal in {dumb {}}} return
    if {[info exists ::env(PAGER)]} { return $::env(PAGER) }
    foreach name {less more} {
        if {[auto_execok $name] ne {}} { return $name }
    }
}
