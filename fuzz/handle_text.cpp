// Fuzz target: handle text. Conversion of any word to a pointer of any type, through every entry
// point and repeatedly, checked against a model that uses only the text; and hex digits. Input: how
// the word is used, then the word.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/target.h"
#include "fuzz/tcl_words.h"
#include "runtime/handle.h"
#include "runtime/object_table.h"

#include <array>
#include <cstring>

namespace fuzz {

namespace {

Tcl_Interp *interp;

struct conversion
{
    const model_type *type; ///< null: any
    int flags;
    bool by_text;
    bool with_interp;
};

conversion read_conversion(bytes &input)
{
    const std::uint8_t choice = input.byte();
    const auto &types = model_types();
    const std::size_t number = (choice & 15U) % (types.size() + 1);
    return {number == types.size() ? nullptr : &types[number],
            (choice & 16U) != 0 ? swig_disown : 0, (choice & 32U) != 0, (choice & 64U) == 0};
}

// Other readings of the object must not change the conversion.
void use(const conversion &how, Tcl_Obj *object, const std::string &word)
{
    const handle_reading right = read_handle(word, how.type, how.with_interp);
    Tcl_Interp *const here = how.with_interp ? interp : nullptr;
    swig_type_record *const type = how.type != nullptr ? how.type->record : nullptr;
    const bool takes_out =
        right.known && right.good && right.typed && (how.flags & swig_disown) != 0;
    if (right.unconverted != nullptr)
        qxsh::object_table::acquire(right.unconverted);

    void *pointer = nullptr;
    Tcl_SetObjResult(interp, held{"untouched"});
    const int status =
        how.by_text ? SWIG_Tcl_ConvertPtrFromString(here, word.c_str(), &pointer, type, how.flags)
                    : swig_convert_ptr(here, object, &pointer, type, how.flags);
    expect(status == 0 || status == -1, "a conversion succeeds or fails");
    if (right.known) {
        expect_equal(status, right.good ? 0 : -1, "the conversion's answer", word);
        if (right.good)
            expect_equal(pointer, right.pointer, "the pointer", word);
        if (right.unconverted != nullptr)
            expect_equal(qxsh::object_table::owned(right.unconverted), !takes_out, "ownership",
                         word);
    }
    qxsh::object_table::disown(right.unconverted);
    const std::string_view message = Tcl_GetStringResult(interp);
    expect(message.empty() || message == "untouched", "no conversion leaves a message");
    std::string_view text = held{object}.text();
    expect_equal(text, word, "the word's own text");
}

void check_words(bytes &input)
{
    std::array<conversion, 4> uses;
    for (conversion &each : uses)
        each = read_conversion(input);
    const unsigned way = input.below(shimmer_ways);
    const std::string word = script_text(input.rest());
    const held object{word};
    shimmer(object, way);
    for (const conversion &each : uses)
        use(each, object, word);
    const held copy{Tcl_DuplicateObj(object)};
    for (const conversion &each : uses)
        use(each, copy, word);
}

// Conversion of digits in both directions, and characters that are not digits.
void check_digits(bytes &input)
{
    constexpr std::size_t most = 64;
    const std::size_t size = input.below(most + 1);
    std::string text = input.rest();
    std::array<unsigned char, most> made;
    made.fill(0xa5);
    const char *const end = swig_unpack_hex(text.c_str(), made.data(), size);
    std::array<unsigned char, most> right;
    right.fill(0xa5);
    const std::size_t whole = read_digits(text, right.data(), size);
    expect_equal(end != nullptr, whole == size, "whether all are digits", text);
    if (end != nullptr)
        expect_equal(end - text.c_str(), static_cast<std::ptrdiff_t>(2 * size), "the end", text);
    expect(made == right, "the bytes before a bad digit are written, and no others");

    std::string back(2 * size, '?');
    expect_equal(swig_pack_hex(back.data(), made.data(), size) - back.data(),
                 static_cast<std::ptrdiff_t>(2 * size), "the end of packed digits");
    if (end != nullptr)
        expect_equal(back, text.substr(0, 2 * size), "digits packed again");
}

// New handles: the text equals the model's, and converts back to the pointer.
void check_new(bytes &input)
{
    const model_type &type = model_types()[input.below(model_types().size())];
    const auto address = static_cast<std::uint32_t>(input.number(4));
    void *const pointer = reinterpret_cast<void *>(std::uintptr_t{address});
    if (Tcl_Obj *const made = swig_new_pointer_obj(pointer, type.record); made != nullptr) {
        const held object{made};
        const std::string text{object.text()};
        expect_equal(text, handle_text(address, type.name), "a new handle");
        void *back = nullptr;
        expect_equal(swig_convert_ptr(interp, object, &back, nullptr, 0), 0, "its conversion");
        expect_equal(back, pointer, "its pointer", text);
    } else {
        expect(address != 0 && type.name.size() > 900, "only a long name has no handle");
    }
    const std::string data = input.rest();
    Tcl_Obj *const packed = swig_new_packed_obj(data.data(), data.size(), type.record);
    const std::size_t length = 1 + 2 * data.size() + type.name.size();
    expect_equal(packed != nullptr, length <= 1000, "whether packed bytes have a handle");
    if (packed != nullptr) {
        const held object{packed};
        const std::string_view text = object.text();
        expect_equal(text.size(), length, "a packed handle's length");
        std::string back(data.size(), '?');
        expect(swig_unpack_hex(text.data() + 1, back.data(), back.size()) != nullptr &&
                   back == data && text.ends_with(type.name),
               "a packed handle is bytes and type");
    }
}

} // namespace

void prepare(const char *program)
{
    interp = start_tcl(program);
    keep_commands(interp, "info list error");
    make_object_words(interp);
}

void execute(std::span<const std::uint8_t> data)
{
    bytes input{data};
    switch (input.byte() % 8) {
    case 6:
        return check_digits(input);
    case 7:
        return check_new(input);
    default:
        return check_words(input);
    }
}

} // namespace fuzz
