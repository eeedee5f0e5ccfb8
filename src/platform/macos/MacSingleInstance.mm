#include "platform/macos/MacSingleInstance.h"

#import <AppKit/AppKit.h>

#include <cstdint>
#include <utility>

#include "platform/macos/MacApplicationDelegate.h"
#include "platform/macos/MacInstanceLock.h"

namespace {

// Between the starts of one user in one session.
NSString* const _Nonnull startedAgain = @"com.torvandelsyn.kestrune.started-again";
NSString* const _Nonnull cameForward = @"com.torvandelsyn.kestrune.came-forward";

constexpr std::int64_t answerTimeNanoseconds = 1'800'000'000;

/// Also to a program that is not in front.
void post(NSString* _Nonnull name) {
    [NSDistributedNotificationCenter.defaultCenter postNotificationName:name
                                                                 object:nil
                                                               userInfo:nil
                                                     deliverImmediately:YES];
}

}  // namespace

/// Hears one of the two for as long as it lives.
@interface KestruneInstanceListener : NSObject
- (instancetype)initWithName:(NSString* _Nonnull)name heard:(std::function<void()>)heard;
@end

@implementation KestruneInstanceListener {
    std::function<void()> _heard;
}

- (instancetype)initWithName:(NSString* _Nonnull)name heard:(std::function<void()>)heard {
    self = [super init];
    _heard = std::move(heard);
    [NSDistributedNotificationCenter.defaultCenter addObserver:self
                                                      selector:@selector(hear:)
                                                          name:name
                                                        object:nil
                                            suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
    return self;
}

- (void)dealloc {
    [NSDistributedNotificationCenter.defaultCenter removeObserver:self];
}

- (void)hear:(NSNotification* _Nonnull)notification {
    const auto heard = _heard;
    heard();
}

@end

namespace kestrune {

struct MacSingleInstance::Parts {
    Parts(std::string lockFile, bool askedFor) : lock(std::move(lockFile)), isAskedFor(askedFor) {}

    MacInstanceLock lock;
    const bool isAskedFor;
    KestruneInstanceListener* _Nullable listener = nil;
};

namespace {

using Answer = std::function<void(SingleInstance::Outcome)>;

/// Gives answer at its first call only; all calls come on the main thread.
Answer once(Answer answer) {
    return [waiting = std::make_shared<Answer>(std::move(answer))](SingleInstance::Outcome outcome) {
        if (const Answer pending = std::exchange(*waiting, nullptr)) {
            pending(outcome);
        }
    };
}

}  // namespace

MacSingleInstance::MacSingleInstance(std::string lockFile, bool isAskedFor)
    : m_parts(std::make_unique<Parts>(std::move(lockFile), isAskedFor)) {
}

MacSingleInstance::~MacSingleInstance() {
    MacApplicationDelegate::setReopenHandler({});
}

void MacSingleInstance::acquire(std::function<void()> reopen, std::function<void(Outcome)> answer) {
    const std::optional<std::int32_t> holder = m_parts->lock.takeOrNameHolder();
    if (!holder) {
        MacApplicationDelegate::setReopenHandler(reopen);
        const auto comeForward = [reopen] {
            post(cameForward);
            reopen();
        };
        m_parts->listener = [[KestruneInstanceListener alloc] initWithName:startedAgain heard:comeForward];
        return answer(Outcome::first);
    }
    if (!m_parts->isAskedFor) {
        // Later: the event loop, which the answer ends, may not run yet.
        dispatch_async(dispatch_get_main_queue(), ^{
          answer(Outcome::otherCameForward);
        });
        return;
    }
    const Answer answerOnce = once(std::move(answer));
    m_parts->listener =
        [[KestruneInstanceListener alloc] initWithName:cameForward
                                                 heard:[answerOnce] { answerOnce(Outcome::otherCameForward); }];
    // Where only the program in front may hand its place on, this is the one the user has just started.
    [[NSRunningApplication runningApplicationWithProcessIdentifier:*holder]
        activateWithOptions:NSApplicationActivateAllWindows];
    post(startedAgain);
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, answerTimeNanoseconds), dispatch_get_main_queue(), ^{
      answerOnce(Outcome::otherDoesNotAnswer);
    });
}

}  // namespace kestrune
