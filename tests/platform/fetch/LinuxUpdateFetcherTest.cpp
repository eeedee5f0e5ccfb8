#include "platform/linux/LinuxUpdateFetcher.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTest>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/fetch/ArchiveSigner.h"
#include "tests/platform/fetch/TestHttpsServer.h"

namespace kestrune {

namespace {

namespace fs = std::filesystem;

const QByteArray feed = R"(<rss xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><item>
<s:version>2.2.0</s:version><enclosure url="https://example.org/a"/></item></channel></rss>)";

/// Runs the real kestrune-fetch against a real server.
class LinuxUpdateFetcherTest : public ::testing::Test {
protected:
    using FeedResult = Result<std::vector<FeedItem>, UpdaterError>;
    using ArchiveResult = Result<std::string, UpdaterError>;

    [[nodiscard]] UpdateSource source() const {
        return {m_server.url("/feed"), m_publisher.publicKey(), TestAuthority::instance().file()};
    }

    [[nodiscard]] UpdateItem item(const std::string& bytes) const {
        UpdateItem item;
        item.version = "2.2.0";
        item.archiveUrl = m_server.url("/kestrune.AppImage");
        item.archiveBytes = static_cast<std::int64_t>(bytes.size());
        item.archiveSignature = m_publisher.signature(bytes);
        return item;
    }

    [[nodiscard]] LinuxUpdateFetcher fetcher(const std::string& program = KESTRUNE_FETCH,
                                             FetchPatience patience = {}) const {
        return {program, m_cache, patience};
    }

    /// A stand-in for kestrune-fetch.
    [[nodiscard]] std::string script(const std::string& text) const {
        std::string path = m_folder.write("fetch.sh", "#!/bin/sh\n" + text);
        ::chmod(path.c_str(), S_IRWXU);
        return path;
    }

