# The page and the manual of the package qx, from what library/qx/commands.tcl says of its commands.
# Relies on html.tcl, manual.tcl and the package's files.

namespace eval package {}

proc package::page {} {
    set text "<p>What the package adds to the shell: help, calls and records as data, statuses as\
        errors, a checker, control of the simulator. Load it with <code>package require\
        qx</code>; at the prompt it is there.</p>\n"
    foreach topic [qx::commands::topics] {
        set group [qx::commands::group $topic]
        append text "<h2 id=\"$topic\">[html::escape [dict get $group title]]</h2>\n"
        foreach name [dict get $group commands] { append text [section $name] }
    }
    return [html::page package.html "Package qx" $pages::version $text]
}

proc package::section {name} {
    set facts [dict get [qx::commands::all] $name]
    set id [expr {$name in [qx::commands::topics] ? {} : " id=\"$name\""}]
    set text "<section class=\"own\"$id>\n<h3 class=\"usage\"><code><a class=\"self\"\
        href=\"#$name\">$name</a> <i>[html::escape [dict get $facts words]]</i></code></h3>\n"
    append text "<p>[html::sentence [dict get $facts purpose]]</p>\n"
    foreach {kind content} [dict get $facts text] {
        if {$kind eq "text"} {
            append text "<p>[html::escape $content]</p>\n"
        } else {
            append text "<pre>[html::escape $content]</pre>\n"
        }
    }
    return "$text</section>\n"
}

proc package::manual {} {
    set text [manual::heading qx n]
    append text ".SH NAME\nqx \\- help, data and checks for the commands of qxsh\n"
    append text ".SH SYNOPSIS\n.B package require qx\n"
    append text ".SH DESCRIPTION\nThe package adds commands in the namespace qx to those of\n"
    append text ".BR qxsh (1).\n"
    foreach topic [qx::commands::topics] {
        set group [qx::commands::group $topic]
        append text ".SH [manual::quoted [string toupper [dict get $group title]]]\n"
        foreach name [dict get $group commands] { append text [entry $name] }
    }
    return "$text.SH \"SEE ALSO\"\n[manual::see_also {}]"
}

proc package::entry {name} {
    set facts [dict get [qx::commands::all] $name]
    set text ".TP\n.B [manual::quoted $name]\n"
    if {[dict get $facts words] ne {}} {
        set text ".TP\n.BI [manual::quoted $name] [manual::quoted " [dict get $facts words]"]\n"
    }
    append text [manual::sentence [dict get $facts purpose]]
    foreach {kind content} [dict get $facts text] {
        if {$kind eq "text"} {
            append text ".IP\n[manual::escape $content]\n"
        } else {
            append text .IP\n[manual::session [split $content \n]]
        }
    }
    return $text
}
