#import "platform/macos/native/Application.h"

#import "platform/macos/native/FoundationValues.h"

#import <AppKit/AppKit.h>

namespace tarnwik::mac {

void setRegularActivationPolicy()
{
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyRegular];
}

void activateIgnoringOtherApps()
{
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

void terminateApplication()
{
    [NSApplication.sharedApplication terminate:nil];
}

bool openURL(const std::string &url)
{
    @autoreleasepool {
        NSURL *const address = [NSURL URLWithString:textFromUTF8(url)];
        return address && [NSWorkspace.sharedWorkspace openURL:address];
    }
}

} // namespace tarnwik::mac
