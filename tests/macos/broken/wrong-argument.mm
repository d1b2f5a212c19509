// expected-error: cannot initialize a parameter of type 'NSString * _Nonnull' with an rvalue of type 'const char *'
#import <Foundation/Foundation.h>

#include <string>

id entry(const std::string &key)
{
    return [NSBundle.mainBundle objectForInfoDictionaryKey:key.c_str()];
}
