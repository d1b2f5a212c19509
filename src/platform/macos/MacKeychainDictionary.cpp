#include "platform/macos/MacKeychainDictionary.h"

#include <utility>

namespace tarnwik {

namespace {

using mac::KeychainAttribute;
using mac::KeychainConstant;

const std::pair<QString, KeychainAttribute> attributeNames[] = {
    {kSecClass, KeychainAttribute::Class},
    {kSecAttrService, KeychainAttribute::Service},
    {kSecAttrAccount, KeychainAttribute::Account},
    {kSecAttrAccessGroup, KeychainAttribute::AccessGroup},
    {kSecAttrAccessible, KeychainAttribute::Accessible},
    {kSecValueData, KeychainAttribute::ValueData},
    {kSecReturnData, KeychainAttribute::ReturnData},
    {kSecMatchLimit, KeychainAttribute::MatchLimit},
};

std::optional<KeychainAttribute> attributeNamed(const QString &name)
{
    for (const auto &[known, attribute] : attributeNames) {
        if (known == name)
            return attribute;
    }
    return std::nullopt;
}

/// The value of an attribute that has a constant for it.
std::optional<mac::KeychainValue> constant(const QVariant &value, const QString &name, KeychainConstant constant)
{
    return value == name ? std::optional<mac::KeychainValue>(constant) : std::nullopt;
}

std::optional<mac::KeychainValue> keychainValue(KeychainAttribute attribute, const QVariant &value)
{
    switch (attribute) {
    case KeychainAttribute::Class:
        return constant(value, kSecClassGenericPassword, KeychainConstant::ClassGenericPassword);
    case KeychainAttribute::Accessible:
        return constant(value, kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly,
                        KeychainConstant::AccessibleAfterFirstUnlockThisDeviceOnly);
    case KeychainAttribute::MatchLimit:
        return constant(value, kSecMatchLimitOne, KeychainConstant::MatchLimitOne);
    case KeychainAttribute::ValueData:
        return mac::KeychainData{value.toByteArray().toStdString()};
    case KeychainAttribute::ReturnData:
        return value.toBool();
    case KeychainAttribute::Service:
    case KeychainAttribute::Account:
    case KeychainAttribute::AccessGroup:
        return value.toString().toStdString();
    }
    return std::nullopt;
}

} // namespace

std::optional<mac::KeychainDictionary> keychainDictionary(const QVariantMap &attributes,
                                                          KeychainQuery::Operation operation)
{
    // The types of the values, and which attributes go with which call.
    if (!KeychainQuery::fromAttributes(attributes, operation))
        return std::nullopt;

    mac::KeychainDictionary dictionary;
    for (const auto &[name, value] : attributes.asKeyValueRange()) {
        const auto attribute = attributeNamed(name);
        auto converted = attribute ? keychainValue(*attribute, value) : std::nullopt;
        if (!converted)
            return std::nullopt;
        dictionary.emplace(*attribute, *std::move(converted));
    }
    return dictionary;
}

} // namespace tarnwik
