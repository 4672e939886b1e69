# Package qx: what a person at the prompt and a script in CI want beside the 1093 commands. All of
# it is in namespace qx, in one file a part. Relies on the files beside this one.
#
# Those of qx::sim and qx::catalogue are called by these names. The commands in the namespace qx are
# other names for procedures in the parts' own namespaces, or come with the package's library when
# one of them is called first. One of them is named `set`: no code of the package runs in the
# namespace qx itself, where it would take that one for Tcl's.

namespace eval qx {}

apply {{folder parts commands} {
    foreach part $parts { source [file join $folder $part.tcl] }
    foreach name {get set template reading::value status::judge_calls sim::flow_key
            sim::flow_slot} {
        qx::handle::load_at_first_call ::qx::$name
    }
    foreach {name procedure} $commands { interp alias {} ::qx::$name {} ::qx::$procedure }
}} [file dirname [info script]] {
    catalogue_data catalogue wording handles reading help status why script_parser lint sim
} {
    diff     reading::diff
    json     reading::json
    help     help::about
    apropos  help::apropos
    areas    help::areas
    check    status::check
    watch    status::watch
    why      why::explain
    lint     lint::file
}
