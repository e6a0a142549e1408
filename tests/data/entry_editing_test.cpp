#include "data/entry_editing.h"

#include <gtest/gtest.h>

#include <tuple>

#include "book_fixture.h"

namespace celldesk {
namespace {

using Texts = std::vector<std::u16string>;

AddressEntry Edited(std::u16string_view id, std::u16string_view name) {
  AddressEntry entry;
  entry.id = id;
  entry.name = name;
  entry.flags = AddressEntry::kOccupied | AddressEntry::kModified;
  return entry;
}

TEST(NameLimit, IsThePhonesOwnOrForty) {
  AddressBook book(u"SM", true);
  EXPECT_EQ(NameLimit(book), 40);
  EXPECT_EQ(NumberLimit(book), 40);
  book.memory().name_length = 18;
  book.memory().number_length = 20;
  EXPECT_EQ(NameLimit(book), 18);
  EXPECT_EQ(NumberLimit(book), 20);
  book.memory().name_length = -1;
  EXPECT_EQ(NameLimit(book), 40);
  book.memory().name_length = 1;
  book.memory().number_length = 1;
  EXPECT_EQ(NameLimit(book), 1);
  EXPECT_EQ(NumberLimit(book), 1);
}

TEST(AssignableIds, AreTheFreeSlotsAndTheEntrysOwn) {
  AddressBook book = LoadedBook(4);
  Fill(book, 0, u"A", u"1");
  Fill(book, 2, u"C", u"3");
  EXPECT_EQ(AssignableIds(book, u"3"), (Texts{u"2", u"3", u"4"}));
  EXPECT_EQ(AssignableIds(book, u""), (Texts{u"2", u"4"}));
}

TEST(AssignableIds, IncludeSlotsThatTheBookDoesNotReach) {
  AddressBook book = LoadedBook(1);
  book.memory().first = 10;
  book.memory().last = 12;
  EXPECT_EQ(AssignableIds(book, u""), (Texts{u"10", u"11", u"12"}));
  EXPECT_EQ(book.count(), 1);
}

TEST(AssignableIds, AreTheEntrysOwnAloneForAPhoneThatWasNeverAsked) {
  AddressBook book(u"SM", true);
  EXPECT_EQ(AssignableIds(book, u"1"), (Texts{u"1"}));
  EXPECT_EQ(AssignableIds(book, u""), Texts{});
  EXPECT_EQ(AssignableIds(book, u"0"), Texts{}) << "before the first index";
  EXPECT_EQ(AssignableIds(book, u"99999999"), Texts{});
  Fill(book, 0, u"A", u"1");
  Fill(book, 1, u"B", u"2");
  book.At(0).id = u"2";
  EXPECT_EQ(AssignableIds(book, u"2"), (Texts{u"2"}));
  EXPECT_EQ(AssignableIds(book, u"1"), Texts{}) << "another's slot";
}

TEST(AssignableIds, IncludeTheSlotOfAnEntryThatStandsBeyondTheMemory) {
  AddressBook book = LoadedBook(2);
  Fill(book, 0, u"A", u"1");
  Fill(book, 4, u"beyond", u"5");
  EXPECT_EQ(AssignableIds(book, u"5"), (Texts{u"2", u"5"}));
  EXPECT_EQ(AssignableIds(book, u"4"), (Texts{u"2"})) << "a slot that the memory does not have";
  EXPECT_EQ(AssignableIds(book, u"77"), (Texts{u"2"}));
}

TEST(AssignableIds, AreBoundedForAnAbsurdMemory) {
  AddressBook book(u"SM", true);
  book.memory().last = 99999999;
  EXPECT_EQ(AssignableIds(book, u"1").size(), 65536U);
}

TEST(PrepareNew, FindsTheFirstFreeSlotOfABookAsLongAsTheMemory) {
  AddressBook book = LoadedBook(3);
  Fill(book, 0, u"A", u"1");
  Fill(book, 7, u"beyond", u"8");
  std::optional<int> position;
  EXPECT_EQ(PrepareNew(book, position), S_OK);
  EXPECT_EQ(position, 1);
  EXPECT_EQ(book.count(), 3);
}

TEST(PrepareNew, FindsNoneInAFullMemory) {
  AddressBook book = LoadedBook(1);
  Fill(book, 0, u"A", u"1");
  std::optional<int> position = 7;
  EXPECT_EQ(PrepareNew(book, position), S_OK);
  EXPECT_EQ(position, std::nullopt);
}

TEST(PrepareNew, EmptiesTheBookOfAPhoneThatWasNeverAsked) {
  AddressBook book(u"SM", true);
  Fill(book, 3, u"local", u"1");
  std::optional<int> position;
  EXPECT_EQ(PrepareNew(book, position), S_OK);
  EXPECT_EQ(position, 0);
  EXPECT_EQ(book.count(), 0);
}

TEST(PrepareNew, FailsForAMemoryThatNoBookCanHold) {
  AddressBook book(u"SM", true);
  book.memory().last = 99999999;
  std::optional<int> position = 7;
  EXPECT_EQ(PrepareNew(book, position), E_OUTOFMEMORY);
  EXPECT_EQ(position, std::nullopt);
}

TEST(NewEntryAt, HasTheIndexOfItsSlotAsItsId) {
  AddressBook book = LoadedBook(9);
  book.memory().first = 5;
  EXPECT_EQ(NewEntryAt(book, 2).id, u"7");
  EXPECT_FALSE(NewEntryAt(book, 2).is_occupied());
}

TEST(TakeFields, CountsAsCancelWithoutANameAndANumber) {
  AddressEntry entry = Edited(u"1", u"Anna");
  EXPECT_FALSE(TakeFields(entry, u"2", u"", u""));
  EXPECT_EQ(entry.id, u"1");
  EXPECT_EQ(entry.name, u"Anna");
}

TEST(TakeFields, MarksAnEntryModifiedOnlyWhenATextDiffers) {
  AddressEntry entry = Edited(u"1", u"Anna");
  entry.flags = AddressEntry::kOccupied;
  EXPECT_TRUE(TakeFields(entry, u"1", u"Anna", u""));
  EXPECT_EQ(entry.flags, 1U);
  EXPECT_TRUE(TakeFields(entry, u"2", u"Anna", u""));
  EXPECT_EQ(entry.flags, 3U);
  entry.flags = AddressEntry::kOccupied;
  EXPECT_TRUE(TakeFields(entry, u"2", u"", u"123"));
  EXPECT_EQ(entry.flags, 3U);
  EXPECT_EQ(entry.name, u"");
  EXPECT_EQ(entry.number, u"123");
}

TEST(TakeFields, OneTextThatDiffersIsEnough) {
  for (const auto& [id, name, number] :
       {std::tuple(u"2", u"Anna", u"1"), std::tuple(u"1", u"Anne", u"1"), std::tuple(u"1", u"Anna", u"2")}) {
    AddressEntry entry = Edited(u"1", u"Anna");
    entry.number = u"1";
    entry.flags = AddressEntry::kOccupied;
    EXPECT_TRUE(TakeFields(entry, id, name, number));
    EXPECT_TRUE(entry.is_modified());
  }
}

TEST(TakeFields, OccupiesANewEntry) {
  AddressEntry entry;
  EXPECT_TRUE(TakeFields(entry, u"1", u"", u"1"));
  EXPECT_TRUE(entry.is_occupied());
  EXPECT_TRUE(entry.is_modified());
}

TEST(ReplacesAnother, IsTrueOnlyForAnotherEntrysSlot) {
  AddressBook book = LoadedBook(3);
  Fill(book, 0, u"A", u"1");
  Fill(book, 2, u"C", u"3");
  EXPECT_TRUE(ReplacesAnother(book, 0, Edited(u"3", u"A")));
  for (const char16_t* id : {u"1", u"2", u"4", u"0", u"", u"99999999999"})
    EXPECT_FALSE(ReplacesAnother(book, 0, Edited(id, u"A"))) << ParseDecimal(id);
}

TEST(Place, KeepsAnEntryAtItsPosition) {
  AddressBook book = LoadedBook(2);
  Fill(book, 1, u"old", u"1");
  EXPECT_EQ(Place(book, 1, Edited(u"2", u"new")), 1);
  EXPECT_EQ(Names(book), (Texts{u"", u"new"}));
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{0, 3}));
}

