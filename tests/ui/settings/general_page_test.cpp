#include <QAbstractItemView>
#include <QComboBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "ui/framework/qt/native.h"
#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

QComboBox* PortBox(const Dialog& page) {
  return dynamic_cast<QComboBox*>(ControlOf(page, QStringLiteral("control_1020")));
}

void StorePort(SettingsWindow& window, std::u16string_view port) {
  Settings settings = window.Stored();
  settings.port = port;
  window.Store(settings);
}

void Tick(GeneralPage& page) { page.Dispatch(Message::kTimer, GeneralPage::kFollowTimer, 0); }

TEST(GeneralPage, ShowsTheDisplayTextsAndSelectsTheStoredPort) {
  SettingsWindow window;
  StorePort(window, u"COM2:");
  window.Look([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.general(), GeneralPage::kPort), ElementsAre("Data cable", "Modem board"));
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Modem board");
  });
}

TEST(GeneralPage, StoresThePortThatWasPicked) {
  SettingsWindow window;
  window.EditAndConfirm(
      [](SettingsDialog& dialog) { Pick(dialog.general(), GeneralPage::kPort, "Modem board"); });
  EXPECT_EQ(Utf8(window.Stored().port), "COM2:");
}

TEST(GeneralPage, KeepsAStoredPortThatIsNotThere) {
  SettingsWindow window;
  StorePort(window, u"COM7:");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.general(), GeneralPage::kPort),
                ElementsAre("COM7:", "Data cable", "Modem board"));
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "COM7:");
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPortState),
              "There is no device for COM7: now. Plug it in or choose another port.");
  });
  EXPECT_EQ(Utf8(window.Stored().port), "COM7:");
}

TEST(GeneralPage, DropsTheMissingPortOnceAnotherIsPicked) {
  SettingsWindow window;
  StorePort(window, u"COM7:");
  window.Look([](SettingsDialog& dialog) {
    Pick(dialog.general(), GeneralPage::kPort, "COM7:");
    Pick(dialog.general(), GeneralPage::kPort, "Data cable");
    EXPECT_THAT(Choices(dialog.general(), GeneralPage::kPort), ElementsAre("Data cable", "Modem board"));
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Data cable");
  });
}

TEST(GeneralPage, WorksOnAMachineWithoutPorts) {
  SettingsWindow window;
  window.port_list.ports.clear();
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.general(), GeneralPage::kPort), ElementsAre("COM1:"));
  });
  EXPECT_EQ(Utf8(window.Stored().port), "COM1:");
}

TEST(GeneralPage, AsksForAPortWhenAnEmptyNameIsStored) {
  SettingsWindow window;
  StorePort(window, u"");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_EQ(dialog.general().SelectedChoice(GeneralPage::kPort), -1);
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPortState),
              "Choose the port that the phone is connected to.");
    EXPECT_FALSE(dialog.general().IsEnabled(GeneralPage::kPortSettings));
    Pick(dialog.general(), GeneralPage::kPort, "Data cable");
    EXPECT_TRUE(dialog.general().IsEnabled(GeneralPage::kPortSettings));
  });
  EXPECT_EQ(Utf8(window.Stored().port), "COM1:");
}

TEST(GeneralPage, ReadsAnAdapterValueOfTwoAsOnAndWritesOne) {
  SettingsWindow window;
  window.registry.PutNumber(u"DI27", 2);
  window.EditAndConfirm(
      [](SettingsDialog& dialog) { EXPECT_TRUE(dialog.general().IsChecked(GeneralPage::kAdapter)); });
  EXPECT_EQ(window.registry.NumberAt(u"DI27"), 1U);
}

TEST(GeneralPage, StoresTheAdapterThatWasTickedOff) {
  SettingsWindow window;
  window.registry.PutNumber(u"DI27", 1);
  window.EditAndConfirm([](SettingsDialog& dialog) { ClickSwitch(dialog.general(), GeneralPage::kAdapter); });
  EXPECT_EQ(window.registry.NumberAt(u"DI27"), 0U);
}

TEST(GeneralPage, FollowsPortsThatComeAndGo) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& dialog) {
    GeneralPage& page = dialog.general();
    window.port_list.Add(u"COM3:", u"New stick", u"/dev/ttyUSB1");
    Tick(page);
    EXPECT_THAT(Choices(page, GeneralPage::kPort), ElementsAre("Data cable", "Modem board", "New stick"));
    EXPECT_EQ(TextOf(page, GeneralPage::kPort), "Data cable");
    window.port_list.ports.erase(window.port_list.ports.begin() + 1);
    Tick(page);
    EXPECT_THAT(Choices(page, GeneralPage::kPort), ElementsAre("Data cable", "New stick"));
    EXPECT_EQ(TextOf(page, GeneralPage::kPort), "Data cable");
  });
}

