#import "platform/macos/native/StandardUserDefaults.h"

#import "platform/macos/native/FoundationValues.h"

namespace tarnwik::mac {

namespace {

void put(id _Nullable object, NSString *_Nonnull key)
{
    if (object)
        [NSUserDefaults.standardUserDefaults setObject:object forKey:key];
    else
        [NSUserDefaults.standardUserDefaults removeObjectForKey:key];
}

} // namespace

std::optional<std::string> userDefaultsString(const std::string &key)
{
    @autoreleasepool {
        return utf8FromText([NSUserDefaults.standardUserDefaults stringForKey:textFromUTF8(key)]);
    }
}

bool setUserDefaultsString(const std::optional<std::string> &value, const std::string &key)
{
    @autoreleasepool {
        NSString *const name = textFromUTF8(key);
        const id before = [NSUserDefaults.standardUserDefaults objectForKey:name];
        put(textFromUTF8(value), name);
        // The defaults are written later by themselves, and silently; this writes them now, and tells whether it could.
        if (CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication))
            return true;
        put(before, name);
        return false;
    }
}

} // namespace tarnwik::mac
