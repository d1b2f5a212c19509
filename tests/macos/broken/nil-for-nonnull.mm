// expected-error: null passed to a callee that requires a non-null argument
#import <AppKit/AppKit.h>

bool openNothing()
{
    return [NSWorkspace.sharedWorkspace openURL:nil];
}
