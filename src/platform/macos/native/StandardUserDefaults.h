#pragma once

#include <optional>
#include <string>

namespace tarnwik::mac {

/// The string under \a key in the standard user defaults.
std::optional<std::string> userDefaultsString(const std::string &key);

/// Puts \a value under \a key, or removes \a key where it is absent, and waits until that is on the disk. False when it
/// cannot be written; then what was there before is put back.
bool setUserDefaultsString(const std::optional<std::string> &value, const std::string &key);

} // namespace tarnwik::mac
