#include "platform/vdir/vcard_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/vdir/peak_memory.h"
#include "platform/vdir/vcards.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The contact of a vCard with these lines.
ContactRecord Read(std::string_view lines, std::string_view version = "3.0") {
  const auto contacts = ReadVcards(Vcard(lines, version));
  EXPECT_EQ(contacts.size(), 1U) << lines;
  return contacts.empty() ? ContactRecord() : contacts[0];
}

std::u16string Text(const ContactRecord& contact, ContactPropertyId id) {
  for (const ContactProperty& property : contact)
    if (property.id == id) return property.text.value_or(u"(nothing)");
  return u"";
}

std::u16string Text(std::string_view lines, ContactPropertyId id, std::string_view version = "3.0") {
  return Text(Read(lines, version), id);
}

TEST(VcardReader, ReadsVersion30) {
  EXPECT_THAT(
      Read("N:Smith;John;Philip;Dr.;Jr.\r\nFN:Dr. John Smith\r\nORG:Acme\\, Inc.;Sales\r\n"
           "TEL;TYPE=CELL,VOICE:+420 603\r\nTEL;TYPE=WORK,VOICE:111\r\nTEL;TYPE=HOME,VOICE:222\r\n"
           "EMAIL:j@example.org\r\n"),
      ElementsAre(
          ContactProperty{kContactSurname, u"Smith"}, ContactProperty{kContactSecondName, u"Philip"},
          ContactProperty{kContactGivenName, u"John"}, ContactProperty{kContactMobileNumber, u"+420 603"},
          ContactProperty{kContactBusinessNumber, u"111"}, ContactProperty{kContactHomeNumber, u"222"},
          ContactProperty{kContactCompany, u"Acme, Inc."},
          ContactProperty{kContactFileAs, u"Dr. John Smith"}));
}

TEST(VcardReader, ReadsVersion21) {
  EXPECT_THAT(Read("N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=C5=98ezn=C3=AD=\r\n=C4=8Dek;Ji=C5=99=C3=AD\r\n"
                   "TEL;CELL;VOICE:603\r\nTEL;WORK;FAX:999\r\nTEL;WORK:111\r\n"
                   "NOTE;ENCODING=QUOTED-PRINTABLE:TEL;HOME:1=0D=0A=\r\nTEL;HOME:2\r\n"
                   "PHOTO;JPEG;ENCODING=BASE64:\r\n /9j/4AAQSkZJRgABAQ==\r\n\r\n",
                   "2.1"),
              ElementsAre(ContactProperty{kContactSurname, u"\u0158ezn\u00ED\u010Dek"},
                          ContactProperty{kContactGivenName, u"Ji\u0159\u00ED"},
                          ContactProperty{kContactMobileNumber, u"603"},
                          ContactProperty{kContactBusinessNumber, u"111"}));
}

TEST(VcardReader, ReadsVersion40) {
  EXPECT_THAT(
      Read("N:Smith;John;;;\r\nFN;PREF=1:John Smith\r\nKIND:individual\r\n"
           "TEL;VALUE=uri;TYPE=\"cell,voice\";PREF=1:tel:+1-555-0100;ext=5\r\n"
           "TEL;VALUE=text;TYPE=home:555 0101\r\n",
           "4.0"),
      ElementsAre(ContactProperty{kContactSurname, u"Smith"}, ContactProperty{kContactGivenName, u"John"},
                  ContactProperty{kContactMobileNumber, u"+15550100"},
                  ContactProperty{kContactHomeNumber, u"555 0101"},
                  ContactProperty{kContactFileAs, u"John Smith"}));
}

TEST(VcardReader, NamesAndWordsAreReadInEitherCaseAndWithGroups) {
  const auto contacts =
      ReadVcards("begin:vCard\nversion:3.0\nitem1.tel;type=cell:603\nn:Smith\nEnd: vcard \n");
  ASSERT_EQ(contacts.size(), 1U);
  EXPECT_EQ(Text(contacts[0], kContactSurname), u"Smith");
  EXPECT_EQ(Text(contacts[0], kContactMobileNumber), u"603");
}

TEST(VcardReader, FoldsAreUndoneAsTheVersionHasIt) {
  EXPECT_EQ(Text("N:Smith and\r\n  Jones\r\n", kContactSurname), u"Smith and Jones");
  EXPECT_EQ(Text("N:Smith\r\n Jones\r\n", kContactSurname), u"SmithJones");
  EXPECT_EQ(Text("N:Smith\r\n Jones\r\n", kContactSurname, "2.1"), u"Smith Jones");
  EXPECT_EQ(Text(ReadVcards(Vcard("N:A\r\n", "2.1") + Vcard("N:Smith\r\n Jones\r\n")).at(1), kContactSurname),
            u"SmithJones");
}

