#include "ui/framework/application.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <thread>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr milliseconds kLong{60000};

/// A view that wants so many idle calls.
class IdleView : public NotingWindow {
 public:
  explicit IdleView(int wanted) : wanted_(wanted) { Make(); }
  bool OnIdle(int count) override {
    counts.push_back(count);
    return count + 1 < wanted_;
  }
  std::vector<int> counts;

 private:
  int wanted_;
};

class ApplicationTest : public FrameworkTest {
 protected:
  qint64 Elapsed() const { return clock_.elapsed(); }
  void StartClock() { clock_.start(); }

 private:
  QElapsedTimer clock_;
};

TEST_F(ApplicationTest, CallsIdleWorkUntilItWantsNoMore) {
  IdleView view(3);
  application().set_current_view(&view);
  application().PumpMessages();
  application().IdleLoop();
  EXPECT_THAT(view.counts, ElementsAre(0, 1, 2));
}

TEST_F(ApplicationTest, HandlesAMessageThatComesDuringIdleWorkBeforeMoreOfIt) {
  class BusyView : public NotingWindow {
   public:
    explicit BusyView(Application& application) : application_(application) { Make(); }
    bool OnIdle(int count) override {
      calls.push_back("OnIdle " + std::to_string(count));
      if (calls.size() == 2) application_.Post([this] { calls.push_back("message"); });
      return calls.size() < 6;
    }

   private:
    Application& application_;
  };
  BusyView view(application());
  application().set_current_view(&view);
  application().PumpMessages();
  application().IdleLoop();
  EXPECT_THAT(view.calls, ElementsAre("OnIdle 0", "OnIdle 1", "message", "OnIdle 0", "OnIdle 1", "OnIdle 2"));
}

TEST_F(ApplicationTest, EndsIdleWorkThatNeverEndsWithTheProgram) {
  class EndlessView : public NotingWindow {
   public:
    EndlessView() { Make(); }
    bool OnIdle(int /*count*/) override { return true; }
  };
  EndlessView view;
  application().set_current_view(&view);
  QTimer quit;
  QObject::connect(&quit, &QTimer::timeout, &quit, [&] { application().PostQuit(8); });
  quit.start(1);
  EXPECT_EQ(application().Run(nullptr), 8);
}

TEST_F(ApplicationTest, FreesTemporaryObjectsWhenTheViewWantsNoMore) {
  struct Temporary : Object {
    explicit Temporary(int& gone) : gone_(gone) {}
    ~Temporary() override { ++gone_; }
    int& gone_;
  };
  int gone = 0;
  IdleView view(2);
  application().set_current_view(&view);
  application().FreeLater(std::make_unique<Temporary>(gone));
  application().FreeLater(std::make_unique<Temporary>(gone));
  EXPECT_TRUE(application().OnIdle(0));
  EXPECT_EQ(gone, 0);
  EXPECT_FALSE(application().OnIdle(1));
  EXPECT_EQ(gone, 2);
}

TEST_F(ApplicationTest, DoesIdleWorkInTheLoopOnceNothingWaits) {
  IdleView view(2);
  application().set_current_view(&view);
  application().PumpMessages();
  ASSERT_THAT(view.counts, IsEmpty());
  bool before = false, after = false;
  QTimer quit;
  QObject::connect(&quit, &QTimer::timeout, &quit, [&] {
    after = !view.counts.empty();
    application().PostQuit(3);
  });
  application().Post([&] {
    before = view.counts.empty();
    quit.start(5);
  });
  EXPECT_EQ(application().Run(nullptr), 3);
  EXPECT_TRUE(before);
  EXPECT_TRUE(after);
  ASSERT_GE(view.counts.size(), 2u);
  EXPECT_EQ(view.counts[0], 0);
  EXPECT_EQ(view.counts[1], 1);
}

