#include "platform/macos/MacAppearance.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <utility>

namespace {

NSString* const watchedProperty = @"effectiveAppearance";

// Its address tells this observation from one that a base class may have made.
char watchContext = 0;

kestrune::AppearanceSettings currentSettings() {
    NSAppearance* appearance = NSApplication.sharedApplication.effectiveAppearance;
    NSAppearanceName name =
        [appearance bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return {.dark = [name isEqualToString:NSAppearanceNameDarkAqua] == YES,
            .reduceMotion = NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion == YES};
}

}  // namespace

/// Tells a handler what the desktop chose, once and after each change, from start to stop.
@interface KestruneAppearanceWatch : NSObject
- (void)startWithHandler:(kestrune::Appearance::Handler)handler;
- (void)stop;
@end

@implementation KestruneAppearanceWatch {
    kestrune::Appearance::Handler _handler;
    std::optional<kestrune::AppearanceSettings> _told;
}

- (void)startWithHandler:(kestrune::Appearance::Handler)handler {
    _handler = std::move(handler);
    [NSWorkspace.sharedWorkspace.notificationCenter
        addObserver:self
           selector:@selector(displayOptionsChanged:)
               name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
             object:nil];
    [NSApplication.sharedApplication addObserver:self
                                      forKeyPath:watchedProperty
                                         options:NSKeyValueObservingOptionInitial
                                         context:&watchContext];
}

- (void)stop {
    [NSApplication.sharedApplication removeObserver:self forKeyPath:watchedProperty context:&watchContext];
    [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:self];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context == &watchContext) {
        [self look];
    } else {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    }
}

- (void)displayOptionsChanged:(NSNotification*)notification {
    [self look];
}

- (void)look {
    const kestrune::AppearanceSettings settings = currentSettings();
    if (_told != settings) {
        _told = settings;
        _handler(settings);
    }
}

@end

namespace kestrune {

struct MacAppearance::Watch {
    KestruneAppearanceWatch* _Nonnull object;
};

MacAppearance::MacAppearance() = default;

MacAppearance::~MacAppearance() {
    if (m_watch) {
        [m_watch->object stop];
    }
}

void MacAppearance::start(Handler handler) {
    m_watch = std::make_unique<Watch>(Watch{[[KestruneAppearanceWatch alloc] init]});
    [m_watch->object startWithHandler:std::move(handler)];
}

}  // namespace kestrune
