#include <QWidget>

#include "ui/framework/menu_state.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void Give(Dialog& dialog, int command) {
  dialog.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
}

std::string BodyOf(Dialog& dialog) { return TextOf(dialog, viewer::kBody); }

/// The Inbox loaded, its row `row` about to be opened.
class ViewerWindow : public SmsWindow {
 public:
  explicit ViewerWindow(int row) {
    LoadNames();
    Load();
    Select(inbox(), {row});
  }
  void Open(const Work& work) { InDialog(command::kOpen, work); }
};

TEST(SmsViewer, ShowsDateSenderTextAndCounter) {
  ViewerWindow window(0);
  window.Open([](Dialog& dialog) {
    EXPECT_EQ(dialog.template_number(), 202);
    EXPECT_EQ(TextOf(dialog, viewer::kDate), "4.1.2026 18:30:00");
    EXPECT_EQ(TextOf(dialog, viewer::kFrom), "Anna");
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
    EXPECT_EQ(TextOf(dialog, viewer::kCounter), "14/160");
  });
}

TEST(SmsViewer, OpensWideEnoughForItsFields) {
  ViewerWindow window(2);
  window.Open([](Dialog& dialog) {
    for (const int field : {viewer::kDate, viewer::kFrom, viewer::kCounter}) {
      const QWidget* label = ControlOf(dialog, QStringLiteral("control_%1").arg(field));
      EXPECT_GE(label->width(), label->sizeHint().width()) << field;
    }
  });
}

TEST(SmsViewer, ShowsTheSenderAsTheFolderDoes) {
  ViewerWindow window(0);
  window.Command(command::kShowNames);
  window.Open([](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, viewer::kFrom), "+447700900101"); });
}

TEST(SmsViewer, ShowsTheSentenceOfAReport) {
  ViewerWindow window(2);
  window.Open([](Dialog& dialog) {
    EXPECT_THAT(BodyOf(dialog), testing::StartsWith("Message delivery SUCCESS, status(0x0,"));
    EXPECT_EQ(TextOf(dialog, viewer::kCounter), std::to_string(BodyOf(dialog).size()) + "/160");
  });
}

TEST(SmsViewer, TheTextCannotBeChanged) {
  ViewerWindow window(0);
  window.Open([](Dialog& dialog) {
    TypeText(dialog, viewer::kBody, QStringLiteral("x"));
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
  });
}

TEST(SmsViewer, ShowingAMessageMarksItOpened) {
  ViewerWindow window(0);
  window.Open([&](Dialog& dialog) {
    EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 0x21U);
    Give(dialog, command::kNext);
    EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 1U);
  });
}

TEST(SmsViewer, NextAndPreviousMoveTheListsSelection) {
  ViewerWindow window(0);
  window.Open([&](Dialog& dialog) {
    PickMenuItem(dialog, command::kNext);
    EXPECT_EQ(BodyOf(dialog), "Who are you?");
    EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(1));
    EXPECT_EQ(window.inbox().list().FocusedRow(), 1);
    ClickBarButton(dialog, command::kPrevious);
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
    EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(0));
    EXPECT_EQ(window.beeps(), 0);
  });
}

TEST(SmsViewer, AltAndArrowsStepThroughTheList) {
  ViewerWindow window(0);
  window.Open([&](Dialog& dialog) {
    PressKey(dialog, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(BodyOf(dialog), "Who are you?");
    PressKey(dialog, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
  });
}

TEST(SmsViewer, NextOnTheLastMessageBeepsAndStays) {
  ViewerWindow window(2);
  window.Open([&](Dialog& dialog) {
    const std::string body = BodyOf(dialog);
    Give(dialog, command::kNext);
    EXPECT_EQ(window.beeps(), 1);
    EXPECT_EQ(BodyOf(dialog), body);
    EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(2));
  });
}

TEST(SmsViewer, PreviousOnTheFirstMessageBeepsAndStays) {
  ViewerWindow window(0);
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kPrevious);
    EXPECT_EQ(window.beeps(), 1);
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
  });
}

TEST(SmsViewer, ShowsTheFirstOfSeveralAndLeavesOnlyItSelected) {
  ViewerWindow window(0);
  window.Select(window.inbox(), {1, 2});
  window.Open([&](Dialog& dialog) {
    EXPECT_EQ(BodyOf(dialog), "Who are you?");
    EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(1));
  });
}

TEST(SmsViewer, DeleteMarksTheMessageStrikesItOutAndUnmarksItAgain) {
  ViewerWindow window(0);
  window.Open([&](Dialog& dialog) {
    for (const int field : {viewer::kDate, viewer::kFrom, viewer::kBody})
      EXPECT_EQ(FontName(dialog, field), "plain");
    ClickBarButton(dialog, command::kDelete);
    EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
    for (const int field : {viewer::kDate, viewer::kFrom, viewer::kBody})
      EXPECT_EQ(FontName(dialog, field), "struck");
    EXPECT_EQ(BodyOf(dialog), "Coffee at ten?");
    PressKey(dialog, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 3U);
    EXPECT_EQ(FontName(dialog, viewer::kBody), "plain");
  });
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsViewer, ARefusedDeleteMovesOnToTheNextMessage) {
  ViewerWindow window(0);
  window.inbox().MessageAt(0).flags |= kMessageNew;
  window.boxes.Answer(kAnswerNo);
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kDelete);
    EXPECT_EQ(BodyOf(dialog), "Who are you?");
    EXPECT_TRUE(dialog.IsVisible());
  });
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
}

