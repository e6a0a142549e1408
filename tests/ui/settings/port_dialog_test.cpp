#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

LineParameters Fast() {
  LineParameters parameters;
  parameters.baud_rate = 115200;
  parameters.byte_size = 7;
  parameters.parity = Parity::kEven;
  parameters.stop_bits = StopBits::kTwo;
  SetFlowControl(parameters, FlowControl::kXonXoff);
  return parameters;
}

// What the five lists show, in order.
std::vector<std::string> Shown(const PortDialog& dialog) {
  std::vector<std::string> texts;
  for (const int id : {PortDialog::kSpeed, PortDialog::kDataBits, PortDialog::kParity, PortDialog::kStopBits,
                       PortDialog::kFlowControl})
    texts.push_back(TextOf(dialog, id));
  return texts;
}

TEST(PortDialog, OffersTheFiveChoiceLists) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_EQ(Utf8(dialog.Title()), "Settings of COM1:");
      EXPECT_THAT(Choices(dialog, PortDialog::kSpeed),
                  ElementsAre("2400", "4800", "9600", "19200", "38400", "57600", "115200"));
      EXPECT_THAT(Choices(dialog, PortDialog::kDataBits), ElementsAre("7", "8"));
      EXPECT_THAT(Choices(dialog, PortDialog::kParity), ElementsAre("none", "odd", "even", "mark", "space"));
      EXPECT_THAT(Choices(dialog, PortDialog::kStopBits), ElementsAre("1", "1.5", "2"));
      EXPECT_THAT(Choices(dialog, PortDialog::kFlowControl), ElementsAre("Xon/Xoff", "Hardware", "None"));
    });
  });
}

TEST(PortDialog, StartsFromTheDefaultsWhereNothingIsStored) {
  SettingsWindow window;
  window.EditAndConfirm([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_THAT(Shown(dialog), ElementsAre("9600", "8", "none", "1", "Hardware"));
    });
  });
  const auto bytes = LineParameters().ToBytes();
  EXPECT_EQ(window.registry.BinaryAt(u"COM1:"), std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

TEST(PortDialog, StartsFromWhatIsStoredForThePort) {
  SettingsWindow window;
  ASSERT_EQ(StoreLineParameters(window.registry, u"COM1:", Fast()), S_OK);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_THAT(Shown(dialog), ElementsAre("115200", "7", "even", "2", "Xon/Xoff"));
    });
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), Fast());
}

TEST(PortDialog, StartsFromTheDefaultsWhereTheStoredValueIsNoWholeBlock) {
  SettingsWindow window;
  window.registry.PutBinary(u"COM1:", std::vector<std::uint8_t>(27, 0xFF));
  window.registry.PutString(u"COM2:", u"9600");
  window.Look([&](SettingsDialog& settings) {
    const auto expect_defaults = [](PortDialog& dialog) {
      EXPECT_THAT(Shown(dialog), ElementsAre("9600", "8", "none", "1", "Hardware"));
    };
    window.EditPort(settings, expect_defaults, kIdCancel);
    Pick(settings.general(), GeneralPage::kPort, "Modem board");
    window.EditPort(settings, expect_defaults, kIdCancel);
  });
}

TEST(PortDialog, StoresEveryChoiceUnderThePortsName) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& settings) {
    Pick(settings.general(), GeneralPage::kPort, "Modem board");
    window.EditPort(settings, [](PortDialog& dialog) {
      Pick(dialog, PortDialog::kSpeed, "115200");
      Pick(dialog, PortDialog::kDataBits, "7");
      Pick(dialog, PortDialog::kParity, "even");
      Pick(dialog, PortDialog::kStopBits, "2");
      Pick(dialog, PortDialog::kFlowControl, "Xon/Xoff");
    });
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM2:"), Fast());
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), std::nullopt);
}

TEST(PortDialog, StoresEachFlowControlSoThatItReadsTheSame) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& settings) {
    for (const char* flow : {"Xon/Xoff", "None", "Hardware", "None", "Xon/Xoff", "Hardware"}) {
      window.EditPort(settings, [&](PortDialog& dialog) { Pick(dialog, PortDialog::kFlowControl, flow); });
      window.EditPort(settings,
                      [&](PortDialog& dialog) { EXPECT_EQ(TextOf(dialog, PortDialog::kFlowControl), flow); });
    }
  });
}

TEST(PortDialog, CancelStoresNothing) {
  SettingsWindow window;
  window.EditAndConfirm([&](SettingsDialog& settings) {
    const auto work = [](PortDialog& dialog) { Pick(dialog, PortDialog::kSpeed, "2400"); };
    window.EditPort(settings, work, kIdCancel);
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), std::nullopt);
}

