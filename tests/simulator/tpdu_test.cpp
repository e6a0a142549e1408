#include "simulator/tpdu.h"

#include <gtest/gtest.h>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr PhoneSeconds kNoon = 1767614400;  // 26/01/05,12:00:00

Tpdu Parsed(std::string_view hex, bool from_phone) {
  const auto tpdu = ParseTpdu(FromHex(hex).value_or(""), from_phone);
  EXPECT_TRUE(tpdu.has_value()) << hex;
  return tpdu.value_or(Tpdu());
}

TEST(Tpdu, ReadsASubmit) {
  const Tpdu tpdu = Parsed("31000C914477000910320000A705E8329BFD06", true);
  EXPECT_EQ(tpdu.kind, TpduKind::kSubmit);
  EXPECT_EQ(tpdu.address.Text(), "+447700900123");
  EXPECT_EQ(tpdu.validity, "\xA7");
  EXPECT_TRUE(tpdu.wants_report());
  EXPECT_EQ(TextOf(tpdu), u"hello");
}

TEST(Tpdu, ReadsEveryValidityForm) {
  EXPECT_EQ(Parsed("0100048121430000054142434445", true).validity, "");
  EXPECT_EQ(Parsed("110004812143000411024142", true).validity, "\x11");
  EXPECT_EQ(Parsed("1900048121430004621050210000000141", true).validity.size(), 7U);
  EXPECT_EQ(Parsed("0900048121430004620000000000000141", true).validity.size(), 7U);
}

TEST(Tpdu, ReadsADeliver) {
  const Tpdu tpdu = Parsed("040C914477000910320000621050210000000AE8329BFD4697D9EC37", false);
  EXPECT_EQ(tpdu.kind, TpduKind::kDeliver);
  EXPECT_EQ(TimestampText(tpdu.timestamp), "26/01/05,12:00:00+00");
  EXPECT_EQ(TextOf(tpdu), u"hellohello");
  EXPECT_FALSE(tpdu.is_from_phone());
}

TEST(Tpdu, ReadsAnAlphanumericSender) {
  const Tpdu tpdu = Parsed("040BD041E1905834020000621050210000000141", false);
  EXPECT_EQ(tpdu.address.Text(), "ABCDEF");
}

TEST(Tpdu, ReadsAStatusReportWithOrWithoutMore) {
  const Tpdu tpdu = Parsed("06110C91447700091032621050210000006210502100000000", false);
  EXPECT_EQ(tpdu.kind, TpduKind::kStatusReport);
  EXPECT_EQ(tpdu.reference, 0x11);
  EXPECT_EQ(tpdu.status, 0);
  EXPECT_EQ(Parsed("06110C91447700091032621050210000006210502100000046FF", false).status, 0x46);
}

TEST(Tpdu, RefusesWhatIsIncompleteTooLongOrOfTheOtherDirection) {
  const struct {
    std::string_view hex;
    bool from_phone;
  } kTable[] = {{"", true},
                {"01", true},
                {"31000C914477000910320000A705E8329BFD", true},        // an octet of the text is missing
                {"31000C914477000910320000A705E8329BFD0600", true},    // an octet too many
                {"31001691447700091032000000000000000000A700", true},  // an address too long
                {"040C914477000910320000621050210000000141", true},    // a deliver, but from the phone
                {"31000C914477000910320000A705E8329BFD06", false},     // a submit, but to the phone
                {"03000C914477000910320000A705E8329BFD06", true},      // reserved
                {"0100048121430004FF41", true}};                       // more octets than a message has
  for (const auto& row : kTable) {
    EXPECT_FALSE(ParseTpdu(FromHex(row.hex).value_or(""), row.from_phone).has_value()) << row.hex;
  }
}

TEST(Tpdu, WritesWhatItRead) {
  for (const std::string_view hex : {"31000C914477000910320000A705E8329BFD06", "01000481214300000541424344FF",
                                     "4100038121F300040403010203"}) {
    EXPECT_EQ(ToHex(WriteTpdu(Parsed(hex, true))), hex);
  }
  const std::string deliver = "040C914477000910320000621050210000000AE8329BFD4697D9EC37";
  EXPECT_EQ(ToHex(WriteTpdu(Parsed(deliver, false))), deliver);
  const std::string report = "06110C91447700091032621050210000006210502100000000";
  EXPECT_EQ(ToHex(WriteTpdu(Parsed(report, false))), report);
}

TEST(Tpdu, TheCentreFieldCountsItsOctets) {
  EXPECT_EQ(ToHex(WriteCentre("+447700900000")), "0791447700090000");
  EXPECT_EQ(ToHex(WriteCentre("+123")), "039121F3");
  EXPECT_EQ(ToHex(WriteCentre("")), "00");
  EXPECT_EQ(CentreSize(WriteCentre("+447700900000")), 8U);
  EXPECT_EQ(CentreSize(WriteCentre("")), 1U);
  EXPECT_EQ(CentreSize(""), 0U);
}

TEST(Tpdu, TheNetworkTurnsASubmitIntoADeliver) {
  const Tpdu submit = Parsed("F1000C914477000910320004A70B0500030102015448495321", true);
  const Tpdu deliver = DeliverOf(submit, "+447700900999", kNoon);
  EXPECT_EQ(ToHex(WriteTpdu(deliver)), "C40C914477000990990004621050210000000B0500030102015448495321");
}

TEST(Tpdu, TheNetworkReportsToTheSender) {
  const Tpdu submit = Parsed("31000C914477000910320000A705E8329BFD06", true);
  EXPECT_EQ(ToHex(WriteTpdu(ReportOf(submit, 17, kNoon))),
            "06110C91447700091032621050210000006210502100000000");
}

TEST(Tpdu, TheCodingDecidesHowLongATextIs) {
  EXPECT_EQ(CodingOf(0x00), Coding::kSeptets);
  EXPECT_EQ(CodingOf(0x04), Coding::kOctets);
  EXPECT_EQ(CodingOf(0x08), Coding::kUcs2);
  EXPECT_EQ(CodingOf(0xF0), Coding::kSeptets);
  EXPECT_EQ(CodingOf(0xF5), Coding::kOctets);
  EXPECT_EQ(CodingOf(0xE0), Coding::kUcs2);
  EXPECT_EQ(UserDataOctets(0, 160), 140U);
  EXPECT_EQ(UserDataOctets(0, 1), 1U);
  EXPECT_EQ(UserDataOctets(4, 100), 100U);
}

TEST(Tpdu, SetsATextInItsCoding) {
  Tpdu tpdu;
  SetText(tpdu, u"hello");
  EXPECT_EQ(tpdu.user_data_length, 5);
  EXPECT_EQ(ToHex(tpdu.user_data), "E8329BFD06");
  tpdu.coding = 8;
  SetText(tpdu, u"\u20AC");
  EXPECT_EQ(tpdu.user_data_length, 2);
  EXPECT_EQ(TextOf(tpdu), u"\u20AC");
}

TEST(Tpdu, ATextBehindAHeaderIsFound) {
  Tpdu tpdu;
  tpdu.first_octet = 0x41;
  tpdu.user_data =
      *FromHex("050003010201") + *FromHex("986F79B90D4AC3E7F53688FC66BFE5A0799A0E0AB7CB741668FC76CFCB");
  tpdu.user_data_length = 7 + 33;
  EXPECT_EQ(TextOf(tpdu).substr(0, 9), u"Lorem ips");
}

}  // namespace
}  // namespace celldesk::simulator
