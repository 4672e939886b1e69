// Fuzz target: formats of swig_get_args. Any format with any words and matching targets, checked
// against a model: the value of each target, which argument fails, and the message. Input: options,
// then the format, the words, and for each letter whether its target is null.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/number_model.h"
#include "fuzz/target.h"
#include "fuzz/tcl_words.h"
#include "runtime/arguments.h"
#include "runtime/constants.h"
#include "runtime/known_objects.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <optional>
#include <vector>

namespace fuzz {

namespace {

Tcl_Interp *interp;
constexpr std::size_t most_letters = 10;
constexpr std::size_t most_words = 12;
constexpr unsigned char untouched = 0xa5;

// The target of a letter, large enough for any.
struct slot
{
    alignas(8) unsigned char value[8];
    alignas(8) unsigned char length[8];
};

// A letter of the format as the model sees it.
struct letter
{
    char kind;
    bool upper;
    bool optional;
    bool with_length;
};

struct format_reading
{
    std::vector<letter> letters;
    bool surplus_passes;
    std::string tail;
};

using null_marks = std::array<bool, most_letters>;

// A "#" belongs to the s before it only if that has a target; otherwise it is a letter.
format_reading read_format(const std::string &format, const null_marks &nulls)
{
    format_reading made{{}, false, ""};
    const std::size_t end = std::min(format.find_first_of(":;"), format.size());
    made.surplus_passes = end < format.size() && format[end] == ';';
    if (const auto colon = format.find(':'); colon != format.npos)
        made.tail = format.substr(colon);
    else if (const auto other = format.find(';'); other != format.npos)
        made.tail = format.substr(other);
    bool optional = false;
    for (std::size_t i = 0; i < end; ++i) {
        if (format[i] == '|') {
            optional = true;
            continue;
        }
        letter one{format[i], false, optional, false};
        if (std::isupper(static_cast<unsigned char>(one.kind)) != 0) {
            one.kind = static_cast<char>(one.kind - 'A' + 'a');
            one.upper = true;
        }
        const bool null = nulls[made.letters.size()];
        if (one.kind == 's' && !null && i + 1 < end && format[i + 1] == '#') {
            one.with_length = true;
            ++i;
        }
        made.letters.push_back(one);
    }
    return made;
}

struct scene
{
    std::string format;
    std::vector<held> words; ///< the command's name first
    std::vector<Tcl_Obj *> objects;
    const model_type *type; ///< of every letter p
    std::array<slot, most_letters> slots;
    null_marks null_targets;
};

// A format with a limited number of letters.
std::string read_format_text(bytes &input)
{
    std::string text = input.text(40);
    text.resize(std::min(text.find('\0'), text.size()));
    std::size_t letters = 0;
    for (std::size_t i = 0; i < text.size() && text[i] != ':' && text[i] != ';'; ++i)
        if (++letters > most_letters)
            return text.substr(0, i);
    return text;
}

scene read_scene(bytes &input)
{
    scene made;
    const std::uint8_t options = input.byte();
    const auto &types = model_types();
    const std::size_t type = (options & 15U) % (types.size() + 1);
    made.type = type < types.size() ? &types[type] : nullptr;
    const auto nulls = static_cast<std::uint32_t>(input.number(2));
    for (std::size_t i = 0; i < most_letters; ++i)
        made.null_targets[i] = (options & 16U) != 0 && (nulls >> i & 1U) != 0;
    made.format = read_format_text(input);
    const std::size_t count = 1 + input.below(most_words);
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned way = input.below(shimmer_ways);
        made.words.emplace_back(script_text(input.text(24)));
        shimmer(made.words.back(), way);
    }
    for (const held &word : made.words)
        made.objects.push_back(word);
    std::memset(made.slots.data(), untouched, sizeof made.slots);
    return made;
}

// ------------------------------------------------------------------------------------ the model

template <class Value> void put(unsigned char *place, Value value)
{
    std::memcpy(place, &value, sizeof value);
}

// The object that the letter reads: the value of a constant, if the word names one.
Tcl_Obj *meant(Tcl_Obj *word, bool upper)
{
    if (!upper || held{word}.text() != "LAMP")
        return word;
    return Tcl_GetVar2Ex(interp, "LAMP", nullptr, TCL_GLOBAL_ONLY);
}

enum class outcome { good, bad, unknown };

outcome store_long(std::string_view word, char kind, slot &into)
{
    const auto value = long32(word);
    if (!value)
        return outcome::bad;
    switch (kind) {
    case 'i':
        put(into.value, int{*value});
        break;
    case 'l':
        put(into.value, long{*value});
        break;
    case 'h':
        put(into.value, static_cast<short>(*value));
        break;
    default:
        put(into.value, static_cast<unsigned char>(*value));
    }
    return outcome::good;
}

outcome store(Tcl_Obj *word, const letter &how, const model_type *type, slot &into)
{
    const std::string text{held{word}.text()};
    switch (how.kind) {
    case 'i':
    case 'l':
    case 'h':
    case 'b':
        return store_long(text, how.kind, into);
    case 'f':
    case 'd': {
        double value;
        if (Tcl_GetDoubleFromObj(nullptr, word, &value) != TCL_OK)
            return outcome::bad;
        if (how.kind == 'f')
            put(into.value, static_cast<float>(value));
        else
            put(into.value, value);
        return outcome::good;
    }
    case 's':
        put(into.value, static_cast<const char *>(Tcl_GetString(word)));
        if (how.with_length)
            put(into.length, static_cast<int>(text.size()));
        return outcome::good;
    case 'c':
        put(into.value, text.empty() ? '\0' : text[0]);
        return outcome::good;
    case 'o':
        put(into.value, word);
        return outcome::good;
    case 'p': {
        const handle_reading right = read_handle(text, type, true);
        if (!right.known)
            return outcome::unknown;
        put(into.value, right.pointer);
        return right.good ? outcome::good : outcome::bad;
    }
    default:
        return outcome::good; // any other letter consumes its word and stores nothing
    }
}

struct expectation
{
    outcome what = outcome::good;
    std::string message_end; ///< of a failure
    std::size_t stored = 0;  ///< letters whose targets are right
};

expectation carry_out(scene &with, const format_reading &format)
{
    const auto fails = [&](const std::string &message, std::size_t argument) {
        return expectation{outcome::bad,
                           message + format.tail + " argument " + std::to_string(argument + 1),
                           argument};
    };
    const std::size_t given = with.words.size() - 1;
    for (std::size_t i = 0; i < format.letters.size(); ++i) {
        const letter &each = format.letters[i];
        if (i >= given) {
            if (each.optional)
                return {outcome::good, "", i};
            return fails("Wrong number of arguments ", i);
        }
        if (with.null_targets[i])
            continue;
        Tcl_Obj *const word = meant(with.words[i + 1], each.upper);
        const outcome done = store(word, each, with.type, with.slots[i]);
        if (done == outcome::unknown)
            return {done, "", i};
        if (done == outcome::bad)
            return fails("", i);
    }
    if (given > format.letters.size() && !format.surplus_passes)
        return fails("Wrong # args.", format.letters.size());
    return {outcome::good, "", format.letters.size()};
}

// --------------------------------------------------------------------------------------- the call

// One pointer per letter, two for p and s# unless the first is null; pointers after the last one
// are not used.
int call(scene &with, const format_reading &format)
{
    constexpr std::size_t most_targets = 20;
    static_assert(most_targets == 2 * most_letters);
    std::array<void *, most_targets> targets{};
    std::size_t next = 0;
    for (std::size_t i = 0; i < format.letters.size(); ++i) {
        const letter &each = format.letters[i];
        targets.at(next++) = with.null_targets[i] ? nullptr : with.slots[i].value;
        if (each.kind == 'p' && !with.null_targets[i])
            targets.at(next++) = with.type != nullptr ? with.type->record : nullptr;
        if (each.with_length)
            targets.at(next++) = with.slots[i].length;
    }
    const auto &t = targets;
    return swig_get_args(interp, static_cast<int>(with.objects.size()), with.objects.data(),
                         with.format.c_str(), t[0], t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8],
                         t[9], t[10], t[11], t[12], t[13], t[14], t[15], t[16], t[17], t[18],
                         t[19]);
}