    std::optional<FeedResult> fetchFeed(LinuxUpdateFetcher fetcher) {
        std::optional<FeedResult> told;
        const auto transfer = fetcher.fetchFeed(source(), [&told](FeedResult result) {
            EXPECT_FALSE(told.has_value());
            told.emplace(std::move(result));
        });
        EXPECT_FALSE(told.has_value());
        EXPECT_TRUE(QTest::qWaitFor([&told] { return told.has_value(); }, 20'000));
        return told;
    }

    std::optional<ArchiveResult> fetchArchive(const UpdateItem& item) {
        LinuxUpdateFetcher running = fetcher();
        std::optional<ArchiveResult> told;
        m_progress = 0;
        const auto transfer = running.fetchArchive(
            source(), item,
            [this](std::int64_t bytes, std::int64_t total) {
                EXPECT_GT(bytes, m_progress);
                EXPECT_LE(bytes, total);
                m_progress = bytes;
            },
            [&told](ArchiveResult result) { told.emplace(std::move(result)); });
        EXPECT_TRUE(QTest::qWaitFor([&told] { return told.has_value(); }, 20'000));
        return told;
    }

    /// How many archives are in the cache folder, finished or not.
    [[nodiscard]] std::ptrdiff_t archives() const {
        return fs::exists(m_cache) ? std::distance(fs::directory_iterator(m_cache), fs::directory_iterator()) : 0;
    }

    void expectFailure(const UpdateItem& item, int code, const std::string& sentence) {
        const auto answer = fetchArchive(item);
        ASSERT_TRUE(answer && !answer->ok());
        EXPECT_EQ(answer->error(), (UpdaterError{code, sentence}));
        EXPECT_EQ(archives(), 0);
    }

    TestHttpsServer m_server;
    TemporaryFolder m_folder;
    const std::string m_cache = m_folder.path("cache");
    const ArchiveSigner m_publisher;
    std::int64_t m_progress = 0;
};

}  // namespace

TEST_F(LinuxUpdateFetcherTest, answersWhatTheFeedSays) {
    m_server.serve("/feed", feed);
    const auto answer = fetchFeed(fetcher());
    ASSERT_TRUE(answer && answer->ok());
    ASSERT_EQ(answer->value().size(), 1U);
    EXPECT_EQ(answer->value()[0].version, "2.2.0");
    EXPECT_EQ(answer->value()[0].url, "https://example.org/a");
}

TEST_F(LinuxUpdateFetcherTest, tellsInASentenceWhyThereIsNoFeed) {
    const auto missing = fetchFeed(fetcher());
    ASSERT_TRUE(missing && !missing->ok());
    EXPECT_EQ(missing->error(), (UpdaterError{UpdaterError::network, "The server answered with the status 404."}));
    m_server.serve("/feed", "");
    const auto empty = fetchFeed(fetcher());
    ASSERT_TRUE(empty && !empty->ok());
    EXPECT_EQ(empty->error(), (UpdaterError{UpdaterError::feed, "The server's answer is not an update feed."}));
}

TEST_F(LinuxUpdateFetcherTest, aSignedArchiveArrivesWithItsProgress) {
    const std::string bytes(3'000'000, 'a');
    m_server.serve("/kestrune.AppImage", QByteArray::fromStdString(bytes));
    const auto answer = fetchArchive(item(bytes));
    ASSERT_TRUE(answer && answer->ok());
    EXPECT_EQ(TemporaryFolder::contentOf(answer->value()), bytes);
    EXPECT_TRUE(answer->value().starts_with(m_cache + "/fetch-")) << answer->value();
    EXPECT_TRUE(answer->value().ends_with("/kestrune.AppImage")) << answer->value();
    EXPECT_EQ(m_progress, 3'000'000);
}

TEST_F(LinuxUpdateFetcherTest, anArchiveOfAnotherLengthIsThrownAway) {
    m_server.serve("/kestrune.AppImage", "bytes");
    expectFailure(item("bytes!"), UpdaterError::network, "The update ended before its announced length.");
    expectFailure(item("byte"), UpdaterError::network, "The update is longer than announced.");
    UpdateItem unknown = item("bytes");
    unknown.archiveBytes = 0;
    expectFailure(unknown, UpdaterError::feed, "The update feed does not say how large the update is.");
    unknown.archiveBytes = std::int64_t{1} << 40;
    expectFailure(unknown, UpdaterError::feed, "The update feed does not say how large the update is.");
}

TEST_F(LinuxUpdateFetcherTest, anArchiveThatIsNotThePublishersIsThrownAway) {
    m_server.serve("/kestrune.AppImage", "bytes");
    const std::string sentence = "The update is not signed by its publisher, and was thrown away.";
    UpdateItem wrong = item("bytes");
    wrong.archiveSignature = m_publisher.signature("setyb");
    expectFailure(wrong, UpdaterError::signature, sentence);
    wrong.archiveSignature = ArchiveSigner().signature("bytes");
    expectFailure(wrong, UpdaterError::signature, sentence);
    wrong.archiveSignature.clear();
    expectFailure(wrong, UpdaterError::signature, sentence);
}

TEST_F(LinuxUpdateFetcherTest, aConnectionThatIsLostLeavesNothing) {
    m_server.on("/kestrune.AppImage", TestHttpsServer::sending("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nby"));
    expectFailure(item("bytes"), UpdaterError::network,
                  "The connection to 127.0.0.1 was lost before everything was here.");
}

TEST_F(LinuxUpdateFetcherTest, lettingGoEndsTheTransferAndTakesAwayWhatIsHere) {
    m_server.on("/kestrune.AppImage",
                [](QSslSocket& socket) { socket.write("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nby"); });
    LinuxUpdateFetcher running = fetcher();
    bool isAnswered = false;
    auto transfer = running.fetchArchive(
        source(), item("bytes"), [](std::int64_t, std::int64_t) {},
        [&isAnswered](const ArchiveResult&) { isAnswered = true; });
    ASSERT_TRUE(QTest::qWaitFor([this] { return archives() == 1; }));
    transfer.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return archives() == 0; }));
    EXPECT_FALSE(isAnswered);
}

TEST_F(LinuxUpdateFetcherTest, theProgramsEndTakesTheTransferWithIt) {
    m_server.on("/kestrune.AppImage",
                [](QSslSocket& socket) { socket.write("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nby"); });
    auto running = std::make_unique<LinuxUpdateFetcher>(KESTRUNE_FETCH, m_cache);
    const auto transfer = running->fetchArchive(
        source(), item("bytes"), [](std::int64_t, std::int64_t) {}, [](const ArchiveResult&) {});
    ASSERT_TRUE(QTest::qWaitFor([this] { return archives() == 1; }));
    running.reset();
    EXPECT_EQ(archives(), 0);
}

TEST_F(LinuxUpdateFetcherTest, anAnswerMayLetGoOfItsTransfer) {
    m_server.serve("/feed", feed);
    LinuxUpdateFetcher running = fetcher();
    std::unique_ptr<UpdateFetcher::Transfer> transfer;
    bool isAnswered = false;
    transfer = running.fetchFeed(source(), [&](const FeedResult&) {
        transfer.reset();
        isAnswered = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&isAnswered] { return isAnswered; }, 20'000));
}

TEST_F(LinuxUpdateFetcherTest, aMissingProgramIsTold) {
    const auto answer = fetchFeed(fetcher("/nonexistent/kestrune-fetch"));
    ASSERT_TRUE(answer && !answer->ok());
    EXPECT_EQ(answer->error(),
              (UpdaterError{UpdaterError::network,
                            "The program that fetches updates, /nonexistent/kestrune-fetch, could not be started. "
                            "Install Kestrune again."}));
}

TEST_F(LinuxUpdateFetcherTest, aProgramThatEndsOrTalksNonsenseIsTold) {
    const UpdaterError ended{UpdaterError::network, "The program that fetches updates ended unexpectedly."};
    for (const char* const text : {"exit 0", "kill -9 $$", "echo nonsense; exec cat >/dev/null",
                                   "echo '{\"path\":\"/etc/passwd\"}'; exec cat >/dev/null",
                                   "echo '{\"bytes\":1}'; exec cat >/dev/null", "yes | tr -d '\\n'"}) {
        const auto answer = fetchFeed(fetcher(script(text)));
        ASSERT_TRUE(answer && !answer->ok()) << text;
        EXPECT_EQ(answer->error(), ended) << text;
    }
}

TEST_F(LinuxUpdateFetcherTest, aProgramThatHangsIsStopped) {
    const auto answer =
        fetchFeed(fetcher(script("trap '' TERM; exec cat >/dev/null"), {std::chrono::milliseconds(200)}));
    ASSERT_TRUE(answer && !answer->ok());
    EXPECT_EQ(answer->error(), (UpdaterError{UpdaterError::network,
                                             "The program that fetches updates did not answer and was stopped."}));
}

TEST_F(LinuxUpdateFetcherTest, theProgramIsFoundBesideTheOtherOrWhereItIsInstalled) {
    EXPECT_EQ(LinuxUpdateFetcher::programFor(m_folder.path()), m_folder.path() + "/../libexec/kestrune/kestrune-fetch");
    ::chmod(m_folder.write("kestrune-fetch", "").c_str(), S_IRWXU);
    EXPECT_EQ(LinuxUpdateFetcher::programFor(m_folder.path()), m_folder.path("kestrune-fetch"));
}

}  // namespace kestrune
