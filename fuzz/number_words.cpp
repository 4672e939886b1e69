// Fuzz target: number words. All converters on one word, whatever its internal representation,
// checked against the model; and results back. Input: one byte for the object's form, then the
// word.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/number_model.h"
#include "fuzz/target.h"
#include "fuzz/tcl_words.h"
#include "runtime/known_objects.h"
#include "runtime/numbers.h"

#include <bit>
#include <limits>

#if __SIZEOF_LONG__ == 4
#include "tests/unit/number_reference.h"
#endif

namespace fuzz {

namespace {

Tcl_Interp *interp;
constexpr std::string_view before = "untouched";

held made_object(bytes input)
{
    const std::uint8_t form = input.byte();
    switch (form % 8) {
    case 6:
        return held{Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(input.number(8)))};
    case 7:
        if (form < 128)
            return held{Tcl_NewIntObj(static_cast<int>(input.number(4)))};
        return held{Tcl_NewDoubleObj(std::bit_cast<double>(input.number(8)))};
    default: {
        held made{script_text(input.rest())};
        shimmer(made, form % 8);
        return made;
    }
    }
}

void expect_no_message()
{
    expect_equal(std::string_view{Tcl_GetStringResult(interp)}, before, "the interpreter's result");
}

template <class Number>
void check(int (*convert)(Tcl_Interp *, Tcl_Obj *, Number *), Tcl_Obj *object,
           std::string_view word, number_reading right, std::string_view type)
{
    constexpr Number untouched = 77;
    Number value = untouched;
    expect_equal(convert(interp, object, nullptr), right.code, type, word);
    expect_equal(convert(interp, object, &value), right.code, type, word);
    const auto expected = right.code == SWIG_OK ? static_cast<Number>(right.value) : untouched;
    expect_equal(+value, +expected, type, word);
    expect_no_message();
}

// With an interpreter, a failure leaves Tcl's message.
void check_long32(Tcl_Obj *object, std::string_view word)
{
    std::int32_t value = 77;
    const auto right = long32(word);
    expect_equal(qxsh::long32_from_obj(interp, object, value), right.has_value(), "long", word);
    expect_equal(value, right.value_or(77), "long", word);
    const std::string_view message = Tcl_GetStringResult(interp);
    if (right)
        expect_no_message();
    else if (is_integer(word))
        expect_equal(message, "integer value too large to represent", "the message", word);
    else
        expect(message.starts_with("expected integer but got"), message);
    Tcl_SetObjResult(interp, held{before});
}

void check_converters(Tcl_Obj *object, std::string_view word)
{
    check(swig_as_val_int, object, word, read_int(word), "int");
    check(swig_as_val_long, object, word, read_int(word), "long");
    check(swig_as_val_unsigned_char, object, word, read_unsigned(word, UINT8_MAX), "char");
    check(swig_as_val_unsigned_short, object, word, read_unsigned(word, UINT16_MAX), "short");
    check(swig_as_val_unsigned_int, object, word, read_unsigned(word, UINT32_MAX), "unsigned");
    check(swig_as_val_unsigned_long, object, word, read_unsigned(word, UINT32_MAX), "long");
    check(swig_as_val_unsigned_long_long, object, word, read_unsigned_long_long(word), "long long");
    check_long32(object, word);
}

// Where long has 32 bits, also compares with Tcl and the C library.
void check_reference([[maybe_unused]] std::string_view word)
{
#if __SIZEOF_LONG__ == 4
    const auto row = reference_readings(interp, held{word});
    Tcl_SetObjResult(interp, held{before});
    const auto text = [](number_reading right) {
        return right.code == SWIG_OK          ? std::to_string(right.value)
               : right.code == SWIG_TypeError ? std::string{"TypeError"}
                                              : std::string{"OverflowError"};
    };
    const auto signed_value = long32(word);
    expect_equal(row.readings[as_int], signed_value ? std::to_string(*signed_value) : "TypeError",
                 "the model's int", word);
    expect_equal(row.readings[as_unsigned_int], text(read_unsigned(word, UINT32_MAX)),
                 "the model's unsigned", word);
    expect_equal(row.readings[as_unsigned_short], text(read_unsigned(word, UINT16_MAX)),
                 "the model's short", word);
    expect_equal(row.readings[as_unsigned_char], text(read_unsigned(word, UINT8_MAX)),
                 "the model's char", word);
    expect_equal(row.readings[as_unsigned_long_long], text(read_unsigned_long_long(word)),
                 "the model's long long", word);
#endif
}

void check_results(std::uint64_t value)
{
    const held large{swig_from_unsigned_long_long(value)};
    expect_equal(large.text(), std::to_string(value), "a result's text");
    const auto low = static_cast<std::uint32_t>(value);
    const held word{swig_from_unsigned_long(low)};
    expect_equal(word.text(), std::to_string(low), "a result's text");
    expect_equal(static_cast<Tcl_Obj *>(word)->typePtr == qxsh::known.integer_type,
                 low <= qxsh::greatest_integer_result, "whether a result is an integer object");
    const held number{swig_from_int(static_cast<std::int32_t>(low))};
    expect_equal(number.text(), std::to_string(static_cast<std::int32_t>(low)), "a result's text");
}

} // namespace

void prepare(const char *program)
{
    interp = start_tcl(program);
    qxsh::learn_known_objects();
    Tcl_SetObjResult(interp, held{before});
}

void execute(std::span<const std::uint8_t> input)
{
    const held object = made_object(bytes{input});
    const held copy{Tcl_DuplicateObj(object)};
    const std::string word{held{Tcl_DuplicateObj(object)}.text()};
    for (int time = 0; time < 2; ++time)
        check_converters(object, word);
    check_converters(copy, word);
    expect_equal(object.text(), word, "the word's own text");
    check_reference(word);
    check_results(read_unsigned_long_long(word).value);
}

} // namespace fuzz
