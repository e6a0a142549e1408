#include "data/item_assignment.h"

#include <gtest/gtest.h>

#include "book_fixture.h"
#include "support/memory/allocation_gate.h"

namespace celldesk {
namespace {

using Texts = std::vector<std::u16string>;

class ItemAssignmentTest : public testing::Test {
 protected:
  ItemAssignmentTest() : book_(LoadedBook(5)) {
    Fill(book_, 0, u"A", u"1");
    Fill(book_, 2, u"B", u"2");
    Fill(book_, 4, u"C", u"3");
  }

  AddressBook book_;
  RecordingObserver observer_;
  ItemAssignment assignment_{book_};
};

TEST_F(ItemAssignmentTest, EnteringPutsEveryIdAside) {
  book_.At(2).flags |= AddressEntry::kAssigned;
  assignment_.Enter();
  EXPECT_TRUE(assignment_.active());
  EXPECT_EQ(Ids(book_), (Texts{u"", u"", u"", u"", u""}));
  EXPECT_EQ(book_.At(2).saved_id, u"3");
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{1, 0, 1, 0, 1}));
}

TEST_F(ItemAssignmentTest, PickedRowsCountUpFromTheFirstIndex) {
  book_.memory().first = 10;
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(4));
  EXPECT_TRUE(assignment_.Assign(0));
  EXPECT_EQ(Ids(book_), (Texts{u"11", u"", u"", u"", u"10"}));
  EXPECT_EQ(book_.At(4).flags, AddressEntry::kOccupied | AddressEntry::kAssigned);
}

TEST_F(ItemAssignmentTest, ARowIsPickedOnceOnly) {
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(2));
  EXPECT_FALSE(assignment_.Assign(2));
  EXPECT_EQ(book_.At(2).id, u"1");
  EXPECT_TRUE(assignment_.Assign(0));
  EXPECT_EQ(book_.At(0).id, u"2");
}

TEST_F(ItemAssignmentTest, NothingIsPickedOutsideTheModeOrTheBook) {
  EXPECT_FALSE(assignment_.Assign(0));
  EXPECT_EQ(book_.At(0).id, u"1");
  assignment_.Enter();
  EXPECT_FALSE(assignment_.Assign(-1));
  EXPECT_FALSE(assignment_.Assign(5));
  EXPECT_EQ(book_.count(), 5);
}

TEST_F(ItemAssignmentTest, DroppingRestoresEveryIdExactly) {
  book_.At(2).id = u" 07";
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(4));
  assignment_.LeaveDropping();
  EXPECT_FALSE(assignment_.active());
  EXPECT_EQ(Ids(book_), (Texts{u"1", u"", u" 07", u"", u"5"}));
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{1, 0, 1, 0, 1}));
  for (const AddressEntry& entry : book_.entries()) EXPECT_TRUE(entry.saved_id.empty());
}

TEST_F(ItemAssignmentTest, KeepingMovesThePickedFirstAndTheOthersInListOrder) {
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(4));
  EXPECT_EQ(assignment_.LeaveKeeping(std::vector<int>{2, 4, 0}, observer_), S_OK);
  EXPECT_FALSE(assignment_.active());
  EXPECT_EQ(Names(book_), (Texts{u"C", u"B", u"A", u"", u""}));
  EXPECT_EQ(Ids(book_), (Texts{u"1", u"2", u"3", u"", u""}));
}

TEST_F(ItemAssignmentTest, KeepingMarksTheWholeBookForTheNextUpload) {
  assignment_.Enter();
  EXPECT_EQ(assignment_.LeaveKeeping(std::vector<int>{0, 2, 4}, observer_), S_OK);
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{3, 3, 3, 2, 2}));
  EXPECT_EQ(observer_.rows, (std::vector<int>{0, 1, 2, 3, 4}));
  for (const AddressEntry& entry : book_.entries()) EXPECT_TRUE(entry.saved_id.empty());
}

TEST_F(ItemAssignmentTest, ASecondRoundStartsAgainAtTheFirstIndex) {
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(4));
  assignment_.LeaveDropping();
  assignment_.Enter();
  EXPECT_TRUE(assignment_.Assign(0));
  EXPECT_EQ(book_.At(0).id, u"1");
}

TEST_F(ItemAssignmentTest, KeepingFailsWithoutAChangeWhenTheIndexesCannotBePositions) {
  assignment_.Enter();
  book_.At(2).id = u"0";
  EXPECT_EQ(assignment_.LeaveKeeping(std::vector<int>{0, 2}, observer_), E_OUTOFMEMORY);
  EXPECT_TRUE(assignment_.active());
  EXPECT_EQ(Names(book_), (Texts{u"A", u"", u"B", u"", u"C"}));
  EXPECT_TRUE(observer_.rows.empty());
  EXPECT_TRUE(assignment_.Assign(0));
  EXPECT_EQ(book_.At(0).id, u"1");
}

TEST_F(ItemAssignmentTest, KeepingFailsWithoutAChangeWhenMemoryIsShort) {
  assignment_.Enter();
  const std::vector<int> rows{0, 2, 4};
  Status status = S_OK;
  {
    AllocationGate gate;
    gate.Refuse();
    status = assignment_.LeaveKeeping(rows, observer_);
  }
  EXPECT_EQ(status, E_OUTOFMEMORY);
  EXPECT_TRUE(assignment_.active());
  EXPECT_EQ(Names(book_), (Texts{u"A", u"", u"B", u"", u"C"}));
}

}  // namespace
}  // namespace celldesk
