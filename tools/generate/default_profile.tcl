# The default profile for C++: default_profile.h, from which the simulator takes its numbers when it
# is compiled, and the reader of profiles the names of what can be sized and all that a file leaves
# as it is.

proc generate::default_profile {profile} {
    variable note
    set text "// The default profile.\n// $note\n#pragma once\n\n"
    append text "#include <array>\n#include <cstdint>\n#include <string_view>\n\n"
    append text "namespace qxsh \{\n\n"
    append text "struct default_number\n\{\n"
    append text "    std::string_view owner; ///< of a code, OWNER.NAME; otherwise empty\n"
    append text "    std::string_view name;  ///< of a code, its word\n"
    append text "    std::uint32_t number;\n\};\n"
    append text [default_statuses [dict get $profile statuses]]
    set rows {}
    dict for {place words} [dict get $profile codes] {
        dict for {word number} $words { lappend rows [list $place $word $number] }
    }
    append text [default_numbers codes $rows]
    foreach {array kind} {sizes capacities families families} {
        set rows {}
        dict for {name number} [dict get $profile $kind] { lappend rows [list {} $name $number] }
        append text [default_numbers $array $rows]
    }
    append text "\ninline constexpr std::array<std::string_view,"
    append text " [llength [dict get $profile loose]]> default_loose\{\n"
    foreach place [dict get $profile loose] { append text "    \"$place\",\n" }
    append text "\};\n\n// Tables of which a file may say the ids, and the greatest number of each.\n"
    set tables [catalogue::id_tables]
    append text "inline constexpr std::array<default_number,"
    append text " [expr {[llength $tables] / 2}]> id_tables\{\{\n"
    foreach {name greatest} $tables { append text "    \{\"\", \"$name\", ${greatest}u\},\n" }
    append text "\}\};\n"
    write default_profile.h "$text\n\} // namespace qxsh\n"
}

proc generate::default_statuses {statuses} {
    set text "\nstruct default_status\n\{\n    unsigned int number;\n    const char *name;\n"
    append text "    const char *meaning;\n\};\n\n"
    append text "inline constexpr default_status default_statuses\[\] = \{\n"
    foreach {name number meaning} $statuses {
        append text "    \{$number, [quoted $name], [quoted $meaning]\},\n"
    }
    return "$text\};\n"
}

proc generate::default_numbers {array rows} {
    set text "\ninline constexpr default_number default_$array\[\] = \{\n"
    foreach row $rows {
        lassign $row place name number
        append text "    \{\"$place\", \"$name\", $number\},\n"
    }
    return "$text\};\n"
}
