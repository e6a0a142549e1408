#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>

#include "config/settings_store.h"
#include "ui/commands.h"
#include "ui/framework/menu_state.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void StoreCentre(FakeRegistry& registry, std::u16string_view centre) {
  Settings settings;
  settings.centre = centre;
  SettingsStore(registry).Save(settings);
}

TEST(MainFrame, ConnectsWithTheWholeSequenceAndLoadsTheBook) {
  WindowSession session(PhoneWith({{1, "+447700900101", u"Anna"}, {3, "112", u"Emergency"}}));
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_TRUE(session.frame().IsConnected());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
  EXPECT_THAT(session.phone().received_lines(),
              ElementsAre("ATZE0V1", "AT+CPBS=?", "AT+CPBS=\"SM\"", "AT+CPBR=?", "AT+CPBS=?",
                          "AT+CPBS=\"ME\"", "AT+CPBR=?", "AT+CPMS=?", "AT+CMGW=?"));
  session.Command(command::kLoadData);
  EXPECT_THAT(WindowSession::Rows(session.sim()), ElementsAre("1|Anna|+447700900101", "3|Emergency|112"));
}

TEST(MainFrame, StopsBeforeThePortWhenTheCentreIsMalformed) {
  WindowSession session;
  StoreCentre(session.registry, u"0770");
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_THAT(session.boxes.asked(),
              ElementsAre(IsErrorBox("Bad SMS centre format.\rYou can change it in Settings.")));
  EXPECT_THAT(session.phone().received_lines(), IsEmpty());
}

TEST(MainFrame, NamesThePortThatCannotBeOpened) {
  WindowSession session;
  session.line.set_problem(OpenProblem::kInUse);
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_THAT(session.boxes.asked(), ElementsAre(IsErrorBox("Cannot open communication port 'COM1:'")));
}

// The link keeps a port that has no reader; the failed connection closes it.
TEST(MainFrame, ClosesAPortThatGotNoReader) {
  WindowSession session;
  session.threads.refuse = true;
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_EQ(session.line.open_ports(), 0);
  EXPECT_THAT(session.TakeAsked(), ElementsAre("Cannot open communication port 'COM1:'"));
}

TEST(MainFrame, ClosesThePortWhenNoPhoneAnswers) {
  WindowSession session;
  ASSERT_TRUE(session.phone().AddFault("*:silence"));
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_EQ(session.line.open_ports(), 0);
  EXPECT_THAT(session.boxes.asked(), ElementsAre(IsErrorBox("No mobile phone detected.")));
}

// Only the phone's own memory may be one that it does not have.
TEST(MainFrame, DetectsNoPhoneWithoutTheSimBook) {
  simulator::Profile profile;
  profile.hidden_memories = {"SM"};
  WindowSession session({}, profile);
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_EQ(session.line.open_ports(), 0);
  EXPECT_THAT(session.TakeAsked(), ElementsAre("No mobile phone detected."));
}

TEST(MainFrame, ShowsTheWaitCursorWhileItConnectsHoweverThatEnds) {
  for (const bool answers : {true, false}) {
    WindowSession session;
    ASSERT_TRUE(answers || session.phone().AddFault("*:silence"));
    ASSERT_TRUE(session.Start());
    bool shown = false;
    session.waiter.Post(session.waiter.now(), [&] {
      const QCursor* cursor = QGuiApplication::overrideCursor();
      shown = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    });
    session.Command(command::kConnect);
    EXPECT_TRUE(shown);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << answers;
    EXPECT_EQ(session.frame().IsConnected(), answers);
  }
}

TEST(MainFrame, AcceptsAPhoneWithoutAMemoryOfItsOwn) {
  WindowSession session({}, *simulator::MakeProfile("no-me"));
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  EXPECT_TRUE(session.frame().IsConnected());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(MainFrame, DisconnectsOnTheToggle) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnection);
  EXPECT_TRUE(session.frame().IsConnected());
  session.Command(command::kConnection);
  EXPECT_FALSE(session.frame().IsConnected());
  EXPECT_EQ(session.line.open_ports(), 0);
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(MainFrame, ExitWhileConnectedAsksOnlyAboutTheConnection) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  session.boxes.Answer(kAnswerNo);
  session.Command(command::kExit);
  EXPECT_THAT(session.TakeAsked(),
              ElementsAre("You are currently connected to mobile phone\rDo you want to exit?"));
  EXPECT_TRUE(session.frame().IsConnected());
  session.boxes.Answer(kAnswerYes);
  session.Command(command::kExit);
  EXPECT_FALSE(session.frame().IsAttached());
  EXPECT_EQ(session.line.open_ports(), 0);
}

TEST(MainFrame, EnablesTheCommandsOfTheConnection) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  MenuState state = session.frame().Surface().QueryState();
  EXPECT_TRUE(state.IsEnabled(command::kConnect));
  EXPECT_FALSE(state.IsEnabled(command::kDisconnect));
  EXPECT_FALSE(state.IsEnabled(command::kLoadData));
  EXPECT_FALSE(state.IsEnabled(command::kUpload));
  session.Command(command::kConnect);
  state = session.frame().Surface().QueryState();
  EXPECT_FALSE(state.IsEnabled(command::kConnect));
  EXPECT_TRUE(state.IsEnabled(command::kDisconnect));
  EXPECT_TRUE(state.IsEnabled(command::kLoadData));
  EXPECT_TRUE(state.IsEnabled(command::kUpload));
}

}  // namespace
}  // namespace celldesk
