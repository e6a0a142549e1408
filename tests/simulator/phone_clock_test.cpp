#include "simulator/phone_clock.h"

#include <gtest/gtest.h>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

TEST(PhoneClock, WritesTheTextForm) {
  EXPECT_EQ(ClockText(0), "70/01/01,00:00:00+00");
  EXPECT_EQ(ClockText(1767614400), "26/01/05,12:00:00+00");
}

TEST(PhoneClock, ReadsWhatItWrote) {
  for (const PhoneSeconds time :
       {PhoneSeconds{1709251199}, PhoneSeconds{1767614400}, PhoneSeconds{4070908800}}) {
    EXPECT_EQ(ParseClockText(ClockText(time)), time);
  }
}

TEST(PhoneClock, RefusesTextsThatAreNoTime) {
  for (const std::string_view text :
       {"", "26/01/05", "26/13/05,12:00:00+00", "26/02/30,12:00:00+00", "26/01/05,24:00:00+00",
        "26-01-05,12:00:00+00", "ab/01/05,12:00:00+00"}) {
    EXPECT_FALSE(ParseClockText(text).has_value()) << text;
  }
}

TEST(PhoneClock, TimestampsSwapTheirDigits) {
  EXPECT_EQ(ToHex(TimestampOctets(1767614400)), "62105021000000");
  EXPECT_EQ(TimestampText(TimestampOctets(1767614400)), "26/01/05,12:00:00+00");
}

TEST(PhoneClock, ATimestampShowsItsZone) {
  EXPECT_EQ(TimestampText(*FromHex("62105021000080")), "26/01/05,12:00:00+08");
  EXPECT_EQ(TimestampText(*FromHex("62105021000008")), "26/01/05,12:00:00-00");
}

}  // namespace
}  // namespace celldesk::simulator
