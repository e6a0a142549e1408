#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include "config/settings_key.h"
#include "ui/framework/application.h"
#include "ui/framework/qt/native.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrameTest : public testing::Test {
 protected:
  FrameTest() { EXPECT_TRUE(session_.Start()); }
  MainFrame& frame() { return session_.frame(); }

  WindowSession session_;
};

TEST_F(FrameTest, OpensWithTheFirstFolderAndItsMenus) {
  EXPECT_EQ(Utf8(frame().Title()), "Corvane Cell Desk");
  EXPECT_EQ(frame().pages().Current(), 0);
  EXPECT_EQ(frame().Surface().menu(), 185);
  EXPECT_EQ(Application::Get()->current_view(), &session_.sim());
  EXPECT_EQ(Utf8(frame().StatusText()), "Not connected");
  EXPECT_TRUE(frame().IsVisible());
}

TEST(FrameStart, EndsTheProgramWhenTheWindowClassCannotBeRegistered) {
  class Unregistered : public CellDeskApplication {
   public:
    using CellDeskApplication::CellDeskApplication;
    bool RegisterWindowClass() override { return false; }
    int Run(const bool* go_on) override {
      ADD_FAILURE() << "it must not run";
      return CellDeskApplication::Run(go_on);
    }
  };
  WindowSession session;
  session.application.reset();
  int count = 1;
  char name[] = "celldesk";
  char* arguments[] = {name, nullptr};
  session.application = std::make_unique<Unregistered>(count, arguments, session.Machine());
  EXPECT_EQ(session.application->Main(u""), 0);
  EXPECT_EQ(session.application->frame(), nullptr);
  session.application.reset();
  session.application = std::make_unique<CellDeskApplication>(count, arguments, session.Machine());
}

void StoreSystemFont(FakeRegistry& registry, std::u16string_view face, std::uint32_t height) {
  SettingsKey key(registry);
  ASSERT_EQ(key.Create(RegistryRoot::kLocalMachine, u"SYSTEM\\GDI\\SYSFNT"), kErrorSuccess);
  ASSERT_EQ(key.Value(u"Nm").SetString(face), kErrorSuccess);
  ASSERT_EQ(key.Value(u"Ht").SetNumber(height), kErrorSuccess);
}

TEST(FrameStart, MakesItsFontsWithTheFaceAndHeightOfTheSystem) {
  WindowSession session;
  StoreSystemFont(session.registry, u"Some Face", static_cast<std::uint32_t>(-15));
  ASSERT_TRUE(session.Start());
  const QFont bold = FontOf(&session.frame().fonts(), FontRole::kBold, {});
  EXPECT_EQ(bold.family().toStdString(), "Some Face");
  EXPECT_EQ(bold.pixelSize(), 15);
  EXPECT_EQ(FontOf(&session.frame().fonts(), FontRole::kField, {}).pixelSize(), 18);
}

TEST(FrameStart, OpensWithAnySystemFontThatTheRegistryNames) {
  for (const std::uint32_t height : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    WindowSession session;
    StoreSystemFont(session.registry, std::u16string(500, u'x'), height);
    EXPECT_TRUE(session.Start()) << height;
  }
}

TEST_F(FrameTest, HasAnIconOfItsOwn) { EXPECT_FALSE(WidgetOf(&frame())->windowIcon().isNull()); }

TEST_F(FrameTest, PassesNothingOnToItselfAsTheCurrentView) {
  Application::Get()->set_current_view(&frame());
  session_.Command(command::kNew);
  frame().Dispatch(Message::kActivate, 1, 0);
  EXPECT_THAT(session_.TakeAsked(), IsEmpty());
  Application::Get()->set_current_view(&session_.sim());
}

TEST_F(FrameTest, ShowsTheMenusOfTheFolder) {
  std::vector<int> menus;
  for (const int folder : {1, 2, 3, 0}) {
    ClickTab(frame(), folder);
    menus.push_back(frame().Surface().menu());
    EXPECT_EQ(Application::Get()->current_view(), frame().pages().PageAt(folder));
  }
  EXPECT_THAT(menus, ElementsAre(185, 186, 196, 185));
}

TEST_F(FrameTest, KeepsNothingOfTheMenusItReplaced) {
  const QWidget* window = WidgetOf(&frame());
  const auto count = [&] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return window->findChildren<QMenu*>().size() + window->findChildren<QAction*>().size();
  };
  ClickTab(frame(), 2);
  ClickTab(frame(), 0);
  const auto before = count();
  for (int round = 0; round < 5; ++round) {
    ClickTab(frame(), 2);
    ClickTab(frame(), 0);
  }
  EXPECT_EQ(count(), before);
}

TEST_F(FrameTest, ShowsTheKeysInTheMenu) {
  auto* action = WidgetOf(&frame())->findChild<QAction*>(QStringLiteral("menu_2002"));
  ASSERT_NE(action, nullptr);
  EXPECT_EQ(action->text().toStdString(), "&New\tCtrl+N");
}

TEST_F(FrameTest, OpensTheHelpOnF1AndOnTheCommand) {
  PressKey(session_.sim().list(), Qt::Key_F1);
  session_.Command(command::kHelp);
  EXPECT_THAT(session_.shell.opened,
              ElementsAre(u"file:CellDesk.htm#main_contents", u"file:CellDesk.htm#main_contents"));
  EXPECT_THAT(session_.TakeAsked(), IsEmpty());
}

