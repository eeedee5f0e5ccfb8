#include "platform/linux/FetchProcess.h"

#include <QByteArray>
#include <QString>

#include <utility>

namespace kestrune {

namespace {

/// From the end of its standard input to that of the program; then it is killed.
constexpr std::chrono::milliseconds timeToEnd{3'000};

/// The same, in milliseconds, where this program ends as well.
constexpr int timeToEndWithUs = 500;

}  // namespace

FetchProcess::FetchProcess(const std::string& program, const FetchRequest& request, FetchPatience patience,
                           Progress progress, Done done, QObject* parent)
    : QObject(parent),
      m_program(program),
      m_bytes(request.bytes),
      m_progress(std::move(progress)),
      m_done(std::move(done)) {
    m_watchdog.setSingleShot(true);
    m_watchdog.setInterval(patience.silence);
    connect(&m_watchdog, &QTimer::timeout, this, [this] {
        m_process.kill();
        finish(FetchFailure{FetchReason::fetcherSilent, {}});
    });
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &FetchProcess::readLines);
    connect(&m_process, &QProcess::finished, this, [this] {
        readLines();
        finish(FetchFailure{FetchReason::fetcherEnded, {}});
        deleteLater();
    });
    // Queued, because start() may report it before it returns.
    connect(
        &m_process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                finish(FetchFailure{FetchReason::fetcherMissing, m_program});
                deleteLater();
            }
        },
        Qt::QueuedConnection);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QString::fromStdString(program), QStringList());
    m_process.write(QByteArray::fromStdString(FetchMessages::encoded(request)));
    m_watchdog.start();
}

FetchProcess::~FetchProcess() {
    m_process.disconnect(this);
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(timeToEndWithUs)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void FetchProcess::abandon() {
    m_isFinished = true;
    letGo();
}

void FetchProcess::readLines() {
    while (!m_isFinished && m_process.canReadLine()) {
        take(m_process.readLine());
    }
    if (!m_isFinished && m_process.bytesAvailable() > FetchMessages::longestAnswer) {
        m_process.kill();
        finish(FetchFailure{FetchReason::fetcherEnded, {}});
    }
}

void FetchProcess::take(const QByteArray& line) {
    const auto answer = FetchMessages::answer({line.constData(), static_cast<std::size_t>(line.size())});
    const auto* const progress = answer ? std::get_if<FetchProgress>(&*answer) : nullptr;
    if (progress == nullptr) {
        finish(answer ? *answer : FetchFailure{FetchReason::fetcherEnded, {}});
    } else if (progress->bytes <= m_received || progress->bytes > m_bytes) {
        // Progress that makes none would keep the watchdog quiet for ever.
        finish(FetchFailure{FetchReason::fetcherEnded, {}});
    } else {
        m_received = progress->bytes;
        m_watchdog.start();
        m_progress(m_received);
    }
}

void FetchProcess::finish(const FetchAnswer& answer) {
    if (std::exchange(m_isFinished, true)) {
        return;
    }
    letGo();
    m_done(answer);
}

/// The program ends by itself when it is asked nothing more.
void FetchProcess::letGo() {
    m_watchdog.stop();
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning) {
        QTimer::singleShot(timeToEnd, &m_process, &QProcess::kill);
    }
}

}  // namespace kestrune
