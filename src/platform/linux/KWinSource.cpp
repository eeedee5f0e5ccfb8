#include "platform/linux/KWinSource.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/linux/SessionBusCalls.h"

namespace kestrune {

namespace {

const QString kwinService = QStringLiteral("org.kde.KWin");
const QString listingName = QStringLiteral("kestrune-windows");
const QString closingName = QStringLiteral("kestrune-close");
const QString reportPath = QStringLiteral("/com/torvandelsyn/kestrune/windows");
const QString reportInterface = QStringLiteral("com.torvandelsyn.kestrune.Windows");

// KWin answers within some milliseconds unless the whole desktop hangs.
constexpr std::chrono::milliseconds longestWait{250};

// What came together within that time is one change to whoever looks at the screen.
constexpr std::chrono::milliseconds pause{200};

QDBusMessage runMessage(const QString& owner, const QString& folder, int number) {
    return QDBusMessage::createMethodCall(owner, folder + QString::number(number),
                                          QStringLiteral("org.kde.kwin.Script"), QStringLiteral("run"));
}

// Plasma 6 has its scripts at "/Scripting/Script3", Plasma 5 at "/3".
const QString scriptFolder6 = QStringLiteral("/Scripting/Script");
const QString scriptFolder5 = QStringLiteral("/");

bool isMissing(const QDBusMessage& reply) {
    return QDBusError(reply).type() == QDBusError::UnknownObject;
}

// The number of a loaded script; negative when it was not.
int numberIn(const QDBusMessage& reply) {
    const bool isNumber = reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("i");
    return isNumber ? reply.arguments().first().toInt() : -1;
}

}  // namespace

QString KWinSource::Reports::introspect(const QString&) const {
    return {};
}

bool KWinSource::Reports::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    // Anybody on the bus may call; only KWin knows its windows.
    if (message.service() != m_source.m_owner || message.interface() != reportInterface ||
        message.member() != QLatin1String("Report") || message.signature() != QLatin1String("s")) {
        return false;
    }
    if (message.isReplyRequired()) {
        connection.send(message.createReply());
    }
    m_source.receive(message.arguments().first().toString());
    return true;
}

KWinSource::KWinSource(bool isWayland, const std::string& scriptFolder)
    : m_isWayland(isWayland), m_scriptFolder(QString::fromStdString(scriptFolder)) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] {
        if (m_waitingReport) {
            takeReport(*std::exchange(m_waitingReport, std::nullopt));
        }
    });
}

KWinSource::~KWinSource() {
    if (!m_owner.isEmpty()) {
        QDBusConnection::sessionBus().send(toScripting(QStringLiteral("unloadScript")) << listingName);
    }
    if (m_reports) {
        QDBusConnection::sessionBus().unregisterObject(reportPath);
    }
}

bool KWinSource::isAvailable() {
    startOnce();
    return m_windows.has_value();
}

bool KWinSource::isComplete() {
    return isAvailable();
}

std::vector<SourcedApplication> KWinSource::applications() {
    std::vector<SourcedApplication> applications;
    if (!isAvailable()) {
        return applications;
    }
    for (const KWinScripts::Window& window : *m_windows) {
        const std::size_t known = applications.size();
        SourcedApplication& application = applicationOf(window.pid, applications);
        if (applications.size() > known) {
            application.policy = ActivationPolicy::accessory;
        }
        if (window.isRegular) {
            application.policy = ActivationPolicy::regular;
        }
        addHints(window.names, application.hints);
    }
    return applications;
}

std::optional<std::int32_t> KWinSource::frontmost() {
    startOnce();
    return m_active;
}

bool KWinSource::tellsFrontmost() {
    return isAvailable();
}

void KWinSource::observeActivation(ActivationHandler handler) {
    m_handler = std::move(handler);
    startOnce();
}

