# Which commands Tcl scripts use: the first word of every command, in bodies, conditions and brackets
# too, and with an ensemble its second word. Relies on library/qx/script_parser.tcl.
#
#   script_words::read FILE   -> a list: word, line, word, line ...; "string length" for an ensemble

source [file join [project] library qx script_parser.tcl]

namespace eval script_words {
    variable found {}
    # Where the bodies are: positions of the words that are scripts or conditions; `all` from a
    # position on. A word of ours that is not here takes no script.
    variable bodies {
        proc {3} while {1 2} for {1 2 3 4} if {all 1} catch {1} eval {all 1} uplevel {all 1}
        time {1}
        foreach {end} expr {all 1} namespace {all 3} dict {end} after {all 2}
        test {all 2} case {3} prepare {1} output_of {1} shell {1} output_with {2} shell_with {2}
        without_recording {1} filled {4} ok {1} like {1} type_error {1} overflow {1} miscounted {1}
        setup {1} our_writes {1} constraint {2} testConstraint {2}
    }
    # Words that are data although they stand where a body would.
    variable data {-result -match -constraints -returnCodes -output -errorOutput}
    variable ensembles {
        after array binary chan clock dict encoding file history info interp namespace package
        string trace
    }
}

proc script_words::read {file} {
    variable found {}
    script [file_text $file] 1
    return $found
}

proc script_words::script {text line} {
    run [qx::script_parser::commands $text $line]
}

proc script_words::run {commands} { foreach words $commands { command $words } }

# In a condition only what stands in brackets are commands; braced operands are data.
proc script_words::condition {text line} {
    foreach script [qx::script_parser::in_expression $text $line] { run $script }
}

# A part of the word with a number; empty if there is no such word.
proc script_words::part {words number key} {
    set word [lindex $words $number]
    if {$word ne {}} { return [dict get $word $key] }
}

# Enters a command and reads its brackets and bodies.
proc script_words::command {words} {
    variable found
    variable bodies
    variable ensembles
    foreach word $words {
        foreach script [dict get $word nested] { run $script }
    }
    if {[part $words 0 kind] ne "plain"} return
    set name [string trimleft [part $words 0 text] :]
    set second [part $words 1 text]
    # An interpreter of the script's own is told to do something; what it knows is its business.
    if {$second eq "eval" && $name ni {namespace interp}} return
    set entry $name
    if {$name in $ensembles && [part $words 1 kind] eq "plain"} { set entry "$name $second" }
    lappend found $entry [part $words 0 line]
    if {$name eq "switch"} { return [switch_bodies $words] }
    if {![dict exists $bodies $name]} return
    if {$name eq "namespace" && $second ne "eval"} return
    if {$name eq "dict" && $second ni {for with update filter}} return
    foreach number [places [dict get $bodies $name] [llength $words]] { body $name $words $number }
}

# The numbers of the words that are bodies: `all` from one on, `end` the last.
proc script_words::places {places count} {
    if {[lindex $places 0] ne "all"} { return [string map [list end [expr {$count - 1}]] $places] }
    set numbers {}
    for {set each [lindex $places 1]} {$each < $count} {incr each} { lappend numbers $each }
    return $numbers
}

proc script_words::body {name words number} {
    variable data
    set before [part $words [expr {$number - 1}] text]
    if {[part $words $number kind] ne "braced" || $before in $data} return
    if {$name eq "test" && ![string match -* $before]} return
    set text [part $words $number text]
    if {$name in {expr constraint testConstraint} || ($name eq "for" && $number == 2)
            || ($name in {while if} && ($number == 1 || $before eq "elseif"))} {
        condition $text [part $words $number line]
    } else {
        script $text [part $words $number line]
    }
}

# Patterns and bodies, in one list or as words of their own.
proc script_words::switch_bodies {words} {
    set count [llength $words]
    set value 1
    while {[string match -* [part $words $value text]]} { incr value }
    if {$count - $value > 2} {
        for {set each [expr {$value + 2}]} {$each < $count} {incr each 2} {
            script [part $words $each text] [part $words $each line]
        }
    } elseif {[part $words end kind] eq "braced"} {
        foreach {pattern body} [part $words end text] {
            if {$body ne "-"} { script $body [part $words end line] }
        }
    }
}
