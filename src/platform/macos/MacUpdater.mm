#include "platform/macos/MacUpdater.h"

#import <Foundation/Foundation.h>
#import <Sparkle/Sparkle.h>

#include "platform/macos/MacText.h"
#include "platform/macos/MacUpdateText.h"

namespace {

using namespace kestrune;

static_assert(SPUUserUpdateChoiceSkip == MacUpdateText::skipNumber);
static_assert(SPUUserUpdateChoiceInstall == MacUpdateText::installNumber);
static_assert(SPUUserUpdateChoiceDismiss == MacUpdateText::dismissNumber);

UpdateItem itemOf(SUAppcastItem* _Nonnull item) {
    return MacUpdateText::item(toStd(item.versionString), toStd(item.displayVersionString));
}

std::string infoText(NSString* _Nonnull key) {
    id value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
    return [value isKindOfClass:[NSString class]] ? toStd(value) : std::string();
}

}  // namespace

/// Passes on what the framework tells both of its delegates. The framework calls it on the main thread.
@interface KestruneUpdaterDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initWithDelegate:(UpdaterDelegate*)delegate;
@end

@implementation KestruneUpdaterDelegate {
    UpdaterDelegate* _delegate;  // outlives this object
}

- (instancetype)initWithDelegate:(UpdaterDelegate*)delegate {
    self = [super init];
    _delegate = delegate;
    return self;
}

- (void)updater:(SPUUpdater*)updater didFindValidUpdate:(SUAppcastItem*)item {
    _delegate->didFindValidUpdate(itemOf(item));
}

- (void)updaterDidNotFindUpdate:(SPUUpdater*)updater error:(NSError*)error {
    _delegate->didNotFindUpdate();
}

- (void)updater:(SPUUpdater*)updater
    userDidMakeChoice:(SPUUserUpdateChoice)choice
            forUpdate:(SUAppcastItem*)updateItem
                state:(SPUUserUpdateState*)state {
    if (const auto made = MacUpdateText::choice(choice)) {
        _delegate->userDidMake(*made, itemOf(updateItem));
    }
}

- (void)updater:(SPUUpdater*)updater didAbortWithError:(NSError*)error {
    _delegate->didAbortWithError(MacUpdateText::error(error.code, toStd(error.localizedDescription)));
}

- (BOOL)supportsGentleScheduledUpdateReminders {
    return YES;
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state {
    _delegate->willHandleShowingUpdate(itemOf(update), state.userInitiated == YES);
}

@end

namespace kestrune {

namespace {

class MacUpdater final : public Updater {
public:
    [[nodiscard]] bool isConfigured() const override {
        return MacUpdateText::isConfigured(infoText(@"SUFeedURL"), infoText(@"SUPublicEDKey"));
    }

    void start(UpdaterDelegate& delegate) override {
        if (isConfigured()) {
            m_delegate = [[KestruneUpdaterDelegate alloc] initWithDelegate:&delegate];
            m_controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                         updaterDelegate:m_delegate
                                                                      userDriverDelegate:m_delegate];
        }
    }

    void checkForUpdates() override { [m_controller checkForUpdates:nil]; }

private:
    KestruneUpdaterDelegate* _Nullable m_delegate = nil;  // the framework keeps it weakly
    SPUStandardUpdaterController* _Nullable m_controller = nil;
};

}  // namespace

std::unique_ptr<Updater> makeMacUpdater() {
    return std::make_unique<MacUpdater>();
}

}  // namespace kestrune
