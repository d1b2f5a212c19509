#pragma once

#include "platform/UserDefaults.h"

#include <QJsonObject>

#include <functional>
#include <optional>

namespace tarnwik {

/// The user defaults in a settings file, which may hold the session's token: a JSON object of strings, readable by its
/// owner alone.
///
/// The file is read at every access, so that what other processes write is seen, and replaced whole at every change,
/// under a lock that these processes share. Not QSettings: that one keeps what it failed to write and writes it later,
/// misses a change of the same size in the same millisecond, and takes much of what is broken for empty.
///
/// What is no settings file is put aside as "NAME.broken" ("NAME.broken-2", …) at the first access and started afresh.
class SettingsUserDefaults final : public UserDefaults
{
public:
    /// \a path is the file's; it and its folder are made when something is first stored.
    explicit SettingsUserDefaults(const QString &path);

    std::optional<QString> string(const QString &key) const override;
    void setString(const QString &value, const QString &key) override;
    void removeObject(const QString &key) override;

private:
    void change(const std::function<void(QJsonObject &)> &edit);
    void replaceFile(const QJsonObject &entries) const;

    QString m_path;
};

} // namespace tarnwik
