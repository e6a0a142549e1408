#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTest>

#include "ui/framework/application.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/window/book_window.h"
#include "ui/window/live_window.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kEveryCommand[] = {
    command::kNew,
    command::kOpen,
    command::kDelete,
    command::kDeleteAll,
    command::kExit,
    command::kConnect,
    command::kDisconnect,
    command::kSettings,
    command::kImport,
    command::kExport,
    command::kLoadData,
    command::kUpload,
    command::kItemAssignment,
    command::kUploadSelected,
    command::kSendSms,
};

simulator::PhoneMemory ManyEntries(int count) {
  std::vector<TestEntry> entries;
  for (int i = 1; i <= count; ++i) entries.push_back({i, std::to_string(1000 + i), u"Entry"});
  return PhoneWith(entries, count + 10, {{1, "1", u"Own"}}, 10);
}

TEST(BusyWindow, StaysAliveAndGivesNoCommandWhileTheBookIsRead) {
  LiveWindow window(ManyEntries(120), 20);
  window.Command(command::kConnect);
  ASSERT_TRUE(window.frame().IsConnected());
  int dialogs = 0;
  Dialog::SetModalHook([&](Dialog& dialog) {
    ++dialogs;
    dialog.EndDialog(kIdCancel);
  });
  std::vector<std::string> seen;
  ListView& list = window.sim().list();
  window.Once(
      [&] { return list.RowCount() >= 40; },
      [&] {
        EXPECT_TRUE(window.frame().IsBusy());
        seen.push_back(Utf8(window.frame().StatusText()));
        // The list scrolls, selects and sorts.
        QScrollBar* bar = list.native()->table->verticalScrollBar();
        ClickRow(list, 0);
        EXPECT_EQ(list.SelectedCount(), 1u);
        PressKey(list, Qt::Key_End);
        EXPECT_GT(bar->value(), 0);
        EXPECT_EQ(list.FocusedRow(), list.RowCount() - 1);
        PressKey(list, Qt::Key_Home);
        EXPECT_EQ(bar->value(), 0);
        ClickHeader(list, 1);
        // The folders can be looked at.
        ClickTab(window.frame(), 1);
        EXPECT_EQ(window.frame().pages().Current(), 1);
        ClickTab(window.frame(), 0);
        EXPECT_EQ(window.frame().pages().Current(), 0);
        // Nothing that would disturb the reading is given, however it is asked for.
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_D, Qt::Key_E, Qt::Key_I, Qt::Key_P})
          PressKey(list, key, Qt::ControlModifier);
        PressKey(list, Qt::Key_Return);
        PressKey(list, Qt::Key_Delete);
        DoubleClickRow(list, 2);
        for (const int command : {command::kNew, command::kDelete, command::kLoadData, command::kUpload,
                                  command::kSettings, command::kConnection}) {
          EXPECT_FALSE(ControlOf(window.frame(), QStringLiteral("button_%1").arg(command))->isEnabled())
              << command;
          ClickBarButton(window.frame(), command);
        }
        const MenuState menu = window.frame().Surface().QueryState();
        for (const int command : kEveryCommand) {
          EXPECT_FALSE(menu.IsEnabled(command)) << command;
          if (command != command::kExit) window.Command(command);
        }
        EXPECT_TRUE(menu.IsEnabled(command::kAbout));
        PressKey(list, Qt::Key_F1);
        seen.push_back("acted");
      });
  window.Command(command::kLoadData);
  ASSERT_EQ(seen.size(), 2u) << "the window was dead";
  EXPECT_THAT(seen[0], testing::MatchesRegex("Reading Address-SIM\\.\\.\\. [0-9]+"));
  EXPECT_EQ(dialogs, 0);
  EXPECT_THAT(window.boxes.asked(), IsEmpty());
  EXPECT_THAT(window.shell.opened, ElementsAre(u"file:CellDesk.htm#main_contents"));
  EXPECT_EQ(list.RowCount(), 120);
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_FALSE(window.frame().IsBusy());
}

TEST(BusyWindow, PaintsNewRowsWhileTheBookIsRead) {
  LiveWindow window(ManyEntries(60), 20);
  window.Command(command::kConnect);
  bool painted = false;
  window.Once([&] { return window.sim().list().RowCount() >= 20; },
              [&] {
                const QImage shown = window.sim().list().native()->table->viewport()->grab().toImage();
                const QRgb background = shown.pixel(shown.width() - 2, shown.height() - 2);
                for (int x = 0; x < shown.width(); ++x) painted |= shown.pixel(x, 8) != background;
              });
  window.Command(command::kLoadData);
  EXPECT_TRUE(painted);
}

TEST(BusyWindow, ShowsAboutOnTopOfAProcedure) {
  LiveWindow window(ManyEntries(45), 20);
  window.Command(command::kConnect);
  bool shown = false;
  Dialog::SetModalHook([&](Dialog& dialog) {
    shown = dialog.template_number() == 213;
    PressKey(dialog, Qt::Key_Escape);
  });
  window.Once([&] { return window.sim().list().RowCount() >= 20; }, [&] { window.Command(command::kAbout); });
  window.Command(command::kLoadData);
  EXPECT_TRUE(shown);
  EXPECT_EQ(window.sim().list().RowCount(), 45);
}

