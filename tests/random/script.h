// The random script and what it has to print: commands one by one, each carried out on the model as
// it is written. Numbered lines: "17: result", or "17! message (error code)"; before them what was
// printed.
#pragma once

#include "blocks.h"

#include <functional>
#include <ostream>
#include <set>

namespace random_test {

/// What a command is for.
enum class deed {
    record_create,
    record_array_create,
    record_array_get,
    record_array_set,
    record_init,
    record_dump,
    number_set,
    number_get,
    nested_set,
    nested_get,
    cell_create,
    cell_get,
    cell_array_create,
    cell_array_get,
    cell_array_set,
    block_free,
    bytes_show,
    bytes_fill
};

/// One command of the shell (or one procedure of the prologue) and what it works on.
struct action
{
    deed what;
    const command *called = nullptr;
    const record *type = nullptr;
    const field *member = nullptr;
    const number_type *number = nullptr;
};

/// All commands that call no SDK function, each found in the table under the name that its record
/// and field give it, with the arguments and the result that follow from them; throws
/// std::runtime_error if one is missing, is other than it should be, or is left over.
std::vector<action> all_actions(const tables &all);

class script
{
public:
    /// With `as_made` no handle leads to anything but what was made there.
    script(const tables &all, std::uint64_t seed, bool as_made, std::ostream &commands,
           std::ostream &output);

    /// Writes the given number of commands, and at the end those that show and free every block.
    void write(unsigned count);

    /// The commands called at least once with proper words, and how many calls had improper ones.
    const std::set<std::string> &called() const { return called_; }
    unsigned refused() const { return refused_; }

private:
    struct effect
    {
        std::string printed, result;
    };
    /// A call in the making; its words stand between `before` and `after` in the script.
    struct call
    {
        const command *what;
        std::vector<std::string> words;
        std::string before, after;
    };
    struct number_choice
    {
        std::uint64_t value;
        std::string word;
    };

    void carry_out(const action &next);
    void create(const action &next);
    void array_get(const action &next);
    void array_set(const action &next);
    void init(const action &next);
    void set_number(const action &next);
    void get_number(const action &next);
    void set_nested(const action &next);
    void get_nested(const action &next);
    void cell(const action &next);
    void free_block(const action &next);
    void show_bytes(block &shown);
    void fill_bytes(block &filled);

    void need(const std::string &pointee);
    spot target(const std::string &pointee);
    spot source(const std::string &pointee, place to, bool overlapping);
    number_choice number(const number_type &type);
    std::uint32_t field_index(const field &of);
    std::uint32_t slot(place base, std::uint32_t size);
    std::string number_word_for(const number_type &type, std::uint64_t value);

    void emit(call made, const std::function<effect()> &carried_out);
    bool damage(call &made, std::string &message);
    void line(const std::string &text, const std::string &printed, const std::string &answer);
    std::string handle_result(const std::string &pointee, place at) const;

    const tables &all_;
    std::vector<action> actions_;
    dice chance_;
    blocks blocks_;
    std::ostream &commands_;
    std::ostream &output_;
    unsigned lines_ = 0;
    unsigned refused_ = 0;
    std::set<std::string> called_;
};

} // namespace random_test
