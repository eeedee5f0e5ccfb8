#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QTest>
#include <map>

#include "tests/ui/EverySight.h"
#include "tests/ui/SeenPieces.h"
#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/ScrollArea.h"
#include "ui/ScrollThumb.h"
#include "ui/Theme.h"
#include "ui/Toggle.h"

namespace kestrune {

namespace {

/// People read from right to left until the end of the block.
class RightToLeft final {
public:
    RightToLeft() { QGuiApplication::setLayoutDirection(Qt::RightToLeft); }

    RightToLeft(const RightToLeft&) = delete;
    RightToLeft& operator=(const RightToLeft&) = delete;

    ~RightToLeft() { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }
};

/// Where each visible widget of a window is, the window's own size first.
struct Places {
    QSize size;
    std::vector<std::pair<std::string, QRect>> boxes;
};

Places placesOf(QWidget& window) {
    Places result{window.size(), {}};
    for (const Seen& piece : seenIn(window)) {
        // The ring is wherever the keyboard has been.
        if (!piece.widget->isWindow() && qobject_cast<FocusRing*>(piece.widget) == nullptr) {
            const QRect box(piece.widget->mapTo(&window, QPoint(0, 0)), piece.widget->size());
            result.boxes.emplace_back(piece.widget->metaObject()->className() + (" " + piece.name.toStdString()), box);
        }
    }
    return result;
}

std::map<std::string, Places> allPlaces() {
    std::map<std::string, Places> result;
    EverySight::visit([&](const std::string& sight, QWidget& window) { result[sight] = placesOf(window); });
    return result;
}

constexpr int canvasWidth = 300;
constexpr int canvasHeight = 40;

/// The pixels that draw leaves on a widget, from the first to the last column.
class Canvas final : public QWidget {
public:
    using Draw = std::function<void(QPainter&)>;

    explicit Canvas(Draw draw) : m_draw(std::move(draw)) { resize(canvasWidth, canvasHeight); }

    [[nodiscard]] QRect ink() {
        const QImage image = grab().toImage().convertToFormat(QImage::Format_ARGB32);
        QRect result;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qGray(image.pixel(x, y)) < 128) {
                    result |= QRect(x, y, 1, 1);
                }
            }
        }
        return result;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        MirrorPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        m_draw(painter);
    }

private:
    Draw m_draw;
};

QRect inkOf(const Canvas::Draw& draw) {
    return Canvas(draw).ink();
}

QRect mirrored(const QRect& box) {
    return {canvasWidth - box.right() - 1, box.top(), box.width(), box.height()};
}

}  // namespace

TEST(RightToLeft, everyWidgetOfEveryWindowIsOnTheOtherSide) {
    const auto usual = allPlaces();
    const RightToLeft direction;
    const auto turned = allPlaces();
    ASSERT_EQ(usual.size(), turned.size());
    for (const auto& [sight, places] : usual) {
        const Places& others = turned.at(sight);
        ASSERT_EQ(others.size, places.size) << sight;
        ASSERT_EQ(others.boxes.size(), places.boxes.size()) << sight;
        for (std::size_t index = 0; index < places.boxes.size(); ++index) {
            const auto& [name, box] = places.boxes[index];
            const QRect expected(places.size.width() - box.x() - box.width(), box.y(), box.width(), box.height());
            EXPECT_EQ(others.boxes[index].first, name) << sight;
            // A pixel that does not divide by two may go to either side.
            EXPECT_LE(std::abs(others.boxes[index].second.x() - expected.x()), 1) << sight << ": " << name;
            EXPECT_EQ(others.boxes[index].second.size(), expected.size()) << sight << ": " << name;
            EXPECT_EQ(others.boxes[index].second.y(), expected.y()) << sight << ": " << name;
        }
    }
}

TEST(RightToLeft, scrollThumbIsAtTheLeft) {
    const RightToLeft direction;
    ScrollArea area;
    auto* high = new QWidget;
    high->setMinimumHeight(2000);
    area.setWidget(high);
    area.resize(300, 200);
    area.show();
    EXPECT_EQ(area.findChild<ScrollThumb*>()->x(), 0);
}

