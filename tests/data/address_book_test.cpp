#include "data/address_book.h"

#include <gtest/gtest.h>

#include <limits>

#include "book_fixture.h"
#include "support/memory/allocation_gate.h"

namespace celldesk {
namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

TEST(AddressEntry, IsNewAsAnEmptySlotThatTheNextUploadErases) {
  const AddressEntry entry;
  EXPECT_TRUE(entry.id.empty() && entry.saved_id.empty() && entry.name.empty() && entry.number.empty());
  EXPECT_EQ(entry.number_type, 0);
  EXPECT_EQ(entry.flags, 2U);
  EXPECT_TRUE(entry.is_modified());
  EXPECT_FALSE(entry.is_occupied());
}

TEST(AddressEntry, ClearEmptiesTheTextsAndTheFlags) {
  AddressEntry entry;
  entry.id = u"1";
  entry.saved_id = u"2";
  entry.name = u"Anna";
  entry.number = u"123";
  entry.flags = 7;
  entry.Clear();
  EXPECT_TRUE(entry.id.empty() && entry.saved_id.empty() && entry.name.empty() && entry.number.empty());
  EXPECT_EQ(entry.flags, 0U);
}

TEST(AddressEntry, CopyLeavesTheNumberTypeAlone) {
  AddressEntry source;
  source.id = u"1";
  source.saved_id = u"9";
  source.name = u"Anna";
  source.number = u"+123";
  source.number_type = 145;
  source.flags = 7;
  AddressEntry target;
  target.number_type = 129;
  target = source;
  EXPECT_EQ(target.id, u"1");
  EXPECT_EQ(target.saved_id, u"9");
  EXPECT_EQ(target.name, u"Anna");
  EXPECT_EQ(target.number, u"+123");
  EXPECT_EQ(target.flags, 7U);
  EXPECT_EQ(target.number_type, 129);
  const AddressEntry copy(source);
  EXPECT_EQ(copy.id, u"1");
  EXPECT_EQ(copy.saved_id, u"9");
  EXPECT_EQ(copy.name, u"Anna");
  EXPECT_EQ(copy.number, u"+123");
  EXPECT_EQ(copy.flags, 7U);
  EXPECT_EQ(copy.number_type, 0);
}

TEST(PhonebookMemory, HasNoCapacityUntilThePhoneWasAsked) {
  EXPECT_EQ(PhonebookMemory().first, 1);
  EXPECT_EQ(PhonebookMemory().last, 0);
  EXPECT_EQ(PhonebookMemory().Capacity(), 0);
}

TEST(PhonebookMemory, CountsItsSlots) {
  PhonebookMemory memory;
  memory.first = 5;
  memory.last = 14;
  EXPECT_EQ(memory.Capacity(), 10);
  EXPECT_EQ(memory.IndexAt(3), 8);
  EXPECT_EQ(memory.PositionOf(8), 3);
}

TEST(PhonebookMemory, HoldsStrangeRangesAtTheLimits) {
  PhonebookMemory memory;
  memory.first = 5;
  memory.last = 1;
  EXPECT_EQ(memory.Capacity(), 0);
  memory.first = kLeast;
  memory.last = kMost;
  EXPECT_EQ(memory.Capacity(), kMost);
  EXPECT_EQ(memory.PositionOf(kMost), kMost);
  EXPECT_EQ(memory.IndexAt(-1), kLeast);
  memory.first = kMost;
  EXPECT_EQ(memory.IndexAt(1), kMost);
  EXPECT_EQ(memory.PositionOf(kLeast), kLeast);
}

TEST(AddressBook, StartsEmptyAndBoundToItsMemory) {
  const AddressBook book(u"ME", false);
  EXPECT_EQ(book.memory().name, u"ME");
  EXPECT_FALSE(book.memory().ignore_select_errors);
  EXPECT_EQ(book.count(), 0);
  EXPECT_FALSE(book.loaded());
  EXPECT_FALSE(book.IsModified());
}

TEST(AddressBook, GrowsWithModifiedEntriesAndKeepsTheOthers) {
  AddressBook book = LoadedBook(1);
  Fill(book, 0, u"Anna", u"123");
  ASSERT_EQ(book.Resize(3), S_OK);
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"Anna", u"", u""}));
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{1, 2, 2}));
  ASSERT_EQ(book.Resize(1), S_OK);
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"Anna"}));
}

