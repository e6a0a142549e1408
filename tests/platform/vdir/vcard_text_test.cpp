#include "platform/vdir/vcard_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace celldesk {
namespace {

std::u16string Decode(std::string_view raw, std::string_view parameters = "") {
  return DecodeVcardText(raw, VcardParameters::Parse(parameters));
}

TEST(VcardText, ComponentsEndAtASemicolonThatIsNotEscaped) {
  std::string_view value = "a\\;b;;c\\\\;d";
  EXPECT_EQ(TakeComponent(value), "a\\;b");
  EXPECT_EQ(TakeComponent(value), "");
  EXPECT_EQ(TakeComponent(value), "c\\\\");
  EXPECT_EQ(TakeComponent(value), "d");
  EXPECT_EQ(TakeComponent(value), "");
  value = "a\\";
  EXPECT_EQ(TakeComponent(value), "a\\");
  EXPECT_EQ(value, "");
}

TEST(VcardText, ResolvesEscapes) {
  EXPECT_EQ(Decode("a\\;b\\,c\\\\d\\:e"), u"a;b,c\\d:e");
  EXPECT_EQ(Decode("one\\ntwo\\Nthree"), u"one two three");
  EXPECT_EQ(Decode("\\\\n \\x \\"), u"\\n \\x \\");
}

TEST(VcardText, IsOneLineWithoutControlCharacters) {
  EXPECT_EQ(Decode("a\tb\x7F\x01"), u"a b  ");
  EXPECT_EQ(Decode("one=0D=0Atwo=00", "QUOTED-PRINTABLE"), u"one two ");
}

TEST(VcardText, ReadsUtf8AndWhereItIsNotLatin1) {
  EXPECT_EQ(Decode("\xC5\x98\xC3\xADha \xF0\x9F\x93\xB1"), u"\u0158\u00EDha \U0001F4F1");
  EXPECT_EQ(Decode("Ren\xE9"), u"Ren\u00E9");
  EXPECT_EQ(Decode("Ren\xE9", "CHARSET=UTF-8"), u"Ren\u00E9");
  EXPECT_EQ(Decode("Ren\xE9", "CHARSET=SHIFT_JIS"), u"Ren\u00E9");
}

TEST(VcardText, ReadsTheNamedCharacterSets) {
  EXPECT_EQ(Decode("\x8Aim\xF9nek", "CHARSET=windows-1250"), u"\u0160im\u016Fnek");
  EXPECT_EQ(Decode("\xD8"
                   "ezn\xED",
                   "CHARSET=Windows-1250"),
            u"\u0158ezn\u00ED");
  EXPECT_EQ(Decode("\x8Aim\xF9nek", "CHARSET=CP1250"), u"\u0160im\u016Fnek");
  for (const char* latin1 : {"CHARSET=ISO-8859-1", "CHARSET=latin1"})
    EXPECT_EQ(Decode("\xC3\xA9", latin1), u"\u00C3\u00A9") << latin1;
}

TEST(VcardText, ResolvesQuotedPrintableOnlyWhereItIsSaid) {
  EXPECT_EQ(Decode("=C5=98=c3=adha", "ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8"), u"\u0158\u00EDha");
  EXPECT_EQ(Decode("=D8ezn=ED", "QUOTED-PRINTABLE;CHARSET=windows-1250"), u"\u0158ezn\u00ED");
  EXPECT_EQ(Decode("=41"), u"=41");
  EXPECT_EQ(Decode("a=3Bb=5C=3B", "QUOTED-PRINTABLE"), u"a;b;");
}

TEST(VcardText, QuotedPrintableThatIsNoneStays) {
  EXPECT_EQ(Decode("a=b =G1 =1 =", "QUOTED-PRINTABLE"), u"a=b =G1 =1 =");
  EXPECT_EQ(Decode("=4", "QUOTED-PRINTABLE"), u"=4");
  EXPECT_EQ(Decode("==41", "QUOTED-PRINTABLE"), u"=A");
}

TEST(VcardText, Base64IsNoText) { EXPECT_EQ(Decode("U21pdGg=", "ENCODING=b"), u""); }

TEST(VcardText, ATelUriLosesSeparatorsAndParameters) {
  EXPECT_TRUE(IsTelUri("TEL:+1"));
  EXPECT_FALSE(IsTelUri("te"));
  EXPECT_FALSE(IsTelUri("sip:+1"));
  EXPECT_EQ(DecodeTelUri("tel:+1-555-(555).12 34;ext=5"), u"+15555551234");
  EXPECT_EQ(DecodeTelUri("tel:%2B420603"), u"+420603");
  EXPECT_EQ(DecodeTelUri("tel:"), u"");
}

}  // namespace
}  // namespace celldesk
