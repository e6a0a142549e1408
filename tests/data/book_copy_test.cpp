#include "data/book_copy.h"

#include <gtest/gtest.h>

#include "book_fixture.h"

namespace celldesk {
namespace {

using Texts = std::vector<std::u16string>;

class CopyEntriesTest : public testing::Test {
 protected:
  CopyEntriesTest() : source_(LoadedBook(4, u"SM")), destination_(LoadedBook(3, u"ME")) {
    Fill(source_, 0, u"A", u"1");
    Fill(source_, 2, u"C", u"+3");
    Fill(destination_, 0, u"mine", u"9");
  }

  AddressBook source_;
  AddressBook destination_;
  RecordingObserver observer_;
};

TEST_F(CopyEntriesTest, TakesEveryEntryInPositionOrderWithoutASelection) {
  EXPECT_EQ(CopyEntries(source_, {}, destination_, observer_), S_OK);
  EXPECT_EQ(Names(destination_), (Texts{u"mine", u"A", u"C"}));
  EXPECT_EQ(observer_.rows, (std::vector<int>{1, 2}));
}

TEST_F(CopyEntriesTest, TakesTheSelectedEntriesInListOrder) {
  const std::vector<int> selected{2, 0};
  EXPECT_EQ(CopyEntries(source_, selected, destination_, observer_), S_OK);
  EXPECT_EQ(Names(destination_), (Texts{u"mine", u"C", u"A"}));
}

TEST_F(CopyEntriesTest, FillsTheFirstSlotOfAnEmptyBookWithASelection) {
  AddressBook empty = LoadedBook(2, u"ME");
  EXPECT_EQ(CopyEntries(source_, std::vector<int>{2}, empty, observer_), S_OK);
  EXPECT_EQ(observer_.rows, (std::vector<int>{0}));
}

TEST_F(CopyEntriesTest, FillsAnEmptyBookFromItsFirstSlotWithoutASelection) {
  AddressBook empty = LoadedBook(3, u"ME");
  EXPECT_EQ(CopyEntries(source_, {}, empty, observer_), S_OK);
  EXPECT_EQ(Names(empty), (Texts{u"A", u"C", u""}));
}

TEST_F(CopyEntriesTest, KeepsTheIdAndMarksTheCopyModified) {
  EXPECT_EQ(CopyEntries(source_, std::vector<int>{2}, destination_, observer_), S_OK);
  EXPECT_EQ(destination_.At(1).id, u"3");
  EXPECT_EQ(destination_.At(1).number, u"+3");
  EXPECT_EQ(Flags(destination_), (std::vector<std::uint32_t>{1, 3, 0}));
  EXPECT_EQ(Flags(source_), (std::vector<std::uint32_t>{1, 0, 1, 0}));
}

TEST_F(CopyEntriesTest, GrowsAFullDestination) {
  Fill(destination_, 1, u"x", u"1");
  Fill(destination_, 2, u"y", u"2");
  EXPECT_EQ(CopyEntries(source_, {}, destination_, observer_), S_OK);
  EXPECT_EQ(Names(destination_), (Texts{u"mine", u"x", u"y", u"A", u"C"}));
}

TEST_F(CopyEntriesTest, PassesOverSelectedRowsThatAreNotInTheBook) {
  EXPECT_EQ(CopyEntries(source_, std::vector<int>{-1, 4, 99, 0}, destination_, observer_), S_OK);
  EXPECT_EQ(Names(destination_), (Texts{u"mine", u"A", u""}));
  EXPECT_EQ(observer_.rows, (std::vector<int>{1}));
}

TEST_F(CopyEntriesTest, StopsAtADestinationThatCannotGrow) {
  ASSERT_EQ(destination_.Resize(AddressBook::kLimit), S_OK);
  destination_.MarkAll(AddressEntry::kOccupied);
  EXPECT_EQ(CopyEntries(source_, {}, destination_, observer_), E_OUTOFMEMORY);
  EXPECT_EQ(CopyEntries(source_, std::vector<int>{0}, destination_, observer_), E_OUTOFMEMORY);
  EXPECT_TRUE(observer_.rows.empty());
  EXPECT_EQ(destination_.At(65535).name, u"");
}

}  // namespace
}  // namespace celldesk
