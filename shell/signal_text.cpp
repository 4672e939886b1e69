// Text inside signal handlers; see signal_text.h.
#include "shell/signal_text.h"

#include <unistd.h>

#include <cerrno>

namespace qxsh {

void signal_text::add_character(char character)
{
    if (size_ < sizeof text_)
        text_[size_++] = character;
}

signal_text &signal_text::add(const char *text, std::size_t most)
{
    if (text == nullptr)
        text = "?";
    for (; *text != '\0' && most > 0; ++text, --most) {
        const auto code = static_cast<unsigned char>(*text);
        add_character(code < ' ' || code == 0x7f ? '?' : *text);
    }
    return *this;
}

signal_text &signal_text::add_number(long long number)
{
    char digits[24];
    std::size_t count = 0;
    auto rest = static_cast<unsigned long long>(number);
    if (number < 0) {
        add_character('-');
        rest = -rest;
    }
    do {
        digits[count++] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    while (count > 0)
        add_character(digits[--count]);
    return *this;
}

signal_text &signal_text::add_hex(unsigned long long number, unsigned digits)
{
    while (digits < 16 && number >> (4 * digits) != 0)
        ++digits;
    while (digits > 0)
        add_character("0123456789abcdef"[number >> (4 * --digits) & 15]);
    return *this;
}

signal_text &signal_text::end_line()
{
    if (size_ == sizeof text_)
        --size_;
    add_character('\n');
    return *this;
}

void signal_text::write(int descriptor)
{
    std::size_t done = 0;
    while (done < size_) {
        const auto count = ::write(descriptor, text_ + done, size_ - done);
        if (count < 0 && errno != EINTR)
            break;
        if (count > 0)
            done += static_cast<std::size_t>(count);
    }
    size_ = 0;
}

} // namespace qxsh