TEST(VcardReader, WithoutNameThePartsAreReplacedByTheFormattedName) {
  EXPECT_EQ(Text("FN:John Smith\r\n", kContactSurname), u"John Smith");
  EXPECT_EQ(Text("N:;;;;\r\nFN:John Smith\r\n", kContactSurname), u"John Smith");
  EXPECT_EQ(Text("N:;;;Dr.;\r\nFN:John Smith\r\n", kContactSurname), u"John Smith");
  EXPECT_EQ(Text("N:;John;;;\r\nFN:John Smith\r\n", kContactSurname), u"");
  EXPECT_EQ(Text("N:;;Philip;;\r\nFN:John Smith\r\n", kContactSurname), u"");
}

TEST(VcardReader, AFormattedNameThatRepeatsCompanyOrNumberIsNoName) {
  EXPECT_EQ(Text("FN:Acme\r\nORG:Acme;Sales\r\n", kContactSurname), u"");
  EXPECT_EQ(Text("FN:Acme\r\nORG:Acme;Sales\r\n", kContactCompany), u"Acme");
  for (const char* type : {"TYPE=CELL", "TYPE=WORK", "TYPE=HOME", ""})
    EXPECT_EQ(Text("FN:603\r\nTEL;" + std::string(type) + ":603\r\n", kContactSurname), u"") << type;
}

// A number that is left out cannot stand for the name: the contact would have nothing of it.
TEST(VcardReader, AFormattedNameThatRepeatsADroppedNumberIsAName) {
  const ContactRecord contact = Read("FN:603\r\nTEL:603\r\nTEL;HOME:2\r\n");
  EXPECT_EQ(Text(contact, kContactSurname), u"603");
  EXPECT_EQ(Text(contact, kContactHomeNumber), u"2");
}

TEST(VcardReader, TheFirstNumberOfEachKindCounts) {
  const ContactRecord contact = Read(
      "TEL;TYPE=CELL:\r\nTEL;TYPE=CELL:1\r\nTEL;TYPE=CELL:2\r\nTEL;TYPE=WORK:3\r\nTEL;TYPE=WORK:4\r\n"
      "TEL;TYPE=HOME:5\r\nTEL;TYPE=HOME:6\r\n");
  EXPECT_EQ(Text(contact, kContactMobileNumber), u"1");
  EXPECT_EQ(Text(contact, kContactBusinessNumber), u"3");
  EXPECT_EQ(Text(contact, kContactHomeNumber), u"5");
}

TEST(VcardReader, AMobileNumberForWorkOrHomeIsAMobileNumber) {
  const ContactRecord contact = Read("TEL;TYPE=WORK,CELL:1\r\nTEL;TYPE=HOME,CELL:2\r\n");
  EXPECT_EQ(Text(contact, kContactMobileNumber), u"1");
  EXPECT_EQ(contact.size(), 1U);
}

TEST(VcardReader, ANumberOfNoKindStandsInForTheHomeNumber) {
  EXPECT_EQ(Text("TEL:1\r\n", kContactHomeNumber), u"1");
  EXPECT_EQ(Text("TEL;TYPE=VOICE,PREF:1\r\nTEL:2\r\n", kContactHomeNumber), u"1");
  EXPECT_EQ(Text("TEL:1\r\nTEL;TYPE=HOME:2\r\n", kContactHomeNumber), u"2");
}

TEST(VcardReader, FaxesPagersAndOtherUrisAreNoNumbers) {
  EXPECT_THAT(Read("TEL;TYPE=WORK,FAX:1\r\nTEL;PAGER:2\r\nTEL;VALUE=uri:sip:3@example.org\r\n"), IsEmpty());
  EXPECT_EQ(Text("TEL;TYPE=CELL;VALUE=uri: TEL:+1-2 \r\n", kContactMobileNumber), u"+12");
}

TEST(VcardReader, AUriThatIsNotDeclaredIsOneInVersion40Alone) {
  EXPECT_EQ(Text("TEL;TYPE=CELL:tel:+1-2\r\n", kContactMobileNumber, "4.0"), u"+12");
  EXPECT_EQ(Text("TEL;TYPE=CELL:tel:+1-2\r\n", kContactMobileNumber, "3.0"), u"tel:+1-2");
}

TEST(VcardReader, TheFirstTextOfEachOtherKindCounts) {
  const ContactRecord contact =
      Read("N:;;;;\r\nN:Smith\r\nN:Jones\r\nFN:\r\nFN:A\r\nFN:B\r\nORG:;Sales\r\nORG:Acme\r\nORG:Other\r\n");
  EXPECT_EQ(Text(contact, kContactSurname), u"Smith");
  EXPECT_EQ(Text(contact, kContactFileAs), u"A");
  EXPECT_EQ(Text(contact, kContactCompany), u"Acme");
}

TEST(VcardReader, Base64IsPassedOver) {
  EXPECT_THAT(Read("N;ENCODING=b:U21pdGg=\r\nTEL;ENCODING=BASE64;CELL:NjAz\r\n"), IsEmpty());
}

TEST(VcardReader, AnAgentInsideIsPassedOver) {
  const ContactRecord contact = Read(
      "N:Smith\r\nAGENT:\r\nBEGIN:VCARD\r\nN:Jones\r\nAGENT:\r\nBEGIN:VCARD\r\nTEL;CELL:1\r\nEND:VCARD\r\n"
      "TEL;CELL:2\r\nEND:VCARD\r\nTEL;CELL:3\r\n",
      "2.1");
  EXPECT_EQ(Text(contact, kContactSurname), u"Smith");
  EXPECT_EQ(Text(contact, kContactMobileNumber), u"3");
  EXPECT_EQ(Text("AGENT:BEGIN:VCARD\\nN:Jones\\nEND:VCARD\\n\r\nN:Smith\r\n", kContactSurname), u"Smith");
}

