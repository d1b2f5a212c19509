#import "platform/macos/native/MainBundle.h"

#import "platform/macos/native/FoundationValues.h"

namespace tarnwik::mac {

PropertyValue informationDictionaryObject(const std::string &key)
{
    @autoreleasepool {
        return valueFromObject([NSBundle.mainBundle objectForInfoDictionaryKey:textFromUTF8(key)]);
    }
}

} // namespace tarnwik::mac
