// expected-error: cast of Objective-C pointer type 'NSDictionary *' to C pointer type 'CFDictionaryRef' (aka 'const __CFDictionary *') requires a bridged cast
#import <Foundation/Foundation.h>
#import <Security/Security.h>

OSStatus deleteItems(NSDictionary *query)
{
    return SecItemDelete((CFDictionaryRef)query);
}