TEST_F(ApplicationTest, DoesIdleWorkAfterACommandThatWaited) {
  IdleView view(1);
  application().set_current_view(&view);
  application().PumpMessages();
  std::size_t during = 0;
  application().Post([&] {
    application().Pause(milliseconds(5));
    during = view.counts.size();
    application().Post([&] { application().Post([&] { application().PostQuit(0); }); });
  });
  application().Run(nullptr);
  EXPECT_EQ(during, 0u);
  QCoreApplication::sendPostedEvents();
  EXPECT_FALSE(view.counts.empty());
}

// A window that notes when it is painted, and what had been done by then.
class PaintedWindow : public QWidget {
 public:
  explicit PaintedWindow(std::vector<std::string>& events) : events_(events) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { events_.push_back("painted"); }

 private:
  std::vector<std::string>& events_;
};

TEST_F(ApplicationTest, KeepsWorkUntilAWindowIsPainted) {
  std::vector<std::string> events;
  application().PostAfterPaint([&] { events.push_back("first work"); });
  application().PostAfterPaint([&] { events.push_back("second work"); });
  for (int i = 0; i < 3; ++i) application().PumpMessages();
  EXPECT_THAT(events, IsEmpty());
  PaintedWindow window(events);
  window.show();
  EXPECT_TRUE(QTest::qWaitFor([&] { return events.size() >= 3; }));
  EXPECT_THAT(events, ElementsAre("painted", "first work", "second work"));
  window.repaint();
  application().PumpMessages();
  EXPECT_THAT(events, ElementsAre("painted", "first work", "second work", "painted")) << "once";
}

TEST_F(ApplicationTest, DropsWorkThatNoPaintingCameFor) {
  bool done = false;
  application().PostAfterPaint([&] { done = true; });
  application().Post([&] { application().PostQuit(0); });
  EXPECT_EQ(application().Run(nullptr), 0);
  EXPECT_FALSE(done);
}

TEST_F(ApplicationTest, PumpsEverythingThatWaitsWithoutIdleWork) {
  IdleView view(1);
  application().set_current_view(&view);
  int handled = 0;
  application().Post([&] {
    ++handled;
    application().Post([&] { ++handled; });
  });
  application().PumpMessages();
  EXPECT_EQ(handled, 2);
  EXPECT_THAT(view.counts, IsEmpty());
}

TEST_F(ApplicationTest, WaitsForAnEventThatIsSetAlready) {
  Event event;
  event.Set();
  EXPECT_TRUE(application().WaitFor(event, milliseconds(0)));
  EXPECT_TRUE(event.IsSet()) << "it is the waiter's to reset";
}

TEST_F(ApplicationTest, EndsItsWaitWhenAnotherThreadSetsTheEvent) {
  Event event;
  std::thread setter([&] { event.Set(); });
  EXPECT_TRUE(application().WaitFor(event, kLong));
  setter.join();
}

TEST_F(ApplicationTest, EndsItsWaitWhenAMessageSetsTheEvent) {
  Event event;
  application().Post([&] { event.Set(); });
  EXPECT_TRUE(application().WaitFor(event, kLong));
}

TEST_F(ApplicationTest, GivesUpAfterTheTimeOutAndNotBefore) {
  Event never;
  StartClock();
  EXPECT_FALSE(application().WaitFor(never, milliseconds(60)));
  EXPECT_GE(Elapsed(), 60);
  StartClock();
  EXPECT_FALSE(application().WaitFor(never, milliseconds(0)));
}

TEST_F(ApplicationTest, StartsTheTimeOutAnewWithEveryInputMessage) {
  Event never;
  NotingWindow window;
  window.Make();
  window.Show(true);
  int moves = 0;
  qint64 last = 0;
  QTimer mover;
  QObject::connect(&mover, &QTimer::timeout, &mover, [&] {
    if (++moves == 4) mover.stop();
    last = Elapsed();
    QTest::mouseMove(WidgetOf(&window), QPoint(moves, moves));
    QTest::keyClick(WidgetOf(&window), Qt::Key_A);
  });
  mover.start(40);
  StartClock();
  EXPECT_FALSE(application().WaitFor(never, milliseconds(100)));
  EXPECT_EQ(moves, 4) << "every one came within the time-out of the one before";
  EXPECT_GE(Elapsed() - last, 100) << "and the whole time-out ran after the last";
}

