# The package of qxsh's commands for any Tcl shell. The dynamic loader finds the SDK library.
package ifneeded demo 0.0 [list load [file join $dir libdemo[info sharedlibextension]] Demo]
