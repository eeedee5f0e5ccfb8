#include <unistd.h>

#include <QDBusConnection>
#include <QIcon>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "platform/PlatformServices.h"
#include "platform/PreferenceSuite.h"
#include "platform/linux/DesktopEntryFolders.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxAppearance.h"
#include "platform/linux/LinuxDirectoryWalker.h"
#include "platform/linux/LinuxDockTile.h"
#include "platform/linux/LinuxFileQueries.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFileViewer.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxLinkOpener.h"
#include "platform/linux/LinuxLoginItem.h"
#include "platform/linux/LinuxMemoryPressure.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxPreferences.h"
#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/LinuxProcessListing.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxRunningApplications.h"
#include "platform/linux/LinuxRunningPrograms.h"
#include "platform/linux/LinuxSingleInstance.h"
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/LinuxSystemTools.h"
#include "platform/linux/LinuxTerminationRequests.h"
#include "platform/linux/LinuxTrash.h"
#include "platform/linux/LinuxUpdateFetcher.h"
#include "platform/linux/LinuxUpdateInstaller.h"
#include "platform/linux/LinuxVolumeInfo.h"

namespace kestrune {

namespace {

std::string configHome(const std::string& home) {
    const std::string path = LinuxAccount::absoluteVariable("XDG_CONFIG_HOME");
    return path.empty() ? home + "/.config" : path;
}

std::string cacheHome(const std::string& home) {
    const std::string path = LinuxAccount::absoluteVariable("XDG_CACHE_HOME");
    return path.empty() ? home + "/.cache" : path;
}

DesktopApplications installedApplications(const std::string& home) {
    const char* locale = nullptr;
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (locale == nullptr && value != nullptr && *value != '\0') {
            locale = value;
        }
    }
    return {DesktopEntryFolders(DesktopEntryFolders::standard(home), languagesOf(locale == nullptr ? "" : locale)),
            IconFiles::standard(home, [] {
                return std::vector{QIcon::themeName().toStdString(), QIcon::fallbackThemeName().toStdString()};
            })};
}

}  // namespace

PlatformServices makePlatformServices() {
    // A test run has no identity and shows no notification.
    const std::optional<std::string> suite = PreferenceSuite::fromEnvironment();
    PlatformServices services;
    services.homeDirectory = LinuxAccount::homeDirectory();
    services.processIdentifier = ::getpid();
    services.hostStatistics = std::make_unique<LinuxHostStatistics>();
    services.powerSources = std::make_unique<LinuxPowerSources>();
    services.volumeInfo = std::make_unique<LinuxVolumeInfo>();
    services.fileQueries = std::make_unique<LinuxFileQueries>();
    services.directoryWalker = std::make_unique<LinuxDirectoryWalker>();
    services.trash = std::make_unique<LinuxTrash>(LinuxAccount::dataHome());
    services.fileStore = std::make_unique<LinuxFileStore>();
    services.processRunner = std::make_unique<LinuxProcessRunner>();
    services.systemTools = std::make_unique<LinuxSystemTools>();
    services.runningApplications = std::make_unique<LinuxRunningApplications>(
        makeApplicationSources(), installedApplications(services.homeDirectory));
    services.runningPrograms =
        std::make_unique<LinuxRunningPrograms>("/proc", DesktopEntryFolders::standard(services.homeDirectory));
    services.processListing = std::make_unique<LinuxProcessListing>();
    services.processControl = std::make_unique<LinuxProcessControl>();
    services.memoryPressure = std::make_unique<LinuxMemoryPressure>();
    services.preferences = std::make_unique<LinuxPreferences>(
        LinuxPreferences::standardPath(configHome(services.homeDirectory), suite), *services.fileStore);
    services.notificationCenter = std::make_unique<LinuxNotificationCenter>(!suite.has_value());
    services.fileViewer = std::make_unique<LinuxFileViewer>();
    services.appearance = std::make_unique<LinuxAppearance>();
    const std::string executable = LinuxAccount::executablePath();
    const std::string folder = executable.substr(0, executable.rfind('/') + 1);
    services.linkOpener = std::make_unique<LinuxLinkOpener>(folder + "../share/kestrune/help");
    services.loginItem = std::make_unique<LinuxLoginItem>(configHome(services.homeDirectory),
                                                          LinuxAccount::startedFile(), *services.fileStore);
    services.dockTile = std::make_unique<LinuxDockTile>();
    services.statusItem = std::make_unique<LinuxStatusItem>(QDBusConnection::sessionBus());
    services.singleInstance = std::make_unique<LinuxSingleInstance>(QDBusConnection::sessionBus());
    services.terminationRequests = std::make_unique<LinuxTerminationRequests>();
    services.updateFetcher = std::make_unique<LinuxUpdateFetcher>(
        LinuxUpdateFetcher::programFor(folder), cacheHome(services.homeDirectory) + "/kestrune/updates");
    services.updateInstaller = std::make_unique<LinuxUpdateInstaller>(executable, LinuxAccount::startedFile());
    return services;
}

}  // namespace kestrune