TEST(AddressBook, AllocatesInStepsOf124) {
  AddressBook book(u"SM", true);
  ASSERT_EQ(book.Resize(1), S_OK);
  EXPECT_EQ(book.entries().capacity(), 124U);
  ASSERT_EQ(book.Resize(124), S_OK);
  EXPECT_EQ(book.entries().capacity(), 248U);
  ASSERT_EQ(book.Resize(0), S_OK);
  EXPECT_EQ(book.entries().capacity(), 0U);
}

TEST(AddressBook, GrowthKeepsTheNumberTypes) {
  AddressBook book(u"SM", true);
  book.At(0).number_type = 145;
  ASSERT_EQ(book.Resize(1000), S_OK);
  EXPECT_EQ(book.At(0).number_type, 145);
}

TEST(AddressBook, RefusesToGrowBeyondItsLimit) {
  AddressBook book = LoadedBook(2);
  EXPECT_EQ(book.Resize(99999999), E_OUTOFMEMORY);
  EXPECT_EQ(book.Resize(AddressBook::kLimit + 1), E_OUTOFMEMORY);
  EXPECT_EQ(book.Reach(kMost), E_OUTOFMEMORY);
  EXPECT_EQ(book.Reach(-1), E_OUTOFMEMORY);
  EXPECT_EQ(book.count(), 2);
  EXPECT_EQ(book.Resize(AddressBook::kLimit), S_OK);
  EXPECT_EQ(book.count(), 65536);
}

TEST(AddressBook, StaysAsItWasWhenThereIsNoMemoryToGrow) {
  AddressBook book = LoadedBook(2);
  Fill(book, 1, u"Last", u"1");
  Status resized = S_OK;
  Status reached = S_OK;
  const AddressEntry* stand_in = nullptr;
  {
    AllocationGate gate;
    gate.Refuse();
    resized = book.Resize(2000);
    reached = book.Reach(1999);
    stand_in = &book.At(1999);
  }
  EXPECT_EQ(resized, E_OUTOFMEMORY);
  EXPECT_EQ(reached, E_OUTOFMEMORY);
  EXPECT_EQ(stand_in->name, u"Last");
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"", u"Last"}));
}

TEST(AddressBook, TakesANegativeCountForNone) {
  AddressBook book = LoadedBook(2);
  EXPECT_EQ(book.Resize(-3), S_OK);
  EXPECT_EQ(book.count(), 0);
}

TEST(AddressBook, ReadingBeyondTheEndGrowsIt) {
  AddressBook book = LoadedBook(2);
  book.At(4).name = u"Anna";
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"", u"", u"", u"", u"Anna"}));
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{0, 0, 2, 2, 2}));
}

TEST(AddressBook, TheLastEntryStandsInWhereGrowthFails) {
  AddressBook book = LoadedBook(2);
  Fill(book, 1, u"Last", u"1");
  EXPECT_EQ(book.At(kMost).name, u"Last");
  EXPECT_EQ(book.At(-1).name, u"Last");
  EXPECT_EQ(book.count(), 2);
}

TEST(AddressBook, AnEntryOfNoPositionStandsInInAnEmptyBook) {
  AddressBook book(u"SM", true);
  book.At(-1).name = u"nobody";
  EXPECT_EQ(book.count(), 0);
}

TEST(AddressBook, FirstFreeIsTheFirstSlotWithoutAnEntryOrTheEnd) {
  AddressBook book = LoadedBook(3);
  EXPECT_EQ(book.FirstFree(), 0);
  Fill(book, 0, u"A", u"1");
  Fill(book, 2, u"C", u"3");
  EXPECT_EQ(book.FirstFree(), 1);
  EXPECT_EQ(book.FirstFree(2), 3);
  EXPECT_EQ(book.FirstFree(-5), 1);
  Fill(book, 1, u"B", u"2");
  EXPECT_EQ(book.FirstFree(), 3);
}

TEST(AddressBook, IsModifiedWhenAnySlotIs) {
  AddressBook book = LoadedBook(3);
  EXPECT_FALSE(book.IsModified());
  book.At(2).flags = AddressEntry::kModified;
  EXPECT_TRUE(book.IsModified());
  book.MarkAll(0);
  EXPECT_FALSE(book.IsModified());
}

