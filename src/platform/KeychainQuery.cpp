#include "platform/KeychainQuery.h"

namespace tarnwik {

namespace {

bool isText(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<QString>();
}

// Attributes reach the stores as terminated UTF-8, where a text with a NUL or half a surrogate pair would become
// another one, and might match another item.
bool isAttributeText(const QVariant &value)
{
    if (!isText(value)) {
        return false;
    }
    const QString text = value.toString();
    return text.isValidUtf16() && !text.contains(QChar(u'\0'));
}

} // namespace

std::optional<KeychainQuery> KeychainQuery::fromAttributes(const QVariantMap &attributes, Operation operation)
{
    if (attributes.value(kSecClass) != kSecClassGenericPassword || !attributes.contains(kSecAttrService)
        || !attributes.contains(kSecAttrAccount)
        || (operation == Operation::Add && !attributes.contains(kSecValueData))) {
        return std::nullopt;
    }

    KeychainQuery query;
    for (const auto &[key, value] : attributes.asKeyValueRange()) {
        if (key == kSecAttrService && isAttributeText(value)) {
            query.service = value.toString();
        } else if (key == kSecAttrAccount && isAttributeText(value)) {
            query.account = value.toString();
        } else if (key == kSecAttrAccessGroup && isAttributeText(value)) {
            query.accessGroup = value.toString();
        } else if (operation == Operation::Add && key == kSecValueData
                   && value.metaType() == QMetaType::fromType<QByteArray>()) {
            query.data = value.toByteArray();
        } else if (operation == Operation::CopyMatching && key == kSecReturnData
                   && value.metaType() == QMetaType::fromType<bool>()) {
            query.isDataWanted = value.toBool();
        } else {
            // These change nothing here: there is one class only, the accessibility is the store's own, and one item
            // is all that a look-up ever returns.
            const bool isKnown = key == kSecClass
                || (key == kSecAttrAccessible && operation == Operation::Add && isText(value))
                || (key == kSecMatchLimit && operation == Operation::CopyMatching && value == kSecMatchLimitOne);
            if (!isKnown) {
                return std::nullopt;
            }
        }
    }
    return query;
}

} // namespace tarnwik
