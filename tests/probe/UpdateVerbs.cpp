#include <QByteArray>
#include <QCoreApplication>
#include <QObject>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "app/AppDelegate.h"
#include "app/QtMainQueue.h"
#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxFileViewer.h"
#include "platform/linux/LinuxUpdateFetcher.h"
#include "platform/linux/fetch/AppcastReader.h"
#include "tests/fakes/FakeDockTile.h"
#include "tests/fakes/FakeStatusItem.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/fakes/FakeUpdatePresenter.h"
#include "tests/fakes/StoreFixture.h"
#include "tests/probe/FeedJson.h"
#include "tests/probe/Verbs.h"
#include "update/StandardUpdater.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const FeedItem& item) {
    return {{"version", item.version}, {"shortVersion", item.shortVersion},
            {"os", item.os},           {"minimumSystemVersion", item.minimumSystemVersion},
            {"notes", item.notes},     {"url", item.url},
            {"length", item.length},   {"signature", item.signature}};
}

/// The shell with the real updater and the real fetcher, everything else of it being a fake.
class UpdatingShell final {
public:
    explicit UpdatingShell(UpdateSource source)
        : m_fetcher(LinuxUpdateFetcher::programFor(LinuxFileViewer::enclosingFolder(LinuxAccount::executablePath())),
                    "/nonexistent"),
          m_updater({.source = std::move(source),
                     .runningVersion = KESTRUNE_VERSION,
                     .fetcher = m_fetcher,
                     .installer = m_installer,
                     .presenter = m_presenter,
                     .preferences = m_world.preferences,
                     .mainQueue = m_mainQueue,
                     .clock = m_world.clock,
                     .random = [] { return 0U; }}),
          m_delegate({.store = m_world.store(),
                      .engine = m_world.engine,
                      .alerts = m_world.alerts,
                      .mainQueue = m_mainQueue,
                      .statusItem = m_statusItem,
                      .updater = m_updater,
                      .dockTile = m_dockTile,
                      .downloadHost = "downloads.example",
                      .activate = [] {},
                      .showWindow = [] {},
                      .showPorts = [] {},
                      .isWindowVisible = [] { return false; },
                      .isAnyWindowOpen = [] { return false; },
                      .exit = [] {}}) {
        m_installer.suffix.reset();
    }

    /// Checks as the user does, prints each sentence about updates, and answers once there is one after the first.
    int check() {
        Published<std::string>& status = m_world.store().updateStatus;
        int sentences = 0;
        const Subscription told = status.observe([&status, &sentences] {
            std::puts(status.get().c_str());
            static_cast<void>(std::fflush(stdout));
            if (++sentences == 2) {
                QCoreApplication::exit(succeeded);
            }
        });
        m_delegate.applicationDidFinishLaunching();
        m_world.store().checkUpdates();
        return QCoreApplication::exec();
    }

private:
    QtMainQueue m_mainQueue;
    StoreFixture m_world;
    FakeStatusItem m_statusItem;
    FakeDockTile m_dockTile;
    FakeUpdatePresenter m_presenter;
    FakeUpdateInstaller m_installer;
    LinuxUpdateFetcher m_fetcher;
    StandardUpdater m_updater;
    AppDelegate m_delegate;
};

}  // namespace

std::string feedJson(const std::string& appcast) {
    const auto items = AppcastReader::read(QByteArray::fromStdString(appcast));
    if (!items.ok()) {
        return Json{{"error", describe({items.error(), {}}).description}}.dump();
    }
    Json list = Json::array();
    for (const FeedItem& item : items.value()) {
        list.push_back(jsonOf(item));
    }
    return list.dump();
}

int feed(const Arguments& arguments) {
    if (arguments.empty() || arguments.size() > 2) {
        return misused;
    }
    int count = 0;
    const QCoreApplication application(count, nullptr);
    UpdatingShell shell({arguments[0], {}, arguments.size() == 2 ? arguments[1] : std::string()});
    return shell.check();
}

}  // namespace kestrune::probe
