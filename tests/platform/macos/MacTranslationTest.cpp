#include "platform/macos/MacTranslation.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using Names = std::vector<std::string>;

TEST(MacTranslation, cataloguesLieInTheBundleOrBesideAPlainExecutable) {
    EXPECT_EQ(MacTranslation::folders("/Applications/Kestrune.app/Contents/Resources",
                                      "/Applications/Kestrune.app/Contents/MacOS/kestrune"),
              (Names{"/Applications/Kestrune.app/Contents/Resources/locale",
                     "/Applications/Kestrune.app/Contents/share/locale"}));
}

/// Each start is a process of its own, because a translation is installed once.
class MacTranslationDeathTest : public ::testing::Test {
protected:
    MacTranslationDeathTest() {
        std::filesystem::create_directories(m_folder.path("de/LC_MESSAGES"));
        m_folder.write("de/LC_MESSAGES/kestrune.mo", "");
    }

    /// Installs what suits the system's languages and these variables, and ends with "<catalogue|LANGUAGE>".
    void install(const Names& tags, const char* languages, const char* allCategories, const char* lang) const {
        unsetenv("LC_MESSAGES");
        setenv("LANGUAGE", languages, 1);
        setenv("LC_ALL", allCategories, 1);
        setenv("LANG", lang, 1);
        const std::string name = MacTranslation::install({"/nonexistent/locale", m_folder.path()}, tags);
        std::fprintf(stderr, "<%s|%s>", name.c_str(), std::getenv("LANGUAGE"));
        std::exit(EXIT_SUCCESS);
    }

    TemporaryFolder m_folder;
};

TEST_F(MacTranslationDeathTest, theFirstLanguageOfTheSystemThatIsThereCounts) {
    EXPECT_EXIT(install({"nl-NL", "de-AT", "en-AT"}, "", "", ""), ::testing::ExitedWithCode(0), "<de\\|de>");
}

TEST_F(MacTranslationDeathTest, englishIsThereWithoutACatalogue) {
    EXPECT_EXIT(install({"en-AT", "de-AT"}, "", "", ""), ::testing::ExitedWithCode(0), "<\\|>");
}

TEST_F(MacTranslationDeathTest, theLocaleOfATerminalIsNotTheLanguage) {
    EXPECT_EXIT(install({"en-AT"}, "", "", "de_AT.UTF-8"), ::testing::ExitedWithCode(0), "<\\|>");
    EXPECT_EXIT(install({"de-AT"}, "", "", "en_US.UTF-8"), ::testing::ExitedWithCode(0), "<de\\|de>");
}

TEST_F(MacTranslationDeathTest, languagesThatWereSetOnPurposeOutrankTheSystems) {
    EXPECT_EXIT(install({"en-AT"}, "nl:de", "", ""), ::testing::ExitedWithCode(0), "<de\\|de>");
}

TEST_F(MacTranslationDeathTest, theLocaleCAsksForUntranslatedTexts) {
    EXPECT_EXIT(install({"de-AT"}, "de", "C", "de_AT.UTF-8"), ::testing::ExitedWithCode(0), "<\\|de>");
}

TEST_F(MacTranslationDeathTest, withoutACatalogueTheProgramIsEnglish) {
    EXPECT_EXIT(install({"fr-FR"}, "", "", ""), ::testing::ExitedWithCode(0), "<\\|>");
}

}  // namespace
}  // namespace kestrune