TEST(BusyWindow, ACloseRequestWaitsForTheEndOfTheReading) {
  LiveWindow window(ManyEntries(60), 20);
  window.Command(command::kConnect);
  std::string status;
  window.Once([&] { return window.sim().list().RowCount() >= 20; },
              [&] {
                WidgetOf(&window.frame())->close();
                WidgetOf(&window.frame())->close();
                EXPECT_TRUE(window.frame().IsVisible());
                EXPECT_TRUE(window.frame().IsConnected());
                status = Utf8(window.frame().StatusText());
              });
  window.boxes.Answer(kAnswerYes);
  window.frame().Dispatch(Message::kCommand, command::kLoadData, 0);
  EXPECT_THAT(status, testing::StartsWith("Closing when Reading Address-SIM... "));
  EXPECT_FALSE(window.frame().IsAttached());
  EXPECT_FALSE(window.application().link().IsOpen());
  ASSERT_EQ(window.boxes.asked().size(), 1u);
  EXPECT_EQ(Utf8(window.boxes.asked()[0].text),
            "You are currently connected to mobile phone\rDo you want to exit?");
  EXPECT_EQ(window.application().Run(nullptr), 0) << "the message loop has ended";
}

TEST(BusyWindow, ACloseRequestThatIsDeclinedLeavesTheWindow) {
  LiveWindow window(ManyEntries(45), 20);
  window.Command(command::kConnect);
  window.Once([&] { return window.sim().list().RowCount() >= 20; },
              [&] { WidgetOf(&window.frame())->close(); });
  window.boxes.Answer(kAnswerNo);
  window.Command(command::kLoadData);
  EXPECT_TRUE(window.frame().IsVisible());
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(Utf8(window.frame().StatusText()), "Connected to COM1:");
  EXPECT_EQ(window.sim().list().RowCount(), 45);
}

TEST(BusyWindow, LoadsEveryEntryOverTheRealLine) {
  LiveWindow window(PhoneWith({{1, "+447700900101", u"Anna \u00e4\u00f6"}, {3, "112", u"Emergency"}}, 30));
  window.Command(command::kConnect);
  window.Command(command::kLoadData);
  EXPECT_THAT(WindowSession::Rows(window.sim()),
              ElementsAre("1|Anna \u00e4\u00f6|+447700900101", "3|Emergency|112"));
  EXPECT_THAT(window.boxes.asked(), IsEmpty());
}

// The rest needs no time of its own.

TEST(BusyWindow, ACloseRequestDuringAFailedConnectionComesAfterItsMessage) {
  WindowSession session;
  ASSERT_TRUE(session.phone().AddFault("*:silence"));
  ASSERT_TRUE(session.Start());
  session.waiter.Post(milliseconds(1000), [&] { WidgetOf(&session.frame())->close(); });
  session.Command(command::kConnect);
  EXPECT_THAT(session.TakeAsked(), ElementsAre("No mobile phone detected."));
  EXPECT_FALSE(session.frame().IsAttached());
}

TEST(BusyWindow, ACloseRequestDuringAnUploadEndsTheProgramAfterIt) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).name = u"Anne";
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.waiter.Post(window.waiter.now(), [&] { WidgetOf(&window.frame())->close(); });
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Anne|+447700900101", "2|Bert|112", "4|Carl|0044"));
  EXPECT_FALSE(window.frame().IsAttached());
  EXPECT_THAT(window.TakeAsked(),
              ElementsAre("You are currently connected to mobile phone\rDo you want to exit?"));
}

TEST(BusyWindow, ACloseRequestWhileThePortClosesAsksNoMore) {
  BookWindow window;
  window.waiter.Post(window.waiter.now(), [&] { WidgetOf(&window.frame())->close(); });
  window.CommandAnswering(command::kExit, kAnswerYes);
  EXPECT_FALSE(window.frame().IsAttached());
  EXPECT_EQ(window.TakeAsked().size(), 1u);
}

TEST(BusyWindow, DisablesEveryCommandWhileItConnects) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  std::vector<int> enabled;
  session.waiter.Post(milliseconds(0), [&] {
    const MenuState menu = session.frame().Surface().QueryState();
    for (const int command : kEveryCommand)
      if (menu.IsEnabled(command)) enabled.push_back(command);
    session.Command(command::kConnect);
    session.Command(command::kNew);
  });
  session.Command(command::kConnect);
  EXPECT_THAT(enabled, IsEmpty());
  EXPECT_TRUE(session.frame().IsConnected());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(BusyWindow, TheProgressWindowCannotBeClosed) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).flags |= AddressEntry::kModified;
  bool visible = false;
  window.waiter.Post(window.waiter.now(), [&] {
    Dialog* progress = Application::Get()->modeless_dialog();
    ASSERT_NE(progress, nullptr);
    WidgetOf(progress)->close();
    PressKey(*progress, Qt::Key_Escape);
    visible = progress->IsVisible();
  });
  window.Command(command::kUpload);
  EXPECT_TRUE(visible);
  EXPECT_FALSE(window.sim().book().IsModified());
}

}  // namespace
}  // namespace celldesk
