#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "config/settings_store.h"
#include "ui/framework/menu_state.h"
#include "ui/sms/editor_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

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

TEST(SmsEditor, AMessageOfAMemoryThatIsNotOfferedIsNotSaved) {
  simulator::Profile profile;
  profile.replies["AT+CPMS=?"] = {R"(+CPMS: ("SM"),("ME"),("SM"))"};
  EditorWindow window(PhoneWithMessages(), profile);
  window.Open(0, [](Dialog& dialog) {
    EXPECT_EQ(ChosenText(dialog, editor::kSaveTo), "<do not save>");
    EXPECT_FALSE(dialog.IsEnabled(command::kSave));
    Give(dialog, command::kSend);
  });
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 27U);
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

}  // namespace
}  // namespace celldesk
