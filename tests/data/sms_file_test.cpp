#include "data/sms_file.h"
#include "data/record_file.h"

#include <gtest/gtest.h>

#include <random>

#include "book_fixture.h"
#include "support/fake_file_system.h"
#include "support/memory/allocation_gate.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kPath = u"folder.sms";
constexpr const char* kDeliverPdu = "07913366003051F5040B913366304381F900005180719120348004D4F29C0E";
constexpr const char* kHiPdu = "11000C912460102143650000A702C834";

std::u16string Texts(int number) {
  if (number == 124) return u"Message delivery SUCCESS, status(%#2x,%s)severity(%s).";
  if (number == 178) return u"ERROR, delivery will by retryied, status(%#2x,%s)severity(%s).";
  return u"Message was NOT delivered, status(%#2x,%s)severity(%s).";
}

std::u16string Wide(std::string_view text) { return {text.begin(), text.end()}; }

class SmsFile : public testing::Test {
 protected:
  Status Read(std::string_view text) {
    files_.files[std::u16string(kPath)] = text;
    return ReadSmsFile(files_, kPath, settings_, [this](std::u16string_view folder) {
      folder_ = folder;
      return SmsTarget{&store_, &observer_};
    });
  }
  Status ReadLines(const std::string& lines) { return Read("SMSArchive11;Outbox;\r\n" + lines); }
  std::string Written() {
    std::vector<const SmsMessage*> messages;
    for (int position = 0; position < store_.count(); ++position) messages.push_back(&store_.At(position));
    EXPECT_EQ(WriteSmsFile(files_, kPath, u"Outbox", messages, Texts), S_OK);
    EXPECT_EQ(files_.open_files, 0);
    return files_.files[std::u16string(kPath)];
  }
  SmsMessage& Add(int status, std::string_view pdu, int length) {
    SmsMessage& message = store_.At(store_.Append());
    message.flags = kMessageInUse;
    message.storage_status = status;
    message.pdu_text = Wide(pdu);
    message.tpdu_length = static_cast<std::int16_t>(length);
    EXPECT_EQ(message.Decode(), S_OK);
    return message;
  }

  FakeFileSystem files_;
  SmsStore store_;
  RecordingObserver observer_;
  SmsFileSettings settings_;
  std::u16string folder_;
};

TEST_F(SmsFile, HoldsAReceivedMessageWithItsSender) {
  Add(0, kDeliverPdu, 23);
  EXPECT_EQ(Written(),
            "SMSArchive11;Outbox;\r\n+33660334189;Test;23;0;" + std::string(kDeliverPdu) + ";\r\n");
}

TEST_F(SmsFile, HoldsAnOutgoingMessageWithItsRecipient) {
  Add(2, kHiPdu, 16);
  EXPECT_EQ(Written(), "SMSArchive11;Outbox;\r\n+420601123456;Hi;16;2;" + std::string(kHiPdu) + ";\r\n");
}

TEST_F(SmsFile, WritesTheCharactersOfThePduForAnUnknownLength) {
  Add(2, kHiPdu, 16).tpdu_length = 0;
  EXPECT_EQ(Written(), "SMSArchive11;Outbox;\r\n+420601123456;Hi;32;2;" + std::string(kHiPdu) + ";\r\n");
}

TEST_F(SmsFile, HoldsAStatusReportWithItsSentence) {
  SmsMessage& report = store_.At(store_.Append());
  report.first_octet = 2;
  report.report.toa = 0x91;
  report.report.number = u"420601";
  report.report.status = 0x46;
  report.pdu_text = u"00";
  EXPECT_EQ(
      Written(),
      "SMSArchive11;Outbox;\r\n+420601;Message was NOT delivered, status(0x46,SM Validity Period Expired)"
      "severity(Permanent error, SC is not making any more transfer attempts).;2;0;00;\r\n");
}

TEST_F(SmsFile, WritesAMessageOfTheReservedTypeWithoutAnAddress) {
  SmsMessage& message = store_.At(store_.Append());
  message.first_octet = 3;
  message.text = u"x";
  message.pdu_text = u"03";
  EXPECT_EQ(Written(), "SMSArchive11;Outbox;\r\n;x;2;0;03;\r\n");
}

