#include "data/contacts_fixture.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ContactsExport : public ContactsFixture {};

ContactRecord Exported(std::u16string_view name, std::u16string_view number) {
  return {{0x3A11001F, std::u16string(name)},
          {0x3A1C001F, std::u16string(number)},
          {0x4013001F, std::u16string(name)}};
}

TEST_F(ContactsExport, WritesThreePropertiesForEveryEntryInTheOrderOfTheBook) {
  Fill(book_, 0, u"Home", u"+12345");
  Fill(book_, 2, u"\u0158ez\u00E1\u010D, J", u"112");
  Export();
  EXPECT_THAT(records(),
              ElementsAre(Exported(u"Home", u"+12345"), Exported(u"\u0158ez\u00E1\u010D, J", u"112")));
}

TEST_F(ContactsExport, ShowsProgressForEveryPositionWrittenOrNot) {
  Fill(book_, 1, u"Home", u"12345");
  Export();
  EXPECT_THAT(log_.events, ElementsAre("open export 0 2", "step", "step", "step", "close"));
}

TEST_F(ContactsExport, RepaintsAfterEverySixthPosition) {
  book_ = LoadedBook(13);
  Fill(book_, 5, u"Home", u"12345");
  Export();
  EXPECT_THAT(log_.events,
              ElementsAre("open export 0 12", "step", "step", "step", "step", "step", "step", "repaint",
                          "step", "step", "step", "step", "step", "step", "repaint", "step", "close"));
}

TEST_F(ContactsExport, AnEmptyFieldBecomesAnEmptyString) {
  Fill(book_, 0, u"", u"");
  Export();
  EXPECT_THAT(records(), ElementsAre(Exported(u"", u"")));
}

TEST_F(ContactsExport, ABookWithoutSlotsOpensAndClosesTheProgress) {
  book_ = AddressBook(u"SM", true);
  Export();
  EXPECT_THAT(log_.events, ElementsAre("open export 0 -1", "close"));
  EXPECT_THAT(records(), IsEmpty());
}

TEST_F(ContactsExport, ExportingTwiceDoublesTheContacts) {
  Fill(book_, 0, u"Home", u"12345");
  Export();
  Export();
  EXPECT_THAT(records(), ElementsAre(Exported(u"Home", u"12345"), Exported(u"Home", u"12345")));
}

TEST_F(ContactsExport, AFailedWriteEndsTheExportAndKeepsWhatWasWritten) {
  for (int position = 0; position < 3; ++position) Fill(book_, position, u"Home", u"12345");
  database_.appendable = 1;
  Export();
  EXPECT_THAT(records(), ElementsAre(Exported(u"Home", u"12345")));
  EXPECT_EQ(*database_.appendable, -1) << "one write was tried after the first, and none after that";
  EXPECT_THAT(log_.events, ElementsAre("open export 0 2", "step", "close"));
}

TEST_F(ContactsExport, LeavesTheBookAsItIs) {
  Fill(book_, 1, u"Home", u"12345");
  Export();
  EXPECT_FALSE(book_.IsModified());
  EXPECT_THAT(Names(book_), ElementsAre(u"", u"Home", u""));
}

TEST_F(ContactsExport, ClosesTheDatabase) {
  Export();
  EXPECT_EQ(database_.opened, 1);
  EXPECT_EQ(database_.open_tables, 0);
}

TEST_F(ContactsExport, NeverAsksForTheCount) {
  database_.can_count = false;
  Fill(book_, 0, u"Home", u"12345");
  Export();
  EXPECT_THAT(records(), ElementsAre(Exported(u"Home", u"12345")));
}

TEST_F(ContactsExport, WithoutARegistryValueNothingHappens) {
  Forget();
  Export();
  EXPECT_THAT(log_.events, IsEmpty());
  EXPECT_EQ(database_.opened, 0);
}