TEST(Place, ReplacesTheEntryAtTheNewPositionAndErasesTheOldOne) {
  AddressBook book = LoadedBook(3);
  Fill(book, 0, u"moved", u"1");
  Fill(book, 2, u"overwritten", u"3");
  EXPECT_EQ(Place(book, 0, Edited(u"3", u"moved")), 2);
  EXPECT_EQ(Names(book), (Texts{u"", u"", u"moved"}));
  EXPECT_EQ(Ids(book), (Texts{u"", u"", u"3"}));
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{2, 0, 3}));
}

TEST(Place, TakesAnEntryOfTheBookItself) {
  AddressBook book = LoadedBook(1);
  Fill(book, 0, u"moved", u"1");
  book.At(0).id = u"300";
  EXPECT_EQ(Place(book, 0, book.At(0)), 299);
  EXPECT_EQ(book.At(299).name, u"moved");
  EXPECT_EQ(book.At(0).name, u"");
}

TEST(Place, PutsTheFirstEntryIntoAnEmptyBook) {
  AddressBook book(u"SM", true);
  EXPECT_EQ(Place(book, 0, Edited(u"1", u"Anna")), 0);
  EXPECT_EQ(Names(book), (Texts{u"Anna"}));
}

TEST(Place, RefusesIdsThatNameNoSlot) {
  AddressBook book = LoadedBook(2);
  Fill(book, 0, u"A", u"1");
  for (const char16_t* id : {u"", u"0", u"-5", u"x", u"99999999", u"99999999999999"}) {
    EXPECT_EQ(Place(book, 0, Edited(id, u"lost")), std::nullopt);
  }
  EXPECT_EQ(Names(book), (Texts{u"A", u""}));
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{1, 0}));
}

}  // namespace
}  // namespace celldesk
