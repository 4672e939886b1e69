# Package qx::test, a kit for bring-up tests: tcltest whose tests have to leave the device as they
# found it, with expectations for statuses and records, and reports for CI (TAP, JUnit). Relies on
# tcltest, on package qx and on the files test_*.tcl beside this one. Loaded before the first SDK
# call of the process; a test file ends with cleanupTests. Pure Tcl 8.5.
#
#   package require qx::test
#   namespace import qx::test::*
#   test flow-none "there is no flow" { expect_status QX_NO_FLOW { qx_flow_delete 0 7 } }
#   cleanupTests
#
# Run as `qxsh flow.test ?-tap? ?-junit FILE? ?tcltest's options?`, or with qx-run.

package require qx
if {![llength [info commands ::qx_flow_create]]} { package require demo }

namespace eval qx::test {
    variable folder {} ;# of the kit's own, for its files
    variable ended 1   ;# whether cleanupTests has come behind the last test
    variable called 0  ;# SDK functions, in expect_status
    variable late {}   ;# errors in events of the test that runs
    variable background [interp bgerror {}] ;# what is told of errors in other events
}

proc qx::test::refuse {message} {
    puts stderr "[file tail $::argv0]: $message"
    exit 2
}

# Takes our options out of the script's words, before tcltest reads its own.
proc qx::test::take_options {} {
    set rest {}
    set words $::argv
    while {[llength $words]} {
        set words [lassign $words word]
        if {$word in {-tap -junit} && [info exists taken($word)]} { refuse "$word is given twice" }
        set taken($word) {}
        if {$word eq "-tap"} {
            report::use_tap
        } elseif {$word eq "-junit"} {
            if {![llength $words]} { refuse "-junit needs the name of a file" }
            set words [lassign $words file]
            if {[catch { report::use_junit $file } message options]} {
                refuse "cannot write $file: [lindex [dict get $options -errorcode] end]"
            }
        } else {
            lappend rest $word
        }
    }
    set ::argv $rest
    set ::argc [llength $rest]
}

# ---------------------------------------------------------------------------------- the tests

# tcltest's `test` in all its forms, and: a single word, or a last one without an option, is a body
# in which every status counts, as in a block of qx::check; its result is compared only with a
# -result.
proc qx::test::test {name description args} {
    variable ended 0
    if {[llength $args] == 1 && [regexp {^\s*-[a-zA-Z]+\s} [lindex $args 0]]} {
        set words {}
        foreach {option value} [::tcltest::SubstArguments [lindex $args 0]] {
            lappend words $option [uplevel 1 ::concat $value]
        }
        set args $words
    } elseif {[llength $args] == 1 || [string match -* [lindex $args 0]] && [llength $args] % 2} {
        set body [list ::qx::check [lindex $args end]]
        set args [lrange $args 0 end-1]
        if {![dict exists $args -result]} { lappend args -match anything }
        lappend args -body $body
    } elseif {[llength $args] in {2 3} && ![string match -* [lindex $args 0]]} {
        set args [list -constraints [lindex $args end-2] -body [lindex $args end-1] \
            -result [lindex $args end]]
    }
    set setup {}
    set cleanup {}
    set constraints {}
    foreach option {setup cleanup constraints} {
        if {[dict exists $args -$option]} { set $option [dict get $args -$option] }
    }
    dict set args -setup "[list ::qx::test::begin]\n$setup"
    dict set args -cleanup [list ::qx::test::finish $cleanup]
    report::begin $name $description
    # tcltest would not count a test in another one.
    set level $::tcltest::testLevel
    set ::tcltest::testLevel 0
    # qx-run has a block around the file; here each test says what it expects.
    set wrong [catch { uplevel 1 [list ::qx::status::unjudged \
        [linsert $args 0 ::tcltest::test $name $description]] } result options]
    set ::tcltest::testLevel $level
    if {$wrong} {
        report::drop
        dict incr options -level
        return -options $options $result
    }
    report::end [unmet $constraints]
    return
}

# The constraints that do not hold.
proc qx::test::unmet {constraints} {
    set names {}
    foreach name [regexp -all -inline {[\w.]+} $constraints] {
        if {![::tcltest::testConstraint $name]} { lappend names $name }
    }
    return $names
}

# Before a test's own setup, and around its own cleanup.
proc qx::test::begin {} { device::must_be_clean "the device was not clean before the test" }

