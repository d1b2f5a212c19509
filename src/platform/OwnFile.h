#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwik {

/// Replaces the file at \a path whole by \a bytes, readable by its owner alone. What was there stays when that fails,
/// on a full disk too. What went wrong, as the system calls it; nothing when it succeeded.
std::optional<QString> replaceOwnFile(const QString &path, const QByteArray &bytes);

} // namespace tarnwik
