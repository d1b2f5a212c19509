// expected-error: capturing 'self' strongly in this block is likely to lead to a retain cycle
#import <Foundation/Foundation.h>

@interface Follower : NSObject
@property (copy) void (^handler)(void);
- (void)follow;
@end

@implementation Follower
- (void)follow
{
    self.handler = ^{
        [self follow];
    };
}
@end
