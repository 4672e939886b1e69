# The package qx_prompt: line editing, completion, history and careful names at the prompt.
package ifneeded qx_prompt 0.1 [list source [file join $dir prompt.tcl]]
