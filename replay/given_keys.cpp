// Two generations of keys: the older one is dropped when the younger one is full.
#include "replay/given_keys.h"

#include <utility>

namespace qxsh {

void given_keys::add(const std::string &text, const unsigned char *bytes, std::size_t size)
{
    if (young_.size() >= most) {
        old_ = std::move(young_);
        young_.clear();
    }
    young_.insert_or_assign(text, std::string{reinterpret_cast<const char *>(bytes), size});
}

const std::string *given_keys::find(const std::string &text)
{
    if (const auto found = young_.find(text); found != young_.end())
        return &found->second;
    const auto found = old_.find(text);
    return found != old_.end() ? &found->second : nullptr;
}

} // namespace qxsh