// Compares the values in the order of letters, and texts by their content.
void compare(const scene &is, const scene &should, const expectation &right)
{
    for (std::size_t i = 0; i < most_letters; ++i) {
        const bool meaningless = i == right.stored && right.what != outcome::good;
        if (meaningless)
            continue; // unspecified for a pointer that failed
        if (std::memcmp(&is.slots[i], &should.slots[i], sizeof(slot)) != 0)
            finding("argument " + std::to_string(i + 1) + " of \"" + is.format +
                    "\" is stored wrongly");
    }
}

// Without targets, only the number of words is checked.
void check_count(scene &with)
{
    Tcl_ResetResult(interp);
    const int status = qxsh::check_word_count(interp, static_cast<int>(with.objects.size()),
                                              with.objects.data(), with.format.c_str());
    scene counted = with;
    counted.null_targets.fill(true);
    const format_reading format = read_format(with.format, counted.null_targets);
    const expectation right = carry_out(counted, format);
    expect_equal(status == TCL_OK, right.what == outcome::good, "the count's answer", with.format);
    if (status != TCL_OK)
        expect_equal(std::string{Tcl_GetStringResult(interp)}, right.message_end, "its message");
}

} // namespace

void prepare(const char *program)
{
    interp = start_tcl(program);
    keep_commands(interp, "info list error");
    make_object_words(interp);
    qxsh::learn_known_objects();
    static swig_type_record *alpha = model_types()[0].record;
    static void *const lamp = reinterpret_cast<void *>(std::uintptr_t{0x12345678});
    static const swig_const_info constants[] = {
        {SWIG_POINTER, "LAMP", 0, 0.0, lamp, &alpha},
        {SWIG_END_OF_CONSTANTS, nullptr, 0, 0.0, nullptr, nullptr},
    };
    swig_install_constants(interp, constants);
}

void execute(std::span<const std::uint8_t> data)
{
    bytes input{data};
    scene with = read_scene(input);
    const format_reading format = read_format(with.format, with.null_targets);
    scene model = with;
    const expectation right = carry_out(model, format);
    Tcl_ResetResult(interp);
    const int status = call(with, format);
    if (right.what != outcome::unknown) {
        expect_equal(status == TCL_OK, right.what == outcome::good, "the answer", with.format);
        const std::string_view message = Tcl_GetStringResult(interp);
        if (right.what == outcome::bad)
            expect(message.ends_with(right.message_end), message);
        else
            expect_equal(message, "", "the result");
        compare(with, model, right);
    }
    check_count(with);
}

} // namespace fuzz
