// expected-error: no visible @interface for 'NSBundle' declares the selector 'objectForInfoDictionary:'
#import <Foundation/Foundation.h>

id entry(NSString *key)
{
    return [NSBundle.mainBundle objectForInfoDictionary:key];
}
