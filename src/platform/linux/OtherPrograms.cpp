#include "platform/linux/OtherPrograms.h"

#include <QProcess>

#include <array>

namespace kestrune {

namespace {

constexpr std::array ownVariables{"APPDIR",
                                  "APPIMAGE",
                                  "ARGV0",
                                  "OWD",
                                  "LD_LIBRARY_PATH",
                                  "LD_PRELOAD",
                                  "QT_PLUGIN_PATH",
                                  "QT_QPA_PLATFORM_PLUGIN_PATH",
                                  "XDG_ACTIVATION_TOKEN",
                                  "DESKTOP_STARTUP_ID"};

}  // namespace

QProcessEnvironment environmentForOthers() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name : ownVariables) {
        environment.remove(QString::fromLatin1(name));
    }
    return environment;
}

bool startDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessEnvironment(environmentForOthers());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

}  // namespace kestrune
