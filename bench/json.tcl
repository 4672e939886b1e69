# JSON, as far as result files need it. Values are made with `text`, `number`, `array` and `object`
# from values made before; `read` gives dictionaries, lists and texts back.

namespace eval json {
    variable escapes [list \\ \\\\ \" \\\" \n \\n \t \\t]
}

proc json::text {value} { variable escapes; return \"[string map $escapes $value]\" }

proc json::number {value} {
    if {![string is double -strict $value]} { error "$value is not a number" }
    if {[string is wideinteger -strict $value]} { return $value }
    return [format %.9g $value]
}

proc json::array {values} { return "\[[join $values {, }]\]" }

proc json::object {pairs} {
    set members {}
    foreach {name value} $pairs { lappend members "[text $name]: $value" }
    return "{[join $members {, }]}"
}

# The same, a member a line: for what people look at.
proc json::tall_object {pairs} {
    set members {}
    foreach {name value} $pairs { lappend members "  [text $name]: $value" }
    return "{\n[join $members ",\n"]\n}\n"
}
proc json::tall_array {values} { return "\[\n    [join $values ",\n    "]\n  \]" }

proc json::read {text} {
    set position 0
    set value [read_value $text position]
    if {[string trim [string range $text $position end]] ne {}} {
        error "JSON goes on at $position"
    }
    return $value
}

# Takes the next token of a form; an error if something else is there.
proc json::take {text variable form} {
    upvar 1 $variable position
    if {![regexp -start $position -indices -- "\\A\\s*($form)" $text whole token]} {
        error "JSON: expected $form at $position"
    }
    set position [expr {[lindex $whole 1] + 1}]
    return [string range $text {*}$token]
}

proc json::next {text position} {
    regexp -start $position {\A\s*(\S)} $text -> character
    return $character
}

proc json::read_value {text variable} {
    upvar 1 $variable position
    switch -- [next $text $position] {
        \{ { return [read_members $text position \{ \}] }
        \[ { return [read_members $text position \[ \]] }
        \" { return [read_text $text position] }
    }
    return [take $text position {[-+.0-9a-zA-Z]+}]
}

proc json::read_text {text variable} {
    upvar 1 $variable position
    set raw [take $text position {"(?:[^"\\]|\\.)*"}]
    return [string map {\\\\ \\ \\\" \" \\n \n \\t \t \\/ /} [string range $raw 1 end-1]]
}

proc json::read_members {text variable open close} {
    upvar 1 $variable position
    take $text position \\$open
    set result {}
    if {[next $text $position] eq $close} { take $text position \\$close; return $result }
    while 1 {
        if {$open eq "\{"} {
            lappend result [read_text $text position]
            take $text position :
        }
        lappend result [read_value $text position]
        if {[take $text position "\[,\\$close\]"] eq $close} { return $result }
    }
}