TEST(AddressBook, ClearAllAndMarkAllMakeTheNextUploadEraseEverySlot) {
  AddressBook book = LoadedBook(2);
  Fill(book, 0, u"A", u"1");
  book.ClearAll();
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{0, 0}));
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"", u""}));
  book.MarkAll(AddressEntry::kModified);
  EXPECT_EQ(Flags(book), (std::vector<std::uint32_t>{2, 2}));
}

TEST(AddressBook, EraseLeavesAModifiedEmptySlot) {
  AddressBook book = LoadedBook(2);
  Fill(book, 0, u"A", u"1");
  book.Erase(0);
  EXPECT_EQ(book.At(0).id, u"");
  EXPECT_EQ(book.At(0).name, u"");
  EXPECT_EQ(book.At(0).flags, 2U);
  EXPECT_EQ(book.At(1).flags, 0U);
}

TEST(AddressBook, EraseOfAPositionThatCannotBeLeavesTheLastEntryAlone) {
  AddressBook book = LoadedBook(1);
  Fill(book, 0, u"A", u"1");
  book.Erase(-1);
  book.Erase(kMost);
  EXPECT_EQ(Names(book), (std::vector<std::u16string>{u"A"}));
}

TEST(AddressBook, FindsAnEntryByItsExactNumber) {
  AddressBook book = LoadedBook(4);
  Fill(book, 1, u"Anna", u"+420601123456");
  Fill(book, 2, u"Anna again", u"+420601123456");
  Fill(book, 3, u"Local", u"601123456");
  ASSERT_NE(book.FindNumber(u"+420601123456"), nullptr);
  EXPECT_EQ(book.FindNumber(u"+420601123456")->name, u"Anna");
  EXPECT_EQ(book.FindNumber(u"601123456")->name, u"Local");
  EXPECT_EQ(book.FindNumber(u"420601123456"), nullptr);
}

TEST(AddressBook, FindsNothingForAnEmptyNumberOrAnErasedEntry) {
  AddressBook book = LoadedBook(2);
  Fill(book, 0, u"Nameless", u"");
  Fill(book, 1, u"Gone", u"123");
  book.At(1).flags = AddressEntry::kModified;
  EXPECT_EQ(book.FindNumber(u""), nullptr);
  EXPECT_EQ(book.FindNumber(u"123"), nullptr);
}

TEST(AddressBook, RoomMadeBeforehandIsNotMadeAgain) {
  AddressBook book(u"SM", false);
  book.Reserve(1000);
  EXPECT_EQ(book.count(), 0);
  EXPECT_EQ(book.Resize(1), S_OK);
  const AddressEntry* const first = &book.At(0);
  for (int count = 2; count <= 1000; ++count) EXPECT_EQ(book.Resize(count), S_OK);
  EXPECT_EQ(first, &book.At(0));
}

TEST(AddressBook, RoomThatCannotBeMadeBeforehandIsNoFailureYet) {
  AddressBook book = LoadedBook(2);
  {
    AllocationGate gate;
    gate.Refuse();
    book.Reserve(1000);
  }
  EXPECT_EQ(book.count(), 2);
  EXPECT_EQ(book.Resize(1000), S_OK);
}

Status ReachWithoutMemory(AddressBook& book, int position) {
  AllocationGate gate;
  gate.Refuse();
  return book.Reach(position);
}

TEST(AddressBook, GivesItsRoomBackWhenItBecomesMuchSmaller) {
  AddressBook book = LoadedBook(2);
  ASSERT_EQ(book.Resize(60000), S_OK);
  ASSERT_EQ(book.Resize(2), S_OK);
  EXPECT_EQ(Names(book), Names(LoadedBook(2)));
  EXPECT_EQ(ReachWithoutMemory(book, 30000), E_OUTOFMEMORY);
}

TEST(AddressBook, KeepsTheRoomThatWasMadeForItWhileItGrows) {
  AddressBook book = LoadedBook(2);
  book.Reserve(60000);
  ASSERT_EQ(book.Resize(3), S_OK);
  EXPECT_EQ(ReachWithoutMemory(book, 30000), S_OK);
}

TEST(AddressBook, RoomIsMadeForNoMoreThanTheLimit) {
  AddressBook book(u"SM", false);
  book.Reserve(std::numeric_limits<int>::max());
  EXPECT_LE(book.entries().capacity(), static_cast<std::size_t>(AddressBook::kLimit + AddressBook::kGrowBy));
  book.Reserve(-1);
  EXPECT_EQ(book.count(), 0);
}

}  // namespace
}  // namespace celldesk
