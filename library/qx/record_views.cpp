// Which views of a union are shown, and what is left beside them; see record_plan.h.
#include "library/qx/record_plan.h"
#include "records/values.h"

#include <algorithm>
#include <cstring>

namespace qxsh {

const plan_step *chosen_view(const plan_step &step, const unsigned char *record)
{
    for (const view_choice &each : step.choices)
        if (read_number(record + each.row->offset, each.row->size) == each.number)
            return step.nested->steps + each.row->view;
    return nullptr;
}

// Views that the options name are shown alone. Otherwise the view that is chosen, or the first of
// the largest ones, is followed by views that show more; what no view shows is left.
shown_views::shown_views(const record_plan &plan, const unsigned char *memory,
                         const plan_step *chosen)
{
    const auto all = std::span{plan.steps, plan.count};
    if (plan.named) {
        for (const plan_step &step : all)
            if (step.named)
                steps[count++] = &step;
        return;
    }
    const plan_step &first = chosen != nullptr ? *chosen : plan.steps[plan.row->largest];
    steps[count++] = &first;
    is_all = !any_set(first.hidden, memory);
    if (is_all)
        return;
    std::memset(rest, 0, plan.row->size);
    for (const hole &each : first.hidden)
        rest[each.offset] = memory[each.offset] & each.bits;
    for (const plan_step &step : all) {
        unsigned char left[most_record_bytes];
        std::memset(left, 0, plan.row->size);
        for (const hole &each : step.hidden)
            left[each.offset] = rest[each.offset] & each.bits;
        if (std::memcmp(left, rest, plan.row->size) == 0)
            continue;
        steps[count++] = &step;
        std::memcpy(rest, left, plan.row->size);
    }
    is_all = std::all_of(rest, rest + plan.row->size, [](unsigned char byte) { return byte == 0; });
}

void copy_padding(const record_plan &plan, const unsigned char *memory, unsigned char *bits)
{
    std::memset(bits, 0, plan.row->size);
    for (const hole &each : plan.padding)
        bits[each.offset] = memory[each.offset] & each.bits;
}

char *put_bytes(char *text, const unsigned char *bytes, unsigned count)
{
    static constexpr char digits[] = "0123456789abcdef";
    *text++ = '0';
    *text++ = 'x';
    for (unsigned i = 0; i < count; ++i) {
        *text++ = digits[bytes[i] >> 4];
        *text++ = digits[bytes[i] & 15];
    }
    return text;
}

} // namespace qxsh
