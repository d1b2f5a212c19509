#pragma once

#include "platform/macos/native/PropertyValue.h"

#include <QVariant>

namespace tarnwik {

/// The variant that holds \a value: a QString, a bool, a qlonglong or a double; an invalid one for nothing.
QVariant variantFromPropertyValue(const mac::PropertyValue &value);

/// The same the other way round. Nothing for a variant of any other kind.
mac::PropertyValue propertyValueFromVariant(const QVariant &variant);

} // namespace tarnwik
