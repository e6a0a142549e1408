#include "ui/sms_columns.h"

#include <gmock/gmock.h>

#include "support/fake_locale.h"
#include "ui/sms/sample_messages.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

constexpr CalendarTime kMorning{2026, 1, 0, 4, 9, 5, 7, 0};
constexpr CalendarTime kEvening{2026, 1, 0, 4, 18, 30, 0, 0};

struct SmsColumnsTest : testing::Test {
  SmsColumnsTest() {
    AddressEntry& entry = sim.At(0);
    entry.name = u"Anna";
    entry.number = u"+447700900101";
    entry.flags = AddressEntry::kOccupied;
    phone.At(0).number = u"112";
    phone.At(0).flags = AddressEntry::kOccupied;
  }

  std::string Inbox(const SmsMessage& message, int column, bool names = false) const {
    std::u16string buffer;
    return Utf8(inbox.Text(message, column, names, buffer));
  }
  std::string Outbox(const SmsMessage& message, int column, bool names = false) const {
    std::u16string buffer;
    return Utf8(outbox.Text(message, column, names, buffer));
  }
  std::string Validity(std::uint8_t value) const {
    SmsMessage message = OutgoingRecord(u"0123", u"");
    message.first_octet = 0x11;
    message.submit.relative_validity = value;
    return Outbox(message, SmsColumns::kValidity);
  }

  FakeLocale locale;
  AddressBook sim{u"SM", true};
  AddressBook phone{u"ME", false};
  AddressBooks books{sim, phone};
  SmsColumns inbox{SmsFolder::kInbox, books, locale};
  SmsColumns outbox{SmsFolder::kOutbox, books, locale};
};

SmsMessage Report(std::uint32_t status) {
  SmsMessage message;
  message.storage_status = kReceivedRead;
  message.first_octet = 2;
  message.report.number = u"447700900101";
  message.report.toa = 0x91;
  message.report.status = status;
  message.report.timestamp = DateTime(kEvening, true);
  return message;
}

TEST_F(SmsColumnsTest, NamesTheMemoryOfAMessage) {
  SmsMessage message = ReceivedRecord(u"0123", kMorning, u"");
  const std::vector<std::string> names = {"SM", "ME", "MT", "BM"};
  for (std::int16_t memory = 0; memory < 4; ++memory) {
    message.memory = memory;
    EXPECT_EQ(Inbox(message, 0), names[static_cast<std::size_t>(memory)]);
    EXPECT_EQ(Outbox(message, 0), names[static_cast<std::size_t>(memory)]);
  }
  message.memory = -1;
  EXPECT_EQ(Inbox(message, 0), "");
  message.memory = 17;
  EXPECT_EQ(Inbox(message, 0), "");
}

TEST_F(SmsColumnsTest, FormatsNumbersByTheirType) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"+447700900101", kMorning, u""), 1), "+447700900101");
  EXPECT_EQ(Inbox(ReceivedRecord(u"0123", kMorning, u""), 1), "0123");
  EXPECT_EQ(Inbox(Report(0), 1), "+447700900101");
  EXPECT_EQ(Outbox(OutgoingRecord(u"+4412", u""), 1), "+4412");
}

TEST_F(SmsColumnsTest, PutsNamesInPlaceOfNumbersThatAreInABook) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"+447700900101", kMorning, u""), 1, true), "Anna");
  EXPECT_EQ(Inbox(Report(0), 1, true), "Anna");
  EXPECT_EQ(Outbox(OutgoingRecord(u"+447700900101", u""), 1, true), "Anna");
  EXPECT_EQ(Inbox(ReceivedRecord(u"0123", kMorning, u""), 1, true), "0123");
}

TEST_F(SmsColumnsTest, KeepsTheNumberOfAnEntryWithoutName) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"+112", kMorning, u""), 1, true), "+112");
  SmsMessage emergency = ReceivedRecord(u"", kMorning, u"");
  emergency.deliver.number = u"112";
  EXPECT_EQ(Inbox(emergency, 1, true), "112");
}

TEST_F(SmsColumnsTest, AReceivedMessageToSendShowsNeitherNumberNorDateNorText) {
  SmsMessage message = ReceivedRecord(u"+447700900101", kMorning, u"text");
  message.first_octet = 1;
  for (const int column : {1, 2, 3}) EXPECT_EQ(Inbox(message, column, true), "");
}

TEST_F(SmsColumnsTest, ShowsTheTimeStampInTheUsersFormats) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"0123", kMorning, u""), 2), "4.1.2026 09:05:07");
  EXPECT_EQ(Inbox(Report(0), 2), "4.1.2026 18:30:00");
  SmsMessage unknown = ReceivedRecord(u"0123", kMorning, u"");
  unknown.deliver.timestamp.MarkSet(false);
  EXPECT_EQ(Inbox(unknown, 2), "");
}

