#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

// bare-tray [--window]: a tray item with a menu and, with --window, an empty window of the workspace's size.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::darkGreen);
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"), &application, &QApplication::quit);
    QSystemTrayIcon item{QIcon(pixmap)};
    item.setContextMenu(&menu);
    item.show();

    QLabel window(QStringLiteral("bare-tray"));
    window.setWindowTitle(QStringLiteral("bare-tray"));
    window.resize(1040, 720);
    if (QApplication::arguments().contains(QStringLiteral("--window"))) {
        window.show();
    }
    return QApplication::exec();
}
