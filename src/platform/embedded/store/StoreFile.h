#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace tarnwik {

/// The bytes of a file; nothing when there is none. Throws StoreError when there is one that cannot be read.
std::optional<QByteArray> readStoreFile(const QString &path);

/// Puts \a bytes into the place of the file at \a path, as a whole and for its owner alone. Throws StoreError; the file is
/// as it was then.
void writeStoreFile(const QString &path, const QByteArray &bytes);

/// Renames the broken file at \a path, never over another one: the new name has the local time \a now in it. \a problem
/// is the sentence that tells what is wrong with it. Always throws StoreError, whose text tells that too, and where the
/// file is from now on. When it cannot be renamed it is left as it is, and the text is the same each time.
[[noreturn]] void keepAside(const QString &path, const QString &problem, const QDateTime &now);

} // namespace tarnwik
