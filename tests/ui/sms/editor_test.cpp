#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QTest>

#include "config/settings_store.h"
#include "ui/framework/menu_state.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kBadNumber = "The number entered has invalid format.";
constexpr const char* kNoText =
    "You did not enter any text in your SMS message. Do you want to entrer more data?";

void Give(Dialog& dialog, int command) {
  dialog.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
}

std::string BodyOf(Dialog& dialog) { return TextOf(dialog, editor::kBody); }
std::string RecipientOf(Dialog& dialog) { return TextOf(dialog, editor::kRecipient); }

std::string ChosenText(Dialog& dialog, int id) {
  return Utf8(dialog.ChoiceText(id, dialog.SelectedChoice(id)));
}

/// The Outbox loaded.
class EditorWindow : public SmsWindow {
 public:
  explicit EditorWindow(simulator::PhoneMemory memory = PhoneWithMessages(), simulator::Profile profile = {})
      : SmsWindow(std::move(memory), std::move(profile)) {
    LoadNames();
    Load();
    ShowFolder(kOutboxTab);
    TakePhoneLines();
  }
  void Open(int row, const Work& work) {
    Select(outbox(), {row});
    InDialog(command::kOpen, work);
  }
  void New(const Work& work) { InDialog(command::kNew, work); }
  /// A new message with these contents, ended by `command`.
  void Write(const QString& number, const QString& text, int command) {
    New([&](Dialog& dialog) {
      TypeText(dialog, editor::kRecipient, number);
      TypeText(dialog, editor::kBody, text);
      Give(dialog, command);
    });
  }
  SmsMessage& Last() { return outbox().MessageAt(outbox().list().RowCount() - 1); }
};

simulator::PhoneMemory PhoneWithOutgoing(const std::vector<simulator::StoredMessage>& sim,
                                         const std::vector<simulator::StoredMessage>& phone = {}) {
  simulator::PhoneMemory memory = PhoneWith({{1, "+447700900101", u"Anna"}});
  int index = 0;
  for (const auto& message : sim) Put(memory, "SM", ++index, message);
  index = 0;
  for (const auto& message : phone) Put(memory, "ME", ++index, message);
  return memory;
}

TEST(SmsEditor, ShowsAStoredMessage) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) {
    EXPECT_EQ(dialog.template_number(), 204);
    EXPECT_EQ(RecipientOf(dialog), "Ben");
    EXPECT_EQ(BodyOf(dialog), "Train is late");
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "13/160");
    EXPECT_TRUE(dialog.IsChecked(editor::kRelative));
    EXPECT_EQ(ChosenText(dialog, editor::kRelativeChoice), "1 day");
    EXPECT_FALSE(dialog.IsChecked(editor::kReplyPath));
    EXPECT_FALSE(dialog.IsChecked(editor::kReport));
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "SIM memory");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "underlined");
  });
}

TEST(SmsEditor, ShowsANumberWithoutNameInThePlainFont) {
  EditorWindow window;
  window.Open(1, [](Dialog& dialog) {
    EXPECT_EQ(RecipientOf(dialog), "0123");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "plain");
    EXPECT_TRUE(dialog.IsChecked(editor::kNoValidity));
  });
}

TEST(SmsEditor, ShowsReportRequestAndReplyPath) {
  EditorWindow window(PhoneWithOutgoing(
      {OutgoingMessage("0123", u"a", false, 0x31), OutgoingMessage("0123", u"b", false, 0x91)}));
  window.Open(0, [](Dialog& dialog) {
    EXPECT_TRUE(dialog.IsChecked(editor::kReport));
    EXPECT_FALSE(dialog.IsChecked(editor::kReplyPath));
    Give(dialog, command::kNext);
    EXPECT_FALSE(dialog.IsChecked(editor::kReport));
    EXPECT_TRUE(dialog.IsChecked(editor::kReplyPath));
  });
}

