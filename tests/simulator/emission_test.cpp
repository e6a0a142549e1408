#include "simulator/emission.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

int TotalDelay(const std::vector<Emission>& emissions) {
  int sum = 0;
  for (const Emission& emission : emissions) sum += emission.delay_ms;
  return sum;
}

TEST(Emission, WithoutABaudRateNothingIsPaced) {
  const std::vector<Emission> emissions{{5, "abc"}, {0, std::string(1000, 'x')}};
  EXPECT_EQ(Pace(emissions, 0, 100), emissions);
}

TEST(Emission, PacingKeepsTheBytesAndTakesTenBitsForEach) {
  const std::vector<Emission> emissions{{0, std::string(960, 'x')}};
  const auto paced = Pace(emissions, 9600, 0);
  EXPECT_EQ(BytesOf(paced), BytesOf(emissions));
  EXPECT_EQ(TotalDelay(paced), 1000);
  EXPECT_GT(paced.size(), 50U);
}

TEST(Emission, ReceivedBytesTakeTheirTimeFirst) {
  const auto paced = Pace({{0, "x"}}, 9600, 96);
  EXPECT_GE(paced.front().delay_ms, 100);
  EXPECT_LE(paced.front().delay_ms, 102);
}

TEST(Emission, PacingKeepsPausesAndEvents) {
  const auto paced = Pace({{500, "ab"}, {0, "", LineEvent::kHangUp}}, 115200, 0);
  EXPECT_GE(TotalDelay(paced), 500);
  EXPECT_EQ(paced.back().event, LineEvent::kHangUp);
}

TEST(Emission, TheSlowestLineStillMoves) {
  const auto paced = Pace({{0, "ab"}}, 10, 0);
  EXPECT_EQ(BytesOf(paced), "ab");
  EXPECT_EQ(TotalDelay(paced), 2000);
}

}  // namespace
}  // namespace celldesk::simulator
