#include "data/contacts_fixture.h"

namespace celldesk {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kImported = AddressEntry::kOccupied | AddressEntry::kModified;

class ContactsImport : public ContactsFixture {
 protected:
  /// The entry that one contact comes in as; an empty one when it does not.
  AddressEntry ImportOne(ContactRecord contact) {
    records().clear();
    AddContact(std::move(contact));
    book_ = LoadedBook(1);
    Import();
    return book_.At(0);
  }
  std::u16string NameOf(ContactRecord contact) {
    contact.push_back({kContactHomeNumber, u"5551234"});
    return std::u16string(ImportOne(std::move(contact)).name);
  }
};

TEST_F(ContactsImport, FillsTheFreeSlotsAndTellsTheListOfEach) {
  Fill(book_, 1, u"There", u"1");
  AddContact(Person(u"Smith", u"5551234"));
  AddContact(Person(u"Jones", u"+420603"));
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Smith ", u"There", u"Jones "));
  EXPECT_EQ(book_.At(0).number, u"5551234");
  EXPECT_EQ(book_.At(2).number, u"+420603");
  EXPECT_THAT(Flags(book_), ElementsAre(kImported, AddressEntry::kOccupied, kImported));
  EXPECT_THAT(log_.events, ElementsAre("open import 0 2", "row 0", "step", "row 2", "step", "close"));
}

TEST_F(ContactsImport, TheIdIsThePositionWhateverTheFirstIndex) {
  book_.memory().first = 100;
  AddContact(Person(u"Smith", u"5551234"));
  AddContact(Person(u"Jones", u"5551234"));
  Import();
  EXPECT_THAT(Ids(book_), ElementsAre(u"0", u"1", u""));
}

TEST_F(ContactsImport, AsksForTheSevenPropertiesInTheirOrder) {
  AddContact(Person(u"Smith", u"5551234"));
  Import();
  EXPECT_EQ(database_.requests.size(), 2U);
  EXPECT_THAT(database_.requests, Each(ElementsAre(0x3A11001F, 0x4024001F, 0x3A06001F, 0x3A1C001F, 0x3A08001F,
                                                   0x3A09001F, 0x3A16001F)));
}

TEST_F(ContactsImport, ADatabaseNameWithoutATerminatorIsTakenWhole) {
  RegistryData name = StringData(u"contacts");
  for (int i = 0; i < 2; ++i) name.bytes.pop_back();
  Name(name);
  AddContact(Person(u"Smith", u"12345"));
  Import();
  EXPECT_EQ(book_.At(0).number, u"12345");
}

TEST_F(ContactsImport, ANameIsItsPartsEachWithABlankBehindIt) {
  EXPECT_EQ(NameOf({{kContactSurname, u"Smith"}, {kContactSecondName, u"P"}, {kContactGivenName, u"John"}}),
            u"Smith P John ");
  EXPECT_EQ(NameOf({{kContactGivenName, u"John"}, {kContactSurname, u"Smith"}}), u"Smith John ");
  EXPECT_EQ(NameOf({{kContactGivenName, u"Johnny"}}), u"Johnny ");
}

TEST_F(ContactsImport, APartThatIsThereButEmptyBringsItsBlank) {
  EXPECT_EQ(NameOf({{kContactSurname, u"Smith"}, {kContactSecondName, u""}, {kContactGivenName, u"John"}}),
            u"Smith  John ");
}

TEST_F(ContactsImport, ANameOfFewerThanFiveCharactersIsCompletedWithTheCompany) {
  EXPECT_EQ(NameOf({{kContactSurname, u"Li"}, {kContactCompany, u"Acme"}}), u"Li Acme");
  EXPECT_EQ(NameOf({{kContactSurname, u"Fox"}, {kContactCompany, u"Acme"}}), u"Fox Acme");
  EXPECT_EQ(NameOf({{kContactSurname, u"Wolf"}, {kContactCompany, u"Acme"}}), u"Wolf ");
  EXPECT_EQ(NameOf({{kContactCompany, u"Acme"}}), u"Acme");
  EXPECT_EQ(NameOf({{kContactSurname, u"Li"}}), u"Li ");
}

TEST_F(ContactsImport, NameAndCompanyLoseTheirDiacritics) {
  EXPECT_EQ(NameOf({{kContactSurname, u"\u0160t\u011Bp\u00E1nek"}, {kContactGivenName, u"Ji\u0159\u00ED"}}),
            u"Stepanek Jiri ");
  EXPECT_EQ(NameOf({{kContactSurname, u"Li"}, {kContactCompany, u"\u010CEZ \u00E4"}}), u"Li CEZ \u00E4");
}

TEST_F(ContactsImport, AContactWithoutANameComesInWithItsNumber) {
  const AddressEntry entry = ImportOne({{kContactMobileNumber, u"5551234"}});
  EXPECT_EQ(entry.name, u"");
  EXPECT_EQ(entry.number, u"5551234");
  EXPECT_EQ(entry.flags, kImported);
}

TEST_F(ContactsImport, TheFirstNumberOfMobileBusinessAndHomeCounts) {
  const ContactProperty mobile{kContactMobileNumber, u"1111"}, business{kContactBusinessNumber, u"2222"},
      home{kContactHomeNumber, u"3333"};
  EXPECT_EQ(ImportOne({home, business, mobile}).number, u"1111");
  EXPECT_EQ(ImportOne({home, business}).number, u"2222");
  EXPECT_EQ(ImportOne({home}).number, u"3333");
}

TEST_F(ContactsImport, AnEmptyNumberIsPassedOver) {
  EXPECT_EQ(
      ImportOne({{kContactMobileNumber, u""}, {kContactBusinessNumber, u""}, {kContactHomeNumber, u"3333"}})
          .number,
      u"3333");
}

TEST_F(ContactsImport, AMobileNumberWinsAndIsCleaned) {
  EXPECT_EQ(ImportOne({{kContactMobileNumber, u" (0) 123 "}, {kContactHomeNumber, u"456789"}}).number,
            u"0123");
}

TEST_F(ContactsImport, OtherCharactersOfANumberStay) {
  EXPECT_EQ(ImportOne({{kContactMobileNumber, u"+420 (603) 12-34*#p"}}).number, u"+42060312-34*#p");
}

TEST_F(ContactsImport, ANumberOfFewerThanFourCharactersIsNoContact) {
  EXPECT_EQ(ImportOne(Person(u"Smith", u"12")).flags, 0U);
  EXPECT_EQ(ImportOne(Person(u"Smith", u"123")).flags, 0U);
  EXPECT_EQ(book_.At(0).name, u"");
  EXPECT_EQ(ImportOne(Person(u"Smith", u"1 (2) 3")).flags, 0U);
  EXPECT_EQ(ImportOne({{kContactSurname, u"Smith"}}).flags, 0U);
  EXPECT_EQ(ImportOne(Person(u"Smith", u"1234")).flags, kImported);
}

TEST_F(ContactsImport, AShortNumberIsNotReplacedByALaterOne) {
  const AddressEntry entry = ImportOne({{kContactMobileNumber, u"12"}, {kContactHomeNumber, u"456789"}});
  EXPECT_EQ(entry.number, u"");
  EXPECT_EQ(entry.flags, 0U);
  EXPECT_EQ(ImportOne({{kContactMobileNumber, u" "}, {kContactHomeNumber, u"456789"}}).flags, 0U);
}

TEST_F(ContactsImport, TheSlotOfAContactThatDoesNotComeInIsUsedByTheNext) {
  AddContact(Person(u"Short", u"12"));
  AddContact(Person(u"Smith", u"5551234"));
  AddContact(Person(u"None", u""));
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Smith ", u"", u""));
  EXPECT_THAT(log_.events, ElementsAre("open import 0 3", "row 0", "step", "close"));
}

TEST_F(ContactsImport, ASlotIsClearedBeforeItIsFilled) {
  book_.At(0).saved_id = u"9";
  book_.At(0).name = u"left over";
  book_.Erase(1);
  AddContact(Person(u"", u"5551234"));
  AddContact(Person(u"Short", u"12"));
  Import();
  EXPECT_EQ(book_.At(0).saved_id, u"");
  EXPECT_EQ(book_.At(0).name, u" ");
  EXPECT_EQ(book_.At(1).flags, 0U) << "cleared for the contact that did not come in";
}

TEST_F(ContactsImport, RepaintsAfterEverySixthImportedContact) {
  for (int i = 0; i < 13; ++i) {
    AddContact(Person(u"Smith", u"5551234"));
    AddContact(Person(u"Short", u"12"));
  }
  Import();
  std::vector<std::string> expected = {"open import 0 26"};
  for (int i = 0; i < 13; ++i) {
    expected.insert(expected.end(), {"row " + std::to_string(i), "step"});
    if (i == 5 || i == 11) expected.emplace_back("repaint");
  }
  expected.emplace_back("close");
  EXPECT_EQ(log_.events, expected);
}

TEST_F(ContactsImport, AFullBookGrowsPastThePhonesCapacity) {
  for (int position = 0; position < 3; ++position) Fill(book_, position, u"There", u"1");
  AddContact(Person(u"Smith", u"5551234"));
  AddContact(Person(u"Jones", u"5551234"));
  Import();
  EXPECT_EQ(book_.count(), 5);
  EXPECT_EQ(book_.memory().Capacity(), 3);
  EXPECT_EQ(book_.At(3).id, u"3");
  EXPECT_EQ(book_.At(4).name, u"Jones ");
}

TEST_F(ContactsImport, ABookThatCannotGrowEndsTheImport) {
  book_ = LoadedBook(AddressBook::kLimit);
  for (int position = 0; position + 1 < book_.count(); ++position) book_.At(position).flags = 1;
  AddContact(Person(u"Smith", u"5551234"));
  AddContact(Person(u"Jones", u"5551234"));
  Import();
  EXPECT_EQ(book_.At(AddressBook::kLimit - 1).name, u"Smith ");
  EXPECT_EQ(book_.count(), AddressBook::kLimit);
  EXPECT_THAT(log_.events, ElementsAre("open import 0 2", "row 65535", "step", "close"));
}

TEST_F(ContactsImport, ARecordThatCannotBeReadEndsTheImport) {
  for (int i = 0; i < 3; ++i) AddContact(Person(u"Smith", u"5551234"));
  database_.readable = 1;
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Smith ", u"", u""));
  EXPECT_THAT(log_.events, ElementsAre("open import 0 3", "row 0", "step", "close"));
}

TEST_F(ContactsImport, AnEmptyDatabaseOpensAndClosesTheProgress) {
  Import();
  EXPECT_THAT(log_.events, ElementsAre("open import 0 0", "close"));
  EXPECT_THAT(Flags(book_), Each(0U));
}

TEST_F(ContactsImport, WithoutACountNothingHappens) {
  AddContact(Person(u"Smith", u"5551234"));
  database_.can_count = false;
  Import();
  EXPECT_THAT(log_.events, IsEmpty());
  EXPECT_THAT(Names(book_), Each(u""));
  EXPECT_EQ(database_.opened, 1);
  EXPECT_EQ(database_.open_tables, 0);
}

TEST_F(ContactsImport, WithoutARegistryValueOrADatabaseNothingHappens) {
  AddContact(Person(u"Smith", u"5551234"));
  database_.can_open = false;
  Import();
  database_.can_open = true;
  Name(StringData(u"another"));
  Import();
  Forget();
  Import();
  EXPECT_THAT(log_.events, IsEmpty());
  EXPECT_THAT(Names(book_), Each(u""));
}

TEST_F(ContactsImport, ClosesTheDatabase) {
  Import();
  EXPECT_EQ(database_.opened, 1);
  EXPECT_EQ(database_.open_tables, 0);
}

TEST_F(ContactsImport, WhatWasExportedComesBackWithABlankBehindTheName) {
  Fill(book_, 0, u"Home", u"+12345");
  Fill(book_, 1, u"", u"67890");
  Export();
  book_ = LoadedBook(2);
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Home ", u" "));
  EXPECT_EQ(book_.At(0).number, u"+12345");
  EXPECT_EQ(book_.At(1).number, u"67890");
}

}  // namespace
}  // namespace celldesk
