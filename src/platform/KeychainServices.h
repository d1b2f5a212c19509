#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

namespace tarnwik {

/// What a keychain call answers; 0 is success.
using OSStatus = std::int32_t;

// The codes of the platform's keychain that occur here.
inline constexpr OSStatus errSecSuccess = 0;
inline constexpr OSStatus errSecIO = -36;
inline constexpr OSStatus errSecParam = -50;
inline constexpr OSStatus errSecUserCanceled = -128;
inline constexpr OSStatus errSecNotAvailable = -25291;
inline constexpr OSStatus errSecDuplicateItem = -25299;
inline constexpr OSStatus errSecItemNotFound = -25300;
inline constexpr OSStatus errSecInteractionNotAllowed = -25308;
inline constexpr OSStatus errSecDecode = -26275;

// Attribute names and values: the texts behind the platform's constants of the same names.
inline const QString kSecClass = QStringLiteral("class");
inline const QString kSecClassGenericPassword = QStringLiteral("genp");
inline const QString kSecAttrService = QStringLiteral("svce");
inline const QString kSecAttrAccount = QStringLiteral("acct");
inline const QString kSecAttrAccessGroup = QStringLiteral("agrp");
inline const QString kSecAttrAccessible = QStringLiteral("pdmn");
inline const QString kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly = QStringLiteral("cku");
inline const QString kSecValueData = QStringLiteral("v_Data");
inline const QString kSecReturnData = QStringLiteral("r_Data");
inline const QString kSecMatchLimit = QStringLiteral("m_Limit");
inline const QString kSecMatchLimitOne = QStringLiteral("m_LimitOne");

/// The secret store of the user's session, on generic-password items.
///
/// The calls are synchronous: they block while the person is asked to unlock the store, for 60 seconds at most. They
/// may be made from any thread. A query without an access group matches items of every group; one with an access
/// group, the empty one included, matches that group's only.
class KeychainServices
{
public:
    virtual ~KeychainServices() = default;

    /// Stores a new item: class, service, account, optional access group, kSecValueData (a QByteArray) and
    /// accessibility. errSecDuplicateItem when there is one of this class, service, account and group.
    virtual OSStatus SecItemAdd(const QVariantMap &attributes) = 0;

    /// Looks one item up and puts its data (a QByteArray) into \a result. errSecItemNotFound when there is none; a
    /// locked store is never mistaken for a missing item.
    virtual OSStatus SecItemCopyMatching(const QVariantMap &query, QVariant *result) = 0;

    /// Deletes every item that matches. errSecItemNotFound when there is none.
    virtual OSStatus SecItemDelete(const QVariantMap &query) = 0;
};

} // namespace tarnwik