TEST(SmsViewer, ARefusedDeleteOfTheLastMovesBack) {
  ViewerWindow window(2);
  window.inbox().MessageAt(2).flags |= kMessageNew;
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kDelete);
    EXPECT_EQ(BodyOf(dialog), "Who are you?");
    EXPECT_EQ(window.beeps(), 0);
  });
}

TEST(SmsViewer, ARefusedDeleteOfTheOnlyMessageCloses) {
  ViewerWindow window(0);
  window.inbox().list().RemoveRow(2);
  window.inbox().list().RemoveRow(1);
  window.inbox().MessageAt(0).flags |= kMessageNew;
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kDelete);
    EXPECT_FALSE(dialog.IsVisible());
  });
  EXPECT_EQ(window.inbox().list().RowCount(), 1);
}

TEST(SmsViewer, ANewMessageThatIsDeletedMakesRoomForTheOneBehindIt) {
  ViewerWindow window(1);
  window.inbox().MessageAt(1).flags |= kMessageNew;
  window.boxes.Answer(kAnswerYes);
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kDelete);
    EXPECT_EQ(window.inbox().list().RowCount(), 2);
    EXPECT_THAT(BodyOf(dialog), testing::StartsWith("Message delivery SUCCESS"));
    EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(1));
  });
}

TEST(SmsViewer, ClosesWhenTheLastNewMessageIsDeleted) {
  ViewerWindow window(0);
  for (int row = 0; row < 3; ++row) window.inbox().MessageAt(row).flags |= kMessageNew;
  for (int i = 0; i < 3; ++i) window.boxes.Answer(kAnswerYes);
  window.Open([&](Dialog& dialog) {
    for (int i = 0; i < 3; ++i) Give(dialog, command::kDelete);
    EXPECT_FALSE(dialog.IsVisible());
  });
  EXPECT_EQ(window.inbox().list().RowCount(), 0);
}

TEST(SmsViewer, EndsWithOkAndCancelWithoutMore) {
  ViewerWindow window(0);
  window.Open([](Dialog& dialog) { ClickDialogButton(dialog, kIdOk); });
  window.Open([](Dialog& dialog) { PressKey(dialog, Qt::Key_Escape); });
  EXPECT_FALSE(window.messages().IsChanged());
}

TEST(SmsViewer, ReplyEndsTheViewerAndOpensTheEditor) {
  ViewerWindow window(0);
  bool replied = false;
  window.Open([&](Dialog& dialog) {
    window.InNextDialog([&](Dialog& next) {
      replied = true;
      EXPECT_EQ(next.template_number(), 204);
      EXPECT_EQ(TextOf(next, editor::kRecipient), "Anna");
      next.EndDialog(kIdCancel);
    });
    PickMenuItem(dialog, command::kReply);
  });
  EXPECT_TRUE(replied);
}

TEST(SmsViewer, ForwardTakesTheMessageThatIsShown) {
  ViewerWindow window(0);
  bool forwarded = false;
  window.Open([&](Dialog& dialog) {
    Give(dialog, command::kNext);
    window.InNextDialog([&](Dialog& next) {
      forwarded = true;
      EXPECT_EQ(TextOf(next, editor::kBody), "Who are you?");
      EXPECT_EQ(TextOf(next, editor::kRecipient), "");
      next.EndDialog(kIdCancel);
    });
    PressKey(dialog, Qt::Key_F, Qt::ControlModifier);
  });
  EXPECT_TRUE(forwarded);
}

TEST(SmsViewer, TheSettingsWaitUntilItIsClosed) {
  ViewerWindow window(0);
  window.Open([](Dialog& dialog) {
    EXPECT_FALSE(dialog.Surface().QueryState().IsEnabled(command::kSettings));
    EXPECT_TRUE(dialog.Surface().QueryState().IsEnabled(command::kReply));
  });
}

TEST(SmsViewer, AFieldLongerThanItsPlaceIsCutAndNotTheDialogWidened) {
  SmsWindow window(PhoneWith({{1, "+447700900101", std::u16string(60, u'W')}}));
  Put(window.phone().memory(), "SM", 1, ReceivedMessage("+447700900101", "26/01/04,18:30:00+00", u"Hi"));
  window.LoadNames();
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kOpen, [](Dialog& dialog) {
    EXPECT_EQ(dialog.Text(viewer::kFrom).size(), 60U);
    EXPECT_LE(ControlOf(dialog, QStringLiteral("control_1002"))->window()->width(), 640);
  });
}

}  // namespace
}  // namespace celldesk
