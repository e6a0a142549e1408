#include "platform/line_parameters.h"

#include <gtest/gtest.h>

#include <vector>

namespace celldesk {
namespace {

using Bytes = LineParameters::Bytes;

TEST(LineParameters, TheDefaultsAreTheseBytes) {
  const Bytes expected = {28, 0, 0,   0, 0x80, 0x25, 0, 0,  0x21, 0x20, 0,  0,  0, 0,
                          0,  2, 128, 0, 8,    0,    0, 17, 19,   13,   13, 13, 0, 0};
  EXPECT_EQ(LineParameters().ToBytes(), expected);
}

TEST(LineParameters, TheDefaultsAre9600EightNoneOneWithHandshakeOnBothLines) {
  const LineParameters parameters;
  EXPECT_EQ(parameters.baud_rate, 9600U);
  EXPECT_EQ(parameters.byte_size, 8);
  EXPECT_EQ(parameters.parity, Parity::kNone);
  EXPECT_EQ(parameters.stop_bits, StopBits::kOne);
  EXPECT_EQ(parameters.dtr_control(), LineControl::kHandshake);
  EXPECT_EQ(parameters.rts_control(), LineControl::kHandshake);
  EXPECT_EQ(parameters.flags & ~0x3030U, LineParameters::kBinary);
}

TEST(LineParameters, EachFieldHasItsPlace) {
  Bytes bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i + 1);
  const LineParameters parameters = LineParameters::FromBytes(bytes);
  EXPECT_EQ(parameters.baud_rate, 0x08070605U);
  EXPECT_EQ(parameters.flags, 0x0C0B0A09U);
  EXPECT_EQ(parameters.reserved, 0x0E0D);
  EXPECT_EQ(parameters.xon_limit, 0x100F);
  EXPECT_EQ(parameters.xoff_limit, 0x1211);
  EXPECT_EQ(parameters.byte_size, 0x13);
  EXPECT_EQ(static_cast<int>(parameters.parity), 0x14);
  EXPECT_EQ(static_cast<int>(parameters.stop_bits), 0x15);
  EXPECT_EQ(parameters.xon_char, 0x16);
  EXPECT_EQ(parameters.xoff_char, 0x17);
  EXPECT_EQ(parameters.error_char, 0x18);
  EXPECT_EQ(parameters.eof_char, 0x19);
  EXPECT_EQ(parameters.event_char, 0x1A);
  EXPECT_EQ(parameters.reserved1, 0x1C1B);
}

TEST(LineParameters, BytesComeBackButForTheLengthWhichIsAlways28) {
  Bytes bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(0xA0 + i);
  Bytes written = LineParameters::FromBytes(bytes).ToBytes();
  EXPECT_EQ((std::vector<std::uint8_t>{written.begin(), written.begin() + 4}),
            (std::vector<std::uint8_t>{28, 0, 0, 0}));
  std::copy_n(bytes.begin(), 4, written.begin());
  EXPECT_EQ(written, bytes);
}

TEST(LineParameters, AShortBlockLeavesTheRestAtItsDefaults) {
  LineParameters set;
  set.baud_rate = 115200;
  set.flags = 1;
  set.xon_limit = 9;
  set.event_char = 26;
  const Bytes bytes = set.ToBytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    const LineParameters read = LineParameters::FromBytes(std::span(bytes).first(size));
    EXPECT_EQ(read.baud_rate, size >= 8 ? 115200U : 9600U) << size;
    EXPECT_EQ(read.flags, size >= 12 ? 1U : LineParameters().flags) << size;
    EXPECT_EQ(read.xon_limit, size >= 16 ? 9 : 512) << size;
    EXPECT_EQ(read.event_char, size >= 26 ? 26 : 13) << size;
  }
}

TEST(LineParameters, BytesBeyondTheBlockAreOverlooked) {
  std::vector<std::uint8_t> bytes(40, 0xFF);
  const Bytes defaults = LineParameters().ToBytes();
  std::copy(defaults.begin(), defaults.end(), bytes.begin());
  EXPECT_EQ(LineParameters::FromBytes(bytes), LineParameters());
}

TEST(LineParameters, ControlOfALineChangesItsTwoBitsOnly) {
  for (LineControl control :
       {LineControl::kDisable, LineControl::kEnable, LineControl::kHandshake, LineControl::kToggle}) {
    LineParameters parameters;
    parameters.flags = 0xFFFFFFFF;
    parameters.set_dtr_control(control);
    EXPECT_EQ(parameters.dtr_control(), control);
    EXPECT_EQ(parameters.flags | 0x30U, 0xFFFFFFFFU);
    parameters.set_rts_control(control);
    EXPECT_EQ(parameters.rts_control(), control);
    EXPECT_EQ(parameters.flags | 0x3030U, 0xFFFFFFFFU);
  }
}

}  // namespace
}  // namespace celldesk
