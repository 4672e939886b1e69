// Fuzz target: the command layer. Any of the module's commands with valid and hostile words, in an
// interpreter without other harmful commands: each call has the result that its words require, with
// the message and error code of the first bad one, and no memory outside live blocks is accessed.
// Input: the calls in order.
#include "fuzz/bytes.h"
#include "fuzz/call_scene.h"
#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/hostile_words.h"
#include "fuzz/module.h"
#include "fuzz/tally.h"
#include "fuzz/target.h"

#include "device.h"

namespace fuzz {

namespace {

constexpr unsigned most_calls = 12;
constexpr std::uint32_t longest_array = 8;

tally calls{"calls"};
tally hostile{"hostile words"};

class scene
{
public:
    explicit scene(std::span<const std::uint8_t> data)
        : input_(data), live_(tables()), words_(input_, live_)
    {}
    void play();

private:
    struct call
    {
        const random_test::command *what;
        std::vector<hostile_word> words;
    };

    call decode(const random_test::command &what);
    hostile_word word_for(const call &made, std::size_t number);
    std::string expected_message(const call &made, bool &known) const;
    void carry_out(const call &made);
    void learn(const call &made);
    void create(const std::string &pointee);

    bytes input_;
    live_blocks live_;
    word_maker words_;
};

bool is_call_of_sdk(const random_test::command &what)
{
    return what.result == "status";
}

// Creates a block, so that there is one of the type.
void scene::create(const std::string &pointee)
{
    const random_test::record *const record = tables().find_record(pointee);
    std::vector<held> words;
    if (record != nullptr) {
        words.emplace_back(record->stem + "_array_create");
    } else {
        words.emplace_back(std::string{"qx_"} + random_test::number_declared(pointee)->cell +
                           "_array_create");
        words.emplace_back("0");
    }
    constexpr std::uint32_t count = 4;
    words.emplace_back(std::to_string(count));
    const std::vector<Tcl_Obj *> objects(words.begin(), words.end());
    expect(evaluate(objects) == TCL_OK, "a block is created");
    live_.add(pointee, address_in(result()), count);
}

// Keeps indexes that no function checks inside the block, and arrays small.
hostile_word scene::word_for(const call &made, std::size_t number)
{
    const random_test::command &what = *made.what;
    const std::string &type = what.arguments[number];
    const bool array_set = what.name.ends_with("_array_set");
    const bool cell_get = what.name.ends_with("_array_get") &&
                          random_test::number_declared(random_test::pointee_of(what.arguments[0]));
    const bool last = number + 1 == what.arguments.size();
    if (type.ends_with('*')) {
        const std::string pointee = random_test::pointee_of(type);
        const bool unchecked = array_set || cell_get || is_call_of_sdk(what) || pointee == "void";
        const hostile_word word = words_.handle(pointee, unchecked);
        // The simulator reads as many associations as the count says, up to four.
        if (what.name == "qx_ipsec_sa_add" && word.room != 0 && word.room < qxsim::sa_bundle_limit)
            return {held{"NULL"}, {}};
        return word;
    }
    if (last && (array_set || cell_get)) {
        const std::uint32_t room = made.words[0].room;
        return words_.limited(type, room == 0 ? longest_array : room);
    }
    if (last && what.name.ends_with("_array_create"))
        return words_.limited(type, longest_array + 1);
    return words_.number(type);
}

scene::call scene::decode(const random_test::command &what)
{
    call made{&what, {}};
    const std::uint8_t choice = input_.byte();
    for (const std::string &type : what.arguments) {
        const std::string pointee = random_test::pointee_of(type);
        if (type.ends_with('*') && pointee != "void" && choice < 192 && live_.of(pointee).empty())
            create(pointee);
    }
    for (std::size_t i = 0; i < what.arguments.size(); ++i)
        made.words.push_back(word_for(made, i));
    if (choice % 32 == 1)
        made.words.push_back({held{"surplus"}, {}});
    else if (choice % 32 == 2 && !made.words.empty())
        made.words.erase(made.words.begin() +
                             input_.below(static_cast<std::uint32_t>(made.words.size())),
                         made.words.end());
    return made;
}

// The message that the script has to get; empty for success. Not known if a word before the first
// bad one is not.
std::string scene::expected_message(const call &made, bool &known) const
{
    const random_test::command &what = *made.what;
    const auto counted = [&](const char *text, std::size_t argument) {
        return text + what.usage_tail() + " argument " + std::to_string(argument);
    };
    known = true;
    if (made.words.size() < what.arguments.size())
        return counted("Wrong number of arguments ", made.words.size() + 1);
    if (made.words.size() > what.arguments.size())
        return counted("Wrong # args.", what.arguments.size() + 1);
    for (std::size_t i = 0; i < made.words.size(); ++i) {
        const word_meaning &meaning = made.words[i].meaning;
        known = known && meaning.known;
        if (!known)
            return "";
        if (!meaning.error.empty())
            return meaning.error + " in method '" + what.name + "', argument " +
                   std::to_string(i + 1) + " of type '" + what.arguments[i] + "'";
    }
    return "";
}

// Records the blocks that the call has created or freed.
void scene::learn(const call &made)
{
    const random_test::command &what = *made.what;
    if (what.name == "qx_data_free") {
        live_.remove(made.words[0].block);
    } else if (what.result.ends_with('*')) {
        const std::string pointee = random_test::pointee_of(what.result);
        const std::uint32_t address = address_in(result());
        expect(address != 0 || result() == "NULL", "a result is a handle");
        const bool array = what.name.ends_with("_array_create");
        if (address != 0 && (array || what.name.ends_with("_create")))
            live_.add(pointee, address,
                      array ? static_cast<std::uint32_t>(made.words.back().number) : 1);
        else if (address != 0)
            live_.found(pointee, address);
    } else if (is_call_of_sdk(what)) {
        const auto status = static_cast<std::uint32_t>(std::stoul(result()));
        if (!documented(what.name, status))
            finding(what.name + " answered " + result());
    }
}

void scene::carry_out(const call &made)
{
    const held name{made.what->name};
    std::vector<Tcl_Obj *> objects{name};
    std::vector<std::string> texts;
    for (const hostile_word &word : made.words) {
        objects.push_back(word.object);
        if (!word.meaning.known || !word.meaning.error.empty())
            ++hostile;
        texts.emplace_back(held{Tcl_DuplicateObj(word.object)}.text());
    }
    ++calls;
    bool known;
    const std::string right = expected_message(made, known);
    const int status = evaluate(objects);
    expect(status == TCL_OK || status == TCL_ERROR, "a command succeeds or fails");
    if (known) {
        expect_equal(status == TCL_OK ? "" : result(), right, made.what->name);
        if (status == TCL_OK)
            learn(made);
    }
    if (status == TCL_OK && (made.what->result == "none"))
        expect_equal(result(), "", made.what->name);
    for (std::size_t i = 0; i < texts.size(); ++i)
        expect_equal(made.words[i].object.text(), texts[i], "a word's own text");
}

void scene::play()
{
    bool device_used = false;
    for (unsigned calls = 0; calls < most_calls && !input_.empty(); ++calls) {
        const auto &what = any_command(input_.below(65536));
        device_used = device_used || is_call_of_sdk(what);
        carry_out(decode(what));
    }
    for (const live_place &block : live_.whole()) {
        const held name{"qx_data_free"};
        const held handle{handle_text(block.address, random_test::mangled(block.pointee))};
        expect(evaluate({name, handle}) == TCL_OK, "a block is freed");
    }
    if (device_used)
        qxsim::reset_devices();
}

std::uint32_t printed = 0; ///< a sum, so that all bytes are looked at

void swallow(const char *bytes, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i)
        printed += static_cast<unsigned char>(bytes[i]);
}

} // namespace

void prepare(const char *program)
{
    make_live_words(start_module(program, swallow));
}

void execute(std::span<const std::uint8_t> data)
{
    scene{data}.play();
}

} // namespace fuzz
