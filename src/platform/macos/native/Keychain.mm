#import "platform/macos/native/Keychain.h"

#import "platform/macos/native/FoundationValues.h"

#import <Security/Security.h>

namespace tarnwik::mac {

namespace {

using Attributes = NSMutableDictionary<NSString *, id>;

NSString *_Nonnull name(KeychainAttribute attribute)
{
    switch (attribute) {
    case KeychainAttribute::Class:
        return (__bridge NSString *)kSecClass;
    case KeychainAttribute::Service:
        return (__bridge NSString *)kSecAttrService;
    case KeychainAttribute::Account:
        return (__bridge NSString *)kSecAttrAccount;
    case KeychainAttribute::AccessGroup:
        return (__bridge NSString *)kSecAttrAccessGroup;
    case KeychainAttribute::Accessible:
        return (__bridge NSString *)kSecAttrAccessible;
    case KeychainAttribute::ValueData:
        return (__bridge NSString *)kSecValueData;
    case KeychainAttribute::ReturnData:
        return (__bridge NSString *)kSecReturnData;
    case KeychainAttribute::MatchLimit:
        return (__bridge NSString *)kSecMatchLimit;
    }
    __builtin_unreachable();
}

/// Makes the object that stands for each kind of value.
struct ObjectMaker
{
    id _Nonnull operator()(const std::string &text) const { return textFromUTF8(text); }
    id _Nonnull operator()(bool flag) const { return [NSNumber numberWithBool:flag]; }

    id _Nonnull operator()(const KeychainData &data) const
    {
        // The secret is not copied once more: the dictionary does not outlive the call.
        return [NSData dataWithBytesNoCopy:const_cast<char *>(data.bytes.data())
                                    length:data.bytes.size()
                              freeWhenDone:NO];
    }

    id _Nonnull operator()(KeychainConstant constant) const
    {
        switch (constant) {
        case KeychainConstant::ClassGenericPassword:
            return (__bridge NSString *)kSecClassGenericPassword;
        case KeychainConstant::AccessibleAfterFirstUnlockThisDeviceOnly:
            return (__bridge NSString *)kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly;
        case KeychainConstant::MatchLimitOne:
            return (__bridge NSString *)kSecMatchLimitOne;
        }
        __builtin_unreachable();
    }
};

Attributes *_Nonnull attributesFrom(const KeychainDictionary &dictionary)
{
    Attributes *const attributes = [Attributes new];
    for (const auto &[attribute, value] : dictionary)
        attributes[name(attribute)] = std::visit(ObjectMaker(), value);
    return attributes;
}

} // namespace

std::int32_t keychainAdd(const KeychainDictionary &attributes)
{
    @autoreleasepool {
        return SecItemAdd((__bridge CFDictionaryRef)attributesFrom(attributes), nullptr);
    }
}

KeychainMatch keychainCopyMatching(const KeychainDictionary &query)
{
    @autoreleasepool {
        CFTypeRef result = nullptr;
        KeychainMatch match;
        match.status = SecItemCopyMatching((__bridge CFDictionaryRef)attributesFrom(query), &result);
        const id found = CFBridgingRelease(result);
        if (match.status == errSecSuccess && [found isKindOfClass:[NSData class]])
            match.data = bytesFromData(static_cast<NSData *>(found));
        return match;
    }
}

std::int32_t keychainDelete(const KeychainDictionary &query)
{
    @autoreleasepool {
        return SecItemDelete((__bridge CFDictionaryRef)attributesFrom(query));
    }
}

} // namespace tarnwik::mac
