#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/framework/application.h"
#include "ui/framework/dialog.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kEmptyQuestion =
    "You have empty address book, so this action will erase your address book on your mobile phone\rDo you "
    "want to continue?";

void Modify(BookWindow& window, int position, std::u16string_view name) {
  AddressEntry& entry = window.SimEntry(position);
  entry.name = name;
  entry.flags |= AddressEntry::kModified;
}

// What the progress window says in the course of the upload that comes next.
class ProgressWatch {
 public:
  explicit ProgressWatch(BookWindow& window) {
    window.phone().AddLatency(10);
    for (int at = 0; at < 1000; at += 5)
      window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(at), [this] { Look(); });
  }
  const std::vector<std::string>& lines() const { return lines_; }
  const std::vector<std::string>& titles() const { return titles_; }

 private:
  static void Note(std::vector<std::string>& seen, std::u16string_view text) {
    if (seen.empty() || seen.back() != Utf8(text)) seen.push_back(Utf8(text));
  }
  void Look() {
    const Dialog* progress = Application::Get()->modeless_dialog();
    if (progress == nullptr || !progress->IsVisible()) return;
    Note(lines_, progress->Text(1001));
    Note(titles_, progress->Title());
  }

  std::vector<std::string> lines_;
  std::vector<std::string> titles_;
};

TEST(AddressUpload, DoesNothingWhileNotConnected) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.Command(command::kUpload);
  session.Command(command::kUploadSelected);
  EXPECT_THAT(session.phone().received_lines(), IsEmpty());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(AddressUpload, SendsOnlyWhatWasChanged) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakePhoneLines(),
              ElementsAre("ATZE0V1", "AT+CPBS=?", "AT+CPBS=\"SM\"", "AT+CPBR=?", "AT+CPBS=\"SM\"",
                          R"(AT+CPBW=1,"+447700900101",145,"Anne")"));
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Anne|+447700900101", "2|Bert|112", "4|Carl|0044"));
}

TEST(AddressUpload, SendsNothingForAnUnchangedBook) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(AddressUpload, TakesTheTypeFromThePlusSign) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 1, u"B");
  Modify(window, 3, u"C");
  window.SimEntry(1).number = u"0044+12";
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre(R"(AT+CPBW=2,"0044+12",145,"B")"));
}

TEST(AddressUpload, AsksBeforeAnEmptyBookErasesThePhone) {
  BookWindow window(ThreeEntries(3));
  window.TakePhoneLines();
  window.CommandAnswering(command::kUpload, kAnswerNo);
  EXPECT_THAT(window.LastBox(), IsQuestion(kEmptyQuestion, BoxIcon::kStop, true));
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty());
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.TakeWrites(), ElementsAre("AT+CPBW=1", "AT+CPBW=2", "AT+CPBW=3"));
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("4|Carl|0044")) << "beyond the memory's last slot";
}

TEST(AddressUpload, ErasesTheSlotsThatAShorterBookDoesNotFill) {
  BookWindow window(ThreeEntries());
  window.Load();
  ASSERT_FALSE(Failed(window.sim().book().Resize(2)));
  window.sim().list().RemoveRow(2);
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre("AT+CPBW=3", "AT+CPBW=4", "AT+CPBW=5"));
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Anna|+447700900101", "2|Bert|112"));
}

TEST(AddressUpload, StopsOnNoWhenTheBookIsLongerThanTheMemory) {
  BookWindow window(ThreeEntries());
  window.Load();
  ASSERT_FALSE(Failed(window.sim().book().Resize(7)));
  window.CommandAnswering(command::kUpload, kAnswerNo);
  EXPECT_THAT(window.LastBox(),
              IsQuestion("You have more address book items(7) than your mobile phone can accept(5).\r Do you "
                         "want to synchronize first 5 items?",
                         BoxIcon::kStop, false));
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_EQ(window.sim().book().count(), 7);
  EXPECT_FALSE(window.frame().IsBusy());
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr) << "the progress window is gone";
}

TEST(AddressUpload, GoesOnWithTheWholeBookOnYesUntilThePhoneRefuses) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  ASSERT_FALSE(Failed(window.sim().book().Resize(7)));
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.TakeWrites(), ElementsAre(R"(AT+CPBW=1,"+447700900101",145,"Anne")", "AT+CPBW=6"));
  EXPECT_THAT(window.LastBox(), IsCommunicationError("ERROR"));
  EXPECT_EQ(window.sim().book().count(), 7) << "the book is not cut";
  EXPECT_FALSE(window.SimEntry(0).is_modified());
  EXPECT_TRUE(window.SimEntry(5).is_modified());
}

