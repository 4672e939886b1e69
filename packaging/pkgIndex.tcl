# The package of qxsh's commands for any Tcl shell. The SDK library is found by the loader.
package ifneeded demo 0.0 [list load [file join $dir libdemo[info sharedlibextension]] Demo]
