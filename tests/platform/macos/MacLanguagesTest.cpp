#include "platform/macos/MacLanguages.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using MacLanguages::localesOf;
using Names = std::vector<std::string>;

TEST(MacLanguages, aTagIsWrittenAsALocale) {
    EXPECT_EQ(localesOf("de"), Names{"de"});
    EXPECT_EQ(localesOf("de-AT"), Names{"de_AT"});
    EXPECT_EQ(localesOf("es-419"), Names{"es_419"});
    EXPECT_EQ(localesOf("ca-ES-valencia"), Names{"ca_ES"});
}

TEST(MacLanguages, aScriptBecomesTheModifierOfCatalogues) {
    EXPECT_EQ(localesOf("sr-Latn-RS"), Names{"sr_RS@latin"});
    EXPECT_EQ(localesOf("uz-Cyrl"), Names{"uz@cyrillic"});
    EXPECT_EQ(localesOf("pa-Guru-IN"), Names{"pa_IN"});
}

TEST(MacLanguages, chineseGoesByHowItIsWritten) {
    EXPECT_EQ(localesOf("zh-Hant-HK"), (Names{"zh_HK", "zh_TW"}));
    EXPECT_EQ(localesOf("zh-Hans-SG"), (Names{"zh_SG", "zh_CN"}));
    EXPECT_EQ(localesOf("zh-Hant"), Names{"zh_TW"});
    EXPECT_EQ(localesOf("zh-Hans"), Names{"zh_CN"});
    EXPECT_EQ(localesOf("zh-HK"), (Names{"zh_HK", "zh_TW"}));
    EXPECT_EQ(localesOf("zh-TW"), Names{"zh_TW"});
    EXPECT_EQ(localesOf("zh"), Names{"zh_CN"});
}

TEST(MacLanguages, aTagOfNothingNamesNoCatalogue) {
    EXPECT_EQ(localesOf(""), Names{""});
}

}  // namespace
}  // namespace kestrune
