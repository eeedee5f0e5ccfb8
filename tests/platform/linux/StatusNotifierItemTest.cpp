#include "platform/linux/StatusNotifierItem.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

/// An item on the bus and a host that asks it. Signals of the item arrive in m_signals.
class StatusNotifierItemTest : public ::testing::Test {
protected:
    QDBusMessage call(const QString& interface, const QString& member, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_program.baseService(), StatusNotifierItem::path, interface, member);
        message.setArguments(arguments);
        return callAndWait(m_host, message);
    }

    QVariant property(const QString& name, const QString& interface = itemInterface) {
        const QDBusMessage reply =
            call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"), {interface, name});
        return reply.arguments().at(0).value<QDBusVariant>().variant();
    }

    QDBusConnection m_program = TestBus::instance().connect();
    QDBusConnection m_host = TestBus::instance().connect();
    int m_activations = 0;
    int m_secondaryActivations = 0;
    StatusNotifierItem m_item{m_program,
                              QStringLiteral("/MenuBar"),
                              false,
                              {[this] { ++m_activations; }, [this] { ++m_secondaryActivations; }}};
};

const TrayTexts sixtyThree{.title = QStringLiteral("🧹 63%"),
                           .tooltip = QStringLiteral("Kestrune · Memory usage 63%"),
                           .label = QStringLiteral("63%"),
                           .percent = 63};

}  // namespace

TEST_F(StatusNotifierItemTest, tellsWhatItIs) {
    m_item.setTexts(sixtyThree);
    EXPECT_EQ(property(QStringLiteral("Id")), QStringLiteral("kestrune"));
    EXPECT_EQ(property(QStringLiteral("Category")), QStringLiteral("SystemServices"));
    EXPECT_EQ(property(QStringLiteral("Status")), QStringLiteral("Active"));
    EXPECT_EQ(property(QStringLiteral("Title")), QStringLiteral("🧹 63%"));
    EXPECT_EQ(property(QStringLiteral("XAyatanaLabel")), QStringLiteral("63%"));
    EXPECT_EQ(property(QStringLiteral("ItemIsMenu")), false);
    EXPECT_EQ(property(QStringLiteral("Menu")).value<QDBusObjectPath>().path(), QStringLiteral("/MenuBar"));
}

TEST_F(StatusNotifierItemTest, answersUnderItsOtherNameToo) {
    EXPECT_EQ(property(QStringLiteral("Id"), QStringLiteral("org.freedesktop.StatusNotifierItem")),
              QStringLiteral("kestrune"));
}

TEST_F(StatusNotifierItemTest, theToolTipCarriesTheSentenceAsItsTitle) {
    m_item.setTexts(sixtyThree);
    const auto argument = property(QStringLiteral("ToolTip")).value<QDBusArgument>();
    ASSERT_EQ(argument.currentSignature(), QStringLiteral("(sa(iiay)ss)"));
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    argument.beginArray();
    EXPECT_TRUE(argument.atEnd());
    argument.endArray();
    argument >> title;
    EXPECT_EQ(title, QStringLiteral("Kestrune · Memory usage 63%"));
}

TEST_F(StatusNotifierItemTest, theIconComesInAllSizesAsNetworkOrderPixels) {
    m_item.setTexts(sixtyThree);
    const auto argument = property(QStringLiteral("IconPixmap")).value<QDBusArgument>();
    ASSERT_EQ(argument.currentSignature(), QStringLiteral("a(iiay)"));
    QList<int> sizes;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray bytes;
        argument.beginStructure();
        argument >> width >> height >> bytes;
        argument.endStructure();
        sizes.append(width);
        EXPECT_EQ(height, width);
        ASSERT_EQ(bytes.size(), width * height * 4);
        EXPECT_EQ(bytes.at(0), 0) << "the corner is transparent";
    }
    argument.endArray();
    EXPECT_EQ(sizes, (QList<int>{22, 24, 32, 44, 48, 64}));
}

TEST_F(StatusNotifierItemTest, allPropertiesComeAtOnce) {
    const QDBusMessage reply =
        call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"), {itemInterface});
    const auto values = qdbus_cast<QVariantMap>(reply.arguments().at(0));
    for (const char* name : {"Id", "Title", "ToolTip", "IconPixmap", "Menu", "Status", "XAyatanaLabelGuide"}) {
        EXPECT_TRUE(values.contains(QLatin1String(name))) << name;
    }
}

TEST_F(StatusNotifierItemTest, anUnknownPropertyOrMethodIsAnError) {
    EXPECT_EQ(call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                   {itemInterface, QStringLiteral("Nonsense")})
                  .type(),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(itemInterface, QStringLiteral("Nonsense"), {}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(StatusNotifierItemTest, clicksReachTheProgram) {
    call(itemInterface, QStringLiteral("Activate"), {10, 10});
    call(itemInterface, QStringLiteral("ContextMenu"), {10, 10});
    call(itemInterface, QStringLiteral("SecondaryActivate"), {10, 10});
    call(itemInterface, QStringLiteral("Scroll"), {1, QStringLiteral("vertical")});
    QCoreApplication::processEvents();
    EXPECT_EQ(m_activations, 2);
    EXPECT_EQ(m_secondaryActivations, 1);
}

TEST_F(StatusNotifierItemTest, describesItself) {
    const QDBusMessage reply =
        call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {});
    EXPECT_TRUE(reply.arguments().at(0).toString().contains(itemInterface));
}

}  // namespace kestrune
