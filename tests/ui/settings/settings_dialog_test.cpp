#include <QTabBar>

#include "ui/framework/qt/native.h"
#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

std::vector<std::string> TabLabels(const Dialog& dialog) {
  std::vector<std::string> labels;
  const auto* tabs = dynamic_cast<QTabBar*>(ControlOf(dialog, QStringLiteral("tabs_1000")));
  for (int i = 0; tabs != nullptr && i < tabs->count(); ++i) labels.push_back(tabs->tabText(i).toStdString());
  return labels;
}

// A change on every page.
void ChangeEveryPage(SettingsDialog& dialog) {
  Pick(dialog.general(), GeneralPage::kPort, "Modem board");
  ClickSwitch(dialog.general(), GeneralPage::kAdapter);
  PickOperator(dialog, "Australia", "Telstra");
  ClickTab(dialog, kSmsTab);
  ClickSwitch(dialog.sms(), SmsPage::kDeliveryReport);
  ClickSwitch(dialog.sms(), SmsPage::kReplyPath);
  Pick(dialog.sms(), SmsPage::kValidity, "1 day");
}

Settings ChangedSettings() {
  return {u"COM2:", true, u"+61418706700", u"Telstra", u"Australia", true, true, 167};
}

TEST(SettingsDialog, HasThreePagesAndShowsTheFirst) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Title()), "Settings");
    EXPECT_THAT(TabLabels(dialog), ElementsAre("General", "Operator", "Sms"));
    EXPECT_EQ(dialog.pages().CurrentPage(), &dialog.general());
    ClickTab(dialog, kSmsTab);
    EXPECT_EQ(dialog.pages().CurrentPage(), &dialog.sms());
  });
}

TEST(SettingsDialog, SavesEveryPageOnOk) {
  SettingsWindow window;
  window.EditAndConfirm(ChangeEveryPage);
  EXPECT_EQ(window.Stored(), ChangedSettings());
}

// Of a value that both change the later OK counts.
TEST(SettingsDialog, KeepsWhatAnotherWindowStoresWhileItIsOpen) {
  SettingsWindow window;
  window.Store(Settings());
  window.EditAndConfirm([&](SettingsDialog& dialog) {
    Settings others = ChangedSettings();
    others.reply_path = false;
    window.Store(others);
    ClickTab(dialog, kSmsTab);
    ClickSwitch(dialog.sms(), SmsPage::kReplyPath);
    ClickSwitch(dialog.sms(), SmsPage::kDeliveryReport);
    ClickSwitch(dialog.sms(), SmsPage::kDeliveryReport);
  });
  EXPECT_EQ(window.Stored(), ChangedSettings());
  EXPECT_EQ(window.frame().settings(), ChangedSettings()) << "and works with it";
}

TEST(SettingsDialog, LoadsEveryPageWhenItOpens) {
  SettingsWindow window;
  window.Store(ChangedSettings());
  window.Look([](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Modem board");
    EXPECT_TRUE(dialog.general().IsChecked(GeneralPage::kAdapter));
    EXPECT_EQ(TextOf(dialog.operators(), OperatorPage::kCentre), "+61418706700");
    EXPECT_TRUE(dialog.sms().IsChecked(SmsPage::kDeliveryReport));
    EXPECT_EQ(TextOf(dialog.sms(), SmsPage::kValidity), "1 day");
  });
}

TEST(SettingsDialog, SavesNothingOnCancel) {
  SettingsWindow window;
  const Settings before = window.Stored();
  window.EditAndCancel(ChangeEveryPage);
  EXPECT_EQ(window.Stored(), before);
}

TEST(SettingsDialog, SavesNothingOnEscape) {
  SettingsWindow window;
  const Settings before = window.Stored();
  window.InNextDialog([](Dialog& dialog) {
    ChangeEveryPage(dynamic_cast<SettingsDialog&>(dialog));
    PressKey(dialog, Qt::Key_Escape);
  });
  window.Command(command::kSettings);
  EXPECT_EQ(window.Stored(), before);
}

TEST(SettingsDialog, SavesOnEnterInAField) {
  SettingsWindow window;
  window.InNextDialog([](Dialog& dialog) {
    auto& settings = dynamic_cast<SettingsDialog&>(dialog);
    ClickTab(settings, kOperatorTab);
    settings.operators().FocusControl(OperatorPage::kCentre);
    TypeIntoList(settings.operators(), OperatorPage::kCentre, QStringLiteral("+4915550000"));
    PressKey(settings, Qt::Key_Return);
  });
  window.Command(command::kSettings);
  EXPECT_EQ(Utf8(window.Stored().centre), "+4915550000");
}

// Two values are the first page's, three the second's.
TEST(SettingsDialog, SavesThePagesInTheirOrder) {
  Settings first = ChangedSettings();
  const Settings defaults;
  first.delivery_report = first.reply_path = false;
  first.validity = defaults.validity;
  SettingsWindow window;
  window.registry.FailWritesAfter(5);
  window.EditAndConfirm(ChangeEveryPage);
  EXPECT_EQ(window.Stored(), first);
}

