# Package qx: what a person at the prompt and a script in CI want beside the 1093 commands. All of it is in
# namespace qx, in one file a part. Relies on the files beside this one.
#
# Its commands are procedures of the parts' own namespaces, for one of them is named `set`: no code of the
# package runs in the namespace qx itself, where it would take that one for Tcl's.

namespace eval qx {}

foreach part {catalogue} { source [file join [file dirname [info script]] $part.tcl] }

package provide qx 0.1
