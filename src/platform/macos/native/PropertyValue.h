#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace tarnwik::mac {

/// A value of a property list, as far as the program knows their kinds; texts are UTF-8. Nothing for what is absent or
/// of another kind.
using PropertyValue = std::variant<std::monostate, std::string, bool, std::int64_t, double>;

} // namespace tarnwik::mac
