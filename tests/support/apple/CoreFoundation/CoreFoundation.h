// Declarations of CoreFoundation, as far as it is used here: enough to check sources where there is no SDK.
#pragma once

#include <objc/objc.h>

#pragma clang assume_nonnull begin

extern "C" {

typedef unsigned char Boolean;
typedef int OSStatus;
typedef unsigned long CFTypeID;

// The attributes make a cast between these and objects an error unless it says who owns what.
typedef const void *CFTypeRef;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString *CFStringRef;
typedef const struct __attribute__((objc_bridge(NSData))) __CFData *CFDataRef;
typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary *CFDictionaryRef;
typedef const struct __attribute__((objc_bridge(NSNumber))) __CFBoolean *CFBooleanRef;
typedef const struct __attribute__((objc_bridge(NSNumber))) __CFNumber *CFNumberRef;

CFTypeID CFGetTypeID(CFTypeRef cf);
CFTypeID CFBooleanGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);

extern const CFStringRef kCFPreferencesCurrentApplication;
Boolean CFPreferencesAppSynchronize(CFStringRef applicationID);

} // extern "C"

#pragma clang assume_nonnull end