TEST_F(SmsColumnsTest, ShowsTheBodyOrTheSentenceOfAReport) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"0123", kMorning, u"Hi"), 3), "Hi");
  EXPECT_EQ(Inbox(Report(0x00), 3),
            "Message delivery SUCCESS, status(0x0,Short message received by the SME)"
            "severity(Short message transaction completed).");
  EXPECT_EQ(Inbox(Report(0x21), 3),
            "ERROR, delivery will by retryied, status(0x21,SME busy)"
            "severity(Temporary error, SC still trying to transfer SM).");
  EXPECT_EQ(Inbox(Report(0x46), 3),
            "Message was NOT delivered, status(0x46,SM Validity Period Expired)"
            "severity(Permanent error, SC is not making any more transfer attempts).");
  EXPECT_EQ(Inbox(Report(0x60), 3),
            "Message was NOT delivered, status(0x60,Congestion)"
            "severity(Temporary error, SC is not making any more transfer attempts).");
}

TEST_F(SmsColumnsTest, AReportOfAnUnknownClassHasANeutralSentence) {
  EXPECT_EQ(Inbox(Report(0x80), 3),
            "Message delivery is UNKNOWN, status(0x80,<Reserved>)severity(<Unknown>).");
}

TEST_F(SmsColumnsTest, ShowsTheBodyOfAnOutgoingMessage) {
  EXPECT_EQ(Outbox(OutgoingRecord(u"0123", u"Hello"), 3), "Hello");
}

TEST_F(SmsColumnsTest, ShowsRelativeValidityInHoursDaysAndWeeks) {
  EXPECT_EQ(Validity(0), "0:5 hours");
  EXPECT_EQ(Validity(11), "1:0 hours");
  EXPECT_EQ(Validity(143), "12:0 hours");
  EXPECT_EQ(Validity(144), "12:30 hours");
  EXPECT_EQ(Validity(167), "24:0 hours");
  EXPECT_EQ(Validity(168), "2 days");
  EXPECT_EQ(Validity(196), "30 days");
  EXPECT_EQ(Validity(197), "5 weeks");
  EXPECT_EQ(Validity(255), "63 weeks");
}

TEST_F(SmsColumnsTest, ShowsAbsoluteValidityAndNothingForTheOthers) {
  SmsMessage message = OutgoingRecord(u"0123", u"");
  EXPECT_EQ(Outbox(message, 2), "");
  message.first_octet = 0x09;
  EXPECT_EQ(Outbox(message, 2), "");
  message.first_octet = 0x19;
  message.submit.absolute_validity = DateTime(kEvening, true);
  EXPECT_EQ(Outbox(message, 2), "till 4.1.2026 18:30:00");
}

TEST_F(SmsColumnsTest, AColumnBeyondTheLastIsEmpty) {
  EXPECT_EQ(Inbox(ReceivedRecord(u"0123", kMorning, u"Hi"), 4), "");
}

TEST_F(SmsColumnsTest, FirstHeaderOrdersByTheMemorysName) {
  SmsMessage sim_message = ReceivedRecord(u"0123", kEvening, u"");
  SmsMessage phone_message = ReceivedRecord(u"0123", kMorning, u"");
  phone_message.memory = 1;
  EXPECT_GT(inbox.Compare(sim_message, phone_message, 0, false), 0);
  EXPECT_LT(outbox.Compare(phone_message, sim_message, 0, false), 0);
  EXPECT_EQ(inbox.Compare(sim_message, sim_message, 0, false), 0);
}

TEST_F(SmsColumnsTest, SenderHeaderOrdersByTimeStamp) {
  const SmsMessage early = ReceivedRecord(u"0999", kMorning, u"");
  const SmsMessage late = ReceivedRecord(u"0111", kEvening, u"");
  EXPECT_LT(inbox.Compare(early, late, 1, false), 0);
  EXPECT_GT(inbox.Compare(late, early, 1, false), 0);
  EXPECT_LT(inbox.Compare(early, Report(0), 1, false), 0);
}

TEST_F(SmsColumnsTest, TimesAreComparedInStepsOfATenthOfASecond) {
  SmsMessage one = ReceivedRecord(u"0111", kMorning, u""), other = one;
  CalendarTime time = *ToCalendarTime((((*ToFileTime(kMorning) >> 20) + 1) << 20) + 20000);
  one.deliver.timestamp = DateTime(time, true);
  time.milliseconds = static_cast<std::uint16_t>(time.milliseconds + 50);
  other.deliver.timestamp = DateTime(time, true);
  EXPECT_EQ(inbox.Compare(one, other, 1, false), 0);
  time.milliseconds = static_cast<std::uint16_t>(time.milliseconds + 100);
  other.deliver.timestamp = DateTime(time, true);
  EXPECT_LT(inbox.Compare(one, other, 1, false), 0);
}

TEST_F(SmsColumnsTest, DateHeaderOrdersByTheDisplayedText) {
  const SmsMessage tenth = ReceivedRecord(u"0123", {2026, 1, 0, 10, 1, 0, 0, 0}, u"");
  const SmsMessage fourth = ReceivedRecord(u"0123", {2026, 1, 0, 4, 1, 0, 0, 0}, u"");
  EXPECT_LT(inbox.Compare(tenth, fourth, 2, false), 0);
  EXPECT_GT(inbox.Compare(tenth, fourth, 1, false), 0);
}

