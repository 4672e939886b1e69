# Reads the files of a Yocto layer as far as ours go: assignments, overrides, flags, continued
# lines, `inherit`. Gives a list of operator, name, value; a line it does not know is an error.

namespace eval recipe_reader {}

proc recipe_reader::read {text} {
    set found {}
    set number 0
    set line {}
    foreach piece [split $text \n] {
        incr number
        if {$line eq {} && ([string trim $piece] eq {} || [string match #* $piece])} continue
        append line $piece
        if {[string index $line end] eq "\\"} {
            set line [string range $line 0 end-1]
            continue
        }
        lappend found {*}[statement $line $number]
        set line {}
    }
    if {$line ne {}} { error "line $number: the last line goes on" }
    return $found
}

# One whole statement.
proc recipe_reader::statement {line number} {
    if {[regexp {^inherit((?: [a-z0-9_-]+)+)$} $line -> classes]} {
        return [list inherit {} [string trim $classes]]
    }
    set name {[A-Za-z_][A-Za-z0-9_.:${}-]*(?:\[[a-z-]+\])?}
    set pattern "^($name) (=|\\?=|\\?\\?=|:=|\\+=|\\.=) \"((?:\[^\"\\\\\]|\\\\.)*)\"$"
    if {![regexp $pattern $line -> variable operator value]} { error "line $number: $line" }
    foreach {opened} [regexp -all -inline {\$\{[^\}]*(?:\}|$)} $value] {
        if {![regexp {^\$\{[A-Za-z_]+\}$} $opened]} { error "line $number: $opened" }
    }
    return [list $operator $variable $value]
}

# The words of a variable, all statements about it in their order.
proc recipe_reader::value {statements name} {
    set result {}
    foreach {operator variable value} $statements {
        if {$variable ne $name} continue
        if {$operator in {+= .=}} { append result " $value" } else { set result $value }
    }
    return [string trim $result]
}
