# What the tests of Debian packages share: which there are, what they say and hold. Relies on
# tests/script/shell.tcl and on packages that ./packaging/build made.

without_transcript

# The folder of a processor's packages.
proc packages_folder {architecture} {
    return [file join [project] build package-$architecture packages]
}
proc package_files {architecture} {
    return [lsort [glob -nocomplain -directory [packages_folder $architecture] *.deb]]
}
# The file of one package.
proc package_file {architecture name} {
    set files [glob -nocomplain -directory [packages_folder $architecture] ${name}_*.deb]
    if {[llength $files] != 1} { error "packages called $name for $architecture: $files" }
    return [lindex $files 0]
}

proc field {file name} { exec dpkg-deb -f $file $name }

# Unpacks packages into a folder.
proc unpack {folder args} {
    file mkdir $folder
    foreach file $args { exec dpkg-deb -x $file $folder }
    return $folder
}

# What a package holds: dict of name -> {mode owner}.
proc contents {file} {
    set found {}
    foreach line [split [exec dpkg-deb -c $file] \n] {
        lassign $line mode owner
        dict set found [string range [lindex $line 5] 1 end] [list $mode $owner]
    }
    return $found
}

# The names of a Depends field's packages.
proc dependencies {file} {
    set names {}
    foreach each [split [field $file Depends] ,] { lappend names [lindex $each 0] }
    return [lsort -unique $names]
}

# The ELF files below a folder.
proc elf_files {folder} {
    set found {}
    foreach file [split [exec find $folder -type f -not -name *.debug] \n] {
        set channel [open $file]
        fconfigure $channel -translation binary
        if {[read $channel 4] eq "\x7fELF"} { lappend found $file }
        close $channel
    }
    return [lsort $found]
}

# The values of a tag of a file's dynamic section.
proc dynamic {tag file} {
    set found {}
    set text [exec readelf -dW $file 2>@1]
    foreach {line value} [regexp -all -inline -line "\\($tag\\).*\\\[(.*)\\]" $text] {
        lappend found $value
    }
    return $found
}

# The script that every installed shell has to carry out, and what it prints.
set qos_script {
    set cell [qx_uint8_create 0]
    puts [list [qx_qos_dscp_map_set 0 1 46 6] [qx_qos_dscp_map_get 0 1 46 $cell] \
        [qx_uint8_get $cell] [qx_qos_dscp_map_set 0 1 64 6]]
    qx_data_free $cell
    puts [list [package require demo] [package require qx] [llength [info commands qx_*]]]
    set flow [qx_flow_create]
    qx::set $flow {flow_id 7}
    puts [list [qx_flow_get_flow_id $flow] [dict get [qx::get $flow] flow_id]]
    qx_data_free $flow
}
set qos_output "0 0 6 76\n0.0 [script_version] 1093\n7 7\n"