TEST_F(ContactsExport, ADatabaseThatCannotBeOpenedIsPassedOverSilently) {
  Fill(book_, 0, u"Home", u"12345");
  database_.can_open = false;
  Export();
  EXPECT_THAT(log_.events, IsEmpty());
  EXPECT_THAT(records(), IsEmpty());
}

class ContactsDatabaseNameTest : public ContactsFixture {
 protected:
  std::u16string Offer(std::u16string_view name) {
    asked_ = 0;
    EXPECT_EQ(OfferContactsDatabase(registry_,
                                    [&] {
                                      ++asked_;
                                      return std::u16string(name);
                                    }),
              S_OK);
    return ContactsDatabaseName(registry_);
  }

  int asked_ = 0;
};

TEST_F(ContactsDatabaseNameTest, IsTheStringUnderTheKeyOfTheLocalMachine) {
  Name(StringData(u"/home/j\u00EDra/contacts"));
  EXPECT_EQ(ContactsDatabaseName(registry_), u"/home/j\u00EDra/contacts");
}

TEST_F(ContactsDatabaseNameTest, IsEmptyWithoutKeyOrValueOrForAnotherType) {
  Name(NumberData(65));
  EXPECT_EQ(ContactsDatabaseName(registry_), u"");
  Name(BinaryData(StringData(u"contacts").bytes));
  EXPECT_EQ(ContactsDatabaseName(registry_), u"");
  Forget();
  EXPECT_EQ(ContactsDatabaseName(registry_), u"");
  registry_.PutString(u"ContactsDatabase", u"contacts", u"\\Explorer\\Database");
  EXPECT_EQ(ContactsDatabaseName(registry_), u"") << "that is another root";
}

TEST_F(ContactsDatabaseNameTest, EndsAtItsZeroAndAtAHalfCharacter) {
  Name({RegistryType::kString, {'a', 0, 'b', 0, 0, 0, 'c', 0}});
  EXPECT_EQ(ContactsDatabaseName(registry_), u"ab");
  Name({RegistryType::kString, {'a', 0, 'b'}});
  EXPECT_EQ(ContactsDatabaseName(registry_), u"a");
  Name({RegistryType::kString, {'a', 0, 0x59, 0x01, 0, 0}});
  EXPECT_EQ(ContactsDatabaseName(registry_), u"a\u0159");
}

TEST_F(ContactsDatabaseNameTest, AnOfferFillsAnAbsentValue) {
  Forget();
  EXPECT_EQ(Offer(u"/home/u/contacts"), u"/home/u/contacts");
  EXPECT_EQ(Offer(u"/elsewhere"), u"/home/u/contacts");
  EXPECT_EQ(asked_, 0);
}

TEST_F(ContactsDatabaseNameTest, AnOfferLeavesAValueThatIsThereEvenAnEmptyOne) {
  EXPECT_EQ(Offer(u"/elsewhere"), u"contacts");
  Name(StringData(u""));
  EXPECT_EQ(Offer(u"/elsewhere"), u"");
  EXPECT_EQ(asked_, 0);
}

TEST_F(ContactsDatabaseNameTest, AnEmptyOfferIsNotStored) {
  Forget();
  EXPECT_EQ(Offer(u""), u"");
  EXPECT_EQ(Offer(u"/home/u/contacts"), u"/home/u/contacts");
}

TEST_F(ContactsDatabaseNameTest, AnOfferThatCannotBeStoredFails) {
  Forget();
  registry_.FailAllWrites();
  EXPECT_EQ(OfferContactsDatabase(registry_, [] { return std::u16string(u"contacts"); }),
            StatusFromSystemError(kErrorAccessDenied));
  registry_.FailWritesAfter(1);  // the key can be made, the value not
  EXPECT_EQ(OfferContactsDatabase(registry_, [] { return std::u16string(u"contacts"); }),
            StatusFromSystemError(kErrorAccessDenied));
}

}  // namespace
}  // namespace celldesk
