# Package qx: help, whole records, statuses as errors and a script checker, on top of the 1093
# commands. All of it is in the namespace qx, one part per file. Relies on the files beside this
# one.
#
# Procedures of qx::sim and qx::catalogue are called by their full names. The commands in the
# namespace qx are aliases of procedures in the parts' own namespaces, or come from the package's
# library, which is loaded on the first call of one of them. One of them is named `set`: so no code
# of the package runs in the namespace qx itself, where `set` would not be Tcl's.

namespace eval qx {}

apply {{folder parts commands} {
    foreach part $parts { source [file join $folder $part.tcl] }
    foreach name {get set call apply template json diff status::judge_calls sim::flow_key
            sim::flow_slots sim::make_folder record::begin record::end record::now trace::begin
            trace::end trace::pattern trace::counts} {
        qx::handle::load_at_first_call ::qx::$name
    }
    foreach {name procedure} $commands { interp alias {} ::qx::$name {} ::qx::$procedure }
    # The subcommands of the ensemble are those that have help.
    foreach name [dict get [qx::commands::group qx::catalogue] commands] {
        namespace eval ::qx::catalogue [list namespace export [namespace tail $name]]
    }
}} [file dirname [info script]] {
    catalogue_data catalogue nearest profile answers
    commands wording layout example topic help apropos pager
    handles records status trace why tables table_requests columns shown graph
    script_parser progress lint lint_bodies lint_passing lint_calls lint_records lint_json
    lint_package sim
} {
    profile  profile::choose
    new      records::new
    with     records::with
    help     help::about
    apropos  apropos::find
    areas    help::areas
    page     pager::show
    check    status::check
    watch    status::watch
    record   record::choose
    trace    trace::choose
    why      why::explain
    lint     lint::file
    list     tables::list_rows
    show     shown::show
    graph    graph::draw
}
