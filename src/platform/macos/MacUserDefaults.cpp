#include "platform/macos/MacUserDefaults.h"

#include "platform/macos/native/StandardUserDefaults.h"

namespace tarnwik {

namespace {

void store(const std::optional<std::string> &value, const QString &key)
{
    // The system tells that it failed, but not why.
    if (!mac::setUserDefaultsString(value, key.toStdString()))
        throw UserDefaultsError(QStringLiteral("Your preferences cannot be written."));
}

} // namespace

std::optional<QString> MacUserDefaults::string(const QString &key) const
{
    const auto value = mac::userDefaultsString(key.toStdString());
    return value ? std::optional(QString::fromStdString(*value)) : std::nullopt;
}

void MacUserDefaults::setString(const QString &value, const QString &key)
{
    store(value.toStdString(), key);
}

void MacUserDefaults::removeObject(const QString &key)
{
    store(std::nullopt, key);
}

} // namespace tarnwik
