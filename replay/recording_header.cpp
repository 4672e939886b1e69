// The first line of a recording; see recording_header.h.
#include "replay/recording_header.h"

#include "records/json.h"
#include "records/utf8.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace qxsh {

static constexpr const char *key_words[] = {"clear", "fingerprints", "lengths"};
static constexpr char digits[] = "0123456789abcdef";
static constexpr std::size_t salt_size = 16;

const char *word_of(recorded_keys keys)
{
    return key_words[static_cast<std::size_t>(keys)];
}

std::optional<recorded_keys> recorded_keys_of(std::string_view word)
{
    const auto *const found = std::find(std::begin(key_words), std::end(key_words), word);
    if (found == std::end(key_words))
        return {};
    return static_cast<recorded_keys>(found - std::begin(key_words));
}

std::string hexadecimal(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::optional<std::string> from_hexadecimal(std::string_view text)
{
    if (text.size() % 2 != 0)
        return {};
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const std::string_view known{digits, 16};
        const std::size_t high = known.find(text[at]);
        const std::size_t low = known.find(text[at + 1]);
        if (high == known.npos || low == known.npos)
            return {};
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

// Also those of ISO 8859, which begin a terminal's commands as well.
static bool is_control(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    return first < 0x20 || first == 0x7f ||
           (first == 0xc2 && static_cast<unsigned char>(character[1]) < 0xa0);
}

std::string header_text(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t size = sequence_length(text);
        const std::string_view next = text.substr(0, std::max<std::size_t>(size, 1));
        if (size != 0 && !is_control(next))
            result += next;
        else
            for (const char byte : next)
                result += "\\x" + hexadecimal({&byte, 1});
        text.remove_prefix(next.size());
    }
    return result;
}

std::string header_line(const recording_header &header)
{
    const auto text = [](json_text &to, const char *name, const std::string &of) -> json_text & {
        return to.name(name).string(header_text(of).c_str());
    };
    json_text json{true};
    json.object().member("recording", recording_version);
    text(json, "library", header.library).member("size", header.size);
    text(json, "build_id", header.build_id);
    text(json, "date", header.date);
    text(json, "processor", header.processor);
    json.name("keys").string(word_of(header.keys));
    json.name("salt").string(hexadecimal(header.salt).c_str()).end();
    return json.text() + "\n";
}

static std::string random_bytes(std::size_t size)
{
    std::string bytes(size, '\0');
    const int file = open("/dev/urandom", O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (file < 0)
        return {};
    const ssize_t count = read(file, bytes.data(), size);
    close(file);
    return count == static_cast<ssize_t>(size) ? bytes : std::string{};
}

void describe_here_and_now(recording_header &header)
{
    const std::time_t now = std::time(nullptr);
    tm parts{};
    char date[32] = "";
    if (gmtime_r(&now, &parts) != nullptr)
        std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%SZ", &parts);
    header.date = date;
    utsname system{};
    if (uname(&system) >= 0)
        header.processor = system.machine;
    header.salt.clear();
    if (header.keys != recorded_keys::fingerprints)
        return;
    header.salt = random_bytes(salt_size);
    if (header.salt.empty())
        header.keys = recorded_keys::lengths;
}

} // namespace qxsh
