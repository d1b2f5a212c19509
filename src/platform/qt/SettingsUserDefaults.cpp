#include "platform/qt/SettingsUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <unistd.h>
#include <utility>

namespace tarnwik {

namespace {

constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
/// Other processes hold the lock for as long as it takes to write one small file.
constexpr int lockPatience = 5000; // milliseconds

[[noreturn]] void fail(const QString &path, const QString &reason)
{
    throw UserDefaultsError(QStringLiteral("The settings file “%1” cannot be written: %2.").arg(path, reason));
}

struct FileContents
{
    enum class State {
        Sound,
        /// There is something, but no settings file.
        Broken,
        /// It may be sound, but this process cannot tell.
        Unreadable,
    };

    State state = State::Sound;
    QJsonObject entries;
    QString error;
};

FileContents read(const QString &path)
{
    using State = FileContents::State;
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    // Anything but a regular file is left unopened: a pipe would hold the program up.
    if (!info.isFile())
        return {State::Broken, {}, {}};

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {State::Unreadable, {}, file.errorString()};
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {State::Unreadable, {}, file.errorString()};

    const auto document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        return {State::Broken, {}, {}};
    return {State::Sound, document.object(), {}};
}

/// Gives the broken file a name that is still free. Whether that worked.
bool putAside(const QString &path)
{
    const QString first = path + QStringLiteral(".broken");
    QString aside = first;
    for (int number = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++number)
        aside = first + u'-' + QString::number(number);
    return QDir().rename(path, aside);
}

bool makeFolder(const QString &path)
{
    const QDir folder = QFileInfo(path).absoluteDir();
    if (folder.exists())
        return true;
    QDir().mkpath(QFileInfo(folder.path()).path());
    return QDir().mkdir(folder.path(), ownerOnly) || folder.exists();
}

} // namespace

SettingsUserDefaults::SettingsUserDefaults(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath())
{
}

std::optional<QString> SettingsUserDefaults::string(const QString &key) const
{
    const auto contents = read(m_path);
    if (contents.state == FileContents::State::Broken) {
        // Where it cannot be put aside now, the next change tries again, and can say so.
        QLockFile lock(m_path + QStringLiteral(".lock"));
        if (lock.tryLock(lockPatience) && read(m_path).state == FileContents::State::Broken)
            putAside(m_path);
        return std::nullopt;
    }
    const auto value = contents.entries.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

void SettingsUserDefaults::setString(const QString &value, const QString &key)
{
    change([&](QJsonObject &entries) { entries.insert(key, value); });
}

void SettingsUserDefaults::removeObject(const QString &key)
{
    change([&](QJsonObject &entries) { entries.remove(key); });
}

void SettingsUserDefaults::change(const std::function<void(QJsonObject &)> &edit)
{
    if (!makeFolder(m_path))
        fail(m_path, QStringLiteral("its folder cannot be made"));
    QLockFile lock(m_path + QStringLiteral(".lock"));
    if (!lock.tryLock(lockPatience))
        fail(m_path,
             lock.error() == QLockFile::LockFailedError ? QStringLiteral("another process is writing it")
                                                        : QStringLiteral("nothing can be written to its folder"));

    auto contents = read(m_path);
    if (contents.state == FileContents::State::Unreadable)
        fail(m_path, contents.error);
    if (contents.state == FileContents::State::Broken && !putAside(m_path))
        fail(m_path, QStringLiteral("what is there is no settings file and cannot be renamed"));

    auto entries = contents.entries;
    edit(entries);
    if (entries != contents.entries || contents.state == FileContents::State::Broken)
        replaceFile(entries);
}

void SettingsUserDefaults::replaceFile(const QJsonObject &entries) const
{
    // A file that its owner made read-only is meant to stay as it is, though its folder would let it be replaced.
    const QFileInfo info(m_path);
    if (info.exists() && !info.isWritable())
        fail(m_path, QStringLiteral("it is read-only"));

    // Temporary files are their owner's alone from the start. This one goes away by itself unless it takes its place.
    QTemporaryFile file(m_path + QStringLiteral(".XXXXXX"));
    if (!file.open())
        fail(m_path, file.errorString());
    const QByteArray text = QJsonDocument(entries).toJson();
    if (file.write(text) != text.size() || !file.flush())
        fail(m_path, file.errorString());
    if (fsync(file.handle()) != 0 || std::rename(QFile::encodeName(file.fileName()), QFile::encodeName(m_path)) != 0)
        fail(m_path, qt_error_string(errno));
    file.setAutoRemove(false);
}

} // namespace tarnwik
