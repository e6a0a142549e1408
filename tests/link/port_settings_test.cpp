#include "link/port_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/fake_registry.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

TEST(PortSettings, NothingIsStoredAtFirst) {
  FakeRegistry registry;
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), std::nullopt);
  EXPECT_EQ(registry.write_count(), 0);
}

TEST(PortSettings, TheKeyIsTheProgramsOwn) { EXPECT_EQ(kPortSettingsKey, u"\\Software\\Corvane\\CellDesk"); }

TEST(PortSettings, WhatIsStoredIsLoadedByPort) {
  FakeRegistry registry;
  LineParameters fast;
  fast.baud_rate = 115200;
  fast.parity = Parity::kEven;
  ASSERT_EQ(StoreLineParameters(registry, u"COM1:", fast), S_OK);
  ASSERT_EQ(StoreLineParameters(registry, u"COM2:", LineParameters{}), S_OK);
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), fast);
  EXPECT_EQ(LoadLineParameters(registry, u"COM2:"), LineParameters{});
  EXPECT_EQ(LoadLineParameters(registry, u"COM3:"), std::nullopt);
}

TEST(PortSettings, TheDefaultsAreStoredAsTheirBlockOf28Bytes) {
  FakeRegistry registry;
  ASSERT_EQ(StoreLineParameters(registry, u"COM1:", LineParameters{}), S_OK);
  const std::vector<std::uint8_t> expected{28, 0, 0,    0,    0x80, 0x25, 0, 0,  0x21, 0x20, 0,  0,  0, 0,
                                           0,  2, 0x80, 0x00, 8,    0,    0, 17, 19,   13,   13, 13, 0, 0};
  EXPECT_EQ(registry.BinaryAt(u"COM1:"), expected);
}

TEST(PortSettings, AValueOfAnotherSizeOrTypeCountsAsNone) {
  FakeRegistry registry;
  for (const std::size_t size : {0U, 27U, 29U}) {
    registry.PutBinary(u"COM1:", std::vector<std::uint8_t>(size));
    EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), std::nullopt) << size;
  }
  registry.PutString(u"COM1:", u"thirteen char");  // 28 bytes with its zero
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), std::nullopt);
  registry.PutNumber(u"COM1:", 9600);
  EXPECT_EQ(LoadLineParameters(registry, u"COM1:"), std::nullopt);
}

TEST(PortSettings, AStoreThatFailsGivesTheSystemErrorAsItsStatus) {
  FakeRegistry registry;
  registry.FailAllWrites();
  EXPECT_EQ(StoreLineParameters(registry, u"COM1:", {}), StatusFromSystemError(kErrorAccessDenied));
  registry.AllowWrites();
  ASSERT_EQ(StoreLineParameters(registry, u"COM1:", {}), S_OK);
  registry.FailAllWrites();
  EXPECT_EQ(StoreLineParameters(registry, u"COM1:", {}), StatusFromSystemError(kErrorAccessDenied));
}

TEST(PortSettings, TheDefaultsAreTheDialogsStartingPoint) {
  const LineParameters defaults;
  EXPECT_EQ(defaults.baud_rate, 9600U);
  EXPECT_EQ(defaults.byte_size, 8);
  EXPECT_EQ(defaults.parity, Parity::kNone);
  EXPECT_EQ(defaults.stop_bits, StopBits::kOne);
  EXPECT_EQ(defaults.flags, LineParameters::kBinary | 0x20U | 0x2000U);
  EXPECT_EQ(defaults.dtr_control(), LineControl::kHandshake);
  EXPECT_EQ(defaults.rts_control(), LineControl::kHandshake);
  EXPECT_EQ(defaults.xon_limit, 512);
  EXPECT_EQ(defaults.xoff_limit, 128);
  EXPECT_EQ(defaults.xon_char, 17);
  EXPECT_EQ(defaults.xoff_char, 19);
  EXPECT_EQ(defaults.error_char, 13);
  EXPECT_EQ(defaults.eof_char, 13);
  EXPECT_EQ(defaults.event_char, 13);
  EXPECT_EQ(FlowControlOf(defaults), FlowControl::kHardware);
}

