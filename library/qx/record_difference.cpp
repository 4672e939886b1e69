// Comparing records; see record_difference.h. All views of a union are looked at, those that are
// shown first, and each bit that differs is reported by the first field that has it.
#include "library/qx/record_difference.h"

#include "records/values.h"

#include <cstring>
#include <string>

namespace qxsh {

namespace {

class comparison
{
public:
    comparison(const unsigned char *first, const unsigned char *second, Tcl_Obj *result)
        : first_(first), second_(second), result_(result)
    {}

    void run(const record_plan &plan);

private:
    void record(const record_plan &plan, unsigned at, const plan_step *chosen);
    void field(const record_plan &plan, const plan_step &step, unsigned at);
    void value(const record_plan &plan, const plan_step &step, int index, unsigned at);
    void padding(unsigned size);
    bool is_new(unsigned at, unsigned size, std::uint32_t mask);
    void append(const std::string &place, Tcl_Obj *before, Tcl_Obj *after);

    const unsigned char *const first_;
    const unsigned char *const second_;
    unsigned char seen_[most_record_bytes] = {}; // the bits of the fields so far
    std::string path_;
    Tcl_Obj *const result_;
};

void comparison::append(const std::string &place, Tcl_Obj *before, Tcl_Obj *after)
{
    Tcl_Obj *const pair[] = {before, after};
    Tcl_ListObjAppendElement(nullptr, result_,
                             Tcl_NewStringObj(place.data(), static_cast<int>(place.size())));
    Tcl_ListObjAppendElement(nullptr, result_, Tcl_NewListObj(2, pair));
}

// Whether a number of bytes has a bit that differs and that no earlier field has shown; it has now.
bool comparison::is_new(unsigned at, unsigned size, std::uint32_t mask)
{
    bool differs = false;
    for (unsigned i = at; i < at + size; ++i, mask = mask >> 8 | mask << 24) {
        const auto bits = static_cast<unsigned char>(mask & 255);
        differs = differs || ((first_[i] ^ second_[i]) & bits & ~seen_[i]) != 0;
        seen_[i] |= bits;
    }
    return differs;
}

void comparison::value(const record_plan &plan, const plan_step &step, int index, unsigned at)
{
    const field_row &field = *step.field;
    const auto element = static_cast<unsigned>(index < 0 ? 0 : index);
    const unsigned size = index < 0 ? elements_of(field) * field.size : field.size;
    const std::uint32_t mask = field.width == 0 ? UINT32_MAX : bit_mask(field.bit, field.width);
    if (!is_new(at + field.offset + element * field.size, size, mask))
        return;
    std::string place = path_ + field.name.text();
    if (index >= 0)
        place += "(" + std::to_string(index) + ")";
    append(place, read_field(plan, field, index, first_ + at),
           read_field(plan, field, index, second_ + at));
}

void comparison::field(const record_plan &plan, const plan_step &step, unsigned at)
{
    const field_row &field = *step.field;
    if (step.what == shown_as::numbers || step.what == shown_as::codes) {
        for (int i = 0; i < field.count; ++i)
            value(plan, step, i, at);
        return;
    }
    if (step.nested == nullptr)
        return value(plan, step, -1, at);
    const auto length = path_.size();
    path_ += field.name.text();
    const auto named = path_.size();
    for (unsigned i = 0; i < elements_of(field); ++i) {
        if (field.count != 0)
            path_ += "(" + std::to_string(i) + ")";
        path_ += '.';
        record(*step.nested, at + field.offset + i * field.size, chosen_view(step, first_ + at));
        path_.resize(named);
    }
    path_.resize(length);
}

void comparison::record(const record_plan &plan, unsigned at, const plan_step *chosen)
{
    const auto shown = chosen != nullptr ? static_cast<unsigned>(chosen - plan.steps)
                                         : static_cast<unsigned>(plan.row->largest);
    for (const bool now_shown : {true, false}) {
        if (now_shown && !plan.row->is_union)
            continue;
        for (unsigned i = 0; i < plan.count; ++i) {
            const plan_step &step = plan.steps[i];
            const bool is_shown = plan.named ? step.named : i == shown;
            if (!plan.row->is_union || is_shown == now_shown)
                field(plan, step, at);
        }
    }
}

void comparison::padding(unsigned size)
{
    unsigned char differs[most_record_bytes];
    for (unsigned i = 0; i < size; ++i)
        differs[i] = (first_[i] ^ second_[i]) & ~seen_[i];
    for_each_run(differs, size, [&](unsigned at, const unsigned char *, unsigned count) {
        const std::string place = padding_name + ("(" + std::to_string(at) + ")");
        Tcl_Obj *values[2];
        for (unsigned i = 0; i < 2; ++i) {
            const unsigned char *const memory = i == 0 ? first_ : second_;
            unsigned char bytes[most_record_bytes];
            char text[2 + 2 * most_record_bytes];
            for (unsigned j = 0; j < count; ++j)
                bytes[j] = memory[at + j] & ~seen_[at + j];
            values[i] =
                Tcl_NewStringObj(text, static_cast<int>(put_bytes(text, bytes, count) - text));
        }
        append(place, values[0], values[1]);
    });
}

void comparison::run(const record_plan &plan)
{
    if (std::memcmp(first_, second_, plan.row->size) != 0) {
        record(plan, 0, nullptr);
        padding(plan.row->size);
    }
}

} // namespace

void differences(const record_plan &plan, const unsigned char *first, const unsigned char *second,
                 Tcl_Obj *result)
{
    comparison{first, second, result}.run(plan);
}

} // namespace qxsh
