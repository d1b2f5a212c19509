#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace tarnwik::service {

/// Gives the root certificate that App Store transactions must lead to, PEM; nothing while there is none, and then no
/// transaction is accepted. Asked at each transaction, from any thread.
using StoreRootSource = std::function<std::optional<QByteArray>()>;

/// The root in the file at \a path, read anew each time: the file may come later, or change. A file that cannot be
/// read is no root.
StoreRootSource storeRootInFile(const QString &path);

} // namespace tarnwik::service
