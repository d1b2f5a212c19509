#pragma once

#import <Foundation/Foundation.h>

#include "platform/macos/native/PlatformError.h"
#include "platform/macos/native/PropertyValue.h"

#include <optional>
#include <string>

// Between Foundation's objects and values of C++. For Objective-C++ sources alone.
namespace tarnwik::mac {

/// The text of \a utf8, which must be UTF-8: what is not yields an empty text.
NSString *_Nonnull textFromUTF8(const std::string &utf8);

/// The same for what may be absent.
NSString *_Nullable textFromUTF8(const std::optional<std::string> &utf8);

/// The UTF-8 of \a text. Absent for nil, and for a text that no UTF-8 can stand for (half a surrogate pair).
std::optional<std::string> utf8FromText(NSString *_Nullable text);

/// The bytes of \a data.
std::string bytesFromData(NSData *_Nonnull data);

/// The object that stands for \a value in a property list; nil for nothing.
id _Nullable objectFromValue(const PropertyValue &value);

/// What \a object is: strings, booleans, whole numbers and other numbers are told apart.
PropertyValue valueFromObject(id _Nullable object);

/// What \a error says; nothing for nil.
std::optional<PlatformError> platformError(NSError *_Nullable error);

} // namespace tarnwik::mac
