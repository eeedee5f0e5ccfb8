#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Appearance.h"
#include "platform/DirectoryWalker.h"
#include "platform/DockTile.h"
#include "platform/FileQueries.h"
#include "platform/FileStore.h"
#include "platform/FileViewer.h"
#include "platform/HostStatistics.h"
#include "platform/LinkOpener.h"
#include "platform/LoginItem.h"
#include "platform/MemoryPressureSource.h"
#include "platform/NotificationCenter.h"
#include "platform/PanelMessage.h"
#include "platform/PowerSources.h"
#include "platform/Preferences.h"
#include "platform/ProcessControl.h"
#include "platform/ProcessListing.h"
#include "platform/ProcessRunner.h"
#include "platform/RunningApplications.h"
#include "platform/RunningPrograms.h"
#include "platform/SingleInstance.h"
#include "platform/StatusItem.h"
#include "platform/SystemTools.h"
#include "platform/TerminationRequests.h"
#include "platform/Trash.h"
#include "platform/UpdateFetcher.h"
#include "platform/UpdateInstaller.h"
#include "platform/Updater.h"
#include "platform/VolumeInfo.h"

namespace kestrune {

/// Everything the operating system provides. Members are never null where nothing else is said.
struct PlatformServices {
    std::string homeDirectory;           ///< the account's home folder, its links resolved once
    std::int32_t processIdentifier = 0;  ///< of this program
    bool hasGlobalMenuBar = false;       ///< one menu bar belongs to the program in front; windows have none
    bool sessionAsksToQuit = false;      ///< the end of the session is a request to quit like any other
    std::unique_ptr<HostStatistics> hostStatistics;
    std::unique_ptr<PowerSources> powerSources;
    std::unique_ptr<VolumeInfo> volumeInfo;
    std::unique_ptr<FileQueries> fileQueries;
    std::unique_ptr<DirectoryWalker> directoryWalker;
    std::unique_ptr<Trash> trash;
    std::unique_ptr<FileStore> fileStore;
    std::unique_ptr<ProcessRunner> processRunner;
    std::unique_ptr<SystemTools> systemTools;
    std::unique_ptr<RunningApplications> runningApplications;
    std::unique_ptr<RunningPrograms> runningPrograms;
    std::unique_ptr<ProcessListing> processListing;
    std::unique_ptr<ProcessControl> processControl;
    std::unique_ptr<MemoryPressureSource> memoryPressure;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<NotificationCenter> notificationCenter;
    std::unique_ptr<FileViewer> fileViewer;
    std::unique_ptr<Appearance> appearance;
    std::unique_ptr<LinkOpener> linkOpener;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<DockTile> dockTile;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<SingleInstance> singleInstance;
    std::unique_ptr<TerminationRequests> terminationRequests;
    std::unique_ptr<PanelMessage> panelMessage;        ///< null where the toolkit's panel says everything itself
    std::unique_ptr<Updater> updater;                  ///< the system's own; null where it brings none, and then
    std::unique_ptr<UpdateFetcher> updateFetcher;      ///< the program looks for updates itself, with these two, which
    std::unique_ptr<UpdateInstaller> updateInstaller;  ///< are null where they are not needed
};

/// Builds the services of the system this program was compiled for. Opens nothing that a later step may never need.
/// Main thread.
[[nodiscard]] PlatformServices makePlatformServices();

}  // namespace kestrune
