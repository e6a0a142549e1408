#include "ui/framework/window.h"

#include <QCoreApplication>
#include <QEvent>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowTest : public FrameworkTest {
 protected:
  WindowTest() { window.Make(); }
  NotingWindow window;
};

TEST_F(WindowTest, CallsTheOperationOfEachMessage) {
  EXPECT_EQ(window.Dispatch(Message::kCreate, 0, 3), 0);
  EXPECT_EQ(window.Dispatch(Message::kCommand, 2002, 0), 0);
  EXPECT_EQ(window.Dispatch(Message::kTimer, 4, 0), 0);
  MenuState menu;
  window.disabled_command = 9;
  EXPECT_EQ(window.Dispatch(Message::kInitMenuPopup, reinterpret_cast<WordParameter>(&menu), 0x50002), 0);
  const Notification notification{NotifyCode::kClick, 6, 0};
  EXPECT_EQ(window.Dispatch(Message::kNotify, 1000, reinterpret_cast<LongParameter>(&notification)), 5);
  EXPECT_THAT(window.calls, ElementsAre("OnCreate 3", "OnCommand 2002", "OnTimer 4", "OnInitMenuPopup 2",
                                        "OnNotify 1000 6"));
  EXPECT_FALSE(menu.IsEnabled(9));
}

TEST_F(WindowTest, GivesEverythingElseToTheWindowProcedure) {
  window.handled = Message::kHelp;
  EXPECT_EQ(window.Dispatch(Message::kHelp, 0, 0), 7);
  EXPECT_EQ(window.Dispatch(Message::kClose, 0, 0), 0);
  EXPECT_EQ(window.Dispatch(Message::kShowYourself, 0, 0), 0);
  EXPECT_THAT(window.calls, ElementsAre("WindowProc 83", "WindowProc 16", "WindowProc 1024"));
}

TEST_F(WindowTest, RefusesItsCreationWithANegativeResult) {
  window.creates = false;
  EXPECT_LT(window.Dispatch(Message::kCreate, 0, 0), 0);
}

TEST_F(WindowTest, IsDetachedAfterItsProcedureSawTheDestruction) {
  QWidget* widget = WidgetOf(&window);
  EXPECT_EQ(WindowOf(widget), &window);
  window.Destroy();
  EXPECT_THAT(window.calls, ElementsAre("WindowProc 2"));
  EXPECT_TRUE(window.attached_in_destroy);
  EXPECT_FALSE(window.IsAttached());
  EXPECT_EQ(WindowOf(widget), nullptr);
}

TEST_F(WindowTest, DoesOnlyTheDefaultOnceDetached) {
  window.Destroy();
  window.calls.clear();
  EXPECT_EQ(window.Dispatch(Message::kCommand, 1, 0), 0);
  EXPECT_EQ(window.Dispatch(Message::kClose, 0, 0), 0);
  EXPECT_EQ(window.Dispatch(Message::kDestroy, 0, 0), 0);
  window.SetTitle(u"x");
  window.Show(true);
  window.SetFocus();
  window.UpdateNow();
  window.StartTimer(1, 0);
  window.StopTimer(1);
  window.Post(Message::kCommand, 1, 0);
  application().PumpMessages();
  EXPECT_THAT(window.calls, IsEmpty());
  EXPECT_EQ(window.Title(), u"");
  EXPECT_FALSE(window.IsVisible());
}

TEST_F(WindowTest, HandlesPostedMessagesAfterWhatWaits) {
  window.Post(Message::kCommand, 1, 0);
  window.Post(Message::kCommand, 2, 0);
  EXPECT_THAT(window.calls, IsEmpty());
  application().PumpMessages();
  EXPECT_THAT(window.calls, ElementsAre("OnCommand 1", "OnCommand 2"));
}

TEST_F(WindowTest, DropsPostedMessagesOfAnObjectThatIsGone) {
  auto* other = new NotingWindow;
  other->Make();
  const QPointer<QWidget> widget = WidgetOf(other);
  other->Post(Message::kCommand, 1, 0);
  other->Destroy();
  delete other;
  application().PumpMessages();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(widget.isNull());
}

TEST_F(WindowTest, RunsItsTimersUntilTheyAreStopped) {
  Event never;
  window.StartTimer(7, 1);
  while (window.calls.size() < 3) EXPECT_FALSE(application().WaitFor(never, std::chrono::milliseconds(2)));
  EXPECT_EQ(window.calls[0], "OnTimer 7");
  window.StopTimer(7);
  window.calls.clear();
  EXPECT_FALSE(application().WaitFor(never, std::chrono::milliseconds(10)));
  EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(WindowTest, EndsItsTimersWithIt) {
  window.StartTimer(7, 0);
  window.Destroy();
  window.calls.clear();
  application().PumpMessages();
  EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(WindowTest, IsNoLongerTheCurrentViewOnceItIsGone) {
  auto other = std::make_unique<NotingWindow>();
  application().set_current_view(other.get());
  other.reset();
  EXPECT_EQ(application().current_view(), nullptr);
}

TEST_F(WindowTest, IsKnownByItsOwnWidgetAlone) {
  EXPECT_EQ(WindowOf(WidgetOf(&window)), &window);
  EXPECT_EQ(WindowOf(new QWidget(WidgetOf(&window))), nullptr);
  EXPECT_EQ(WindowOf(nullptr), nullptr);
}

class NotingFrame : public Noting<FrameWindow> {};

TEST_F(WindowTest, AFrameIsMadeByOnCreate) {
  NotingFrame frame;
  EXPECT_TRUE(frame.Create(u"Caption", 12));
  EXPECT_EQ(frame.calls[0], "OnCreate 12");
  EXPECT_TRUE(frame.IsVisible());
  EXPECT_EQ(frame.Title(), u"Caption");
}

TEST_F(WindowTest, AFrameWhoseCreationIsRefusedIsNotThere) {
  NotingFrame frame;
  frame.creates = false;
  EXPECT_FALSE(frame.Create(u"Caption"));
  EXPECT_FALSE(frame.IsAttached());
}

TEST_F(WindowTest, AFrameDecidesItselfAboutClosing) {
  NotingFrame frame;
  ASSERT_TRUE(frame.Create(u"Caption"));
  frame.calls.clear();
  WidgetOf(&frame)->close();
  EXPECT_THAT(frame.calls, testing::Contains("WindowProc 16"));
  EXPECT_TRUE(frame.IsVisible());
}

}  // namespace
}  // namespace celldesk
