# The package qx: help, records as data, statuses, lint. It brings no command that begins with qx_.
package ifneeded qx 0.1 [list source [file join $dir qx.tcl]]
