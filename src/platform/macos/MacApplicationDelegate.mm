#include "platform/macos/MacApplicationDelegate.h"

#import <AppKit/AppKit.h>

#include <utility>

/// It must not answer applicationShouldTerminate: the toolkit would pass that question on instead of asking the
/// program's event filters, and the quit guard is one of those.
@interface KestruneApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic) std::function<void()> reopen;
@end

@implementation KestruneApplicationDelegate

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows {
    if (_reopen) {
        _reopen();
    }
    return YES;
}

@end

namespace kestrune::MacApplicationDelegate {

namespace {

/// Kept here, because the application object does not keep its delegate.
KestruneApplicationDelegate* _Nonnull instance() {
    static KestruneApplicationDelegate* const delegate = [[KestruneApplicationDelegate alloc] init];
    return delegate;
}

}  // namespace

void install() {
    NSApplication.sharedApplication.delegate = instance();
}

void setReopenHandler(std::function<void()> handler) {
    instance().reopen = std::move(handler);
}

}  // namespace kestrune::MacApplicationDelegate
