// qx-trace script: a Tcl script that makes the calls of a recording again. No text in it needs
// quoting: words are names, numbers, addresses and variables, and braces become quotes around the
// latter. Keys that the recording does not tell are variables, found in a first pass.
#include "replay/device_ids.h"
#include "replay/shown_call.h"
#include "replay/trace.h"

#include "record_numbers.h"
#include "records/values.h"

#include <map>

namespace qxtrace {

using namespace qxsh;

namespace {

constexpr std::size_t most_columns = 100;

// By id_number; what a variable is called.
constexpr const char *id_names[] = {"",   "rtp",         "spd",     "policy",
                                    "sa", "translation", "nexthop", "tunnel"};
static_assert(std::size(id_names) == id_count);

// A line broken at blanks where it is too long: inside braces and quotes a newline separates as
// well as a blank, elsewhere it is escaped.
std::string wrapped(const std::string &line)
{
    const std::string indent = "    ";
    std::string text;
    std::size_t begin = 0; // of what is not in the text yet
    std::size_t columns = 0;
    std::size_t blank = std::string::npos; // the last one that is passed
    bool blank_inside = false;
    int depth = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char one = line[i];
        depth += one == '{' ? 1 : one == '}' ? -1 : 0;
        quoted = quoted != (one == '"');
        if (columns + (i - begin) >= most_columns - 2 && blank != std::string::npos) {
            text += line.substr(begin, blank - begin) + (blank_inside ? "\n" : " \\\n") + indent;
            begin = blank + 1;
            columns = indent.size();
            blank = std::string::npos;
        }
        if (one == ' ') {
            blank = i;
            blank_inside = depth > 0 || quoted;
        }
    }
    return text + line.substr(begin) + "\n";
}

// One word of a command: in quotes if it has variables.
std::string script_word(const std::string &text)
{
    if (text.find('$') == std::string::npos || text.find_first_of(" {") == std::string::npos)
        return list_word(text);
    return "\"" + text + "\"";
}

// Ids and keys as variables.
class variables : public shown_style
{
public:
    struct key
    {
        std::string name;
        std::string comment;
    };

    std::string id(unsigned kind, std::uint32_t number) const override
    {
        const std::string *const name = ids_.find(kind, device_of(*call_), number);
        return name == nullptr ? std::string{} : "$" + *name;
    }
    std::string secret(const field_row &field, unsigned size,
                       const std::string &hidden) const override;

    void at(const recorded_call &call) { call_ = &call; }
    // A variable for the id that a call puts out.
    std::string new_id(unsigned kind, std::uint32_t number)
    {
        std::string name = id_names[kind] + std::to_string(++counts_[kind]);
        ids_.note(kind, device_of(*call_), number, name);
        return name;
    }
    void again()
    {
        ids_ = {};
        counts_ = {};
        unknown_ = 0;
    }
    const std::vector<key> &keys() const { return keys_; }

private:
    const recorded_call *call_ = nullptr;
    device_ids<std::string> ids_{};
    std::map<unsigned, unsigned> counts_{};
    mutable std::map<std::string, std::size_t> by_text_{}; // fingerprints, or numbers of places
    mutable std::vector<key> keys_{};
    mutable std::uint64_t unknown_ = 0; // keys of which nothing but the length is known
};

// Equal fingerprints are of equal keys; about keys without one nothing is known.
std::string variables::secret(const field_row &field, unsigned size,
                              const std::string &hidden) const
{
    if (hidden.empty())
        return {};
    const bool told = hidden.find(',') != std::string::npos;
    const std::string text = told ? hidden : std::to_string(++unknown_);
    const auto [found, is_new] = by_text_.emplace(text, keys_.size());
    if (is_new)
        keys_.push_back({"key" + std::to_string(keys_.size() + 1),
                         field.name.text() + std::string{", "} +
                             (told ? hidden : std::to_string(size) + " bytes") +
                             ", first in call " + std::to_string(call_->number) + ", " +
                             call_->row->name.text()});
    return "$" + keys_[found->second].name;
}

class script_text
{
public:
    explicit script_text(const shown_names &names) : names_(names) {}

