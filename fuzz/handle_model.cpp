// The model of handles.
#include "fuzz/handle_model.h"

#include "tests/unit/sample_module.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

namespace fuzz {

namespace {

constexpr std::uintptr_t step = 16;

void *add_step(void *pointer, int *)
{
    return reinterpret_cast<void *>(reinterpret_cast<std::uintptr_t>(pointer) + step);
}

// What the commands return for " cget -this", by name.
const std::map<std::string, std::string> &object_words()
{
    static const std::map<std::string, std::string> words{
        {"lamp", "_78563412_p_alpha"},
        {"lantern", "lamp"},
        {"mirror", "mirror"},
        {"hole", "NULL"},
        {"torn", "_7856341"},
        {"stranger", "nobody"},
        {"zero", "_00000000_p_beta"},
        {"void", ""},
        {"ping", "pong"},
        {"pong", "ping"},
        {"shade", "_12_p_beta"},
    };
    return words;
}

// The name of a global command: two colons or more may stand in front of it.
std::string command_name(const std::string &word)
{
    return word.starts_with("::") ? word.substr(std::min(word.find_first_not_of(':'), word.size()))
                                  : word;
}

int answer(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const words[])
{
    const auto &text = object_words().at(command_name(Tcl_GetString(words[0])));
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_OK;
}

bool is_name(const std::string &word)
{
    return !word.empty() && word.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == word.npos;
}

handle_reading read_digits_and_name(const std::string &word, const model_type *type)
{
    std::array<unsigned char, 4> digits{};
    const std::size_t whole = read_digits(std::string_view{word}.substr(1), digits.data(), 4);
    std::uint32_t address = 0;
    for (unsigned i = 0; i < 4; ++i)
        address |= std::uint32_t{digits[i]} << (8 * i);
    void *const pointer = reinterpret_cast<void *>(std::uintptr_t{address});
    if (type == nullptr)
        return {true, true, false, pointer, pointer};
    if (whole == 4)
        for (const model_cast &each : type->accepts)
            if (word.substr(9) == each.source)
                return {true, true, true,
                        reinterpret_cast<void *>(std::uintptr_t{address} + each.added), pointer};
    return {true, false, false, nullptr, pointer};
}

} // namespace

const std::vector<model_type> &model_types()
{
    static plain_type alpha{"_p_alpha"};
    static plain_type long_one{"_p_" + std::string(1200, 'l')};
    static sample_type beta{"_p_beta"};
    static sample_type gamma{"_p_gamma"};
    static sample_type nothing{"_p_nothing"};
    static sample_type *const filled = [] {
        beta.accept(beta).accept(alpha, add_step);
        gamma.accept(alpha).accept(beta).accept(gamma).accept(nothing, add_step);
        return &beta;
    }();
    static const std::vector<model_type> types{
        {"_p_alpha", {{"_p_alpha", 0}}, alpha},
        {"_p_beta", {{"_p_beta", 0}, {"_p_alpha", step}}, *filled},
        {"_p_gamma",
         {{"_p_alpha", 0}, {"_p_beta", 0}, {"_p_gamma", 0}, {"_p_nothing", step}},
         gamma},
        {"_p_nothing", {}, nothing},
        {long_one->name, {{long_one->name, 0}}, long_one},
    };
    return types;
}

std::size_t read_digits(std::string_view text, unsigned char *into, std::size_t count)
{
    constexpr std::string_view digits = "0123456789abcdef";
    for (std::size_t pair = 0; pair < count; ++pair) {
        if (text.size() < 2 * pair + 2)
            return pair;
        const auto high = digits.find(text[2 * pair]);
        const auto low = digits.find(text[2 * pair + 1]);
        if (high == digits.npos || low == digits.npos)
            return pair;
        into[pair] = static_cast<unsigned char>(high * 16 + low);
    }
    return count;
}

handle_reading read_handle(const std::string &word, const model_type *type, bool evaluates)
{
    if (word.starts_with('_'))
        return read_digits_and_name(word, type);
    if (word == "NULL")
        return {true, true};
    if (!evaluates || word.empty())
        return {true, false};
    if (!is_name(word))
        return {false}; // blanks, brackets, patterns: Tcl may substitute them
    std::string text = word;
    for (int round = 0; round < 10; ++round) {
        const auto place = object_words().find(text);
        if (place == object_words().end())
            return {true, text == "NULL"};
        text = place->second;
        if (text.starts_with('_'))
            return read_digits_and_name(text, type);
    }
    return {true, false}; // a cycle
}

std::string handle_text(std::uint32_t address, std::string_view name)
{
    if (address == 0)
        return "NULL";
    std::string text = "_";
    for (unsigned i = 0; i < 8; ++i)
        text += "0123456789abcdef"[address >> (8 * (i / 2) + (i % 2 == 0 ? 4 : 0)) & 15];
    return text + std::string{name};
}

void make_object_words(Tcl_Interp *interp)
{
    for (const auto &[name, text] : object_words())
        Tcl_CreateObjCommand(interp, name.c_str(), answer, nullptr, nullptr);
}

} // namespace fuzz
