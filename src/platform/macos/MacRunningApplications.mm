#include "platform/macos/MacRunningApplications.h"

#import <AppKit/AppKit.h>

#include <unistd.h>

#include "platform/macos/ApplicationIdentity.h"
#include "platform/macos/MacProcessIdentity.h"
#include "platform/macos/MacText.h"

namespace kestrune {

namespace {

// Side of an icon in points: at least twice that of a row's picture.
constexpr CGFloat iconSide = 64;

RunningApplication described(NSRunningApplication* application) {
    RunningApplication record;
    record.processIdentifier = application.processIdentifier;
    if (auto identity = MacProcessIdentity::of(record.processIdentifier)) {
        record.startTime = identity->startTime;
        record.executable = std::move(identity->executable);
    }
    record.localizedName = toStd(application.localizedName);
    record.bundleIdentifier = toStd(application.bundleIdentifier);
    const bool isRegular = application.activationPolicy == NSApplicationActivationPolicyRegular;
    record.activationPolicy = isRegular ? ActivationPolicy::regular : ActivationPolicy::accessory;
    return record;
}

std::optional<RunningApplication> describedIfAny(NSRunningApplication* application) {
    return application == nil ? std::nullopt : std::optional(described(application));
}

NSRunningApplication* _Nullable withProcess(std::int32_t pid) {
    return [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
}

// The application as long as it is the one listed: its process is looked at last.
NSRunningApplication* _Nullable meant(const RunningApplication& application) {
    NSRunningApplication* found = withProcess(application.processIdentifier);
    return ApplicationIdentity::mayBeEnded(application, ::getpid(), ::getuid()) ? found : nil;
}

std::string pngOf(NSImage* _Nullable image) {
    NSRect box = NSMakeRect(0, 0, iconSide, iconSide);
    CGImageRef pixels = [image CGImageForProposedRect:&box context:nil hints:nil];
    if (pixels == nullptr) {
        return {};
    }
    NSBitmapImageRep* bitmap = [[NSBitmapImageRep alloc] initWithCGImage:pixels];
    NSData* png = [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
    return png.length == 0 ? std::string() : std::string(static_cast<const char*>(png.bytes), png.length);
}

}  // namespace

struct MacRunningApplications::Observer {
    id<NSObject> _Nullable token = nil;
};

MacRunningApplications::MacRunningApplications() = default;

MacRunningApplications::~MacRunningApplications() {
    if (id<NSObject> token = m_observer ? m_observer->token : nil) {
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:token];
    }
}

std::vector<RunningApplication> MacRunningApplications::runningApplications() {
    @autoreleasepool {
        std::vector<RunningApplication> applications;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            if (application.processIdentifier < 1) {
                continue;
            }
            applications.push_back(described(application));
            if (applications.back().activationPolicy == ActivationPolicy::regular) {
                m_shown.remember(pathOf(application.bundleURL), applications.back().localizedName);
            }
        }
        return applications;
    }
}

std::optional<RunningApplication> MacRunningApplications::frontmostApplication() {
    @autoreleasepool {
        return describedIfAny(NSWorkspace.sharedWorkspace.frontmostApplication);
    }
}

std::optional<RunningApplication> MacRunningApplications::application(std::int32_t processIdentifier) {
    @autoreleasepool {
        return describedIfAny(withProcess(processIdentifier));
    }
}

ApplicationIcon MacRunningApplications::iconOf(const RunningApplication& application) {
    return m_icons.of(application, [pid = application.processIdentifier] {
        @autoreleasepool {
            return pngOf(withProcess(pid).icon);
        }
    });
}

std::vector<std::string> MacRunningApplications::namesOfProgram(const std::string& executable) {
    return m_shown.namesOf(executable);
}

void MacRunningApplications::observeActivation(ActivationHandler handler) {
    m_observer = std::make_unique<Observer>();
    m_observer->token = [NSWorkspace.sharedWorkspace.notificationCenter
        addObserverForName:NSWorkspaceDidActivateApplicationNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:^(NSNotification* note) {
                  id application = note.userInfo[NSWorkspaceApplicationKey];
                  if ([application isKindOfClass:[NSRunningApplication class]]) {
                      handler(described(application));
                  }
                }];
}

bool MacRunningApplications::isTerminated(const RunningApplication& application) {
    return ApplicationIdentity::hasEnded(application);
}

bool MacRunningApplications::terminate(const RunningApplication& application) {
    @autoreleasepool {
        return [meant(application) terminate];
    }
}

bool MacRunningApplications::forceTerminate(const RunningApplication& application) {
    @autoreleasepool {
        return [meant(application) forceTerminate];
    }
}

}  // namespace kestrune
