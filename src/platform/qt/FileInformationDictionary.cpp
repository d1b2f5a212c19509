#include "platform/qt/FileInformationDictionary.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tarnwik {

FileInformationDictionary::FileInformationDictionary(QStringList paths)
    : m_paths(std::move(paths))
{
}

QVariant FileInformationDictionary::object(const QString &key) const
{
    for (const QString &path : m_paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto entries = QJsonDocument::fromJson(file.readAll()).object();
        const auto entry = entries.constFind(key);
        if (entry == entries.constEnd())
            continue;
        // An entry of a kind that the port does not know still hides those of lesser precedence.
        const QJsonValue value = *entry;
        return value.isString() || value.isDouble() || value.isBool() ? value.toVariant() : QVariant();
    }
    return {};
}

} // namespace tarnwik
