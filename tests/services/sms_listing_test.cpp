#include "services/sms_listing.h"

#include "sms_fixture.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;

constexpr const char* kDeliverPdu = "07913366003051F5040B913366304381F900005180719120348004D4F29C0E";

/// A session that has learned the memories `read`; the rest of the script follows.
struct ListSession : SmsSession {
  explicit ListSession(const std::string& read, const std::string& script)
      : SmsSession(Capabilities(read) + script) {
    EXPECT_EQ(service.QueryCapabilities(), S_OK);
  }

  SmsMessage& At(int position) { return service.messages().At(position); }
  int count() const { return service.messages().count(); }

  RecordingList list;
};

std::string List(const std::string& lines) { return "> AT+CMGL=4\\r\n" + lines; }

TEST(SmsService, ListsAReceivedMessage) {
  ListSession session("\"SM\"",
                      Select("SM") + List("< +CMGL: 3,0,,23\n< " + std::string(kDeliverPdu) + "\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), 1);
  const SmsMessage& message = session.At(0);
  EXPECT_EQ(message.memory, 0);
  EXPECT_EQ(message.memory_index, 3);
  EXPECT_EQ(message.storage_status, 0);
  EXPECT_EQ(message.phone_alpha, u"");
  EXPECT_EQ(message.tpdu_length, 23);
  EXPECT_EQ(message.flags, 0x21U);
  EXPECT_EQ(message.pdu_text, std::u16string(kDeliverPdu, kDeliverPdu + 62));
  EXPECT_EQ(message.deliver.number, u"33660334189");
  EXPECT_EQ(message.text, u"Test");
  EXPECT_EQ(session.list.rows, (std::vector<int>{0}));
  EXPECT_EQ(session.list.repaints, 1);
}

struct HeaderCase {
  const char* header;
  int index, status, length;
  std::u16string alpha;
  std::uint32_t flags;
};

class SmsServiceHeader : public testing::TestWithParam<HeaderCase> {};

TEST_P(SmsServiceHeader, IsTakenWithOrWithoutTheAlphaField) {
  ListSession session("\"ME\"",
                      Select("ME") + List("< " + std::string(GetParam().header) + "\n< 00\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  ASSERT_EQ(session.count(), 1);
  const SmsMessage& message = session.At(0);
  EXPECT_EQ(message.memory, 1);
  EXPECT_EQ(message.memory_index, GetParam().index);
  EXPECT_EQ(message.storage_status, GetParam().status);
  EXPECT_EQ(message.tpdu_length, GetParam().length);
  EXPECT_EQ(message.phone_alpha, GetParam().alpha);
  EXPECT_EQ(message.flags, GetParam().flags);
}

INSTANTIATE_TEST_SUITE_P(Lines, SmsServiceHeader,
                         testing::Values(HeaderCase{"+CMGL: 3,1,,23", 3, 1, 23, u"", 1},
                                         HeaderCase{"+CMGL: 3,1,23", 3, 1, 23, u"", 1},
                                         HeaderCase{"+CMGL: 0,0,\"\",23", 0, 0, 23, u"", 0x21},
                                         HeaderCase{"+CMGL: 26,2,\"Doe, John\",17", 26, 2, 17, u"Doe, John",
                                                    1},
                                         HeaderCase{"+CMGL:7,3,\",x\",9", 7, 3, 9, u",x", 1},
                                         HeaderCase{"+CMGL: 1, 0,,23", 1, 0, 23, u"", 0x21},
                                         HeaderCase{"+CMGL: 1,4,,23", 1, 4, 23, u"", 0},
                                         HeaderCase{"+CMGL: 1", 1, 0, 0, u"", 0x21},
                                         HeaderCase{"+CMGL: 65536,-1,,40000", 0, -1, -25536, u"", 0},
                                         HeaderCase{"+CMGL:", 0, 0, 0, u"", 0x21}));

TEST(SmsService, ListsTheMemoriesThatThePhoneReadsFromInTheirOrder) {
  ListSession session("\"ME\",\"SM\",\"SR\"", Select("SM") + List("< +CMGL: 1,1,,0\n< 00\n< OK\n") +
                                                  Select("ME") + List("< OK\n") + Select("SR") +
                                                  List("< +CMGL: 2,1,,0\n< 00\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), 2);
  EXPECT_EQ(session.At(0).memory, 0);
  EXPECT_EQ(session.At(1).memory, 5);
  EXPECT_EQ(session.waiter.pauses(), Milliseconds({500, 500, 500, 500}));
}

TEST(SmsService, TakesAnyPlaceOfANameInTheListForAMemory) {
  ListSession session("\"SM_P\"", Select("SM") + List("< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
}

TEST(SmsService, ListsNothingWhenNoMemoryIsKnown) {
  SmsSession session;
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_TRUE(session.phone.writes().empty());
}

TEST(SmsService, AppendsToTheMessagesThatAreThere) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMGL: 1,1,,0\n< 00\n< OK\n"));
  session.service.messages().Append();
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  EXPECT_EQ(session.count(), 2);
  EXPECT_EQ(session.list.rows, (std::vector<int>{1}));
}

TEST(SmsService, DropsStaleLinesBeforeTheListing) {
  ListSession session("\"SM\"", Select("SM") + List("< OK\n"));
  session.phone.Say("+CMGL: 9,1,,0\r00\rERROR\r");
  session.waiter.Pause(1ms);
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.count(), 0);
}

// A late "OK" that comes with the answer to the selection would end the listing before it begins.
TEST(SmsService, DropsLateAnswersBeforeTheListing) {
  ListSession session("\"SM\"", Select("SM", "< OK\n< +CPMS: 1,10,1,10\n< OK\n") +
                                    List("< +CMGL: 3,0,,23\n< " + std::string(kDeliverPdu) + "\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  ASSERT_EQ(session.count(), 1);
  EXPECT_EQ(session.At(0).memory_index, 3);
}

TEST(SmsService, EndsTheListingWhenAMemoryIsRefused) {
  ListSession session("\"SM\",\"ME\"", Select("SM", "< +CMS ERROR: 310\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), E_FAIL);
}

TEST(SmsService, GoesOnWithTheNextMemoryAfterAnError) {
  ListSession session("\"SM\",\"ME\"", Select("SM") + List("< ERROR\n") + Select("ME") + List("< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
}

TEST(SmsService, HasTheStatusOfTheLastMemoryListed) {
  ListSession session("\"SM\",\"ME\"", Select("SM") + List("< OK\n") + Select("ME") + List("< ERROR\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"ERROR");
}

TEST(SmsService, GoesOnWithTheNextMemoryAfterSilence) {
  ListSession session("\"SM\",\"ME\"", Select("SM") + List("") + Select("ME") + List("< OK\n"));
  const auto start = session.waiter.now();
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.waiter.now() - start, 10000ms);
}

TEST(SmsService, FailsWhenTheLastMemoryIsSilent) {
  ListSession session("\"SM\",\"ME\"", Select("SM") + List("< OK\n") + Select("ME") + List(""));
  const auto start = session.waiter.now();
  EXPECT_EQ(session.service.ListAll(nullptr), E_FAIL);
  EXPECT_EQ(session.waiter.now() - start, 9000ms);
}

TEST(SmsService, TakesNoErrorWithACodeForTheEndOfAListing) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMS ERROR: 321\n< +CMGL: 1,1,,0\n< 00\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.count(), 1);
}

TEST(SmsService, TakesTenThousandMessagesOfOneMemory) {
  constexpr int kCount = 10000;
  std::string listing;
  for (int i = 0; i < kCount; ++i) {
    listing += "< +CMGL: " + std::to_string(i) + ",1,,23\n< " + kDeliverPdu + "\n";
  }
  ListSession session("\"SM\"", Select("SM") + List(listing + "< OK\n"));
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), kCount);
  EXPECT_EQ(session.At(kCount - 1).memory_index, kCount - 1);
  EXPECT_EQ(session.At(kCount - 1).text, u"Test");
  EXPECT_EQ(session.list.rows.size(), static_cast<std::size_t>(kCount));
}

TEST(SmsService, ReusesTheLastRecordForWhatDoesNotFit) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMGL: 5,0,,23\n< " + std::string(kDeliverPdu) + "\n" +
                                                    "< +CMGL: 6,1,,0\n< 00\n< OK\n"));
  while (session.count() < SmsStore::kLimit) session.service.messages().Append();
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.count(), SmsStore::kLimit);
  EXPECT_EQ(session.At(SmsStore::kLimit - 1).memory_index, 6);
  EXPECT_EQ(session.At(SmsStore::kLimit - 1).deliver.number, u"");
}

TEST(SmsService, TakesAPduCutAnywhere) {
  const std::string pdu = kDeliverPdu;
  std::string listing;
  for (std::size_t cut = 1; cut <= pdu.size(); ++cut) {
    listing += "< +CMGL: " + std::to_string(cut) + ",1,,23\n< " + pdu.substr(0, cut) + "\n";
  }
  ListSession session("\"SM\"", Select("SM") + List(listing + "< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  ASSERT_EQ(session.count(), static_cast<int>(pdu.size()));
  for (int i = 0; i < session.count(); ++i) {
    EXPECT_EQ(session.At(i).pdu_text.size(), static_cast<std::size_t>(i) + 1);
    EXPECT_EQ(session.At(i).flags, 1U);
  }
  EXPECT_EQ(session.At(session.count() - 1).text, u"Test");
}

TEST(SmsService, KeepsTheMessagesOfAListingThatBreaksOff) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMGL: 1,1,,0\n< 00\n< +CMGL: 2,1,,0\n"));
  const auto start = session.waiter.now();
  EXPECT_EQ(session.service.ListAll(&session.list), E_FAIL);
  EXPECT_EQ(session.waiter.now() - start, 8500ms);
  EXPECT_EQ(session.list.rows, (std::vector<int>{0}));
  ASSERT_EQ(session.count(), 2);
  EXPECT_EQ(session.At(1).flags, 0U);
}

TEST(SmsService, ListsForAsLongAsLinesKeepComing) {
  ListSession session("\"SM\"", Select("SM") + List("= 7999\n< +CMGL: 1,1,,0\n= 7999\n< 00\n= 7999\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.count(), 1);
}

TEST(SmsService, FailsWhenTheListingCannotBeAsked) {
  ListSession session("\"SM\"", Select("SM"));
  session.waiter.Post(session.waiter.now() + 499ms, [&] { session.ports.line.write_status = E_FAIL; });
  EXPECT_EQ(session.service.ListAll(nullptr), E_FAIL);
}

TEST(SmsService, SkipsNoiseBetweenRecordsButTakesAnyLineForAPdu) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMTI: \"SM\",4\n< +CMGL: 1,1,,22\n< 079133060071108\n"
                                                    "< ^BOOT:37478870,0,0,0,77\n< 11094904003CF7A1A\n"
                                                    "< +CMGL: 2,1,,4\n< +NOISE\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), 2);
  EXPECT_EQ(session.At(0).pdu_text, u"079133060071108");
  EXPECT_EQ(session.At(1).pdu_text, u"+NOISE");
  EXPECT_EQ(session.list.rows, (std::vector<int>{0, 1}));
  EXPECT_FALSE(session.service.all_pdus_came());
}

/// A listing, and whether every message in it has a line that can be its PDU.
struct PduCase {
  const char* name;
  const char* lines;
  bool came;
};

class SmsServicePdus : public testing::TestWithParam<PduCase> {};

TEST_P(SmsServicePdus, AreMissedUntilTheNextListing) {
  ListSession session("\"SM\",\"ME\"", Select("SM") + List(GetParam().lines) + Select("ME") +
                                           List("< +CMGL: 1,1,,0\n< 00\n< OK\n") + Select("SM") +
                                           List("< OK\n") + Select("ME") + List("< OK\n"));
  EXPECT_TRUE(session.service.all_pdus_came()) << "nothing was listed";
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.service.all_pdus_came(), GetParam().came);
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_TRUE(session.service.all_pdus_came());
}

INSTANTIATE_TEST_SUITE_P(
    Listings, SmsServicePdus,
    testing::Values(PduCase{"Whole", "< +CMGL: 1,1,,2\n< 0001aF\n< OK\n", true},
                    PduCase{"BetweenOtherLines", "< RING\n< +CMGL: 1,1,,1\n< 0001\n< RING\n< OK\n", true},
                    PduCase{"WithBlanks", "< +CMGL: 1,1,,1\n< 0001 \n< OK\n", true},
                    PduCase{"AsLongAsItsTpdu", "< +CMGL: 1,1,,2\n< 0001\n< OK\n", true},
                    PduCase{"Shorter", "< +CMGL: 1,1,,3\n< 0001\n< OK\n", false},
                    PduCase{"HalfAnOctet", "< +CMGL: 1,1,,1\n< 00010\n< OK\n", false},
                    PduCase{"AnotherLine", "< +CMGL: 1,1,,1\n< RING\n< 0001\n< OK\n", false},
                    PduCase{"TheNextHeader", "< +CMGL: 1,1,,1\n< +CMGL: 2,1,,1\n< 0001\n< OK\n", false},
                    PduCase{"TheEnd", "< +CMGL: 1,1,,1\n< OK\n", false},
                    PduCase{"AnError", "< +CMGL: 1,1,,1\n< ERROR\n", false}),
    [](const auto& test) { return test.param.name; });

// A doubled line end that two reads cut between its carriage returns begins an empty line.
TEST(SmsService, TakesNoEmptyLineForAPdu) {
  const std::string header = "<< \\r\\r\\n+CMGL: 1,1,,23\\r\n<< \\r\\n";
  ListSession session("\"SM\"",
                      Select("SM") + List(header + kDeliverPdu + "\\r\\r\\n\\r\\r\\nOK\\r\\r\\n\n"));
  session.phone.set_chunk_size(1);
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), 1);
  EXPECT_EQ(session.At(0).pdu_text, std::u16string(kDeliverPdu, kDeliverPdu + 62));
  EXPECT_EQ(session.list.rows, (std::vector<int>{0}));
}

TEST(SmsService, KeepsAMessageThatDoesNotDecode) {
  ListSession session("\"SM\"", Select("SM") + List("< +CMGL: 1,0,,1\n< 03\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(&session.list), S_OK);
  ASSERT_EQ(session.count(), 1);
  EXPECT_EQ(session.At(0).flags, 0x21U);
  EXPECT_EQ(session.At(0).Decode(), E_FAIL);
}

TEST(SmsService, TakesAPduOfManyThousandCharacters) {
  const std::string pdu(20000, 'F');
  ListSession session("\"SM\"", Select("SM") + List("< +CMGL: 1,1,,9\n< " + pdu + "\n< OK\n"));
  EXPECT_EQ(session.service.ListAll(nullptr), S_OK);
  EXPECT_EQ(session.At(0).pdu_text.size(), 20000U);
}

}  // namespace
}  // namespace celldesk
