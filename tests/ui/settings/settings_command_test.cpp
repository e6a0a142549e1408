#include "services/sms_service.h"
#include "ui/framework/menu_state.h"
#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kBadCentre[] = "Bad SMS centre format.\rYou can change it in Settings.";

void PickModemBoard(SettingsDialog& dialog) { Pick(dialog.general(), GeneralPage::kPort, "Modem board"); }

void TypeCentre(SettingsDialog& dialog, const QString& centre) {
  ClickTab(dialog, kOperatorTab);
  TypeIntoList(dialog.operators(), OperatorPage::kCentre, centre);
}

std::size_t LinesSent(SettingsWindow& window) { return window.phone().received_lines().size(); }

TEST(SettingsCommand, IsThereWithAndWithoutAConnection) {
  SettingsWindow window;
  EXPECT_TRUE(window.frame().Surface().QueryState().IsEnabled(command::kSettings));
  window.Command(command::kConnect);
  EXPECT_TRUE(window.frame().Surface().QueryState().IsEnabled(command::kSettings));
}

TEST(SettingsCommand, OpensFromTheMenuAndTheCommandBar) {
  SettingsWindow window;
  int opened = 0;
  const auto count = [&](Dialog& dialog) {
    ++opened;
    ClickDialogButton(dialog, kIdCancel);
  };
  window.InNextDialog(count);
  PickMenuItem(window.frame(), command::kSettings);
  window.InNextDialog(count);
  ClickBarButton(window.frame(), command::kSettings);
  EXPECT_EQ(opened, 2);
}

TEST(SettingsCommand, OkWithoutANewPortKeepsTheConnection) {
  SettingsWindow window;
  window.Command(command::kConnect);
  const std::size_t sent = LinesSent(window);
  window.EditAndConfirm([](SettingsDialog& dialog) {
    ClickTab(dialog, kSmsTab);
    ClickSwitch(dialog.sms(), SmsPage::kReplyPath);
  });
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(window.line.open_ports(), 1);
  EXPECT_EQ(LinesSent(window), sent);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SettingsCommand, HandsTheSmsSettingsOver) {
  SettingsWindow window;
  EXPECT_FALSE(window.frame().inbox().sms().adapter());
  window.EditAndConfirm([](SettingsDialog& dialog) {
    ClickSwitch(dialog.general(), GeneralPage::kAdapter);
    TypeCentre(dialog, QStringLiteral("+4915550001"));
    ClickTab(dialog, kSmsTab);
    ClickSwitch(dialog.sms(), SmsPage::kDeliveryReport);
    ClickSwitch(dialog.sms(), SmsPage::kReplyPath);
    Pick(dialog.sms(), SmsPage::kValidity, "1 hour");
  });
  const SmsService& sms = window.frame().inbox().sms();
  EXPECT_EQ(Utf8(sms.centre()), "4915550001");
  EXPECT_TRUE(sms.adapter());
  EXPECT_TRUE(sms.delivery_report());
  EXPECT_TRUE(sms.reply_path());
  EXPECT_EQ(sms.validity(), 11);
}

TEST(SettingsCommand, CancelHandsNothingOver) {
  SettingsWindow window;
  window.EditAndCancel([](SettingsDialog& dialog) {
    ClickTab(dialog, kSmsTab);
    Pick(dialog.sms(), SmsPage::kValidity, "1 hour");
  });
  EXPECT_EQ(window.frame().inbox().sms().validity(), 197);
  EXPECT_EQ(window.frame().settings().validity, 197U);
}

TEST(SettingsCommand, SavesButStopsOnABadCentre) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    TypeCentre(dialog, QStringLiteral("0770090"));
    ClickTab(dialog, kSmsTab);
    Pick(dialog.sms(), SmsPage::kValidity, "1 hour");
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kBadCentre));
  EXPECT_EQ(window.boxes.asked().back().icon, BoxIcon::kStop);
  EXPECT_EQ(Utf8(window.Stored().centre), "0770090");
  EXPECT_EQ(window.Stored().validity, 11U);
  EXPECT_EQ(window.frame().inbox().sms().validity(), 197);
}

TEST(SettingsCommand, ANewPortWhileConnectedConnectsAgain) {
  SettingsWindow window;
  window.Command(command::kConnect);
  const std::size_t sent = LinesSent(window);
  window.EditAndConfirm(PickModemBoard);
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(Utf8(window.application->link().port_name()), "COM2:");
  EXPECT_EQ(window.line.open_ports(), 1);
  EXPECT_EQ(LinesSent(window), 2 * sent);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SettingsCommand, ANewPortWithoutAConnectionWaitsForConnect) {
  SettingsWindow window;
  window.EditAndConfirm(PickModemBoard);
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_EQ(LinesSent(window), 0U);
  window.Command(command::kConnect);
  EXPECT_EQ(Utf8(window.application->link().port_name()), "COM2:");
}

TEST(SettingsCommand, ANewPortThatDoesNotOpenEndsTheConnection) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.line.set_problem(OpenProblem::kInUse);
  window.EditAndConfirm(PickModemBoard);
  EXPECT_THAT(window.TakeAsked(), ElementsAre("Cannot open communication port 'COM2:'"));
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_EQ(window.line.open_ports(), 0);
}

TEST(SettingsCommand, ANewPortWithoutAPhoneEndsTheConnection) {
  SettingsWindow window;
  window.Command(command::kConnect);
  ASSERT_TRUE(window.phone().AddFault("*:silence"));
  window.EditAndConfirm(PickModemBoard);
  EXPECT_THAT(window.TakeAsked(), ElementsAre("No mobile phone detected."));
  EXPECT_FALSE(window.frame().IsConnected());
}

// The port is compared with the one of the last Connect: a check that stopped does not lose the change.
TEST(SettingsCommand, TheNewPortIsTakenOnceTheCentreIsGoodAgain) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.EditAndConfirm([](SettingsDialog& dialog) {
    PickModemBoard(dialog);
    TypeCentre(dialog, QStringLiteral("12"));
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kBadCentre));
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(Utf8(window.application->link().port_name()), "COM1:");
  window.EditAndConfirm([](SettingsDialog& dialog) { TypeCentre(dialog, QStringLiteral("+4915550001")); });
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(Utf8(window.application->link().port_name()), "COM2:");
}

TEST(SettingsCommand, BackToTheConnectedPortKeepsTheConnection) {
  SettingsWindow window;
  window.Command(command::kConnect);
  const std::size_t sent = LinesSent(window);
  window.EditAndConfirm([](SettingsDialog& dialog) {
    PickModemBoard(dialog);
    Pick(dialog.general(), GeneralPage::kPort, "Data cable");
  });
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(LinesSent(window), sent);
}

TEST(SettingsCommand, ReadsWhatAnotherWindowStored) {
  SettingsWindow window;
  window.registry.PutString(u"Port", u"COM2:");
  window.EditAndCancel(
      [](SettingsDialog& dialog) { EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Modem board"); });
  EXPECT_EQ(Utf8(window.frame().settings().port), "COM2:");
}

TEST(SettingsCommand, StoredLineParametersAreUsedAtTheNextConnect) {
  SettingsWindow window;
  window.EditAndConfirm([&](SettingsDialog& dialog) {
    window.EditPort(dialog, [](PortDialog& port) { Pick(port, PortDialog::kSpeed, "57600"); });
  });
  window.Command(command::kConnect);
  EXPECT_EQ(window.OpenParameters().baud_rate, 57600U);
}

}  // namespace
}  // namespace celldesk
