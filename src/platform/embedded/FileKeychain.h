#pragma once

#include "platform/KeychainServices.h"

namespace tarnwik {

/// A keychain in a file that its owner alone can read. The secrets in it are not encrypted.
///
/// Several processes may use the same file: it is replaced as a whole, one writer after the other. Status codes beside
/// those of the port: errSecParam, a malformed query; errSecDecode, the file is no keychain, and is left as it is;
/// errSecIO, it cannot be read or written, or another process holds it for more than five seconds.
class FileKeychain final : public KeychainServices
{
public:
    /// The file and its folder need not exist yet.
    explicit FileKeychain(const QString &path);

    OSStatus SecItemAdd(const QVariantMap &attributes) override;
    OSStatus SecItemCopyMatching(const QVariantMap &attributes, QVariant *result) override;
    OSStatus SecItemDelete(const QVariantMap &attributes) override;

private:
    QString m_path;
};

} // namespace tarnwik
