# Reads the pages for the tests: checks that they are well-formed, collects anchors and links, and
# takes sections apart. Relies on tests/script/shell.tcl; the pages are those of the build.

# Other builds write the same pages, so there is nothing to compare.
without_transcript

set docs [file join $env(QXSH_BUILD) docs]

namespace eval reader {
    variable text ;# file name -> the page
    variable void {meta link input br hr img path rect}
}

proc reader::page {name} {
    variable text
    if {![info exists text($name)]} { set text($name) [file_text [file join $::docs html $name]] }
    return $text($name)
}

proc reader::page_names {} {
    return [lsort [glob -tails -directory [file join $::docs html] *.html]]
}

proc reader::line_of {text place} {
    return [expr {[regexp -all \n [string range $text 0 $place]] + 1}]
}

# What is wrong with a text as XML: a list of "line: what".
proc reader::mistakes {text} {
    set wrong {}
    set open {}
    set at 0
    regsub {^<!DOCTYPE html>\n} $text {} text
    while {[regexp -indices -start $at {<[^>]*>} $text place]} {
        lassign $place first last
        set between [string range $text $at $first-1]
        if {[regexp {>|&(?!(amp|lt|gt|quot);)} $between]} {
            lappend wrong "[line_of $text $at]: a mark in the text \"[string trim $between]\""
        }
        set tag [string range $text $first $last]
        set at [expr {$last + 1}]
        if {[regexp {^</([a-z0-9]+)>$} $tag -> name]} {
            if {[lindex $open end] ne $name} {
                lappend wrong "[line_of $text $first]: $tag closes [lindex $open end]"
            }
            set open [lrange $open 0 end-1]
        } elseif {[regexp {^<([a-z][a-z0-9]*)((?:\s+[a-zA-Z:-]+="[^"<]*")*)(\s*/?)>$} $tag \
                -> name attributes close]} {
            if {[string trim $close] eq {}} { lappend open $name }
            set names [dict keys [attributes $attributes]]
            if {[llength $names] != [regexp -all {=\"} $attributes]} {
                lappend wrong "[line_of $text $first]: an attribute twice in $tag"
            }
        } else {
            lappend wrong "[line_of $text $first]: no tag: $tag"
        }
    }
    if {$open ne {}} { lappend wrong "not closed: $open" }
    if {[string trim [string range $text $at end]] ne {}} { lappend wrong "text behind the end" }
    return $wrong
}

proc reader::attributes {text} {
    set result {}
    foreach {all name value} [regexp -all -inline {([a-zA-Z:-]+)="([^"]*)"} $text] {
        dict set result $name [plain $value]
    }
    return $result
}

# The words of a piece of a page, without its tags.
proc reader::plain {piece} {
    regsub -all {<[^>]*>} $piece {} piece
    return [string map {&lt; < &gt; > &quot; \" &amp; &} $piece]
}

proc reader::anchors {name} {
    set found {}
    foreach {all id} [regexp -all -inline {\sid="([^"]*)"} [page $name]] { lappend found $id }
    return $found
}

proc reader::links {name} {
    set found {}
    foreach {all link} [regexp -all -inline {\s(?:href|src|action)="([^"]*)"} [page $name]] {
        lappend found $link
    }
    return $found
}

# All sections of a class on all pages: a list of id and text, a command's or a record's own part.
proc reader::sections {class end} {
    set result {}
    foreach name [page_names] {
        set mark "<section class=\"$class\" id=\""
        set text [page $name]
        set at 0
        while {[set at [string first $mark $text $at]] >= 0} {
            set stop [string first $end $text $at]
            set section [string range $text $at $stop-1]
            regexp {id="([^"]*)"} $section -> id
            lappend result $id $section
            set at $stop
        }
    }
    return $result
}

# The heading and the cells of a table's row, as words.
proc reader::row {id text} {
    if {![regexp "<tr id=\"[string map {. \\.} $id]\">(.*?)</tr>" $text -> row]} return
    set cells {}
    foreach {all cell} [regexp -all -inline {(.*?)</t[hd]>} $row] { lappend cells [plain $cell] }
    return $cells
}
