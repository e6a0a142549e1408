#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kKeepQuestion = "You changed memory assignments.\r\rDo you want save these changes?";

/// Three loaded entries of five slots, in item assignment.
class AssignmentWindow : public BookWindow {
 public:
  AssignmentWindow() : BookWindow(ThreeEntries()) {
    Load();
    PickMenuItem(frame(), command::kItemAssignment);
    Pump();
  }
};

TEST(ItemAssignment, PutsTheIdsAside) {
  AssignmentWindow window;
  EXPECT_THAT(window.SimRows(), ElementsAre("|Anna|+447700900101", "|Bert|112", "|Carl|0044"));
  EXPECT_TRUE(window.frame().Surface().QueryState().IsChecked(command::kItemAssignment));
  EXPECT_EQ(Utf8(window.frame().StatusText()),
            "Click the entries in their new order. Choose \"Change item assignment\" again to end.");
}

TEST(ItemAssignment, GivesTheNextIdToEachRowClickedOnce) {
  AssignmentWindow window;
  ListView& list = window.sim().list();
  ClickRow(list, 2);
  ClickRow(list, 2);
  ClickRow(list, 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Anna|+447700900101", "|Bert|112", "1|Carl|0044"));
}

TEST(ItemAssignment, PicksTheFocusedRowOnSpace) {
  AssignmentWindow window;
  window.sim().list().SetFocusedRow(1);
  PressKey(window.sim().list(), Qt::Key_Space);
  EXPECT_THAT(window.SimRows(), ElementsAre("|Anna|+447700900101", "1|Bert|112", "|Carl|0044"));
}

TEST(ItemAssignment, EditsNothing) {
  AssignmentWindow window;
  bool opened = false;
  window.InNextDialog([&](Dialog& dialog) {
    opened = true;
    dialog.EndDialog(kIdCancel);
  });
  window.sim().list().SetFocusedRow(1);
  PressKey(window.sim().list(), Qt::Key_Return);
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("|Anna|+447700900101", "|Bert|112", "|Carl|0044"));
  DoubleClickRow(window.sim().list(), 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "|Bert|112", "|Carl|0044"));
  EXPECT_FALSE(opened);
}

TEST(ItemAssignment, DisablesWhatWouldWriteOrEditWithoutIds) {
  AssignmentWindow window;
  ClickRow(window.sim().list(), 0);
  for (const int command : {command::kNew, command::kOpen, command::kDelete, command::kDeleteAll,
                            command::kLoadData, command::kUpload, command::kUploadSelected})
    EXPECT_FALSE(window.IsEnabled(command)) << command;
  EXPECT_TRUE(window.IsEnabled(command::kItemAssignment));
}

TEST(ItemAssignment, RestoresEveryIdOnNo) {
  AssignmentWindow window;
  ClickRow(window.sim().list(), 2);
  window.CommandAnswering(command::kItemAssignment, kAnswerNo);
  EXPECT_THAT(window.LastBox(), IsQuestion(kKeepQuestion, BoxIcon::kQuestion, false));
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044"));
  EXPECT_FALSE(window.sim().book().IsModified());
  for (const AddressEntry& entry : window.sim().book().entries()) {
    EXPECT_TRUE(entry.saved_id.empty());
    EXPECT_FALSE(entry.is_assigned());
  }
  EXPECT_EQ(Utf8(window.frame().StatusText()), "Connected to COM1:");
}

TEST(ItemAssignment, ReordersTheBookOnYesWithTheUnpickedAfterThePicked) {
  AssignmentWindow window;
  ClickRow(window.sim().list(), 2);
  window.CommandAnswering(command::kItemAssignment, kAnswerYes);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Carl|0044", "2|Anna|+447700900101", "3|Bert|112"));
  EXPECT_FALSE(window.frame().Surface().QueryState().IsChecked(command::kItemAssignment));
  window.TakePhoneLines();
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(),
              ElementsAre(R"(AT+CPBW=1,"0044",129,"Carl")", R"(AT+CPBW=2,"+447700900101",145,"Anna")",
                          R"(AT+CPBW=3,"112",129,"Bert")", "AT+CPBW=4", "AT+CPBW=5"))
      << "the whole memory is written in the new order";
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Carl|0044", "2|Anna|+447700900101", "3|Bert|112"));
}

TEST(ItemAssignment, FollowsTheListsOrderNotTheBooks) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickHeader(window.sim().list(), 0);
  window.Command(command::kItemAssignment);
  window.CommandAnswering(command::kItemAssignment, kAnswerYes);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Carl|0044", "2|Bert|112", "3|Anna|+447700900101"));
}

TEST(ItemAssignment, StartsAtTheMemorysFirstIndex) {
  simulator::PhoneMemory memory = PhoneWith({{11, "1", u"A"}, {12, "2", u"B"}}, 15);
  memory.FindPhonebook("SM")->first = 10;
  BookWindow window(memory);
  window.Load();
  window.Command(command::kItemAssignment);
  ClickRow(window.sim().list(), 1);
  window.CommandAnswering(command::kItemAssignment, kAnswerYes);
  EXPECT_THAT(window.SimRows(), ElementsAre("10|B|2", "11|A|1"));
}

TEST(ItemAssignment, SurvivesALookAtAnotherFolder) {
  AssignmentWindow window;
  ClickRow(window.sim().list(), 1);
  ClickTab(window.frame(), 1);
  window.Pump();
  EXPECT_EQ(Utf8(window.frame().StatusText()), "Connected to COM1:");
  EXPECT_FALSE(window.frame().Surface().QueryState().IsChecked(command::kItemAssignment));
  ClickTab(window.frame(), 0);
  ClickRow(window.sim().list(), 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Anna|+447700900101", "1|Bert|112", "|Carl|0044"));
}

TEST(ItemAssignment, NeedsABook) {
  BookWindow window(ThreeEntries());
  EXPECT_FALSE(window.IsEnabled(command::kItemAssignment));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

}  // namespace
}  // namespace celldesk
