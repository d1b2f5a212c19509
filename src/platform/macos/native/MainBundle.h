#pragma once

#include "platform/macos/native/PropertyValue.h"

namespace tarnwik::mac {

/// The entry \a key of the main bundle's information dictionary.
PropertyValue informationDictionaryObject(const std::string &key);

} // namespace tarnwik::mac
