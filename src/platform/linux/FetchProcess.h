#pragma once

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/linux/FetchMessages.h"

namespace kestrune {

/// How long kestrune-fetch may say nothing: longer than its own limits, so that it gets to tell what is wrong.
struct FetchPatience {
    std::chrono::milliseconds silence{90'000};
};

/// One run of kestrune-fetch. Main thread.
class FetchProcess final : public QObject {
    Q_OBJECT

public:
    using Progress = std::function<void(std::int64_t bytes)>;

    /// Gets anything but FetchProgress.
    using Done = std::function<void(const FetchAnswer&)>;

    /// Starts the program; done is called once, from the event loop, and may delete anything but this object.
    FetchProcess(const std::string& program, const FetchRequest& request, FetchPatience patience, Progress progress,
                 Done done, QObject* parent);
    ~FetchProcess() override;

    /// Ends the run without an answer. The object deletes itself, here as after its answer, once the program has ended.
    void abandon();

private:
    void readLines();
    void take(const QByteArray& line);
    void finish(const FetchAnswer& answer);
    void letGo();

    const std::string m_program;
    const std::int64_t m_bytes;  ///< of the archive
    QProcess m_process;
    QTimer m_watchdog;
    Progress m_progress;
    Done m_done;
    std::int64_t m_received = 0;
    bool m_isFinished = false;
};

}  // namespace kestrune