bool KWinSource::close(std::int32_t pid, const IsStillMeant& isStillMeant) {
    QStringList ids;
    for (const KWinScripts::Window& window : m_windows.value_or(std::vector<KWinScripts::Window>{})) {
        if (window.pid == pid && window.isNative) {
            ids.append(window.id);
        }
    }
    const std::unique_ptr<QTemporaryFile> file = ids.isEmpty() ? nullptr : written(KWinScripts::closing(ids));
    if (!file) {
        return false;
    }
    const QDBusMessage unload = toScripting(QStringLiteral("unloadScript")) << closingName;
    // A name that is still loaded is not loaded again.
    QDBusConnection::sessionBus().send(unload);
    const SessionBusCalls calls(QDBusConnection::sessionBus(), longestWait);
    const int number =
        numberIn(calls.call(toScripting(QStringLiteral("loadScript")) << file->fileName() << closingName));
    if (number < 0 || !isStillMeant()) {
        QDBusConnection::sessionBus().send(unload);
        return false;
    }
    QDBusMessage reply = calls.call(runMessage(m_owner, scriptFolder6, number));
    if (isMissing(reply)) {
        reply = calls.call(runMessage(m_owner, scriptFolder5, number));
    }
    QDBusConnection::sessionBus().send(unload);
    return reply.type() == QDBusMessage::ReplyMessage;
}

void KWinSource::startOnce() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (m_reports || !m_isWayland || !bus.isConnected()) {
        return;
    }
    m_reports = std::make_unique<Reports>(*this);
    bus.registerVirtualObject(reportPath, m_reports.get());
    m_watcher = std::make_unique<QDBusServiceWatcher>(kwinService, bus, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, m_reports.get(),
                     [this](const QString&, const QString&, const QString& owner) { setOwner(owner); });
    callLater(SessionBusCalls::toBus(QStringLiteral("GetNameOwner")) << kwinService, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            setOwner(reply.arguments().value(0).toString());
        }
    });
}

void KWinSource::setOwner(const QString& owner) {
    if (owner == m_owner) {
        return;
    }
    m_owner = owner;
    m_waitingReport.reset();
    m_windows.reset();
    m_active.reset();
    m_listingFile.reset();
    if (!owner.isEmpty()) {
        loadListing();
    }
}

void KWinSource::loadListing() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_listingFile = written(KWinScripts::listing(bus.baseService(), reportPath, reportInterface));
    if (!m_listingFile) {
        return;
    }
    // Of an earlier run of the program that could not do so itself.
    bus.send(toScripting(QStringLiteral("unloadScript")) << listingName);
    callLater(toScripting(QStringLiteral("loadScript")) << m_listingFile->fileName() << listingName,
              [this](const QDBusMessage& reply) {
                  if (const int number = numberIn(reply); number >= 0) {
                      runListing(number);
                  }
              });
}

void KWinSource::runListing(int number) {
    callLater(runMessage(m_owner, scriptFolder6, number), [this, number](const QDBusMessage& reply) {
        if (isMissing(reply)) {
            callLater(runMessage(m_owner, scriptFolder5, number),
                      [this](const QDBusMessage&) { m_listingFile.reset(); });
        } else {
            m_listingFile.reset();
        }
    });
}

void KWinSource::receive(const QString& report) {
    if (report.size() > KWinScripts::longestReport) {
        return;
    }
    if (m_pause.isActive()) {
        m_waitingReport = report;
    } else {
        takeReport(report);
    }
}

void KWinSource::takeReport(const QString& report) {
    m_pause.start();
    std::optional<std::vector<KWinScripts::Window>> windows = KWinScripts::parseReport(report);
    if (!windows) {
        return;
    }
    m_windows = std::move(windows);
    const auto active = std::find_if(m_windows->begin(), m_windows->end(),
                                     [](const KWinScripts::Window& window) { return window.isActive; });
    const std::optional<std::int32_t> before = m_active;
    m_active = active == m_windows->end() ? std::nullopt : std::optional(active->pid);
    if (m_handler && m_active && m_active != before) {
        m_handler(*m_active);
    }
}

void KWinSource::callLater(const QDBusMessage& message, Answered answered) {
    auto* const watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), m_reports.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_reports.get(),
                     [this, watcher, owner = m_owner, answered = std::move(answered)] {
                         watcher->deleteLater();
                         // What another KWin answered is of no use any more.
                         if (owner == m_owner) {
                             answered(watcher->reply());
                         }
                     });
}

QDBusMessage KWinSource::toScripting(const QString& method) const {
    return QDBusMessage::createMethodCall(m_owner, QStringLiteral("/Scripting"),
                                          QStringLiteral("org.kde.kwin.Scripting"), method);
}

std::unique_ptr<QTemporaryFile> KWinSource::written(const QString& script) const {
    auto file = std::make_unique<QTemporaryFile>(m_scriptFolder + QStringLiteral("/kestrune-XXXXXX.js"));
    const QByteArray bytes = script.toUtf8();
    return file->open() && file->write(bytes) == bytes.size() && file->flush() ? std::move(file) : nullptr;
}

}  // namespace kestrune