TEST(SmsEditor, ShowsTheNearestPreset) {
  const auto with = [](const char* validity) { return OutgoingMessage("0123", u"a", false, 0x11, validity); };
  EditorWindow window(PhoneWithOutgoing({with("\x64"), with("\x0C"), with("\xAA"), with("\x4D")}));
  window.Open(0, [](Dialog& dialog) {
    std::vector<std::string> shown;
    for (int i = 0; i < 4; ++i) {
      shown.push_back(ChosenText(dialog, editor::kRelativeChoice));
      Give(dialog, command::kNext);
    }
    EXPECT_THAT(shown, ElementsAre("12 hours", "1 hour", "1 week", "12 hours"));
  });
}

TEST(SmsEditor, OffersTheFivePresets) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    std::vector<std::string> texts;
    for (int i = 0; i < dialog.ChoiceCount(editor::kRelativeChoice); ++i)
      texts.push_back(Utf8(dialog.ChoiceText(editor::kRelativeChoice, i)));
    EXPECT_THAT(texts, ElementsAre("1 hour", "12 hours", "1 day", "1 week", "Maximum"));
  });
}

TEST(SmsEditor, ShowsAnAbsoluteTimeAndKeepsItWhenNobodyTouchesIt) {
  EditorWindow window(PhoneWithOutgoing(
      {OutgoingMessage("0123", u"a", false, 0x19, std::string("\x62\x10\x50\x81\x03\x54\x00", 7))}));
  window.Open(0, [&](Dialog& dialog) {
    EXPECT_TRUE(dialog.IsChecked(editor::kAbsolute));
    EXPECT_EQ(dialog.Date(editor::kAbsoluteTime), (CalendarTime{2026, 1, 1, 5, 18, 30, 45, 0}));
    Give(dialog, kIdOk);
  });
  const SmsMessage& message = window.outbox().MessageAt(0);
  EXPECT_EQ(message.first_octet & 0x18, 0x18U);
  EXPECT_EQ(message.submit.absolute_validity.fields, (CalendarTime{2026, 1, 0, 5, 18, 30, 45, 0}));
}

TEST(SmsEditor, AnImpossibleAbsoluteTimeIsKeptUntilItIsChanged) {
  EditorWindow window(PhoneWithOutgoing(
      {OutgoingMessage("0123", u"a", false, 0x19, std::string("\x62\x51\x50\x81\x03\x54\x00", 7))}));
  window.Open(0, [&](Dialog& dialog) { Give(dialog, kIdOk); });
  EXPECT_EQ(window.outbox().MessageAt(0).submit.absolute_validity.fields.month, 15);
  window.Open(0, [&](Dialog& dialog) {
    dialog.SetDate(editor::kAbsoluteTime, {2027, 6, 0, 7, 8, 9, 10, 0});
    Give(dialog, kIdOk);
  });
  EXPECT_EQ(window.outbox().MessageAt(0).submit.absolute_validity.fields,
            (CalendarTime{2027, 6, 1, 7, 8, 9, 10, 0}));
}

TEST(SmsEditor, TheValidityChosenEnablesItsField) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    const auto enabled = [&] {
      return std::pair(dialog.IsEnabled(editor::kRelativeChoice), dialog.IsEnabled(editor::kAbsoluteTime));
    };
    EXPECT_EQ(enabled(), std::pair(true, false));
    ClickSwitch(dialog, editor::kAbsolute);
    EXPECT_EQ(enabled(), std::pair(false, true));
    ClickSwitch(dialog, editor::kNoValidity);
    EXPECT_EQ(enabled(), std::pair(false, false));
    ClickSwitch(dialog, editor::kRelative);
    EXPECT_EQ(enabled(), std::pair(true, false));
  });
}

TEST(SmsEditor, ANewMessageStartsWithTheSendingSettings) {
  SmsWindow window;
  window.inbox().sms().SetOptions(true, true, false, 11);
  window.InDialog(command::kNew, [](Dialog& dialog) {
    EXPECT_TRUE(dialog.IsChecked(editor::kReport));
    EXPECT_TRUE(dialog.IsChecked(editor::kReplyPath));
    EXPECT_EQ(ChosenText(dialog, editor::kRelativeChoice), "1 hour");
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "<do not save>");
    EXPECT_EQ(dialog.Date(editor::kAbsoluteTime), (CalendarTime{2003, 3, 4, 6, 9, 5, 0, 0}));
  });
}

