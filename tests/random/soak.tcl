# Random scripts one after the other in one shell, for minutes or hours: every line they print has
# to be the model's, the scenes of soak_scenes.tcl after each have to print nothing, and the shell's
# memory and open files may not grow. Run by `./test soak`:
#   tclsh soak.tcl SHELL RANDOM_SCRIPT MINUTES FOLDER
# With QXSH_STRICT_MEMORY=1 the scripts take handles as they were made only, and the shell's leak
# report has to be empty: no block is live at the end. Prints what was done, last
# "soak: SCRIPTS run in MINUTES minutes, FAILED failed". Relies on Linux's /proc.

lassign $argv shell random_script minutes folder
set here [file dirname [file normalize [info script]]]
set tables [file join $here .. expected]
set strict [expr {[info exists env(QXSH_STRICT_MEMORY)] && $env(QXSH_STRICT_MEMORY) eq "1"}]
set places [expr {$strict ? "as_made" : "any"}]
set commands 3000
set first_seed 1000
# Scripts until the memory has its size, and how much it may still grow afterwards, in kB. Strict
# memory keeps freed blocks up to a limit.
set warm_up [expr {$strict ? 300 : 100}]
set allowance 512

proc file_text {name} {
    set file [open $name]
    fconfigure $file -translation binary
    set text [read $file]
    close $file
    return $text
}

# Has the shell run a script; -> what it printed, and its memory (kB) and open files afterwards.
proc run_script {script} {
    puts $::pipe $script
    flush $::pipe
    set printed {}
    while {[gets $::pipe line] >= 0} {
        if {[regexp {^== memory (\d+) files (\d+)$} $line -> memory files]} {
            return [list $printed $memory $files]
        }
        append printed $line \n
    }
    return -code error "the shell ended after $::scripts scripts: [file_text $::complaints]"
}

# The first line that is not as expected.
proc difference {printed expected} {
    foreach is [split $printed \n] should [split $expected \n] {
        if {$is ne $should} { return "printed \"$is\", expected \"$should\"" }
    }
}

file mkdir $folder
set folder [file normalize $folder]
set script [file join $folder script.tcl]
set output [file join $folder output.txt]
set complaints [file join $folder stderr.txt]
set pipe [open |[list $shell [file join $here soak_shell.tcl] $folder 2> $complaints] r+]
fconfigure $pipe -translation binary
set begin [clock seconds]
set end [expr {$begin + $minutes * 60}]
set scripts 0
set failed 0
set steady 0
set greatest 0
while {[clock seconds] < $end || $scripts <= 2 * $warm_up} {
    set seed [expr {$first_seed + $scripts}]
    exec $random_script $tables $seed $commands $script $output $places
    lassign [run_script $script] printed memory files
    incr scripts
    if {$printed ne [file_text $output]} {
        incr failed
        puts "seed $seed: [difference $printed [file_text $output]]"
    }
    if {$scripts == 1} { set first_files $files }
    if {$files != $first_files} {
        incr failed
        puts "seed $seed: $files open files, $first_files after the first script"
        break
    }
    if {$scripts <= $warm_up} { set steady [expr {max($steady, $memory)}] }
    set greatest [expr {max($greatest, $memory)}]
    if {$greatest > $steady + $allowance && $scripts > $warm_up} {
        incr failed
        puts "seed $seed: $greatest kB, $steady kB after $warm_up scripts"
        break
    }
}
if {[catch {close $pipe} problem]} {
    incr failed
    puts "the shell ended with: $problem"
}
if {[file size $complaints] > 0} {
    incr failed
    puts "the shell complained: [file_text $complaints]"
}
puts "seeds $first_seed to $seed, $commands commands each; memory $steady kB after $warm_up\
    scripts, $greatest kB at most; $first_files open files"
puts "soak: $scripts run in [expr {([clock seconds] - $begin + 30) / 60}] minutes, $failed failed"
exit [expr {$failed > 0}]
