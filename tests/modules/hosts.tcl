# Helpers of the tests of sharing: the interpreters in which modules meet, and what scripts there
# can ask. Relies on tests/package/stock_tclsh.tcl.
source [file join [project] tests package stock_tclsh.tcl]

# What every script begins with: `load_meter`, `load_package` and `load_view` for any interpreter
# ({} is the own one), and the address behind a handle.
proc preamble {} {
    set quoted [list]
    foreach {name file prefix} {
        meter   QXSH_METER         Meter
        package QXSH_PACKAGE       Demo
        view    QXSH_REGISTRY_VIEW Registry_view
        namesake QXSH_NAMESAKE     Namesake
    } {
        set body "load [list $::env($file)] $prefix \$interp"
        lappend quoted [list proc load_$name {{interp {}}} $body]
    }
    lappend quoted {proc address {handle} {
        binary scan [binary format H8 [string range $handle 1 8]] i address
        return [expr {$address & 0xffffffff}]
    }}
    lappend quoted {proc outcome {script} { return [list [catch {uplevel #0 $script} text] $text] }}
    return [join $quoted \n]\n
}

proc in_tclsh {script} { tclsh_output [preamble]$script }
proc in_shell {script} { output_of [preamble]$script }

# A test of a script that begins with its set-up, in a stock tclsh.
proc tclsh_test {name description setup script result} {
    test $name $description -body [list in_tclsh $setup\n$script] -result $result
}

# A test for each order in which the modules can come. In the shell the package is always first.
proc order_test {name description script package_first {meter_first {}}} {
    if {$meter_first eq {}} { set meter_first $package_first }
    foreach {order host setup result} [list \
        package_first tclsh {load_package; load_meter; load_view} $package_first \
        meter_first   tclsh {load_meter; load_package; load_view} $meter_first \
        shell         shell {load_meter; load_view}               $package_first] {
        test $name-$order "$description ($order)" \
            -body [list in_$host $setup\n$script] -result $result
    }
}