    /// The lines for a call.
    std::string call(const recorded_call &call);
    /// The lines in front of all calls.
    std::string head(const recording &from, std::uint64_t calls) const;
    void again() { variables_.again(); }

private:
    std::string cannot(const recorded_call &call) const;
    std::string words_of(const recorded_call &call) const;

    const shown_names &names_;
    variables variables_{};
};

// What qx::call cannot do of a call; an empty text if it can all.
std::string script_text::cannot(const recorded_call &call) const
{
    const auto arguments = arguments_of(*call.row);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const recorded_argument &given = call.arguments[i];
        const std::string name = arguments[i].name.text();
        if (!arguments[i].pointer)
            continue;
        if (given.null && (arguments[i].way == direction::out ||
                           (arguments[i].way == direction::inout && call.status == 0)))
            return name + " was NULL, which qx::call cannot give";
        if (!given.null && arguments[i].way != direction::out && !given.before.read)
            return name + " was not read";
    }
    return {};
}

// The words behind the function. The count of an array is left out, unless that is NULL.
std::string script_text::words_of(const recorded_call &call) const
{
    const auto arguments = arguments_of(*call.row);
    std::vector<bool> counts(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].count >= 0)
            counts[static_cast<std::size_t>(arguments[i].count)] = !call.arguments[i].null;
    std::string text;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const recorded_argument &given = call.arguments[i];
        if (arguments[i].way == direction::out || counts[i])
            continue;
        std::string word = "NULL";
        if (!arguments[i].pointer)
            word = shown_value(arguments[i], given.value, names_, variables_);
        else if (!given.null)
            word = shown_memory(arguments[i], given.before, names_, variables_);
        text += " " + script_word(word);
    }
    return text;
}

std::string script_text::call(const recorded_call &call)
{
    variables_.at(call);
    if (const std::string what = cannot(call); !what.empty())
        return "# Call " + std::to_string(call.number) + ", " + call.row->name.text() +
               ", is left out: " + what + ".\n";
    std::string text = "qx::call";
    if (call.status != 0)
        text += " -allow " + names_.status(call.status);
    text += std::string{" "} + call.row->name.text() + words_of(call);
    const int made = new_id_argument(*call.row);
    if (call.status != 0 || made < 0)
        return wrapped(text);
    const auto number = static_cast<std::size_t>(made);
    const recorded_memory &id = call.arguments[number].after;
    if (!id.read || id.bytes.size() < 4)
        return wrapped(text);
    const std::uint32_t value = read_number(id.bytes.data(), arguments_of(*call.row)[number].size);
    return wrapped("set " + variables_.new_id(arguments_of(*call.row)[number].id, value) + " [" +
                   text + "]");
}

std::string script_text::head(const recording &from, std::uint64_t calls) const
{
    std::string text = "# " + std::to_string(calls) + " call" + (calls == 1 ? "" : "s") +
                       ", recorded " + from.header().date + "; by qx-trace script.\n";
    text += "package require qx\n\n";
    if (variables_.keys().empty())
        return text;
    text +=
        "# What the recording does not tell, because it is a key or shares bytes with one. Fill it "
        "in:\n# a key as 0x00112233, an address as an address.\n";
    for (const auto &key : variables_.keys())
        text += "set " + key.name + " {} ;# " + key.comment + "\n";
    std::string all = "foreach key {";
    for (const auto &key : variables_.keys())
        all += (&key == variables_.keys().data() ? "" : " ") + key.name;
    text += wrapped(all + "} {") + "    if {[set $key] eq {}} {\n";
    text +=
        "        error \"$key is not in the recording: fill it in at the top of this script\"\n";
    return text + "    }\n}\n\n";
}

} // namespace

int script(const words &given)
{
    expect_words(given, 1);
    const shown_names names{used_profile()};
    recording from{given[0], recording::printing::each_call};
    script_text text{names};
    recorded_call call;
    std::uint64_t calls = 0;
    for (; from.next(call); ++calls)
        text.call(call);
    from.restart();
    text.again();
    print(text.head(from, calls));
    while (from.next(call))
        print(text.call(call));
    return 0;
}

} // namespace qxtrace
