// A record as a dict, by its plan; see record_plan.h. Dicts are built in list form: that is faster
// than a hash table, which Tcl builds on the first lookup.
#include "library/qx/record_plan.h"
#include "records/address_text.h"
#include "records/values.h"

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

// An address as text, written by `put`.
template <class Put, class Address> Tcl_Obj *text(Put put, const Address &address)
{
    char text[most_address_text];
    return Tcl_NewStringObj(text, static_cast<int>(put(text, address) - text));
}

// An address without a family is IPv4 if only its first word is used; one that does not match its
// family is shown as numbers.
Tcl_Obj *ip(const plan_step &step, const unsigned char *memory, const unsigned char *record)
{
    address_words words;
    std::memcpy(words, memory, sizeof words);
    const bool is_short = words[1] == 0 && words[2] == 0 && words[3] == 0;
    int version = 0;
    if (step.family != nullptr)
        version = step.families->version_of(read_field(record, *step.family));
    if (version == 0)
        version = is_short ? 4 : 6;
    if (version == 6)
        return text(put_ipv6, words);
    return is_short ? text(put_ipv4, words[0]) : numbers(memory, 4, 4);
}

Tcl_Obj *ipv6(const unsigned char *memory)
{
    address_words words;
    std::memcpy(words, memory, sizeof words);
    return text(put_ipv6, words);
}

Tcl_Obj *records(const plan_step &step, const unsigned char *memory)
{
    Tcl_Obj *elements[most_elements];
    const field_row &field = *step.field;
    for (unsigned i = 0; i < field.count; ++i)
        elements[i] = read_record(*step.nested, memory + i * field.size);
    return Tcl_NewListObj(field.count, elements);
}

Tcl_Obj *value(const plan_step &step, const unsigned char *record)
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
        return text(put_mac, memory);
    case shown_as::ipv4:
        return text(put_ipv4, read_number(memory, 4));
    case shown_as::ipv6:
        return ipv6(memory);
    case shown_as::ip:
        return ip(step, memory, record);
    case shown_as::record:
        return read_record(*step.nested, memory);
    case shown_as::records:
        break;
    }
    return records(step, memory);
}

} // namespace

Tcl_Obj *read_record(const record_plan &plan, const unsigned char *memory)
{
    Tcl_Obj *words[2 * most_fields];
    for (unsigned i = 0; i < plan.count; ++i) {
        words[2 * i] = plan.steps[i].name;
        words[2 * i + 1] = value(plan.steps[i], memory);
    }
    return Tcl_NewListObj(static_cast<int>(2 * plan.count), words);
}

Tcl_Obj *read_field(const record_plan &plan, const field_row &field, int index,
                    const unsigned char *memory)
{
    const plan_step *step = plan.steps;
    while (step->field != &field)
        ++step;
    if (index < 0)
        return value(*step, memory);
    const unsigned char *const element = memory + field.offset + index * field.size;
    if (step->nested != nullptr)
        return read_record(*step->nested, element);
    if (step->codes != nullptr)
        return step->codes->shown(read_number(element, field.size));
    return new_number(read_number(element, field.size));
}

} // namespace qxsh
