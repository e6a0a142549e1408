#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QWidget>

#include "ui/framework/application.h"
#include "ui/framework/qt/native.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string kSim = "You have unsaved changes in address book 'SIM memory'.\r\rDo you want to exit?";
const std::string kPhone = "You have unsaved changes in address book 'phone'.\r\rDo you want to exit?";
const std::string kConnected = "You are currently connected to mobile phone\rDo you want to exit?";

void Change(AddressBookView& view) { ASSERT_FALSE(Failed(view.book().Resize(1))); }

struct LeaveCase {
  bool sim_changed, phone_changed, connected, exit;
};

std::vector<std::string> Questions(const LeaveCase& one) {
  std::vector<std::string> questions;
  if (one.sim_changed) questions.push_back(kSim);
  if (one.phone_changed) questions.push_back(kPhone);
  if (one.exit && one.connected) questions.push_back(kConnected);
  return questions;
}

void Prepare(WindowSession& session, const LeaveCase& one) {
  ASSERT_TRUE(session.Start());
  if (one.connected) session.Command(command::kConnect);
  if (one.sim_changed) Change(session.sim());
  if (one.phone_changed) Change(session.phone_book());
}

std::vector<LeaveCase> AllCases() {
  std::vector<LeaveCase> cases;
  for (int bits = 0; bits < 16; ++bits) {
    const LeaveCase one{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
    if (one.exit || one.connected) cases.push_back(one);  // nothing to disconnect otherwise
  }
  return cases;
}

TEST(LeaveCheck, AsksEachQuestionOnceAndGoesOnYes) {
  for (const LeaveCase& one : AllCases()) {
    WindowSession session;
    Prepare(session, one);
    const std::vector<std::string> questions = Questions(one);
    for (std::size_t i = 0; i < questions.size(); ++i) session.boxes.Answer(kAnswerYes);
    session.Command(one.exit ? command::kExit : command::kDisconnect);
    EXPECT_THAT(session.TakeAsked(), ElementsAreArray(questions));
    EXPECT_EQ(session.line.open_ports(), 0);
    EXPECT_EQ(session.frame().IsAttached(), !one.exit);
  }
}

TEST(LeaveCheck, StaysAtTheFirstNo) {
  for (const LeaveCase& one : AllCases()) {
    const std::vector<std::string> questions = Questions(one);
    for (std::size_t no = 0; no < questions.size(); ++no) {
      WindowSession session;
      Prepare(session, one);
      for (std::size_t i = 0; i < no; ++i) session.boxes.Answer(kAnswerYes);
      session.boxes.Answer(kAnswerNo);
      session.Command(one.exit ? command::kExit : command::kDisconnect);
      EXPECT_EQ(session.TakeAsked().size(), no + 1);
      EXPECT_EQ(session.frame().IsConnected(), one.connected);
      EXPECT_TRUE(session.frame().IsAttached());
    }
  }
}

TEST(LeaveCheck, AsksWithYesAndNo) {
  BookWindow window;
  Change(window.sim());
  window.CommandAnswering(command::kDisconnect, kAnswerNo);
  EXPECT_THAT(window.LastBox(), IsQuestion(kSim, BoxIcon::kQuestion, false));
  EXPECT_TRUE(window.frame().IsConnected());
}

TEST(LeaveCheck, RunsForTheToggleAndForTheCloseButton) {
  BookWindow window;
  Change(window.sim());
  window.boxes.Answer(kAnswerNo);
  ClickBarButton(window.frame(), command::kConnection);
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kSim));
  window.boxes.Answer(kAnswerNo);
  WidgetOf(&window.frame())->close();
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kSim));
  EXPECT_TRUE(window.frame().IsAttached());
  EXPECT_TRUE(window.frame().IsVisible());
}

TEST(LeaveCheck, ExitEndsTheMessageLoopWithCodeZero) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.application->Post([&] { session.frame().Dispatch(Message::kClose, 0, 0); });
  EXPECT_EQ(session.application->Run(nullptr), 0);
  EXPECT_FALSE(session.frame().IsAttached());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(LeaveCheck, DestroyingTheFrameEndsTheMessageLoopToo) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.application->Post([&] { session.frame().Destroy(); });
  EXPECT_EQ(session.application->Run(nullptr), 0);
}

}  // namespace
}  // namespace celldesk
