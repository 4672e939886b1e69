// The model's memory. Everything is done byte by byte.
#include "memory.h"

#include <stdexcept>

namespace random_test {

static std::uint8_t &byte(place at)
{
    return at.where->bytes.at(at.offset); // a place outside its block is a mistake of the model
}

std::uint64_t load(place from, std::uint32_t width)
{
    std::uint64_t value = 0;
    for (std::uint32_t i = 0; i < width; ++i)
        value |= std::uint64_t{byte(from.plus(i))} << (8 * i);
    return value;
}

void store(place to, std::uint32_t width, std::uint64_t value)
{
    for (std::uint32_t i = 0; i < width; ++i)
        byte(to.plus(i)) = static_cast<std::uint8_t>(value >> (8 * i));
}

void copy(place to, place from, std::uint32_t count)
{
    std::vector<std::uint8_t> bytes;
    for (std::uint32_t i = 0; i < count; ++i)
        bytes.push_back(byte(from.plus(i)));
    for (std::uint32_t i = 0; i < count; ++i)
        byte(to.plus(i)) = bytes[i];
}

place element_of(place record, const field &which, std::uint32_t element)
{
    return record.plus(which.offset + element * which.stride());
}

std::uint32_t get(place record, const field &which, std::uint32_t element)
{
    const auto value =
        static_cast<std::uint32_t>(load(element_of(record, which, element), which.number->width));
    if (which.bits == 0)
        return value;
    return (value >> which.bit) % (1U << which.bits);
}

void set(place record, const field &which, std::uint32_t element, std::uint64_t value)
{
    const place at = element_of(record, which, element);
    const std::uint32_t width = which.number->width;
    if (which.bits != 0) {
        // Bit by bit, so that the neighbours keep theirs.
        std::uint64_t word = load(at, width);
        for (std::uint32_t bit = 0; bit < which.bits; ++bit) {
            const std::uint64_t mask = std::uint64_t{1} << (which.bit + bit);
            word = (value >> bit & 1) != 0 ? word | mask : word & ~mask;
        }
        value = word;
    }
    store(at, width, value);
}

std::string alternate(std::uint32_t value)
{
    std::string text;
    for (; value != 0; value /= 16)
        text.insert(text.begin(), "0123456789abcdef"[value % 16]);
    return text.empty() ? "0" : "0x" + text;
}

std::string dump(place from, const record &type)
{
    std::string text;
    for (const field &each : type.fields) {
        if (!each.in_dump)
            continue;
        for (std::uint32_t i = 0; i < each.elements(); ++i) {
            if (each.nested != nullptr)
                text += dump(element_of(from, each, i), *each.nested);
            else if (each.count == 0)
                text += each.name + " = " + alternate(get(from, each, 0)) + " \n";
            else
                text += each.name + "[" + std::to_string(i) +
                        "] = " + alternate(get(from, each, i)) + "\n";
        }
    }
    return text;
}

std::string digits(const block &shown)
{
    std::string text;
    for (const std::uint8_t each : shown.bytes) {
        text += "0123456789abcdef"[each / 16];
        text += "0123456789abcdef"[each % 16];
    }
    return text;
}

} // namespace random_test
