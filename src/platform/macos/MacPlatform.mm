#import <Foundation/Foundation.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/PlatformServices.h"
#include "platform/macos/LaunchAgent.h"
#include "platform/macos/MacAccount.h"
#include "platform/macos/MacAppearance.h"
#include "platform/macos/MacDirectoryWalker.h"
#include "platform/macos/MacDockTile.h"
#include "platform/macos/MacFileQueries.h"
#include "platform/macos/MacFileStore.h"
#include "platform/macos/MacFileViewer.h"
#include "platform/macos/MacHostStatistics.h"
#include "platform/macos/MacLinkOpener.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/macos/MacLoginItemList.h"
#include "platform/macos/MacMemoryPressure.h"
#include "platform/macos/MacNotificationCenter.h"
#include "platform/macos/MacPanelMessage.h"
#include "platform/macos/MacPowerSources.h"
#include "platform/macos/MacPreferences.h"
#include "platform/macos/MacProcessControl.h"
#include "platform/macos/MacProcessListing.h"
#include "platform/macos/MacProcessRunner.h"
#include "platform/macos/MacRunningApplications.h"
#include "platform/macos/MacRunningPrograms.h"
#include "platform/macos/MacSingleInstance.h"
#include "platform/macos/MacStatusItem.h"
#include "platform/macos/MacSystemTools.h"
#include "platform/macos/MacTerminationRequests.h"
#include "platform/macos/MacText.h"
#include "platform/macos/MacTrash.h"
#include "platform/macos/MacTrashItem.h"
#include "platform/macos/MacUpdater.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/MacVolumeInfo.h"

namespace kestrune {

namespace {

bool isTheLaunchAgent() {
    const char* serviceName = std::getenv("XPC_SERVICE_NAME");
    return LaunchAgent::isProcess(serviceName == nullptr ? "" : serviceName, ::getppid());
}

void addProcesses(PlatformServices& services, const Clock& clock) {
    const std::uint32_t user = ::getuid();
    services.processRunner = std::make_unique<MacProcessRunner>();
    services.systemTools = std::make_unique<MacSystemTools>(user);
    services.processListing =
        std::make_unique<MacProcessListing>(*services.processRunner, *services.systemTools, clock, user);
    services.processControl = std::make_unique<MacProcessControl>(*services.processRunner, *services.systemTools, user);
    services.runningApplications = std::make_unique<MacRunningApplications>();
    services.runningPrograms = std::make_unique<MacRunningPrograms>();
    services.terminationRequests = std::make_unique<MacTerminationRequests>();
}

void addFiles(PlatformServices& services) {
    // It keeps nothing: one serves the whole program.
    static const std::unique_ptr<MacTrashItem> trashItem = makeMacTrashItem();
    services.volumeInfo = std::make_unique<MacVolumeInfo>();
    services.fileQueries = std::make_unique<MacFileQueries>();
    services.directoryWalker = std::make_unique<MacDirectoryWalker>();
    services.trash = std::make_unique<MacTrash>(*trashItem);
    services.fileStore = std::make_unique<MacFileStore>();
    services.fileViewer = std::make_unique<MacFileViewer>();
}

}  // namespace

PlatformServices makePlatformServices() {
    @autoreleasepool {
        static const SystemClock clock;
        NSBundle* bundle = NSBundle.mainBundle;
        PlatformServices services;
        services.homeDirectory = MacAccount::homeDirectory();
        services.processIdentifier = ::getpid();
        services.hasGlobalMenuBar = true;
        services.sessionAsksToQuit = true;
        services.hostStatistics = std::make_unique<MacHostStatistics>();
        services.powerSources = std::make_unique<MacPowerSources>();
        services.memoryPressure = std::make_unique<MacMemoryPressure>();
        addFiles(services);
        addProcesses(services, clock);
        services.preferences = std::make_unique<MacPreferences>(MacUserDefaults::forThisProgram());
        services.notificationCenter = std::make_unique<MacNotificationCenter>();
        services.appearance = std::make_unique<MacAppearance>();
        services.linkOpener = std::make_unique<MacLinkOpener>(pathOf(bundle.resourceURL) + "/help");
        const bool isTheAgent = isTheLaunchAgent();
        services.loginItem = std::make_unique<MacLoginItem>(
            MacLoginItem::Program{services.homeDirectory, pathOf(bundle.executableURL), ::getuid(), isTheAgent},
            std::make_unique<MacLoginItemList>(), *services.fileStore, *services.processRunner,
            std::make_unique<ThreadSerialQueue>("com.torvandelsyn.kestrune.login"));
        services.dockTile = std::make_unique<MacDockTile>();
        services.statusItem = std::make_unique<MacStatusItem>();
        services.singleInstance = std::make_unique<MacSingleInstance>(
            services.homeDirectory + "/Library/Application Support/Kestrune/instance.lock", !isTheAgent);
        services.panelMessage = std::make_unique<MacPanelMessage>();
        services.updater = makeMacUpdater();
        return services;
    }
}

}  // namespace kestrune
