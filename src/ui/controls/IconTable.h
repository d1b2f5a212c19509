#pragma once

#include <QString>

#include <optional>

namespace tarnwik {

/// Where the drawing of the icon with the SF Symbols name \a symbol lies; absent for a name that is not drawn.
std::optional<QString> iconFile(const QString &symbol);

} // namespace tarnwik
