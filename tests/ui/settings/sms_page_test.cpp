#include <QAbstractButton>

#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

void StoreValidity(SettingsWindow& window, std::uint32_t validity) {
  window.registry.PutNumber(u"Validity", validity);
}

std::string Label(const Dialog& page, int id) {
  auto* button = dynamic_cast<QAbstractButton*>(ControlOf(page, QStringLiteral("control_%1").arg(id)));
  return button == nullptr ? std::string() : button->text().toStdString();
}

TEST(SmsPage, ShowsTheDefaultValidityInWordsAndKeepsIt) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.sms(), SmsPage::kValidity),
                ElementsAre("5 weeks", "1 hour", "12 hours", "1 day", "1 week", "Maximum"));
    EXPECT_EQ(TextOf(dialog.sms(), SmsPage::kValidity), "5 weeks");
  });
  EXPECT_EQ(window.registry.NumberAt(u"Validity"), 197U);
}

TEST(SmsPage, StoresTheCodeOfEachValidity) {
  const std::vector<std::pair<std::string, std::uint32_t>> codes = {
      {"1 hour", 11}, {"12 hours", 143}, {"1 day", 167}, {"1 week", 173}, {"Maximum", 255}};
  SettingsWindow window;
  for (const auto& [text, code] : codes) {
    window.EditAndConfirm([&](SettingsDialog& dialog) {
      ClickTab(dialog, kSmsTab);
      Pick(dialog.sms(), SmsPage::kValidity, text);
    });
    EXPECT_EQ(window.registry.NumberAt(u"Validity"), code);
    window.Look([&](SettingsDialog& dialog) {
      EXPECT_EQ(TextOf(dialog.sms(), SmsPage::kValidity), text);
      EXPECT_THAT(Choices(dialog.sms(), SmsPage::kValidity),
                  ElementsAre("1 hour", "12 hours", "1 day", "1 week", "Maximum"));
    });
  }
}

TEST(SmsPage, TellsAnyStoredValidityInWordsAndKeepsIt) {
  const std::vector<std::pair<std::uint32_t, std::string>> cases = {
      {0, "0:5 hours"}, {144, "12:30 hours"}, {196, "30 days"}, {254, "62 weeks"}, {1000, "40 weeks"}};
  SettingsWindow window;
  for (const auto& [code, text] : cases) {
    StoreValidity(window, code);
    window.EditAndConfirm(
        [&](SettingsDialog& dialog) { EXPECT_EQ(TextOf(dialog.sms(), SmsPage::kValidity), text); });
    EXPECT_EQ(window.registry.NumberAt(u"Validity"), code);
  }
}

TEST(SmsPage, LoadsAndStoresTheCheckBoxes) {
  SettingsWindow window;
  window.registry.PutNumber(u"DeliveryReport", 7);
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_TRUE(dialog.sms().IsChecked(SmsPage::kDeliveryReport));
    EXPECT_FALSE(dialog.sms().IsChecked(SmsPage::kReplyPath));
    ClickTab(dialog, kSmsTab);
    ClickSwitch(dialog.sms(), SmsPage::kReplyPath);
  });
  EXPECT_EQ(window.registry.NumberAt(u"DeliveryReport"), 1U);
  EXPECT_EQ(window.registry.NumberAt(u"ReplyPath"), 1U);
}

TEST(SmsPage, NamesItsControls) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    EXPECT_EQ(Label(dialog.sms(), SmsPage::kDeliveryReport), "&Request delivery report");
    EXPECT_EQ(Label(dialog.sms(), SmsPage::kReplyPath), "&Reply path");
    EXPECT_EQ(Label(dialog.sms(), SmsPage::kManually), "&Manually");
    EXPECT_EQ(Label(dialog.sms(), SmsPage::kAfterMove), "After move into Inbox");
    EXPECT_EQ(Label(dialog.sms(), SmsPage::kAutomatically), "Download automatically");
    EXPECT_EQ(Label(dialog.general(), GeneralPage::kAdapter), "Use Ericsson DI27 irda adapter");
  });
}

TEST(SmsPage, ShowsTheChoiceAboutTheSimAndStoresNothingForIt) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_TRUE(dialog.sms().IsChecked(SmsPage::kManually));
    ClickTab(dialog, kSmsTab);
    ClickSwitch(dialog.sms(), SmsPage::kAutomatically);
    EXPECT_TRUE(dialog.sms().IsChecked(SmsPage::kAutomatically));
    EXPECT_FALSE(dialog.sms().IsChecked(SmsPage::kManually));
  });
  SystemError error = kErrorSuccess;
  const auto key = window.registry.Open(RegistryRoot::kCurrentUser, kSettingsPath, error);
  ASSERT_NE(key, nullptr);
  EXPECT_THAT(key->ValueNames(), UnorderedElementsAre(u"Port", u"DI27", u"SMSC", u"Operator", u"Country",
                                                      u"DeliveryReport", u"ReplyPath", u"Validity"));
  window.Look([](SettingsDialog& dialog) { EXPECT_TRUE(dialog.sms().IsChecked(SmsPage::kManually)); });
}

}  // namespace
}  // namespace celldesk
