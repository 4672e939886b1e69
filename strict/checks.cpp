// Checks of pointers against the table of blocks; see checks.h.
#include "strict/checks.h"

#include "commands/command_table.h"
#include "records/addresses.h"
#include "records/table.h"
#include "runtime/handle_text.h"
#include "types.h"

#include <algorithm>

namespace qxsh {

namespace {

// How far past its end a block is still named in messages, in bytes.
constexpr std::uint32_t near_bytes = 4096;

std::string handle_text(std::uint32_t address, const char *type)
{
    char digits[address_digits];
    write_address(digits, address);
    return "_" + std::string{digits, sizeof digits} + type;
}

std::string described(const known_block &block)
{
    std::string text = "block " + std::to_string(block.serial) + " (" +
                       handle_text(block.address, swig_expected_types[block.type].name) + ", " +
                       std::to_string(block.size) + " bytes), made by " + shown(*block.made);
    if (!block.live())
        text += ", freed by " + shown(*block.freed);
    return text;
}

std::string at_byte(std::uint32_t offset, const known_block &block)
{
    // An offset before the block's start is shown as negative.
    return "byte " + std::to_string(static_cast<std::int32_t>(offset)) + " of " + described(block);
}

std::string in_no_block(const block_table &blocks, const std::string &what, std::uint32_t address)
{
    std::string text = what + " lies in no live block";
    const known_block *const before = blocks.up_to(address);
    if (before == nullptr)
        return text;
    const std::uint32_t offset = address - before->address;
    if (offset - before->size <= near_bytes)
        text += ", but at " + at_byte(offset, *before);
    return text;
}

// ------------------------------------------------------------------------------ what lies where

// Every byte may be accessed through such a handle.
bool is_byte_view(int type)
{
    return type == type_unsigned_char;
}

// Whether `wanted` is at this offset of `outer`: nested in it, or `outer` itself.
bool holds(const record_row &outer, std::uint32_t offset, const record_row &wanted)
{
    if (offset == 0 && &outer == &wanted)
        return true;
    const auto fields = fields_of(outer);
    return std::any_of(fields.begin(), fields.end(), [&](const field_row &field) {
        if (field.record < 0 || offset < field.offset)
            return false;
        const std::uint32_t inner = offset - field.offset;
        return inner < elements_of(field) * field.size &&
               holds(*record_in(field), inner % field.size, wanted);
    });
}

// Whether an element of the type starts at this offset, which is inside the block.
bool holds(const known_block &block, std::uint32_t offset, int type)
{
    if (is_byte_view(type))
        return true;
    const element_type &made_of = element_types[block.type];
    if (offset / made_of.size >= block.size / made_of.size)
        return false;
    const std::uint32_t inner = offset % made_of.size;
    if (type == block.type && inner == 0)
        return true;
    const int wanted = element_types[type].record;
    return wanted >= 0 && made_of.record >= 0 &&
           holds(record_rows[made_of.record], inner, record_rows[wanted]);
}

std::string not_there(int type, std::uint32_t offset, const known_block &block)
{
    return "there is no " + std::string{swig_expected_types[type].str} + " at " +
           at_byte(offset, block);
}

// The problem of a pointer whatever its use. `block` becomes the block that contains it, or null.
std::string problem_of_place(const block_table &blocks, checked_pointer what,
                             const known_block *&block)
{
    const std::uint32_t address = address_of(what.pointer);
    block = lies_low(what.pointer) ? blocks.at(address) : nullptr;
    if (block == nullptr)
        return in_no_block(blocks, handle_text(address, swig_expected_types[what.type].name),
                           address);
    if (!block->live())
        return "use after free of " + described(*block);
    return {};
}

std::uint32_t offset_in(const known_block &block, const void *pointer)
{
    return address_of(pointer) - block.address;
}

} // namespace

std::string problem_of_access(const block_table &blocks, checked_pointer what, std::uint32_t first,
                              std::uint32_t count)
{
    const known_block *block;
    if (auto problem = problem_of_place(blocks, what, block); block == nullptr || !problem.empty())
        return problem;
    const std::uint32_t start = offset_in(*block, what.pointer);
    const std::uint32_t size = element_types[what.type].size;
    // An array without elements still has a start; the bounds are checked below.
    if (!holds(*block, start, what.type) && !(start == 0 && what.type == block->type))
        return not_there(what.type, start, *block);
    for (std::uint32_t index = first; index - first < count; ++index) {
        const std::uint32_t offset = start + index * size;
        if (offset > block->size || size > block->size - offset)
            return "access outside a block, at " + at_byte(offset, *block);
        if (!holds(*block, offset, what.type))
            return not_there(what.type, offset, *block);
    }
    return {};
}

std::string problem_of_base(const block_table &blocks, checked_pointer what)
{
    const known_block *block;
    if (auto problem = problem_of_place(blocks, what, block); block == nullptr || !problem.empty())
        return problem;
    const std::uint32_t start = offset_in(*block, what.pointer);
    if ((start == 0 && what.type == block->type) || holds(*block, start, what.type))
        return {};
    return not_there(what.type, start, *block);
}

std::string problem_of_release(const block_table &blocks, const void *pointer)
{
    const std::uint32_t address = address_of(pointer);
    const known_block *const block = lies_low(pointer) ? blocks.at(address) : nullptr;
    if (block == nullptr)
        return "free of no block: " + in_no_block(blocks, handle_text(address, "_p_void"), address);
    const std::uint32_t offset = address - block->address;
    if (offset != 0)
        return "free inside a block, at " + at_byte(offset, *block);
    if (!block->live())
        return "double free of " + described(*block);
    return {};
}

} // namespace qxsh
