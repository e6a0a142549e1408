#include "services/reply_field.h"
#include "sms_fixture.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;

TEST(ReplyField, IsEmptyWhereNothingStandsBetweenSeparators) {
  ResponseLine line;
  line.Take(u"a,,\",b\",\"\",,c");
  EXPECT_EQ(ReplyField(line, 0), u"a");
  EXPECT_EQ(ReplyField(line, 1), u"");
  EXPECT_EQ(ReplyField(line, 2), u",b");
  EXPECT_EQ(ReplyField(line, 3), u"");
  EXPECT_EQ(ReplyField(line, 4), u"");
  EXPECT_EQ(ReplyField(line, 5), u"c");
  EXPECT_EQ(ReplyField(line, 6), u"");
  line.Take(u",a");
  EXPECT_EQ(ReplyField(line, 0), u"");
}

TEST(ReplyField, ASeparatorAfterAnOpenParenthesisBelongsToTheField) {
  ResponseLine line(u'(', u')', u',');
  line.Take(u"(,a),b");
  EXPECT_EQ(ReplyField(line, 0), u",a");
}

TEST(SmsService, KeepsTheCentreWithoutItsPlus) {
  SmsSession session;
  EXPECT_EQ(session.service.SetCentre(u" \t+420601123456\r\n"), S_OK);
  EXPECT_EQ(session.service.centre(), u"420601123456");
  EXPECT_EQ(session.service.centre_type(), 145);
}

TEST(SmsService, ForgetsTheCentreWhenTheNewOneHasNoPlus) {
  for (const char16_t* number : {u"420601123456", u"", u" "}) {
    SmsSession session;
    EXPECT_EQ(session.service.SetCentre(u"+420601123456"), S_OK);
    EXPECT_EQ(session.service.SetCentre(number), E_FAIL);
    EXPECT_EQ(session.service.centre(), u"");
    EXPECT_EQ(session.service.centre_type(), 128);
  }
}

TEST(SmsService, KeepsTheOldCentreWhenTheNewOneIsTooShort) {
  SmsSession session;
  EXPECT_EQ(session.service.SetCentre(u"+123456"), S_OK);
  EXPECT_EQ(session.service.SetCentre(u"+98765"), E_FAIL);
  EXPECT_EQ(session.service.centre(), u"123456");
  EXPECT_EQ(session.service.centre_type(), 145);
}

TEST(SmsService, KeepsTheOptions) {
  SmsSession session;
  session.service.SetOptions(true, false, false, 173);
  EXPECT_TRUE(session.service.delivery_report());
  EXPECT_FALSE(session.service.reply_path());
  EXPECT_EQ(session.service.validity(), 173);
  session.service.SetOptions(false, true, false, 11);
  EXPECT_FALSE(session.service.delivery_report());
  EXPECT_TRUE(session.service.reply_path());
}

TEST(SmsService, LearnsTheMemoriesAndThatItCanStore) {
  SmsSession session(R"(
    > AT+CPMS=?\r
    < +CPMS: ("SM","ME"),("SM","ME"),("SM")
    < OK
    > AT+CMGW=?\r
    < OK
  )");
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.read_memories(), u"\"SM\",\"ME\"");
  EXPECT_EQ(session.service.write_memories(), u"\"SM\",\"ME\"");
  EXPECT_EQ(session.service.receive_memories(), u"\"SM\"");
  EXPECT_TRUE(session.service.store_supported());
  EXPECT_EQ(session.waiter.pauses(), Milliseconds({500}));
  for (const ManualWaiter::Wait& wait : session.waiter.waits()) EXPECT_EQ(wait.timeout, 8000ms);
}

struct MemoriesCase {
  const char* reply;
  std::u16string read, write, receive;
};

class SmsServiceMemories : public testing::TestWithParam<MemoriesCase> {};

TEST_P(SmsServiceMemories, AreTakenFromTheReply) {
  SmsSession session("> AT+CPMS=?\\r\n" + std::string(GetParam().reply) + "\n> AT+CMGW=?\\r\n< ERROR\n");
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.read_memories(), GetParam().read);
  EXPECT_EQ(session.service.write_memories(), GetParam().write);
  EXPECT_EQ(session.service.receive_memories(), GetParam().receive);
  EXPECT_FALSE(session.service.store_supported());
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SmsServiceMemories,
    testing::Values(MemoriesCase{"< +CPMS: (\"SM\", \"ME\"), (\"SM\"), (\"MT\")\n< OK", u"\"SM\", \"ME\"",
                                 u" (\"SM\")", u" (\"MT\")"},
                    MemoriesCase{"< +CPMS: \"ME\",\"MT\",\"SM\"\n< OK", u"\"ME\"", u"\"MT\"", u"\"SM\""},
                    MemoriesCase{"< +CPMS: (),(),()\n< OK", u"", u"", u""},
                    MemoriesCase{"< +CPMS: (),,(\"SM\")\n< OK", u"", u"", u"\"SM\""},
                    MemoriesCase{"< +CPMS: \n< OK", u"", u"", u""},
                    MemoriesCase{"< +CMTI: \"SM\",1\n< +CPMS: (\"SM\")\n< OK", u"\"SM\"", u"", u""},
                    MemoriesCase{"< OK", u"", u"", u""}, MemoriesCase{"< ERROR", u"", u"", u""}));

TEST(SmsService, AsksForStoringEvenWhenTheMemoriesAreNeverListed) {
  SmsSession session("> AT+CPMS=?\\r\n> AT+CMGW=?\\r\n< OK");
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_TRUE(session.service.store_supported());
  EXPECT_EQ(session.waiter.now(), 8500ms);
}

