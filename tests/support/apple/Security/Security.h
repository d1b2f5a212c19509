// Declarations of the Security framework, as far as it is used here: enough to check sources where there is no SDK.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#pragma clang assume_nonnull begin

extern "C" {

extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecAttrAccount;
extern const CFStringRef kSecAttrAccessGroup;
extern const CFStringRef kSecAttrAccessible;
extern const CFStringRef kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly;
extern const CFStringRef kSecValueData;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;

enum : OSStatus { errSecSuccess = 0 };

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef _Nullable *_Nullable result);
OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef _Nullable *_Nullable result);
OSStatus SecItemDelete(CFDictionaryRef query);

} // extern "C"

#pragma clang assume_nonnull end
