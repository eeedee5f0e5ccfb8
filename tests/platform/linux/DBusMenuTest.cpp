#include "platform/linux/DBusMenu.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

#include "app/StatusMenuModel.h"
#include "platform/linux/DBusMenuTypes.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

/// A menu on the bus and a host that reads it.
class DBusMenuTest : public ::testing::Test {
protected:
    DBusMenuTest() {
        m_model.refresh({.memoryPercent = 63, .freeDiskGB = 120});
        m_menu.setItems(m_model.items());
    }

    QDBusMessage call(const QString& member, const QVariantList& arguments,
                      const QString& interface = QStringLiteral("com.canonical.dbusmenu")) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_program.baseService(), DBusMenu::path, interface, member);
        message.setArguments(arguments);
        return callAndWait(m_host, message);
    }

    DBusMenuLayout layout(int parent = 0, int depth = -1, const QStringList& names = {}) {
        const QDBusMessage reply = call(QStringLiteral("GetLayout"), {parent, depth, names});
        return qdbus_cast<DBusMenuLayout>(reply.arguments().at(1));
    }

    void click(int id) {
        call(QStringLiteral("Event"),
             {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), QVariant::fromValue(0U)});
        QCoreApplication::processEvents();
    }

    bool aboutToShow(int id) { return call(QStringLiteral("AboutToShow"), {id}).arguments().at(0).toBool(); }

    QDBusConnection m_program = TestBus::instance().connect();
    QDBusConnection m_host = TestBus::instance().connect();
    StatusMenuModel m_model;
    std::vector<MenuAction> m_performed;
    std::function<void()> m_willOpen = [] {};
    std::function<void(MenuAction)> m_perform = [](MenuAction) {};
    DBusMenu m_menu{m_program,
                    StatusMenuModel().items(),
                    {[this](MenuAction action) {
                         m_perform(action);
                         m_performed.push_back(action);
                     },
                     [this] { m_willOpen(); }}};
};

}  // namespace

TEST_F(DBusMenuTest, layoutHoldsAllItemsInOrder) {
    const DBusMenuLayout root = layout();
    ASSERT_EQ(root.children.size(), 23);
    EXPECT_EQ(root.id, 0);
    EXPECT_EQ(root.properties.value(QStringLiteral("children-display")), QStringLiteral("submenu"));
    QList<qsizetype> separators;
    for (qsizetype place = 0; place < root.children.size(); ++place) {
        if (root.children[place].properties.value(QStringLiteral("type")) == QStringLiteral("separator")) {
            separators.append(place);
        }
    }
    EXPECT_EQ(separators, (QList<qsizetype>{3, 9, 17, 21}));
    EXPECT_EQ(root.children[1].properties.value(QStringLiteral("label")),
              QStringLiteral("Memory 63% · 120 GB disk available"));
}

TEST_F(DBusMenuTest, plainLinesAreDisabledAndTheResultLineHidden) {
    const DBusMenuLayout root = layout();
    EXPECT_EQ(root.children[0].properties.value(QStringLiteral("enabled")), false);
    EXPECT_EQ(root.children[0].properties.value(QStringLiteral("visible")), true);
    EXPECT_EQ(root.children[2].properties.value(QStringLiteral("visible")), false);
}

TEST_F(DBusMenuTest, checkItemsAndShortcutsAreInTheCustomaryForm) {
    const DBusMenuLayout root = layout();
    const QVariantMap daily = root.children[15].properties;
    EXPECT_EQ(daily.value(QStringLiteral("toggle-type")), QStringLiteral("checkmark"));
    EXPECT_EQ(daily.value(QStringLiteral("toggle-state")), 0);
    const auto shortcut = [&](int place) {
        return qdbus_cast<QList<QStringList>>(root.children[place].properties.value(QStringLiteral("shortcut")));
    };
    EXPECT_EQ(shortcut(4), (QList<QStringList>{{QStringLiteral("Control"), QStringLiteral("L")}}));
    EXPECT_EQ(shortcut(19), (QList<QStringList>{{QStringLiteral("Control"), QStringLiteral("comma")}}));
    EXPECT_FALSE(root.children[7].properties.contains(QStringLiteral("shortcut")));
}

TEST_F(DBusMenuTest, theSubmenuIsBelowItsItem) {
    const DBusMenuLayout advanced = layout().children[20];
    EXPECT_EQ(advanced.properties.value(QStringLiteral("children-display")), QStringLiteral("submenu"));
    ASSERT_EQ(advanced.children.size(), 1);
    EXPECT_EQ(advanced.children[0].properties.value(QStringLiteral("label")), QStringLiteral("Clear Cached Memory…"));
    EXPECT_EQ(layout(advanced.id).children.size(), 1);
    EXPECT_EQ(layout(advanced.children[0].id).properties.value(QStringLiteral("enabled")), true);
}

TEST_F(DBusMenuTest, layoutKeepsToDepthAndNamesAskedFor) {
    EXPECT_TRUE(layout(0, 0).children.isEmpty());
    EXPECT_TRUE(layout(0, 1).children[20].children.isEmpty());
    EXPECT_EQ(layout(0, 1, {QStringLiteral("label")}).children[15].properties.keys(),
              QStringList(QStringLiteral("label")));
}

