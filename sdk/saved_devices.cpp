// All devices as bytes: a line of text, the digest of the tables' layout, the parts of each device,
// and the digest of all that.
#include "saved_devices.h"

#include "device.h"
#include "records/files.h"
#include "records/sha256.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>

namespace qxsim {

namespace {

constexpr std::string_view title = "qx_sim devices 1\n";
using digest = decltype(qxsh::sha256(nullptr, 0));

template <class Part>
concept table = requires(const Part &part)
{
    part.full();
};

template <class Part>
concept list = requires(const Part &part)
{
    part.data();
};

digest digest_of(std::string_view bytes)
{
    return qxsh::sha256(bytes.data(), bytes.size());
}

// The sizes of all parts, and the profile's numbers, which are those in the saved records.
digest layout()
{
    std::string sizes;
    if (numbers.codes != default_numbers.codes || numbers.sizes != default_numbers.sizes) {
        append_bytes(sizes, numbers.codes);
        append_bytes(sizes, numbers.sizes);
    }
    const auto add = [&](std::size_t size) {
        append_bytes(sizes, static_cast<std::uint32_t>(size));
    };
    device::each_part(device_numbered(0), [&]<class Part>(const Part &part) {
        if constexpr (table<Part>) {
            add(part.capacity());
            add(sizeof(decltype(Part::row::key)));
            add(sizeof(decltype(Part::row::entry)));
        } else if constexpr (list<Part>) {
            add(part.size() * sizeof part[0]);
        } else {
            add(sizeof part);
        }
    });
    return digest_of(sizes);
}

void save(std::string &bytes, const device &one, bool clocks)
{
    device::each_part(one, [&]<class Part>(const Part &part) {
        if constexpr (table<Part>)
            part.save(bytes);
        else if constexpr (list<Part>)
            for (const auto &element : part)
                append_bytes(bytes, element);
        else if (clocks || static_cast<const void *>(&part) != &one.ticks)
            append_bytes(bytes, part);
    });
}

bool restore(std::string_view &bytes, device &one)
{
    bool good = true;
    device::each_part(one, [&]<class Part>(Part &part) {
        if constexpr (table<Part>)
            good = good && part.restore(bytes);
        else if constexpr (list<Part>)
            for (auto &element : part)
                good = good && take_bytes(bytes, element);
        else
            good = good && take_bytes(bytes, part);
    });
    return good;
}

} // namespace

std::string saved_devices()
{
    std::string bytes{title};
    append_bytes(bytes, layout());
    for (unsigned number = 0; number < size_of(sized::devices); ++number)
        save(bytes, device_numbered(number), true);
    append_bytes(bytes, digest_of(bytes));
    return bytes;
}

std::string device_contents()
{
    std::string bytes;
    for (unsigned number = 0; number < size_of(sized::devices); ++number)
        save(bytes, device_numbered(number), false);
    return bytes;
}

std::string restore_devices(const std::string &bytes)
{
    std::string_view rest = bytes;
    if (rest.starts_with('{'))
        return "this is a listing, which has neither keys nor ids; save writes what can be "
               "restored";
    if (!rest.starts_with(title))
        return "this is not a file that save has written";
    digest found{};
    std::string_view end = rest.substr(rest.size() - std::min(rest.size(), sizeof found));
    if (!take_bytes(end, found) || found != digest_of(rest.substr(0, rest.size() - sizeof found)))
        return "the file is damaged";
    rest.remove_suffix(sizeof found);
    rest.remove_prefix(title.size());
    if (!take_bytes(rest, found) || found != layout())
        return "another version of the simulator has written the file, or another profile was in "
               "use";
    std::unique_ptr<device> made[most_devices];
    for (unsigned number = 0; number < size_of(sized::devices); ++number) {
        made[number] = std::make_unique<device>(number);
        if (!restore(rest, *made[number]))
            return "the file is damaged";
    }
    if (!rest.empty())
        return "the file is damaged";
    for (std::unique_ptr<device> &one : made)
        if (one)
            replace_device(std::move(one));
    return {};
}

std::string restore_file(const std::string &name)
{
    std::string bytes;
    const int error = qxsh::read_file(name, bytes);
    const std::string mistake = error == EINVAL ? "it is not a regular file"
                                : error != 0    ? std::strerror(error)
                                                : restore_devices(bytes);
    return mistake.empty() ? mistake : "cannot restore " + name + ": " + mistake;
}

} // namespace qxsim
