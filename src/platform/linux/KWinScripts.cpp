#include "platform/linux/KWinScripts.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QUuid>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kestrune::KWinScripts {

namespace {

// %1 is a list of three texts. The text of a window begins with the name of its class: "KWin::XdgToplevelWindow(0x…)".
const QString listingText = QStringLiteral(R"((function (target) {
    function report() {
        var windows = workspace.windowList ? workspace.windowList() : workspace.clientList();
        var found = [];
        for (var i = 0; i < windows.length; ++i) {
            var window = windows[i];
            if (window.normalWindow || window.dialog) {
                found.push({
                    id: String(window.internalId),
                    pid: window.pid,
                    names: [String(window.desktopFileName), String(window.resourceClass)],
                    active: window.active,
                    regular: window.normalWindow && !window.skipTaskbar,
                    native: /XdgToplevel/.test(String(window))
                });
            }
        }
        callDBus(target[0], target[1], target[2], "Report", JSON.stringify(found));
    }
    (workspace.windowAdded || workspace.clientAdded).connect(report);
    (workspace.windowRemoved || workspace.clientRemoved).connect(report);
    (workspace.windowActivated || workspace.clientActivated).connect(report);
    report();
})(%1);
)");

// %1 is a list of ids.
const QString closingText = QStringLiteral(R"((function (ids) {
    var windows = workspace.windowList ? workspace.windowList() : workspace.clientList();
    for (var i = 0; i < windows.length; ++i) {
        if (ids.indexOf(String(windows[i].internalId)) >= 0) {
            windows[i].closeWindow();
        }
    }
})(%1);
)");

// The listing script reports two.
constexpr qsizetype mostNames = 8;

QString asList(const QStringList& texts) {
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(texts)).toJson(QJsonDocument::Compact));
}

std::optional<Window> windowIn(const QJsonObject& object) {
    Window window;
    const double pid = object.value(QLatin1String("pid")).toDouble();
    const QUuid id = QUuid::fromString(object.value(QLatin1String("id")).toString());
    if (!(pid >= 1 && pid <= std::numeric_limits<std::int32_t>::max() && std::floor(pid) == pid) || id.isNull()) {
        return std::nullopt;
    }
    window.id = id.toString();
    window.pid = static_cast<std::int32_t>(pid);
    const QJsonArray names = object.value(QLatin1String("names")).toArray();
    for (qsizetype i = 0; i < std::min(names.size(), mostNames); ++i) {
        const std::string name = names.at(i).toString().toStdString();
        if (!name.empty() && std::find(window.names.begin(), window.names.end(), name) == window.names.end()) {
            window.names.push_back(name);
        }
    }
    window.isActive = object.value(QLatin1String("active")).toBool();
    window.isRegular = object.value(QLatin1String("regular")).toBool();
    window.isNative = object.value(QLatin1String("native")).toBool();
    return window;
}

}  // namespace

QString listing(const QString& service, const QString& path, const QString& interface) {
    return listingText.arg(asList({service, path, interface}));
}

QString closing(const QStringList& ids) {
    return closingText.arg(asList(ids));
}

std::optional<std::vector<Window>> parseReport(const QString& report) {
    const QJsonDocument document =
        report.size() > longestReport ? QJsonDocument() : QJsonDocument::fromJson(report.toUtf8());
    if (!document.isArray()) {
        return std::nullopt;
    }
    std::vector<Window> windows;
    const QJsonArray reported = document.array();
    for (auto value = reported.begin(); value != reported.end() && windows.size() < mostWindows; ++value) {
        if (std::optional<Window> window = windowIn((*value).toObject())) {
            windows.push_back(std::move(*window));
        }
    }
    return windows;
}

}  // namespace kestrune::KWinScripts