TEST_F(ApplicationTest, HandlesMessagesButNoIdleWorkWhileItWaits) {
  IdleView view(1);
  application().set_current_view(&view);
  Event event;
  int handled = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
    if (++handled == 3) event.Set();
  });
  ticks.start(1);
  EXPECT_TRUE(application().WaitFor(event, kLong));
  EXPECT_EQ(handled, 3);
  EXPECT_THAT(view.counts, IsEmpty());
}

TEST_F(ApplicationTest, WaitsWithinAWait) {
  Event outer, inner;
  bool inner_ended = false;
  application().Post([&] {
    inner.Set();
    inner_ended = application().WaitFor(inner, kLong);
    outer.Set();
  });
  EXPECT_TRUE(application().WaitFor(outer, kLong));
  EXPECT_TRUE(inner_ended);
}

TEST_F(ApplicationTest, PausesForTheWholeDurationWhateverHappens) {
  int handled = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] { ++handled; });
  ticks.start(1);
  StartClock();
  application().Pause(milliseconds(80));
  EXPECT_GE(Elapsed(), 80);
  EXPECT_GT(handled, 1) << "messages are handled meanwhile";
}

TEST_F(ApplicationTest, RunsUntilTheFlagTurnsFalse) {
  bool go_on = true;
  application().Post([&] { go_on = false; });
  EXPECT_EQ(application().Run(&go_on), 0);
  EXPECT_FALSE(go_on);
}

TEST_F(ApplicationTest, DoesNotRunForAFlagThatIsFalse) {
  const bool go_on = false;
  bool handled = false;
  application().Post([&] { handled = true; });
  application().Run(&go_on);
  EXPECT_FALSE(handled);
}

TEST_F(ApplicationTest, EndsWithTheCodeOfTheQuitMessage) {
  application().Post([&] { application().PostQuit(42); });
  EXPECT_EQ(application().Run(nullptr), 42);
}

TEST_F(ApplicationTest, EndsAtOnceForAQuitMessageThatWaits) {
  application().PostQuit(7);
  EXPECT_EQ(application().Run(nullptr), 7);
  const bool go_on = true;
  EXPECT_EQ(application().Run(&go_on), 7);
}

TEST_F(ApplicationTest, ShowsTheWaitCursorOnceHoweverOftenAsked) {
  application().ShowWaitCursor(true);
  application().ShowWaitCursor(true);
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  application().ShowWaitCursor(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

class LifeApplication : public Application {
 public:
  using Application::Application;
  bool InitInstance(std::u16string_view command_line, bool) override {
    calls.push_back("InitInstance " + Utf8(command_line));
    PostQuit(5);
    return starts;
  }
  int Run(const bool* go_on) override {
    calls.push_back("Run");
    return Application::Run(go_on);
  }
  int ExitInstance(int result) override {
    calls.push_back("ExitInstance " + std::to_string(result));
    return result + 1;
  }
  std::vector<std::string> calls;
  bool starts = true;
};

TEST(ApplicationLife, InitialisesRunsAndExits) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  LifeApplication application(count, arguments);
  EXPECT_EQ(application.Main(u"file.adr"), 6);
  EXPECT_THAT(application.calls, ElementsAre("InitInstance file.adr", "Run", "ExitInstance 5"));
}

TEST(ApplicationLife, ExitsWithoutRunningWhenItDoesNotStart) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  LifeApplication application(count, arguments);
  application.starts = false;
  EXPECT_EQ(application.Main(u""), 1);
  EXPECT_THAT(application.calls, ElementsAre("InitInstance ", "ExitInstance 0"));
}

}  // namespace
}  // namespace celldesk
