// Matching calls with recorded ones, and answering them.
#include "replay/replay.h"

#include "records/sha256.h"
#include "replay/file_progress.h"

#include <algorithm>
#include <cstring>

namespace qxsh {

namespace {

std::string name_of(const recorded_call &call)
{
    return "call " + std::to_string(call.number) + ", " + call.row->name.text();
}

const char *pointed(const argument_row &argument)
{
    return argument.count >= 0 ? "an array" : argument.record >= 0 ? "a record" : "a number";
}

// The elements of an array that the caller has, or 1.
std::uint32_t elements_of(const argument_row &argument, const call_word *words)
{
    return argument.count < 0 ? 1 : words[argument.count].value;
}

unsigned char *place_of(const call_word &word)
{
    return static_cast<unsigned char *>(word.pointer);
}

const recorded_memory::hidden *hidden_at(const recorded_memory &memory, std::uint32_t offset,
                                         std::uint32_t size)
{
    for (const recorded_memory::hidden &one : memory.keys)
        if (one.offset == offset && one.size == size)
            return &one;
    return nullptr;
}

} // namespace

replay::replay(const std::string &file, const profile &numbers, bool loose_order)
    : reader_(file), loose_(numbers), comparison_(loose_, reader_.header()),
      loose_order_(loose_order)
{
    check(file);
}

void replay::check(const std::string &file)
{
    file_progress progress{"qx-replay: checking " + file};
    recorded_call call;
    while (reader_.next(call))
        progress.at([this] { return reader_.done(); });
    reader_.restart();
}

// Reads one more call; false at the end of the recording.
bool replay::read_ahead()
{
    if (!spare_)
        spare_ = std::make_unique<recorded_call>();
    if (!reader_.next(*spare_))
        return false;
    ahead_.push_back(std::move(spare_));
    return true;
}

std::optional<std::string> replay::rest()
{
    if (ahead_.empty() && !read_ahead())
        return {};
    return name_of(*ahead_.front());
}

// ------------------------------------------------------------------------------ comparing

// Memory that only receives a result holds anything before the call, and is not compared.
std::optional<difference> replay::first_difference(const recorded_call &recorded,
                                                   const call_word *words)
{
    std::optional<difference> first;
    const difference_taker take = [&first](const difference &one) {
        first = one;
        return false;
    };
    const auto rows = arguments_of(*recorded.row);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const argument_row &row = rows[i];
        const recorded_argument &before = recorded.arguments[i];
        const std::string name = row.name.text();
        if (!row.pointer) {
            if (before.value != words[i].value && !loose_.has(row))
                return difference{name, name, std::to_string(before.value),
                                  std::to_string(words[i].value)};
            continue;
        }
        const bool null = words[i].pointer == nullptr;
        if (before.null != null)
            return difference{name, name, before.null ? "NULL" : pointed(row),
                              null ? "NULL" : pointed(row)};
        if (!null && row.way != direction::out &&
            !comparison_.compare(row, before.before, place_of(words[i]), elements_of(row, words),
                                 take))
            return first;
    }
    return {};
}

// The index in ahead_ of the call that is made, or the size of ahead_.
std::size_t replay::place_of_same(const call_row &call, const call_word *words)
{
    const std::size_t most = loose_order_ ? window : 1;
    for (std::size_t i = 0; i < most; ++i) {
        if (i == ahead_.size() && !read_ahead())
            break;
        if (ahead_[i]->row == &call && !first_difference(*ahead_[i], words))
            return i;
    }
    return ahead_.size();
}

// Says how the call differs from the next one, with loose order from the next of its function.
void replay::fail(const call_row &call, const call_word *words)
{
    if (ahead_.empty())
        throw replay_end{std::string{"the recording is at its end, now "} + call.name.text()};
    const auto same = std::find_if(ahead_.begin(), ahead_.end(),
                                   [&call](const call_pointer &one) { return one->row == &call; });
    if (same == ahead_.end())
        throw replay_end{"call " + std::to_string(ahead_.front()->number) + ": recorded " +
                         ahead_.front()->row->name.text() + ", now " + call.name.text()};
    const std::optional<difference> found = first_difference(**same, words);
    throw replay_end{name_of(**same) + ": " + found->path + ": recorded " + found->recorded +
                     ", now " + found->now};
}

