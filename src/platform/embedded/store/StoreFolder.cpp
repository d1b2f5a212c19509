#include "platform/embedded/store/StoreFolder.h"

#include "platform/BundleIdentifier.h"
#include "platform/embedded/store/EmbeddedAppStore.h"
#include "platform/embedded/store/StoreFile.h"

#include <QDir>

#include <chrono>
#include <utility>

namespace tarnwik {

namespace {

constexpr char configurationFile[] = "configuration.json";
constexpr char recordsFile[] = "transactions.json";
constexpr char identityFile[] = "identity.pem";
constexpr char rootFile[] = "root.pem";
constexpr char lockFile[] = "store.lock";

constexpr std::chrono::milliseconds lockPatience = std::chrono::seconds(5);

/// What \a parse makes of the file; nothing when there is none. Puts a broken file aside: for holders of the lock.
template<typename Parse>
auto readOrKeepAside(const QString &path, const QDateTime &now, Parse parse)
    -> std::optional<decltype(parse(QByteArray()))>
{
    const auto bytes = readStoreFile(path);
    if (!bytes)
        return std::nullopt;
    try {
        return parse(*bytes);
    } catch (const StoreError &error) {
        keepAside(path, error.localizedDescription(), now);
    }
}

/// The same for those who do not hold the lock.
template<typename Parse>
auto read(const StoreFolder &folder, const QString &path, Parse parse) -> std::optional<decltype(parse(QByteArray()))>
{
    const auto bytes = readStoreFile(path);
    if (!bytes)
        return std::nullopt;
    QString problem;
    try {
        return parse(*bytes);
    } catch (const StoreError &error) {
        problem = error.localizedDescription();
    }
    try {
        const LockedStore lock(folder);
        // Read again: another program may have put the file aside by now, and begun a new one.
        return readOrKeepAside(path, folder.now(), parse);
    } catch (const StoreLockError &error) {
        throw StoreError(QStringLiteral("%1 The file “%2” could not be renamed, and is left as it is: %3")
                             .arg(problem, path, error.localizedDescription()));
    }
}

} // namespace

StoreFolder::StoreFolder(const QString &path, StoreWallClock wallClock)
    : m_path(path)
    , m_wallClock(std::move(wallClock))
{
}

QString StoreFolder::file(const char *name) const
{
    return QDir(m_path).filePath(QString::fromLatin1(name));
}

QDateTime StoreFolder::now() const
{
    return QDateTime::fromMSecsSinceEpoch(m_wallClock().count(), Qt::UTC);
}

StoreConfiguration StoreFolder::configuration() const
{
    const auto configuration = read(*this, file(configurationFile), parseStoreConfiguration);
    return configuration ? *configuration : builtInStoreConfiguration();
}

StoreRecords StoreFolder::records() const
{
    return read(*this, file(recordsFile), parseStoreRecords).value_or(StoreRecords());
}

TransactionTrust StoreFolder::trust() const
{
    auto root = embeddedStoreRoot(m_path);
    if (!root)
        root = LockedStore(*this).identity().rootCertificate();
    TransactionTrust trust;
    trust.rootCertificate = *root;
    trust.bundleIdentifier = bundleIdentifier();
    trust.now = now();
    return trust;
}

LockedStore::LockedStore(const StoreFolder &folder)
    : m_folder(folder)
    , m_lock(folder.file(lockFile))
{
    if (!QDir().mkpath(folder.path()))
        throw StoreLockError(QStringLiteral("The store’s folder “%1” cannot be made.").arg(folder.path()));
    if (m_lock.tryLock(int(lockPatience.count())))
        return;
    if (m_lock.error() == QLockFile::LockFailedError)
        throw StoreLockError(QStringLiteral("Another program keeps the store in “%1” busy.").arg(folder.path()));
    throw StoreLockError(QStringLiteral("Nothing can be written to the store’s folder “%1”.").arg(folder.path()));
}

StoreRecords LockedStore::records() const
{
    return readOrKeepAside(m_folder.file(recordsFile), m_folder.now(), parseStoreRecords).value_or(StoreRecords());
}

StoreRecords LockedStore::recordsIfIntact() const
{
    const auto bytes = readStoreFile(m_folder.file(recordsFile));
    return bytes ? parseStoreRecords(*bytes) : StoreRecords();
}

void LockedStore::write(const StoreRecords &records)
{
    writeStoreFile(m_folder.file(recordsFile), encodeStoreRecords(records));
}

SigningIdentity LockedStore::identity()
{
    auto identity = readOrKeepAside(m_folder.file(identityFile), m_folder.now(), SigningIdentity::fromPEM);
    if (!identity) {
        identity = SigningIdentity::create(m_folder.now());
        writeStoreFile(m_folder.file(identityFile), identity->toPEM());
    }
    // Each time: a program may have ended between the two files, or somebody may have changed this one.
    const QByteArray root = identity->rootCertificate();
    if (embeddedStoreRoot(m_folder.path()) != root)
        writeStoreFile(m_folder.file(rootFile), root);
    return *std::move(identity);
}

std::optional<QByteArray> embeddedStoreRoot(const QString &folder)
{
    try {
        return readStoreFile(QDir(folder).filePath(QString::fromLatin1(rootFile)));
    } catch (const StoreError &) {
        // A root that cannot be read vouches for nothing, as if there were none.
        return std::nullopt;
    }
}

} // namespace tarnwik
