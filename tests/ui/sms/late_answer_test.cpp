// Answers that come when nobody waits for them any more.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/commands.h"
#include "ui/sms/sample_messages.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// Nothing is changed here, so no question about changes is asked.
void Reconnect(SmsWindow& window) {
  window.Command(command::kDisconnect);
  ASSERT_FALSE(window.frame().IsConnected());
  window.Command(command::kConnect);
}

class LateConnection : public testing::TestWithParam<const char*> {};

// A phone does not see that the port is closed: what it held back comes with the next session.
TEST_P(LateConnection, IsForgottenByTheNextOne) {
  SmsWindow window;
  window.LoadNames();
  const std::vector<std::string> entries = WindowSession::Rows(window.sim());
  ASSERT_FALSE(entries.empty());
  window.ShowFolder(kInboxTab);
  window.line.KeepAnswersOverClose();
  ASSERT_TRUE(window.phone().AddFault(std::string(GetParam()) + ":late"));
  Reconnect(window);
  window.phone().ClearFaults();
  Reconnect(window);
  ASSERT_TRUE(window.frame().IsConnected());
  window.Load();
  EXPECT_THAT(window.InboxTexts(), SizeIs(3));
  EXPECT_FALSE(window.inbox().MayLackRows());
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), SizeIs(2));
  window.ShowFolder(kSimTab);
  window.Load();
  EXPECT_EQ(WindowSession::Rows(window.sim()), entries);
  EXPECT_FALSE(window.sim().MayLackRows());
}

INSTANTIATE_TEST_SUITE_P(EveryCommand, LateConnection,
                         testing::Values("ATZE0V1", "AT+CPBS=?#1", "AT+CPBS=\"SM\"", "AT+CPBR=?#1",
                                         "AT+CPBS=?#2", "AT+CPBS=\"ME\"", "AT+CPBR=?#2", "AT+CPMS=?",
                                         "AT+CMGW=?"));

// The folders would stay empty until the next connection.
TEST(SmsLoad, SaysThatRowsMayBeMissingWhileNoMemoryIsKnown) {
  for (const char* fault : {"AT+CPMS=?:late", "AT+CPMS=?:silence", "AT+CPMS=?:error"}) {
    SmsWindow window;
    ASSERT_TRUE(window.phone().AddFault(fault));
    Reconnect(window);
    window.phone().ClearFaults();
    ASSERT_TRUE(window.frame().IsConnected()) << fault;
    window.TakeAsked();
    window.Load();
    EXPECT_THAT(window.InboxTexts(), IsEmpty());
    EXPECT_THAT(window.TakeAsked(), IsEmpty());
    EXPECT_TRUE(window.inbox().MayLackRows()) << fault;
    EXPECT_TRUE(window.outbox().MayLackRows()) << fault;
    Reconnect(window);
    window.Load();
    EXPECT_FALSE(window.inbox().MayLackRows()) << fault;
  }
}

}  // namespace
}  // namespace celldesk
