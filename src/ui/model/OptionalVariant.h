#pragma once

#include <QVariant>

#include <optional>

namespace tarnwik {

/// \a value for QML, where an absent one is `undefined`.
template<typename T>
QVariant optionalVariant(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

} // namespace tarnwik
