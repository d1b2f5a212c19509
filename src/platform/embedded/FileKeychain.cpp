#include "platform/embedded/FileKeychain.h"

#include "platform/KeychainQuery.h"
#include "platform/OwnFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>

#include <algorithm>
#include <chrono>
#include <exception>
#include <vector>

namespace tarnwik {

namespace {

constexpr std::chrono::milliseconds lockLimit = std::chrono::seconds(5);

const QString serviceKey = QStringLiteral("service");
const QString accountKey = QStringLiteral("account");
const QString accessGroupKey = QStringLiteral("access_group");
const QString dataKey = QStringLiteral("data");

class FileKeychainError final : public std::exception
{
public:
    explicit FileKeychainError(OSStatus status)
        : m_status(status)
    {
    }

    OSStatus status() const noexcept { return m_status; }

private:
    OSStatus m_status;
};

struct Item
{
    QString service;
    QString account;
    std::optional<QString> accessGroup;
    QByteArray data;
};

using Items = std::vector<Item>;

Item itemFromJSON(const QJsonObject &object)
{
    const auto text = [&](const QString &key) {
        const QJsonValue value = object.value(key);
        if (!value.isString()) {
            throw FileKeychainError(errSecDecode);
        }
        return value.toString();
    };
    const auto data = QByteArray::fromBase64Encoding(text(dataKey).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!data) {
        throw FileKeychainError(errSecDecode);
    }
    Item item{text(serviceKey), text(accountKey), std::nullopt, *data};
    if (object.contains(accessGroupKey)) {
        item.accessGroup = text(accessGroupKey);
    }
    return item;
}

QJsonObject jsonFromItem(const Item &item)
{
    QJsonObject object{
        {serviceKey, item.service},
        {accountKey, item.account},
        {dataKey, QString::fromLatin1(item.data.toBase64())},
    };
    if (item.accessGroup) {
        object.insert(accessGroupKey, *item.accessGroup);
    }
    return object;
}

Items readItems(const QString &path)
{
    QFile file(path);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        throw FileKeychainError(errSecIO);
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isArray()) {
        throw FileKeychainError(errSecDecode);
    }
    Items items;
    for (const QJsonValue value : document.array()) {
        items.push_back(itemFromJSON(value.toObject()));
    }
    return items;
}

void writeItems(const QString &path, const Items &items)
{
    QJsonArray array;
    for (const Item &item : items) {
        array.append(jsonFromItem(item));
    }
    if (replaceOwnFile(path, QJsonDocument(array).toJson()))
        throw FileKeychainError(errSecIO);
}

// Reads the items, lets \a change change them, and writes them back, while no other process does the same.
template<typename Change>
void changeItems(const QString &path, Change change)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        throw FileKeychainError(errSecIO);
    }
    QLockFile lock(path + QStringLiteral(".lock"));
    if (!lock.tryLock(static_cast<int>(lockLimit.count()))) {
        throw FileKeychainError(errSecIO);
    }
    Items items = readItems(path);
    change(items);
    writeItems(path, items);
}

bool matches(const Item &item, const KeychainQuery &query)
{
    return item.service == query.service && item.account == query.account
        && (!query.accessGroup || item.accessGroup == query.accessGroup);
}

} // namespace

FileKeychain::FileKeychain(const QString &path)
    : m_path(path)
{
}

OSStatus FileKeychain::SecItemAdd(const QVariantMap &attributes)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::Add);
    if (!query) {
        return errSecParam;
    }
    changeItems(m_path, [&](Items &items) {
        const bool isThere = std::any_of(items.begin(), items.end(), [&](const Item &item) {
            return matches(item, *query) && item.accessGroup == query->accessGroup;
        });
        if (isThere) {
            throw FileKeychainError(errSecDuplicateItem);
        }
        items.push_back({query->service, query->account, query->accessGroup, query->data});
    });
    return errSecSuccess;
} catch (const FileKeychainError &error) {
    return error.status();
}

OSStatus FileKeychain::SecItemCopyMatching(const QVariantMap &attributes, QVariant *result)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::CopyMatching);
    if (!query) {
        return errSecParam;
    }
    // Needs no lock: the file is always a whole one.
    const Items items = readItems(m_path);
    const auto item =
        std::find_if(items.begin(), items.end(), [&](const Item &candidate) { return matches(candidate, *query); });
    if (item == items.end()) {
        return errSecItemNotFound;
    }
    if (query->isDataWanted && result != nullptr) {
        *result = item->data;
    }
    return errSecSuccess;
} catch (const FileKeychainError &error) {
    return error.status();
}

OSStatus FileKeychain::SecItemDelete(const QVariantMap &attributes)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::Delete);
    if (!query) {
        return errSecParam;
    }
    changeItems(m_path, [&](Items &items) {
        if (std::erase_if(items, [&](const Item &item) { return matches(item, *query); }) == 0) {
            throw FileKeychainError(errSecItemNotFound);
        }
    });
    return errSecSuccess;
} catch (const FileKeychainError &error) {
    return error.status();
}

} // namespace tarnwik
