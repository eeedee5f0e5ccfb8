#include "platform/ProcessText.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace kestrune {
namespace {

using namespace std::string_literals;

// Recorded: an application bundle with a blank in its name, a path with brackets, a column wider than the others.
constexpr std::string_view listing =
    "    1  12345   0.0 /sbin/launchd\n"
    "  501 262144  12.5 /Applications/LM Studio.app/Contents/MacOS/LM Studio\n"
    " 4711   1023   0.1 /Users/u/bin/odd ) name (x86) \n"
    "99999 1234567 100.0 node\n";

TEST(ProcessText, processesAreReadInTheirOrder) {
    EXPECT_EQ(
        ProcessText::processes(listing),
        (std::vector<ProcessRecord>{{1, 12345, "0.0", "/sbin/launchd", 0},
                                    {501, 262144, "12.5", "/Applications/LM Studio.app/Contents/MacOS/LM Studio", 0},
                                    {4711, 1023, "0.1", "/Users/u/bin/odd ) name (x86) ", 0},
                                    {99999, 1234567, "100.0", "node", 0}}));
}

TEST(ProcessText, processorShareIsKeptAsItWasPrinted) {
    for (const std::string cpu : {"12.5", "0,3", "-", "1e3", "nan", "100"}) {
        const auto records = ProcessText::processes("7 8 " + cpu + " x\n");
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0].cpu, cpu);
    }
}

TEST(ProcessText, linesThatLackAFieldAreLeftOut) {
    for (const std::string_view line : {"", "\n", " ", "1", "1 2", "1 2 3", "1 2 3 ", "1 2 3\t\n", "\n\n\n"}) {
        EXPECT_TRUE(ProcessText::processes(line).empty()) << line;
    }
}

TEST(ProcessText, linesWhoseNumbersAreNoneAreLeftOut) {
    for (const std::string_view line :
         {"PID RSS %CPU COMMAND", "12a 1 0.0 x", "0x1f 1 0.0 x", "1.0 1 0.0 x", "2147483648 1 0.0 x",
          "-2147483649 1 0.0 x", "99999999999999999999 1 0.0 x", "1 9223372036854775808 0.0 x", "1 12k 0.0 x",
          "1 - 0.0 x", "error: list of process IDs must follow -p"}) {
        EXPECT_TRUE(ProcessText::processes(line).empty()) << line;
    }
}

TEST(ProcessText, largestNumbersAreRead) {
    const auto records = ProcessText::processes("2147483647 9223372036854775807 0.0 x");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].pid, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(records[0].residentKilobytes, std::numeric_limits<std::int64_t>::max());
}

TEST(ProcessText, badBytesInOneNameSpoilNoOtherRow) {
    const auto records = ProcessText::processes("1 10 0.0 /bin/a\xFF\xC3(\n2 20 0.0 /bin/b\0c\n3 30 0.0 /bin/d\n"s);
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].command, "/bin/a\xFF\xC3(");
    EXPECT_EQ(records[1].command, "/bin/b\0c"s);
    EXPECT_EQ(records[2].command, "/bin/d");
}

