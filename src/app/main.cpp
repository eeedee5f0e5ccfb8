#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <csignal>
#include <string>
#include <string_view>

#include "app/Application.h"
#include "app/StatusMenuModel.h"
#include "base/Localized.h"
#include "platform/ProgramStart.h"

namespace {

/// A standard descriptor that is closed would be given to the next file that is opened, and what is meant for the
/// user would end up there.
void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            // The lowest free number is this one.
            static_cast<void>(open("/dev/null", O_RDWR));
        }
    }
}

bool hasArgument(int argc, char** argv, std::string_view wanted) {
    return std::any_of(argv + 1, argv + std::max(argc, 1),
                       [wanted](const char* argument) { return argument == wanted; });
}

/// Whoever reads less than everything, or has no room for it, is told nothing.
void printMenu() {
    const std::string lines = kestrune::dumpMenu(kestrune::StatusMenuModel().items());
    std::string_view text = lines;
    while (!text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written <= 0) {
            break;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Where people download the program. What stands there until whoever builds it names a site is a text like any other.
std::string downloadHost() {
    static constexpr std::string_view unnamed = kestrune::localizable("your software centre");
    return KESTRUNE_DOWNLOAD_HOST == unnamed ? kestrune::localized(unnamed) : std::string(KESTRUNE_DOWNLOAD_HOST);
}

/// The toolkit's own texts and the side that lines begin on, in the program's language.
void translateToolkit(const std::string& language) {
    static QTranslator toolkitTexts;
    if (toolkitTexts.load(QLocale(QString::fromStdString(language)), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&toolkitTexts);
    }
    // Translators: "RTL" where lines of the language begin on the right.
    QApplication::setLayoutDirection(kestrune::localized("LTR") == "RTL" ? Qt::RightToLeft : Qt::LeftToRight);
}

}  // namespace

int main(int argc, char** argv) {
    openStandardDescriptors();
    // A write that fails is an error to report, not an end.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    // A mask that takes the owner's own rights would leave a Trash and settings behind that nobody can open.
    // What it takes from others stays: a file manager started from here inherits it.
    umask(umask(0) & ~static_cast<mode_t>(S_IRWXU));
    const std::string language = kestrune::ProgramStart::installTranslation();
    if (hasArgument(argc, argv, "--dump-menu")) {
        printMenu();
        return 0;
    }

    kestrune::ProgramStart::prepareForToolkit();
    QApplication::setApplicationName(QStringLiteral("kestrune"));
    QApplication::setApplicationVersion(QStringLiteral(KESTRUNE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.torvandelsyn.kestrune"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QApplication toolkit(argc, argv);
    if (!language.empty()) {
        translateToolkit(language);
    }

    kestrune::Application application(
        {.updates = {KESTRUNE_FEED_URL, KESTRUNE_FEED_KEY, {}},
         .downloadHost = downloadHost(),
         .helpPages = {KESTRUNE_HELP_PAGE, KESTRUNE_UPDATE_HELP_PAGE, KESTRUNE_RELEASE_NOTES_PAGE}});
    application.start();
    return QApplication::exec();
}
