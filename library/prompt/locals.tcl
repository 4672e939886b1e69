# Package qx::prompt, the variables in the body of a procedure that is being typed: its arguments
# and what the body has set so far, not those at the prompt. Relies on nothing but, for the types
# of handles, the package qx.

namespace eval qx::prompt::locals {
    # Where the text of a body names variables: a command, and the words up to the names.
    variable settings {
        {(?:set|incr|append|lappend|lset|unset|global|variable)\s+} {(?:foreach|lmap)\s+}
        {lassign\s+(?:\{[^\}]*\}|\[[^\]]*\]|\S+)\s+}
        {dict\s+(?:set|incr|append|lappend|with|update|for|map)\s+}
        {upvar\s+(?:#?\d+\s+)?\S+\s+} {catch\s+\{[^\}]*\}\s+} {qx::with\s+}
    }
    # Of these all the words that follow are names.
    variable many {global variable lassign}
}

# The variables that can be reached where the frames end: a dict, name -> value. A value that is not
# known is "?", that of a handle has the type that is known. Globals are offered behind colons.
proc qx::prompt::locals::reached {text frames variables} {
    if {[regexp {^\$\{?:} [dict get [lindex $frames end] word]]} {
        set all {}
        dict for {name value} $variables { dict set all ::$name $value }
        return $all
    }
    for {set at [expr {[llength $frames] - 1}]} {$at > 0} {incr at -1} {
        set words [dict get [lindex $frames $at-1] words]
        switch -- [string trimleft [lindex $words 0] :],[llength $words] {
            proc,3 {
                # The word before the cursor is not complete.
                regsub {\w+$} $text {} text
                set start [dict get [lindex $frames $at] start]
                return [in_body [lindex $words 2] [string range $text $start+1 end] $variables]
            }
            qx::with,3 - qx::with,4 {
                dict set variables [lindex $words 1] _00000000_p_[lindex $words 2]
            }
        }
    }
    return $variables
}

proc qx::prompt::locals::in_body {parameters body variables} {
    variable settings
    variable many
    set locals {}
    if {[catch { foreach each [lindex $parameters 0] { dict set locals [lindex $each 0] ? } }]} {
        set locals {}
    }
    foreach pattern $settings {
        set all "(?:^|\[^\\w\$:])$pattern\(\[^\\n;\\\[\\]\\\"]*)"
        foreach {whole names} [regexp -all -inline $all $body] {
            regexp {\w+} $whole used
            if {[string match "\{*" $names]} {
                regexp {^\{([^\}]*)} $names -> names
            } elseif {$used ni $many} {
                set names [lindex [split [string trim $names]] 0]
            }
            foreach name [regexp -all -inline {[^\s\{\}]+} $names] {
                if {![regexp {^\w+$} $name] || [dict exists $locals $name]} continue
                set global [expr {$used eq "global" && [dict exists $variables $name]}]
                dict set locals $name [expr {$global ? [dict get $variables $name] : "?"}]
            }
        }
    }
    foreach {name type} [types $body] { dict set locals $name _00000000_p_$type }
    return $locals
}

# The record types of variables that commands of the SDK and of the package qx set.
proc qx::prompt::locals::types {body} {
    set found {}
    set pattern {\mset\s+(\w+)\s+\[\s*(?:::)?(qx_\w+|qx::new\s+(\w+))}
    foreach {all name command type} [regexp -all -inline $pattern $body] {
        if {$type eq {} && [qx::prompt::have_catalogue] && [qx::catalogue::is_command $command]} {
            set result [dict get [qx::catalogue::facts $command] result]
            if {[qx::catalogue::is_pointer $result]} {
                set native [qx::catalogue::native [qx::catalogue::target $result]]
                set type [string map {{ } _} $native]
            }
        }
        if {$type ne {}} { lappend found $name $type }
    }
    foreach {all name type} [regexp -all -inline {\mqx::with\s+(\w+)\s+(\w+)} $body] {
        lappend found $name $type
    }
    return $found
}