TEST_F(FrameTest, TellsThatThereIsNoHelpViewer) {
  session_.shell.works = false;
  session_.Command(command::kHelp);
  EXPECT_EQ(session_.TakeAsked().size(), 1u);
}

TEST_F(FrameTest, ShowsAboutUntilItIsClosed) {
  std::vector<std::string> texts;
  session_.InNextDialog([&](Dialog& dialog) {
    EXPECT_EQ(dialog.template_number(), 213);
    texts.push_back(Utf8(dialog.Text(1002)));
    texts.push_back(Utf8(dialog.Text(2)));
    ClickDialogButton(dialog, 2);
  });
  PickMenuItem(frame(), command::kAbout);
  EXPECT_THAT(texts, ElementsAre("Cell Desk v. 1.8", "&Close"));
  EXPECT_EQ(Application::Get()->current_view(), &session_.sim());
}

TEST_F(FrameTest, GivesTheFocusBackToTheListAfterADialog) {
  session_.InNextDialog([&](Dialog& dialog) { PressKey(dialog, Qt::Key_Escape); });
  session_.Command(command::kAbout);
  EXPECT_EQ(WidgetOf(&frame())->focusWidget()->objectName().toStdString(), "list_1000");
}

TEST_F(FrameTest, ComesForwardWhenAnotherStartAsks) {
  WidgetOf(&frame())->showMinimized();
  frame().Dispatch(Message::kShowYourself, 0, 0);
  EXPECT_FALSE(WidgetOf(&frame())->isMinimized());
  EXPECT_TRUE(frame().IsVisible());
}

TEST_F(FrameTest, ShowsTheToggleAsItIsEvenWhenConnectingFails) {
  session_.line.set_problem(OpenProblem::kInUse);
  ClickBarButton(frame(), command::kConnection);
  session_.Pump();
  auto* action = WidgetOf(&frame())->findChild<QAction*>(QStringLiteral("bar_2044"));
  EXPECT_FALSE(action->isChecked());
  session_.line.set_problem(OpenProblem::kNone);
  ClickBarButton(frame(), command::kConnection);
  session_.Pump();
  EXPECT_TRUE(frame().IsConnected());
  EXPECT_TRUE(action->isChecked());
}

TEST_F(FrameTest, PassesUnknownCommandsToTheFolderWhichIgnoresThem) {
  session_.Command(9999);
  session_.Command(command::kReply);
  EXPECT_THAT(session_.TakeAsked(), IsEmpty());
  EXPECT_TRUE(frame().IsAttached());
}

TEST_F(FrameTest, TakesItsAcceleratorsInAnyControlOfItsOwn) {
  int opened = 0;
  Dialog::SetModalHook([&](Dialog& dialog) {
    ++opened;
    dialog.EndDialog(kIdCancel);
  });
  PressKey(session_.sim().list(), Qt::Key_N, Qt::ControlModifier);
  QTest::keyClick(ControlOf(frame(), QStringLiteral("tabs_1")), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(opened, 2);
}

TEST_F(FrameTest, LeavesOtherKeysToTheDialogThatRuns) {
  std::string typed;
  session_.InNextDialog([&](Dialog& dialog) {
    auto* field = static_cast<QLineEdit*>(ControlOf(dialog, QStringLiteral("control_1001")));
    field->setText(QStringLiteral("abc"));
    // Keys of the table that mean something else in a field, or nothing.
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_P, Qt::Key_R})
      QTest::keyClick(field, key, Qt::ControlModifier);
    typed = field->text().toStdString();
    QTest::keyClick(field, Qt::Key_F1);
    dialog.EndDialog(kIdCancel);
  });
  session_.Command(command::kNew);
  EXPECT_EQ(typed, "abc");
  EXPECT_THAT(session_.shell.opened, ElementsAre(u"file:CellDesk.htm#main_contents"));
  EXPECT_THAT(session_.TakeAsked(), IsEmpty());
}

TEST_F(FrameTest, OpensAChoiceListInsteadOfGivingACommand) {
  session_.Command(command::kConnect);
  bool open = false;
  session_.InNextDialog([&](Dialog& dialog) {
    QWidget* combo = ControlOf(dialog, QStringLiteral("control_1003"));
    QTest::keyClick(combo, Qt::Key_Down, Qt::AltModifier);
    open = QApplication::activePopupWidget() != nullptr;
    if (open) QApplication::activePopupWidget()->close();
    dialog.EndDialog(kIdCancel);
  });
  session_.Command(command::kNew);
  EXPECT_TRUE(open);
}

TEST_F(FrameTest, GivesNoDisabledCommand) {
  EXPECT_FALSE(frame().Surface().QueryState().IsEnabled(command::kDelete));
  PressKey(session_.sim().list(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_THAT(session_.TakeAsked(), IsEmpty());
}

TEST_F(FrameTest, FitsTheSmallestScreen) {
  EXPECT_LE(WidgetOf(&frame())->minimumSizeHint().width(), 640);
  EXPECT_LE(WidgetOf(&frame())->minimumSizeHint().height(), 240);
}

}  // namespace
}  // namespace celldesk