TEST(RightToLeft, textsAndFiguresStandOnTheOtherSideAndStayReadable) {
    const QRect box(20, 0, 200, canvasHeight);
    const auto text = [&](QPainter& painter) {
        Paint::text(painter, box, FontRole::heading, Qt::black, QStringLiteral("Lines"));
    };
    const auto figure = [](QPainter& painter) {
        painter.setPen(Qt::black);
        Metrics::drawTabular(painter, 20, 30, FontRole::heading, QStringLiteral("47"));
    };
    const QRect usualText = inkOf(text);
    const QRect usualFigure = inkOf(figure);
    const RightToLeft direction;
    const QRect turned = inkOf(text);
    EXPECT_EQ(turned.size(), usualText.size());
    EXPECT_GT(turned.left(), canvasWidth - 20 - turned.width() - 4);
    EXPECT_LT(turned.right(), canvasWidth - 20 + 1);
    EXPECT_EQ(inkOf(figure).size(), usualFigure.size());
    EXPECT_GT(inkOf(figure).left(), canvasWidth / 2);
}

TEST(RightToLeft, barsFillFromTheRight) {
    const auto bar = [](QPainter& painter) { Paint::bar(painter, QRectF(20, 10, 200, 8), 0.25, Qt::black, Qt::white); };
    const QRect usual = inkOf(bar);
    const RightToLeft direction;
    EXPECT_EQ(inkOf(bar), mirrored(usual));
}

TEST(RightToLeft, chevronsPointTheOtherWayAndOtherSymbolsStayAsTheyAre) {
    const auto symbol = [](const char* name) {
        return [name](QPainter& painter) { Icons::draw(painter, QPointF(20, 4), QLatin1String(name), Qt::black, 32); };
    };
    const QRect chevron = inkOf(symbol("chevron.right"));
    const QRect lens = inkOf(symbol("magnifyingglass"));
    const RightToLeft direction;
    EXPECT_EQ(inkOf(symbol("chevron.right")), mirrored(chevron));
    const QRect turned = inkOf(symbol("magnifyingglass"));
    EXPECT_EQ(turned.left() - (canvasWidth - 52), lens.left() - 20);
}

TEST(RightToLeft, namesAreCutWhereTheyEndWhicheverWayTheyRun) {
    // Letters of full height only, so that the ellipsis is what is low.
    const auto endsLow = [](const QString& text, int from) {
        const QRect box(0, 0, 100, canvasHeight);
        Canvas canvas([=](QPainter& painter) { Paint::text(painter, box, FontRole::heading, Qt::black, text); });
        const QImage image = canvas.grab().toImage();
        constexpr int lower = canvasHeight / 2;
        for (int x = from; x < from + 6; ++x) {
            for (int y = 0; y < lower; ++y) {
                if (qGray(image.pixel(x, y)) < 128) {
                    return false;
                }
            }
        }
        return true;
    };
    const QString hebrew(60, QChar(0x05DD));
    const QString latin(60, QLatin1Char('H'));
    EXPECT_TRUE(endsLow(hebrew, 1));
    EXPECT_FALSE(endsLow(latin, 1));
    EXPECT_TRUE(endsLow(latin, 90));
    EXPECT_FALSE(endsLow(hebrew, 90));
}

TEST(RightToLeft, lineOfAParagraphRunsLikeTheParagraph) {
    const QString hebrew = QStringLiteral("שלום ") + QString(30, QLatin1Char('w')) + QStringLiteral(" שלום");
    const QStringList lines =
        Paint::wrapped(FontRole::body, hebrew, Metrics::width(FontRole::body, QString(31, QLatin1Char('w'))));
    ASSERT_GT(lines.size(), 1);
    for (const QString& line : lines) {
        EXPECT_TRUE(line.isRightToLeft()) << line.toStdString();
    }
}

TEST(RightToLeft, menuOpensAtTheEdgeWhereLinesBegin) {
    QWidget window;
    window.resize(600, 300);
    auto* anchor = new QWidget(&window);
    anchor->setGeometry(250, 50, 200, 30);
    window.show();
    QMenu menu;
    menu.addAction(QStringLiteral("One"));
    Mirror::popUpBelow(menu, *anchor);
    EXPECT_EQ(menu.x(), anchor->mapToGlobal(QPoint(0, 0)).x());
    menu.close();
    const RightToLeft direction;
    Mirror::popUpBelow(menu, *anchor);
    EXPECT_EQ(menu.x() + menu.width(), anchor->mapToGlobal(QPoint(anchor->width(), 0)).x());
}

}  // namespace kestrune