TEST(SmsEditor, KnowsTheSendingSettingsBeforeTheFirstConnection) {
  WindowSession session;
  Settings settings;
  settings.centre = u"+447700900000";
  settings.delivery_report = true;
  settings.validity = 255;
  SettingsStore(session.registry).Save(settings);
  ASSERT_TRUE(session.Start());
  session.ShowFolder(kOutboxTab);
  bool opened = false;
  session.InNextDialog([&](Dialog& dialog) {
    opened = true;
    EXPECT_TRUE(dialog.IsChecked(editor::kReport));
    EXPECT_EQ(ChosenText(dialog, editor::kRelativeChoice), "Maximum");
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "<not supported>");
    dialog.EndDialog(kIdCancel);
  });
  session.Command(command::kNew);
  EXPECT_TRUE(opened);
}

std::vector<std::string> SaveToTexts(Dialog& dialog) {
  std::vector<std::string> texts;
  for (int i = 0; i < dialog.ChoiceCount(editor::kSaveTo); ++i)
    texts.push_back(Utf8(dialog.ChoiceText(editor::kSaveTo, i)));
  return texts;
}

TEST(SmsEditor, OffersTheMemoriesThatThePhoneOffers) {
  const auto offered = [](std::string_view profile) {
    SmsWindow window(PhoneWithMessages(), *simulator::MakeProfile(profile));
    std::vector<std::string> texts;
    window.InDialog(command::kNew, [&](Dialog& dialog) { texts = SaveToTexts(dialog); });
    return texts;
  };
  EXPECT_THAT(offered("default"), ElementsAre("<do not save>", "SIM memory", "Phone memory"));
  EXPECT_THAT(offered("no-me"), ElementsAre("<do not save>", "SIM memory"));
  EXPECT_THAT(offered("no-store"), ElementsAre("<not supported>"));
  EXPECT_THAT(offered("empty-lists"), ElementsAre("<not supported>"));
}

TEST(SmsEditor, SavesToThePhoneWhenThatIsAllThereIs) {
  simulator::Profile profile;
  profile.replies["AT+CPMS=?"] = {R"(+CPMS: ("ME"),("ME"),("ME"))"};
  SmsWindow window({}, profile);
  window.ShowFolder(kOutboxTab);
  window.InDialog(command::kNew, [](Dialog& dialog) {
    ASSERT_THAT(SaveToTexts(dialog), ElementsAre("<do not save>", "Phone memory"));
    PickChoice(dialog, editor::kSaveTo, 1);
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    TypeText(dialog, editor::kBody, QStringLiteral("Hi"));
    Give(dialog, command::kSave);
  });
  EXPECT_EQ(window.messages().At(0).memory, 1);
}

TEST(SmsEditor, AMessageInMemoryOneKeepsTheSaveToChoiceThatTheDialogHadBefore) {
  EditorWindow window;
  window.Open(0, [&](Dialog& dialog) {
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "SIM memory");
    Give(dialog, command::kNext);
    EXPECT_EQ(window.outbox().MessageAt(1).memory, 1);
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "SIM memory");
  });
  window.Open(1, [](Dialog& dialog) { EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "<do not save>"); });
}

TEST(SmsEditor, SaveIsEnabledOnlyWhenAMemoryIsChosen) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled(command::kSave));
    EXPECT_FALSE(dialog.Surface().QueryState().IsEnabled(command::kSave));
    PickChoice(dialog, editor::kSaveTo, 2);
    EXPECT_TRUE(dialog.IsEnabled(command::kSave));
    EXPECT_TRUE(dialog.Surface().QueryState().IsEnabled(command::kSave));
    PickChoice(dialog, editor::kSaveTo, 0);
    EXPECT_FALSE(dialog.IsEnabled(command::kSave));
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    TypeText(dialog, editor::kBody, QStringLiteral("x"));
    Give(dialog, command::kSave);
    EXPECT_TRUE(dialog.IsVisible());
  });
}

