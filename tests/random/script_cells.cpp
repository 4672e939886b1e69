// The rest of the random script: cells, whole blocks, and how a command is written, with words as
// they should be or not.
#include "script.h"

namespace random_test {

// ----------------------------------------------------------------------------------- cells

// What a read gives: the whole number, of 64 bits only the lower half, with its sign.
static std::string read_result(const number_type &type, std::uint64_t value)
{
    if (type.name == std::string{"i32"})
        return std::to_string(static_cast<std::int32_t>(value));
    if (type.width == 8) {
        const std::int64_t half = static_cast<std::int32_t>(value);
        return std::to_string(static_cast<std::uint64_t>(half));
    }
    return std::to_string(value);
}

void script::cell(const action &next)
{
    const number_type &type = *next.number;
    if (next.what == deed::cell_create || next.what == deed::cell_array_create) {
        const number_choice chosen = number(type);
        const bool array = next.what == deed::cell_array_create;
        const std::uint32_t count = !array ? 1 : chance_.percent(5) ? 0 : 1 + chance_.below(9);
        block &added = blocks_.add(nullptr, &type, count);
        call made{next.called, {chosen.word}, "made " + added.variable + " [", "]"};
        if (array)
            made.words.push_back(std::to_string(count));
        bool done = false;
        emit(made, [&] {
            done = true;
            for (std::uint32_t i = 0; i < count; ++i)
                store({&added, i * type.width}, type.width, chosen.value);
            return effect{"", mangled(type.native)};
        });
        if (!done)
            blocks_.remove(added);
        return;
    }
    const spot self = target(type.native);
    const std::uint32_t index = next.what == deed::cell_get ? 0 : slot(self.at, type.width);
    const place at = self.at ? self.at.plus(index * type.width) : place{};
    if (next.what == deed::cell_array_set) {
        const number_choice chosen = number(type);
        return emit({next.called, {self.word, chosen.word, std::to_string(index)}, "", ""}, [&] {
            if (at)
                store(at, type.width, chosen.value);
            return effect{};
        });
    }
    call made{next.called, {self.word}, "", ""};
    if (next.what == deed::cell_array_get)
        made.words.push_back(std::to_string(index));
    emit(made, [&] {
        const std::uint64_t value = at ? load(at, type.width) : 0;
        const std::string printed = type.width == 8 ? std::to_string(value) + "\n" : "";
        return effect{printed, read_result(type, value)};
    });
}

// ----------------------------------------------------------------------------------- blocks

void script::free_block(const action &next)
{
    if (blocks_.live().empty() || chance_.percent(10))
        return emit({next.called, {"NULL"}, "", ""}, [] { return effect{}; });
    block &gone = blocks_.any();
    bool done = false;
    emit({next.called, {"$" + gone.variable}, "", ""}, [&] {
        done = true;
        return effect{};
    });
    if (done)
        blocks_.remove(gone);
}

void script::show_bytes(block &shown)
{
    line("bytes $" + shown.variable + " 0 " + std::to_string(shown.bytes.size()), "",
         ": " + digits(shown));
}

void script::fill_bytes(block &filled)
{
    for (std::uint8_t &each : filled.bytes)
        each = static_cast<std::uint8_t>(chance_.bits());
    line("fill $" + filled.variable + " {" + digits(filled) + "}", "", ": ");
}

// ---------------------------------------------------------------------------------- writing

void script::line(const std::string &text, const std::string &printed, const std::string &answer)
{
    ++lines_;
    commands_ << "go " << lines_ << " {" << text << "}\n";
    output_ << printed << lines_ << answer << "\n";
}

// Makes the words improper; `message` is what the shell answers. False if there is nothing to
// spoil.
bool script::damage(call &made, std::string &message)
{
    const command &what = *made.what;
    const std::size_t count = what.arguments.size();
    const std::uint32_t kind = chance_.below(10);
    if (kind == 0 || count == 0) {
        made.words.push_back("surplus");
        message = "Wrong # args." + what.usage_tail() + " argument " + std::to_string(count + 1);
    } else if (kind == 1) {
        made.words.resize(chance_.below(static_cast<std::uint32_t>(count)));
        message = "Wrong number of arguments " + what.usage_tail() + " argument " +
                  std::to_string(made.words.size() + 1);
    }
    if (!message.empty()) {
        message += " (NONE)";
        return true;
    }
    // One argument, or one and another behind it: the first one counts.
    const std::uint32_t first = chance_.below(static_cast<std::uint32_t>(count));
    for (std::size_t number = first; number < count; number += 1 + chance_.below(4)) {
        const std::string &type = what.arguments[number];
        std::string category = "TypeError";
        if (type == "void *")
            return false;
        if (const number_type *const declared = number_declared(type); declared != nullptr) {
            const auto place = static_cast<std::size_t>(declared - number_types().data());
            const number_word *word = nullptr;
            do
                word = &chance_.of(all_.words);
            while (word->readings[place].value);
            made.words[number] = word->text;
            category = word->readings[place].category;
        } else {
            made.words[number] = blocks_.bad_word(pointee_of(type));
        }
        if (number == first)
            message = category + " in method '" + what.name + "', argument " +
                      std::to_string(number + 1) + " of type '" + type + "' (SWIG " + category +
                      ")";
    }
    return true;
}

void script::emit(call made, const std::function<effect()> &carried_out)
{
    std::string message;
    const bool spoilt = chance_.percent(8) && damage(made, message);
    std::string text = made.before + made.what->name;
    for (const std::string &word : made.words)
        text += " " + word;
    text += made.after;
    if (spoilt) {
        ++refused_;
        line(text, "", "! " + message);
        return;
    }
    called_.insert(made.what->name);
    const effect done = carried_out();
    line(text, done.printed, ": " + done.result);
}

} // namespace random_test