proc qx::test::finish {cleanup} {
    variable late
    catch { uplevel 1 $cleanup } result options
    qx::status::report_events
    set found {}
    if {[dict get $options -code] == 1} { lappend found $result }
    foreach message $late { lappend found "in an event: $message" }
    set code {QX TEST EVENT}
    if {[catch { device::must_be_clean "the test did not leave the device clean" } dirt]} {
        lappend found $dirt
        set code {QX TEST DEVICE}
    } elseif {![llength $late]} {
        dict incr options -level
        return -options $options $result
    }
    set late {}
    return -code error -errorcode $code [join $found \n]
}

# An error in an event is one of the test that runs, unless the file has a bgerror of its own.
proc qx::test::background {message options} {
    variable late
    variable background
    if {[report::depth] && ![llength [info commands ::bgerror]]} {
        lappend late $message
    } else {
        uplevel #0 [concat $background [list $message $options]]
    }
}

# From now on the device is clean as it is: for what the tests of a file have in common.
proc qx::test::accept_device {} { device::accept }

proc qx::test::cleanupTests {args} {
    variable ended 1
    uplevel 1 [linsert $args 0 ::tcltest::cleanupTests]
    report::summary
}

# ------------------------------------------------------------------------------- expectations

# An error unless the script makes an SDK call and that ends with one of the statuses, given by name
# or number; 0 is success. -> the script's result, empty after another status.
proc qx::test::expect_status {statuses script} {
    variable called
    set wanted [qx::status::numbers $statuses]
    set call [string trim $script]
    set before $called
    trace_calls add
    set code [catch { uplevel 1 [list ::qx::check $script] } result options]
    trace_calls remove
    if {!$code} {
        if {$called == $before} {
            return -code error -errorcode {QX TEST STATUS} "$call: no SDK function was called"
        }
        if {0 in $wanted} { return $result }
        set was "$call: status 0"
    } elseif {[lindex [dict get $options -errorcode] 0] eq "QX_STATUS"} {
        if {[lindex [dict get $options -errorcode] 1] in $wanted} return
        set was $result
    } else {
        return -options [dict replace $options -level 1] $result
    }
    set names {}
    foreach number $wanted {
        lappend names [string trim "$number [qx::catalogue::status_name $number]"]
    }
    return -code error -errorcode {QX TEST STATUS} "$was; expected [join $names { or }]"
}

# Counts the SDK functions that a script calls in `called`.
proc qx::test::trace_calls {operation} {
    foreach name [qx::catalogue::calls] {
        # A script may have renamed it.
        if {![llength [info commands ::$name]]} continue
        trace $operation execution ::$name enter ::qx::test::count_call
    }
}

proc qx::test::count_call {args} { variable called; incr called }

# ------------------------------------------------------------------------ the end of the process

# In the place of `exit`, which Tcl also calls at the end of a script: a failure cannot end with
# status 0.
proc qx::test::leave {{status 0}} {
    variable folder
    variable ended
    set failed 1
    catch { report::verdict $status $ended } failed
    catch { device::leave }
    catch { report::close_text }
    catch { file delete -- $folder }
    if {$failed ne "0" && $status eq "0"} { set status 1 }
    ::qx::test::real_exit $status
}

apply {{dir} {
    foreach part {test_records test_device test_reports} {
        uplevel #0 [list source [file join $dir $part.tcl]]
    }
}} [file dirname [file normalize [info script]]]

namespace eval qx::test {
    take_options
    package require tcltest 2.3
    # Everything of tcltest is here under its own name, but for what the kit replaces.
    apply {{} {
        foreach name [namespace eval ::tcltest { namespace export }] {
            if {$name ni {test cleanupTests}} { namespace import ::tcltest::$name }
            namespace export $name
        }
        namespace export expect_status expect_record accept_device
    } ::qx::test}
    ::tcltest::customMatch anything ::qx::test::report::any
    set folder [qx::sim::make_folder [file join \
        [expr {[info exists ::env(TMPDIR)] ? $::env(TMPDIR) : "/tmp"}] qx-test.]]
    if {[catch { device::start $folder } message]} {
        catch { device::leave }
        file delete -- $folder
        error $message
    }
    report::open_text $folder
    ::tcltest::testConstraint sim [expr {[device::kind] eq "sim"}]
    ::tcltest::testConstraint board [expr {[device::kind] eq "board"}]
    rename ::exit ::qx::test::real_exit
    interp alias {} ::exit {} ::qx::test::leave
    interp bgerror {} ::qx::test::background
}