TEST_F(SmsColumnsTest, BodyHeaderOrdersTheInboxAndNotTheOutbox) {
  EXPECT_LT(inbox.Compare(ReceivedRecord(u"0123", kMorning, u"A"), ReceivedRecord(u"0123", kMorning, u"B"), 3,
                          false),
            0);
  EXPECT_EQ(outbox.Compare(OutgoingRecord(u"0123", u"A"), OutgoingRecord(u"0123", u"B"), 3, false), 0);
}

TEST_F(SmsColumnsTest, RecipientHeaderOrdersByValidity) {
  std::vector<SmsMessage> ordered(6, OutgoingRecord(u"0123", u""));
  const std::vector<std::uint32_t> octets = {0x01, 0x09, 0x11, 0x11, 0x19, 0x19};
  for (std::size_t i = 0; i < octets.size(); ++i) ordered[i].first_octet = octets[i];
  ordered[2].submit.relative_validity = 5;
  ordered[3].submit.relative_validity = 167;
  ordered[4].submit.absolute_validity = DateTime(kMorning, true);
  ordered[5].submit.absolute_validity = DateTime(kEvening, true);
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    for (std::size_t k = 0; k < ordered.size(); ++k) {
      const int order = outbox.Compare(ordered[i], ordered[k], 1, false);
      EXPECT_EQ((order > 0) - (order < 0), (i > k) - (i < k)) << i << " and " << k;
    }
  }
}

TEST_F(SmsColumnsTest, ValidityHeaderOrdersByTheDisplayedText) {
  SmsMessage day = OutgoingRecord(u"0123", u""), weeks = day;
  day.first_octet = weeks.first_octet = 0x11;
  day.submit.relative_validity = 167;
  weeks.submit.relative_validity = 206;
  EXPECT_LT(outbox.Compare(weeks, day, 2, false), 0);
  EXPECT_GT(outbox.Compare(weeks, day, 1, false), 0);
}

TEST_F(SmsColumnsTest, AMessageWithoutValidTimeEqualsAnyOther) {
  const SmsMessage valid = ReceivedRecord(u"0123", kMorning, u"");
  SmsMessage impossible = ReceivedRecord(u"0123", {2026, 15, 0, 4, 9, 5, 7, 0}, u"");
  SmsMessage unset = valid, outgoing = valid;
  unset.deliver.timestamp.MarkSet(false);
  outgoing.first_octet = 1;
  for (const SmsMessage& invalid : {impossible, unset, outgoing}) {
    EXPECT_EQ(inbox.Compare(valid, invalid, 1, false), 0);
    EXPECT_EQ(inbox.Compare(invalid, valid, 1, false), 0);
    EXPECT_TRUE(inbox.SortsLast(invalid, 1));
    EXPECT_FALSE(inbox.SortsLast(invalid, 2));
  }
  EXPECT_FALSE(inbox.SortsLast(valid, 1));
}

TEST_F(SmsColumnsTest, OnlyAnAbsoluteValidityCanBeWithoutPlaceInTheOutbox) {
  SmsMessage message = OutgoingRecord(u"0123", u"");
  EXPECT_FALSE(outbox.SortsLast(message, 1));
  message.first_octet = 0x19;
  EXPECT_TRUE(outbox.SortsLast(message, 1));
  message.submit.absolute_validity = DateTime(kMorning, true);
  EXPECT_FALSE(outbox.SortsLast(message, 1));
}

TEST(SmsFolder, HoldsTheMessagesOfItsStatesThatAreInUse) {
  SmsMessage message;
  for (const int status : {kReceivedUnread, kReceivedRead, kStoredUnsent, kStoredSent, 4, -1}) {
    message.storage_status = status;
    message.flags = kMessageInUse;
    EXPECT_EQ(BelongsTo(SmsFolder::kInbox, message), status == 0 || status == 1) << status;
    EXPECT_EQ(BelongsTo(SmsFolder::kOutbox, message), status == 2 || status == 3) << status;
    message.flags = kMessageChanged;
    EXPECT_FALSE(BelongsTo(SmsFolder::kInbox, message));
    EXPECT_FALSE(BelongsTo(SmsFolder::kOutbox, message));
  }
}

TEST(SmsFolder, ChoosesTheFontByTheFlagsTheFirstMatchWins) {
  const auto font = [](std::uint32_t flags) {
    SmsMessage message;
    message.flags = kMessageInUse | flags;
    return FontFor(message);
  };
  for (std::uint32_t others = 0; others < 256; ++others) {
    EXPECT_EQ(font(others | kMessageToDelete), FontRole::kStruckOut);
  }
  EXPECT_EQ(font(kMessageToSend | kMessageToStore | kMessageNotOpened), FontRole::kBoldItalic);
  EXPECT_EQ(font(kMessageToSend | kMessageNotOpened), FontRole::kItalic);
  EXPECT_EQ(font(kMessageToStore), FontRole::kBold);
  EXPECT_EQ(font(kMessageNotOpened), FontRole::kBold);
  EXPECT_EQ(font(kMessageChanged | kMessageNew), FontRole::kNormal);
}

}  // namespace
}  // namespace celldesk
