// The list's own menu: by right button, pen held down and menu key; the menu bar's commands in the menu bar's
// state.

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QTapAndHoldGesture>
#include <QTest>
#include <QWindow>
#include <optional>

#include "ui/framework/command_surface.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

class ListMenu : public testing::Test {
 protected:
  ListMenu() : window_(Memory()) {
    window_.LoadNames();
    window_.Load();
    window_.ShowFolder(kSimTab);
    WidgetOf(&window_.frame())->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(WidgetOf(&window_.frame()), kPatience));
  }
  ~ListMenu() override {
    if (QMenu* menu = Menu()) menu->close();
  }

  static simulator::PhoneMemory Memory() {
    simulator::PhoneMemory memory = PhoneWithMessages();
    auto& entries = memory.FindPhonebook("SM")->entries;
    for (int i = 40; i < 44; ++i)
      entries[i] = {"+4477009005" + std::to_string(i), simulator::kInternational, u"Guest"};
    return memory;
  }

  static constexpr int kPatience = 30000;

  ListView& list() { return window_.frame().current_folder().list(); }
  QTableView& table() { return *list().native()->table; }
  QWindow* screen() { return WidgetOf(&window_.frame())->windowHandle(); }
  QPoint PlaceOf(int row) { return table().visualRect(table().model()->index(row, 1)).center(); }

  static QMenu* Menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  static bool MenuOpens() {
    return QTest::qWaitFor([] { return Menu() != nullptr; }, kPatience);
  }
  void RightClick(int row) {
    QTest::mouseClick(screen(), Qt::RightButton, {},
                      table().viewport()->mapTo(WidgetOf(&window_.frame()), PlaceOf(row)));
  }
  static std::vector<int> Commands() {
    std::vector<int> commands;
    for (const QAction* action : Menu()->actions()) {
      if (!action->isSeparator()) commands.push_back(action->objectName().section(u'_', 1).toInt());
    }
    return commands;
  }
  void ExpectStateOfTheMenuBar() {
    const MenuState state = window_.frame().Surface().QueryState();
    for (const QAction* action : Menu()->actions()) {
      if (action->isSeparator()) continue;
      const int number = action->objectName().section(u'_', 1).toInt();
      EXPECT_EQ(action->isEnabled(), state.IsEnabled(number)) << number;
      EXPECT_EQ(action->isChecked(), state.IsChecked(number)) << number;
    }
  }

  SmsWindow window_;
};

TEST_F(ListMenu, OpensByRightClickForTheRowUnderIt) {
  RightClick(2);
  ASSERT_TRUE(MenuOpens());
  EXPECT_THAT(list().SelectedRows(), ElementsAre(2));
  EXPECT_THAT(Commands(),
              ElementsAre(command::kOpen, command::kDelete, command::kSendSms, command::kNew,
                          command::kItemAssignment, command::kLoadData, command::kUploadSelected));
  ExpectStateOfTheMenuBar();
}

TEST_F(ListMenu, KeepsASelectionOfSeveralRows) {
  ClickRow(list(), 0);
  ClickRow(list(), 2, Qt::ControlModifier);
  RightClick(2);
  ASSERT_TRUE(MenuOpens());
  EXPECT_THAT(list().SelectedRows(), ElementsAre(0, 2));
}

TEST_F(ListMenu, OpensByTheMenuKeyAtTheFocusedRow) {
  ClickRow(list(), 1);
  QTest::keyClick(screen(), Qt::Key_Menu);
  ASSERT_TRUE(MenuOpens());
  const QRect row = table().visualRect(table().model()->index(1, 0));
  EXPECT_EQ(Menu()->pos().y(), table().viewport()->mapToGlobal(row.center()).y());
  ExpectStateOfTheMenuBar();
}

TEST_F(ListMenu, OpensByShiftF10) {
  ClickRow(list(), 1);
  QTest::keyClick(screen(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(MenuOpens());
}

TEST_F(ListMenu, OpensUnderAPenThatIsHeldDown) {
  QTapAndHoldGesture::setTimeout(1);
  QTest::mousePress(table().viewport(), Qt::LeftButton, {}, PlaceOf(1));
  ASSERT_TRUE(MenuOpens());
  EXPECT_THAT(list().SelectedRows(), ElementsAre(1));
  QTest::mouseRelease(Menu(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_NE(Menu(), nullptr) << "lifting the pen chooses nothing";
  QTapAndHoldGesture::setTimeout(700);
}

TEST_F(ListMenu, GivesTheCommandOfTheItem) {
  RightClick(0);
  ASSERT_TRUE(MenuOpens());
  bool edited = false;
  window_.InDialog([] { QTest::keyClick(Menu(), Qt::Key_E); },
                   [&](Dialog& dialog) { edited = dialog.Title() == u"Edit item"; });
  EXPECT_TRUE(edited);
}

TEST_F(ListMenu, OffersWhatTheInboxHas) {
  window_.ShowFolder(kInboxTab);
  RightClick(0);
  ASSERT_TRUE(MenuOpens());
  EXPECT_THAT(Commands(), ElementsAre(command::kOpen, command::kReply, command::kForward, command::kDelete,
                                      command::kShowNames, command::kLoadData, command::kUpload));
  ExpectStateOfTheMenuBar();
}

TEST_F(ListMenu, OffersWhatTheOutboxHas) {
  window_.ShowFolder(kOutboxTab);
  RightClick(0);
  ASSERT_TRUE(MenuOpens());
  EXPECT_THAT(Commands(), ElementsAre(command::kOpen, command::kDelete, command::kNew, command::kShowNames,
                                      command::kLoadData, command::kUpload));
  ExpectStateOfTheMenuBar();
}

TEST_F(ListMenu, DisablesEverythingWhileThePhoneIsAtWork) {
  const PhoneProcedure procedure(window_.frame(), u"Reading");
  RightClick(0);
  ASSERT_TRUE(MenuOpens());
  for (const QAction* action : Menu()->actions()) EXPECT_TRUE(action->isSeparator() || !action->isEnabled());
}

TEST_F(ListMenu, OpensInAnEmptyListToo) {
  window_.ShowFolder(1);
  list().Clear();
  QTest::keyClick(screen(), Qt::Key_Menu);
  ASSERT_TRUE(MenuOpens());
  ExpectStateOfTheMenuBar();
}

}  // namespace
}  // namespace celldesk
