# tclsh gate.tcl TARGET...: measures the rows of bounds.tsv that have `gate`, prints each with its
# bound and exits with status 1 if one is exceeded. Measures only instructions and sizes, which are
# reproducible, and resident memory, whose bounds leave room for the difference between runs.

set here [file dirname [file normalize [info script]]]
foreach file {rows bounds counter memory recorded scale sizes tables ../library/qx/progress} {
    source [file join $here $file.tcl]
}

proc measured {row target} {
    if {[regsub {^full_} $row {} table]} { return [tables::ratio $target $table] }
    switch -- $row {
        registration {
            set counted [counter::registration $target]
            return [expr {[dict get $counted ours] / [dict get $counted floor]}]
        }
        start_up {
            set counted [counter::start_up $target]
            return [expr {double([dict get $counted ours]) / [dict get $counted floor]}]
        }
        handle_memory {
            set found [scale::handle_memory $target]
            return [expr {double([dict get $found bytes]) / [dict get $found object]}]
        }
        recorded_call { return [recorded::cost $target recorded] }
        replayed_call { return [recorded::cost $target replayed] }
        private_memory { return [dict get [memory::beyond_tclsh] private] }
        shared_memory { return [dict get [memory::beyond_tclsh] shared] }
        code_per_command { return [dict get [sizes::functions $target] per_command] }
        shell_file   { return [sizes::file_size $target [counter::shell $target]] }
        package_file { return [sizes::file_size $target [counter::package_library $target]] }
    }
    set net [counter::row $target $row]
    if {[bounds::get $row unit] eq "instructions"} { return [dict get $net ours] }
    expr {[dict get $net ours] / [dict get $net floor]}
}

set format "%-8s %-38s %-12s %9s %9s  %s"
puts [format $format target row unit measured bound {}]
set passed 0
set failed 0
set wanted {}
foreach target $argv {
    foreach row $bounds::names {
        if {[bounds::get $row gate] ne "yes" || [bounds::bound $row $target] eq "-"} continue
        lappend wanted $target $row
    }
}
qx::progress::begin "qxsh: measuring" "[expr {[llength $wanted] / 2}] rows"
foreach {target row} $wanted {
    qx::progress::at [expr {$passed + $failed}]
    set value [measured $row $target]
    qx::progress::hide
    set good [bounds::keeps $row $value [bounds::bound $row $target]]
    incr [expr {$good ? "passed" : "failed"}]
    puts [format $format $target [bounds::get $row title] [bounds::get $row unit] \
        [bounds::show $row $value] [bounds::show $row [bounds::bound $row $target]] \
        [expr {$good ? "ok" : "EXCEEDED"}]]
}
qx::progress::end
puts "$passed rows keep their bounds, $failed do not"
exit [expr {$failed > 0 || $passed == 0}]