TEST(SmsEditor, CountsTheCharactersOfTheText) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "0/160");
    TypeText(dialog, editor::kBody, QStringLiteral("abc"));
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "3/160");
    PressKey(dialog, Qt::Key_Backspace);
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "2/160");
  });
}

TEST(SmsEditor, TakesOneHundredAndSixtyCharactersAndNoFurther) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QString(160, u'a'));
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "160/160");
    TypeText(dialog, editor::kBody, QStringLiteral("b"));
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "160/160");
    EXPECT_EQ(BodyOf(dialog), std::string(160, 'a'));
  });
}

TEST(SmsEditor, ACharacterTypedIntoAFullTextDoesNotPushOutAnother) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QString(159, u'a') + u'z');
    PressKey(dialog, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(ControlOf(dialog, QStringLiteral("control_1003")), 'b');
    EXPECT_EQ(BodyOf(dialog), std::string(159, 'a') + "z");
  });
}

TEST(SmsEditor, APastedTextIsCutAtTheLimit) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QString(150, u'a'));
    QApplication::clipboard()->setText(QString(30, u'b'));
    PressKey(dialog, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(BodyOf(dialog), std::string(150, 'a') + std::string(10, 'b'));
    EXPECT_EQ(TextOf(dialog, editor::kCounter), "160/160");
  });
}

TEST(SmsEditor, APastedPairOfUnitsIsNotCutInTwo) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QString(159, u'a'));
    QApplication::clipboard()->setText(QString::fromUcs4(U"\U0001F600"));
    PressKey(dialog, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(BodyOf(dialog), std::string(159, 'a'));
  });
}

TEST(SmsEditor, AQuietLineShowsWhatArrives) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QStringLiteral("Price "));
    EXPECT_EQ(TextOf(dialog, editor::kReading), "");
    TypeText(dialog, editor::kBody, QString(u'\u20AC'));
    EXPECT_EQ(TextOf(dialog, editor::kReading), "Arrives as: Price ,");
    PressKey(dialog, Qt::Key_Backspace);
    EXPECT_EQ(TextOf(dialog, editor::kReading), "");
  });
}

TEST(SmsEditor, TheTextIsKeptAsTyped) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    TypeText(dialog, editor::kBody, QString(u'\u20AC'));
    Give(dialog, command::kSend);
  });
  EXPECT_EQ(window.Last().text, u"\u20AC");
}

TEST(SmsEditor, TypingIntoTheRecipientDropsTheName) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) {
    TypeInto(dialog, editor::kRecipient, QStringLiteral("0999"));
    EXPECT_EQ(RecipientOf(dialog), "0999");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "plain");
    Give(dialog, kIdOk);
  });
  EXPECT_EQ(window.outbox().MessageAt(0).submit.number, u"0999");
}

TEST(SmsEditor, TheRecipientTakesTelephoneCharactersOnly) {
  EditorWindow window;
  window.New([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("+44 x7700a"));
    EXPECT_EQ(RecipientOf(dialog), "+447700");
  });
}

TEST(SmsEditor, ANameLeftAloneStandsForItsNumber) {
  EditorWindow window;
  window.Open(0, [](Dialog& dialog) { Give(dialog, kIdOk); });
  EXPECT_EQ(window.outbox().MessageAt(0).submit.number, u"447700900102");
  EXPECT_EQ(window.outbox().MessageAt(0).submit.toa, 0x91);
}

TEST(SmsEditor, AMarkedMessageIsStruckOut) {
  EditorWindow window;
  window.Open(0, [&](Dialog& dialog) {
    ClickBarButton(dialog, command::kDelete);
    EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 7U);
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "struck");
    TypeInto(dialog, editor::kRecipient, QStringLiteral("09"));
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "struck");
    Give(dialog, command::kDelete);
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "underlined");
  });
}

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
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
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
