// The construction of words.
#include "fuzz/hostile_words.h"

#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/number_model.h"
#include "runtime/numbers.h"

#include <array>

namespace fuzz {

namespace {

constexpr std::size_t live_words = 32; // more than a command has words
std::array<std::string, live_words> live_answers;

int say_text(ClientData text, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, held{*static_cast<std::string *>(text)});
    return TCL_OK;
}

std::string mangled(const std::string &pointee)
{
    return random_test::mangled(pointee);
}

number_reading reading(std::string_view word, const std::string &native)
{
    if (native == "int")
        return read_int(word);
    if (native == "unsigned char")
        return read_unsigned(word, UINT8_MAX);
    if (native == "unsigned short")
        return read_unsigned(word, UINT16_MAX);
    if (native == "unsigned long long")
        return read_unsigned_long_long(word);
    expect_equal(native, "unsigned int", "a number type");
    return read_unsigned(word, UINT32_MAX);
}

hostile_word number_word(held object, const std::string &native)
{
    const number_reading read = reading(object.text(), native);
    hostile_word made{object, {}};
    if (read.code == SWIG_OK)
        made.number = read.value;
    else
        made.meaning.error = read.code == SWIG_OverflowError ? "OverflowError" : "TypeError";
    return made;
}

} // namespace

void make_live_words(Tcl_Interp *interp)
{
    for (std::size_t i = 0; i < live_words; ++i)
        Tcl_CreateObjCommand(interp, ("live_" + std::to_string(i)).c_str(), say_text,
                             &live_answers[i], nullptr);
    static std::string circle = "circle";
    static std::string nobody = "nobody";
    static std::string hole = "NULL";
    Tcl_CreateObjCommand(interp, "circle", say_text, &circle, nullptr);
    Tcl_CreateObjCommand(interp, "stranger", say_text, &nobody, nullptr);
    Tcl_CreateObjCommand(interp, "hole", say_text, &hole, nullptr);
}

held word_maker::object(const std::string &text)
{
    held made{text};
    shimmer(made, input_.below(shimmer_ways));
    return made;
}

// Any bytes that contain neither a handle nor the name of one of our commands, however Tcl
// substitutes them. Tame ones are not substituted at all.
std::string word_maker::raw(bool tame)
{
    std::string text = script_text(input_.text(24));
    for (char &c : text) {
        if (std::string_view{"_*?\\"}.find(c) != std::string_view::npos)
            c = '-';
        if (tame && std::string_view{"[]{}$;\"\n "}.find(c) != std::string_view::npos)
            c = '.';
    }
    return text;
}

hostile_word word_maker::proper(const live_place &place, std::uint8_t form)
{
    const std::string handle = handle_text(place.address, mangled(place.pointee));
    const std::uint32_t block = place.address == place.block ? place.block : 0;
    if (form % 4 != 0)
        return {object(handle), {}, block, place.count};
    const std::size_t slot = next_live_++ % live_words;
    live_answers[slot] = handle;
    return {object("live_" + std::to_string(slot)), {}, block, place.count};
}

// Never a well-formed handle of this type, except a null one.
hostile_word word_maker::malformed(const std::string &pointee, std::uint8_t form)
{
    const std::string name = mangled(pointee);
    const bool any = pointee == "void"; // accepts handles of every type, and malformed digits
    switch (form % 12) {
    case 0:
        return {object("NULL"), {}};
    case 1:
        return {object("_00000000" + name), {}};
    case 2:
        return {object("hole"), {}};
    case 3:
        return {object("circle"), {"TypeError"}};
    case 4:
        return {object("stranger"), {"TypeError"}};
    case 5:
        return {object(""), {"TypeError"}};
    case 6:
        return {object("_zzzzzzzz" + name), {any ? "" : "TypeError"}};
    case 7:
        return {object("_"), {any ? "" : "TypeError"}};
    case 8:
        return {object("_00000000"), {any ? "" : "TypeError"}};
    case 9:
        return {object("_0000000" + name), {any ? "" : "TypeError"}};
    case 10:
        return {object("_00000000" + name + "x"), {any ? "" : "TypeError"}};
    default:
        return {object("_00000000" + raw(true)), {any ? "" : "TypeError"}};
    }
}

hostile_word word_maker::handle(const std::string &pointee, bool careful)
{
    const std::uint8_t choice = input_.byte();
    const std::uint8_t form = input_.byte();
    if (choice < 176) {
        const auto places = pointee == "void" ? live_.whole() : live_.of(pointee);
        return places.empty() ? malformed(pointee, 0) : proper(places[form % places.size()], form);
    }
    if (choice < 216)
        return malformed(pointee, form);
    if (choice < 236 && !live_.all().empty() && pointee != "void") {
        const live_place &other = live_.all()[form % live_.all().size()];
        if (other.pointee != pointee) {
            hostile_word made = proper(other, form);
            made.meaning.error = "TypeError";
            made.block = made.room = 0;
            return made;
        }
    }
    if (careful) {
        const std::string word = raw(true);
        return {object("." + word), {"TypeError"}};
    }
    const std::string word = raw(false);
    return {object(word), {"TypeError", false}};
}

hostile_word word_maker::number(const std::string &native)
{
    static const std::array<std::string_view, 24> odd{"-1",
                                                      "-0",
                                                      " 7",
                                                      "7 ",
                                                      "+5",
                                                      "0x",
                                                      "0xffffffff",
                                                      "0x100000000",
                                                      "4294967295",
                                                      "-4294967295",
                                                      "2147483648",
                                                      "18446744073709551615",
                                                      "18446744073709551616",
                                                      "1e3",
                                                      "1.5",
                                                      "08",
                                                      "0o17",
                                                      "0b11",
                                                      "",
                                                      "true",
                                                      "{1 2}",
                                                      " -1",
                                                      "-2147483649",
                                                      "0377"};
    const std::uint8_t choice = input_.byte();
    if (choice < 128)
        return number_word(object(std::to_string(choice)), native);
    if (choice < 160)
        return number_word(held{Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(input_.number(8)))},
                           native);
    if (choice < 192)
        return number_word(held{Tcl_NewIntObj(static_cast<int>(input_.number(4)))}, native);
    if (choice < 224)
        return number_word(object(std::string{odd[choice % odd.size()]}), native);
    return number_word(object(script_text(input_.text(24))), native);
}

hostile_word word_maker::limited(const std::string &native, std::uint32_t limit)
{
    const std::uint8_t choice = input_.byte();
    if (choice > 224)
        if (const hostile_word made = number(native);
            !made.meaning.error.empty() || made.number < limit)
            return made;
    if (limit == 0)
        return {object("none"), {"TypeError"}};
    return number_word(object(std::to_string(choice % limit)), native);
}

} // namespace fuzz
