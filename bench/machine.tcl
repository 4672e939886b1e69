# The description of machine and tools in a result file.

namespace eval machine {}

proc machine::read {file} {
    if {[catch {open $file} channel]} { return {} }
    set text [::read $channel]
    close $channel
    return $text
}

# The first line that a command prints, or "-".
proc machine::first_line {args} {
    if {[catch {exec {*}$args 2>@1} text]} { return - }
    return [lindex [split $text \n] 0]
}

proc machine::load {} { return [lrange [read /proc/loadavg] 0 2] }

proc machine::describe {} {
    set processor unknown
    regexp -line {^model name\s*:\s*(.*)$} [read /proc/cpuinfo] -> processor
    set memory 0
    regexp {MemTotal:\s+(\d+) kB} [read /proc/meminfo] -> memory
    set system unknown
    regexp -line {^PRETTY_NAME="(.*)"$} [read /etc/os-release] -> system
    list processor $processor \
        cores [regexp -all -line {^processor\s*:} [read /proc/cpuinfo]] \
        memory "[expr {$memory / 1048576}] GiB" system $system \
        date [clock format [clock seconds] -gmt 1 -format "%Y-%m-%d %H:%M UTC"] \
        load_at_start [load]
}

proc machine::versions {} {
    list qxsh [first_line git -C $counter::project describe --always --dirty] \
        tcl [info patchlevel] compiler [first_line c++ --version] \
        "ARM compiler" [first_line arm-linux-gnueabihf-g++ --version] \
        valgrind [first_line valgrind --version] qemu [first_line qemu-arm --version] \
        critcl [package_version critcl] Python [first_line /usr/bin/python3 --version] \
        cffi [package_version python3-cffi-backend] LuaJIT [package_version luajit] \
        "Google Benchmark" [package_version libbenchmark-dev]
}

proc machine::package_version {name} {
    first_line dpkg-query -W -f {${Version}\n} $name
}
