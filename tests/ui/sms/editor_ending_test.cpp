#include <QWidget>

#include "ui/framework/menu_state.h"
#include "ui/sms/editor_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kBadNumber = "The number entered has invalid format.";
constexpr const char* kNoText =
    "You did not enter any text in your SMS message. Do you want to entrer more data?";
constexpr const char* kNoSpace = "There is no space for saving another SMS message on your mobile phone.";

TEST(SmsEditor, ANumberThatDoesNotParseKeepsTheDialogOpen) {
  EditorWindow window;
  window.New([&](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("123"));
    TypeText(dialog, editor::kBody, QStringLiteral("x"));
    for (const int command : {static_cast<int>(command::kSend), kIdOk}) {
      Give(dialog, command);
      EXPECT_TRUE(dialog.IsVisible());
      EXPECT_THAT(window.TakeAsked(), ElementsAre(kBadNumber));
      EXPECT_EQ(window.LastBox().icon, BoxIcon::kStop);
    }
  });
  EXPECT_EQ(window.outbox().list().RowCount(), 2);
}

TEST(SmsEditor, AnEmptyTextIsAskedAboutAndYesStays) {
  EditorWindow window;
  window.New([&](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    window.boxes.Answer(kAnswerYes);
    Give(dialog, command::kSend);
    EXPECT_TRUE(dialog.IsVisible());
    EXPECT_THAT(window.TakeAsked(), ElementsAre(kNoText));
    EXPECT_EQ(window.LastBox().icon, BoxIcon::kStop);
    EXPECT_EQ(window.LastBox().buttons, BoxButtons::kYesNo);
    const QWidget* body = ControlOf(dialog, QStringLiteral("control_1003"));
    EXPECT_EQ(body->window()->focusWidget(), body);
  });
  EXPECT_EQ(window.outbox().list().RowCount(), 2);
}

TEST(SmsEditor, AnEmptyTextIsAskedAboutOnceAndNoGoesOn) {
  EditorWindow window;
  window.New([&](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    window.boxes.Answer(kAnswerNo);
    Give(dialog, command::kSend);
    EXPECT_FALSE(dialog.IsVisible());
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kNoText));
  EXPECT_EQ(window.Last().text, u"");
  EXPECT_EQ(window.Last().flags, 27U);
}

TEST(SmsEditor, OkWithNothingInItClosesWithoutAWord) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    Give(dialog, kIdOk);
    EXPECT_FALSE(dialog.IsVisible());
  });
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_EQ(window.outbox().list().RowCount(), 2);
}

TEST(SmsEditor, SendWithNothingInItDoesNotClose) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    Give(dialog, command::kSend);
    EXPECT_TRUE(dialog.IsVisible());
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kBadNumber));
}

TEST(SmsEditor, CancelKeepsTheMessageAsItWas) {
  EditorWindow window;
  const SmsMessage before = window.outbox().MessageAt(0);
  window.Open(0, [](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QStringLiteral("!!"));
    ClickDialogButton(dialog, kIdCancel);
  });
  EXPECT_EQ(window.outbox().MessageAt(0).text, before.text);
  EXPECT_EQ(window.outbox().MessageAt(0).flags, before.flags);
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    PressKey(dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(window.outbox().list().RowCount(), 2);
}

TEST(SmsEditor, ANewMessageIsMarkedToBeSentHoweverTheDialogEnds) {
  EditorWindow window;
  window.Write(QStringLiteral("+4412345"), QStringLiteral("one"), kIdOk);
  EXPECT_EQ(window.Last().flags, 27U);
  window.Write(QStringLiteral("+4412345"), QStringLiteral("two"), command::kSend);
  EXPECT_EQ(window.Last().flags, 27U);
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("+4412345"));
    TypeText(dialog, editor::kBody, QStringLiteral("three"));
    PickChoice(dialog, editor::kSaveTo, 2);
    ClickDialogButton(dialog, command::kSave);
  });
  EXPECT_EQ(window.Last().flags, 155U);
  EXPECT_EQ(window.Last().memory, 1);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "one", "two", "three"));
  EXPECT_EQ(window.outbox().ItemFont(window.outbox().list().RecordAt(3)), FontRole::kItalic);
  EXPECT_EQ(window.outbox().ItemFont(window.outbox().list().RecordAt(4)), FontRole::kBoldItalic);
}

