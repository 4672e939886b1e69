// Fuzz target: the command layer under strict memory. Any of the module's commands with handles of
// freed blocks, of places inside blocks, of other types, and of made-up addresses: a handle of a
// freed block is always rejected, and only live blocks are accessed, which the sanitizers check.
// Input: the calls in order.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/live_blocks.h"
#include "fuzz/module.h"
#include "fuzz/tally.h"
#include "fuzz/target.h"

#include "device.h"

#include <cstdlib>

namespace fuzz {

namespace {

constexpr unsigned most_calls = 16;
constexpr std::uint32_t longest_array = 8;

tally calls{"calls"};
tally refused{"refused"};

struct block
{
    std::string pointee;
    std::uint32_t address;
};

class scene
{
public:
    explicit scene(std::span<const std::uint8_t> data) : input_(data) {}
    void play();

private:
    std::string wild_handle(const std::string &pointee, bool &stale);
    std::string number(const random_test::command &what, std::size_t argument);
    void carry_out(const random_test::command &what);
    void learn(const random_test::command &what, const std::string &first_word);
    const block &any(const std::vector<block> &blocks)
    {
        return blocks[input_.below(static_cast<std::uint32_t>(blocks.size()))];
    }

    bytes input_;
    std::vector<block> live_;
    std::vector<block> freed_;
};

// Sets `stale` if the handle is of a freed block.
std::string scene::wild_handle(const std::string &pointee, bool &stale)
{
    const auto handle = [&](std::uint32_t address) {
        return handle_text(address, random_test::mangled(pointee == "void" ? "char" : pointee));
    };
    const std::uint8_t choice = input_.byte();
    switch (choice % 8) {
    case 0:
        return "NULL";
    case 1:
        return handle(static_cast<std::uint32_t>(input_.number(4)));
    case 2:
    case 3:
        if (freed_.empty())
            return handle(choice);
        stale = true;
        return handle(any(freed_).address);
    case 4:
        if (live_.empty())
            return handle(0x10000U + choice);
        return handle(any(live_).address + input_.below(512));
    case 5:
        if (live_.empty())
            return handle(UINT32_MAX);
        return handle(any(live_).address);
    default:
        for (const block &each : live_) {
            if (each.pointee == pointee || pointee == "void")
                return handle(each.address);
        }
        return handle(0x10U + choice);
    }
}

// Keeps arrays small; any other number is valid.
std::string scene::number(const random_test::command &what, std::size_t argument)
{
    const bool size = what.name.ends_with("_array_create") && argument + 1 == what.arguments.size();
    if (size || input_.byte() % 4 != 0)
        return std::to_string(input_.below(longest_array + 1));
    return std::to_string(static_cast<std::uint32_t>(input_.number(4)));
}

// Records what a successful call has created or freed.
void scene::learn(const random_test::command &what, const std::string &first_word)
{
    if (what.name == "qx_data_free") {
        const std::uint32_t address = address_in(first_word);
        for (auto each = live_.begin(); each != live_.end(); ++each) {
            if (each->address == address) {
                freed_.push_back(*each);
                live_.erase(each);
                return;
            }
        }
        expect(first_word == "NULL", "what is freed was a block");
    } else if (what.name.ends_with("_create") && address_in(result()) != 0) {
        live_.push_back({random_test::pointee_of(what.result), address_in(result())});
    }
}

void scene::carry_out(const random_test::command &what)
{
    std::vector<held> words{held{what.name}};
    bool stale = false;
    for (std::size_t i = 0; i < what.arguments.size(); ++i) {
        const std::string &type = what.arguments[i];
        words.emplace_back(type.ends_with('*') ? wild_handle(random_test::pointee_of(type), stale)
                                               : number(what, i));
    }
    const std::string first_word = words.size() > 1 ? std::string{words[1].text()} : "";
    const int status = evaluate({words.begin(), words.end()});
    ++calls;
    if (status == TCL_OK) {
        expect(!stale, what.name + " refuses a handle of a freed block");
        learn(what, first_word);
        return;
    }
    ++refused;
    const std::string middle = " in method '" + what.name + "', argument ";
    expect(status == TCL_ERROR && (result().starts_with("SystemError" + middle) ||
                                   result().starts_with("TypeError" + middle) ||
                                   result().starts_with("OverflowError" + middle)),
           "a refused word is told of: " + result());
}

void scene::play()
{
    bool device_used = false;
    for (unsigned calls = 0; calls < most_calls && !input_.empty(); ++calls) {
        const auto &what = any_command(input_.below(65536));
        device_used = device_used || what.result == "status";
        carry_out(what);
    }
    for (const block &each : live_) {
        const held name{"qx_data_free"};
        const held handle{handle_text(each.address, random_test::mangled(each.pointee))};
        expect(evaluate({name, handle}) == TCL_OK, "a live block is freed");
    }
    if (device_used)
        qxsim::reset_devices();
}

void swallow(const char *, std::size_t) {}

} // namespace

void prepare(const char *program)
{
    setenv("QXSH_STRICT_MEMORY", "1", 1);
    start_module(program, swallow);
}

void execute(std::span<const std::uint8_t> data)
{
    scene{data}.play();
}

} // namespace fuzz
