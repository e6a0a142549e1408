#include "simulator/character_set.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

TEST(CharacterSet, KnowsItsFourNamesInEitherCase) {
  for (const std::string_view name : {"GSM", "UCS2", "HEX", "IRA"}) {
    const auto set = ParseCharacterSet(name);
    ASSERT_TRUE(set.has_value()) << name;
    EXPECT_EQ(CharacterSetName(*set), name);
  }
  EXPECT_EQ(ParseCharacterSet("gsm"), CharacterSet::kGsm);
  EXPECT_FALSE(ParseCharacterSet("8859-1").has_value());
  EXPECT_FALSE(ParseCharacterSet("").has_value());
}

TEST(CharacterSet, EverySeptetSurvivesTheRoundTrip) {
  for (int code = 0; code < 0x80; ++code) {
    if (code == 0x1B) continue;
    const std::string septet(1, static_cast<char>(code));
    EXPECT_EQ(ToSeptets(FromSeptets(septet)), septet) << code;
  }
}

TEST(CharacterSet, PutsLettersWhereTheDefaultAlphabetHasThem) {
  EXPECT_EQ(ToSeptets(u"@\u00A3$_\u00E4\u00F6\u00FC\u00DF"),
            std::string("\x00\x01\x02\x11\x7B\x7C\x7E\x1E", 8));
  EXPECT_EQ(ToSeptets(u"\u0394\u03A9\u00C5\u00E5\u00BF\u00A1"), "\x10\x15\x0E\x0F\x60\x40");
}

TEST(CharacterSet, EscapesTheExtensionTable) {
  EXPECT_EQ(ToSeptets(u"\u20AC[]{}"), "\x1B\x65\x1B<\x1B>\x1B(\x1B)");
  EXPECT_EQ(FromSeptets("\x1B\x65\x1B="), u"\u20AC~");
}

TEST(CharacterSet, WritesAQuestionMarkForWhatTheAlphabetLacks) {
  EXPECT_EQ(ToSeptets(u"\u00EB\u4E2D"), "??");
  EXPECT_EQ(ToLine(CharacterSet::kIra, u"J\u00E4ger"), "J?ger");
}

TEST(CharacterSet, WritesEverySetItsOwnWay) {
  EXPECT_EQ(ToLine(CharacterSet::kGsm, u"J\u00E4"), "J\x7B");
  EXPECT_EQ(ToLine(CharacterSet::kUcs2, u"J\u00E4"), "004A00E4");
  EXPECT_EQ(ToLine(CharacterSet::kHex, u"J\u00E4"), "4A7B");
}

TEST(CharacterSet, ReadsWhatItWrote) {
  const std::u16string text = u"Gr\u00FC\u00DFe \u00A35 @ 7 {\u20AC}";
  for (const auto set : {CharacterSet::kGsm, CharacterSet::kUcs2, CharacterSet::kHex}) {
    EXPECT_EQ(FromLine(set, ToLine(set, text)), text);
  }
}

TEST(CharacterSet, RefusesHexadecimalThatIsNone) {
  EXPECT_FALSE(FromLine(CharacterSet::kUcs2, "004").has_value());
  EXPECT_FALSE(FromLine(CharacterSet::kUcs2, "004A00").has_value());
  EXPECT_FALSE(FromLine(CharacterSet::kHex, "4G").has_value());
}

TEST(CharacterSet, DropsTheEighthBitOfTheLine) {
  EXPECT_EQ(FromLine(CharacterSet::kGsm, "\xC1"), u"A");
  EXPECT_EQ(FromLine(CharacterSet::kIra, "\xC1"), u"A");
}

TEST(CharacterSet, PacksSeptetsAsTheStandardShows) {
  EXPECT_EQ(PackSeptets("hellohello"), "\xE8\x32\x9B\xFD\x46\x97\xD9\xEC\x37");
  EXPECT_EQ(UnpackSeptets("\xE8\x32\x9B\xFD\x46\x97\xD9\xEC\x37", 10), "hellohello");
  EXPECT_EQ(PackSeptets(""), "");
}

TEST(CharacterSet, UnpacksBehindFillBits) {
  const std::string shifted = PackSeptets("AAhello");
  EXPECT_EQ(UnpackSeptets(shifted, 5, 14), "hello");
}

TEST(CharacterSet, Utf8SurvivesTheRoundTrip) {
  const std::u16string text = u"A\u00E9\u20AC\U0001F600";
  EXPECT_EQ(ToUtf8(text), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

TEST(CharacterSet, Ucs2HasTheHighOctetFirst) {
  EXPECT_EQ(ToUcs2(u"\u20AC"), "\x20\xAC");
  EXPECT_EQ(FromUcs2("\x20\xAC\x01"), u"\u20AC");
}

}  // namespace
}  // namespace celldesk::simulator