TEST(SmsService, ForgetsTheMemoriesOfThePhoneBefore) {
  SmsSession session(Capabilities("\"SM\"") + "> AT+CPMS=?\\r\n< ERROR\n> AT+CMGW=?\\r\n< ERROR\n");
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.read_memories(), u"");
  EXPECT_FALSE(session.service.store_supported());
}

TEST(SmsService, FailsWhenTheStoringQueryIsNeverAnswered) {
  for (const std::string answer : {"", "< +CMS ERROR: 302\n"}) {
    SmsSession session("> AT+CPMS=?\\r\n< OK\n> AT+CMGW=?\\r\n" + answer);
    EXPECT_EQ(session.service.QueryCapabilities(), E_FAIL);
    EXPECT_FALSE(session.service.store_supported());
    EXPECT_EQ(session.waiter.now(), 8500ms);
  }
}

TEST(SmsService, FailsWhenTheCapabilitiesCannotBeAsked) {
  SmsSession session;
  session.ports.line.write_status = E_FAIL;
  EXPECT_EQ(session.service.QueryCapabilities(), E_FAIL);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

TEST(SmsService, FailsWhenTheStoringQueryCannotBeSent) {
  SmsSession session("> AT+CPMS=?\\r\n< OK\n");
  session.waiter.Post(499ms, [&] { session.ports.line.write_status = E_FAIL; });
  EXPECT_EQ(session.service.QueryCapabilities(), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 500ms);
}

TEST(SmsService, SelectsAMemoryByItsName) {
  const char* names[] = {"SM", "ME", "MT", "BM", "TA", "SR"};
  std::string script;
  for (const char* name : names) script += Select(name, "< +CPMS: 1,10,1,10,1,10\n< OK\n");
  SmsSession session(script);
  for (int memory = 0; memory < 6; ++memory) EXPECT_EQ(session.service.SelectMemory(memory), S_OK);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

TEST(SmsService, SelectsNoMemoryThatIsNotInTheTable) {
  SmsSession session;
  EXPECT_EQ(session.service.SelectMemory(-1), E_FAIL);
  EXPECT_EQ(session.service.SelectMemory(6), E_FAIL);
  EXPECT_TRUE(session.phone.writes().empty());
}

TEST(SmsService, FailsWhenAMemoryIsRefused) {
  for (const char* answer : {"< ERROR\n", "< +CMS ERROR: 302\n"}) {
    SmsSession session(Select("ME", answer));
    EXPECT_EQ(session.service.SelectMemory(1), E_FAIL);
    EXPECT_EQ(session.waiter.now(), 0ms);
  }
}

TEST(SmsService, FailsWhenASelectionIsSilentFor8Seconds) {
  SmsSession session(Select("ME", "< +CME ERROR: 3\n"));
  EXPECT_EQ(session.service.SelectMemory(1), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 8000ms);
}

TEST(SmsService, FailsWhenASelectionCannotBeWritten) {
  SmsSession session;
  session.ports.line.write_status = E_FAIL;
  EXPECT_EQ(session.service.SelectMemory(1), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 0ms);
}

TEST(SmsService, HasRoomUntilEveryMemoryIsKnownToBeFull) {
  SmsSession session(Capabilities("\"SM\",\"ME\"") + Select("SM", "< +CPMS: 10,10,10,10\n< OK\n") +
                     Select("ME", "< +CPMS: 9,10,9,10\n< OK\n"));
  EXPECT_TRUE(session.service.HasRoom());
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
  EXPECT_EQ(session.service.SelectMemory(0), S_OK);
  EXPECT_FALSE(session.service.HasRoom());
  EXPECT_EQ(session.service.SelectMemory(1), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
  AddMessage(session.service, kMessageInUse | kMessageToStore, kPhoneMemory);
  EXPECT_FALSE(session.service.HasRoom());
}

TEST(SmsService, CountsWhatIsToBeStoredInAnEmptyMemory) {
  SmsSession session(Capabilities("\"SM\"") + Select("SM", "< +CPMS: 0,1\n< OK\n"));
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.SelectMemory(0), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
  AddMessage(session.service, kMessageInUse | kMessageToStore, kSimMemory);
  EXPECT_FALSE(session.service.HasRoom());
}

TEST(SmsService, HasNoRoomWhenTheRecordsAreFull) {
  SmsSession session;
  SmsStore& messages = session.service.messages();
  while (messages.count() < SmsStore::kLimit) messages.At(messages.Append()).flags = kMessageInUse;
  EXPECT_FALSE(session.service.HasRoom());
  messages.Remove(7);
  EXPECT_TRUE(session.service.HasRoom());
}

TEST(SmsService, ForgetsHowFullThePhoneBeforeWas) {
  SmsSession session(Capabilities("\"SM\"") + Select("SM", "< +CPMS: 10,10,10,10\n< OK\n") +
                     Capabilities("\"SM\""));
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.SelectMemory(0), S_OK);
  EXPECT_FALSE(session.service.HasRoom());
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
}

TEST(SmsService, DoesNotTakeAStrangeCountForAFullMemory) {
  SmsSession session(Capabilities("\"SM\"") + Select("SM", "< +CPMS: ,,\n< OK\n") +
                     Select("SM", "< +CPMS: -5,10\n< OK\n") + Select("SR", "< +CPMS: 5,5\n< OK\n"));
  EXPECT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_EQ(session.service.SelectMemory(0), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
  EXPECT_EQ(session.service.SelectMemory(0), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
  EXPECT_EQ(session.service.SelectMemory(5), S_OK);
  EXPECT_TRUE(session.service.HasRoom());
}

}  // namespace
}  // namespace celldesk
