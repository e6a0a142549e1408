#include "platform/qt/qt_locale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace celldesk {
namespace {

const CalendarTime kMorning{2001, 3, 1, 5, 9, 5, 7, 0};
const CalendarTime kAfternoon{2001, 12, 1, 31, 15, 30, 0, 0};

TEST(QtLocale, DatesAreInTheUsersShortAndLongFormat) {
  EXPECT_EQ(QtLocale(u"de_DE").DateText(kMorning, true), u"05.03.01");
  EXPECT_EQ(QtLocale(u"de_DE").DateText(kMorning, false), u"Montag, 5. M\u00E4rz 2001");
  EXPECT_EQ(QtLocale(u"en_US").DateText(kMorning, true), u"3/5/01");
  EXPECT_EQ(QtLocale(u"en_US").DateText(kMorning, false), u"Monday, March 5, 2001");
  EXPECT_EQ(QtLocale(u"cs_CZ").DateText(kAfternoon, true), u"31.12.01");
}

TEST(QtLocale, TimesHaveSecondsInEveryLanguage) {
  EXPECT_EQ(QtLocale(u"de_DE").TimeText(kMorning), u"09:05:07");
  EXPECT_EQ(QtLocale(u"cs_CZ").TimeText(kMorning), u"9:05:07");
  EXPECT_EQ(QtLocale(u"en_US").TimeText(kMorning), u"9:05:07 AM");
  EXPECT_EQ(QtLocale(u"en_US").TimeText(kAfternoon), u"3:30:00 PM");
  EXPECT_EQ(QtLocale(u"fi_FI").TimeText(kMorning), u"9.05.07");
  EXPECT_EQ(QtLocale(u"C").TimeText(kMorning), u"09:05:07");
}

TEST(QtLocale, TheSeparatorIsWhatStandsBetweenHoursAndMinutes) {
  EXPECT_EQ(QtLocale(u"en_US").TimeSeparator(), u":");
  EXPECT_EQ(QtLocale(u"fi_FI").TimeSeparator(), u".");
  EXPECT_EQ(QtLocale(u"C").TimeSeparator(), u":");
}

TEST(QtLocale, EveryLanguageHasAShortSeparatorAndShowsTheSeconds) {
  CalendarTime other = kMorning;
  other.second = 8;
  for (const char16_t* name : {u"ar_EG", u"bg_BG", u"da_DK", u"fr_CA", u"he_IL", u"hi_IN", u"ja_JP", u"ko_KR",
                               u"mr_IN", u"pl_PL", u"ru_RU", u"sl_SI", u"th_TH", u"vi_VN", u"zh_CN"}) {
    const QtLocale locale(name);
    EXPECT_NE(locale.TimeText(kMorning), locale.TimeText(other));
    EXPECT_FALSE(locale.TimeSeparator().empty());
    EXPECT_LE(locale.TimeSeparator().size(), 7U);
  }
}

TEST(QtLocale, FieldsThatAreNoDateOrTimeGiveNoText) {
  CalendarTime wrong{2001, 13, 0, 32, 25, 61, 61, 0};
  EXPECT_EQ(QtLocale(u"de_DE").DateText(wrong, true), u"");
  EXPECT_EQ(QtLocale(u"de_DE").TimeText(wrong), u"");
}

TEST(QtLocale, TextIsOrderedAsTheLanguageOrdersIt) {
  const QtLocale czech(u"cs_CZ");
  std::vector<std::u16string> names = {u"Cihla",       u"Chalupa", u"\u010Capek", u"\u017Dofie",
                                       u"Zden\u011Bk", u"adam",    u"Ad\u00E9la"};
  std::sort(names.begin(), names.end(),
            [&](const auto& left, const auto& right) { return czech.Compare(left, right) < 0; });
  EXPECT_EQ(names, (std::vector<std::u16string>{u"adam", u"Ad\u00E9la", u"Cihla", u"\u010Capek", u"Chalupa",
                                                u"Zden\u011Bk", u"\u017Dofie"}));
}

TEST(QtLocale, ComparisonIsAnOrder) {
  const QtLocale locale(u"en_US");
  EXPECT_EQ(locale.Compare(u"Anna", u"Anna"), 0);
  EXPECT_EQ(locale.Compare(u"", u""), 0);
  EXPECT_LT(locale.Compare(u"", u"a"), 0);
  EXPECT_LT(locale.Compare(u"anna", u"Bert"), 0);
  EXPECT_GT(locale.Compare(u"Bert", u"anna"), 0);
}

/// Short texts of letters that languages order by different rules, blanks, and characters that collations
/// ignore; many of them equal or empty.
std::vector<std::u16string> RandomTexts(std::size_t count, std::u16string_view letters) {
  std::mt19937 random(7);
  std::vector<std::u16string> texts(count);
  for (std::u16string& text : texts) {
    text.resize(random() % 5);
    for (char16_t& letter : text) letter = letters[random() % letters.size()];
  }
  return texts;
}

TEST(QtLocale, RanksAreTheOrderOfCompare) {
  constexpr std::u16string_view kLetters =
      u"aAbchsz\u00E4\u00E9\u010D\u0161\u017E\u0142o\u0308 "
      u"-'0919\n\u0001\u0300\u03B1\u0416\u4E2D\U0001F600";
  const std::vector<std::u16string> texts = RandomTexts(250, kLetters);
  for (const char16_t* name : {u"de_DE", u"cs_CZ", u"pl_PL", u"en_US", u"sv_SE", u"fr_CA", u"ja_JP", u"C"}) {
    const QtLocale locale(name);
    const auto ranks = locale.Ranks(
        texts.size(),
        [&](std::size_t i, std::u16string& buffer) -> std::u16string_view { return buffer = texts[i]; });
    ASSERT_EQ(ranks.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      for (std::size_t k = 0; k < texts.size(); ++k) {
        const int order = locale.Compare(texts[i], texts[k]);
        ASSERT_EQ(ranks[i] < ranks[k], order < 0) << i << " and " << k;
        ASSERT_EQ(ranks[i] == ranks[k], order == 0) << i << " and " << k;
      }
    }
  }
}

TEST(QtLocale, RanksCountFromZeroAndNoTextsHaveNone) {
  const std::vector<std::u16string> texts = {u"b", u"", u"a", u"b"};
  const TextAt text_at = [&](std::size_t i, std::u16string&) -> std::u16string_view { return texts[i]; };
  for (const char16_t* name : {u"de_DE", u"C"}) {
    const QtLocale locale(name);
    EXPECT_EQ(locale.Ranks(texts.size(), text_at), (std::vector<std::uint32_t>{2, 0, 1, 2}));
    EXPECT_TRUE(locale.Ranks(0, text_at).empty());
  }
}

TEST(QtLocale, NowIsADateWithItsDayOfWeekAndMovesForward) {
  const QtLocale locale;
  const auto before = ToFileTime(locale.Now(false)), after = ToFileTime(locale.Now(false));
  ASSERT_TRUE(before && after);
  EXPECT_LE(*before, *after);
  const CalendarTime now = locale.Now(true);
  CalendarTime whole = now;
  whole.day_of_week = 0;
  const auto count = ToFileTime(whole);
  ASSERT_TRUE(count.has_value());
  EXPECT_EQ(ToCalendarTime(*count), now);
  EXPECT_GT(now.year, 2000);
}

TEST(QtLocale, TheUsersOwnLocaleGivesTexts) {
  const QtLocale locale;
  EXPECT_FALSE(locale.DateText(kMorning, true).empty());
  EXPECT_FALSE(locale.DateText(kMorning, false).empty());
  EXPECT_FALSE(locale.TimeText(kMorning).empty());
  EXPECT_FALSE(locale.TimeSeparator().empty());
}

}  // namespace
}  // namespace celldesk
