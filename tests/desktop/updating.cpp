// The program with the feed that the environment names, for tests of updates from end to end.
#include <QApplication>

#include "app/Application.h"

namespace {

std::string setting(const char* name) {
    return qEnvironmentVariable(name).toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    QApplication::setApplicationName(QStringLiteral("kestrune"));
    QApplication::setApplicationVersion(QStringLiteral(KESTRUNE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.torvandelsyn.kestrune"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QApplication toolkit(argc, argv);
    kestrune::Application application(
        {.updates = {setting("KESTRUNE_TEST_FEED"), setting("KESTRUNE_TEST_KEY"), setting("KESTRUNE_TEST_AUTHORITY")},
         .downloadHost = "downloads.example",
         .helpPages = {}});
    application.start();
    return QApplication::exec();
}
