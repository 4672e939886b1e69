# The script packages of qxsh; add this folder to auto_path to have them.
package ifneeded qx_sim 0.1 [list source [file join $dir qx_sim.tcl]]
