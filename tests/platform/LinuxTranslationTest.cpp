#include "platform/linux/LinuxTranslation.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kestrune {
namespace {

using LinuxTranslation::Environment;

/// What is chosen where the catalogues in installed are there.
std::string chosen(const Environment& environment, const std::set<std::string>& installed = {"de", "pt_BR"}) {
    return LinuxTranslation::catalogue(environment,
                                       [&installed](const std::string& name) { return installed.contains(name); });
}

TEST(LinuxTranslation, withoutALanguageTheProgramIsEnglish) {
    EXPECT_EQ(chosen({}), "");
}

TEST(LinuxTranslation, theLocaleNamesTheLanguage) {
    EXPECT_EQ(chosen({"", "", "", "de_DE.UTF-8"}), "de");
    EXPECT_EQ(chosen({"", "", "", "de_AT.UTF-8@euro"}), "de");
    EXPECT_EQ(chosen({"", "", "", "de"}), "de");
}

TEST(LinuxTranslation, aRegionsOwnCatalogueComesFirst) {
    EXPECT_EQ(chosen({"", "", "", "pt_BR.UTF-8"}, {"pt", "pt_BR"}), "pt_BR");
    EXPECT_EQ(chosen({"", "", "", "pt_PT.UTF-8"}, {"pt", "pt_BR"}), "pt");
}

TEST(LinuxTranslation, aModifierCountsWhereThereIsACatalogueForIt) {
    EXPECT_EQ(chosen({"", "", "", "sr_RS.UTF-8@latin"}, {"sr", "sr@latin"}), "sr@latin");
    EXPECT_EQ(chosen({"", "", "", "sr_RS.UTF-8"}, {"sr", "sr@latin"}), "sr");
}

TEST(LinuxTranslation, allCategoriesOutrankMessagesAndThoseTheRest) {
    EXPECT_EQ(chosen({"", "de_DE.UTF-8", "en_US.UTF-8", "en_US.UTF-8"}), "de");
    EXPECT_EQ(chosen({"", "", "de_DE.UTF-8", "en_US.UTF-8"}), "de");
    EXPECT_EQ(chosen({"", "", "en_US.UTF-8", "de_DE.UTF-8"}), "");
}

TEST(LinuxTranslation, aListOfLanguagesOutranksTheLocale) {
    EXPECT_EQ(chosen({"de", "", "", "C.UTF-8"}), "de");
    EXPECT_EQ(chosen({"de", "", "", "en_US.UTF-8"}), "de");
    EXPECT_EQ(chosen({"en", "", "", "de_DE.UTF-8"}), "");
}

TEST(LinuxTranslation, aListAloneSuffices) {
    EXPECT_EQ(chosen({"de", "", "", ""}), "de");
}

TEST(LinuxTranslation, theFirstLanguageThatIsThereCounts) {
    EXPECT_EQ(chosen({"nl:fr:de", "", "", "nl_NL.UTF-8"}), "de");
    EXPECT_EQ(chosen({":de", "", "", "nl_NL.UTF-8"}), "de");
    EXPECT_EQ(chosen({"nl:fr", "", "", "nl_NL.UTF-8"}), "");
}

TEST(LinuxTranslation, englishIsThereWithoutACatalogue) {
    EXPECT_EQ(chosen({"en_GB:de", "", "", "en_GB.UTF-8"}), "");
    EXPECT_EQ(chosen({"nl:en:de", "", "", "nl_NL.UTF-8"}), "");
}

TEST(LinuxTranslation, theLocaleCAsksForUntranslatedTexts) {
    EXPECT_EQ(chosen({"de", "C", "", "de_DE.UTF-8"}), "");
    EXPECT_EQ(chosen({"de", "", "", "POSIX"}), "");
    EXPECT_EQ(chosen({"C:de", "", "", "nl_NL.UTF-8"}), "");
}

TEST(LinuxTranslation, aCatalogueThatIsMissingLeavesTheProgramEnglish) {
    EXPECT_EQ(LinuxTranslation::install("/nonexistent/share/locale"), "");
}

TEST(LinuxTranslation, aNameNeverLeadsToAnotherFolder) {
    EXPECT_EQ(LinuxTranslation::catalogue({"nl/../../tmp", "", "", "C.UTF-8"}, [](const auto&) { return true; }), "");
}

TEST(LinuxTranslation, cataloguesLieBesideTheProgramsFolder) {
    EXPECT_TRUE(LinuxTranslation::installedFolder().ends_with("/share/locale"));
}

}  // namespace
}  // namespace kestrune
