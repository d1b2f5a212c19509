// expected-error: cannot initialize a parameter of type 'void (^ _Nonnull)(NSError * _Nullable __strong)' with an rvalue of type 'void (^)(NSString *__strong)'
#import <NetworkExtension/NetworkExtension.h>

void load(NETunnelProviderManager *manager)
{
    [manager loadFromPreferencesWithCompletionHandler:^(NSString *text) {
        (void)text;
    }];
}