TEST_F(SmsFile, WritingStopsAtTheFirstFailure) {
  SmsMessage message;
  message.text.assign(RecordWriter::kBlock, u'x');
  const std::vector<const SmsMessage*> messages(5, &message);
  files_.write_error = kErrorDiskFull;
  files_.allowed_writes = 2;
  EXPECT_EQ(WriteSmsFile(files_, kPath, u"Inbox", messages, Texts), Status{0x80070070});
  EXPECT_EQ(files_.writes, 3);
  files_.open_error = kErrorAccessDenied;
  EXPECT_EQ(WriteSmsFile(files_, kPath, u"Inbox", messages, Texts), Status{0x80070005});
}

TEST_F(SmsFile, ReadsAReceivedMessageAndDecodesIt) {
  EXPECT_EQ(Read("SMSArchive11;Inbox;\r\n+1;other text;23;1;" + std::string(kDeliverPdu) + ";\r\n"), S_OK);
  EXPECT_EQ(folder_, u"Inbox");
  ASSERT_EQ(store_.count(), 1);
  const SmsMessage& message = store_.At(0);
  EXPECT_EQ(message.flags, 0x11U);
  EXPECT_EQ(message.storage_status, 1);
  EXPECT_EQ(message.tpdu_length, 23);
  EXPECT_EQ(message.memory, -1);
  EXPECT_EQ(message.pdu_text, Wide(kDeliverPdu));
  EXPECT_EQ(message.deliver.number, u"33660334189");
  EXPECT_EQ(message.text, u"Test");
  EXPECT_EQ(observer_.rows, (std::vector<int>{0}));
}

