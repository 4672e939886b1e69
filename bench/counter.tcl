# Counts instructions: runs the shell under callgrind (target `pc`) or under the emulator with
# instruction_counter.c (target `armhf`) and returns instructions per pass. Loops are counted with
# two numbers of passes, so that one-time costs cancel out. Relies on what build.bash has built.

namespace eval counter {
    variable project [file dirname [file dirname [file normalize [info script]]]]
    variable scratch [file join $project build bench scratch]
    variable here [file join $project bench]
    # target -> preset of the shell's build
    variable presets {pc release armhf armhf}
}

proc counter::folder {target} {
    variable project; variable presets
    file join $project build [dict get $presets $target]
}
proc counter::tools {target} {
    variable project; variable presets
    file join $project build bench [dict get $presets $target]
}
proc counter::shell {target} { file join [folder $target] bin qxsh }
proc counter::package_library {target} { file join [folder $target] lib demo0.0 libdemo.so }

proc counter::sysroot {} {
    variable project
    file join $project build sysroot armhf root
}

# A stock tclsh for the target.
proc counter::tclsh {target} {
    if {$target eq "pc"} { return [auto_execok tclsh8.6] }
    file join [sysroot] usr bin tclsh8.6
}

# The words that start a program of the target, with the idle SDK library, in a fixed environment:
# start-up costs depend on it.
proc counter::launcher {target {sdk idle}} {
    set words [list env -i PATH=/usr/local/bin:/usr/bin:/bin HOME=/nonexistent LANG=C]
    # The C library selects copy and compare functions by processor: use the same ones everywhere.
    if {$target eq "pc"} {
        lappend words GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX_Fast_Unaligned_Load,-ERMS,-FSRM
    }
    if {$sdk eq "idle"} { lappend words LD_LIBRARY_PATH=[file join [tools $target] idle] }
    if {$target ne "pc"} { lappend words qemu-arm -L [sysroot] }
    return $words
}

# The same, with counts written to FILE; `at_start` says whether to count from the program's start.
proc counter::counting_launcher {target file at_start {sdk idle} {options {}}} {
    set words [launcher $target $sdk]
    if {$target eq "pc"} {
        return [concat $words valgrind -q --tool=callgrind --combine-dumps=yes \
            --instr-atstart=[expr {$at_start ? "yes" : "no"}] --callgrind-out-file=$file]
    }
    set plugin [file join [tools pc] instruction_counter.so]
    return [concat $words -plugin file=$plugin,out=$file$options]
}

# The counts of all regions, in order.
proc counter::regions {target file} {
    set channel [open $file]
    set text [read $channel]
    close $channel
    set counts {}
    if {$target eq "pc"} {
        foreach {- count} [regexp -all -inline -line {^totals: (\d+)$} $text] {
            lappend counts $count
        }
        return [lrange $counts 0 end-1]
    }
    foreach {- from to} [regexp -all -inline {begin (\d+)\nend (\d+)} $text] {
        lappend counts [expr {$to - $from}]
    }
    return $counts
}

# Instructions of a complete run of a program, which finds its SDK library by itself.
proc counter::total {target args} {
    variable scratch
    file mkdir $scratch
    set file [file join $scratch total.$target]
    exec {*}[counting_launcher $target $file 1 own] {*}$args >/dev/null
    set channel [open $file]
    set text [read $channel]
    close $channel
    regexp -line {^(?:totals:|total) (\d+)$} $text -> count
    return $count
}

# Runs a script of this folder in the shell or in tclsh, and returns a dictionary variant ->
# instructions per pass. The script describes its regions in the file named by its second word.
proc counter::per_pass {target program script row variants libraries} {
    variable here; variable scratch
    file mkdir $scratch
    set counts [file join $scratch $row.$target.counts]
    set names [file join $scratch $row.$target.names]
    exec {*}[counting_launcher $target $counts 0] $program [file join $here $script] \
        $row $names [join $variants ,] {*}$libraries >/dev/null
    set channel [open $names]
    set lines [split [string trim [read $channel]] \n]
    close $channel
    set values [regions $target $counts]
    if {[llength $values] != [llength $lines]} {
        error "$row on $target: [llength $values] regions were counted, [llength $lines] were run"
    }
    set result {}
    foreach line $lines value $values {
        lassign $line kind variant passes
        set ${kind}($variant) [list $passes $value]
    }
    foreach variant $variants {
        lassign $short($variant) few less
        lassign $long($variant) many more
        dict set result $variant [expr {double($more - $less) / ($many - $few)}]
    }
    return $result
}

proc counter::libraries {target peers} {
    set files {}
    foreach name {floor whole_flow} { lappend files [file join [tools $target] $name.so] }
    foreach peer $peers { lappend files [peer_library $target $peer] }
    return $files
}

proc counter::peer_library {target peer} {
    if {$peer eq "hand"} { return [file join [tools $target] handwritten.so] }
    lindex [glob -nocomplain -directory [file join [tools $target] critcl] cprocs/*/*.so] 0
}

# A row of rows.tcl: dictionary variant -> instructions per pass, less the empty loop's.
proc counter::row {target row} {
    net [per_pass $target [shell $target] count.tcl $row {empty floor ours} [libraries $target {}]]
}

# The same for peers. They run in a stock tclsh, where the C library buffers their output as usual.
proc counter::peers {target row peers} {
    net [per_pass $target [tclsh $target] count.tcl $row [concat empty floor $peers] \
        [libraries $target $peers]]
}

proc counter::net {counted} {
    set net {}
    foreach {variant count} $counted {
        if {$variant eq "empty"} continue
        dict set net $variant [expr {$count - [dict get $counted empty]}]
    }
    return $net
}

# Instructions of the package's start-up in a fresh interpreter, and of a bare loop that creates
# commands with the same names.
proc counter::registration {target} {
    per_pass $target [shell $target] registration.tcl registration {floor ours} \
        [list [file join [tools $target] floor.so] [package_library $target]]
}

# Instructions of a run of an empty script: tclsh's and the shell's. Tcl's start-up scans the paths
# involved, so both programs are placed where the path has the same length for every project folder.
proc counter::start_up {target} {
    set folder [exec mktemp -d /tmp/qxsh-start.XXXXXX]
    file mkdir [file join $folder bin] [file join $folder lib]
    set script [file join $folder empty.tcl]
    close [open $script w]
    file copy [file join [tools $target] idle libqx-sdk.so] [file join $folder lib]
    set code [catch {
        foreach {variant program} [list floor [tclsh $target] ours [shell $target]] {
            set copy [file join $folder bin [file tail $program]]
            file copy $program $copy
            lappend counts $variant [total $target $copy $script]
        }
        set counts
    } result]
    file delete -force $folder
    return -code $code $result
}
