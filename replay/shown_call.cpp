// One line for a call; see shown_call.h. Records are in shown_record.cpp.
#include "replay/shown_call.h"

namespace qxsh {

namespace {

// Whether a call has written what an argument points to, as far as the recording tells.
bool changed(const recorded_argument &argument)
{
    if (argument.null || argument.before.read != argument.after.read ||
        argument.before.bytes != argument.after.bytes ||
        argument.before.keys.size() != argument.after.keys.size())
        return !argument.null;
    for (std::size_t i = 0; i < argument.before.keys.size(); ++i)
        if (argument.before.keys[i].text != argument.after.keys[i].text)
            return true;
    return false;
}

std::string shown_pointer(const argument_row &argument, bool null, const recorded_memory &memory,
                          const shown_names &names)
{
    if (null)
        return "NULL";
    return list_word(memory.read ? shown_memory(argument, memory, names) : "not read");
}

} // namespace

std::string list_word(const std::string &text)
{
    const bool bare = !text.empty() && text.find_first_of(" {}") == std::string::npos;
    return bare ? text : "{" + text + "}";
}

std::string shown_line(const recorded_call &call, const shown_names &names)
{
    const auto arguments = arguments_of(*call.row);
    std::string text = std::to_string(call.number) + " " + call.row->name.text();
    std::string outs;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const argument_row &row = arguments[i];
        const recorded_argument &given = call.arguments[i];
        const std::string name = row.name.text();
        if (!row.pointer)
            text += " " + name + " " + shown_value(row, given.value, names);
        else if (row.way != direction::out || given.null)
            text += " " + name + " " + shown_pointer(row, given.null, given.before, names);
        if (row.pointer && !given.null &&
            (changed(given) || (row.way != direction::in && call.status == 0)))
            outs += ", " + name + " " + shown_pointer(row, false, given.after, names);
    }
    text += " -> " + names.status(call.status) + (call.fault ? ", injected" : "") + outs;
    if (call.microseconds)
        text += ", " + std::to_string(*call.microseconds) + " us";
    return text;
}

} // namespace qxsh