TEST(SmsEditor, ANewMessageIsASubmitWithEverythingThatWasChosen) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("+4412345"));
    TypeText(dialog, editor::kBody, QStringLiteral("Hi"));
    PickChoice(dialog, editor::kRelativeChoice, 0);
    ClickSwitch(dialog, editor::kReplyPath);
    ClickSwitch(dialog, editor::kReport);
    PressKey(dialog, Qt::Key_S, Qt::ControlModifier);
  });
  const SmsMessage& message = window.Last();
  EXPECT_EQ(message.storage_status, kStoredUnsent);
  EXPECT_EQ(message.first_octet, 0xB1U);
  EXPECT_EQ(message.submit.number, u"4412345");
  EXPECT_EQ(message.submit.relative_validity, 11);
  EXPECT_EQ(message.submit.reference, 8);  // the report's is 7
  EXPECT_EQ(message.memory, -1);
  EXPECT_EQ(Utf8(message.pdu_text), "B10807914421430500000B02C834");
}

TEST(SmsEditor, TheNewRowIsSelected) {
  EditorWindow window;
  window.Write(QStringLiteral("0123"), QStringLiteral("x"), command::kSend);
  EXPECT_THAT(window.outbox().list().SelectedRows(), ElementsAre(2));
}

TEST(SmsEditor, AMessageWrittenInTheInboxAppearsInTheOutbox) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kReply, [](Dialog& dialog) { Give(dialog, command::kSend); });
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
  EXPECT_THAT(window.inbox().list().SelectedRows(), ElementsAre(0));
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "Coffee at ten?"));
  window.ShowFolder(kInboxTab);
  window.InDialog(command::kReply, [](Dialog& dialog) { Give(dialog, command::kSend); });
  EXPECT_EQ(window.outbox().list().RowCount(), 4);
}

TEST(SmsEditor, ANewMessageTakesTheFirstFreeRecord) {
  EditorWindow window;
  window.Write(QStringLiteral("0123"), QStringLiteral("gone"), command::kSend);
  window.Write(QStringLiteral("0123"), QStringLiteral("stays"), command::kSend);
  window.Select(window.outbox(), {2});
  window.CommandAnswering(command::kDelete, kAnswerYes);
  window.Write(QStringLiteral("0123"), QStringLiteral("again"), command::kSend);
  EXPECT_EQ(window.messages().count(), 7);
  EXPECT_EQ(window.messages().At(5).text, u"again");
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "stays", "again"));
}

TEST(SmsEditor, EveryNewMessageGetsTheNextReference) {
  EditorWindow window;
  window.Write(QStringLiteral("0123"), QStringLiteral("one"), command::kSend);
  const int first = window.Last().submit.reference;
  window.Write(QStringLiteral("0123"), QStringLiteral("two"), command::kSend);
  EXPECT_EQ(window.Last().submit.reference, first + 1);
}

TEST(SmsEditor, SendAndSaveMarkAStoredMessage) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) {
    PickChoice(dialog, editor::kSaveTo, 0);
    Give(dialog, command::kSend);
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 27U);
  EXPECT_EQ(window.outbox().MessageAt(0).memory, -1);
  window.Open(0, [](Dialog& dialog) {
    PickChoice(dialog, editor::kSaveTo, 1);
    Give(dialog, command::kSend);
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 155U);
  window.Open(1, [](Dialog& dialog) {
    PickChoice(dialog, editor::kSaveTo, 2);
    PickMenuItem(dialog, command::kSave);
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 1), 147U);
  EXPECT_EQ(window.outbox().MessageAt(1).memory, 1);
  EXPECT_EQ(window.outbox().MessageAt(1).storage_status, kStoredUnsent);
}

TEST(SmsEditor, OkOnAStoredMessageChangesItButNotItsFlags) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QStringLiteral("!"));
    ClickDialogButton(dialog, kIdOk);
  });
  EXPECT_EQ(window.outbox().MessageAt(0).text, u"Train is late!");
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 1U);
  EXPECT_EQ(SmsWindow::Cell(window.outbox(), 0, 3), "Train is late!");
}

TEST(SmsEditor, StepsThroughTheOutboxAndDropsWhatWasNotSaved) {
  EditorWindow window;
  window.Open(0, [&](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QStringLiteral("!"));
    ClickBarButton(dialog, command::kNext);
    EXPECT_EQ(BodyOf(dialog), "Done");
    EXPECT_THAT(window.outbox().list().SelectedRows(), ElementsAre(1));
    Give(dialog, command::kNext);
    EXPECT_EQ(window.beeps(), 1);
    EXPECT_EQ(BodyOf(dialog), "Done");
    ClickBarButton(dialog, command::kPrevious);
    EXPECT_EQ(BodyOf(dialog), "Train is late");
    Give(dialog, command::kPrevious);
    EXPECT_EQ(window.beeps(), 2);
  });
}