TEST(GeneralPage, KeepsTheSelectedPortWhileItIsUnplugged) {
  SettingsWindow window;
  window.EditAndConfirm([&](SettingsDialog& dialog) {
    GeneralPage& page = dialog.general();
    const PortInfo cable = window.port_list.ports.front();
    window.port_list.ports.erase(window.port_list.ports.begin());
    Tick(page);
    EXPECT_THAT(Choices(page, GeneralPage::kPort), ElementsAre("Data cable", "Modem board"));
    EXPECT_EQ(TextOf(page, GeneralPage::kPort), "Data cable");
    EXPECT_EQ(TextOf(page, GeneralPage::kPortState),
              "There is no device for COM1: now. Plug it in or choose another port.");
    window.port_list.ports.push_back(cable);
    Tick(page);
    EXPECT_EQ(TextOf(page, GeneralPage::kPort), "Data cable");
    EXPECT_EQ(TextOf(page, GeneralPage::kPortState), "/dev/ttyUSB0 is free (COM1:).");
  });
  EXPECT_EQ(Utf8(window.Stored().port), "COM1:");
}

TEST(GeneralPage, ShowsADisplayTextThatChanged) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& dialog) {
    window.port_list.ports[0].display_text = u"Better name";
    Tick(dialog.general());
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPort), "Better name");
  });
}

TEST(GeneralPage, AsksForThePortsAgainWithoutBeingTold) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& /*dialog*/) {
    const int before = window.port_list.asked;
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.port_list.asked > before; }, 60000));
  });
}

TEST(GeneralPage, EndsItsTimerWithTheDialog) {
  SettingsWindow window;
  QPointer<QTimer> timer;
  window.Look([&](SettingsDialog& dialog) {
    timer = WidgetOf(&dialog.general())->findChild<QTimer*>();
    EXPECT_FALSE(timer.isNull());
  });
  EXPECT_TRUE(timer.isNull());
}

TEST(GeneralPage, LeavesAnOpenListAloneWhileNothingChanges) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    QComboBox* box = PortBox(dialog.general());
    ASSERT_NE(box, nullptr);
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(1, 0));
    Tick(dialog.general());
    EXPECT_TRUE(box->view()->isVisible());
    EXPECT_EQ(box->view()->currentIndex().row(), 1);
    box->hidePopup();
  });
}

struct StateCase {
  const char* what;
  PortObstacle obstacle;
  const char* line;
};

TEST(GeneralPage, TellsWhatStandsInTheWayOfThePort) {
  using Kind = PortObstacle::Kind;
  const std::vector<StateCase> cases = {
      {"free", {}, "/dev/ttyUSB0 is free (COM1:)."},
      {"group",
       {Kind::kNoPermission, u"dialout", {}, 0},
       "You may not use /dev/ttyUSB0. Members of the group 'dialout' may."},
      {"nobody's group", {Kind::kNoPermission, {}, {}, 0}, "You may not use /dev/ttyUSB0."},
      {"held", {Kind::kHeld, {}, u"minicom", 4711}, "/dev/ttyUSB0 is in use by 'minicom' (process 4711)."},
      {"held by a stranger", {Kind::kHeld, {}, {}, 0}, "/dev/ttyUSB0 is in use by another program."},
      {"gone",
       {Kind::kGone, {}, {}, 0},
       "There is no device for COM1: now. Plug it in or choose another port."},
  };
  SettingsWindow window;
  window.Look([&](SettingsDialog& dialog) {
    for (const StateCase& one : cases) {
      window.port_inspector.obstacles[u"/dev/ttyUSB0"] = one.obstacle;
      Tick(dialog.general());
      EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPortState), one.line) << one.what;
    }
  });
}

TEST(GeneralPage, TellsOfThePortThatIsPicked) {
  SettingsWindow window;
  window.port_inspector.obstacles[u"/dev/ttyAMA0"] = {PortObstacle::Kind::kHeld, {}, u"gpsd", 12};
  window.Look([](SettingsDialog& dialog) {
    Pick(dialog.general(), GeneralPage::kPort, "Modem board");
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPortState),
              "/dev/ttyAMA0 is in use by 'gpsd' (process 12).");
  });
}

// The program's own lock on the port is no obstacle.
TEST(GeneralPage, TellsThatThePortIsConnectedNow) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.port_inspector.obstacles[u"/dev/ttyUSB0"] = {PortObstacle::Kind::kHeld, {}, u"celldesk", 99};
  window.Look([](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.general(), GeneralPage::kPortState), "/dev/ttyUSB0 is connected now (COM1:).");
  });
}

}  // namespace
}  // namespace celldesk
