// Writing the random script. What a command does is said here once more, in terms of the model.
#include "script.h"

#include <algorithm>

namespace random_test {

constexpr std::uint32_t all_ones = 0xffffffffU;
constexpr std::size_t most_blocks = 60;

script::script(const tables &all, std::uint64_t seed, bool as_made, std::ostream &commands,
               std::ostream &output)
    : all_(all), actions_(all_actions(all)), chance_(seed), blocks_(all, chance_, as_made),
      commands_(commands), output_(output)
{}

// How much more often than once: commands of which there are few, and those that do much at once.
static unsigned extra_cards(const action &of)
{
    switch (of.what) {
    case deed::record_dump:
    case deed::record_init:
    case deed::record_array_set:
        return 1;
    case deed::nested_set:
    case deed::nested_get:
        return of.member->count != 0 ? 12 : 1;
    case deed::cell_array_get:
    case deed::cell_array_set:
        return 4;
    default:
        return 0;
    }
}

// All actions come once, in random order, then all again. Some come more often.
void script::write(unsigned count)
{
    std::vector<action> deck;
    while (lines_ < count) {
        if (deck.empty()) {
            deck = actions_;
            for (const action &each : actions_)
                deck.insert(deck.end(), extra_cards(each), each);
            deck.insert(deck.end(), 60, action{deed::bytes_show});
            deck.insert(deck.end(), 60, action{deed::bytes_fill});
            chance_.shuffle(deck);
        }
        const action next = deck.back();
        const unsigned before = refused_;
        carry_out(next);
        if (refused_ == before) // else once more, until its words are proper
            deck.pop_back();
    }
    for (block &each : blocks_.live()) {
        show_bytes(each);
        line("qx_data_free $" + each.variable, "", ": ");
    }
    blocks_.live().clear();
}

void script::carry_out(const action &next)
{
    switch (next.what) {
    case deed::record_create:
    case deed::record_array_create:
        return create(next);
    case deed::record_array_get:
        return array_get(next);
    case deed::record_array_set:
        return array_set(next);
    case deed::record_init:
        return init(next);
    case deed::number_set:
        return set_number(next);
    case deed::number_get:
        return get_number(next);
    case deed::nested_set:
        return set_nested(next);
    case deed::nested_get:
        return get_nested(next);
    case deed::block_free:
        return free_block(next);
    case deed::record_dump: {
        const spot of = target(next.type->name);
        return emit({next.called, {of.word}, "", ""}, [&] {
            return effect{of.at ? dump(of.at, *next.type) : "", ""};
        });
    }
    case deed::bytes_show:
    case deed::bytes_fill:
        if (blocks_.live().empty())
            return;
        return next.what == deed::bytes_show ? show_bytes(blocks_.any())
                                             : fill_bytes(blocks_.any());
    default:
        return cell(next);
    }
}

// --------------------------------------------------------------------------------- choosing words

// Something of this type is there.
void script::need(const std::string &pointee)
{
    while (!blocks_.have(pointee)) {
        action creation{deed::record_create, nullptr, all_.find_record(pointee)};
        if (creation.type == nullptr) {
            creation.what = deed::cell_create;
            creation.number = number_declared(pointee);
            creation.called =
                &all_.commands.at(std::string{"qx_"} + creation.number->cell + "_create");
        } else {
            creation.called = &all_.commands.at(creation.type->stem + "_create");
        }
        carry_out(creation);
    }
}

spot script::target(const std::string &pointee)
{
    if (chance_.percent(4))
        return {{}, blocks_.null_word(pointee)};
    need(pointee);
    return blocks_.pick(pointee);
}

spot script::source(const std::string &pointee, place to, bool overlapping)
{
    if (chance_.percent(4))
        return {{}, blocks_.null_word(pointee)};
    need(pointee);
    return blocks_.pick_source(pointee, to, overlapping);
}

// A value in one of the forms that numbers have.
std::string script::number_word_for(const number_type &type, std::uint64_t value)
{
    const std::uint32_t form = chance_.below(4);
    if (type.name == std::string{"i32"})
        return std::to_string(static_cast<std::int32_t>(value));
    if (form == 0 && value <= all_ones)
        return alternate(static_cast<std::uint32_t>(value));
    if (form == 1) {
        std::string octal;
        for (std::uint64_t rest = value; rest != 0; rest /= 8)
            octal.insert(octal.begin(), static_cast<char>('0' + rest % 8));
        return "0" + octal;
    }
    return std::to_string(value);
}

script::number_choice script::number(const number_type &type)
{
    if (chance_.percent(15)) {
        // One of the words that are known to be read in a way of their own.
        const auto place = static_cast<std::size_t>(&type - number_types().data());
        for (;;) {
            const number_word &word = chance_.of(all_.words);
            if (word.readings[place].value)
                return {*word.readings[place].value, word.text};
        }
    }
    std::uint64_t value = chance_.bits();
    if (chance_.percent(10))
        value = chance_.percent(50) ? 0 : ~std::uint64_t{0};
    if (type.width < 8)
        value &= (std::uint64_t{1} << (8 * type.width)) - 1;
    return {value, number_word_for(type, value)};
}

// Mostly an index of the field, sometimes every element, sometimes none.
std::uint32_t script::field_index(const field &of)
{
    if (chance_.percent(70))
        return chance_.below(of.count);
    if (chance_.percent(40))
        return all_ones;
    const std::vector<std::uint32_t> bad{of.count, of.count + 1, 0x7fffffffU, 0x80000000U,
                                         all_ones - 1};
    return chance_.of(bad);
}

// An index that stays in the block, counted from a place in it. Elements before the place have
// indexes too, since places are counted modulo 2^32.
std::uint32_t script::slot(place base, std::uint32_t size)
{
    if (!base)
        return chance_.below(4);
    const std::uint32_t before = base.offset / size;
    const auto behind = (static_cast<std::uint32_t>(base.where->bytes.size()) - base.offset) / size;
    if (behind == 0 || (before != 0 && chance_.percent(10)))
        return all_ones - chance_.below(std::max(before, 1U));
    return chance_.below(behind);
}

// ---------------------------------------------------------------------------- records and arrays

std::string script::handle_result(const std::string &pointee, place at) const
{
    return at ? mangled(pointee) + " " + std::to_string(at.offset) : "NULL";
}

// "from $b3 [": the command's handle is shown as its distance from the block.
static std::string from_block(place at)
{
    return at ? "from $" + at.where->variable + " [" : "from NULL [";
}

void script::create(const action &next)
{
    if (blocks_.live().size() >= most_blocks)
        free_block({deed::block_free, &all_.commands.at("qx_data_free")});
    std::uint32_t count = 1;
    call made{next.called, {}, "", "]"};
    if (next.what == deed::record_array_create) {
        count = chance_.percent(5) ? 0 : 1 + chance_.below(next.type->size > 200 ? 2 : 4);
        made.words = {std::to_string(count)};
    }
    block &added = blocks_.add(next.type, nullptr, count);
    made.before = "made " + added.variable + " [";
    bool done = false;
    emit(made, [&] {
        done = true;
        return effect{"", mangled(next.type->name)};
    });
    if (!done)
        blocks_.remove(added);
}

void script::array_get(const action &next)
{
    const spot array = target(next.type->name);
    const std::uint32_t index =
        chance_.percent(30) ? static_cast<std::uint32_t>(chance_.bits()) : chance_.below(8);
    emit({next.called,
          {array.word, number_word_for(*number_declared("unsigned int"), index)},
          from_block(array.at),
          "]"},
         [&] {
             const place found = array.at ? array.at.plus(index * next.type->size) : place{};
             return effect{"", handle_result(next.type->name, found)};
         });
}

void script::array_set(const action &next)
{
    const spot array = target(next.type->name);
    const spot item = source(next.type->name, array.at, true);
    const std::uint32_t size = next.type->size;
    std::uint32_t index = slot(array.at, size);
    if (array.at && !blocks_.leads_to(array.at.plus(index * size), next.type->name))
        index = 0;
    emit({next.called, {array.word, item.word, std::to_string(index)}, "", ""}, [&] {
        if (array.at && item.at)
            copy(array.at.plus(index * size), item.at, size);
        return effect{};
    });
}

void script::init(const action &next)
{
    const spot self = target(next.type->name);
    call made{next.called, {self.word}, "", ""};
    std::vector<std::function<void()>> stores;
    bool all_there = static_cast<bool>(self.at);
    for (const field &each : next.type->fields) {
        if (!each.in_init)
            continue;
        if (each.nested != nullptr) {
            const spot from = source(each.nested->name, self.at, true);
            all_there = all_there && from.at;
            made.words.push_back(from.word);
            stores.push_back([=] { copy(self.at.plus(each.offset), from.at, each.copied); });
        } else {
            const number_choice chosen = number(*number_declared(each.type));
            made.words.push_back(chosen.word);
            stores.push_back([=] { set(self.at, each, 0, chosen.value); });
        }
    }
    emit(made, [&] {
        if (all_there)
            for (const auto &each : stores)
                each();
        return effect{};
    });
}

// ------------------------------------------------------------------------------------------ fields

void script::set_number(const action &next)
{
    const field &member = *next.member;
    const spot self = target(next.type->name);
    const number_choice chosen = number(*number_declared(member.type));
    call made{next.called, {self.word, chosen.word}, "", ""};
    const std::uint32_t index = member.count == 0 ? 0 : field_index(member);
    if (member.count != 0)
        made.words.push_back(number_word_for(*number_declared("unsigned int"), index));
    emit(made, [&] {
        if (!self.at)
            return effect{};
        if (index != all_ones && index >= member.elements())
            return effect{next.called->name + " bad Index \n", ""};
        for (std::uint32_t i = 0; i < member.elements(); ++i)
            if (index == i || index == all_ones)
                set(self.at, member, i, chosen.value);
        return effect{};
    });
}

void script::get_number(const action &next)
{
    const field &member = *next.member;
    const spot self = target(next.type->name);
    call made{next.called, {self.word}, "", ""};
    const std::uint32_t index = member.count == 0 ? 0 : field_index(member);
    if (member.count != 0)
        made.words.push_back(std::to_string(index));
    emit(made, [&] {
        const bool there = self.at && index < member.elements();
        return effect{"", std::to_string(there ? get(self.at, member, index) : 0)};
    });
}

void script::set_nested(const action &next)
{
    const field &member = *next.member;
    const spot self = target(next.type->name);
    const std::uint32_t index = member.count == 0 ? 0 : field_index(member);
    // Every element from a source that lies across some of them: which bytes it has by then is
    // nobody's business.
    const spot from = source(member.nested->name, self.at, index != all_ones);
    call made{next.called, {self.word, from.word}, "", ""};
    if (member.count != 0)
        made.words.push_back(std::to_string(index));
    emit(made, [&] {
        if (!self.at || !from.at)
            return effect{};
        if (index != all_ones && index >= member.elements())
            return effect{next.called->name + " bad Index \n", ""};
        for (std::uint32_t i = 0; i < member.elements(); ++i)
            if (index == i || index == all_ones)
                copy(element_of(self.at, member, i), from.at, member.copied);
        return effect{};
    });
}

void script::get_nested(const action &next)
{
    const field &member = *next.member;
    const spot self = target(next.type->name);
    call made{next.called, {self.word}, from_block(self.at), "]"};
    const std::uint32_t index = member.count == 0 ? 0 : field_index(member);
    if (member.count != 0)
        made.words.push_back(std::to_string(index));
    emit(made, [&] {
        const bool there = self.at && index < member.elements();
        const place found = there ? element_of(self.at, member, index) : place{};
        return effect{"", handle_result(member.nested->name, found)};
    });
}

} // namespace random_test
