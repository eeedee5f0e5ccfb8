#include "platform/linux/KWinSource.h"

#include <gtest/gtest.h>

#include <QDir>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/FakeKWin.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/TestBus.h"

namespace kestrune {

namespace {

const QString firstId = QStringLiteral("{813ed965-1023-4af7-8271-b64c238fe207}");
const QString secondId = QStringLiteral("{82c2dbb6-1ef0-49c2-8c49-c804b3710139}");
const QString thirdId = QStringLiteral("{0f7f3c0e-51a6-4a1e-9d0c-0d4f3e7b2a11}");

QString window(const QString& id, int pid, const QString& name, bool isActive, const QString& more) {
    return QStringLiteral(R"({"id":"%1","pid":%2,"names":["%3"],"active":%4,%5})")
        .arg(id, QString::number(pid), name, isActive ? QStringLiteral("true") : QStringLiteral("false"), more);
}

// Two windows of one editor and one that the X server shows.
QString desktop(int active) {
    const QString native = QStringLiteral(R"("regular":true,"native":true)");
    return QStringLiteral("[%1,%2,%3]")
        .arg(window(firstId, 100, QStringLiteral("org.kde.kate"), active == 100, native),
             window(secondId, 100, QStringLiteral("org.kde.kate"), false,
                    QStringLiteral(R"("regular":false,"native":true)")),
             window(thirdId, 200, QStringLiteral("xterm"), active == 200,
                    QStringLiteral(R"("regular":false,"native":false)")));
}

class KWinSourceTest : public ::testing::Test {
protected:
    /// scripts is the path on the bus that a loaded script's number is appended to; Plasma 6 has this one.
    explicit KWinSourceTest(QString scripts = QStringLiteral("/Scripting/Script")) : m_scripts(std::move(scripts)) {
        TestBus::instance();
        appear();
    }

    void appear() { m_kwin = std::make_unique<FakeKWin>(TestBus::instance().connect(), m_scripts); }

    void observe() {
        m_source.observeActivation([this](std::int32_t pid) { m_told.push_back(pid); });
    }

    // The listing script runs in KWin and has reported.
    bool isListing(int active = 100) {
        const bool isRunning = QTest::qWaitFor([this] {
            (void)m_source.isAvailable();
            return !m_kwin->scripts().isEmpty();
        });
        m_kwin->report(desktop(active));
        return isRunning && QTest::qWaitFor([this] { return m_source.isAvailable(); });
    }

    static bool isMeant() { return true; }

    const QString m_scripts;
    const TemporaryFolder m_folder;
    std::unique_ptr<FakeKWin> m_kwin;
    std::vector<std::int32_t> m_told;
    KWinSource m_source{true, m_folder.path()};
};

class KWinSourceOnPlasma5Test : public KWinSourceTest {
protected:
    KWinSourceOnPlasma5Test() : KWinSourceTest(QStringLiteral("/")) {}
};

}  // namespace

TEST_F(KWinSourceTest, listsWhatTheScriptReports) {
    EXPECT_TRUE(m_source.applications().empty());
    ASSERT_TRUE(isListing());
    const std::vector<SourcedApplication> applications = m_source.applications();
    ASSERT_EQ(applications.size(), 2U);
    EXPECT_EQ(applications[0].pid, 100);
    EXPECT_EQ(applications[0].hints, std::vector<std::string>{"org.kde.kate"});
    EXPECT_EQ(applications[0].policy, ActivationPolicy::regular);
    EXPECT_EQ(applications[1].pid, 200);
    EXPECT_EQ(applications[1].policy, ActivationPolicy::accessory);
    EXPECT_EQ(m_source.frontmost(), 100);
    EXPECT_TRUE(m_source.isComplete());
    EXPECT_TRUE(m_source.tellsFrontmost());
}

TEST_F(KWinSourceTest, theScriptsFileIsGoneOnceItRuns) {
    ASSERT_TRUE(isListing());
    EXPECT_TRUE(m_kwin->scripts().first().contains(QLatin1String("windowActivated")));
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return QDir(QString::fromStdString(m_folder.path())).entryList(QDir::Files).isEmpty(); }));
}

TEST_F(KWinSourceTest, eachChangeOfTheFrontIsToldOnce) {
    observe();
    ASSERT_TRUE(isListing(100));
    for (const int active : {200, 0, 100}) {
        m_kwin->report(desktop(active));
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_source.frontmost().value_or(0) == active; })) << active;
    }
    EXPECT_EQ(m_told, (std::vector<std::int32_t>{100, 200, 100}));
}

TEST_F(KWinSourceTest, whateverIsReportedRightAfterAReportIsOneChange) {
    observe();
    ASSERT_TRUE(isListing(100));
    for (int i = 0; i < 50; ++i) {
        m_kwin->report(desktop(200));
        m_kwin->report(desktop(100));
    }
    m_kwin->report(desktop(200));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_told == std::vector<std::int32_t>{100, 200}; }));
}

