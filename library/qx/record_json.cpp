// Writing JSON; see record_json.h. Field names and addresses have no characters that JSON escapes.
#include "library/qx/record_json.h"

#include "library/qx/held_object.h"
#include "records/address_text.h"
#include "records/values.h"

#include <charconv>
#include <string>

namespace qxsh {

namespace {

class json_writer
{
public:
    void record(const record_plan &plan, const unsigned char *memory, const plan_step *chosen,
                bool padded);
    const std::string &text() const { return text_; }

private:
    void value(const plan_step &step, const unsigned char *record, bool padded);
    void numbers(const unsigned char *memory, unsigned size, unsigned count);
    void records(const plan_step &step, const unsigned char *memory, bool padded);
    void padding(const unsigned char *bits, unsigned size);
    void codes(const plan_step &step, const unsigned char *record);
    void code(const plan_step &step, std::uint32_t number);
    void number(std::uint32_t value);
    void name(const char *name, bool first);
    void open(char bracket);
    void close(char bracket);
    void line() { text_.append(lead_, ' '); }

    std::string text_;
    unsigned lead_ = 0; // blanks before the next line
};

void json_writer::open(char bracket)
{
    text_ += bracket;
    lead_ += 2;
}

void json_writer::close(char bracket)
{
    lead_ -= 2;
    text_ += '\n';
    line();
    text_ += bracket;
}

void json_writer::name(const char *name, bool first)
{
    text_ += first ? "\n" : ",\n";
    line();
    text_ += '"';
    text_ += name;
    text_ += "\": ";
}

void json_writer::number(std::uint32_t value)
{
    char digits[10];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void json_writer::numbers(const unsigned char *memory, unsigned size, unsigned count)
{
    text_ += '[';
    for (unsigned i = 0; i < count; ++i) {
        if (i != 0)
            text_ += ", ";
        number(read_number(memory + i * size, size));
    }
    text_ += ']';
}

// A code by its word, if it has one.
void json_writer::code(const plan_step &step, std::uint32_t number)
{
    const held_object shown{step.codes->shown(number)};
    const char *const text = Tcl_GetString(shown.get());
    const char *const quote = *text >= '0' && *text <= '9' ? "" : "\"";
    text_.append(quote).append(text).append(quote);
}

void json_writer::codes(const plan_step &step, const unsigned char *record)
{
    text_ += '[';
    for (unsigned i = 0; i < step.field->count; ++i) {
        if (i != 0)
            text_ += ", ";
        code(step, read_field(record, *step.field, i));
    }
    text_ += ']';
}

void json_writer::records(const plan_step &step, const unsigned char *memory, bool padded)
{
    open('[');
    for (unsigned i = 0; i < step.field->count; ++i) {
        text_ += i == 0 ? "\n" : ",\n";
        line();
        record(*step.nested, memory + i * step.field->size, nullptr, padded);
    }
    close(']');
}

void json_writer::value(const plan_step &step, const unsigned char *record, bool padded)
{
    const field_row &field = *step.field;
    const unsigned char *const memory = record + field.offset;
    char address[most_address_text];
    switch (step.what) {
    case shown_as::number:
        return number(read_number(memory, field.size));
    case shown_as::bits:
        return number(read_field(record, field));
    case shown_as::code:
        return code(step, read_field(record, field));
    case shown_as::codes:
        return codes(step, record);
    case shown_as::numbers:
        return numbers(memory, field.size, field.count);
    case shown_as::record:
        return this->record(*step.nested, memory, chosen_view(step, record), padded);
    case shown_as::records:
        return records(step, memory, padded);
    default:
        break;
    }
    char *const end = put_address(address, step, record);
    if (end == nullptr)
        return numbers(memory, 4, 4);
    text_ += '"';
    text_.append(address, end);
    text_ += '"';
}

void json_writer::padding(const unsigned char *bits, unsigned size)
{
    bool is_first = true;
    name(padding_name, false);
    open('{');
    for_each_run(bits, size, [&](unsigned at, const unsigned char *bytes, unsigned count) {
        char run[2 + 2 * most_record_bytes];
        name(std::to_string(at).c_str(), is_first);
        is_first = false;
        text_ += '"';
        text_.append(run, put_bytes(run, bytes, count));
        text_ += '"';
    });
    close('}');
}

// The padding of a record in a view is shown by the union.
void json_writer::record(const record_plan &plan, const unsigned char *memory,
                         const plan_step *chosen, bool padded)
{
    open('{');
    if (plan.row->is_union) {
        const shown_views shown{plan, memory, chosen};
        for (unsigned i = 0; i < shown.count; ++i) {
            name(shown.steps[i]->field->name.text(), i == 0);
            value(*shown.steps[i], memory, false);
        }
        if (!shown.is_all)
            padding(shown.rest, plan.row->size);
    } else {
        for (unsigned i = 0; i < plan.count; ++i) {
            name(plan.steps[i].field->name.text(), i == 0);
            value(plan.steps[i], memory, padded);
        }
        if (padded && any_set(plan.padding, memory)) {
            unsigned char bits[most_record_bytes];
            copy_padding(plan, memory, bits);
            padding(bits, plan.row->size);
        }
    }
    close('}');
}

} // namespace

Tcl_Obj *record_as_json(const record_plan &plan, const unsigned char *memory)
{
    json_writer writer;
    writer.record(plan, memory, nullptr, true);
    return Tcl_NewStringObj(writer.text().data(), static_cast<int>(writer.text().size()));
}

} // namespace qxsh
