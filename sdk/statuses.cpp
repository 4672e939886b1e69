// Names of statuses.
#include "statuses.h"

#include "sdk_calls.h"

namespace qxsim {

const char *status_name(std::uint32_t number)
{
    for (const status_description &status : status_descriptions)
        if (status.number == number)
            return status.name;
    return "unknown";
}

bool status_number(std::string_view name, std::uint32_t &number)
{
    for (const status_description &status : status_descriptions) {
        if (name == status.name) {
            number = status.number;
            return true;
        }
    }
    return false;
}

} // namespace qxsim
