#pragma once

#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QString>
#include <QTemporaryFile>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ApplicationSource.h"
#include "platform/linux/KWinScripts.h"

namespace kestrune {

/// The windows of KWin in a Wayland session, by a script of ours that KWin runs. What is known is what that script
/// reported last, which the first question asks for; so the first answers are empty. In an X11 session the windows are
/// X11's business. Whoever calls itself KWin costs little, whatever it reports: a report is bounded, and of those that
/// come within 200 ms of one that was taken, the last one is taken after that time. Main thread.
class KWinSource final : public ApplicationSource {
public:
    /// scriptFolder is where scripts wait for KWin to read them: a file is made there that only this user can read or
    /// write.
    KWinSource(bool isWayland, const std::string& scriptFolder);

    ~KWinSource() override;

    [[nodiscard]] bool isAvailable() override;
    [[nodiscard]] bool isComplete() override;
    [[nodiscard]] std::vector<SourcedApplication> applications() override;
    [[nodiscard]] std::optional<std::int32_t> frontmost() override;
    [[nodiscard]] bool tellsFrontmost() override;
    void observeActivation(ActivationHandler handler) override;
    [[nodiscard]] bool close(std::int32_t pid, const IsStillMeant& isStillMeant) override;

private:
    /// Hears the script.
    class Reports final : public QDBusVirtualObject {
    public:
        explicit Reports(KWinSource& source) : m_source(source) {}

        [[nodiscard]] QString introspect(const QString& path) const override;
        bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    private:
        KWinSource& m_source;
    };

    using Answered = std::function<void(const QDBusMessage& reply)>;

    void startOnce();
    void setOwner(const QString& owner);
    void loadListing();
    void runListing(int number);
    void receive(const QString& report);
    void takeReport(const QString& report);
    void callLater(const QDBusMessage& message, Answered answered);
    [[nodiscard]] QDBusMessage toScripting(const QString& method) const;
    [[nodiscard]] std::unique_ptr<QTemporaryFile> written(const QString& script) const;

    const bool m_isWayland;
    const QString m_scriptFolder;
    ActivationHandler m_handler;
    std::optional<std::vector<KWinScripts::Window>> m_windows;  ///< nothing until the first report
    std::optional<std::int32_t> m_active;
    QTimer m_pause;                          ///< since a report was taken
    std::optional<QString> m_waitingReport;  ///< the last one that came in the pause
    QString m_owner;                         ///< KWin's connection to the bus; empty without KWin
    std::unique_ptr<QTemporaryFile> m_listingFile;
    std::unique_ptr<Reports> m_reports;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
};

}  // namespace kestrune
