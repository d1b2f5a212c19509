#pragma once

#include <QString>

namespace tarnwik {

/// The program's identifier: what the app store sells is sold for it, and the desktop knows its windows by it.
inline QString bundleIdentifier()
{
    return QStringLiteral("example.tarnwik.client");
}

} // namespace tarnwik
