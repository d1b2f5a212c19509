#include "platform/OwnFile.h"

#include <QSaveFile>

namespace tarnwik {

std::optional<QString> replaceOwnFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    // The file belongs to its owner alone before there is anything in it. It is flushed here, since commit() does not
    // notice when what it flushes itself finds no room.
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        || file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return file.errorString();
    return std::nullopt;
}

} // namespace tarnwik
