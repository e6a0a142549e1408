#include "util/edit_filter.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

TEST(EditFilter, DigitsFieldIgnoresSignsButTakesBackspace) {
  EXPECT_TRUE(PassesFilter(EditFilter::kDigits, u'0'));
  EXPECT_TRUE(PassesFilter(EditFilter::kDigits, u'9'));
  EXPECT_FALSE(PassesFilter(EditFilter::kDigits, u'+'));
  EXPECT_TRUE(PassesFilter(EditFilter::kDigits, u'\b'));
}

TEST(EditFilter, EveryControlCharacterPassesAndTheBlankDoesNot) {
  for (char16_t character = 0; character < 32; ++character)
    EXPECT_TRUE(PassesFilter(EditFilter::kDigits, character));
  EXPECT_FALSE(PassesFilter(EditFilter::kDigits, u' '));
}

TEST(EditFilter, TelephoneFieldTakesDigitsAndSigns) {
  for (const char16_t character : std::u16string_view(u"0123456789+-")) {
    EXPECT_TRUE(PassesFilter(EditFilter::kTelephone, character));
  }
  EXPECT_FALSE(PassesFilter(EditFilter::kTelephone, u'.'));
  EXPECT_FALSE(PassesFilter(EditFilter::kTelephone, u'a'));
}

TEST(EditFilter, DecimalFieldTakesPointAndComma) {
  for (const char16_t character : std::u16string_view(u"0123456789+-.,")) {
    EXPECT_TRUE(PassesFilter(EditFilter::kDecimal, character));
  }
  EXPECT_FALSE(PassesFilter(EditFilter::kDecimal, u'e'));
}

TEST(EditFilter, WithoutAFilterEverythingPasses) {
  EXPECT_TRUE(PassesFilter(EditFilter::kNone, u'x'));
  EXPECT_EQ(AllowedCharacters(EditFilter::kNone), u"");
}

TEST(EditFilter, SetsAreTheKnownOnes) {
  EXPECT_EQ(AllowedCharacters(EditFilter::kDigits), u"0123456789");
  EXPECT_EQ(AllowedCharacters(EditFilter::kTelephone), u"01234567890+-");
  EXPECT_EQ(AllowedCharacters(EditFilter::kDecimal), u"01234567890+-.,");
}

}  // namespace
}  // namespace celldesk