// -------------------------------------------------------------------------------- answering

// What the program has given where the recording has a text instead.
void replay::learn_keys(const recorded_call &recorded, const call_word *words)
{
    if (reader_.header().keys != recorded_keys::fingerprints)
        return;
    const auto rows = arguments_of(*recorded.row);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].pointer || rows[i].way == direction::out || words[i].pointer == nullptr)
            continue;
        for (const recorded_memory::hidden &one : recorded.arguments[i].before.keys)
            keys_.add(one.text, place_of(words[i]) + one.offset, one.size);
    }
}

// The bytes of a key by its text, or null.
const std::string *replay::key_of(const std::string &text, std::size_t size)
{
    const recording_header &header = reader_.header();
    if (header.keys != recorded_keys::fingerprints)
        return nullptr;
    if (const std::string *const given = keys_.find(text); given != nullptr)
        return given;
    zeros_.assign(size, '\0');
    const auto *const zeros = reinterpret_cast<const unsigned char *>(zeros_.data());
    const bool is_zero = !header.salt.empty() && fingerprint(header.salt, zeros, size) == text;
    return is_zero ? &zeros_ : nullptr;
}

// Writes the keys of an argument that the call has changed; unknown ones become zeros.
void replay::give_keys(const recorded_call &recorded, unsigned number, unsigned char *to,
                       std::size_t size)
{
    const recorded_argument &argument = recorded.arguments[number];
    for (const recorded_memory::hidden &one : argument.after.keys) {
        if (one.offset + one.size > size)
            continue;
        const recorded_memory::hidden *const before =
            hidden_at(argument.before, one.offset, one.size);
        // Lengths are always equal; then the rest of the memory tells.
        if (before != nullptr && before->text == one.text &&
            (arguments_of(*recorded.row)[number].way == direction::in ||
             reader_.header().keys == recorded_keys::fingerprints ||
             argument.before.bytes == argument.after.bytes))
            continue;
        if (const std::string *const key = key_of(one.text, one.size); key != nullptr) {
            std::memcpy(to + one.offset, key->data(), one.size);
            continue;
        }
        for (std::uint32_t i = one.offset; i < one.offset + one.size; ++i)
            if (argument.after.known[i] == 0)
                to[i] = 0;
        if (!told_ && on_unknown_key)
            on_unknown_key(recorded);
        told_ = true;
    }
}

// Memory that only tells the library something receives no more than what the library changed in
// it; it may be memory that cannot be written.
void replay::give(const recorded_call &recorded, const call_word *words)
{
    const auto rows = arguments_of(*recorded.row);
    for (unsigned number = 0; number < rows.size(); ++number) {
        const argument_row &row = rows[number];
        const recorded_memory &before = recorded.arguments[number].before;
        const recorded_memory &after = recorded.arguments[number].after;
        unsigned char *const to = place_of(words[number]);
        if (to == nullptr || !after.read)
            continue;
        const std::size_t size = std::min<std::size_t>(
            after.bytes.size(), std::size_t{elements_of(row, words)} * row.size);
        const bool all = row.way != direction::in || before.bytes.size() != after.bytes.size();
        for (std::size_t i = 0; i < size; ++i)
            if (after.known[i] != 0 && (all || before.bytes[i] != after.bytes[i]))
                to[i] = after.bytes[i];
        if (!after.keys.empty())
            give_keys(recorded, number, to, size);
    }
}

std::uint32_t replay::answer(const call_row &call, const call_word *words)
{
    const std::size_t place = place_of_same(call, words);
    if (place == ahead_.size())
        fail(call, words);
    spare_ = std::move(ahead_[place]);
    ahead_.erase(ahead_.begin() + static_cast<std::ptrdiff_t>(place));
    learn_keys(*spare_, words);
    give(*spare_, words);
    return spare_->status;
}

} // namespace qxsh
