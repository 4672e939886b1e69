// The live blocks and the words for places in them.
#include "blocks.h"

#include <algorithm>

namespace random_test {

block &blocks::add(const record *made_of, const number_type *number, std::uint32_t count)
{
    block made;
    made.variable = "b" + std::to_string(++made_);
    made.made_of = made_of;
    made.number = number;
    made.stride = made_of != nullptr ? made_of->size : number->width;
    made.count = count;
    made.bytes.resize(std::size_t{made.stride} * count);
    return live_.emplace_back(std::move(made));
}

void blocks::remove(block &gone)
{
    live_.remove_if([&](const block &each) { return &each == &gone; });
}

block &blocks::any()
{
    return *std::next(live_.begin(), chance_.below(static_cast<std::uint32_t>(live_.size())));
}

// All nested records of a record, by type; `so_far` leads to the outer one.
void blocks::collect(const record &outer, const way &so_far, std::map<std::string, ways> &found)
{
    found[outer.name].push_back(so_far);
    for (const field &each : outer.fields) {
        if (each.nested == nullptr)
            continue;
        for (std::uint32_t i = 0; i < each.elements(); ++i) {
            const std::string index = each.count == 0 ? "" : " " + std::to_string(i);
            collect(*each.nested,
                    {so_far.offset + each.offset + i * each.stride(),
                     "[" + outer.stem + "_get_" + each.name + " " + so_far.before,
                     so_far.after + index + "]"},
                    found);
        }
    }
}

const blocks::ways &blocks::ways_to(const record &outer, const std::string &pointee)
{
    if (!ways_.contains(&outer))
        collect(outer, {0, "", ""}, ways_[&outer]);
    return ways_[&outer][pointee];
}

std::uint32_t blocks::size_of(const std::string &pointee) const
{
    const record *const type = all_.find_record(pointee);
    return type != nullptr ? type->size : number_declared(pointee)->width;
}

std::uint32_t blocks::alignment_of(const std::string &pointee) const
{
    const record *const type = all_.find_record(pointee);
    return type != nullptr ? type->alignment : number_declared(pointee)->width;
}

bool blocks::holds(const block &from, const std::string &pointee)
{
    if (from.bytes.size() < size_of(pointee))
        return false;
    if (all_.find_record(pointee) == nullptr)
        return !as_made_ || pointee == "unsigned char" || from.pointee() == pointee;
    return from.made_of != nullptr && !ways_to(*from.made_of, pointee).empty();
}

bool blocks::have(const std::string &pointee) const
{
    return std::any_of(live_.begin(), live_.end(), [&](const block &each) {
        return const_cast<blocks *>(this)->holds(each, pointee);
    });
}

spot blocks::put_together(block &from, std::uint32_t offset, const std::string &pointee)
{
    return {{&from, offset},
            "[at $" + from.variable + " " + std::to_string(offset) + " " +
                mangled(pointee).substr(3) + "]"};
}

// Any offset at which such a thing may lie, whatever the block was made of.
spot blocks::anywhere(block &from, const std::string &pointee)
{
    const std::uint32_t step = alignment_of(pointee);
    const auto room = static_cast<std::uint32_t>(from.bytes.size()) - size_of(pointee);
    return put_together(from, chance_.below(room / step + 1) * step, pointee);
}

spot blocks::pick_in(block &from, const std::string &pointee)
{
    if (from.made_of == nullptr || all_.find_record(pointee) == nullptr) {
        if (from.pointee() == pointee && chance_.percent(70))
            return {{&from, 0}, "$" + from.variable};
        return anywhere(from, pointee);
    }
    const std::uint32_t element = chance_.below(from.count);
    const way &chosen = chance_.of(ways_to(*from.made_of, pointee));
    const std::uint32_t offset = element * from.stride + chosen.offset;
    if (chance_.percent(10))
        return put_together(from, offset, pointee);
    std::string word = "$" + from.variable;
    if (element != 0 || chance_.percent(20))
        word =
            "[" + from.made_of->stem + "_array_get " + word + " " + std::to_string(element) + "]";
    return {{&from, offset}, chosen.before + word + chosen.after};
}

spot blocks::pick(const std::string &pointee)
{
    std::vector<block *> fitting;
    for (block &each : live_)
        if (holds(each, pointee))
            fitting.push_back(&each);
    spot chosen = pick_in(*chance_.of(fitting), pointee);
    if (chance_.percent(15))
        chosen.word = "[fresh " + chosen.word + "]";
    return chosen;
}

spot blocks::pick_source(const std::string &pointee, place to, bool overlapping)
{
    if (to && overlapping && !as_made_ && chance_.percent(20) &&
        to.where->bytes.size() >= size_of(pointee))
        return anywhere(*to.where, pointee);
    if (to && chance_.percent(50) && holds(*to.where, pointee))
        return pick_in(*to.where, pointee);
    return pick(pointee);
}

bool blocks::leads_to(place at, const std::string &pointee)
{
    if (!as_made_ || at.where->made_of == nullptr)
        return true;
    const ways &all = ways_to(*at.where->made_of, pointee);
    return std::any_of(all.begin(), all.end(), [&](const way &each) {
        return each.offset == at.offset % at.where->stride;
    });
}

std::string blocks::bad_word(const std::string &pointee)
{
    std::vector<std::string> words{"abc", "{}", "null", "qx_flow_create", "{a b}", "5"};
    for (const block &each : live_) {
        if (each.pointee() == pointee)
            words.push_back("${" + each.variable + "}x");
        else if (words.size() < 30)
            words.push_back("$" + each.variable);
    }
    return chance_.of(words);
}

std::string blocks::null_word(const std::string &pointee)
{
    return chance_.percent(80) ? "NULL" : "_00000000" + mangled(pointee);
}

} // namespace random_test