TEST(VcardReader, AVcardWhoseEndIsMissingIsLeftOut) {
  EXPECT_THAT(ReadVcards("BEGIN:VCARD\nVERSION:3.0\nTEL;TYPE=CELL:+42060"), IsEmpty());
  const auto contacts = ReadVcards("BEGIN:VCARD\nN:Cut\nTEL:1234\n" + Vcard("TEL:5678\n"));
  ASSERT_EQ(contacts.size(), 1U);
  EXPECT_EQ(Text(contacts[0], kContactSurname), u"");
  EXPECT_EQ(Text(contacts[0], kContactHomeNumber), u"5678");
}

TEST(VcardReader, EveryVcardOfAFileIsRead) {
  const auto contacts = ReadVcards("\xEF\xBB\xBF" + Vcard("N:A\n") + "\n\nEND:VCARD\nN:outside\n" +
                                   Vcard("N:B\n", "2.1") + Vcard("") + "BEGIN:VCALENDAR\nEND:VCALENDAR\n");
  ASSERT_EQ(contacts.size(), 3U);
  EXPECT_EQ(Text(contacts[0], kContactSurname), u"A");
  EXPECT_EQ(Text(contacts[1], kContactSurname), u"B");
  EXPECT_THAT(contacts[2], IsEmpty());
}

TEST(VcardReader, WhatIsNoVcardHoldsNoContact) {
  EXPECT_THAT(ReadVcards(""), IsEmpty());
  EXPECT_THAT(ReadVcards("hello"), IsEmpty());
  EXPECT_THAT(ReadVcards(std::string(10'000, '\0')), IsEmpty());
  EXPECT_THAT(ReadVcards("BEGIN:VCALENDAR\nVERSION:2.0\nEND:VCALENDAR\n"), IsEmpty());
}

TEST(VcardReader, EveryStartOfAVcardIsReadWithoutAContactUntilItsEnd) {
  const std::string whole = Vcard("N;ENCODING=QUOTED-PRINTABLE:Sm=\r\n=C3=ADth\r\nTEL;CELL:603\r\n", "2.1");
  const std::size_t end = whole.rfind("VCARD") + 5;
  for (std::size_t length = 0; length <= whole.size(); ++length)
    EXPECT_EQ(ReadVcards(whole.substr(0, length)).size(), length < end ? 0U : 1U) << length;
}

TEST(VcardReader, HugeValuesAndManyLinesAreReadInLinearTime) {
  const std::string digits(4'000'000, '1');
  EXPECT_EQ(Text("TEL;TYPE=CELL:" + digits + "\n", kContactMobileNumber).size(), digits.size());
  EXPECT_EQ(Text("N;QUOTED-PRINTABLE:" + std::string(4'000'000, '=') + "x\n", kContactSurname).size(),
            4'000'001U);
  std::string many;
  for (int i = 0; i < 200'000; ++i) many += "TEL;CELL;VOICE:603\nAGENT:\nBEGIN:VCARD\n";
  EXPECT_THAT(ReadVcards("BEGIN:VCARD\n" + many), IsEmpty());
  EXPECT_EQ(
      Read("N:" + std::string(4'000'000, ';') + "\nTEL" + std::string(4'000'000, ';') + "CELL:1\n").size(),
      1U);
  EXPECT_EQ(Read("N:" + std::string(4'000'000, '\\') + "\n").size(), 1U);
}

TEST(VcardReader, MemoryStaysWithinASmallMultipleOfTheFile) {
  constexpr std::size_t kSize = 1'000'000;
  constexpr std::size_t kMultiple = 10;
  const std::string header = "N;CHARSET=UTF-8;QUOTED-PRINTABLE:";
  std::string many_numbers, many_cards, many_soft_breaks = header;
  while (many_numbers.size() < kSize) many_numbers += "TEL;TYPE=CELL:603\n";
  while (many_cards.size() < kSize) many_cards += Vcard("N:A\n");
  while (many_soft_breaks.size() < kSize) many_soft_breaks += "=41=\n";
  for (const std::string& bytes :
       {Vcard(header + std::string(kSize, 'x') + "\n"), Vcard(many_numbers), many_cards,
        Vcard(many_soft_breaks + "\n"), Vcard("N:" + std::string(kSize, '\xFF') + "\n"),
        Vcard("PHOTO;ENCODING=b:" + std::string(kSize, 'A') + "\n")}) {
    VcardReader reader(bytes);
    const PeakMemory memory;
    EXPECT_NE(reader.Next(), std::nullopt);
    while (reader.Next()) continue;
    EXPECT_LE(memory.bytes(), kMultiple * bytes.size()) << bytes.substr(0, 100);
  }
}

}  // namespace
}  // namespace celldesk
