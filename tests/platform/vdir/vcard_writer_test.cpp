#include "platform/vdir/vcard_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/vdir/vcards.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr std::string_view kUid = "0f5d1f0e-7f0a-4c0e-9d0b-0123456789ab";

std::string Write(const ContactRecord& record) { return WriteVcard(record, kUid); }

std::vector<std::string> PhysicalLines(const std::string& vcard) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < vcard.size();) {
    const std::size_t end = vcard.find("\r\n", start);
    EXPECT_NE(end, std::string::npos);
    lines.push_back(vcard.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

TEST(VcardWriter, WritesWhatAnExportGives) {
  EXPECT_EQ(Write({{kContactSurname, u"Home"}, {kContactMobileNumber, u"+12345"}, {kContactFileAs, u"Home"}}),
            "BEGIN:VCARD\r\n"
            "VERSION:3.0\r\n"
            "PRODID:-//Corvane//Cell Desk//EN\r\n"
            "UID:0f5d1f0e-7f0a-4c0e-9d0b-0123456789ab\r\n"
            "FN:Home\r\n"
            "N:Home;;;;\r\n"
            "TEL;TYPE=CELL:+12345\r\n"
            "END:VCARD\r\n");
}

TEST(VcardWriter, WritesEveryProperty) {
  const std::string vcard = Write({{kContactSurname, u"Smith"},
                                   {kContactSecondName, u"Philip"},
                                   {kContactGivenName, u"John"},
                                   {kContactMobileNumber, u"1"},
                                   {kContactBusinessNumber, u"2"},
                                   {kContactHomeNumber, u"3"},
                                   {kContactCompany, u"Acme"},
                                   {kContactFileAs, u"Smith, John"}});
  for (const char* line :
       {"\r\nFN:Smith\\, John\r\n", "\r\nN:Smith;John;Philip;;\r\n", "\r\nORG:Acme\r\n",
        "\r\nTEL;TYPE=CELL:1\r\n", "\r\nTEL;TYPE=WORK,VOICE:2\r\n", "\r\nTEL;TYPE=HOME,VOICE:3\r\n"})
    EXPECT_THAT(vcard, HasSubstr(line));
}

TEST(VcardWriter, EscapesWhatStructuresAVcard) {
  EXPECT_THAT(Write({{kContactSurname, u"a;b,c\\d\ne:f\"g\r\n"}}),
              HasSubstr("\r\nN:a\\;b\\,c\\\\d\\ne:f\"g\\n;;;;\r\n"));
}

TEST(VcardWriter, OtherControlCharactersBecomeBlanks) {
  EXPECT_THAT(Write({{kContactSurname, std::u16string(u"a\0b\x1F"
                                                      u"c\x7F\u00E9",
                                                      7)}}),
              HasSubstr("\r\nN:a b c \xC3\xA9;;;;\r\n"));
}

TEST(VcardWriter, HalfASurrogatePairBecomesAReplacementCharacter) {
  EXPECT_THAT(Write({{kContactSurname,
                      u"a\xD83D"
                      u"b"}}),
              HasSubstr("\r\nN:a\xEF\xBF\xBD"
                        "b;;;;\r\n"));
}

TEST(VcardWriter, WithoutAFileAsNameTheFormattedNameIsMade) {
  const auto formatted = [](const ContactRecord& record) { return PhysicalLines(Write(record)).at(4); };
  EXPECT_EQ(
      formatted({{kContactSurname, u"Smith"}, {kContactSecondName, u"P"}, {kContactGivenName, u"John"}}),
      "FN:John P Smith");
  EXPECT_EQ(formatted({{kContactSurname, u"Smith"}, {kContactFileAs, u""}}), "FN:Smith");
  EXPECT_EQ(formatted({{kContactCompany, u"Acme"}, {kContactMobileNumber, u"1"}}), "FN:Acme");
  EXPECT_EQ(formatted({{kContactHomeNumber, u"3"}, {kContactBusinessNumber, u"2"}}), "FN:2");
  EXPECT_EQ(formatted({}), "FN:");
}

TEST(VcardWriter, LinesAreFoldedAt75OctetsAndNeverInsideACharacter) {
  for (std::size_t shift = 0; shift < 80; ++shift) {
    const std::u16string name =
        std::u16string(shift, u'x') + std::u16string(200, u'\u017E') + u"\U0001F4F1\u4E2D";
    const std::string vcard = Write({{kContactSurname, name}});
    for (const std::string& line : PhysicalLines(vcard)) {
      ASSERT_LE(line.size(), 75U);
      ASSERT_FALSE(line.starts_with(' ') && (static_cast<unsigned char>(line.at(1)) & 0xC0) == 0x80);
    }
    EXPECT_THAT(ReadVcards(vcard), ElementsAre(ElementsAre(ContactProperty{kContactSurname, name},
                                                           ContactProperty{kContactFileAs, name})));
  }
}

TEST(VcardWriter, ALineOf75OctetsIsNotFolded) {
  const std::string vcard =
      Write({{kContactHomeNumber, std::u16string(75 - 20, u'1')}, {kContactCompany, u"A"}});
  EXPECT_THAT(vcard, HasSubstr("TEL;TYPE=HOME,VOICE:" + std::string(55, '1') + "\r\n"));
  EXPECT_THAT(vcard, Not(HasSubstr("\r\n ")));
}

TEST(VcardWriter, KnowsWhichPropertiesHaveAPlace) {
  const ContactRecord record = {{kContactSurname, u"a"}, {kContactFileAs, std::nullopt}};
  EXPECT_TRUE(CanWriteVcard(record));
  const ContactRecord unknown = {{kContactSurname, u"a"}, {0x3A0D001F, std::nullopt}};
  EXPECT_FALSE(CanWriteVcard(unknown));
}

}  // namespace
}  // namespace celldesk
