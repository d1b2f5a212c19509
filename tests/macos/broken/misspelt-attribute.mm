// expected-error: use of undeclared identifier 'kSecAttrAccountName'
#import <Foundation/Foundation.h>
#import <Security/Security.h>

NSString *accountAttribute()
{
    return (__bridge NSString *)kSecAttrAccountName;
}
