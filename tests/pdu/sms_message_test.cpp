#include "pdu/sms_message.h"

#include <gtest/gtest.h>

#include "pdu/texts.h"

namespace celldesk {
namespace {

// +420601123456 wrote "hello" on 3 January 1999, 12:34:56.
constexpr std::u16string_view kDeliver = u"040C9124601021436500009910302143650005E8329BFD06";
// The same recipient, message 7, sent 12:34:56, delivered 12:35:10, status 0.
constexpr std::u16string_view kReport = u"06070C91246010214365991030214365009910302153010000";

SmsMessage Message(std::u16string_view pdu, std::int32_t storage_status, int tpdu_length = -1) {
  SmsMessage message;
  message.pdu_text = pdu;
  message.storage_status = storage_status;
  message.tpdu_length = static_cast<std::int16_t>(tpdu_length < 0 ? pdu.size() / 2 : tpdu_length);
  return message;
}

SmsMessage Decoded(std::u16string_view pdu, std::int32_t storage_status, int tpdu_length = -1) {
  SmsMessage message = Message(pdu, storage_status, tpdu_length);
  EXPECT_EQ(message.Decode(), S_OK);
  return message;
}

/// Every field of the record set to something.
SmsMessage Filled(std::uint32_t first_octet, std::int32_t storage_status) {
  SmsMessage message;
  message.flags = 0x1B;
  message.memory = 1;
  message.memory_index = 7;
  message.storage_status = storage_status;
  message.tpdu_length = 23;
  message.pdu_text = u"pdu";
  message.phone_alpha = u"alpha";
  message.first_octet = first_octet;
  message.pid = 1;
  message.dcs = 2;
  message.text = u"text";
  const DateTime time({2001, 3, 0, 5, 9, 5, 7, 0}, true);
  message.submit = {11, 0x91, u"1", time, 167};
  message.deliver = {0x81, u"2", time};
  message.report = {12, 0x85, u"3", time, time, 0x46};
  return message;
}

TEST(SmsMessage, ANewOneIsCleared) {
  const SmsMessage message;
  EXPECT_EQ(message.flags, 0U);
  EXPECT_EQ(message.memory, -1);
  EXPECT_EQ(message.memory_index, 0);
  EXPECT_EQ(message.storage_status, 0);
  EXPECT_EQ(message.tpdu_length, 0);
  EXPECT_EQ(message.first_octet, 0U);
  EXPECT_EQ(message.text, u"");
  EXPECT_FALSE(message.deliver.timestamp.is_set());
}

TEST(SmsMessage, ClearForgetsEverythingButUnsetCalendarFields) {
  SmsMessage message = Filled(0x11, kStoredSent);
  message.Clear();
  EXPECT_EQ(message.flags, 0U);
  EXPECT_EQ(message.memory, -1);
  EXPECT_EQ(message.memory_index, 0);
  EXPECT_EQ(message.storage_status, 0);
  EXPECT_EQ(message.tpdu_length, 0);
  EXPECT_EQ(message.pdu_text + message.phone_alpha + message.text, u"");
  EXPECT_EQ(message.first_octet, 0U);
  EXPECT_EQ(message.pid + message.dcs, 0);
  EXPECT_EQ(message.submit.reference + message.submit.toa + message.submit.relative_validity, 0);
  EXPECT_EQ(message.deliver.toa + message.report.reference + message.report.toa, 0);
  EXPECT_EQ(message.report.status, 0U);
  EXPECT_EQ(message.submit.number + message.deliver.number + message.report.number, u"");
  for (const DateTime* time : {&message.submit.absolute_validity, &message.deliver.timestamp,
                               &message.report.timestamp, &message.report.discharge}) {
    EXPECT_FALSE(time->is_set());
    EXPECT_EQ(time->fields, (CalendarTime{2001, 3, 0, 5, 9, 5, 7, 0}));
  }
}

TEST(SmsMessage, AReceivedDeliverGivesSenderTimeAndText) {
  const SmsMessage message = Decoded(kDeliver, kReceivedUnread);
  EXPECT_EQ(message.type(), SmsType::kDeliver);
  EXPECT_EQ(message.first_octet, 0x04U);
  EXPECT_EQ(message.deliver.number, u"420601123456");
  EXPECT_EQ(message.deliver.toa, 0x91);
  EXPECT_EQ(message.deliver.timestamp.fields, (CalendarTime{1999, 1, 0, 3, 12, 34, 56, 0}));
  EXPECT_TRUE(message.deliver.timestamp.is_set());
  EXPECT_EQ(message.pid, 0);
  EXPECT_EQ(message.dcs, 0);
  EXPECT_EQ(message.text, u"hello");
}

TEST(SmsMessage, TheServiceCentreIsSkippedByLength) {
  const std::u16string with_centre = u"0791246010000000" + std::u16string(kDeliver);
  const SmsMessage message = Decoded(with_centre, kReceivedRead, static_cast<int>(kDeliver.size() / 2));
  EXPECT_EQ(message.deliver.number, u"420601123456");
  EXPECT_EQ(message.text, u"hello");
}

TEST(SmsMessage, APduOfFiftyCharactersAndTwentyOctetsBeginsAtOctetFive) {
  // MTI 1 at octet 5 only: a received SUBMIT is not handled.
  std::u16string pdu =
      u"0000000000"
      u"01" +
      std::u16string(38, u'0');
  ASSERT_EQ(pdu.size(), 50U);
  SmsMessage message = Message(pdu, kReceivedRead, 20);
  EXPECT_EQ(message.Decode(), E_NOTIMPL);
  EXPECT_EQ(message.first_octet, 0x01U);
}

TEST(SmsMessage, APduOfFortyCharactersAndTwentyOctetsBeginsAtOctetZero) {
  SmsMessage message = Message(u"01" + std::u16string(38, u'0'), kReceivedRead, 20);
  EXPECT_EQ(message.Decode(), E_NOTIMPL);
  EXPECT_EQ(message.first_octet, 0x01U);
}

TEST(SmsMessage, ATpduLongerThanThePduBeginsAtOctetZero) {
  SmsMessage message = Message(kDeliver, kReceivedRead, 200);
  EXPECT_EQ(message.Decode(), S_OK);
  EXPECT_EQ(message.text, u"hello");
}

TEST(SmsMessage, AnUnknownTpduLengthReadsAnEmptyDeliver) {
  const SmsMessage message = Decoded(u"07" + std::u16string(98, u'F'), kReceivedRead, 0);
  EXPECT_EQ(message.first_octet, 0U);
  EXPECT_EQ(message.deliver.number, u"");
  EXPECT_EQ(message.text, u"");
  SmsMessage short_one = Message(u"07FFFFFF", kReceivedRead, 0);
  EXPECT_EQ(short_one.Decode(), E_FAIL);
}

TEST(SmsMessage, ANegativeTpduLengthFails) {
  SmsMessage message = Message(kDeliver, kReceivedRead);
  message.tpdu_length = -32768;
  EXPECT_EQ(message.Decode(), E_FAIL);
}

TEST(SmsMessage, AReservedTypeFails) {
  SmsMessage unknown_length = Message(u"0B", kReceivedRead, 0);
  EXPECT_EQ(unknown_length.Decode(), E_FAIL);
  SmsMessage received = Message(u"0B910000", kReceivedRead);
  EXPECT_EQ(received.Decode(), E_FAIL);
  EXPECT_EQ(received.first_octet, 0x0BU);
  SmsMessage stored = Message(u"0B910000", kStoredSent);
  EXPECT_EQ(stored.Decode(), E_FAIL);
}

TEST(SmsMessage, AnEmptyPduFails) {
  SmsMessage message = Message(u"", kReceivedRead, 20);
  EXPECT_EQ(message.Decode(), E_FAIL);
  message.pdu_text = u"0";
  EXPECT_EQ(message.Decode(), E_FAIL);
}

TEST(SmsMessage, UserDataIsSeptetsWhateverTheCodingSchemeSays) {
  std::u16string pdu(kDeliver);
  pdu.replace(20, 2, u"08");
  const SmsMessage message = Decoded(pdu, kReceivedRead);
  EXPECT_EQ(message.dcs, 0x08);
  EXPECT_EQ(message.text, u"hello");
}

TEST(SmsMessage, UserDataHeadersAreReadAsText) {
  std::u16string pdu(kDeliver);
  pdu.replace(0, 2, u"44");
  EXPECT_EQ(Decoded(pdu, kReceivedRead).text, u"hello");
}

TEST(SmsMessage, SeptetsMissingAtTheEndGiveCommercialAts) {
  const std::u16string_view cut = kDeliver.substr(0, kDeliver.size() - 4);
  EXPECT_EQ(Decoded(cut, kReceivedRead, 24).text.substr(0, 3), u"hel");
  std::u16string empty(kDeliver.substr(0, 38));
  EXPECT_EQ(Decoded(empty, kReceivedRead).text, u"@@@@@");
}

TEST(SmsMessage, FieldsDecodedBeforeAFailureKeepTheirNewValues) {
  SmsMessage message = Message(u"04029121", kReceivedRead);
  message.text = u"old";
  message.deliver.number = u"old";
  EXPECT_EQ(message.Decode(), E_FAIL);
  EXPECT_EQ(message.deliver.number, u"12");
  EXPECT_EQ(message.text, u"old");
  EXPECT_EQ(message.pdu_text, u"04029121");
}

TEST(SmsMessage, ACutDeliverDecodesFromTheLeastThatItsTimestampNeeds) {
  // The time stamp begins at octet 11 and needs 12 characters by the measure of characters less octets.
  for (std::size_t length = 0; length <= kDeliver.size(); ++length) {
    SmsMessage message = Message(kDeliver.substr(0, length), kReceivedRead);
    EXPECT_EQ(message.Decode(), length >= 23 ? S_OK : E_FAIL) << length;
  }
}

TEST(SmsMessage, ACutStatusReportDecodesFromTheLeastThatItsTimesNeed) {
  // The second time stamp begins at octet 17.
  for (std::size_t length = 0; length <= kReport.size(); ++length) {
    SmsMessage message = Message(kReport.substr(0, length), kReceivedRead);
    EXPECT_EQ(message.Decode(), length >= 29 ? S_OK : E_FAIL) << length;
  }
}

TEST(SmsMessage, ACutSubmitDecodesFromTheLeastThatItsFieldsNeed) {
  // The relative validity is octet 12, the length of the user data octet 13.
  const std::u16string_view submit = u"11000C912460102143650000A702C834";
  for (std::size_t length = 0; length <= submit.size(); ++length) {
    SmsMessage message = Message(submit.substr(0, length), kStoredUnsent);
    EXPECT_EQ(message.Decode(), length >= 15 ? S_OK : E_FAIL) << length;
  }
}

TEST(SmsMessage, AReceivedSubmitIsNotHandled) {
  SmsMessage message = Message(u"11000C912460102143650000A702C834", kReceivedUnread);
  EXPECT_EQ(message.Decode(), E_NOTIMPL);
}

TEST(SmsMessage, AReceivedStatusReportGivesReferenceTimesAndStatus) {
  SmsMessage message = Message(kReport, kReceivedUnread);
  message.text = u"stays";
  ASSERT_EQ(message.Decode(), S_OK);
  EXPECT_EQ(message.report.reference, 7);
  EXPECT_EQ(message.report.number, u"420601123456");
  EXPECT_EQ(message.report.toa, 0x91);
  EXPECT_EQ(message.report.timestamp.fields, (CalendarTime{1999, 1, 0, 3, 12, 34, 56, 0}));
  EXPECT_EQ(message.report.discharge.fields, (CalendarTime{1999, 1, 0, 3, 12, 35, 10, 0}));
  EXPECT_EQ(message.report.status, 0U);
  EXPECT_EQ(message.text, u"stays");
}

TEST(SmsMessage, AStatusReportCutBeforeItsStatusKeepsTheTimes) {
  SmsMessage message = Message(
      u"06070091"
      u"99103021436500",
      kReceivedUnread);
  message.report.status = 0x46;
  EXPECT_EQ(message.Decode(), E_FAIL);
  EXPECT_EQ(message.report.timestamp.fields.year, 1999);
  EXPECT_EQ(message.report.status, 0x46U);
}

TEST(SmsMessage, AStoredSubmitGivesDestinationValidityAndText) {
  const SmsMessage message = Decoded(u"31050C912460102143650000A702C834", kStoredUnsent);
  EXPECT_EQ(message.submit.reference, 5);
  EXPECT_EQ(message.submit.number, u"420601123456");
  EXPECT_EQ(message.submit.toa, 0x91);
  EXPECT_EQ(message.submit.relative_validity, 0xA7);
  EXPECT_EQ(message.text, u"Hi");
}

TEST(SmsMessage, AnAbsoluteValidityIsRead) {
  const SmsMessage message = Decoded(u"19000C9124601021436500009910302143650002C834", kStoredUnsent);
  EXPECT_EQ(message.submit.absolute_validity.fields, (CalendarTime{1999, 1, 0, 3, 12, 34, 56, 0}));
  EXPECT_TRUE(message.submit.absolute_validity.is_set());
  EXPECT_EQ(message.text, u"Hi");
}

TEST(SmsMessage, NoneAndEnhancedValidityReadNothing) {
  EXPECT_EQ(Decoded(u"01000C91246010214365000002C834", kStoredUnsent).text, u"Hi");
  EXPECT_EQ(Decoded(u"09000C91246010214365000002C834", kStoredUnsent).text, u"Hi");
}

TEST(SmsMessage, AStoredDeliverDecodesToNoFields) {
  const SmsMessage message = Decoded(kDeliver, kStoredSent);
  EXPECT_EQ(message.first_octet, 0x04U);
  EXPECT_EQ(message.deliver.number, u"");
  EXPECT_EQ(message.text, u"");
}

TEST(SmsMessage, AStoredStatusReportIsNotHandled) {
  SmsMessage message = Message(kReport, kStoredUnsent);
  EXPECT_EQ(message.Decode(), E_NOTIMPL);
}

TEST(SmsMessage, AnyOtherStorageStatusIsAStoredMessage) {
  SmsMessage message = Message(kReport, 9);
  EXPECT_FALSE(message.is_received());
  EXPECT_EQ(message.Decode(), E_NOTIMPL);
}

TEST(SmsMessage, AssignmentCopiesThePduAndTheSelectedPartOnly) {
  struct Case {
    std::uint32_t first_octet;
    std::int32_t storage_status;
    bool submit, deliver, report;
  };
  const Case cases[] = {
      {0x00, kReceivedRead, false, true, false},  {0x02, kReceivedUnread, false, false, true},
      {0x01, kReceivedRead, false, false, false}, {0x01, kStoredUnsent, true, false, false},
      {0x00, kStoredSent, false, false, false},   {0x02, kStoredSent, false, false, false},
      {0x03, kReceivedRead, false, false, false}};
  for (const Case& c : cases) {
    const SmsMessage source = Filled(c.first_octet, c.storage_status);
    SmsMessage copy;
    copy = source;
    EXPECT_EQ(copy.flags, 0x1BU);
    EXPECT_EQ(copy.memory, 1);
    EXPECT_EQ(copy.memory_index, 7);
    EXPECT_EQ(copy.storage_status, c.storage_status);
    EXPECT_EQ(copy.tpdu_length, 23);
    EXPECT_EQ(copy.pdu_text + copy.phone_alpha + copy.text, u"pdualphatext");
    EXPECT_EQ(copy.first_octet, c.first_octet);
    EXPECT_EQ(copy.pid, 1);
    EXPECT_EQ(copy.dcs, 2);
    EXPECT_EQ(copy.submit.number, c.submit ? u"1" : u"");
    EXPECT_EQ(copy.submit.relative_validity, c.submit ? 167 : 0);
    EXPECT_EQ(copy.deliver.number, c.deliver ? u"2" : u"");
    EXPECT_EQ(copy.report.number, c.report ? u"3" : u"");
    EXPECT_EQ(copy.report.status, c.report ? 0x46U : 0U);
  }
}

TEST(SmsMessage, AssignmentLeavesTheOtherPartsOfTheDestination) {
  SmsMessage copy = Filled(0x11, kStoredUnsent);
  copy.deliver.number = u"mine";
  SmsMessage source;
  source.storage_status = kStoredUnsent;
  source.first_octet = 0x11;
  source.submit.number = u"theirs";
  copy = source;
  EXPECT_EQ(copy.submit.number, u"theirs");
  EXPECT_EQ(copy.deliver.number, u"mine");
}

TEST(SmsMessage, ACopyIsANewMessageAssigned) {
  const SmsMessage source = Filled(0x00, kReceivedRead);
  const SmsMessage copy(source);
  EXPECT_EQ(copy.deliver.number, u"2");
  EXPECT_EQ(copy.submit.number, u"");
  EXPECT_EQ(copy.text, u"text");
}

TEST(SmsMessage, AssignmentToItselfChangesNothing) {
  SmsMessage message = Filled(0x11, kStoredUnsent);
  const SmsMessage& same = message;
  message = same;
  EXPECT_EQ(message.submit.number, u"1");
  EXPECT_EQ(message.text, u"text");
}

TEST(SmsMessage, OnlyReceivedMessagesAndReportsHaveATimestamp) {
  const SmsMessage deliver = Filled(0x04, kReceivedRead);
  EXPECT_EQ(deliver.Timestamp(), &deliver.deliver.timestamp);
  const SmsMessage report = Filled(0x02, kReceivedUnread);
  EXPECT_EQ(report.Timestamp(), &report.report.timestamp);
  EXPECT_EQ(Filled(0x11, kReceivedRead).Timestamp(), nullptr);
  EXPECT_EQ(Filled(0x11, kStoredUnsent).Timestamp(), nullptr);
  EXPECT_EQ(Filled(0x00, kStoredUnsent).Timestamp(), nullptr);
}

TEST(SmsMessage, OnlyReceivedReportsAndStoredSubmitsHaveAReference) {
  EXPECT_EQ(Filled(0x02, kReceivedRead).Reference(), 12);
  EXPECT_EQ(Filled(0x11, kStoredSent).Reference(), 11);
  EXPECT_EQ(Filled(0x11, kReceivedRead).Reference(), 0);
  EXPECT_EQ(Filled(0x02, kStoredSent).Reference(), 0);
  EXPECT_EQ(Filled(0x00, kReceivedRead).Reference(), 0);
}

TEST(SmsMessage, AReportExplainsItselfInWords) {
  SmsMessage message;
  message.report.status = 0x46;
  EXPECT_EQ(message.StatusText(), u"SM Validity Period Expired");
  EXPECT_EQ(message.SeverityText(), u"Permanent error, SC is not making any more transfer attempts");
  EXPECT_EQ(message.DeliveryReportText(TestText),
            u"Message was NOT delivered, status(0x46,SM Validity Period Expired)"
            u"severity(Permanent error, SC is not making any more transfer attempts).");
  message.report.status = 0;
  EXPECT_EQ(message.DeliveryReportText(TestText),
            u"Message delivery SUCCESS, status(0x0,Short message received by the SME)"
            u"severity(Short message transaction completed).");
  message.report.status = 0x30;
  EXPECT_EQ(message.DeliveryReportText(TestText),
            u"ERROR, delivery will by retryied, status(0x30,<Reserved>)"
            u"severity(Temporary error, SC still trying to transfer SM).");
}

TEST(SmsMessage, AReportOfAnUnknownClassReadsNeutrally) {
  SmsMessage message;
  message.report.status = 0x80;
  EXPECT_EQ(message.DeliveryReportText(TestText),
            u"Message delivery is UNKNOWN, status(0x80,<Reserved>)severity(<Unknown>).");
}

}  // namespace
}  // namespace celldesk