TEST_F(DBusMenuTest, anUnknownItemIsAnError) {
    EXPECT_EQ(call(QStringLiteral("GetLayout"), {999, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(QStringLiteral("GetProperty"), {-1, QStringLiteral("label")}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(QStringLiteral("NoSuchMethod"), {}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(DBusMenuTest, underscoresInLabelsAreDoubled) {
    MenuItem item;
    item.title = "node_modules moved";
    EXPECT_EQ(DBusMenu::properties(item).value(QStringLiteral("label")), QStringLiteral("node__modules moved"));
}

TEST_F(DBusMenuTest, singlePropertiesAndGroupsAreAnswered) {
    const QDBusMessage one = call(QStringLiteral("GetProperty"), {23, QStringLiteral("label")});
    EXPECT_EQ(one.arguments().at(0).value<QDBusVariant>().variant(), QStringLiteral("Quit Kestrune"));
    const QDBusMessage some = call(QStringLiteral("GetGroupProperties"),
                                   {QVariant::fromValue(QList<int>{1, 999, 23}), QStringList(QStringLiteral("label"))});
    const auto items = qdbus_cast<QList<DBusMenuItem>>(some.arguments().at(0));
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[1].properties.value(QStringLiteral("label")), QStringLiteral("Quit Kestrune"));
    const QDBusMessage all =
        call(QStringLiteral("GetGroupProperties"), {QVariant::fromValue(QList<int>()), QStringList()});
    EXPECT_EQ(qdbus_cast<QList<DBusMenuItem>>(all.arguments().at(0)).size(), 24);
}

TEST_F(DBusMenuTest, aClickIsAnsweredThoughItsCommandTakesItsTime) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_program.baseService(), DBusMenu::path, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("Event"));
    message << 5 << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(0)) << 0U;
    const QDBusPendingCallWatcher watcher(m_host.asyncCall(message));
    bool answeredDuringCommand = false;
    m_perform = [&](MenuAction) {
        answeredDuringCommand = QTest::qWaitFor([&] { return watcher.isFinished(); }, 2000);
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_performed.empty(); }));
    EXPECT_TRUE(answeredDuringCommand);
}

TEST_F(DBusMenuTest, clicksReachTheirCommands) {
    click(11);
    click(7);
    click(2101);
    click(23);
    EXPECT_EQ(m_performed, (std::vector{MenuAction::openOverview, MenuAction::openPorts, MenuAction::clearMemory,
                                        MenuAction::quit}));
}

TEST_F(DBusMenuTest, clicksOnDisabledItemsLinesAndOtherEventsDoNothing) {
    m_model.refresh({.isScanning = true});
    m_menu.setItems(m_model.items());
    click(1);
    click(5);
    click(21);
    call(QStringLiteral("Event"),
         {11, QStringLiteral("hovered"), QVariant::fromValue(QDBusVariant(0)), QVariant::fromValue(0U)});
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_performed.empty());
}

TEST_F(DBusMenuTest, aGroupOfEventsTellsWhichItemsAreUnknown) {
    const QList<DBusMenuEvent> events{{11, QStringLiteral("clicked"), QDBusVariant(0), 0},
                                      {999, QStringLiteral("clicked"), QDBusVariant(0), 0}};
    const QDBusMessage reply = call(QStringLiteral("EventGroup"), {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().at(0)), QList<int>{999});
    QCoreApplication::processEvents();
    EXPECT_EQ(m_performed, std::vector{MenuAction::openOverview});
}

TEST_F(DBusMenuTest, openingRefreshesAndTellsWhetherAnythingChanged) {
    EXPECT_FALSE(aboutToShow(0));
    m_willOpen = [this] {
        m_model.refresh({.memoryPercent = 64, .freeDiskGB = 120});
        m_menu.setItems(m_model.items());
    };
    EXPECT_TRUE(aboutToShow(0));
    EXPECT_FALSE(aboutToShow(0));
    EXPECT_EQ(layout().children[1].properties.value(QStringLiteral("label")),
              QStringLiteral("Memory 64% · 120 GB disk available"));
}

TEST_F(DBusMenuTest, openingSeveralMenusTellsWhichChanged) {
    m_willOpen = [this] {
        m_model.refresh({.memoryPercent = 64});
        m_menu.setItems(m_model.items());
    };
    const QDBusMessage reply = call(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{0, 21, 999})});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().at(0)), QList<int>{0});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().at(1)), QList<int>{999});
}

TEST_F(DBusMenuTest, theRevisionGrowsOnlyWithAChange) {
    const auto revision = [this] {
        return call(QStringLiteral("GetLayout"), {0, 0, QStringList()}).arguments().at(0).toUInt();
    };
    const uint before = revision();
    m_menu.setItems(m_model.items());
    EXPECT_EQ(revision(), before);
    m_model.refresh({.message = "Done."});
    m_menu.setItems(m_model.items());
    EXPECT_GT(revision(), before);
}

TEST_F(DBusMenuTest, theObjectDescribesItself) {
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    const QString menu = QStringLiteral("com.canonical.dbusmenu");
    const QDBusMessage version = call(QStringLiteral("Get"), {menu, QStringLiteral("Version")}, properties);
    EXPECT_EQ(version.arguments().at(0).value<QDBusVariant>().variant(), 3U);
    const QDBusMessage all = call(QStringLiteral("GetAll"), {menu}, properties);
    EXPECT_EQ(qdbus_cast<QVariantMap>(all.arguments().at(0)).keys(),
              (QStringList{QStringLiteral("IconThemePath"), QStringLiteral("Status"), QStringLiteral("TextDirection"),
                           QStringLiteral("Version")}));
    const QDBusMessage xml =
        call(QStringLiteral("Introspect"), {}, QStringLiteral("org.freedesktop.DBus.Introspectable"));
    EXPECT_TRUE(xml.arguments().at(0).toString().contains(menu));
}

}  // namespace kestrune
