# Package qx, the form of texts for people: columns, paragraphs, lists of words, all of them within
# the width of the terminal, or 80 columns where there is none.

namespace eval qx::layout {
    variable usual 80
    variable least 40      ;# narrower terminals wrap by themselves
    variable least_text 24 ;# of a table's last column; with less it has lines of its own
}

# The number of columns to use. Only the package's texts for a person at a terminal depend on it.
proc qx::layout::width {} {
    variable usual
    variable least
    set width $usual
    if {[info exists ::env(COLUMNS)] && [regexp {^[1-9]\d{0,4}$} $::env(COLUMNS)]} {
        set width $::env(COLUMNS)
    } else {
        catch { set width [lindex [terminal] 1] }
    }
    return [expr {max($least, $width)}]
}

# The rows and columns of the terminal; an error if there is none, or one of unknown size.
proc qx::layout::terminal {} {
    # Only a terminal or a serial line has a mode.
    fconfigure stdout -mode
    set size [exec stty size <@ stdin 2> /dev/null]
    if {![regexp {^([1-9]\d*) ([1-9]\d*)\s*$} $size -> rows columns]} { error "of unknown size" }
    return [list $rows $columns]
}

# Rows in aligned columns, indented by two. The last column is wrapped.
proc qx::layout::table {rows} {
    variable least_text
    if {$rows eq {}} return
    set last [expr {[llength [lindex $rows 0]] - 1}]
    set margin 2
    for {set column 0} {$column < $last} {incr column} {
        set widths($column) 0
        foreach row $rows {
            set width [string length [lindex $row $column]]
            set widths($column) [expr {max($widths($column), $width)}]
        }
        incr margin [expr {$widths($column) + 2}]
    }
    set lines {}
    set longest 0
    foreach row $rows {
        set line {}
        for {set column 0} {$column < $last} {incr column} {
            append line [format "  %-*s" $widths($column) [lindex $row $column]]
        }
        lappend lines $line
        set longest [expr {max($longest, $margin + [string length [lindex $row $last]])}]
    }
    set apart [expr {$longest > [width] && [width] - $margin < $least_text}]
    set text {}
    foreach line $lines row $rows {
        set words [lindex $row $last]
        if {$apart} {
            append text [wrapped [string trimright $line] {} 6]
            append text [wrapped $words [string repeat { } 6] 6]
        } else {
            append text [wrapped $words "$line  " $margin]
        }
    }
    return $text
}

# A text wrapped into lines: the first one begins with `start`, the others are indented. A word that
# is too long has a line of its own. `room` is the number of columns, if not all.
proc qx::layout::wrapped {text start indent {room {}}} {
    if {$room eq {}} { set room [width] }
    set result {}
    set line $start
    set blank {}
    foreach word [split $text { }] {
        if {$blank ne {} && [string length "$line $word"] > $room} {
            append result [string trimright $line]\n
            set line [string repeat { } $indent]
            set blank {}
        }
        append line $blank$word
        set blank { }
    }
    return "$result[string trimright $line]\n"
}

# Names side by side, wrapped.
proc qx::layout::names {names} {
    if {$names eq {}} return
    set room [width]
    set text {}
    set line {}
    foreach name $names {
        if {$line ne {} && [string length "$line  $name"] > $room} {
            append text $line\n
            set line {}
        }
        append line "  $name"
    }
    return "$text$line\n"
}

# A title with what belongs to it; nothing without that.
proc qx::layout::section {title text} {
    if {$text eq {}} return
    return "$title\n$text"
}
