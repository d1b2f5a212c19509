#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace tarnwik::mac {

/// The attributes that a keychain call may name, called as the platform's constants are.
enum class KeychainAttribute {
    Class,
    Service,
    Account,
    AccessGroup,
    Accessible,
    ValueData,
    ReturnData,
    MatchLimit,
};

/// The platform's constants that an attribute may have for its value.
enum class KeychainConstant {
    ClassGenericPassword,
    AccessibleAfterFirstUnlockThisDeviceOnly,
    MatchLimitOne,
};

/// Bytes, as opposed to a text.
struct KeychainData
{
    std::string bytes;

    bool operator==(const KeychainData &) const = default;
};

/// A text is UTF-8.
using KeychainValue = std::variant<std::string, KeychainData, bool, KeychainConstant>;
using KeychainDictionary = std::map<KeychainAttribute, KeychainValue>;

struct KeychainMatch
{
    std::int32_t status = 0;
    /// The data of the item. Absent when there is none, or when what was found is no data.
    std::optional<std::string> data;
};

// Each passes on the attributes that it is given and no other, and answers with the keychain's own status.
std::int32_t keychainAdd(const KeychainDictionary &attributes);
KeychainMatch keychainCopyMatching(const KeychainDictionary &query);
std::int32_t keychainDelete(const KeychainDictionary &query);

} // namespace tarnwik::mac
