# Package qx, addresses as people write them: IPv4 with dots, IPv6 as RFC 5952 has it, MACs with
# colons. In a record an address is one, two or four numbers of 32 bits, the first bits of the
# address in the highest of the first, or six bytes. Relies on nothing.

namespace eval qx::address {
    # Families as the simulated device has them: the number in a record -> the version.
    variable families {0 4 1 6}
}

proc qx::address::mac_text {bytes} { eval [linsert $bytes 0 format %02x:%02x:%02x:%02x:%02x:%02x] }

# The six bytes of a MAC, or nothing if it is none.
proc qx::address::mac_bytes {text} {
    if {![regexp {^[0-9a-fA-F]{1,2}([:-][0-9a-fA-F]{1,2}){5}$} $text]} return
    set bytes {}
    foreach part [split $text :-] { lappend bytes [scan $part %x] }
    return $bytes
}

proc qx::address::ipv4_text {word} {
    return [format %d.%d.%d.%d [expr {$word >> 24 & 255}] [expr {$word >> 16 & 255}] \
        [expr {$word >> 8 & 255}] [expr {$word & 255}]]
}

# The number of an IPv4 address, or nothing if it is none.
proc qx::address::ipv4_word {text} {
    set part {(0|[1-9]\d{0,2})}
    if {![regexp "^$part\\.$part\\.$part\\.$part\$" $text -> a b c d]} return
    foreach byte [list $a $b $c $d] { if {$byte > 255} return }
    return [expr {$a << 24 | $b << 16 | $c << 8 | $d}]
}

proc qx::address::ipv6_text {words} {
    set groups {}
    foreach word $words { lappend groups [expr {$word >> 16}] [expr {$word & 65535}] }
    if {[lrange $groups 0 5] eq {0 0 0 0 0 65535}} {
        return "::ffff:[ipv4_text [lindex $words 3]]"
    }
    # The longest run of zeros, the first of equals, and not of one alone.
    set best 0
    set most 1
    for {set start 0} {$start < 8} {incr start} {
        for {set end $start} {$end < 8 && [lindex $groups $end] == 0} {incr end} {}
        if {$end - $start > $most} {
            set best $start
            set most [expr {$end - $start}]
        }
    }
    set shown {}
    foreach group $groups { lappend shown [format %x $group] }
    if {$most == 1} { return [join $shown :] }
    set left [join [lrange $shown 0 [expr {$best - 1}]] :]
    set right [join [lrange $shown [expr {$best + $most}] end] :]
    return ${left}::$right
}

# The four numbers of an IPv6 address, or nothing if it is none.
proc qx::address::ipv6_words {text} {
    if {![regexp {^[0-9a-fA-F:.]*$} $text]} return
    # An IPv4 address at the end stands for two groups.
    if {[regexp {^(.*:)([0-9.]*\.[0-9.]*)$} $text -> head tail]} {
        set word [ipv4_word $tail]
        if {$word eq {}} return
        set text $head[format %x:%x [expr {$word >> 16}] [expr {$word & 65535}]]
    }
    set place [string first :: $text]
    if {$place >= 0} {
        set first [split [string range $text 0 $place-1] :]
        set last [split [string range $text $place+2 end] :]
        set zeros [expr {8 - [llength $first] - [llength $last]}]
        if {$zeros < 1} return
        set groups [concat $first [lrepeat $zeros 0] $last]
    } else {
        set groups [split $text :]
    }
    if {[llength $groups] != 8} return
    set words {}
    foreach {high low} $groups {
        if {![regexp {^[0-9a-fA-F]{1,4} [0-9a-fA-F]{1,4}$} "$high $low"]} return
        lappend words [expr {[scan $high %x] << 16 | [scan $low %x]}]
    }
    return $words
}

# Four numbers of an address of the family that a record names, or by what they look like: with
# zeros in the last three it is IPv4. Numbers that are no address of the family stay as they are.
proc qx::address::ip_text {words {family {}}} {
    variable families
    set short [expr {[lrange $words 1 3] eq {0 0 0}}]
    set version [expr {$short ? 4 : 6}]
    if {[dict exists $families $family]} { set version [dict get $families $family] }
    if {$version == 6} { return [ipv6_text $words] }
    if {!$short} { return $words }
    return [ipv4_text [lindex $words 0]]
}

# The version of an address and its four numbers; nothing if it is no address.
proc qx::address::ip_words {text} {
    set word [ipv4_word $text]
    if {$word ne {}} { return [list 4 [list $word 0 0 0]] }
    set words [ipv6_words $text]
    if {$words ne {}} { return [list 6 $words] }
    return
}

# The family's number of a version.
proc qx::address::family {version} {
    variable families
    foreach {number each} $families { if {$each == $version} { return $number } }
}
