// Calls from bytes, and the statuses that they may return.
#include "fuzz/call_scene.h"

#include "fuzz/expect.h"
#include "numbers.h"
#include "qx_status.h"
#include "tests/simulator/documented_statuses.h"

#include <cstring>

namespace fuzz {

namespace {

// A scalar or a bit-field somewhere in a record.
struct leaf
{
    std::uint32_t offset;
    unsigned size, bit, width; ///< width 0: all of it
};

void collect(const qxsh::record_row &record, std::uint32_t offset, std::vector<leaf> &found)
{
    for (const qxsh::field_row &field : fields_of(record)) {
        for (unsigned i = 0; i < elements_of(field); ++i) {
            const std::uint32_t at = offset + field.offset + i * field.size;
            if (field.record >= 0)
                collect(*record_in(field), at, found);
            else
                found.push_back({at, field.size, field.bit, field.width});
        }
    }
}

const std::vector<leaf> &leaves_of(int record)
{
    static std::map<int, std::vector<leaf>> known;
    std::vector<leaf> &found = known[record];
    if (found.empty())
        collect(qxsh::record_rows[record], 0, found);
    return found;
}

void store(unsigned char *record, const leaf &to, std::uint32_t value)
{
    std::uint32_t unit = 0;
    std::memcpy(&unit, record + to.offset, to.size);
    const std::uint32_t mask = to.width == 0 || to.width == 32 ? ~0U : ((1U << to.width) - 1);
    unit = (unit & ~(mask << to.bit)) | ((value & mask) << to.bit);
    std::memcpy(record + to.offset, &unit, to.size);
}

std::string kind_of(const qxsh::argument_row &argument)
{
    std::string kind = argument.record >= 0 ? qxsh::record_rows[argument.record].name.text()
                                            : std::to_string(argument.size);
    return argument.count >= 0 ? kind + "[]" : kind;
}

} // namespace

bool documented(const std::string &function, std::uint32_t status)
{
    static const auto table = read_documented_statuses(QXSH_PROJECT "/docs/simulator.md");
    const auto row = table.find(function);
    if (row == table.end())
        finding("docs/simulator.md has no row for " + function);
    return row->second.contains(qxsim::status_name(status));
}

// Mostly a small number, sometimes an id from a cell, sometimes any number.
std::uint32_t call_scene::value()
{
    const std::uint8_t choice = input_.byte();
    if (choice < 160)
        return choice % 40;
    if (choice < 232)
        return ids_[choice % ids_.size()];
    if (choice < 240)
        return 250 + choice;
    return static_cast<std::uint32_t>(input_.number(choice < 248 ? 2 : 4));
}

void call_scene::patch(unsigned char *record, const qxsh::argument_row &argument)
{
    if (argument.record < 0) {
        const std::uint32_t number = value();
        std::memcpy(record, &number, std::min<std::size_t>(argument.size, sizeof number));
        return;
    }
    const auto &leaves = leaves_of(argument.record);
    store(record, leaves[input_.below(static_cast<std::uint32_t>(leaves.size()))], value());
}

void *call_scene::place(const qxsh::argument_row &argument)
{
    const std::uint8_t choice = input_.byte();
    if (choice == 255)
        return nullptr;
    memory &chosen = memories_[kind_of(argument)][choice % 3];
    constexpr std::size_t longest_array = qxsim::sa_bundle_limit;
    const std::size_t count = argument.count >= 0 ? longest_array : 1;
    if (chosen.bytes.empty()) {
        chosen.odd = (choice & 64U) != 0;
        chosen.bytes.resize(count * argument.size + (chosen.odd ? 1 : 0));
    }
    for (unsigned patches = choice / 3 % 4; patches > 0; --patches)
        patch(chosen.start() + (count == 1 ? 0 : input_.below(count) * argument.size), argument);
    return chosen.start();
}

made_call call_scene::next()
{
    made_call made;
    const unsigned number = input_.byte() % qxsh::call_count;
    made.function = &qxsh::call_rows[number];
    const auto arguments = arguments_of(*made.function);
    std::vector<qxsh::call_word> words;
    std::vector<std::vector<unsigned char>> before(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const qxsh::argument_row &argument = arguments[i];
        if (argument.pointer) {
            words.emplace_back(place(argument));
            continue;
        }
        // The entry point would truncate an argument of a narrow type.
        const std::uint32_t bits = 8U * argument.size;
        std::uint32_t given = i == 0 && made.function->names_device ? input_.byte() : value();
        if (i == 0 && made.function->names_device)
            given = given < 224 ? given / 128 : given - 222;
        words.emplace_back(bits < 32 ? given & ((1U << bits) - 1) : given);
        made.values.at(i) = words.back().value;
    }
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (auto *const bytes = static_cast<unsigned char *>(words[i].pointer); bytes != nullptr)
            before[i].assign(bytes, bytes + arguments[i].size);
    made.status = qxsh::answer_call(number, words.data(), nullptr);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const void *const bytes = words[i].pointer;
        if (bytes == nullptr)
            continue;
        const bool changed = std::memcmp(before[i].data(), bytes, before[i].size()) != 0;
        if (changed && (made.status != QX_OK || arguments[i].way == qxsh::direction::in))
            finding(std::string{made.function->name.text()} + " wrote into " +
                    arguments[i].name.text() + ", status " + std::to_string(made.status));
        if (made.status == QX_OK && arguments[i].record < 0 && arguments[i].size == 4)
            std::memcpy(&ids_[next_id_++ % ids_.size()], bytes, 4);
    }
    return made;
}

} // namespace fuzz