TEST(SmsEditor, ANewMessageNeitherStepsNorDeletes) {
  EditorWindow window;
  window.Select(window.outbox(), {0});
  window.New([&](Dialog& dialog) {
    const MenuState menu = dialog.Surface().QueryState();
    for (const int command : {command::kNext, command::kPrevious, command::kDelete}) {
      EXPECT_FALSE(menu.IsEnabled(command));
      Give(dialog, command);
    }
    EXPECT_EQ(window.beeps(), 0);
    EXPECT_EQ(BodyOf(dialog), "");
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 1U);
}

TEST(SmsEditor, ARefusedDeleteMovesOnAndAnAcceptedOneShowsTheNext) {
  EditorWindow window;
  window.Write(QStringLiteral("0123"), QStringLiteral("new one"), command::kSend);
  window.Open(2, [&](Dialog& dialog) {
    window.boxes.Answer(kAnswerNo);
    Give(dialog, command::kDelete);
    EXPECT_EQ(BodyOf(dialog), "Done");
    Give(dialog, command::kNext);
    window.boxes.Answer(kAnswerYes);
    Give(dialog, command::kDelete);
    EXPECT_EQ(BodyOf(dialog), "Done");
    EXPECT_TRUE(dialog.IsVisible());
  });
  EXPECT_EQ(window.outbox().list().RowCount(), 2);
}

TEST(SmsEditor, ATextLongerThanAMessageIsShownWholeAndNotTaken) {
  EditorWindow window;
  window.outbox().MessageAt(0).text = std::u16string(200, u'a');
  window.Open(0, [&](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "200/160");
    Give(dialog, command::kSend);
    EXPECT_TRUE(dialog.IsVisible());
    EXPECT_THAT(window.TakeAsked(), ElementsAre("A message holds 160 characters at most."));
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 1U);
}

TEST(SmsEditor, LineEndsOfAnUntouchedTextStayAsTheyAre) {
  EditorWindow window;
  window.outbox().MessageAt(0).text = u"a\rb";
  window.Open(0, [&](Dialog& dialog) { Give(dialog, kIdOk); });
  EXPECT_EQ(window.outbox().MessageAt(0).text, u"a\rb");
}

TEST(SmsEditor, StaysOpenWhenThereIsNoRoomForAnotherRecord) {
  EditorWindow window;
  while (window.messages().count() < SmsStore::kLimit) {
    window.messages().At(window.messages().Append()).flags = kMessageInUse;
  }
  EXPECT_EQ(window.messages().FirstFree(), -1);
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    TypeText(dialog, editor::kBody, QStringLiteral("x"));
    Give(dialog, command::kSend);
    EXPECT_TRUE(dialog.IsVisible());
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kNoSpace));
  EXPECT_EQ(window.messages().count(), SmsStore::kLimit);
}

TEST(SmsEditor, SendSmsOfAnAddressBookOpensItOnTheFocusedEntry) {
  SmsWindow window;
  window.LoadNames();
  window.ShowFolder(kSimTab);
  window.sim().list().SetFocusedRow(1);
  window.Pump();
  EXPECT_TRUE(window.frame().Surface().QueryState().IsEnabled(command::kSendSms));
  window.InDialog(command::kSendSms, [](Dialog& dialog) {
    EXPECT_EQ(RecipientOf(dialog), "Ben");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "underlined");
    TypeText(dialog, editor::kBody, QStringLiteral("Hi"));
    Give(dialog, command::kSend);
  });
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(SmsWindow::Rows(window.outbox()), ElementsAre("|Ben|7 days|Hi"));
}

TEST(SmsEditor, SendSmsNeedsAnEntry) {
  SmsWindow window;
  window.ShowFolder(kSimTab);
  EXPECT_FALSE(window.frame().Surface().QueryState().IsEnabled(command::kSendSms));
}

TEST(SmsEditor, ThePressedKeysOfTheFrameDoNotReachThrough) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) {
    const MenuState menu = dialog.Surface().QueryState();
    EXPECT_FALSE(menu.IsEnabled(command::kSettings));
    Give(dialog, command::kNew);
    Give(dialog, command::kForward);
    EXPECT_EQ(BodyOf(dialog), "Train is late");
    EXPECT_TRUE(dialog.IsVisible());
  });
}

}  // namespace
}  // namespace celldesk
