# What the tests of the package qx::prompt share: questions to its functions, asked in the shell
# without a terminal, and sessions at one. Relies on tests/script/shell.tcl and terminal.tcl.

source [file join [project] tests script terminal.tcl]
set sample [file join [project] library myapprc.tcl]

# What a script prints that has the package.
proc printed {script} { without_recording { output_of "package require qx::prompt\n$script" } }

# What completion answers to texts, in one run: for each a list of word, offers, hint, files.
proc answers {variables texts} {
    set out [printed "
        set variables [list $variables]
        foreach text [list $texts] {
            set answer \[qx::prompt::offers::at \$text \[qx::prompt::commands \$text] \$variables]
            puts \[list \[dict values \$answer]]
        }"]
    # Each line is an element.
    return $out
}

# The offers, or the hint where there is none, to one text.
proc offered {variables text} {
    lassign [lindex [answers $variables [list $text]] 0] word offers hint files
    if {$files} { return files }
    return [expr {$offers eq {} ? $hint : $offers}]
}

# A session with the sample rc file. Left out where this shell cannot edit lines.
proc session {home lines {terminal vt100} {columns 80}} {
    return [at_terminal [list HOME=$home TERM=$terminal] $lines {} $columns]
}
proc sample_home {} { home_with "source {$::sample}" }

# The screen's text without what moves the cursor.
proc plain_text {run} {
    regsub -all {\x1b\[[0-9;?]*[A-Za-z]|\x07} [dict get $run out] {} out
    return [string map {\r {}} $out]
}

# Makes the constraint `editing`. As in tests/script/terminal.test: another processor's tclreadline
# lies in a tree of its own.
proc need_editing {} {
    global env
    set tree [file dirname [file dirname [file dirname $env(QXSH_TARGET_TCLSH)]]]
    if {$tree ne "/"} {
        file mkdir [scratch packages]
        foreach folder [glob -nocomplain $tree/usr/lib/tcltk/*/tclreadline*] {
            file copy $folder [scratch packages]
        }
        set harness::environment [list TCLLIBPATH=[scratch packages]]
    }
    set found [shell {puts [catch {package require tclreadline}]}]
    constraint editing {[testConstraint terminal] && $found eq [list out "0\n" status 0]} \
        "this build's shell cannot load the package tclreadline"
}