TEST_F(KWinSourceTest, aReportThatIsTooLongTakesNoOthersPlace) {
    observe();
    ASSERT_TRUE(isListing(100));
    m_kwin->report(desktop(200));
    m_kwin->report(QString(KWinScripts::longestReport + 1, QLatin1Char(' ')));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_told == std::vector<std::int32_t>{100, 200}; }));
}

TEST_F(KWinSourceTest, aReportOfAnybodyElseIsRefused) {
    ASSERT_TRUE(isListing(100));
    m_kwin->report(QStringLiteral("[]"), TestBus::instance().connect());
    m_kwin->report(QStringLiteral("nonsense"));
    m_kwin->report(desktop(200));
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_source.frontmost() == 200; }));
    EXPECT_FALSE(QTest::qWaitFor([this] { return m_source.applications().empty(); }, 50));
}

TEST_F(KWinSourceTest, closingAsksEveryWindowOfTheProcess) {
    ASSERT_TRUE(isListing());
    EXPECT_TRUE(m_source.close(100, isMeant));
    const QString script = m_kwin->scripts().value(1);
    EXPECT_TRUE(script.contains(QLatin1String("closeWindow()")));
    EXPECT_TRUE(script.contains(firstId));
    EXPECT_TRUE(script.contains(secondId));
    EXPECT_FALSE(script.contains(thirdId));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_kwin->unloaded().count(QStringLiteral("kestrune-close")) == 2; }));
}

TEST_F(KWinSourceTest, aWindowOfTheXServerIsLeftToIt) {
    ASSERT_TRUE(isListing());
    EXPECT_FALSE(m_source.close(200, isMeant));
    EXPECT_FALSE(m_source.close(300, isMeant));
    EXPECT_EQ(m_kwin->scripts().size(), 1);
}

TEST_F(KWinSourceTest, nothingRunsForANumberThatHasPassedOn) {
    ASSERT_TRUE(isListing());
    EXPECT_FALSE(m_source.close(100, [] { return false; }));
    EXPECT_EQ(m_kwin->scripts().size(), 1);
}

TEST_F(KWinSourceTest, aDesktopThatRefusesOrHangsHoldsNobodyUp) {
    ASSERT_TRUE(isListing());
    for (const std::optional<int> number : {std::optional(-1), std::optional<int>()}) {
        m_kwin->setNumber(number);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(m_source.close(100, isMeant));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
    EXPECT_EQ(m_kwin->scripts().size(), 1);
}

TEST_F(KWinSourceTest, aNewKWinIsAskedAnew) {
    observe();
    ASSERT_TRUE(isListing(100));
    m_kwin.reset();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_source.isAvailable(); }));
    EXPECT_TRUE(m_source.applications().empty());
    EXPECT_EQ(m_source.frontmost(), std::nullopt);
    EXPECT_FALSE(m_source.close(100, isMeant));
    appear();
    ASSERT_TRUE(isListing(200));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_told == std::vector<std::int32_t>{100, 200}; }));
}

TEST_F(KWinSourceTest, itsScriptLeavesWithIt) {
    {
        KWinSource source(true, m_folder.path());
        ASSERT_TRUE(QTest::qWaitFor([&] {
            (void)source.isAvailable();
            return !m_kwin->scripts().isEmpty();
        }));
    }
    // Once before it was loaded, and once at the end.
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_kwin->unloaded().count(QStringLiteral("kestrune-windows")) == 2; }));
}

TEST_F(KWinSourceTest, inAnX11SessionItIsNotAsked) {
    KWinSource source(false, m_folder.path());
    source.observeActivation([](std::int32_t) {});
    EXPECT_FALSE(QTest::qWaitFor([&] { return source.isAvailable() || !m_kwin->unloaded().isEmpty(); }, 50));
    EXPECT_FALSE(source.tellsFrontmost());
}

TEST_F(KWinSourceOnPlasma5Test, listsWhatTheScriptReportsAndItsFileIsGone) {
    ASSERT_TRUE(isListing());
    EXPECT_EQ(m_source.applications().size(), 2U);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return QDir(QString::fromStdString(m_folder.path())).entryList(QDir::Files).isEmpty(); }));
}

TEST_F(KWinSourceOnPlasma5Test, closingAsksEveryWindowOfTheProcess) {
    ASSERT_TRUE(isListing());
    EXPECT_TRUE(m_source.close(100, isMeant));
    const QString script = m_kwin->scripts().value(1);
    EXPECT_TRUE(script.contains(firstId));
    EXPECT_TRUE(script.contains(secondId));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_kwin->unloaded().count(QStringLiteral("kestrune-close")) == 2; }));
}

}  // namespace kestrune
