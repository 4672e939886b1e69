# The public header qx_status.h: the statuses of the default profile, as an enum.

proc generate::status_header {statuses} {
    variable note
    set text "/* The statuses that the simulator's SDK functions return by default. A status never\n"
    append text " * changes its number. $note\n */\n"
    append text "#ifndef QX_STATUS_H\n#define QX_STATUS_H\n\ntypedef enum qx_status \{\n"
    set left [expr {[llength $statuses] / 3}]
    foreach {name number meaning} $statuses {
        set comma [expr {[incr left -1] > 0 ? "," : ""}]
        append text [format "    %-26s /* %s */\n" "$name = $number$comma" $meaning]
    }
    write include/qx_status.h "$text\} qx_status;\n\n#endif\n"
}
