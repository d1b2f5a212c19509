#pragma once

#include <cstdint>
#include <string>

namespace tarnwik::mac {

/// What an NSError says of itself. Texts are UTF-8.
struct PlatformError
{
    std::string domain;
    std::int64_t code = 0;
    /// The system's own sentence, in the user's language.
    std::string localizedDescription;

    bool operator==(const PlatformError &) const = default;
};

} // namespace tarnwik::mac