TEST_F(SmsFile, ReadsAnOutgoingMessageWithTheLengthInCharacters) {
  EXPECT_EQ(ReadLines("+420601123456;Hi;32;2;" + std::string(kHiPdu) + ";\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).submit.number, u"420601123456");
  EXPECT_EQ(store_.At(0).submit.relative_validity, 0xA7);
  EXPECT_EQ(store_.At(0).text, u"Hi");
}

TEST_F(SmsFile, MakesANewMessageOfALineOfTwoFields) {
  settings_ = {true, false, 173};
  EXPECT_EQ(ReadLines(" +420601123456 ;Happy # New#; Year;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  const SmsMessage& message = store_.At(0);
  EXPECT_EQ(message.flags, 0x1BU);
  EXPECT_EQ(message.storage_status, 2);
  EXPECT_EQ(message.first_octet, 0x31U);
  EXPECT_EQ(message.submit.number, u"420601123456");
  EXPECT_EQ(message.submit.toa, 0x91);
  EXPECT_EQ(message.submit.relative_validity, 173);
  EXPECT_EQ(message.text, u"Happy #New; Year");
  EXPECT_EQ(observer_.rows, (std::vector<int>{0}));
}

TEST_F(SmsFile, GivesANewMessageThePresentSettings) {
  struct Case {
    bool report, reply;
    std::uint32_t first_octet;
  };
  for (const auto& [report, reply, first_octet] :
       {Case{false, false, 0x11}, {true, false, 0x31}, {false, true, 0x91}, {true, true, 0xB1}}) {
    settings_ = {report, reply, 11};
    store_.Clear();
    EXPECT_EQ(ReadLines("0601123456;x;\r\n"), S_OK);
    EXPECT_EQ(store_.At(0).first_octet, first_octet);
    EXPECT_EQ(store_.At(0).submit.toa, 0x81);
  }
}

TEST_F(SmsFile, LeavesANumberThatCannotBeDialledOut) {
  EXPECT_EQ(ReadLines("12;x;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).submit.number, u"");
  EXPECT_EQ(store_.At(0).text, u"x");
}

TEST_F(SmsFile, PreparesAListOfRecipients) {
  EXPECT_EQ(
      ReadLines("// guests\r\n+420601000001;Hi;\r\n\r\n+420601000002;Hello;\r\n@\r\n+420601000003;no;\r\n"),
      S_OK);
  ASSERT_EQ(store_.count(), 2);
  EXPECT_EQ(store_.At(1).submit.number, u"420601000002");
  EXPECT_EQ(observer_.rows, (std::vector<int>{0, 1}));
}

TEST_F(SmsFile, ReadsAHandMadeFileWithBareLineFeeds) {
  EXPECT_EQ(Read("SMSArchive11;Outbox;\n+420601000001;Hi;\n+420601000002;Hello;\n"), S_OK);
  EXPECT_EQ(store_.count(), 2);
}

TEST_F(SmsFile, EndsAtALineThatBreaksOffAfterItsLength) {
  const std::string good = "+420601123456;Hi;16;2;" + std::string(kHiPdu) + ";\r\n";
  EXPECT_EQ(ReadLines(good + "+1234;x;16;\r\n" + good), S_OK);
  EXPECT_EQ(store_.count(), 1);
  EXPECT_EQ(ReadLines("+1234;x;16;2;\r\n" + good), S_OK);
  EXPECT_EQ(store_.count(), 1);
}

TEST_F(SmsFile, PassesOverALineWithoutAText) {
  EXPECT_EQ(ReadLines("+420601123456;\r\n+420601123457;x;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).text, u"x");
}

TEST_F(SmsFile, KeepsAMessageThatDoesNotDecode) {
  EXPECT_EQ(ReadLines("+1234;the text;1;0;03;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).flags, 0x11U);
  EXPECT_EQ(store_.At(0).text, u"the text");
}

TEST_F(SmsFile, TakesNoSettingsForAStoredMessageThatDoesNotDecode) {
  settings_ = {true, true, 173};
  EXPECT_EQ(ReadLines("+420601123456;the text;1;2;03;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_NE(store_.At(0).type(), SmsType::kSubmit);
  EXPECT_EQ(store_.At(0).submit.relative_validity, 0);
  EXPECT_EQ(store_.At(0).text, u"the text");
}

TEST_F(SmsFile, WritesTheSentenceOfAReportWhateverTheTextOfItsLine) {
  EXPECT_EQ(ReadLines("+1;other text;25;1;0006D60B911326880736F4111011719551401110117195714000;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).type(), SmsType::kStatusReport);
  store_.At(0).text = u"other text";
  EXPECT_NE(Written().find(";Message delivery SUCCESS, status("), std::string::npos);
}

TEST_F(SmsFile, KeepsRecipientAndTextOfAMessageThatWasNotEncodedYet) {
  settings_ = {true, false, 173};
  for (const char* status : {"2", "3"}) {
    store_.Clear();
    EXPECT_EQ(ReadLines(std::string("+420601123456;Hi;0;") + status + ";;\r\n"), S_OK);
    ASSERT_EQ(store_.count(), 1);
    EXPECT_EQ(store_.At(0).flags, 0x11U);
    EXPECT_EQ(store_.At(0).first_octet, 0x31U);
    EXPECT_EQ(store_.At(0).submit.relative_validity, 173);
    EXPECT_EQ(Written(), std::string("SMSArchive11;Outbox;\r\n+420601123456;Hi;0;") + status + ";;\r\n");
  }
}

TEST_F(SmsFile, LeavesAReceivedMessageWithoutAPduAsItIs) {
  EXPECT_EQ(ReadLines("+420601123456;Hi;0;1;;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).first_octet, 0U);
  EXPECT_EQ(store_.At(0).text, u"Hi");
}

TEST_F(SmsFile, StopsWhenTheStoreIsFull) {
  while (store_.count() < SmsStore::kLimit) store_.Append();
  store_.At(SmsStore::kLimit - 1).text = u"mine";
  EXPECT_EQ(ReadLines("+1234;x;\r\n"), E_OUTOFMEMORY);
  EXPECT_EQ(store_.At(SmsStore::kLimit - 1).text, u"mine");
  EXPECT_EQ(ReadLines("// nothing\r\n"), S_OK);
}

TEST_F(SmsFile, HoldsNumbersInSixteenBits) {
  EXPECT_EQ(ReadLines("+1234;x;65537;65538;00;\r\n"), S_OK);
  ASSERT_EQ(store_.count(), 1);
  EXPECT_EQ(store_.At(0).tpdu_length, 1);
  EXPECT_EQ(store_.At(0).storage_status, 2);
}

TEST_F(SmsFile, StopsWhenMemoryIsShort) {
  const std::string text = "SMSArchive11;Outbox;\r\n+420601123456;A text of some length;\r\n";
  const ChooseSmsFolder choose = [this](std::u16string_view) { return SmsTarget{&store_, &observer_}; };
  const FieldBytes bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  Status status = S_OK;
  {
    AllocationGate gate;
    gate.Refuse();
    status = ReadMessages(bytes, settings_, choose);
  }
  EXPECT_EQ(status, E_OUTOFMEMORY);
  EXPECT_EQ(store_.count(), 0);
  EXPECT_EQ(ReadMessages(bytes, settings_, choose), S_OK);
  EXPECT_EQ(store_.count(), 1);
}

TEST_F(SmsFile, AppendsToTheMessagesThatAreThere) {
  store_.Append();
  EXPECT_EQ(ReadLines("+1234;x;\r\n"), S_OK);
  EXPECT_EQ(store_.count(), 2);
  EXPECT_EQ(observer_.rows, (std::vector<int>{1}));
}

TEST_F(SmsFile, ImportsNothingForAFolderThatNobodyHas) {
  files_.files[u"x.sms"] = "SMSArchive11;Drafts;\r\n+1234;x;\r\n";
  EXPECT_EQ(ReadSmsFile(files_, u"x.sms", settings_, [](std::u16string_view) { return SmsTarget{}; }), S_OK);
  EXPECT_EQ(store_.count(), 0);
}

TEST_F(SmsFile, RefusesAFileOfAnotherKind) {
  for (const char* text :
       {"", "SMSArchive10;Inbox;\r\n+1234;x;\r\n", "AddrArchive10;SM;1;2;\r\n", "SMSArchive11"}) {
    EXPECT_EQ(Read(text), E_INVALIDARG) << text;
  }
  EXPECT_EQ(store_.count(), 0);
}

TEST_F(SmsFile, GivesTheSystemsErrorWhenTheFileIsNotThere) {
  EXPECT_EQ(ReadSmsFile(files_, u"none.sms", settings_, [](std::u16string_view) { return SmsTarget{}; }),
            Status{0x80070002});
}

TEST_F(SmsFile, ReadsBackWhatWasWritten) {
  std::mt19937 random(20030305);
  constexpr std::u16string_view kAlphabet = u"ab #;@/\r\n!?";
  for (int round = 0; round < 100; ++round) {
    SmsMessage& message = store_.At(store_.Append());
    message.storage_status = kStoredUnsent;
    message.first_octet = 0x11;
    message.submit.toa = 0x91;
    message.submit.number = u"420601123456";
    for (std::size_t i = random() % 40; i > 0; --i) message.text += kAlphabet[random() % kAlphabet.size()];
    if (message.text.starts_with(u"\r\n")) message.text.erase(0, 2);
    ASSERT_EQ(message.Encode(), S_OK);
  }
  const std::string text = Written();
  const int count = store_.count();
  SmsStore before = std::exchange(store_, SmsStore());
  ASSERT_EQ(Read(text), S_OK);
  ASSERT_EQ(store_.count(), count);
  for (int position = 0; position < count; ++position) {
    EXPECT_EQ(store_.At(position).pdu_text, before.At(position).pdu_text);
    EXPECT_EQ(store_.At(position).submit.number, before.At(position).submit.number);
  }
}

TEST_F(SmsFile, ReadsAnyBytesWithoutHarm) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string text = "SMSArchive11;Inbox;\r\n";
    for (int i = 0; i < 60; ++i) text += "#;;\r\n/@19-0A"[random() % 12];
    ASSERT_EQ(Read(text), S_OK);
  }
}

}  // namespace
}  // namespace celldesk