MATCHER_P2(Choice, text, value, "") {
  return arg.text == text && arg.value == static_cast<std::uint32_t>(value);
}

TEST(PortSettings, TheChoiceListsAreComplete) {
  EXPECT_THAT(kSpeedChoices, ElementsAre(Choice(u"2400", 2400), Choice(u"4800", 4800), Choice(u"9600", 9600),
                                         Choice(u"19200", 19200), Choice(u"38400", 38400),
                                         Choice(u"57600", 57600), Choice(u"115200", 115200)));
  EXPECT_THAT(kDataBitsChoices, ElementsAre(Choice(u"7", 7), Choice(u"8", 8)));
  EXPECT_THAT(kParityChoices, ElementsAre(Choice(u"none", Parity::kNone), Choice(u"odd", Parity::kOdd),
                                          Choice(u"even", Parity::kEven), Choice(u"mark", Parity::kMark),
                                          Choice(u"space", Parity::kSpace)));
  EXPECT_THAT(kStopBitsChoices,
              ElementsAre(Choice(u"1", StopBits::kOne), Choice(u"1.5", StopBits::kOnePointFive),
                          Choice(u"2", StopBits::kTwo)));
  EXPECT_THAT(kFlowControlChoices,
              ElementsAre(Choice(u"Xon/Xoff", FlowControl::kXonXoff),
                          Choice(u"Hardware", FlowControl::kHardware), Choice(u"None", FlowControl::kNone)));
}

TEST(PortSettings, FlowControlIsReadOffTheFlags) {
  constexpr std::uint32_t kRtsEnable = 0x1000;
  struct {
    std::uint32_t flags;
    FlowControl flow;
  } const cases[] = {
      {0, FlowControl::kNone},
      {LineParameters::kOutX, FlowControl::kXonXoff},
      {LineParameters::kInX, FlowControl::kXonXoff},
      {LineParameters::kInX | 3 * kRtsEnable, FlowControl::kXonXoff},
      {1 * kRtsEnable, FlowControl::kHardware},
      {2 * kRtsEnable, FlowControl::kHardware},
      {3 * kRtsEnable, FlowControl::kHardware},
      {LineParameters::kOutxCtsFlow, FlowControl::kNone},
      {LineParameters::kBinary | 0x20, FlowControl::kNone},
  };
  for (const auto& c : cases) {
    LineParameters parameters;
    parameters.flags = c.flags;
    EXPECT_EQ(FlowControlOf(parameters), c.flow) << std::hex << c.flags;
  }
}

TEST(PortSettings, FlowControlThatIsSetIsReadBackFromEveryStart) {
  for (const std::uint32_t software : {0x000U, 0x100U, 0x200U, 0x300U}) {
    for (std::uint32_t rts = 0; rts < 4; ++rts) {
      for (const auto flow : {FlowControl::kXonXoff, FlowControl::kHardware, FlowControl::kNone}) {
        LineParameters parameters;
        parameters.flags = LineParameters::kBinary | software | (rts << 12);
        SetFlowControl(parameters, flow);
        EXPECT_EQ(FlowControlOf(parameters), flow);
        EXPECT_NE(parameters.flags & LineParameters::kBinary, 0U);
      }
    }
  }
}

TEST(PortSettings, SettingTheSameFlowControlChangesNothing) {
  for (const std::uint32_t flags : {0x2021U, 0x1021U, 0x0121U, 0x0025U}) {
    LineParameters parameters;
    parameters.flags = flags;
    SetFlowControl(parameters, FlowControlOf(parameters));
    EXPECT_EQ(parameters.flags, flags);
  }
}

TEST(PortSettings, FlowControlLeavesTheDtrLine) {
  LineParameters parameters;
  for (const auto flow : {FlowControl::kNone, FlowControl::kXonXoff, FlowControl::kHardware}) {
    SetFlowControl(parameters, flow);
    EXPECT_EQ(parameters.dtr_control(), LineControl::kHandshake);
  }
}

}  // namespace
}  // namespace celldesk
