// expected-error: ARC forbids explicit message send of 'release'
#import <NetworkExtension/NetworkExtension.h>

@interface NSObject (ManualMemory)
- (oneway void)release;
@end

void stop(NETunnelProviderManager *manager)
{
    [manager.connection stopVPNTunnel];
    [manager release];
}