TEST(ProcessText, lineEndInANameCutsThatNameOnly) {
    const auto records = ProcessText::processes("1 10 0.0 /bin/first\nsecond half\n2 20 0.0 /bin/b\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].command, "/bin/first");
    EXPECT_EQ(records[1].command, "/bin/b");
}

TEST(ProcessText, lastLineNeedsNoEndAndCarriageReturnsBelongToTheEnd) {
    EXPECT_EQ(ProcessText::processes("1 10 0.0 /bin/a b\r\n2 20 0.0 c"),
              (std::vector<ProcessRecord>{{1, 10, "0.0", "/bin/a b", 0}, {2, 20, "0.0", "c", 0}}));
}

TEST(ProcessText, emptyListingHasNoProcesses) {
    EXPECT_TRUE(ProcessText::processes("").empty());
}

TEST(ProcessText, damagedListingsAreReadWithoutHarm) {
    std::mt19937 random(7);
    for (int i = 0; i < 5'000; ++i) {
        std::string text(listing);
        for (int change = 0; change < 8; ++change) {
            text[random() % text.size()] = static_cast<char>(random() % 256);
        }
        for (const ProcessRecord& record : ProcessText::processes(text)) {
            ASSERT_FALSE(record.cpu.empty());
            ASSERT_FALSE(record.command.empty());
            ASSERT_EQ(record.command.find('\n'), std::string::npos);
        }
    }
}

TEST(ListeningPorts, endpointsAreSortedAndEachIsToldOnce) {
    EXPECT_EQ(ProcessText::listeningPorts("p123\nn*:3000\nn*:3000\nn127.0.0.1:9229\n"),
              (ListeningPorts{{123, {"*:3000", "127.0.0.1:9229"}}}));
}

TEST(ListeningPorts, endpointBeforeAnyProcessIsIgnored) {
    EXPECT_EQ(ProcessText::listeningPorts("n*:80\np5\nn*:81\n"), (ListeningPorts{{5, {"*:81"}}}));
}

TEST(ListeningPorts, processThatIsNoNumberTakesItsEndpointsAway) {
    EXPECT_EQ(ProcessText::listeningPorts("p1\nn*:80\npabc\nn*:81\nn*:82\np2\nn*:83\n"),
              (ListeningPorts{{1, {"*:80"}}, {2, {"*:83"}}}));
    for (const std::string line : {"p", "p ", "p12 ", "p 12", "p+12", "p12.0", "p2147483648", "p0x10"}) {
        EXPECT_TRUE(ProcessText::listeningPorts(line + "\nn*:81\n").empty()) << line;
    }
}

TEST(ListeningPorts, newerAddressesKeepTheirBrackets) {
    EXPECT_EQ(ProcessText::listeningPorts("p9\nf12\nn[::1]:5173\nn[fe80::1]:80\n"),
              (ListeningPorts{{9, {"[::1]:5173", "[fe80::1]:80"}}}));
}

TEST(ListeningPorts, emptyOutputGivesAnEmptyMap) {
    EXPECT_TRUE(ProcessText::listeningPorts("").empty());
    EXPECT_TRUE(ProcessText::listeningPorts("\n\n\r\n").empty());
}

TEST(ListeningPorts, otherFieldsAndMessagesAreIgnored) {
    EXPECT_EQ(ProcessText::listeningPorts("lsof: WARNING: can't stat() tracefs file system /sys/kernel/debug/tracing\n"
                                          "      Output information may be incomplete.\n"
                                          "p77\ncnode\nf21\nPTCP\nn*:3000\nTST=LISTEN\n"),
              (ListeningPorts{{77, {"*:3000"}}}));
}

TEST(ListeningPorts, processWithoutAnEndpointHasNoEntry) {
    EXPECT_EQ(ProcessText::listeningPorts("p1\np2\nn*:80\np3\n"), (ListeningPorts{{2, {"*:80"}}}));
}

TEST(ListeningPorts, processToldTwiceHasAllOfItsEndpoints) {
    EXPECT_EQ(ProcessText::listeningPorts("p1\nn*:9\np2\nn*:80\np1\nn*:10\nn*:9\n"),
              (ListeningPorts{{1, {"*:10", "*:9"}}, {2, {"*:80"}}}));
}

TEST(ListeningPorts, carriageReturnsBelongToTheLineEnd) {
    EXPECT_EQ(ProcessText::listeningPorts("p1\r\nn*:80\r\n"), (ListeningPorts{{1, {"*:80"}}}));
}

TEST(ListeningPorts, endpointsAreKeptByteForByte) {
    EXPECT_EQ(ProcessText::listeningPorts("p1\nn\xFF*:80 (LISTEN)\nn\n"),
              (ListeningPorts{{1, {"", "\xFF*:80 (LISTEN)"}}}));
}

TEST(ProcessOwner, commandIsEverythingAfterTheFirstRunOfWhiteSpace) {
    EXPECT_EQ(ProcessText::owner("  501 /Applications/LM Studio.app/Contents/MacOS/LM Studio\n"),
              (ProcessText::Owner{501, "/Applications/LM Studio.app/Contents/MacOS/LM Studio"}));
    EXPECT_EQ(ProcessText::owner("0 \t a  b "), (ProcessText::Owner{0, "a  b "}));
    EXPECT_EQ(ProcessText::owner("4294967294 x\r\n"), (ProcessText::Owner{4294967294U, "x"}));
}

TEST(ProcessOwner, lineEndInsideACommandStaysAndFitsNoListedRow) {
    EXPECT_EQ(ProcessText::owner("501 /bin/a\nb\n"), (ProcessText::Owner{501, "/bin/a\nb"}));
}

TEST(ProcessOwner, lineWithoutBothPartsIsNone) {
    for (const std::string_view line : {"", "\n", " ", "501", "501\n", " 501 \n", "anna /bin/a\n", "-2 /bin/a\n",
                                        "4294967296 /bin/a\n", "5.0 /bin/a\n", "0x1 /bin/a\n", "501/bin/a\n"}) {
        EXPECT_EQ(ProcessText::owner(line), std::nullopt) << line;
    }
}

TEST(ProcessOwner, ownerAndListingReadOneCommandAlike) {
    for (const std::string command : {"node", "/a b/c  d", "/x (deleted)", "trailing ", "\xFF\xFE", "a\tb"}) {
        const auto records = ProcessText::processes("  9 1 0.0   " + command + "\n");
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(ProcessText::owner(" 501   " + command + "\n"), (ProcessText::Owner{501, records[0].command}));
    }
}

}  // namespace
}  // namespace kestrune
