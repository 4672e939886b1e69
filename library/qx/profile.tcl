# Package qx, the profile: which statuses, code words, capacities and address families the SDK
# library in use has. catalogue_data.tcl has those of the simulator, the default; a file that
# QX_PROFILE or qx::profile names replaces them section by section. The package's library reads it.

namespace eval qx::profile {
    variable file {} ;# the one in use; empty: the default
    # content: what it says, a dict: statuses, codes, capacities, families, ids, each a dict; does
    # not exist before it is first needed, nor after a failure to read what QX_PROFILE names
}

# qx::profile ?file? : reads a profile, {} for the default; or returns the name of the one in use.
proc qx::profile::choose {args} {
    variable file
    if {[llength $args] > 1} {
        return -code error -errorcode {QX USAGE} "usage: qx::profile ?file?"
    }
    if {$args eq {}} {
        content
        return $file
    }
    use [lindex $args 0]
}

# One section of the profile in use.
proc qx::profile::part {name} { dict get [content] $name }

proc qx::profile::content {} {
    variable content
    if {![info exists content]} {
        set name {}
        if {[info exists ::env(QX_PROFILE)]} { set name $::env(QX_PROFILE) }
        use $name
    }
    return $content
}

# Takes a profile into use. A failure leaves the one that was.
proc qx::profile::use {name} {
    variable file
    variable content
    set new [default]
    if {$name ne {}} {
        dict for {section says} [read_file $name] {
            if {$section ne "statuses"} { set says [dict merge [dict get $new $section] $says] }
            if {[dict size $says]} { dict set new $section $says }
        }
    }
    set file $name
    set content $new
    if {[llength [info commands ::qx::profile::changed]]} { changed }
    return
}

proc qx::profile::default {} {
    return [dict create statuses $qx::catalogue::status_data codes $qx::catalogue::code_data \
        capacities $qx::catalogue::capacity_data families $qx::catalogue::family_data ids {}]
}

# What a file says, a dict by section. Only the package's library knows how to read it.
proc qx::profile::read_file {name} {
    if {![llength [info commands ::qx::profile::parse]]
            && [catch { qx::handle::load_library } message]} {
        refuse $name "profiles are read by the package's library, which cannot be loaded: $message"
    }
    # A FIFO or a terminal would be waited for.
    if {[file exists $name] && ![file isfile $name]} { refuse $name "not a file" }
    # As an absolute name, lest it be a command for a pipe.
    if {[catch { open [file join [pwd] $name] rb } channel]} {
        refuse $name "cannot be read: [reason $channel]"
    }
    set code [catch { ::read $channel } bytes]
    close $channel
    if {$code} { refuse $name "cannot be read: [reason $bytes]" }
    return [parse $name $bytes]
}

# What the system says in the message of a command for files.
proc qx::profile::reason {message} { regsub {.*": } $message {} }

proc qx::profile::refuse {name text} {
    return -level 2 -code error -errorcode [list QX PROFILE $name 0] "$name: $text"
}

# Whose statuses these are.
proc qx::profile::owner {} {
    content
    variable file
    if {$file eq {}} { return "the simulated device" }
    return "the profile $file"
}

# For the library: the numbers of IPv4 and IPv6, then the places of codes and their words.
proc qx::profile::for_library {} {
    set families [part families]
    return [concat [dict get $families ipv4] [dict get $families ipv6] [part codes]]
}
