#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <string>

namespace kestrune {

/// Hands a package to the program of the desktop that installs packages, which asks the user whatever it takes. Main
/// thread; one package at a time.
class PackageHandover final : public QObject {
    Q_OBJECT

public:
    /// Whether somebody took the package.
    using Answer = std::function<void(bool isTaken)>;

    /// opener opens a file with the desktop's program for its kind. Whoever has not refused within patience counts as
    /// having taken the package: most of them answer only when the user is done.
    PackageHandover(QDBusConnection bus, QString opener, std::chrono::milliseconds patience);
    ~PackageHandover() override;

    /// answer is called once, from the event loop.
    void offer(const std::string& path, Answer answer);

private:
    void askInstaller();
    void askOpener();
    void finish(bool isTaken);

    QDBusConnection m_bus;
    const QString m_opener;
    QString m_path;
    Answer m_answer;
    QTimer m_patience;
    QProcess m_process;
};

}  // namespace kestrune