TEST(PortDialog, ShowsForeignValuesAsNumbersAndKeepsThem) {
  LineParameters strange;
  strange.baud_rate = 460800;
  strange.byte_size = 5;
  strange.parity = static_cast<Parity>(9);
  strange.stop_bits = static_cast<StopBits>(200);
  strange.flags = 0xFFFFFFFF;
  SettingsWindow window;
  ASSERT_EQ(StoreLineParameters(window.registry, u"COM1:", strange), S_OK);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_THAT(Shown(dialog), ElementsAre("460800", "5", "9", "200", "Xon/Xoff"));
      EXPECT_THAT(Choices(dialog, PortDialog::kDataBits), ElementsAre("5", "7", "8"));
    });
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), strange);
}

TEST(PortDialog, ReplacesAForeignValueByThePickedOne) {
  LineParameters strange;
  strange.baud_rate = 460800;
  SettingsWindow window;
  ASSERT_EQ(StoreLineParameters(window.registry, u"COM1:", strange), S_OK);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) { Pick(dialog, PortDialog::kSpeed, "9600"); });
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:"), LineParameters());
}

TEST(PortDialog, TakesTheOpenPortsParametersAndAppliesTheNewOnesAtOnce) {
  SettingsWindow window;
  window.Command(command::kConnect);
  LineParameters live;
  live.baud_rate = 19200;
  ASSERT_EQ(window.application->link().port()->SetParameters(live), S_OK);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_EQ(TextOf(dialog, PortDialog::kSpeed), "19200");
      Pick(dialog, PortDialog::kSpeed, "38400");
    });
    EXPECT_EQ(window.OpenParameters().baud_rate, 38400U);
  });
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:")->baud_rate, 38400U);
  EXPECT_TRUE(window.frame().IsConnected());
}

TEST(PortDialog, WorksOnStoredValuesOnceThePortWasChanged) {
  SettingsWindow window;
  window.Command(command::kConnect);
  LineParameters live;
  live.baud_rate = 19200;
  ASSERT_EQ(window.application->link().port()->SetParameters(live), S_OK);
  ASSERT_EQ(StoreLineParameters(window.registry, u"COM1:", Fast()), S_OK);
  window.Look([&](SettingsDialog& settings) {
    Pick(settings.general(), GeneralPage::kPort, "Modem board");
    Pick(settings.general(), GeneralPage::kPort, "Data cable");
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_EQ(TextOf(dialog, PortDialog::kSpeed), "115200");
      Pick(dialog, PortDialog::kSpeed, "2400");
    });
  });
  EXPECT_EQ(window.OpenParameters().baud_rate, 19200U);
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:")->baud_rate, 2400U);
}

// A port that was stored while another one stayed open: a bad centre had stopped the change.
TEST(PortDialog, LeavesAnOpenPortOfAnotherNameAlone) {
  SettingsWindow window;
  window.Command(command::kConnect);
  const LineParameters before = window.OpenParameters();
  window.registry.PutString(u"Port", u"COM2:");
  ASSERT_EQ(StoreLineParameters(window.registry, u"COM2:", Fast()), S_OK);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) {
      EXPECT_EQ(TextOf(dialog, PortDialog::kSpeed), "115200");
      Pick(dialog, PortDialog::kSpeed, "2400");
    });
  });
  EXPECT_EQ(window.OpenParameters(), before);
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM2:")->baud_rate, 2400U);
}

TEST(PortDialog, KeepsTheOpenPortWhenTheSamePortIsPickedAgain) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.Look([&](SettingsDialog& settings) {
    Pick(settings.general(), GeneralPage::kPort, "Data cable");
    window.EditPort(settings, [](PortDialog& dialog) { Pick(dialog, PortDialog::kSpeed, "57600"); });
  });
  EXPECT_EQ(window.OpenParameters().baud_rate, 57600U);
}

TEST(PortDialog, TellsWhenTheOpenPortRefusesTheParameters) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.line.set_parameters_status(E_FAIL);
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) { Pick(dialog, PortDialog::kStopBits, "1.5"); });
  });
  EXPECT_THAT(window.TakeAsked(), ElementsAre("The port COM1: does not take these settings."));
  EXPECT_EQ(LoadLineParameters(window.registry, u"COM1:")->stop_bits, StopBits::kOnePointFive);
}

TEST(PortDialog, AppliesToTheOpenPortWhatTheRegistryDoesNotTake) {
  SettingsWindow window;
  window.Command(command::kConnect);
  window.registry.FailAllWrites();
  window.Look([&](SettingsDialog& settings) {
    window.EditPort(settings, [](PortDialog& dialog) { Pick(dialog, PortDialog::kSpeed, "4800"); });
  });
  EXPECT_EQ(window.OpenParameters().baud_rate, 4800U);
  EXPECT_THAT(window.TakeAsked(), testing::IsEmpty());
}

}  // namespace
}  // namespace celldesk
