#include "platform/posix/line_settings.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

termios Filled(const LineParameters& parameters) {
  termios settings{};
  settings.c_lflag = ICANON | ECHO | ISIG;
  settings.c_iflag = ICRNL | IXON | IXANY;
  settings.c_oflag = OPOST;
  EXPECT_TRUE(FillTerminalSettings(parameters, settings));
  return settings;
}

LineParameters With(Parity parity, std::uint8_t byte_size = 8, StopBits stop_bits = StopBits::kOne) {
  LineParameters parameters;
  parameters.parity = parity;
  parameters.byte_size = byte_size;
  parameters.stop_bits = stop_bits;
  return parameters;
}

TEST(LineSettings, TheLineIsRawAndNeverHangsUpForWantOfACarrier) {
  const termios settings = Filled(LineParameters());
  EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ISIG | IEXTEN), 0U);
  EXPECT_EQ(settings.c_oflag & OPOST, 0U);
  EXPECT_EQ(settings.c_iflag & (ICRNL | INLCR | ISTRIP | IXON | IXOFF | IXANY), 0U);
  EXPECT_EQ(settings.c_cflag & (CREAD | CLOCAL), tcflag_t{CREAD | CLOCAL});
  EXPECT_EQ(settings.c_cc[VMIN], 1);
  EXPECT_EQ(settings.c_cc[VTIME], 0);
}

TEST(LineSettings, EveryParityHasItsBits) {
  const tcflag_t bits = PARENB | PARODD | CMSPAR;
  EXPECT_EQ(Filled(With(Parity::kNone)).c_cflag & bits, 0U);
  EXPECT_EQ(Filled(With(Parity::kOdd)).c_cflag & bits, tcflag_t{PARENB | PARODD});
  EXPECT_EQ(Filled(With(Parity::kEven)).c_cflag & bits, tcflag_t{PARENB});
  EXPECT_EQ(Filled(With(Parity::kMark)).c_cflag & bits, bits);
  EXPECT_EQ(Filled(With(Parity::kSpace)).c_cflag & bits, tcflag_t{PARENB | CMSPAR});
}

TEST(LineSettings, ByteSizesAndStopBitsAreTaken) {
  EXPECT_EQ(Filled(With(Parity::kNone, 7)).c_cflag & CSIZE, tcflag_t{CS7});
  EXPECT_EQ(Filled(With(Parity::kNone, 8)).c_cflag & CSIZE, tcflag_t{CS8});
  EXPECT_EQ(Filled(With(Parity::kNone, 8, StopBits::kOne)).c_cflag & CSTOPB, 0U);
  EXPECT_EQ(Filled(With(Parity::kNone, 8, StopBits::kOnePointFive)).c_cflag & CSTOPB, tcflag_t{CSTOPB});
  EXPECT_EQ(Filled(With(Parity::kNone, 8, StopBits::kTwo)).c_cflag & CSTOPB, tcflag_t{CSTOPB});
}

TEST(LineSettings, EachFlowControlHasItsBits) {
  LineParameters none;
  none.flags = LineParameters::kBinary;
  EXPECT_EQ(Filled(none).c_cflag & CRTSCTS, 0U);
  LineParameters handshake = none;
  handshake.set_rts_control(LineControl::kHandshake);
  EXPECT_NE(Filled(handshake).c_cflag & CRTSCTS, 0U);
  LineParameters obeys_cts = none;
  obeys_cts.flags |= LineParameters::kOutxCtsFlow;
  EXPECT_NE(Filled(obeys_cts).c_cflag & CRTSCTS, 0U);
  LineParameters out = none, in = none;
  out.flags |= LineParameters::kOutX;
  in.flags |= LineParameters::kInX;
  EXPECT_EQ(Filled(out).c_iflag & (IXON | IXOFF), tcflag_t{IXON});
  EXPECT_EQ(Filled(in).c_iflag & (IXON | IXOFF), tcflag_t{IXOFF});
}

TEST(LineSettings, ParityIsCheckedOnlyWhenAskedFor) {
  LineParameters parameters = With(Parity::kEven, 7);
  EXPECT_EQ(Filled(parameters).c_iflag & INPCK, 0U);
  parameters.flags |= LineParameters::kParityCheck;
  EXPECT_NE(Filled(parameters).c_iflag & INPCK, 0U);
}

TEST(LineSettings, WhatNoTerminalCanBeLeavesTheSettingsAlone) {
  LineParameters bad;
  bad.byte_size = 4;
  termios settings{};
  settings.c_lflag = ECHO;
  EXPECT_FALSE(FillTerminalSettings(bad, settings));
  EXPECT_EQ(settings.c_lflag, tcflag_t{ECHO});
}

TEST(LineSettings, DescriptionIsTheInverseOfFilling) {
  for (Parity parity : {Parity::kNone, Parity::kOdd, Parity::kEven, Parity::kMark, Parity::kSpace})
    for (const std::uint8_t size : {std::uint8_t{7}, std::uint8_t{8}})
      for (StopBits stop_bits : {StopBits::kOne, StopBits::kTwo}) {
        LineParameters parameters = With(parity, size, stop_bits);
        parameters.baud_rate = 38400;
        parameters.set_dtr_control(LineControl::kEnable);
        EXPECT_EQ(DescribeTerminalSettings(Filled(parameters)), parameters);
      }
}

TEST(LineSettings, ATerminalThatPeopleTypeAtIsDescribedWithoutItsXonXoff) {
  termios settings{};
  settings.c_iflag = IXON | IXOFF;
  settings.c_cflag = CS8;
  ::cfsetspeed(&settings, B2400);
  const LineParameters parameters = DescribeTerminalSettings(settings);
  EXPECT_EQ(parameters.flags & (LineParameters::kOutX | LineParameters::kInX), 0U);
  EXPECT_EQ(parameters.baud_rate, 2400U);
  EXPECT_EQ(parameters.rts_control(), LineControl::kEnable);
}

TEST(LineSettings, OnlySpeedsWithAConstantAreStandard) {
  EXPECT_EQ(StandardSpeed(115200), std::optional<speed_t>(B115200));
  EXPECT_EQ(StandardSpeed(14400), std::nullopt);
  EXPECT_EQ(StandardSpeed(0), std::nullopt);
}

}  // namespace
}  // namespace celldesk