TEST(SettingsDialog, RunsOnWithWhatTheRegistryDoesNotTake) {
  SettingsWindow window;
  window.registry.FailAllWrites();
  window.EditAndConfirm(ChangeEveryPage);
  EXPECT_THAT(window.TakeAsked(), testing::IsEmpty());
  EXPECT_EQ(window.frame().settings(), ChangedSettings());
}

TEST(SettingsDialog, ShowsTheDefaultsWithoutAnyKey) {
  SettingsWindow window;
  ASSERT_EQ(window.registry.Delete(RegistryRoot::kCurrentUser, kSettingsPath), kErrorSuccess);
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Data cable");
    EXPECT_FALSE(dialog.general().IsChecked(GeneralPage::kAdapter));
    EXPECT_EQ(TextOf(dialog.operators(), OperatorPage::kCountry), "");
    EXPECT_EQ(TextOf(dialog.operators(), OperatorPage::kOperator), "");
    EXPECT_EQ(TextOf(dialog.operators(), OperatorPage::kCentre), "");
    EXPECT_FALSE(dialog.sms().IsChecked(SmsPage::kDeliveryReport));
    EXPECT_FALSE(dialog.sms().IsChecked(SmsPage::kReplyPath));
    EXPECT_EQ(TextOf(dialog.sms(), SmsPage::kValidity), "5 weeks");
  });
  EXPECT_EQ(Utf8(window.registry.StringAt(u"Port").value_or(u"")), "COM1:");
  EXPECT_EQ(window.registry.NumberAt(u"Validity"), 197U);
}

TEST(SettingsDialog, ShowsTheDefaultsWhereTheValuesAreGarbage) {
  SettingsWindow window;
  window.registry.PutString(u"Port", u"COM1234567890:");
  window.registry.PutString(u"DI27", u"yes");
  window.registry.PutNumber(u"SMSC", 447700);
  window.registry.PutBinary(u"Operator", std::vector<std::uint8_t>{1, 2, 3});
  window.registry.PutString(u"Country", std::u16string(600, u'x'));
  window.registry.PutBinary(u"DeliveryReport", std::vector<std::uint8_t>{1});
  window.registry.PutString(u"ReplyPath", u"");
  window.registry.PutBinary(u"Validity", std::vector<std::uint8_t>{11, 0, 0, 0});
  window.registry.PutBinary(u"COM1:", std::vector<std::uint8_t>(300, 0xAA));
  window.EditAndConfirm([&](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Data cable");
    window.EditPort(dialog, [](PortDialog& port) { EXPECT_EQ(TextOf(port, PortDialog::kSpeed), "9600"); });
  });
  EXPECT_EQ(window.Stored(), Settings());
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), LineParameters());
}

TEST(SettingsDialog, PagesTakeTheKeyThatTheMessageBrings) {
  SettingsWindow window;
  window.registry.PutString(u"Country", u"Belgium", u"\\Software\\Elsewhere");
  window.Look([&](SettingsDialog& dialog) {
    SettingsKey key(window.registry);
    ASSERT_EQ(key.Open(RegistryRoot::kCurrentUser, u"\\Software\\Elsewhere"), kErrorSuccess);
    const auto parameter = reinterpret_cast<LongParameter>(&key);
    EXPECT_NE(dialog.operators().Dispatch(Message::kLoadSettings, 0, parameter), 0);
    EXPECT_EQ(TextOf(dialog.operators(), OperatorPage::kCountry), "Belgium");
    EXPECT_NE(dialog.sms().Dispatch(Message::kSaveSettings, 0, parameter), 0);
  });
  EXPECT_EQ(window.registry.NumberAt(u"Validity", u"\\Software\\Elsewhere"), 197U);
  EXPECT_EQ(window.registry.StringAt(u"Port", u"\\Software\\Elsewhere"), std::nullopt);
}

TEST(SettingsDialog, IsTheCurrentViewAgainAfterThePortDialog) {
  SettingsWindow window;
  Application& application = *window.application;
  Window* folder = application.current_view();
  window.Look([&](SettingsDialog& dialog) {
    EXPECT_EQ(application.current_view(), &dialog);
    window.EditPort(dialog, [&](PortDialog& port) { EXPECT_EQ(application.current_view(), &port); });
    EXPECT_EQ(application.current_view(), &dialog);
  });
  EXPECT_EQ(application.current_view(), folder);
}

TEST(SettingsDialog, OpensAgainAndAgain) {
  SettingsWindow window;
  for (int i = 0; i < 3; ++i) {
    window.EditAndConfirm([](SettingsDialog& dialog) { ClickTab(dialog, kSmsTab); });
    window.Look([](SettingsDialog& dialog) { EXPECT_EQ(dialog.pages().Current(), kGeneralTab); });
  }
}

}  // namespace
}  // namespace celldesk