TEST(AddressUpload, ResumesAfterAFailureWithWhatIsLeft) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  Modify(window, 1, u"Berta");
  Modify(window, 3, u"Carla");
  ASSERT_TRUE(window.phone().AddFault("AT+CPBW=2:error"));
  window.Command(command::kUpload);
  EXPECT_THAT(window.LastBox(), IsCommunicationError("ERROR"));
  EXPECT_EQ(window.TakeWrites().size(), 2u);
  EXPECT_FALSE(window.SimEntry(0).is_modified());
  EXPECT_TRUE(window.SimEntry(1).is_modified());
  window.phone().ClearFaults();
  window.TakeAsked();
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(),
              ElementsAre(R"(AT+CPBW=2,"112",129,"Berta")", R"(AT+CPBW=4,"0044",129,"Carla")"));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressUpload, TellsThatThePhoneHasNoSuchMemory) {
  BookWindow window({}, *simulator::MakeProfile("no-me"));
  window.ShowFolder(1);
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.LastBox(), IsErrorBox("Address book of type 'ME' is not implemented on your phone."));
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr);
}

TEST(AddressUpload, ShowsItsProgressInAWindow) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  Modify(window, 3, u"Carla");
  const ProgressWatch watch(window);
  window.Command(command::kUpload);
  EXPECT_THAT(watch.lines(), ElementsAre("Initialization...", "Starting communication...",
                                         "Progress 1 of 5...", "Progress 4 of 5..."));
  EXPECT_THAT(watch.titles(), ElementsAre("Address-SIM"));
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr);
}

TEST(AddressUploadSelected, WritesOnlyTheSelectedRows) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  Modify(window, 1, u"Berta");
  Modify(window, 3, u"Carla");
  WindowSession::SelectRows(window.sim(), {0, 2});
  window.Command(command::kUploadSelected);
  EXPECT_THAT(window.TakeWrites(),
              ElementsAre(R"(AT+CPBW=1,"+447700900101",145,"Anne")", R"(AT+CPBW=4,"0044",129,"Carla")"));
  EXPECT_TRUE(window.SimEntry(1).is_modified());
  EXPECT_FALSE(window.SimEntry(3).is_modified());
}

TEST(AddressUploadSelected, KeepsTheFreshSlotsOfItsResizeForTheNextUpload) {
  BookWindow window(ThreeEntries());
  window.Load();
  ASSERT_FALSE(Failed(window.sim().book().Resize(4)));
  Modify(window, 0, u"Anne");
  WindowSession::SelectRows(window.sim(), {0});
  window.Command(command::kUploadSelected);
  EXPECT_EQ(window.TakeWrites().size(), 1u);
  ASSERT_EQ(window.sim().book().count(), 5);
  EXPECT_TRUE(window.SimEntry(4).is_modified());
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre("AT+CPBW=5"));
}

TEST(AddressUploadSelected, SendsNothingWithoutASelection) {
  BookWindow window(ThreeEntries());
  window.Load();
  Modify(window, 0, u"Anne");
  EXPECT_FALSE(window.IsEnabled(command::kUploadSelected));
  window.Command(command::kUploadSelected);
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_TRUE(window.SimEntry(0).is_modified());
}

TEST(AddressUploadSelected, CountsTheSelectedRowsInTheOrderOfTheList) {
  BookWindow window(ThreeEntries());
  window.Load();
  for (const int position : {0, 1, 3}) Modify(window, position, u"X");
  ClickHeader(window.sim().list(), 0);
  WindowSession::SelectRows(window.sim(), {0, 1});
  const ProgressWatch watch(window);
  window.Command(command::kUploadSelected);
  EXPECT_THAT(window.TakeWrites(), ElementsAre(R"(AT+CPBW=4,"0044",129,"X")", R"(AT+CPBW=2,"112",129,"X")"));
  EXPECT_THAT(watch.lines(), ElementsAre("Initialization...", "Starting communication...",
                                         "Progress 1 of 2...", "Progress 2 of 2..."));
}

}  // namespace
}  // namespace celldesk
