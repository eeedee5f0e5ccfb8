// A window from which files are dragged, for tests of what they can be dropped on.
//
//   kestrune-dragging X Y ADDRESS…
//
// It lies at that place of the screen, above everything. Pulling the pointer off it with the button held drags the
// addresses (file:///…, percent-encoded bytes). It prints "shown" once it can be pressed, "dragging" when the drag has
// begun, "wanted" and "refused" as what lies under the pointer takes or refuses them, and "dropped" or "returned" at
// the end.
#include <QApplication>
#include <QByteArray>
#include <QDrag>
#include <QList>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace {

void say(const char* word) {
    std::puts(word);
    static_cast<void>(std::fflush(stdout));
}

class Source final : public QWidget {
public:
    explicit Source(QList<QUrl> addresses)
        : QWidget(nullptr, Qt::Window | Qt::X11BypassWindowManagerHint), m_addresses(std::move(addresses)) {}

protected:
    void mousePressEvent(QMouseEvent* event) override { m_pressed = event->position().toPoint(); }

    void mouseMoveEvent(QMouseEvent* event) override {
        const QPoint moved = event->position().toPoint() - m_pressed;
        if (moved.manhattanLength() >= QApplication::startDragDistance()) {
            drag();
        }
    }

    void paintEvent(QPaintEvent* event) override {
        QWidget::paintEvent(event);
        // Queued: what is painted is on the screen once the events of now are done.
        if (!std::exchange(m_isShown, true)) {
            QTimer::singleShot(0, this, [] { say("shown"); });
        }
    }

private:
    void drag() {
        auto* dragged = new QMimeData;
        dragged->setUrls(m_addresses);
        auto* drag = new QDrag(this);
        drag->setMimeData(dragged);
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { say(action == Qt::IgnoreAction ? "refused" : "wanted"); });
        QTimer::singleShot(0, this, [] { say("dragging"); });
        const bool isDropped = drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction) != Qt::IgnoreAction;
        say(isDropped ? "dropped" : "returned");
    }

    QList<QUrl> m_addresses;
    QPoint m_pressed;
    bool m_isShown = false;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    constexpr qsizetype firstAddress = 3;
    if (arguments.size() <= firstAddress) {
        return 1;
    }
    QList<QUrl> addresses;
    for (const QString& address : arguments.mid(firstAddress)) {
        addresses.append(QUrl::fromEncoded(address.toLatin1(), QUrl::StrictMode));
    }
    Source source(std::move(addresses));
    source.setGeometry(arguments[1].toInt(), arguments[2].toInt(), 120, 60);
    source.show();
    return QApplication::exec();
}
