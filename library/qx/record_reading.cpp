// A record as a dict, by its plan; see record_plan.h. Dicts are built in list form: that is faster
// than a hash table, which Tcl builds on the first lookup.
#include "library/qx/record_plan.h"
#include "records/address_text.h"
#include "records/values.h"

#include <cstring>

namespace qxsh {

namespace {

Tcl_Obj *numbers(const unsigned char *memory, unsigned size, unsigned count)
{
    Tcl_Obj *elements[most_elements];
    for (unsigned i = 0; i < count; ++i)
        elements[i] = new_number(read_number(memory + i * size, size));
    return Tcl_NewListObj(static_cast<int>(count), elements);
}

Tcl_Obj *codes(const plan_step &step, const unsigned char *record)
{
    Tcl_Obj *elements[most_elements];
    const field_row &field = *step.field;
    for (unsigned i = 0; i < field.count; ++i)
        elements[i] = step.codes->shown(read_field(record, field, i));
    return Tcl_NewListObj(field.count, elements);
}

// An address without a family is IPv4 if only its first word is used; one that does not match its
// family is shown as numbers.
char *put_ip(char *to, const plan_step &step, const unsigned char *record)
{
    address_words words;
    std::memcpy(words, record + step.field->offset, sizeof words);
    const bool is_short = words[1] == 0 && words[2] == 0 && words[3] == 0;
    int version = 0;
    if (step.family != nullptr)
        version = step.families->version_of(read_field(record, *step.family));
    if (version == 0)
        version = is_short ? 4 : 6;
    if (version == 6)
        return put_ipv6(to, words);
    return is_short ? put_ipv4(to, words[0]) : nullptr;
}

char *put_ipv6_at(char *to, const unsigned char *memory)
{
    address_words words;
    std::memcpy(words, memory, sizeof words);
    return put_ipv6(to, words);
}

Tcl_Obj *address(const plan_step &step, const unsigned char *record)
{
    char text[most_address_text];
    const char *const end = put_address(text, step, record);
    if (end == nullptr)
        return numbers(record + step.field->offset, 4, 4);
    return Tcl_NewStringObj(text, static_cast<int>(end - text));
}

// Appends the words for bits in no field to a list, which has room for them.
void append_padding(Tcl_Obj *words[], int &count, const unsigned char *bits, unsigned size)
{
    Tcl_Obj *const runs = Tcl_NewListObj(0, nullptr);
    for_each_run(bits, size, [=](unsigned at, const unsigned char *bytes, unsigned length) {
        char text[2 + 2 * most_record_bytes];
        const char *const end = put_bytes(text, bytes, length);
        Tcl_ListObjAppendElement(nullptr, runs, new_number(at));
        Tcl_ListObjAppendElement(nullptr, runs,
                                 Tcl_NewStringObj(text, static_cast<int>(end - text)));
    });
    words[count++] = Tcl_NewStringObj(padding_name, -1);
    words[count++] = runs;
}

// Whether a record's padding is shown in its own dict; that of a view is in the union's.
enum class padding : bool { elsewhere, here };

Tcl_Obj *value(const plan_step &step, const unsigned char *record, padding own);

Tcl_Obj *union_of(const record_plan &plan, const unsigned char *memory, const plan_step *chosen)
{
    Tcl_Obj *words[2 * most_fields + 2];
    int count = 0;
    const shown_views shown{plan, memory, chosen};
    for (unsigned i = 0; i < shown.count; ++i) {
        words[count++] = shown.steps[i]->name;
        words[count++] = value(*shown.steps[i], memory, padding::elsewhere);
    }
    if (!shown.is_all)
        append_padding(words, count, shown.rest, plan.row->size);
    return Tcl_NewListObj(count, words);
}

Tcl_Obj *record_of(const record_plan &plan, const unsigned char *memory, padding own)
{
    Tcl_Obj *words[2 * most_fields + 2];
    int count = 0;
    if (plan.row->is_union)
        return union_of(plan, memory, nullptr);
    for (unsigned i = 0; i < plan.count; ++i) {
        words[count++] = plan.steps[i].name;
        words[count++] = value(plan.steps[i], memory, own);
    }
    if (own == padding::here && any_set(plan.padding, memory)) {
        unsigned char bits[most_record_bytes];
        copy_padding(plan, memory, bits);
        append_padding(words, count, bits, plan.row->size);
    }
    return Tcl_NewListObj(count, words);
}

Tcl_Obj *records(const plan_step &step, const unsigned char *memory, padding own)
{
    Tcl_Obj *elements[most_elements];
    const field_row &field = *step.field;
    for (unsigned i = 0; i < field.count; ++i)
        elements[i] = record_of(*step.nested, memory + i * field.size, own);
    return Tcl_NewListObj(field.count, elements);
}

Tcl_Obj *value(const plan_step &step, const unsigned char *record, padding own)
{
    const field_row &field = *step.field;
    const unsigned char *const memory = record + field.offset;
    switch (step.what) {
    case shown_as::number:
        return new_number(read_number(memory, field.size));
    case shown_as::bits:
        return new_number(read_field(record, field));
    case shown_as::code:
        return step.codes->shown(read_field(record, field));
    case shown_as::codes:
        return codes(step, record);
    case shown_as::numbers:
        return numbers(memory, field.size, field.count);
    case shown_as::mac:
    case shown_as::ipv4:
    case shown_as::ipv6:
    case shown_as::ip:
        return address(step, record);
    case shown_as::record:
        if (step.nested->row->is_union)
            return union_of(*step.nested, memory, chosen_view(step, record));
        return record_of(*step.nested, memory, own);
    case shown_as::records:
        break;
    }
    return records(step, memory, own);
}

} // namespace

char *put_address(char *text, const plan_step &step, const unsigned char *record)
{
    const unsigned char *const memory = record + step.field->offset;
    switch (step.what) {
    case shown_as::mac:
        return put_mac(text, memory);
    case shown_as::ipv4:
        return put_ipv4(text, read_number(memory, 4));
    case shown_as::ipv6:
        return put_ipv6_at(text, memory);
    case shown_as::ip:
        return put_ip(text, step, record);
    default:
        return nullptr;
    }
}

Tcl_Obj *read_record(const record_plan &plan, const unsigned char *memory)
{
    return record_of(plan, memory, padding::here);
}

Tcl_Obj *read_field(const record_plan &plan, const field_row &field, int index,
                    const unsigned char *memory)
{
    const plan_step &step = plan.steps[&field - fields_of(*plan.row).data()];
    if (index < 0)
        return value(step, memory, padding::here);
    const unsigned char *const element = memory + field.offset + index * field.size;
    if (step.nested != nullptr)
        return read_record(*step.nested, element);
    if (step.codes != nullptr)
        return step.codes->shown(read_number(element, field.size));
    return new_number(read_number(element, field.size));
}

Tcl_Obj *read_padding(const record_row &row, unsigned from, const unsigned char *memory)
{
    unsigned char bits[most_record_bytes];
    char text[2 + 2 * most_record_bytes];
    unsigned end = from;
    free_bits(row, bits);
    for (; end < row.size && bits[end] != 0; ++end)
        bits[end] &= memory[end];
    const char *const last = put_bytes(text, bits + from, end - from);
    return Tcl_NewStringObj(text, static_cast<int>(last - text));
}

} // namespace qxsh
