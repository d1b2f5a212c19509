// Declarations of NetworkExtension, as far as it is used here: enough to check sources where there is no SDK.
#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NEVPNStatus) {
    NEVPNStatusInvalid = 0,
    NEVPNStatusDisconnected = 1,
    NEVPNStatusConnecting = 2,
    NEVPNStatusConnected = 3,
    NEVPNStatusReasserting = 4,
    NEVPNStatusDisconnecting = 5,
};

extern "C" NSNotificationName const NEVPNStatusDidChangeNotification;

@interface NEVPNConnection : NSObject
@property (readonly) NEVPNStatus status;
- (BOOL)startVPNTunnelAndReturnError:(NSError *_Nullable *_Nullable)error;
- (void)stopVPNTunnel;
- (void)fetchLastDisconnectErrorWithCompletionHandler:(void (^)(NSError *_Nullable error))handler;
@end

@interface NEVPNProtocol : NSObject <NSCopying>
@property (copy, nullable) NSString *serverAddress;
@property BOOL disconnectOnSleep;
@end

@interface NETunnelProviderProtocol : NEVPNProtocol
@property (copy, nullable) NSDictionary<NSString *, id> *providerConfiguration;
@property (copy, nullable) NSString *providerBundleIdentifier;
@end

@interface NEVPNManager : NSObject
@property (copy, nullable) NSString *localizedDescription;
@property (strong, nullable) NEVPNProtocol *protocolConfiguration;
@property (readonly) NEVPNConnection *connection;
@property (getter=isEnabled) BOOL enabled;
- (void)loadFromPreferencesWithCompletionHandler:(void (^)(NSError *_Nullable error))completionHandler;
- (void)saveToPreferencesWithCompletionHandler:(nullable void (^)(NSError *_Nullable error))completionHandler;
@end

@interface NETunnelProviderManager : NEVPNManager
+ (void)loadAllFromPreferencesWithCompletionHandler:(void (^)(NSArray<NETunnelProviderManager *> *_Nullable managers,
                                                              NSError *_Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
