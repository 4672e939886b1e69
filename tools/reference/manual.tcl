# The manual pages: one of section n for each area and for the package, and qxsh.1 from its
# hand-written template. They use only the macros of man(7). Relies on the wording of the package
# qx, and on the switches and statuses.

namespace eval manual {
    variable switches {} ;# name and meaning, alternating
}

# Escapes plain text for roff; hyphens in names stay hyphens.
proc manual::escape {text} {
    set text [string map {\\ \\e - \\- ' \\(aq ^ \\(ha ~ \\(ti ` \\(ga} $text]
    return [expr {[string match .* $text] ? "\\&$text" : $text}]
}

# A name that can be an argument of a macro.
proc manual::quoted {text} { return "\"[string map {\" \\(dq} [escape $text]]\"" }
proc manual::bold {text} { return ".B [quoted $text]\n" }
proc manual::sentence {text} {
    return "[escape [string toupper [string index $text 0]][string range $text 1 end]].\n"
}

proc manual::heading {title section} {
    return ".\\\" $reference::note\n.TH [quoted $title] $section \"\"\
        [quoted "qxsh $pages::version"] [quoted "qxsh commands"]\n.ad l\n.nh\n"
}

proc manual::page_name {area} { return qx_$area }

# ------------------------------------------------------------------------------------ commands

proc manual::command {command} {
    set words [qx::wording::describe $command]
    set text ".PP\n[bold [dict get $command name]]"
    set names {}
    foreach argument [dict get $words arguments] { lappend names [dict get $argument name] }
    if {$names ne {}} { append text ".I [quoted [join $names]]\n" }
    append text ".RS\n[sentence [dict get $words purpose]]"
    foreach argument [dict get $words arguments] {
        set direction [dict get $argument direction]
        if {$direction ne {}} { append direction ", " }
        append text ".br\n.IR [quoted [dict get $argument name]] :\n"
        append text "[escape [dict get $argument text]];\n"
        append text "[escape "$direction[dict get $argument type], [dict get $argument range]"].\n"
        append text [value_list [dict get $argument values]]
    }
    append text ".br\nResult: [escape [dict get $words result]].\n"
    foreach note [dict get $words notes] { append text "[escape $note]\n" }
    if {[dict get $command shape] eq "call"} {
        set example [string trimright [qx::example::shown $command 64] \n]
        append text [statuses_of $words][session [split $example \n]]
    }
    return "$text.RE\n"
}

# Lines as they are typed.
proc manual::session {lines} {
    set text ".nf\n"
    foreach line $lines { append text [escape $line]\n }
    return "$text.fi\n"
}

# What the simulator answers to a call.
proc manual::statuses_of {words} {
    foreach {key value} [dict get $words statuses] { set $key $value }
    set text ".br\nThe simulator answers [escape [join [concat $statuses $usual] {, }]]"
    if {$when ne {}} { append text "\n([escape $when])" }
    return "$text.\n"
}

# The special values of a field or an argument.
proc manual::value_list {values} {
    if {$values eq {}} return
    set parts {}
    foreach {value meaning} $values { lappend parts "$value $meaning" }
    return "Values: [escape [join $parts {; }]].\n"
}

# -------------------------------------------------------------------------------------- records

proc manual::record {name} {
    set record [catalogue::record $name]
    set kind [expr {[dict get $record kind] eq "union" ? "Union" : "Record"}]
    set packed [expr {[dict get $record packed] ? ", packed" : {}}]
    set text ".SS [quoted $name]\n[sentence [dict get $record text]]"
    append text "$kind of [dict get $record size] bytes$packed.\n"
    foreach field [dict get $record fields] {
        set where "offset [dict get $field offset]"
        if {[dict get $field width]} {
            append where ", lowest bit [dict get $field bit]"
        }
        append text ".TP\n[bold [dict get $field name]]"
        append text "[escape "$where, [qx::wording::field_type $field]"]:\n"
        append text "[escape [dict get $field text]].\n"
        append text [value_list [qx::wording::values $name [dict get $field name]]]
    }
    foreach command [reference::commands] {
        if {[dict get $command owner] eq $name} { append text [command $command] }
    }
    return $text
}

proc manual::area_page {area} {
    set facts [catalogue::area $area]
    set text [heading [page_name $area] n]
    append text ".SH NAME\n[escape [page_name $area]] \\- [escape [dict get $facts text]]\n"
    append text ".SH DESCRIPTION\n"
    append text "These are [llength [pages::commands_of $area *]] of the commands of\n"
    append text ".BR qxsh (1),\nwhich describes handles, numbers and statuses.\n"
    set records [pages::records_of $area]
    if {$records ne {}} { append text ".SH RECORDS\n" }
    foreach name $records { append text [record $name] }
    foreach {title shapes} {{SDK CALLS} call {BLOCKS AND CELLS} {cell_* free}} {
        set commands [pages::commands_of $area $shapes]
        if {$commands ne {}} { append text ".SH [quoted $title]\n" }
        foreach command $commands { append text [command $command] }
    }
    return "$text.SH \"SEE ALSO\"\n[see_also $area]"
}

# References to the shell, the package and the pages of the other areas.
proc manual::see_also {area} {
    set text ".BR qxsh (1)"
    if {$area ne {}} { append text ",\n.BR qx (n)" }
    foreach other [catalogue::areas] {
        if {$other ne $area} { append text ,\n.BR\ [page_name $other]\ (n) }
    }
    return $text\n
}

# ---------------------------------------------------------------------------------- the shell's

proc manual::switch_list {} {
    variable switches
    set text {}
    foreach {name meaning} $switches {
        append text ".TP\n[bold $name][escape $meaning]\n"
    }
    return $text
}

proc manual::area_list {} {
    set text {}
    foreach area [catalogue::areas] {
        set title [dict get [catalogue::area $area] text]
        append text ".TP\n.BR [page_name $area] (n)\n[escape $title]\n"
    }
    return $text
}

# Fills in the template's @NAME@ lines and words; an unknown one is a mistake.
proc manual::shell_page {template version} {
    set text ".\\\" $reference::note\n"
    set number 0
    foreach line [statuses::lines_of $template] {
        incr number
        set line [string map [list @VERSION@ [escape $version] \
            @COMMANDS@ [llength [reference::commands]] @CALLS@ [llength [catalogue::calls]]] $line]
        switch -- $line {
            @SWITCHES@ { append text [switch_list]; continue }
            @AREAS@    { append text [area_list]; continue }
        }
        if {[regexp {@[A-Z]+@} $line word]} { statuses::fail $template $number "what is $word?" }
        append text $line\n
    }
    return "[string trimright $text \n]\n"
}

proc manual::files {project version} {
    set template [file join $project packaging qxsh.1.in]
    set files [list man/man1/qxsh.1 [shell_page $template $version]]
    lappend files man/mann/qx.n [package::manual]
    foreach area [catalogue::areas] {
        lappend files man/mann/[page_name $area].n [area_page $area]
    }
    return $files
}
